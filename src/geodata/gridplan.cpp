#include "geodata/gridplan.h"

#include "geodata/crs.h"
#include "geodata/warp.h"

#include <QObject>

#include <ogr_srs_api.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// Cells that are no further from the mosaic's than this share of one fall on them.
constexpr double Tolerance = 0.001;
// Wider data would be torn by the projection of a single zone.
constexpr double WidestForUtm = 30.0;
constexpr double MetresOfDegree = 111319.49079327358; // on the equator of WGS 84

QString number(double value) { return QString::number(value, 'g', 17); }

bool isNear(double value, double other)
{
    return std::abs(value - other) <= Tolerance * std::abs(other);
}

Extent extentOfGrid(const GeoTransform &t, const QSize &size)
{
    RasterFile raster;
    raster.transform = t;
    raster.size = size;
    return extentOf(raster);
}

QString cellsOutside(const QSize &size)
{
    return QObject::tr("The cells lie outside of the terrain of %1 x %2.")
        .arg(size.width())
        .arg(size.height());
}

// A sheet, or the window of it that is wanted.
struct Part {
    GDALDatasetH dataset = nullptr;
    Dataset window; // owns it, if it is one
    GeoTransform transform{};
    QSize size;
    QPoint origin; // of the window, in cells of the sheet
    QString crs;
};

Result<Part> wantedPart(const Sheet &sheet, const std::optional<QRect> &cells)
{
    if (!cells)
        return Part{sheet.dataset.get(), nullptr, sheet.transform,
                    sheet.size,          {},      sheet.crs};
    const QRect inside = *cells & QRect(QPoint(), sheet.size);
    if (inside.isEmpty())
        return failed(cellsOutside(sheet.size));
    Part part;
    part.window = windowOf(sheet.dataset.get(), inside);
    if (!part.window)
        return failed(QObject::tr("A part of the terrain cannot be taken out."));
    part.dataset = part.window.get();
    part.crs = sheet.crs;
    part.transform = sheet.transform;
    part.transform[0] += inside.x() * part.transform[1] + inside.y() * part.transform[2];
    part.transform[3] += inside.x() * part.transform[4] + inside.y() * part.transform[5];
    part.size = inside.size();
    part.origin = inside.topLeft();
    return part;
}

Result<std::vector<Part>> wantedParts(const Mosaic &mosaic,
                                      const std::optional<QRect> &cells)
{
    std::vector<Part> parts;
    for (const Sheet &sheet : mosaic.sheets) {
        Result<Part> part = wantedPart(sheet, cells);
        if (!part)
            return tl::unexpected(part.error());
        parts.push_back(std::move(*part));
    }
    return parts;
}

Extent extentOfParts(const std::vector<Part> &parts)
{
    const Part &first = parts.front();
    Extent all = extentOfGrid(first.transform, first.size);
    for (const Part &part : parts)
        if (isSameCrs(part.crs, first.crs))
            all = united(all, extentOfGrid(part.transform, part.size));
    return all;
}

Result<QString> wantedCrs(const Mosaic &mosaic, const std::vector<Part> &parts,
                          const GridRequest &request)
{
    const QString &own = mosaic.crs();
    const Extent all = extentOfParts(parts);
    const bool degrees = isGeographic(own);
    QString wanted = request.crs.isEmpty() ? QStringLiteral("utm") : request.crs;
    const bool narrow = all.width() <= WidestForUtm;
    if (request.crs.isEmpty() && (!degrees || !narrow))
        wanted = QStringLiteral("keep");
    if (wanted == QLatin1String("keep"))
        return own;
    if (wanted != QLatin1String("utm"))
        return wktOfMap(wanted);
    const QPointF middle((all.west + all.east) / 2.0, (all.south + all.north) / 2.0);
    const Result<QList<QPointF>> places = toDegrees({middle}, own);
    if (!places)
        return failed(QObject::tr("The terrain has no reference system, so that its UTM "
                                  "zone is not known."));
    return wktOf(utmOf(places->front().x(), places->front().y()));
}

// What gdalwarp makes of a part by itself, without doing it.
struct Proposal {
    Extent extent;
    double cell = 0.0;
    QSize size;
};

