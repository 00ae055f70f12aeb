#pragma once

#include "base/progress.h"
#include "base/result.h"

#include <QByteArray>
#include <QImage>
#include <QString>

/// What a picture is read for: as it is stored, or to be turned into 4 bytes a pixel,
/// which claims memory of its own.
enum class PictureUse { AsStored, As32Bit };

/// Reads an image file of any format and size; a null image if that fails.
///
/// The one road by which the program reads pictures. The program's own image
/// plug-ins (TGA) go before those that the toolkit finds on disk, and the
/// toolkit's limit on the size of an image is lifted. The format follows from
/// the name's extension, or from `format` if that is not empty. A picture that would
/// claim more than the memory budget is not read, and a notice tells so.
[[nodiscard]] QImage loadImageFile(const QString &name, const QByteArray &format = {},
                                   PictureUse use = PictureUse::As32Bit);

/// Writes an image in the format of the name's extension at default quality.
///
/// The file is whole or absent: it grows under a temporary name in the same
/// folder and takes the place of an earlier file only when it is complete. A large PNG is
/// encoded on all cores, tells how far it is, and stops within milliseconds; the other
/// formats look for a stop only at their end. A failure has its reason without a full
/// stop.
[[nodiscard]] Result<void> saveImageFile(const QImage &image, const QString &name,
                                         Progress &progress);
/// The same unwatched. False with the reason in `error`, if that is not null.
[[nodiscard]] bool saveImageFile(const QImage &image, const QString &name,
                                 QString *error = nullptr);
