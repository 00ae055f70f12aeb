#include "commands/arguments.h"
#include "commands/commandparts.h"
#include "commands/commandwork.h"
#include "commands/toldcommands.h"
#include "importers/bindemconversion.h"
#include "importers/bindemheaderfile.h"
#include "importers/japandem.h"
#include "importers/usgsdemimport.h"

#include <QFile>

#include <utility>

namespace {

// --- usgs-dem ------------------------------------------------------------------------

// Takes every header as it comes.
class UsgsAnswers final : public UsgsDemQuestions {
public:
    UsgsAnswers(Console &console, bool continues)
        : m_console(console), m_continues(continues)
    {
    }
    [[nodiscard]] bool confirmHeader(UsgsDemData &) override { return true; }
    [[nodiscard]] bool continueChecking(const SuspiciousElevation &jump) override
    {
        m_console.question(jump.question(), m_continues, "continue-checking");
        return m_continues;
    }

private:
    Console &m_console;
    bool m_continues;
};

Result<Report> usgsDem(const Arguments &arguments, CommandWork &work)
{
    const QStringList files = arguments.texts("FROM");
    for (const QString &name : files)
        if (!QFile(name).open(QIODevice::ReadOnly))
            return failed(couldNotOpenMessage(name));
    UsgsAnswers answers(work.console(), arguments.has("continue-checking"));
    UsgsDemImport import(arguments.integer("void-value"), answers);
    const Result<ElevationImage> image = import.run(files, work.progress());
    if (!image)
        return tl::unexpected(image.error());
    if (image->isNull())
        return failed(QStringLiteral("The headers of the files give no usable size; "
                                     "\"%1\" was not written.")
                          .arg(arguments.text("TO")));
    return saveElevations(*image, arguments.text("TO"))
        .map([&import](const Report &report) {
            return withLosses(report, import.losses());
        });
}

Command usgsDemCommand()
{
    Command command{
        .name = "usgs-dem",
        .summary = "Imports USGS DEM files, several of them as one mosaic.",
        .positionals = fromAndTo("The files."),
        .options = {integerOption("void-value", "Elevations of this value become 0.",
                                  ElevationImage::LowestStep, ElevationImage::HighestStep,
                                  -9999),
                    flag("continue-checking",
                         "Goes on telling elevations that jump by 512 or more, instead "
                         "of one in each file.")},
        .examples = {"zephrant-terrain usgs-dem west.dem east.dem dem.png",
                     "    Two tiles side by side."},
        .run = usgsDem};
    command.positionals.front().several = true;
    return command;
}

// --- binary-dem ----------------------------------------------------------------------

constexpr int CoordinateDecimals = 8;
constexpr double MostDegrees = 360; // of coordinates and extents, either sign

// A field of the rectangle that is cut out, and what a header says of it.
struct RectangleField {
    QString option;
    QString help;
    double BinDemOptions::*value;
    double (*ofHeader)(const BinDemHeader &);
};

const QList<RectangleField> &rectangleFields()
{
    using H = BinDemHeader;
    static const QList<RectangleField> fields = {
        {"upper-left-corner-x", "X of the rectangle's upper left corner, in map units.",
         &BinDemOptions::upperLeftX, [](const H &h) { return h.upperLeftX; }},
        {"upper-left-corner-y", "Y of the rectangle's upper left corner, in map units.",
         &BinDemOptions::upperLeftY, [](const H &h) { return h.upperLeftY; }},
        {"extent-x", "Width of the rectangle, in map units.", &BinDemOptions::extentX,
         [](const H &h) { return h.extentX(); }},
        {"extent-y", "Height of the rectangle, in map units.", &BinDemOptions::extentY,
         [](const H &h) { return h.extentY(); }},
    };
    return fields;
}

class BinAnswers final : public BinDemHeaderListener, public BinDemQuestions {
public:
    BinAnswers(Console &console, bool proceeds) : m_console(console), m_proceeds(proceeds)
    {
    }
    void bitsGuessed(int bitsPerPixel) override
    {
        m_console.message(bitsGuessedText(bitsPerPixel));
    }
    [[nodiscard]] bool proceedWithoutKeyword() override
    {
        m_console.question(withoutKeyword(), m_proceeds, "proceed-anyway");
        return m_proceeds;
    }

private:
    Console &m_console;
    bool m_proceeds;
};

// As a field of so many decimals holds it.
double asField(double value)
{
    return QString::number(snappedCoordinate(value), 'f', CoordinateDecimals).toDouble();
}

// What the options and the header say together. Fails where the header says what no
// field can hold.
Result<BinDemOptions> binDemOptions(const BinDemHeaderFile &file,
                                    const Arguments &arguments)
{
    BinDemOptions options;
    for (const RectangleField &field : rectangleFields()) {
        const double found = asField(field.ofHeader(file.header()));
        if (!(found >= -MostDegrees && found <= MostDegrees))
            return failed(
                QStringLiteral("The header \"%1\" gives %2 for --%3, which lies "
                               "outside of %4 to %5.")
                    .arg(arguments.text("header-file"))
                    .arg(found)
                    .arg(field.option)
                    .arg(-MostDegrees)
                    .arg(MostDegrees));
        options.*field.value =
            arguments.has(field.option) ? arguments.real(field.option) : found;
    }
    options.zScale = arguments.real("z-scale");
    options.keepNoDataValues =
        arguments.has("keep-nodata-values") && file.header().hasNoDataValue;
    options.statisticsMaximum = file.statisticsMaximum();
    return options;
}

Result<Report> saveBinDem(const BinDem &dem, const Arguments &arguments,
                          CommandWork &work)
{
    if (dem.image.isNull())
        return failed(QStringLiteral("The rectangle has no usable size; \"%1\" was not "
                                     "written.")
                          .arg(arguments.text("TO")));
    Result<Report> report = saveElevations(dem.image, arguments.text("TO"));
    if (!report)
        return report;
    work.console().message(dem.range.message());
    return withLosses(std::move(*report), dem.losses);
}

Result<Report> binaryDem(const Arguments &arguments, CommandWork &work)
{
    BinAnswers answers(work.console(), arguments.has("proceed-anyway"));
    BinDemHeaderFile header;
    if (!header.read(arguments.text("header-file"), answers))
        return failed(couldNotOpenMessage(arguments.text("header-file")));
    const QString faults = header.header().faultsMessage();
    if (!faults.isEmpty())
        return failed(faults);
    const Result<BinDemOptions> options = binDemOptions(header, arguments);
    if (!options)
        return tl::unexpected(options.error());
    QFile file(arguments.text("FROM"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failed(couldNotOpenMessage(file.fileName()));
    return convertBinDem(file, header.header(), *options, answers, work.progress())
        .and_then([&](const BinDem &dem) { return saveBinDem(dem, arguments, work); });
}

Command binaryDemCommand()
{
    Command command{
        .name = "binary-dem",
        .summary = "Imports a rectangle of a raw raster that a header file describes.",
        .positionals = fromAndTo("The raster."),
        .options = {fileOption("header-file", "The header of the raster (.hdr, .doc).")},
        .examples = {"zephrant-terrain binary-dem --header-file w100n40.hdr w100n40.dem "
                     "dem.png",
                     "    The whole raster.",
                     "zephrant-terrain binary-dem --header-file w100n40.hdr "
                     "--upper-left-corner-x -100 --extent-x 1.5 w100n40.dem dem.png",
                     "    A strip of it."},
        .run = binaryDem};
    for (const RectangleField &field : rectangleFields())
        command.options.push_back(foundInFile(realOption(
            field.option, field.help, -MostDegrees, MostDegrees, CoordinateDecimals, 0)));
    command.options.push_back(zScaleOption());
    command.options.push_back(flag("keep-nodata-values",
                                   "Stores the value that stands for no data; else 0 "
                                   "takes its place."));
    command.options.push_back(
        flag("proceed-anyway", "Goes on with a raster whose data cannot be located."));
    return command;
}

// --- japan-dem -----------------------------------------------------------------------

Result<Report> japanDem(const Arguments &arguments, CommandWork &work)
{
    QFile file(arguments.text("FROM"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return failed(couldNotOpenMessage(file.fileName()));
    const Result<JapanDem> dem = convertJapanDem(file, arguments.integer("void-value"),
                                                 file.fileName(), work.progress());
    if (!dem)
        return tl::unexpected(dem.error());
    Result<Report> report = saveElevations(dem->image, arguments.text("TO"));
    if (!report)
        return report;
    work.console().message(dem->message());
    return withLosses(std::move(*report), {.voids = dem->voidCount}); // five digits fit
}

Command japanDemCommand()
{
    constexpr int Most = 100000;
    return {.name = "japan-dem",
            .summary = "Imports a Japan DEM file.",
            .positionals = fromAndTo("The file (.mem)."),
            .options = {integerOption("void-value", "Elevations of this value become 0.",
                                      -Most, Most, -9999)},
            .examples = {"zephrant-terrain japan-dem 533945.mem dem.png",
                         "    The whole sheet."},
            .run = japanDem};
}

} // namespace

std::vector<Command> demCommands()
{
    return {usgsDemCommand(), binaryDemCommand(), japanDemCommand()};
}
