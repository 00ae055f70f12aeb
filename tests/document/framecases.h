#pragma once

#include <QDir>
#include <QImage>
#include <QStringList>

/// A scenery and the frames that are expected of it.
struct FrameCase {
    QString scene;       // "name.zph"
    QStringList options; // --preview, --quarter N, --antialiasing N
    QStringList frames;  // "frame_0.png", in the folder frames/name

    [[nodiscard]] bool isPreview() const;
    /// Where in the folder of the cases a frame is.
    [[nodiscard]] QString pathOf(const QString &frame) const;
};

/// The cases that a folder's manifest.json names; none if it cannot be read.
[[nodiscard]] QList<FrameCase> frameCases(const QDir &folder);

/// Stores the settings that the options name, and no others.
void storeSettings(const FrameCase &one);
