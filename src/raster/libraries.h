#pragma once

#include <QList>
#include <QString>

/// A library of others that the program is built on.
struct LibraryNote {
    QString name;
    QString version;
    QString licence;
    QString use; ///< what the program does with it
};

/// The libraries that write the files of pictures.
[[nodiscard]] QList<LibraryNote> pictureLibraries();
