#pragma once

#include "base/progress.h"
#include "views/operationoutcome.h"

/// An outcome with what was found by looking at its picture.
struct OperationReport {
    OperationOutcome outcome;
    QImage thumbnail;
    bool isElevation = false; ///< it holds heights, not colours

    /// The line in the status bar.
    [[nodiscard]] QString line() const;
};

/// Looks at every pixel of the picture that was written: rows, columns, minimum and
/// maximum stand ahead of what the operation knew. Does not keep the picture. An empty
/// title: it was stopped.
[[nodiscard]] OperationReport makeReport(OperationOutcome outcome, Progress &progress);
