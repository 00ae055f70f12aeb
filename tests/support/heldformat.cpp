#define QT_STATICPLUGIN
#include "support/heldformat.h"

#include <QColor>
#include <QImage>
#include <QVariant>
#include <QtPlugin>

QSemaphore HeldFormat::begun;
QSemaphore HeldFormat::mayEnd;

namespace {

class HeldHandler : public QImageIOHandler {
public:
    [[nodiscard]] bool canRead() const override { return false; }
    bool read(QImage *) override { return false; }
    bool write(const QImage &image) override
    {
        HeldFormat::begun.release();
        HeldFormat::mayEnd.acquire();
        const QByteArray text = QColor(image.pixel(0, 0)).name().toLatin1();
        return device()->write(text) == text.size();
    }
};

} // namespace

QImageIOPlugin::Capabilities HeldFormat::capabilities(QIODevice *,
                                                      const QByteArray &format) const
{
    return format == "held" ? CanWrite : Capabilities();
}

QImageIOHandler *HeldFormat::create(QIODevice *device, const QByteArray &format) const
{
    auto *const handler = new HeldHandler;
    handler->setDevice(device);
    handler->setFormat(format);
    return handler;
}

Q_IMPORT_PLUGIN(HeldFormat)

#include "moc_heldformat.cpp"
