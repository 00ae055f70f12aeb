#include "commands/arguments.h"
#include "commands/commandparts.h"
#include "commands/commandwork.h"
#include "commands/toldcommands.h"
#include "importers/sdtsconversion.h"
#include "importers/sdtsunits.h"

#include <QFile>

#include <algorithm>

namespace {

// The unit of this name, or the first of all.
SdtsUnit unitCalled(const QString &name)
{
    const QList<SdtsUnit> units = sdtsUnits();
    const auto found =
        std::find_if(units.begin(), units.end(),
                     [&name](const SdtsUnit &unit) { return unit.name == name; });
    return found == units.end() ? units.constFirst() : *found;
}

Result<Report> sdts(const Arguments &arguments, CommandWork &work)
{
    const QString from = arguments.text("FROM");
    if (!QFile(from).open(QIODevice::ReadOnly))
        return failed(couldNotOpenMessage(from));
    SdtsConversion conversion;
    conversion.readCATDFile(from);
    const QString input = conversion.transfer().inputUnit;
    if (unitCalled(input).name != input)
        work.console().error(unknownUnitText(conversion.transfer()));
    const QString output =
        arguments.has("output-units") ? arguments.text("output-units") : input;
    const Result<ElevationImage> image = conversion.readCells(
        calibrationFactor(input, unitCalled(output).millimeters), work.progress());
    if (!image)
        return tl::unexpected(image.error());
    return saveElevations(*image, arguments.text("TO"))
        .map([&conversion](const Report &report) {
            return withLosses(report, conversion.losses());
        });
}

} // namespace

std::vector<Command> sdtsCommands()
{
    Option units{.name = "output-units",
                 .kind = OptionKind::Choice,
                 .valueName = "UNIT",
                 .help = "The unit of the elevations that are written; one that was "
                         "defined in the settings is among them.",
                 .defaultNote = "found in the file"};
    for (const SdtsUnit &unit : sdtsUnits())
        units.choices << unit.name;
    return {
        {.name = "sdts",
         .summary = "Imports an SDTS raster transfer.",
         .positionals = fromAndTo("The catalog of the transfer (catd.ddf), beside "
                                  "which its other modules lie."),
         .options = {units},
         .examples = {"zephrant-terrain sdts --output-units feet 1107CATD.DDF dem.png",
                      "    Elevations in feet, whatever the unit of the transfer."},
         .run = sdts}};
}
