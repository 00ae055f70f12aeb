#include "base/unfinished.h"

#include <set>

#include <unistd.h>

namespace {

std::mutex &mutex()
{
    // Never destroyed: threads may still wait for it when the program ends.
    static auto *const it = new std::mutex;
    return *it;
}

std::set<QByteArray> &names()
{
    static auto *const all = new std::set<QByteArray>;
    return *all;
}

} // namespace

void rememberUnfinished(const QByteArray &name)
{
    const std::lock_guard lock(mutex());
    names().insert(name);
}

void forgetUnfinished(const QByteArray &name)
{
    const std::lock_guard lock(mutex());
    names().erase(name);
}

FileReplacement::FileReplacement() : m_lock(mutex()) {}

void dropUnfinishedFiles()
{
    mutex().lock(); // and never unlocked
    for (const QByteArray &name : names())
        ::unlink(name.constData());
}
