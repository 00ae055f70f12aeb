#pragma once

#include <QString>

class ElevationImage;
class QIODevice;

/// Reads a Japan DEM file from a device that is open in text mode. `voidValue` stands
/// for samples that are unknown and become 0; `fileName` is named by the error text.
/// An image of a size below 0 is null. The count is that of the elevations that are
/// not 0.
[[nodiscard]] bool convertJapanDem(QIODevice &in, int voidValue, const QString &fileName,
                                   ElevationImage *image, int *nonZeroCount,
                                   QString *error);
