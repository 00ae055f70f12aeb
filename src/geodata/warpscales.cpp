#include "geodata/warpscales.h"

#include <QObject>

#include <cpl_string.h>

#include <algorithm>
#include <limits>

namespace {

// Of a raster; a larger one's parts are so many that none of them matters.
constexpr double MostCells = 4e8;

GDALResampleAlg kernelOf(Resampling resampling)
{
    switch (resampling) {
    case Resampling::Nearest:
        return GRA_NearestNeighbour;
    case Resampling::Bilinear:
        return GRA_Bilinear;
    case Resampling::Average:
        return GRA_Average;
    case Resampling::Auto:
    case Resampling::Cubic:
        break;
    }
    return GRA_Cubic;
}

// Finds no place at all, which ends the work on a part before it begins.
int nowhere(void *, int, int count, double *, double *, double *, int *ok)
{
    std::fill_n(ok, count, 0);
    return 1;
}

CPLErr beforePart(void *kernel, void *)
{
    static_cast<GDALWarpKernel *>(kernel)->pfnTransformer = nowhere;
    return CE_None;
}

CPLErr afterPart(void *kernel, void *scales)
{
    const auto &part = *static_cast<const GDALWarpKernel *>(kernel);
    static_cast<std::vector<WarpScale> *>(scales)->push_back(
        {QRect(part.nDstXOff, part.nDstYOff, part.nDstXSize, part.nDstYSize),
         part.dfXScale, part.dfYScale});
    return CE_None;
}

// A raster like the layer in everything but its heights, which are all 0.
Dataset flat(const Sheet &layer)
{
    QByteArray text = layer.virtualRaster;
    const auto cut = [&text](const QByteArray &from, const QByteArray &until) {
        const qsizetype begin = text.indexOf(from);
        const qsizetype end = text.indexOf(until, begin);
        if (begin >= 0 && end >= begin)
            text.remove(begin, end - begin);
    };
    cut("<NoDataValue>", "<ComplexSource");
    cut("<ComplexSource", "</VRTRasterBand>");
    return Dataset(
        GDALOpenEx(text.constData(), GDAL_OF_RASTER, nullptr, nullptr, nullptr));
}

} // namespace

void WarpOptionsDeleter::operator()(GDALWarpOptions *options) const
{
    GDALDestroyWarpOptions(options);
}

WarpOptions warpOptions(GDALDatasetH source, std::optional<double> noData,
                        Resampling resampling, SmoothTransform &way)
{
    WarpOptions made(GDALCreateWarpOptions());
    GDALWarpOptions &options = *made;
    options.hSrcDS = source;
    options.eResampleAlg = kernelOf(resampling);
    options.eWorkingDataType = GDT_Float32;
    GDALWarpInitDefaultBandMapping(&options, 1);
    if (noData)
        GDALWarpInitSrcNoDataReal(&options, *noData);
    GDALWarpInitDstNoDataReal(&options, std::numeric_limits<double>::quiet_NaN());
    options.papszWarpOptions =
        CSLSetNameValue(options.papszWarpOptions, "NUM_THREADS", "1");
    options.pfnTransformer = way.function();
    options.pTransformerArg = way.data();
    return made;
}

Result<std::unique_ptr<SmoothTransform>> wayTo(GDALDatasetH layer, const OutputGrid &grid)
{
    const GdalMessages messages;
    std::unique_ptr<SmoothTransform> way = SmoothTransform::between(layer, grid);
    if (!way)
        return failed(
            QObject::tr("The terrain cannot be brought to that reference system: %1.")
                .arg(messages.reason(QObject::tr("no way is known"))));
    return way;
}

Result<std::vector<WarpScale>> warpScales(const Sheet &layer, const OutputGrid &grid,
                                          Progress &progress)
{
    const QRect all(QPoint(), grid.size);
    const bool blurs =
        grid.resampling == Resampling::Cubic || grid.resampling == Resampling::Bilinear;
    if (!blurs || double(layer.size.width()) * layer.size.height() > MostCells)
        return std::vector{WarpScale{all, 0.0, 0.0}};
    const GdalMessages messages;
    const Dataset source = flat(layer);
    const Dataset target(GDALCreate(GDALGetDriverByName("MEM"), "", grid.size.width(),
                                    grid.size.height(), 1, GDT_Byte, nullptr));
    if (!source || !target)
        return failed(QObject::tr("There is not enough memory to read the terrain."));
    Result<std::unique_ptr<SmoothTransform>> way = wayTo(source.get(), grid);
    if (!way)
        return tl::unexpected(way.error());
    const WarpOptions options =
        warpOptions(source.get(), layer.rasters.front().noData, grid.resampling, **way);
    std::vector<WarpScale> scales;
    GdalProgress watched(progress, 0, 0, 1);
    options->hDstDS = target.get();
    options->papszWarpOptions =
        CSLSetNameValue(options->papszWarpOptions, "INIT_DEST", "0");
    options->pfnPreWarpChunkProcessor = beforePart;
    options->pfnPostWarpChunkProcessor = afterPart;
    options->pPostWarpProcessorArg = &scales;
    options->pfnProgress = GdalProgress::step;
    options->pProgressArg = &watched;
    GDALWarpOperation operation;
    if (operation.Initialize(options.get()) == CE_None)
        (void)operation.ChunkAndWarpImage(0, 0, grid.size.width(), grid.size.height());
    if (watched.stopped())
        return stopped();
    return scales;
}
