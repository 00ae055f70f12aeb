#include "geodata/mosaic.h"

#include "geodata/coverage.h"
#include "geodata/crs.h"

#include <QObject>
#include <QPointF>
#include <QRect>
#include <QXmlStreamWriter>

#include <ogr_srs_api.h>

#include <algorithm>
#include <cmath>

namespace {

// Cells that are no further from the grid's than this share of one fall on it.
constexpr double Tolerance = 0.001;
// Of a side of the whole, within what GDAL counts.
constexpr int MostCells = 2000000000;

// In which order a virtual raster is to take the axes of a system: east before north.
QString axisMapping(const QString &crs)
{
    const Srs srs = systemOf(crs);
    int count = 0;
    const int *const axes =
        srs ? OSRGetDataAxisToSRSAxisMapping(srs.get(), &count) : nullptr;
    QStringList mapping;
    for (int i = 0; axes && i < count; ++i)
        mapping.append(QString::number(axes[i]));
    return mapping.isEmpty() ? QStringLiteral("1,2") : mapping.join(u',');
}

QString number(double value) { return QString::number(value, 'g', 17); }

// Where a raster lies in a grid, in cells from its upper left corner.
QPointF placeIn(const RasterFile &raster, const GeoTransform &grid)
{
    return {(raster.transform[0] - grid[0]) / grid[1],
            (raster.transform[3] - grid[3]) / grid[5]};
}

bool isWhole(double value) { return std::abs(value - std::round(value)) <= Tolerance; }

// Whether the cells of two rasters fall on one grid over all of the second.
bool fallsOn(const RasterFile &raster, const RasterFile &first)
{
    if (!raster.isUpright() || !first.isUpright() || !isSameCrs(raster.crs, first.crs))
        return false;
    const auto grows = [](double cell, double other, int count) {
        return std::abs(cell / other - 1.0) * count > Tolerance;
    };
    if (grows(raster.transform[1], first.transform[1], raster.size.width()) ||
        grows(raster.transform[5], first.transform[5], raster.size.height()))
        return false;
    const QPointF place = placeIn(raster, first.transform);
    return isWhole(place.x()) && isWhole(place.y());
}

void writeRect(QXmlStreamWriter &xml, const QString &name, const QRect &rect)
{
    xml.writeEmptyElement(name);
    xml.writeAttribute("xOff", QString::number(rect.x()));
    xml.writeAttribute("yOff", QString::number(rect.y()));
    xml.writeAttribute("xSize", QString::number(rect.width()));
    xml.writeAttribute("ySize", QString::number(rect.height()));
}

void writeSource(QXmlStreamWriter &xml, const RasterFile &raster, const QRect &place)
{
    xml.writeStartElement("ComplexSource");
    xml.writeStartElement("SourceFilename");
    xml.writeAttribute("relativeToVRT", "0");
    xml.writeCharacters(raster.name);
    xml.writeEndElement();
    xml.writeTextElement("SourceBand", "1");
    // With these a tile is opened when it is read, and not before.
    xml.writeEmptyElement("SourceProperties");
    xml.writeAttribute("RasterXSize", QString::number(raster.size.width()));
    xml.writeAttribute("RasterYSize", QString::number(raster.size.height()));
    xml.writeAttribute("DataType", raster.type);
    xml.writeAttribute("BlockXSize", QString::number(raster.block.width()));
    xml.writeAttribute("BlockYSize", QString::number(raster.block.height()));
    writeRect(xml, "SrcRect", {QPoint(), raster.size});
    writeRect(xml, "DstRect", place);
    if (raster.metresPerStep() != 1.0 || raster.metresAtZero() != 0.0) {
        xml.writeTextElement("ScaleOffset", number(raster.metresAtZero()));
        xml.writeTextElement("ScaleRatio", number(raster.metresPerStep()));
    }
    if (raster.noData)
        xml.writeTextElement("NODATA", number(*raster.noData));
    if (raster.hasMask)
        xml.writeTextElement("UseMaskBand", "true");
    xml.writeEndElement();
}

QString virtualRaster(const Sheet &sheet, const QList<QRect> &places)
{
    QString text;
    QXmlStreamWriter xml(&text);
    xml.writeStartElement("VRTDataset");
    xml.writeAttribute("rasterXSize", QString::number(sheet.size.width()));
    xml.writeAttribute("rasterYSize", QString::number(sheet.size.height()));
    if (!sheet.crs.isEmpty()) {
        xml.writeStartElement("SRS");
        xml.writeAttribute("dataAxisToSRSAxisMapping", axisMapping(sheet.crs));
        xml.writeCharacters(sheet.crs);
        xml.writeEndElement();
    }
    QStringList transform;
    for (const double value : sheet.transform)
        transform.append(number(value));
    xml.writeTextElement("GeoTransform", transform.join(u','));
    xml.writeStartElement("VRTRasterBand");
    xml.writeAttribute("dataType", "Float32");
    xml.writeAttribute("band", "1");
    xml.writeTextElement("NoDataValue", "nan");
    for (qsizetype i = 0; i < places.size(); ++i)
        writeSource(xml, sheet.rasters[i], places[i]);
    xml.writeEndElement();
    xml.writeEndElement();
    return text;
}

// The grid of rasters whose cells fall on that of the first one.
struct Layout {
    GeoTransform transform;
    QSize size;
    QList<QRect> places;
};

Result<Layout> layOut(const QList<RasterFile> &rasters)
{
    const RasterFile &first = rasters.front();
    if (rasters.size() == 1)
        return Layout{first.transform, first.size, {QRect(QPoint(), first.size)}};
    QList<QRect> places;
    QRect all;
    for (const RasterFile &raster : rasters) {
        const QPointF place = placeIn(raster, first.transform);
        const double edge = std::max(std::abs(place.x()), std::abs(place.y()));
        if (!(edge < MostCells))
            return failed(QObject::tr("\"%1\" and \"%2\" are too far apart.")
                              .arg(first.name, raster.name));
        places.append(QRect(place.toPoint(), raster.size));
        all |= places.back();
    }
    if (all.width() >= MostCells || all.height() >= MostCells)
        return failed(QObject::tr("The files are too far apart."));
    for (QRect &place : places)
        place.translate(-all.topLeft());
    GeoTransform transform = first.transform;
    transform[0] += all.left() * transform[1];
    transform[3] += all.top() * transform[5];
    return Layout{transform, all.size(), places};
}

Result<Sheet> buildSheet(QList<RasterFile> rasters, Mosaic &mosaic)
{
    const Result<Layout> layout = layOut(rasters);
    if (!layout)
        return tl::unexpected(layout.error());
    Sheet sheet;
    sheet.size = layout->size;
    sheet.transform = layout->transform;
    sheet.crs = rasters.front().crs;
    sheet.isUpright = rasters.front().isUpright();
    sheet.rasters = std::move(rasters);
    const Coverage covered = coverageOf(layout->places, sheet.size);
    mosaic.overlaps += covered.overlaps;
    mosaic.gaps += covered.gaps;
    sheet.virtualRaster = virtualRaster(sheet, layout->places).toUtf8();
    Result<Dataset> dataset = openSheet(sheet);
    if (!dataset)
        return tl::unexpected(dataset.error());
    sheet.dataset = std::move(*dataset);
    return sheet;
}

// Tiles east and west of the 180th meridian lie next to each other if those in the west
// are counted on.
void joinAcrossMeridian(QList<RasterFile> &rasters)
{
    const bool all = std::all_of(rasters.begin(), rasters.end(), [](const RasterFile &r) {
        return r.isUpright() && isGeographic(r.crs);
    });
    if (rasters.size() < 2 || !all)
        return;
    const auto isWest = [](const RasterFile &raster) {
        const Extent extent = extentOf(raster);
        return extent.west + extent.east < 0.0;
    };
    Extent plain = extentOf(rasters.front());
    Extent joined = plain;
    if (isWest(rasters.front()))
        joined.west += 360.0, joined.east += 360.0;
    for (const RasterFile &raster : rasters) {
        Extent extent = extentOf(raster);
        plain = united(plain, extent);
        if (isWest(raster))
            extent.west += 360.0, extent.east += 360.0;
        joined = united(joined, extent);
    }
    if (joined.width() >= plain.width() || plain.width() <= 180.0)
        return;
    for (RasterFile &raster : rasters)
        if (isWest(raster))
            raster.transform[0] += 360.0;
}

} // namespace