Result<Proposal> proposalFor(const Part &part, const QString &crs,
                             const std::optional<Extent> &rect)
{
    const GdalMessages messages;
    QStringList arguments{"-of", "VRT", "-et", "0"};
    if (!crs.isEmpty())
        arguments << "-t_srs" << crs;
    if (rect)
        arguments << "-te" << number(rect->west) << number(rect->south)
                  << number(rect->east) << number(rect->north);
    const Dataset made = warped({part.dataset}, arguments, nullptr);
    GeoTransform t{};
    if (!made || GDALGetGeoTransform(made.get(), t.data()) != CE_None)
        return failed(QObject::tr("The terrain cannot be brought to that reference "
                                  "system: %1.")
                          .arg(messages.reason(QObject::tr("it lies outside of it"))));
    const QSize size(GDALGetRasterXSize(made.get()), GDALGetRasterYSize(made.get()));
    return Proposal{extentOfGrid(t, size), t[1], size};
}

Result<Proposal> proposalForAll(const std::vector<Part> &parts, const QString &crs,
                                const std::optional<Extent> &rect)
{
    Result<Proposal> all = proposalFor(parts.front(), crs, rect);
    for (std::size_t i = 1; all && i < parts.size(); ++i) {
        Result<Proposal> next = proposalFor(parts[i], crs, rect);
        if (!next)
            return next;
        all->extent = united(all->extent, next->extent);
        all->cell = std::min(all->cell, next->cell);
    }
    if (all && parts.size() > 1) {
        const auto count = [&](double length) {
            return static_cast<int>(std::clamp(std::round(length / all->cell), 1.0, 2e9));
        };
        all->size = {count(all->extent.width()), count(all->extent.height())};
    }
    return all;
}

// The cells of the mosaic that a stretch is made of, where it begins and ends on cells.
std::optional<QRect> wholeCells(const Part &part, const Extent &extent)
{
    const GeoTransform &t = part.transform;
    const double left = (extent.west - t[0]) / t[1];
    const double right = (extent.east - t[0]) / t[1];
    const double top = (extent.north - t[3]) / t[5];
    const double bottom = (extent.south - t[3]) / t[5];
    for (const double edge : {left, right, top, bottom})
        if (!(std::abs(edge) < 2e9) || std::abs(edge - std::round(edge)) > Tolerance)
            return {};
    const QPoint first(static_cast<int>(std::round(left)),
                       static_cast<int>(std::round(top)));
    const QSize size(static_cast<int>(std::round(right)) - first.x(),
                     static_cast<int>(std::round(bottom)) - first.y());
    const QRect cells(first, size);
    return QRect(QPoint(), part.size).contains(cells) ? std::optional(cells)
                                                      : std::nullopt;
}

QSize limited(const QSize &size)
{
    const int longest = std::max(size.width(), size.height());
    if (longest <= MostProposedCells)
        return size;
    const auto side = [longest](int cells) {
        return std::max(static_cast<int>(qint64(cells) * MostProposedCells / longest), 1);
    };
    return {side(size.width()), side(size.height())};
}

void measureCells(OutputGrid &grid)
{
    const Extent extent = grid.extent();
    const double unit = metresOfCrsUnit(grid.crs);
    double eastward = unit;
    double northward = unit;
    if (isGeographic(grid.crs)) {
        const double middle = (extent.south + extent.north) / 2.0;
        northward = MetresOfDegree;
        eastward = MetresOfDegree * std::cos(middle * std::numbers::pi / 180.0);
    }
    grid.metresX = extent.width() / grid.size.width() * eastward;
    grid.metresY = extent.height() / grid.size.height() * northward;
}

// A cell of the output that is larger than one of the input is a mean.
Resampling chosen(Resampling wanted, const OutputGrid &grid, const Proposal &proposal)
{
    if (wanted != Resampling::Auto)
        return wanted;
    const bool shrinks = grid.size.width() * (1.0 + Tolerance) < proposal.size.width() ||
                         grid.size.height() * (1.0 + Tolerance) < proposal.size.height();
    return shrinks ? Resampling::Average : Resampling::Cubic;
}

bool meet(const Extent &a, const Extent &b)
{
    return a.west < b.east && b.west < a.east && a.south < b.north && b.south < a.north;
}

