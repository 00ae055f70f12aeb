#pragma once

#include "base/progress.h"

#include <QStringList>

class QImage;

/// Told what happens in a run, on the thread of the run. step() counts the rows of the
/// mesh of a frame as they begin, of all that the frame has.
class RunListener : public Progress {
public:
    /// The picture is there that all frames will be drawn into.
    virtual void targetMade(const QImage &target) = 0;
    /// The flight cannot be flown, for this reason; the run then fails with it.
    virtual void flightRefused(const QString &reason) = 0;
    /// Frames for which this is false are passed over.
    [[nodiscard]] virtual bool wants(int frame) = 0;
    /// A frame is about to be drawn, whose files will have this number in their names.
    virtual void frameStarted(int frame, int number, const QImage &target) = 0;
    /// It was drawn, or given up in its midst.
    virtual void frameDrawn(int frame, const QImage &target) = 0;
    /// Its files were written; a sentence, with the reason, for each that could not be.
    virtual void frameSaved(int frame, const QStringList &complaints) = 0;
    /// Called now and then while the run waits for files to be written.
    virtual void waiting() = 0;
};
