#include "qtga/qtgaplugin.h"

#include "qtga/qtgahandler.h"

#include <QIODevice>
#include <QtPlugin>

#include <new>

QStringList QTgaPlugin::keys() const { return {QStringLiteral("tga")}; }

QImageIOPlugin::Capabilities QTgaPlugin::capabilities(QIODevice *device,
                                                      const QByteArray &format) const
{
    if (format == "tga")
        return CanRead | CanWrite;
    if (!format.isEmpty() || !device || !device->isOpen())
        return {};
    Capabilities result;
    // The toolkit asks under a lock that an exception would leave locked.
    try {
        if (device->isReadable() && QTgaHandler::canRead(device))
            result |= CanRead;
    } catch (const std::bad_alloc &) {
        return {};
    }
    if (device->isWritable())
        result |= CanWrite;
    return result;
}

QImageIOHandler *QTgaPlugin::create(QIODevice *device, const QByteArray &format) const
{
    auto *const handler = new QTgaHandler;
    handler->setDevice(device);
    handler->setFormat(format);
    return handler;
}

Q_IMPORT_PLUGIN(QTgaPlugin)
