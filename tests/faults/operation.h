#pragma once

#include "faults/faultlib.h"

#include <QString>
#include <QStringList>

#include <array>

/// What is made to fail.
struct Fault {
    FaultKind kind = FaultWrite;
    long n = 0;               // the n-th; none for 0
    bool unnamedFiles = true; // whether the file system knows files without a name
};

/// What came of an operation.
struct Attempt {
    bool ended = false;    // by itself, and not by an exception or a signal
    bool happened = false; // the fault has struck
    QStringList told;      // to the user, of failures
    QString end;           // the frames of an exception that nobody caught, or the signal
    std::array<long, FaultKinds> counts{};
};

/// One thing that a program does with files: an operation of a window, driven as a user
/// would, or a program with its arguments.
class Operation {
public:
    virtual ~Operation() = default;

    /// Makes the inputs, and earlier contents of the targets, in the folder, and opens
    /// what is needed. Once, in a process of its own.
    virtual void prepare(const QString &folder) = 0;
    /// The files that it writes, without the folder.
    [[nodiscard]] virtual QStringList targets() const = 0;
    /// Does it under a fault; the folder is as prepare() left it.
    [[nodiscard]] virtual Attempt attempt(const Fault &fault) = 0;
};

/// An operation of the window, done in a copy of this process.
class WindowOperation : public Operation {
public:
    [[nodiscard]] Attempt attempt(const Fault &fault) final;

protected:
    /// What the user does.
    virtual void perform() = 0;
    /// What the window tells beside message boxes.
    [[nodiscard]] virtual QString notice() const { return {}; }

private:
    [[nodiscard]] Attempt performUnder(const Fault &fault);
};

/// A program that is run. It tells of a failure by its exit status and on its standard
/// error.
class ProgramOperation : public Operation {
public:
    [[nodiscard]] Attempt attempt(const Fault &fault) final;

protected:
    [[nodiscard]] virtual QString program() const = 0;
    [[nodiscard]] virtual QStringList arguments() const = 0;
};
