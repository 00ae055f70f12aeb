#include "geodata/inputs.h"

#include "geodata/gdalruntime.h"
#include "terrain/filekind.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QObject>
#include <QSet>

#include <cpl_string.h>
#include <cpl_vsi.h>

#include <algorithm>

namespace {

// How GDAL names what lies in an archive; empty where the name is none.
QString archiveRoot(const QString &name)
{
    const QString path = QFileInfo(name).absoluteFilePath();
    const QString low = path.toLower();
    if (low.endsWith(QLatin1String(".zip")) || low.endsWith(QLatin1String(".kmz")))
        return QStringLiteral("/vsizip/") + path;
    if (low.endsWith(QLatin1String(".tar")) || low.endsWith(QLatin1String(".tgz")) ||
        low.endsWith(QLatin1String(".tar.gz")))
        return QStringLiteral("/vsitar/") + path;
    if (low.endsWith(QLatin1String(".gz")))
        return QStringLiteral("/vsigzip/") + path;
    return {};
}

bool isKnown(const QString &name)
{
    return GDALIdentifyDriverEx(name.toUtf8().constData(), GDAL_OF_RASTER, nullptr,
                                nullptr) != nullptr;
}

// What lies beside a raster, and looks like one itself to some drivers.
bool isBeside(const QString &name)
{
    static const QSet<QString> endings{"aux", "clr", "dmw", "hdr", "jgw",
                                       "msk", "ovr", "pgw", "prj", "sch",
                                       "src", "stx", "tfw", "wld", "xml"};
    return endings.contains(QFileInfo(name).suffix().toLower());
}

// Bytes in a format of pictures: a preview, not the elevations.
bool isPreview(GDALDatasetH file)
{
    static const QSet<QByteArray> formats{"BMP", "GIF", "JPEG", "PNG", "WEBP"};
    return GDALGetRasterDataType(GDALGetRasterBand(file, 1)) == GDT_Byte &&
           formats.contains(GDALGetDriverShortName(GDALGetDatasetDriver(file)));
}

// Three or more bands of bytes are the colours of a picture.
bool isHeights(const QString &name)
{
    if (isBeside(name) || !isKnown(name))
        return false;
    const GdalMessages messages;
    const Dataset file(
        GDALOpenEx(name.toUtf8().constData(), GDAL_OF_RASTER, nullptr, nullptr, nullptr));
    if (!file)
        return false;
    const int bands = GDALGetRasterCount(file.get());
    if (bands == 0) // subdatasets
        return true;
    return !isPreview(file.get()) &&
           (bands < 3 ||
            GDALGetRasterDataType(GDALGetRasterBand(file.get(), 1)) != GDT_Byte);
}

QStringList sortedByName(QStringList names)
{
    QCollator order(QLocale::c());
    order.setNumericMode(true);
    std::sort(names.begin(), names.end(), order);
    return names;
}

QStringList namesInArchive(const QString &root)
{
    QStringList names;
    char **const entries = VSIReadDirRecursive(root.toUtf8().constData());
    for (char **entry = entries; entry && *entry; ++entry)
        if (!QByteArray(*entry).endsWith('/'))
            names.append(root + QLatin1Char('/') + QString::fromUtf8(*entry));
    CSLDestroy(entries);
    return names;
}

// Links to other folders are not followed, so that none leads round in a circle.
Result<QStringList> namesInFolder(const QString &folder, Progress &progress)
{
    QStringList names;
    QDirIterator files(folder, QDir::Files | QDir::Readable,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (!progress.step(0, 0))
            return stopped();
        names.append(files.next());
    }
    return names;
}

// The rasters of elevations of a folder or an archive, at most so many.
Result<QStringList> heightsIn(const QString &name, qsizetype most, Progress &progress)
{
    Result<QStringList> names = QFileInfo(name).isDir()
                                    ? namesInFolder(name, progress)
                                    : namesInArchive(archiveRoot(name));
    if (!names)
        return names;
    QStringList found;
    for (const QString &each : sortedByName(*names)) {
        if (!progress.step(0, 0))
            return stopped();
        if (isHeights(each))
            found.append(each);
        if (found.size() >= most)
            break;
    }
    return found;
}

enum class Given { Nothing, Raster, Folder };

// What a name stands for, and the name under which GDAL reads it.
std::pair<Given, QString> judged(const QString &name)
{
    const QFileInfo info(name);
    // Names of GDAL's own, such as "NETCDF:file:variable", are for GDAL to judge; those
    // that lead to other machines are not known to it.
    const bool isOwn =
        name.contains(QLatin1Char(':')) || name.startsWith(QLatin1String("/vsi"));
    if (!info.exists())
        return {isOwn ? Given::Raster : Given::Nothing, name};
    if (info.isDir()) // some formats are folders
        return {isKnown(name) ? Given::Raster : Given::Folder, name};
    if (!info.isFile()) // to read a pipe may take for ever
        return {Given::Nothing, name};
    const QString root = archiveRoot(name);
    if (root.isEmpty())
        return {Given::Raster, name};
    if (root.startsWith(QLatin1String("/vsigzip/")))
        return {Given::Raster, root};
    return {Given::Folder, name};
}

Result<QStringList> contentsOf(const QString &name, Progress &progress)
{
    const auto [kind, opened] = judged(name);
    if (kind == Given::Nothing) {
        const QString other = notAFileText(name);
        return failed(other.isEmpty() ? QObject::tr("There is no file \"%1\".").arg(name)
                                      : other);
    }
    if (kind == Given::Raster)
        return QStringList{opened};
    if (QFileInfo info(name); !info.isReadable())
        return failed(QObject::tr("\"%1\" may not be read.").arg(name));
    constexpr qsizetype All = 1000000;
    Result<QStringList> found = heightsIn(name, All, progress);
    if (found && found->isEmpty())
        return failed(
            QObject::tr("\"%1\" holds no elevations that can be read.").arg(name));
    return found;
}

} // namespace

Result<QStringList> expandInputs(const QStringList &given, Progress &progress)
{
    const GdalMessages messages;
    QStringList all;
    for (const QString &name : given) {
        Result<QStringList> found = contentsOf(name, progress);
        if (!found)
            return found;
        all += *found;
    }
    return all;
}

bool holdsElevations(const QString &name)
{
    const GdalMessages messages;
    const auto [kind, opened] = judged(name);
    if (kind == Given::Raster)
        return isHeights(opened);
    NoProgress progress;
    const Result<QStringList> found = kind == Given::Folder
                                          ? heightsIn(name, 1, progress)
                                          : Result<QStringList>(QStringList());
    return found && !found->isEmpty();
}
