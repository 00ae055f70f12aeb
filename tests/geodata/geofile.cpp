#include "geodata/geofile.h"

#include <cpl_string.h>
#include <gdal_utils.h>
#include <ogr_srs_api.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

CPLStringList listOf(const QStringList &options)
{
    CPLStringList list;
    for (const QString &option : options)
        list.AddString(option.toUtf8().constData());
    return list;
}

Dataset opened(const QString &name)
{
    return Dataset(
        GDALOpenEx(name.toUtf8().constData(), GDAL_OF_RASTER, nullptr, nullptr, nullptr));
}

// Heights in memory, as GDAL's drivers copy them.
Dataset inMemory(const GeoFile &file)
{
    Dataset made(GDALCreate(GDALGetDriverByName("MEM"), "", file.size.width(),
                            file.size.height(), 1, file.type, nullptr));
    GDALSetGeoTransform(made.get(), const_cast<double *>(file.transform.data()));
    if (!file.crs.isEmpty()) {
        OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
        OSRSetFromUserInput(srs, file.crs.toUtf8().constData());
        OSRSetAxisMappingStrategy(srs, OAMS_TRADITIONAL_GIS_ORDER);
        GDALSetSpatialRef(made.get(), srs);
        OSRDestroySpatialReference(srs);
    }
    GDALRasterBandH band = GDALGetRasterBand(made.get(), 1);
    if (file.noData)
        GDALSetRasterNoDataValue(band, *file.noData);
    std::vector<double> row(std::size_t(file.size.width()));
    for (int y = 0; y < file.size.height(); ++y) {
        for (int x = 0; x < file.size.width(); ++x)
            row[std::size_t(x)] = file.height ? file.height(x, y) : hills(x, y);
        if (GDALRasterIO(band, GF_Write, 0, y, file.size.width(), 1, row.data(),
                         file.size.width(), 1, GDT_Float64, 0, 0) != CE_None)
            return nullptr;
    }
    if (file.more)
        file.more(made.get());
    return made;
}

Heights cellsOf(GDALDatasetH made)
{
    if (!made)
        return {};
    Heights heights{{GDALGetRasterXSize(made), GDALGetRasterYSize(made)}, {}};
    const int width = heights.size.width();
    const int height = heights.size.height();
    heights.metres.resize(std::size_t(width) * std::size_t(height));
    GDALRasterBandH band = GDALGetRasterBand(made, 1);
    if (GDALRasterIO(band, GF_Read, 0, 0, width, height, heights.metres.data(), width,
                     height, GDT_Float32, 0, 0) != CE_None)
        return {};
    int has = 0;
    const auto noData = static_cast<float>(GDALGetRasterNoDataValue(band, &has));
    for (float &metres : heights.metres)
        if (has != 0 && metres == noData)
            metres = std::numeric_limits<float>::quiet_NaN();
    return heights;
}

} // namespace

double hills(int column, int row)
{
    return std::round(1000.0 + 500.0 * std::sin(column * 0.11) * std::cos(row * 0.07) +
                      300.0 * std::sin((column + 2.0 * row) * 0.031));
}

bool write(const GeoFile &file)
{
    startGdal();
    const Dataset memory = inMemory(file);
    if (!memory)
        return false;
    CPLStringList options = listOf(file.options);
    const Dataset made(GDALCreateCopy(GDALGetDriverByName(file.driver),
                                      file.name.toUtf8().constData(), memory.get(), 0,
                                      options.List(), nullptr, nullptr));
    return made != nullptr;
}

Heights judgedByWarp(const QStringList &files, const QStringList &arguments)
{
    std::vector<Dataset> owners;
    std::vector<GDALDatasetH> sources;
    for (const QString &file : files) {
        owners.push_back(opened(file));
        sources.push_back(owners.back().get());
    }
    CPLStringList list = listOf(QStringList{"-of", "MEM", "-et", "0", "-ot", "Float32",
                                            "-ovr", "NONE", "-dstnodata", "nan"} +
                                arguments);
    GDALWarpAppOptions *const options = GDALWarpAppOptionsNew(list.List(), nullptr);
    int wrong = 0;
    const Dataset made(GDALWarp("", nullptr, static_cast<int>(sources.size()),
                                sources.data(), options, &wrong));
    GDALWarpAppOptionsFree(options);
    return cellsOf(made.get());
}

QStringList argumentsFor(const OutputGrid &grid)
{
    const auto number = [](double value) { return QString::number(value, 'g', 17); };
    const char *const names[] = {"", "near", "bilinear", "cubic", "average"};
    const Extent extent = grid.extent();
    QStringList arguments{"-te",
                          number(extent.west),
                          number(extent.south),
                          number(extent.east),
                          number(extent.north),
                          "-ts",
                          QString::number(grid.size.width()),
                          QString::number(grid.size.height()),
                          "-r",
                          names[static_cast<int>(grid.resampling)]};
    if (!grid.crs.isEmpty())
        arguments << "-t_srs" << grid.crs;
    return arguments;
}

Heights judgedByTranslate(const QString &file, const QStringList &arguments)
{
    CPLStringList list = listOf(QStringList{"-of", "MEM"} + arguments);
    GDALTranslateOptions *const options = GDALTranslateOptionsNew(list.List(), nullptr);
    const Dataset source = opened(file);
    int wrong = 0;
    const Dataset made(source ? GDALTranslate("", source.get(), options, &wrong)
                              : nullptr);
    GDALTranslateOptionsFree(options);
    return cellsOf(made.get());
}
