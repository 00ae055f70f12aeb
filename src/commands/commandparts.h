#pragma once

#include "base/result.h"
#include "commands/command.h"
#include "commands/report.h"

#include <QImage>
#include <QString>

#include <vector>

class ElevationImage;

// What tables and functions of commands have in common.

/// "Could not open file "..."."
[[nodiscard]] QString couldNotOpenMessage(const QString &fileName);

/// FROM and TO, the first with a help text of the command's own.
[[nodiscard]] std::vector<Positional> fromAndTo(const QString &fromHelp);
/// TO alone.
[[nodiscard]] Positional toFile();

[[nodiscard]] Option flag(const QString &name, const QString &help);
[[nodiscard]] Option fileOption(const QString &name, const QString &help);
[[nodiscard]] Option integerOption(const QString &name, const QString &help, int lowest,
                                   int highest, int standard);
[[nodiscard]] Option realOption(const QString &name, const QString &help, double lowest,
                                double highest, int decimals, double standard);
/// The option with a default that the input file tells.
[[nodiscard]] Option foundInFile(Option option);
/// The factor for elevations that the imports share.
[[nodiscard]] Option zScaleOption();

/// Writes a picture and reports it.
[[nodiscard]] Result<Report> savePicture(const QImage &image, const QString &to);
/// The same for elevations, whose range is reported as well.
[[nodiscard]] Result<Report> saveElevations(const ElevationImage &image,
                                            const QString &to);
