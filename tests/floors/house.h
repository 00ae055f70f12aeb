#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

/// The plan of the house, from docs/architecture.md.
struct Plan {
    QList<QStringList> floors;     // lowest first
    QMap<QString, QString> module; // folder to "Qt6::Gui" or "none"

    /// Number of the floor that a folder stands on; -1 without a place.
    [[nodiscard]] int floorOf(const QString &folder) const;
};

/// Reads the first plain fenced block of a page, and the one marked `toolkit`.
[[nodiscard]] Plan planOf(const QString &page);

/// What CMake links, from a file of lines
///
///     public FOLDER LIBRARY     targets of the folder link it, and who links them
///     private FOLDER LIBRARY    only they do
///     object FOLDER             an object library: linked for what registers itself
///     headers MODULE DIRECTORY  where the headers of a module of the toolkit are
struct Links {
    QMap<QString, QSet<QString>> all;
    QMap<QString, QSet<QString>> shown; // those of `all` that are public
    QSet<QString> objects;
    QMap<QString, QString> headers;
};

[[nodiscard]] Links linksOf(const QString &lines);

/// One `#include` of a file.
struct Include {
    QString file;   // that has it, from the top folder of the sources
    QString folder; // of that file
    QString name;   // as written
    bool isQuoted = false;

    /// The folder that a quoted name begins with; empty without one.
    [[nodiscard]] QString target() const;
};

/// All sources below a directory and what they include.
struct Sources {
    QStringList files;
    QList<Include> includes;
};

[[nodiscard]] Sources sourcesBelow(const QString &directory);
