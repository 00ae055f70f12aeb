#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

/// Reads an image file of any format and size; a null image if that fails.
///
/// The one road by which the program reads pictures. The program's own image
/// plug-ins (TGA) go before those that the toolkit finds on disk, and the
/// toolkit's limit on the size of an image is lifted. The format follows from
/// the name's extension, or from `format` if that is not empty.
[[nodiscard]] QImage loadImageFile(const QString &name, const QByteArray &format = {});

/// Writes an image in the format of the name's extension at default quality.
///
/// The file is whole or absent: it grows under a temporary name in the same
/// folder and takes the place of an earlier file only when it is complete.
[[nodiscard]] bool saveImageFile(const QImage &image, const QString &name);
