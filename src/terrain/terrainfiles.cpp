#include "terrain/terrainfiles.h"

#include "raster/pngwriter.h"
#include "scene/scenerydocument.h"
#include "scene/scenerywriter.h"
#include "terrain/rowwork.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QTextStream>

namespace {

Result<void> addText(FileGroup &group, const QString &file, const QByteArray &text)
{
    return group.add(
        file, [&](QIODevice &device) { return device.write(text) == text.size(); });
}

} // namespace

TerrainNames::TerrainNames(const QString &out)
{
    const QLatin1String ending(".zph");
    const bool hasEnding = out.endsWith(ending, Qt::CaseInsensitive);
    const QString stem = hasEnding ? out.chopped(ending.size()) : out;
    name = QFileInfo(stem).fileName();
    elevation = stem + QLatin1String("_elevation.png");
    texture = stem + QLatin1String("_texture.png");
    scenery = stem + ending;
}

Result<void> addPicture(FileGroup &group, const QString &file, const QImage &picture,
                        const Georeference *place, const QString &projection,
                        const Stretch &stretch)
{
    StretchProgress progress(stretch);
    const Result<void> written = group.add(file, [&](QIODevice &device) {
        return writePng(device, picture, progress) && !progress.isStopped();
    });
    if (progress.isStopped())
        return stopped();
    if (!written && written.error().text.isEmpty())
        return failed(QCoreApplication::translate(
                          "Terrain", "There is not enough memory to write \"%1\".")
                          .arg(file));
    if (!written)
        return written;
    return place ? addSidecars(group, file, *place, projection) : Result<void>();
}

Result<void> addSidecars(FileGroup &group, const QString &picture,
                         const Georeference &place, const QString &projection)
{
    Result<void> added =
        addText(group, worldFileName(picture), worldFileText(place.transform));
    if (!added)
        return added;
    const QString projectionFile = projectionFileName(picture);
    if (projection.isEmpty())
        group.remove(projectionFile);
    else
        added = addText(group, projectionFile, projection.toUtf8() + '\n');
    if (!added)
        return added;
    return addText(group, auxiliaryFileName(picture), auxiliaryFileText(place));
}

Result<void> addScenery(FileGroup &group, const QString &file,
                        const SceneryDocument &document)
{
    QByteArray text;
    {
        QTextStream stream(&text);
        writeScenery(stream, document);
    }
    return addText(group, file, text);
}
