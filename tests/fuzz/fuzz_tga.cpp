#include "qtga/qtgahandler.h"

#include <QBuffer>
#include <QImage>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer in(&bytes);
    if (!in.open(QIODevice::ReadOnly))
        return 0;
    QTgaHandler handler;
    handler.setDevice(&in);
    QImage image;
    if (handler.read(&image) == image.isNull())
        std::abort();
    return 0;
}
