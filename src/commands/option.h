#pragma once

#include <QString>
#include <QStringList>

#include <limits>

/// What an option of a command takes.
enum class OptionKind {
    Flag,       ///< nothing
    Integer,    ///< a whole number
    Real,       ///< a number with a decimal point, whatever the locale
    Size,       ///< WxH, two whole numbers
    Choice,     ///< one of several words
    Text,       ///< anything that is not empty
    InputFile,  ///< the name of a file that is read
    OutputFile, ///< the name of a file that is written
};

/// An option of a command: how it is given, and what the help tells of it.
struct Option {
    static constexpr double NoLimit = std::numeric_limits<double>::infinity();
    static constexpr int AnyDecimals = -1;

    QString name; ///< without the hyphens before it
    OptionKind kind = OptionKind::Flag;
    QString valueName = {};   ///< what stands for the value in the help, such as "FILE"
    QString help = {};        ///< a sentence
    double lowest = -NoLimit; ///< of each number
    double highest = NoLimit;
    int decimals = AnyDecimals; ///< most that a real may have
    QStringList choices = {};
    QString defaultValue = {}; ///< as it would be given; empty: there is none
    QString defaultNote = {};  ///< told in place of that, such as "found in the file"
    int numbers = 1;           ///< integers or reals, with commas between
    bool several = false;      ///< may be given several times
    bool required = false;
    QString group = {}; ///< options of one group exclude each other
};

/// What is wrong with a value that was given to an option; empty if nothing is. A whole
/// sentence that names the option.
[[nodiscard]] QString complaintOf(const Option &option, const QString &value);

/// What an option takes, as "a whole number from 1 to 100".
[[nodiscard]] QString takenBy(const Option &option);
