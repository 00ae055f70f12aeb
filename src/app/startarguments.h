#pragma once

#include <QString>
#include <QStringList>

/// What the program is asked for when it is started.
struct StartArguments {
    enum class Answer { None, Help, Version };

    /// A text to be printed instead of opening a window.
    Answer answer = Answer::None;
    /// Absolute paths of the files to be opened, in their order.
    QStringList files;

    /// Reads the arguments, program name first. Words that begin with a hyphen and are
    /// not known are passed over; behind "--" all are files.
    [[nodiscard]] static StartArguments read(const QStringList &arguments);
    /// What is printed; empty where nothing is.
    [[nodiscard]] QString text() const;
};
