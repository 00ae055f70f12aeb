#pragma once

#include <QStringList>

struct SceneryData;

/// The number in the names of a frame's files; wraps as a 32-bit sum does.
[[nodiscard]] int frameNumber(const SceneryData &data, int frame);
/// What the frame of a number is called, without an extension.
[[nodiscard]] QString frameTitle(const SceneryData &data, int number);
/// The names of the files of the frame of a number, in the order of writing.
[[nodiscard]] QStringList frameFiles(const SceneryData &data, int number);
