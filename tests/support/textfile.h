#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Writes a file of these bytes; whether all of it was written.
[[nodiscard]] inline bool writeBytes(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
           file.flush();
}

/// All that a file holds; "(no file)" where it cannot be read, which no test expects of
/// one that can.
[[nodiscard]] inline QByteArray bytesIn(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}
