#include "tools/toolfiles.h"

#include "raster/imagefile.h"
#include "tools/convolution.h"
#include "tools/mask.h"
#include "tools/optimization.h"

#include <QCoreApplication>

#include <utility>

namespace {

QString tr(const char *context, const char *text)
{
    return QCoreApplication::translate(context, text);
}

// What memory was short for cannot be saved, and that is told.
Result<QImage> orUnsavable(Result<QImage> result)
{
    if (!result && !result.error().stopped)
        return QImage();
    return result;
}

Result<ElevationImage> openElevations(const QString &fileName)
{
    ElevationImage image(fileName);
    if (image.isNull())
        return failed(couldNotOpenText(fileName));
    return image;
}

} // namespace

QString couldNotOpenText(const QString &fileName)
{
    return tr("ToolDialog", "Could not open file \"%1\".").arg(fileName);
}

QString couldNotLoadText(const QString &fileName)
{
    return tr("ToolDialog", "Could not load image file \"%1\".").arg(fileName);
}

Result<QImage> openPicture(const QString &fileName)
{
    QImage image = loadImageFile(fileName);
    if (image.isNull())
        return failed(couldNotOpenText(fileName));
    return image;
}

Result<QImage> openKernel(const QString &fileName)
{
    Result<QImage> kernel = openPicture(fileName);
    if (kernel && !kernelFits(kernel->size()))
        return failed(tr("ConvolutionDialog",
                         "The kernel file \"%1\" is too large.\n"
                         "Allowed overall number of pixels (width x heidth): 16384.")
                          .arg(fileName));
    return kernel;
}

Result<QImage> openPalette(const QString &fileName)
{
    return openPicture(fileName).map(withTopRowSpread);
}

Result<QImage> changeBlue0File(const QString &from, Progress &progress)
{
    Result<QImage> image = openPicture(from);
    if (!image)
        return image;
    return changeBlue0Pixels(std::move(*image), progress);
}

Result<QImage> convolveFile(const QString &from, const QString &kernel,
                            Progress &progress, qint64 *cut)
{
    Result<QImage> image = openPicture(from);
    if (!image)
        return image;
    Result<QImage> weights = openKernel(kernel);
    if (!weights)
        return weights;
    return orUnsavable(convolve(*image, *weights, progress, cut));
}

Result<QImage> maskFile(const QString &from, const QString &mask, Progress &progress)
{
    Result<QImage> image = openPicture(from);
    if (!image)
        return image;
    Result<QImage> over = openPicture(mask);
    if (!over)
        return over;
    return applyMask(std::move(*image), *over, progress)
        .map_error([&mask](const Failure &failure) {
            return failure.stopped ? failure : Failure{couldNotOpenText(mask)};
        });
}

Result<QImage> mergeFiles(const QString &first, const QString &second,
                          const MergeOptions &options, Progress &progress, qint64 *cut)
{
    const QImage image1 = loadImageFile(first);
    if (image1.isNull())
        return failed(couldNotLoadText(first));
    const QImage image2 = loadImageFile(second);
    if (image2.isNull())
        return failed(couldNotLoadText(second));
    return orUnsavable(merge(image1, image2, options, progress, cut));
}

Result<QImage> rectifyFile(const QString &from, const RectifyCorners &corners,
                           Progress &progress)
{
    Result<QImage> image = openPicture(from);
    if (!image)
        return image;
    setRectifyCorners(corners);
    [[maybe_unused]] const Optimization optimization; // a search is not needed yet
    return orUnsavable(rectify(*image, progress));
}

Result<ElevationImage> resampleFile(const QString &from, const ResampleRequest &request,
                                    double zScale, Progress &progress, qint64 *cut)
{
    const ElevationImage source(from);
    if (source.isNull())
        return failed(couldNotLoadText(from));
    return resample(source, {resampledSize(source.size(), request), zScale}, progress,
                    cut);
}

Result<GrayPicture> elevationFileToGray(const QString &from, double zScale,
                                        Progress &progress)
{
    return openElevations(from).and_then([&](ElevationImage &&image) {
        return elevationToGray(std::move(image), zScale, progress);
    });
}

Result<GrayPicture> normalizeFileToGray(const QString &from, const GrayConversion &found,
                                        Progress &progress)
{
    return openElevations(from).and_then([&](ElevationImage &&image) {
        return normalizeToGray(std::move(image), found, progress);
    });
}

QString normalizationQuestion(const GrayConversion &found)
{
    return tr("ElevationToGrayDialog",
              "Conversion finished.\nThere were %1 pixels below 0\nand %2 pixels above "
              "255.\nNormalization would require a z scale of %3.\nNormalize?")
        .arg(found.belowCount)
        .arg(found.aboveCount)
        .arg(found.normalizingScale(), 0, 'f', 2);
}

Result<SummedElevations> grayFileToElevation(const QString &from, Progress &progress)
{
    return openElevations(from).and_then([&](ElevationImage &&image) {
        return grayToElevation(std::move(image), progress);
    });
}

QString summedElevationsText(const ElevationLimits &range)
{
    return tr("GrayToElevationDialog",
              "Conversion finished.\nElevation values between %1 and %2 were "
              "detected.\n\nNote that an elevation value is the sum of the\n"
              "red, green and blue values of a pixel.")
        .arg(elevationAsInteger(range.lowest))
        .arg(elevationAsInteger(range.highest));
}

PaletteRange proposedRange(const ElevationImage &image, bool ignoreZeros)
{
    const ElevationLimits range = elevationRange(image, ignoreZeros);
    return {elevationAsInteger(range.lowest), elevationAsInteger(range.highest),
            ignoreZeros};
}

Result<QImage> elevationFileToColor(const QString &from, const QImage &palette,
                                    const PaletteRange &range, Progress &progress,
                                    qint64 *cut)
{
    Result<ElevationImage> image = openElevations(from);
    if (!image)
        return tl::unexpected(image.error());
    PaletteRange ends = range;
    if (!ends.lower || !ends.upper) {
        const PaletteRange found = proposedRange(*image, range.ignoreZeros);
        ends.lower = ends.lower ? ends.lower : found.lower;
        ends.upper = ends.upper ? ends.upper : found.upper;
    }
    return elevationToColor(std::move(*image), palette, *ends.lower, *ends.upper,
                            progress, cut);
}
