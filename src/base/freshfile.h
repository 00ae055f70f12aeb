#pragma once

#include "base/outputfile.h"

#include <QByteArray>

/// A new file that grows beside its place and takes it once it is whole.
///
/// Where the file system allows it the file has no name until then, so that nothing is
/// left even of a program that is killed. Elsewhere it has a name that
/// removeLeftovers() knows, and is locked while it is alive.
class FreshFile {
public:
    FreshFile() = default;
    /// Takes the name away again, if the file has still one of its own.
    ~FreshFile();
    FreshFile(const FreshFile &) = delete;
    FreshFile &operator=(const FreshFile &) = delete;

    /// Makes the file in the folder of `target`. False with errno.
    [[nodiscard]] bool open(const QByteArray &target, unsigned int permissions);
    [[nodiscard]] OutputFile &file() { return m_file; }
    /// Puts the file in the place of its target; an earlier one goes. False with errno.
    [[nodiscard]] bool takePlace();

private:
    [[nodiscard]] bool openUnnamed(unsigned int permissions);
    [[nodiscard]] bool openNamed(unsigned int permissions);
    [[nodiscard]] bool adopt(int descriptor);
    [[nodiscard]] bool moveToTarget();

    OutputFile m_file;
    QByteArray m_target;
    QByteArray m_folder;
    QByteArray m_name; // its own while it has not taken its place; may be empty
};

/// Keeps a file that others replace under a second name while it lives.
class EarlierFile {
public:
    explicit EarlierFile(const QByteArray &name);
    ~EarlierFile();
    EarlierFile(const EarlierFile &) = delete;
    EarlierFile &operator=(const EarlierFile &) = delete;
    /// Puts the file that was there before into its place again; where there was none,
    /// there is none again.
    void putBack() const;

private:
    QByteArray m_name;
    QByteArray m_second;
    bool m_wasThere;
};

/// Removes the unfinished files that programs which were killed have left in a folder.
void removeLeftovers(const QString &folder);
