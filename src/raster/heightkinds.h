#pragma once

#include <QString>

class QImage;

/// What a picture file holds in the place of heights of 24 bits: "16-bit numbers", for
/// instance; empty where it holds those, is no picture, or cannot be read. Only the head
/// of the file is read.
[[nodiscard]] QString otherHeightsIn(const QString &fileName);

/// The sentence about such a file for the user; empty where there is nothing to tell.
[[nodiscard]] QString otherHeightsNotice(const QString &fileName);

/// Whether a picture looks like one of heights: of 24 bits a pixel, and neighbours whose
/// numbers lie near each other where they differ. A sample of its pixels is looked at.
/// Even ground and drawings of few colours do not look so.
[[nodiscard]] bool looksLikeElevations(const QImage &image);
