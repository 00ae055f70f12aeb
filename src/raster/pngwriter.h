#pragma once

class Progress;
class QImage;
class QIODevice;

/// Whether writePng() writes this picture: one of 8 bits a channel or of a palette.
[[nodiscard]] bool hasPngRows(const QImage &image);

/// Writes such a picture as PNG, a large one on all cores.
///
/// What is read back is the same as from a file of the toolkit, and the file is about as
/// large. On one core it takes a seventh of the toolkit's time. The bytes are the same
/// with any number of threads. Memory is needed for some pieces of rows, however large
/// the picture is. False if the device does not take it all, there is not enough memory,
/// or the work was asked to stop.
[[nodiscard]] bool writePng(QIODevice &device, const QImage &image, Progress &progress);
/// The same with so many threads.
[[nodiscard]] bool writePng(QIODevice &device, const QImage &image, Progress &progress,
                            int threads);
