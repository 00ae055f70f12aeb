#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// The files of a folder and of those in it, hidden ones included, by their names below
/// it.
using FolderContents = QMap<QString, QByteArray>;

[[nodiscard]] FolderContents readFolder(const QString &folder);

/// Makes the files of a folder these; others go.
void writeFolder(const QString &folder, const FolderContents &contents);