Extent united(const Extent &one, const Extent &other)
{
    return {std::min(one.west, other.west), std::min(one.south, other.south),
            std::max(one.east, other.east), std::max(one.north, other.north)};
}

Result<Dataset> openSheet(const Sheet &sheet)
{
    const GdalMessages messages;
    Dataset dataset(GDALOpenEx(sheet.virtualRaster.constData(),
                               GDAL_OF_RASTER | GDAL_OF_VERBOSE_ERROR, nullptr, nullptr,
                               nullptr));
    if (!dataset)
        return failed(QObject::tr("Could not put the files together: %1.")
                          .arg(messages.reason(QObject::tr("GDAL refuses"))));
    return dataset;
}

Extent extentOf(const RasterFile &raster)
{
    const GeoTransform &t = raster.transform;
    const double w = raster.size.width();
    const double h = raster.size.height();
    const auto [x0, x1] =
        std::minmax({t[0], t[0] + w * t[1], t[0] + h * t[2], t[0] + w * t[1] + h * t[2]});
    const auto [y0, y1] =
        std::minmax({t[3], t[3] + w * t[4], t[3] + h * t[5], t[3] + w * t[4] + h * t[5]});
    return {x0, y0, x1, y1};
}

Result<Mosaic> buildMosaic(QList<RasterFile> rasters)
{
    if (rasters.isEmpty())
        return failed(QObject::tr("No file was given."));
    for (const RasterFile &raster : rasters)
        if (raster.crs.isEmpty() != rasters.front().crs.isEmpty())
            return failed(QObject::tr("\"%1\" and \"%2\" cannot be put together: one of "
                                      "them has no reference system.")
                              .arg(rasters.front().name, raster.name));
    joinAcrossMeridian(rasters);
    Mosaic mosaic;
    for (qsizetype from = 0; from < rasters.size();) {
        qsizetype until = from + 1;
        while (until < rasters.size() && fallsOn(rasters[until], rasters[from]))
            ++until;
        Result<Sheet> sheet = buildSheet(rasters.mid(from, until - from), mosaic);
        if (!sheet)
            return tl::unexpected(sheet.error());
        mosaic.sheets.push_back(std::move(*sheet));
        from = until;
    }
    Mosaic uncounted; // each covers itself
    for (const RasterFile &raster : rasters) {
        Result<Sheet> layer = buildSheet({raster}, uncounted);
        if (!layer)
            return tl::unexpected(layer.error());
        mosaic.layers.push_back(std::move(*layer));
    }
    return mosaic;
}
