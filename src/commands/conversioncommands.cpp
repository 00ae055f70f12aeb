#include "commands/arguments.h"
#include "commands/commandparts.h"
#include "commands/commandwork.h"
#include "commands/progressprinter.h"
#include "commands/toldcommands.h"
#include "raster/elevationimage.h"
#include "tools/toolfiles.h"

namespace {

std::optional<int> givenInteger(const Arguments &arguments, const QString &name)
{
    return arguments.has(name) ? std::optional(arguments.integer(name)) : std::nullopt;
}

Result<Report> elevationToColor(const Arguments &arguments, CommandWork &work)
{
    const Result<QImage> palette = openPalette(arguments.text("palette-file"));
    if (!palette)
        return tl::unexpected(palette.error());
    const PaletteRange range{givenInteger(arguments, "elevation-lower"),
                             givenInteger(arguments, "elevation-upper"),
                             arguments.has("ignore-zero-values")};
    qint64 cut = 0;
    return elevationFileToColor(arguments.text("FROM"), *palette, range, work.progress(),
                                &cut)
        .and_then(
            [&](const QImage &image) { return savePicture(image, arguments.text("TO")); })
        .map([&cut](const Report &report) { return withCut(report, cut); });
}

// The grays as they are, or, where a pixel was cut off and the user wants that, spread.
Result<GrayPicture> graysOf(const Arguments &arguments, CommandWork &work)
{
    const QString from = arguments.text("FROM");
    const bool normalizes = arguments.has("normalize");
    PartOfProgress first(work.progress(), 0.0, normalizes ? 0.5 : 1.0);
    Result<GrayPicture> gray =
        elevationFileToGray(from, arguments.real("z-scale"), first);
    if (!gray || !gray->found.hasCutOff())
        return gray;
    work.console().question(normalizationQuestion(gray->found), normalizes, "normalize");
    if (!normalizes)
        return gray;
    gray->picture = QImage(); // two rasters of a large file may not fit
    PartOfProgress second(work.progress(), 0.5, 1.0);
    return normalizeFileToGray(from, gray->found, second);
}

Result<Report> elevationToGray(const Arguments &arguments, CommandWork &work)
{
    const Result<GrayPicture> gray = graysOf(arguments, work);
    if (!gray)
        return tl::unexpected(gray.error());
    const qint64 cut = qint64(gray->found.belowCount) + gray->found.aboveCount;
    return savePicture(gray->picture, arguments.text("TO"))
        .map([cut](const Report &report) { return withCut(report, cut); });
}

Result<Report> grayToElevation(const Arguments &arguments, CommandWork &work)
{
    const Result<SummedElevations> sums =
        grayFileToElevation(arguments.text("FROM"), work.progress());
    if (!sums)
        return tl::unexpected(sums.error());
    Result<Report> report = saveElevations(sums->image, arguments.text("TO"));
    if (report)
        work.console().message(summedElevationsText(sums->range));
    return report;
}

Result<Report> changeBlue0(const Arguments &arguments, CommandWork &work)
{
    return changeBlue0File(arguments.text("FROM"), work.progress())
        .and_then(
            [&](const QImage &image) { return saveEither(image, arguments.text("TO")); });
}

Command elevationToColorCommand()
{
    constexpr int Lowest = ElevationImage::LowestStep;
    constexpr int Highest = ElevationImage::HighestStep;
    return {
        .name = "elevation-to-color",
        .summary = "Makes a false colour file of an elevation file and a palette.",
        .positionals = fromAndTo("The elevation file."),
        .options = {fileOption("palette-file",
                               "A picture whose top row is the palette, the "
                               "lowest elevation on its left."),
                    flag("ignore-zero-values",
                         "Leaves elevations of 0 out when the lowest one is looked for."),
                    foundInFile(integerOption("elevation-lower",
                                              "The elevation of the palette's left end.",
                                              Lowest, Highest, 0)),
                    foundInFile(integerOption("elevation-upper",
                                              "The elevation of the palette's right end.",
                                              Lowest, Highest, 0))},
        .examples = {"zephrant-terrain elevation-to-color --palette-file alps.png "
                     "dem.png colors.png",
                     "    The palette spans all elevations of the file."},
        .run = elevationToColor};
}

Command elevationToGrayCommand()
{
    constexpr double Most = 65536;
    return {
        .name = "elevation-to-gray",
        .summary = "Makes a grayscale file of an elevation file.",
        .positionals = fromAndTo("The elevation file."),
        .options = {realOption("z-scale",
                               "Every elevation is multiplied by it; the product is "
                               "the gray, cut off at 0 and 255.",
                               -Most, Most, 2, 1),
                    flag("normalize",
                         "Where grays were cut off, spreads the elevations over all "
                         "grays instead.")},
        .examples = {"zephrant-terrain elevation-to-gray --normalize dem.png gray.png",
                     "    The lowest elevation is black, the highest white."},
        .run = elevationToGray};
}

Command grayToElevationCommand()
{
    return {.name = "gray-to-elevation",
            .summary = "Makes an elevation file of a picture: an elevation is the sum of "
                       "a pixel's red, green and blue.",
            .positionals = fromAndTo("The picture."),
            .examples = {"zephrant-terrain gray-to-elevation gray.png dem.png",
                         "    Elevations from 0 for black to 765 for white."},
            .run = grayToElevation};
}

Command changeBlue0Command()
{
    return {.name = "change-blue-0",
            .summary = "Sets blue to 1 where it is 0.",
            .positionals = fromAndTo("The picture."),
            .examples = {"zephrant-terrain change-blue-0 dem.png changed.png",
                         "    No pixel of the result is taken for a nodal point."},
            .run = changeBlue0};
}

} // namespace

std::vector<Command> conversionCommands()
{
    return {elevationToColorCommand(), elevationToGrayCommand(), grayToElevationCommand(),
            changeBlue0Command()};
}
