#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class FreshFile;
class QIODevice;

/// Several files that take their places together, or not at all.
///
/// Each grows beside its place, as a single one of writeWholeFile() does; none takes it
/// before all are whole and on the disk. What was there before stays until then, and
/// comes back where one of them cannot take its place after all. A group that goes
/// without takePlaces() leaves nothing.
class FileGroup {
public:
    FileGroup();
    ~FileGroup();
    FileGroup(const FileGroup &) = delete;
    FileGroup &operator=(const FileGroup &) = delete;

    /// Writes one more file, the last to take its place so far. Fails with a sentence
    /// that names the file and the system's reason; with no text where `write` gave up by
    /// itself.
    [[nodiscard]] Result<void> add(const QString &name,
                                   const std::function<bool(QIODevice &)> &write);
    /// Notes a file that is to go when all others take their places.
    void remove(const QString &name);
    /// Puts all files in their places, in their order.
    [[nodiscard]] Result<void> takePlaces();
    /// The names of the files that were added.
    [[nodiscard]] QStringList names() const;

private:
    struct Member {
        QString name;
        QByteArray path;
        std::unique_ptr<FreshFile> file; // null: the file of that path goes
    };
    [[nodiscard]] Result<void> open(Member &member) const;

    std::vector<Member> m_members;
};
