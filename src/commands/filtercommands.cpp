#include "commands/arguments.h"
#include "commands/commandparts.h"
#include "commands/commandwork.h"
#include "commands/toldcommands.h"
#include "tools/toolfiles.h"

namespace {

Result<Report> saved(const Result<QImage> &image, const Arguments &arguments)
{
    if (!image)
        return tl::unexpected(image.error());
    return saveEither(*image, arguments.text("TO"));
}

Result<Report> convolution(const Arguments &arguments, CommandWork &work)
{
    qint64 cut = 0;
    const Result<QImage> image = convolveFile(
        arguments.text("FROM"), arguments.text("kernel-file"), work.progress(), &cut);
    return saved(image, arguments).map([cut](const Report &report) {
        return withCut(report, cut);
    });
}

Result<Report> mask(const Arguments &arguments, CommandWork &work)
{
    return saved(
        maskFile(arguments.text("FROM"), arguments.text("mask-file"), work.progress()),
        arguments);
}

Result<Report> mergeTwo(const Arguments &arguments, CommandWork &work)
{
    MergeOptions options;
    options.mode = arguments.has("multiply") ? MergeOptions::Mode::Multiply
                                             : MergeOptions::Mode::Add;
    options.bias1 = arguments.real("bias1");
    options.bias2 = arguments.real("bias2");
    qint64 cut = 0;
    const Result<QImage> image = mergeFiles(
        arguments.text("FILE1"), arguments.text("FILE2"), options, work.progress(), &cut);
    return saved(image, arguments).map([cut](const Report &report) {
        return withCut(report, cut);
    });
}

Result<Report> resampleOne(const Arguments &arguments, CommandWork &work)
{
    ResampleRequest request;
    if (arguments.has("pixel-x"))
        request.pixelX = arguments.integer("pixel-x");
    if (arguments.has("pixel-y"))
        request.pixelY = arguments.integer("pixel-y");
    if (arguments.has("percent-x"))
        request.percentX = arguments.real("percent-x");
    if (arguments.has("percent-y"))
        request.percentY = arguments.real("percent-y");
    qint64 cut = 0;
    const Result<ElevationImage> image =
        resampleFile(arguments.text("FROM"), request, arguments.real("z-scale"),
                     work.progress(), &cut);
    if (!image)
        return tl::unexpected(image.error());
    return saveElevations(*image, arguments.text("TO")).map([cut](const Report &report) {
        return withCut(report, cut);
    });
}

QString cornerName(std::size_t corner)
{
    return QStringLiteral("corner%1").arg(corner + 1);
}

Result<Report> rectifyOne(const Arguments &arguments, CommandWork &work)
{
    RectifyCorners corners;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const QList<double> n = arguments.numbers(cornerName(i));
        corners[i] = {n[0], n[1], n[2], n[3]};
    }
    return saved(rectifyFile(arguments.text("FROM"), corners, work.progress()),
                 arguments);
}

Command convolutionCommand()
{
    return {.name = "convolution",
            .summary = "Filters a picture with a kernel that is a picture itself.",
            .positionals = fromAndTo("The picture."),
            .options = {fileOption(
                "kernel-file", "The kernel, of at most 16384 pixels: 128 stands for a "
                               "weight of 0.")},
            .examples = {"zephrant-terrain convolution --kernel-file soft.png dem.png "
                         "filtered.png",
                         "    Each channel by the same channel of the kernel."},
            .run = convolution};
}

Command maskCommand()
{
    return {.name = "mask",
            .summary = "Lays a mask with an alpha channel over a picture.",
            .positionals = fromAndTo("The picture."),
            .options = {fileOption("mask-file",
                                   "The mask, stretched to the size of the picture.")},
            .examples = {"zephrant-terrain mask --mask-file clouds.png texture.png "
                         "cloudy.png",
                         "    Clouds over a texture."},
            .run = mask};
}

Command mergeCommand()
{
    constexpr double Most = 255;
    Option add = flag("add", "Adds the colours, each multiplied by its bias.");
    add.group = "mode";
    add.defaultNote = "on, unless --multiply is given";
    Option multiply = flag("multiply", "Multiplies the colours, each added to its bias, "
                                       "and divides by 255.");
    multiply.group = "mode";
    return {.name = "merge",
            .summary = "Merges two pictures channel by channel.",
            .positionals = {{.name = "FILE1",
                             .help = "The first picture, which gives the size."},
                            {.name = "FILE2", .help = "The second picture, stretched."},
                            toFile()},
            .options = {add, multiply,
                        realOption("bias1", "Bias of the first picture.", -Most, Most, 2,
                                   0.5),
                        realOption("bias2", "Bias of the second picture.", -Most, Most, 2,
                                   0.5)},
            .examples = {"zephrant-terrain merge --multiply --bias1 0 --bias2 64 "
                         "texture.png shade.png shaded.png",
                         "    A texture darkened by a shaded relief."},
            .run = mergeTwo};
}

Option ofAxis(Option option, const char *axis)
{
    option.group = axis;
    return option;
}

Option percentOption(const char *axis)
{
    Option option =
        realOption(QStringLiteral("percent-") + axis,
                   "Size in percent of the source. Where nothing is asked for the other "
                   "axis, that follows.",
                   0, ResampleRequest::MostPercent, 2, 100);
    return ofAxis(option, axis);
}

Option pixelOption(const char *axis)
{
    Option option = integerOption(
        QStringLiteral("pixel-") + axis,
        "Size in pixels. Where nothing is asked for the other axis, that follows.", 0,
        ResampleRequest::MostPixels, 0);
    return ofAxis(foundInFile(option), axis);
}

Command resampleCommand()
{
    constexpr double Most = 16384;
    return {.name = "resample",
            .summary =
                "Changes the size of an elevation file and the scale of its values.",
            .positionals = fromAndTo("The elevation file."),
            .options = {percentOption("x"), percentOption("y"), pixelOption("x"),
                        pixelOption("y"),
                        realOption("z-scale", "Every elevation is multiplied by it.",
                                   -Most, Most, 2, 1)},
            .examples = {"zephrant-terrain resample --percent-x 50 dem.png small.png",
                         "    Half as wide and half as high.",
                         "zephrant-terrain resample --pixel-x 512 --pixel-y 512 dem.png "
                         "square.png",
                         "    The ratio of the sides is not kept."},
            .run = resampleOne};
}

Command rectifyCommand()
{
    Command command{
        .name = "rectify",
        .summary = "Warps a picture by four pairs of points.",
        .positionals = fromAndTo("The picture."),
        .examples = {"zephrant-terrain rectify --corner1 0,0,4,3 --corner2 99,0,95,2 "
                     "--corner3 0,99,1,97 --corner4 99,99,98,98 photo.png map.png",
                     "    What lies at 4,3 comes to 0,0."},
        .run = rectifyOne};
    for (std::size_t i = 0; i < RectifyCorners().size(); ++i) {
        Option corner = integerOption(
            cornerName(i),
            QStringLiteral("Point %1 of the corrected picture, and where it lies on "
                           "the distorted one, in pixels.")
                .arg(i + 1),
            RectifyCorner::Lowest, RectifyCorner::Highest, 0);
        corner.valueName = "X,Y,X',Y'";
        corner.numbers = 4;
        corner.defaultValue = "0,0,0,0";
        command.options.push_back(corner);
    }
    return command;
}

} // namespace

std::vector<Command> filterCommands()
{
    return {convolutionCommand(), maskCommand(), resampleCommand(), rectifyCommand(),
            mergeCommand()};
}
