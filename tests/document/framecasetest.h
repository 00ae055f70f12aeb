#pragma once

#include "document/framecases.h"

/// Declares the rows of a test of all frame cases of a folder: "one" is the case.
void addFrameCases(const QDir &folder);

/// Renders the case of the row as a final or preview run of the window does, and
/// compares its frames with those in the folder.
void compareFrames(const QDir &folder);
