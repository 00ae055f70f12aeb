#pragma once

#include "base/result.h"

#include <QString>
#include <QStringList>

#include <functional>

/// What the main window asks of the part that reads terrain of any kind, which comes with
/// a large library and may be missing.
class TerrainOpener {
public:
    virtual ~TerrainOpener() = default;

    /// Opens the window for these files, which become one terrain.
    virtual void openTerrain(const QStringList &files) = 0;
    /// Makes the flight path of the active scenery from a track.
    virtual void openTrack(const QString &file) = 0;
    /// Finds out whether a file, folder or archive can be read as terrain or track. Does
    /// not wait: the answer comes on the thread of the window, perhaps before the return.
    virtual void askWhetherRead(const QString &file,
                                std::function<void(bool reads)> answer) = 0;
    /// Asks for the library's name, version and licence, or the sentence that tells what
    /// is missing; the answer comes in the same way.
    virtual void askLibrary(std::function<void(const Result<QStringList> &)> answer) = 0;
};
