#include "commands/commandparts.h"

#include "importers/importlosses.h"
#include "raster/heightkinds.h"
#include "raster/imagefile.h"
#include "tools/elevationconversions.h"

#include <utility>

QString couldNotOpenMessage(const QString &fileName)
{
    return QStringLiteral("Could not open file \"%1\".").arg(fileName);
}

Positional toFile()
{
    return {.name = "TO",
            .help = "The picture that is written; its extension tells the format. An "
                    "older file is replaced when the new one is whole.",
            .kind = OptionKind::OutputFile};
}

std::vector<Positional> fromAndTo(const QString &fromHelp)
{
    return {{.name = "FROM", .help = fromHelp}, toFile()};
}

Option flag(const QString &name, const QString &help)
{
    return {.name = name, .help = help};
}

Option fileOption(const QString &name, const QString &help)
{
    return {.name = name,
            .kind = OptionKind::InputFile,
            .valueName = "FILE",
            .help = help,
            .required = true};
}

Option integerOption(const QString &name, const QString &help, int lowest, int highest,
                     int standard)
{
    return {.name = name,
            .kind = OptionKind::Integer,
            .valueName = "N",
            .help = help,
            .lowest = double(lowest),
            .highest = double(highest),
            .defaultValue = QString::number(standard)};
}

Option realOption(const QString &name, const QString &help, double lowest, double highest,
                  int decimals, double standard)
{
    return {.name = name,
            .kind = OptionKind::Real,
            .valueName = "X",
            .help = help,
            .lowest = lowest,
            .highest = highest,
            .decimals = decimals,
            .defaultValue = QString::number(standard)};
}

Option foundInFile(Option option)
{
    option.defaultValue.clear();
    option.defaultNote = "found in the file";
    return option;
}

Option zScaleOption()
{
    constexpr double Most = 16777200;
    return realOption("z-scale", "Every elevation is multiplied by it.", -Most, Most, 2,
                      256);
}

Result<Report> savePicture(const QImage &image, const QString &to)
{
    QString reason;
    if (!saveImageFile(image, to, &reason))
        return failed(QStringLiteral("Could not save file \"%1\".\n%2.").arg(to, reason));
    Report report;
    report.add("file", to);
    report.add("columns", image.width());
    report.add("rows", image.height());
    return report;
}

Result<Report> saveElevations(const QImage &image, const QString &to)
{
    Result<Report> report = savePicture(image, to);
    if (report) {
        const ElevationLimits range = elevationRange(image, false);
        report->add("minimum", range.lowest);
        report->add("maximum", range.highest);
    }
    return report;
}

Result<Report> saveEither(const QImage &image, const QString &to)
{
    return looksLikeElevations(image) ? saveElevations(image, to)
                                      : savePicture(image, to);
}

Report withLosses(Report report, const ImportLosses &losses)
{
    report.add("voids", losses.voids);
    return withCut(std::move(report), losses.cut);
}

Report withCut(Report report, qint64 cut)
{
    report.add("cut", cut);
    return report;
}
