#include "raster/imagefile.h"

#include "base/memorybudget.h"
#include "base/notices.h"
#include "base/wholefile.h"
#include "raster/pngwriter.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageIOPlugin>
#include <QImageReader>
#include <QImageWriter>
#include <QPluginLoader>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <memory>

namespace {

QByteArray extensionOf(const QString &name)
{
    return QFileInfo(name).suffix().toLower().toLatin1();
}

// The plug-ins that are linked in. The toolkit makes them when they are asked for first,
// which must not happen in two threads at a time.
const QList<QImageIOPlugin *> &ownPlugins()
{
    static const QList<QImageIOPlugin *> plugins = [] {
        QList<QImageIOPlugin *> found;
        for (QObject *instance : QPluginLoader::staticInstances()) {
            if (auto *const plugin = qobject_cast<QImageIOPlugin *>(instance))
                found << plugin;
        }
        return found;
    }();
    return plugins;
}

// The toolkit prefers plug-ins on disk to those linked in, and the one it brings
// for TGA cannot write and refuses files that ours reads.
std::unique_ptr<QImageIOHandler> ownHandler(QIODevice *device, const QByteArray &format,
                                            QImageIOPlugin::Capability wanted)
{
    if (format.isEmpty())
        return nullptr;
    for (const QImageIOPlugin *plugin : ownPlugins()) {
        if (plugin->capabilities(device, format).testFlag(wanted))
            return std::unique_ptr<QImageIOHandler>(plugin->create(device, format));
    }
    return nullptr;
}

// Whether a TIFF file has its directory, which is written last. Its writer reports
// success also where memory ran out before that.
bool hasItsEnd(QIODevice &device, const QSize &size)
{
    if (!device.isReadable() || device.isSequential() || !device.seek(0))
        return true; // nothing to look at
    return QImageReader(&device, "tif").size() == size;
}

bool writeTo(QIODevice &device, const QImage &image, const QByteArray &format,
             Progress &progress, QString *error)
{
    *error = qt_error_string(ENOMEM); // without which our own writers give up
    if (const auto handler = ownHandler(&device, format, QImageIOPlugin::CanWrite))
        return handler->write(image);
    if (format == "png" && hasPngRows(image))
        return writePng(device, image, progress);
    QImageWriter writer(&device, format);
    if (!writer.write(image)) {
        *error = writer.errorString();
        return false;
    }
    return (format != "tif" && format != "tiff") || hasItsEnd(device, image.size());
}

// Remembers that the work was asked to stop.
class Asked final : public Progress {
public:
    explicit Asked(Progress &progress) : m_progress(progress) {}
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        m_stop = m_stop || !m_progress.step(done, of);
        return !m_stop;
    }
    [[nodiscard]] bool toStop() const { return m_stop; }

private:
    Progress &m_progress;
    bool m_stop = false;
};

// The size that a TGA file claims. Its handler is bound to tell another one.
QSize sizeOfTga(QIODevice &file)
{
    constexpr qsizetype HeadSize = 18;
    const QByteArray head = file.peek(HeadSize);
    if (head.size() < HeadSize)
        return {};
    const auto number = [&head](int at) {
        return static_cast<uchar>(head[at]) | static_cast<uchar>(head[at + 1]) << 8;
    };
    return {number(12), number(14)};
}

// Whether a picture may be read; a size that is not known in advance may.
bool mayBeRead(const QString &name, const QSize &size, int depth, PictureUse use)
{
    if (size.isEmpty())
        return true;
    const qint64 pixels = qint64(size.width()) * size.height();
    const bool converted = use == PictureUse::As32Bit && depth != 32;
    const qint64 claim = pixels * depth / 8 + (converted ? pixels * 4 : 0);
    return claimMemory(QStringLiteral("\"%1\" (%2 x %3 pixels)")
                           .arg(QFileInfo(name).fileName())
                           .arg(size.width())
                           .arg(size.height()),
                       claim);
}

int depthOf(QImage::Format format)
{
    return format == QImage::Format_Invalid
               ? 32
               : QImage::toPixelFormat(format).bitsPerPixel();
}

// The toolkit's own limit, in megabytes, holds for pictures whose size is known only when
// they are read.
void limitAllocations(bool sizeIsKnown)
{
    constexpr qint64 Megabyte = qint64(1) << 20;
    constexpr qint64 Most = std::numeric_limits<int>::max();
    const qint64 budget = (memoryBudget() + Megabyte - 1) / Megabyte;
    QImageReader::setAllocationLimit(
        sizeIsKnown ? 0 : static_cast<int>(std::min(budget, Most)));
}

// Plug-ins that draw text end a program that has no window system, and with it no fonts.
bool mayBeDrawn(const QString &name, const QByteArray &format)
{
    const bool hasText = format == "svg" || format == "svgz" || format == "pdf";
    if (!hasText || qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return true;
    tellNotice(
        QObject::tr("\"%1\" is a drawing, which is read only where there is a window "
                    "system; save it as a picture, such as PNG.")
            .arg(QFileInfo(name).fileName()));
    return false;
}

// Makes the plug-ins that are part of the program. The toolkit would do so under a lock
// which it never lets go where memory runs out meanwhile: other threads that read or
// write pictures would wait for ever.
void makeOwnPlugins()
{
    [[maybe_unused]] static const auto made = QPluginLoader::staticInstances().size();
}

} // namespace

QImage loadImageFile(const QString &name, const QByteArray &format, PictureUse use)
{
    makeOwnPlugins();
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImage image;
    const QByteArray key = format.isEmpty() ? extensionOf(name) : format.toLower();
    if (const auto handler = ownHandler(&file, key, QImageIOPlugin::CanRead)) {
        const bool read =
            mayBeRead(name, sizeOfTga(file), 32, use) && handler->read(&image);
        return read ? image : QImage();
    }
    QImageReader reader(&file, format);
    if (!mayBeDrawn(name, reader.format()))
        return {};
    const QSize size = reader.size();
    if (!mayBeRead(name, size, depthOf(reader.imageFormat()), use))
        return {};
    limitAllocations(!size.isEmpty());
    return reader.read();
}

Result<void> saveImageFile(const QImage &image, const QString &name, Progress &progress)
{
    if (image.isNull())
        return failed(qt_error_string(ENOMEM));
    makeOwnPlugins();
    Asked asked(progress);
    QString reason, fromWriter;
    const bool written = writeWholeFile(
        name,
        [&](QIODevice &device) {
            return writeTo(device, image, extensionOf(name), asked, &fromWriter) &&
                   !asked.toStop();
        },
        &reason);
    if (written)
        return {};
    if (asked.toStop())
        return stopped();
    return failed(reason.isEmpty() ? fromWriter : reason);
}

bool saveImageFile(const QImage &image, const QString &name, QString *error)
{
    NoProgress unwatched;
    const Result<void> saved = saveImageFile(image, name, unwatched);
    if (error)
        *error = saved ? QString() : saved.error().text;
    return saved.has_value();
}
