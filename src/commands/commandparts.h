#pragma once

#include "base/result.h"
#include "commands/command.h"
#include "commands/report.h"

#include <QImage>
#include <QString>

#include <vector>

struct ImportLosses;

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
[[nodiscard]] Result<Report> saveElevations(const QImage &image, const QString &to);
/// The same for a picture that may hold either: that is seen by looking at it.
[[nodiscard]] Result<Report> saveEither(const QImage &image, const QString &to);

/// Adds what an import could not take over as the file had it.
[[nodiscard]] Report withLosses(Report report, const ImportLosses &losses);
/// Adds how many values had to be cut.
[[nodiscard]] Report withCut(Report report, qint64 cut);
