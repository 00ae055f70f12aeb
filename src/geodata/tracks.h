#pragma once

#include "base/progress.h"
#include "base/result.h"
#include "terrain/track.h"

/// A track of a file: GPX, KML, KMZ, GeoJSON, a shape file, or a table of points as text.
///
/// It is the longest line; lines that follow each other in the file and touch count as
/// one. Without lines it is all points, in the order of their times where all have one,
/// else in that of the file. `crs` is well-known text of the system that the places are
/// wanted in (empty: as the file has them); a file that has no system is taken to be in
/// that one. Heights are metres.
[[nodiscard]] Result<Track> readTrack(const QString &file, const QString &crs,
                                      Progress &progress);
