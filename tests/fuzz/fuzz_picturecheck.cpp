// Files of frames, of which a run asks whether they are whole. The first byte chooses the
// format, the next two the size.

#include "raster/picturecheck.h"

#include <QBuffer>
#include <QStringList>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 3)
        return 0;
    static const QStringList formats{"tga", "png", "jpg", "ppm"};
    QByteArray bytes(reinterpret_cast<const char *>(data + 3), qsizetype(size - 3));
    QBuffer in(&bytes);
    if (!in.open(QIODevice::ReadOnly))
        return 0;
    const bool whole = isWholePicture(in, formats[data[0] % 4], {data[1], data[2]});
    // Nothing is whole without its pixels.
    if (whole && data[1] != 0 && data[2] != 0 && bytes.size() < 16)
        __builtin_trap();
    return 0;
}
