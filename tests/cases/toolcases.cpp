#include "cases/toolcases.h"

#include "cases/casefile.h"
#include "tools/convolution.h"
#include "tools/elevationconversions.h"
#include "tools/mask.h"
#include "tools/merge.h"
#include "tools/rectify.h"
#include "tools/resample.h"

#include <QMap>

namespace {

QString grayToElevationCase(const CaseFile &file)
{
    const QImage source = file.colours("source").convertToFormat(QImage::Format_RGB888);
    ElevationImage image(source.size(), QImage::Format_RGB888);
    for (int y = 0; y < source.height(); ++y)
        memcpy(image.scanLine(y), source.constScanLine(y), size_t(source.width()) * 3);
    NoProgress unwatched;
    return file.differenceOfElevations(
        grayToElevation(std::move(image), unwatched)->image);
}

QString elevationToGrayCase(const CaseFile &file)
{
    NoProgress unwatched;
    const GrayPicture gray = *elevationToGray(file.elevations("source"),
                                              file.number("z-scale", 1.0), unwatched);
    const GrayConversion &conversion = gray.found;
    if (conversion.belowCount != file.integer("below") ||
        conversion.aboveCount != file.integer("above"))
        return QStringLiteral("below %1, above %2")
            .arg(conversion.belowCount)
            .arg(conversion.aboveCount);
    return file.differenceOfColours(gray.picture);
}

QString elevationToColorCase(const CaseFile &file)
{
    NoProgress unwatched;
    return file.differenceOfColours(
        elevationToColor(file.elevations("source"), file.colours("palette"),
                         file.integer("lower"), file.integer("upper"), unwatched)
            .value_or(QImage()));
}

QString changeBlue0Case(const CaseFile &file)
{
    NoProgress unwatched;
    const QImage image =
        changeBlue0Pixels(file.colours("source"), unwatched).value_or(QImage());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) != 255)
                return "a pixel is not opaque";
    return file.differenceOfColours(image);
}

QString convolutionCase(const CaseFile &file)
{
    NoProgress unwatched;
    return file.differenceOfColours(
        convolve(file.colours("source"), file.colours("kernel"), unwatched)
            .value_or(QImage()));
}

QString maskCase(const CaseFile &file)
{
    NoProgress unwatched;
    return file.differenceOfColours(
        applyMask(file.colours("source"), file.colours("mask"), unwatched)
            .value_or(QImage()));
}

QString mergeCase(const CaseFile &file)
{
    MergeOptions options;
    options.bias1 = file.number("bias-1");
    options.bias2 = file.number("bias-2");
    if (!file.option("multiply").isEmpty())
        options.mode = MergeOptions::Mode::Multiply;
    NoProgress unwatched;
    return file.differenceOfColours(
        merge(file.colours("first"), file.colours("second"), options, unwatched)
            .value_or(QImage()));
}

QString resampleCase(const CaseFile &file)
{
    NoProgress unwatched;
    const ResampleOptions options = {{file.integer("width"), file.integer("height")},
                                     file.number("z-scale", 1.0)};
    return file.differenceOfElevations(
        resample(file.elevations("source"), options, unwatched)
            .value_or(ElevationImage()));
}

QString rectifyCase(const CaseFile &file)
{
    // Corrected x and y, then distorted x and y, of each corner.
    double *const corners[] = {&Ax, &Ay, &Ax_, &Ay_, &Bx, &By, &Bx_, &By_,
                               &Cx, &Cy, &Cx_, &Cy_, &Dx, &Dy, &Dx_, &Dy_};
    for (int corner = 0; corner < 4; ++corner) {
        const QStringList words = file.option("corner-" + QString::number(corner + 1));
        for (int i = 0; i < 4; ++i)
            *corners[corner * 4 + i] = words.value(i).toDouble();
    }
    NoProgress unwatched;
    return file.differenceOfColours(
        rectify(file.colours("source"), unwatched).value_or(QImage()));
}

} // namespace

QString (*toolCase(const QString &tool))(const CaseFile &)
{
    static const QMap<QString, QString (*)(const CaseFile &)> tools = {
        {"gray-to-elevation", grayToElevationCase},
        {"elevation-to-gray", elevationToGrayCase},
        {"elevation-to-color", elevationToColorCase},
        {"change-blue-0", changeBlue0Case},
        {"convolution", convolutionCase},
        {"mask", maskCase},
        {"merge", mergeCase},
        {"resample", resampleCase},
        {"rectify", rectifyCase},
    };
    return tools.value(tool);
}
