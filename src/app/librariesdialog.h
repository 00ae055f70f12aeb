#pragma once

#include "raster/libraries.h"

#include <QDialog>

/// Lists the libraries that the program is built on, their versions and licences.
class LibrariesDialog : public QDialog {
    Q_OBJECT

public:
    explicit LibrariesDialog(QWidget *parent = nullptr);
    /// With those that are not always there, behind the others.
    LibrariesDialog(const QList<LibraryNote> &more, QWidget *parent);
};
