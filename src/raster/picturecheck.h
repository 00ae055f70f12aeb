#pragma once

#include <QSize>
#include <QString>

class QIODevice;

/// Whether a file is a whole picture of this size, in the format that its name says: tga,
/// png, jpg or ppm.
///
/// The pixels are not decoded, so that thousands of files are looked through in seconds:
/// a PNG is whole if all its checksums are right, a JPEG if it ends as it should, TGA and
/// PPM if there are as many bytes as there must be.
[[nodiscard]] bool isWholePicture(const QString &name, const QSize &size);

/// The same for bytes in one of these formats, which can be read in any order.
[[nodiscard]] bool isWholePicture(QIODevice &file, const QString &format,
                                  const QSize &size);