bool hasSquareCells(const GeoTransform &t)
{
    return t[1] > 0.0 && t[5] < 0.0 && isNear(t[1], -t[5]);
}

// The stretch that is wanted, and as many cells as it has by itself.
Result<Proposal> proposalOf(const std::vector<Part> &parts, const QString &crs,
                            bool native, const std::optional<Extent> &rect)
{
    const Part &first = parts.front();
    const Proposal own{extentOfGrid(first.transform, first.size), first.transform[1],
                       first.size};
    Result<Proposal> whole =
        native ? Result<Proposal>(own) : proposalForAll(parts, crs, {});
    if (!whole || !rect)
        return whole;
    if (!meet(*rect, whole->extent))
        return failed(QObject::tr("The rectangle lies outside of the terrain."));
    if (const auto cells = native ? wholeCells(first, *rect) : std::nullopt)
        return Proposal{*rect, own.cell, cells->size()};
    return proposalForAll(parts, crs, rect);
}

Result<OutputGrid> plan(const Mosaic &mosaic, const GridRequest &request, bool limits)
{
    const Result<std::vector<Part>> parts = wantedParts(mosaic, request.cells);
    if (!parts)
        return tl::unexpected(parts.error());
    const Result<QString> crs = wantedCrs(mosaic, *parts, request);
    if (!crs)
        return tl::unexpected(crs.error());
    const Part &first = parts->front();
    const bool keeps = mosaic.crs().isEmpty() || isSameCrs(*crs, mosaic.crs());
    const bool native = keeps && mosaic.isOneGrid() && hasSquareCells(first.transform);
    const Result<Proposal> proposal = proposalOf(*parts, *crs, native, request.rect);
    if (!proposal)
        return tl::unexpected(proposal.error());

    OutputGrid grid;
    grid.crs = *crs;
    grid.size = request.size.value_or(limits ? limited(proposal->size) : proposal->size);
    const Extent &extent = proposal->extent;
    grid.transform = {extent.west, extent.width() / grid.size.width(),
                      0.0,         extent.north,
                      0.0,         -extent.height() / grid.size.height()};
    const std::optional<QRect> cells = native ? wholeCells(first, extent) : std::nullopt;
    if (cells && cells->size() == grid.size) {
        grid.cells = cells->translated(first.origin);
        grid.resampling = Resampling::Nearest;
    } else {
        grid.resampling = chosen(request.resampling, grid, *proposal);
    }
    measureCells(grid);
    return grid;
}

// Rasters that do not lie on one grid are cut out by a rectangle.
Result<GridRequest> requestByRect(const Mosaic &mosaic, const GridRequest &request)
{
    const Result<OutputGrid> whole = planWhole(mosaic);
    if (!whole)
        return tl::unexpected(whole.error());
    const QRect cells = *request.cells & QRect(QPoint(), whole->size);
    if (cells.isEmpty())
        return failed(cellsOutside(whole->size));
    GeoTransform corner = whole->transform;
    corner[0] += cells.x() * corner[1];
    corner[3] += cells.y() * corner[5];
    const Extent extent = extentOfGrid(corner, cells.size());
    GridRequest byRect = request;
    byRect.cells.reset();
    const Result<std::vector<Part>> parts = wantedParts(mosaic, {});
    const Result<QString> crs =
        parts ? wantedCrs(mosaic, *parts, request) : tl::unexpected(parts.error());
    if (!crs)
        return tl::unexpected(crs.error());
    const Result<Extent> rect = boundsIn(*crs, extent, mosaic.crs());
    if (!rect)
        return tl::unexpected(rect.error());
    byRect.rect = *rect;
    return byRect;
}

} // namespace

Result<OutputGrid> planWhole(const Mosaic &mosaic)
{
    GridRequest request;
    request.crs = QStringLiteral("keep");
    return plan(mosaic, request, false);
}

Result<OutputGrid> planGrid(const Mosaic &mosaic, const GridRequest &request)
{
    if (!request.cells || mosaic.sheets.size() == 1)
        return plan(mosaic, request, true);
    const Result<GridRequest> byRect = requestByRect(mosaic, request);
    return byRect ? plan(mosaic, *byRect, true) : tl::unexpected(byRect.error());
}
