#include "raster/imagefile.h"

#include "raster/pngwriter.h"
#include "raster/wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QImageIOPlugin>
#include <QImageReader>
#include <QImageWriter>
#include <QPluginLoader>

#include <memory>

namespace {

QByteArray extensionOf(const QString &name)
{
    return QFileInfo(name).suffix().toLower().toLatin1();
}

// The toolkit prefers plug-ins on disk to those linked in, and the one it brings
// for TGA cannot write and refuses files that ours reads.
std::unique_ptr<QImageIOHandler> ownHandler(QIODevice *device, const QByteArray &format,
                                            QImageIOPlugin::Capability wanted)
{
    if (format.isEmpty())
        return nullptr;
    for (QObject *instance : QPluginLoader::staticInstances()) {
        const auto *plugin = qobject_cast<QImageIOPlugin *>(instance);
        if (plugin && plugin->capabilities(device, format).testFlag(wanted))
            return std::unique_ptr<QImageIOHandler>(plugin->create(device, format));
    }
    return nullptr;
}

bool writeTo(QIODevice &device, const QImage &image, const QByteArray &format)
{
    if (const auto handler = ownHandler(&device, format, QImageIOPlugin::CanWrite))
        return handler->write(image);
    if (format == "png" && isPlainPicture(image))
        return writePng(device, image);
    return QImageWriter(&device, format).write(image);
}

} // namespace

QImage loadImageFile(const QString &name, const QByteArray &format)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImage image;
    const QByteArray key = format.isEmpty() ? extensionOf(name) : format.toLower();
    if (const auto handler = ownHandler(&file, key, QImageIOPlugin::CanRead))
        return handler->read(&image) ? image : QImage();

    QImageReader::setAllocationLimit(0);
    QImageReader reader(&file, format);
    return reader.read();
}

bool saveImageFile(const QImage &image, const QString &name)
{
    if (image.isNull())
        return false;
    return writeWholeFile(name, [&](QIODevice &device) {
        return writeTo(device, image, extensionOf(name));
    });
}
