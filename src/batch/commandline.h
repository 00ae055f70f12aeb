#pragma once

#include "scene/scenerysetting.h"

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// What the user of zephrant-render asked for; what is absent stays as the
/// scenery has it.
struct BatchOptions {
    QString scenery;
    bool preview = false;
    bool missing = false; // only frames whose files are not there, whole and of the size
    bool quiet = false;
    std::optional<int> from;
    std::optional<int> to;
    std::optional<QString> output;  // name template
    QList<ScenerySetting> settings; // take effect ahead of all that have an option
    QStringList formats;            // of tga, png, jpg, ppm; empty: the scenery's own
    std::optional<int> quality;
    std::optional<QSize> size;
    std::optional<QSize> within; // frames keep their shape and fit into it
    int threads = 0;             // that draw a frame; 0 stands for all cores
};

/// How reading the command line ended.
enum class CommandLineResult { Run, Help, Version, Wrong };

/// Reads the arguments, program name first. `text` receives the help text, the
/// version line or what is wrong.
[[nodiscard]] CommandLineResult readCommandLine(const QStringList &arguments,
                                                BatchOptions &options, QString *text);
