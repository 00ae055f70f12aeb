#include "base/filegroup.h"

#include "base/freshfile.h"
#include "base/replacing.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace {

tl::unexpected<Failure> cannotWrite(const QString &name, const QString &reason)
{
    return failed(QCoreApplication::translate("FileGroup", "Cannot write \"%1\": %2.")
                      .arg(name, reason));
}

tl::unexpected<Failure> cannotWrite(const QString &name, int systemError)
{
    return cannotWrite(name, qt_error_string(systemError));
}

} // namespace

FileGroup::FileGroup() = default;

FileGroup::~FileGroup() = default;

Result<void> FileGroup::open(Member &member) const
{
    const QString target = linkTarget(member.name);
    member.path = QFile::encodeName(target);
    struct stat earlier {};
    const bool replaces = ::stat(member.path.constData(), &earlier) == 0;
    if (replaces && !S_ISREG(earlier.st_mode))
        return cannotWrite(member.name,
                           QCoreApplication::translate("FileGroup", "it is no file"));
    if (replaces && !mayBeWritten(member.path))
        return cannotWrite(member.name, errno);
    member.file = std::make_unique<FreshFile>();
    if (!member.file->open(member.path, 0666))
        return cannotWrite(member.name, errno);
    if (replaces)
        takeOver(member.file->file().handle(), earlier);
    return {};
}

Result<void> FileGroup::add(const QString &name,
                            const std::function<bool(QIODevice &)> &write)
{
    Member member;
    member.name = name;
    Result<void> opened = open(member);
    if (!opened)
        return opened;
    OutputFile &file = member.file->file();
    const bool written = write(file);
    if (file.hasFailed() || (written && !file.finish()))
        return cannotWrite(name, file.reason());
    if (!written)
        return failed(QString());
    m_members.push_back(std::move(member));
    return {};
}

void FileGroup::remove(const QString &name)
{
    m_members.push_back({name, QFile::encodeName(name), nullptr});
}

Result<void> FileGroup::takePlaces()
{
    std::vector<std::unique_ptr<EarlierFile>> earlier;
    for (const Member &member : m_members) {
        earlier.push_back(std::make_unique<EarlierFile>(member.path));
        const bool done = member.file
                              ? member.file->takePlace()
                              : ::unlink(member.path.constData()) == 0 || errno == ENOENT;
        if (done)
            continue;
        const int reason = errno;
        for (auto file = earlier.rbegin(); file != earlier.rend(); ++file)
            (*file)->putBack();
        return cannotWrite(member.name, reason);
    }
    return {};
}

QStringList FileGroup::names() const
{
    QStringList names;
    for (const Member &member : m_members)
        if (member.file)
            names.append(member.name);
    return names;
}
