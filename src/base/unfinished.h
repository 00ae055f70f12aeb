#pragma once

#include <QByteArray>

#include <mutex>

/// What must not stay, or must not be broken off, when the program ends at once: names
/// of files that are not whole yet, and files that are just being replaced. All threads
/// that write files share it, behind one lock.

/// Notes a file that is to go when the program ends at once.
void rememberUnfinished(const QByteArray &name);
void forgetUnfinished(const QByteArray &name);

/// Holds up dropUnfinishedFiles() while it lives.
class FileReplacement {
public:
    FileReplacement();

private:
    std::lock_guard<std::mutex> m_lock;
};

/// Removes all that is not finished, once no file is being replaced, and holds up for
/// good whoever wants to begin or to end a file after that: for a program that ends at
/// once, while its other threads are still at work.
void dropUnfinishedFiles();
