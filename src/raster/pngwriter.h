#pragma once

class QImage;
class QIODevice;

/// Whether writePng() writes this picture: colour of 8 bits a channel, not too large for
/// a copy in memory, nothing besides its pixels and resolution.
[[nodiscard]] bool isPlainPicture(const QImage &image);

/// Writes a plain picture as PNG.
///
/// What is read back is the same as from a file of the toolkit, and the file is about as
/// large. It takes a seventh of the time: frames would wait for the toolkit's.
/// False if the device does not take it all or there is not enough memory.
[[nodiscard]] bool writePng(QIODevice &device, const QImage &image);
