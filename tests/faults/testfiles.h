#pragma once

#include <QImage>
#include <QString>

/// A picture with something in every corner.
[[nodiscard]] QImage testPicture(const QSize &size);

/// Writes bytes to a file; ends the program if that fails.
void writeText(const QString &name, const QByteArray &bytes);

/// Writes a scenery of three small frames f0 to f2, PNG and PPM, with its texture and
/// elevations, into a folder.
void writeScenery(const QString &folder, const QString &name);
