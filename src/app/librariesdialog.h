#pragma once

#include "raster/libraries.h"

#include <QDialog>

class QTableWidget;

/// Lists the libraries that the program is built on, their versions and licences.
class LibrariesDialog : public QDialog {
    Q_OBJECT

public:
    explicit LibrariesDialog(QWidget *parent = nullptr);
    /// One that is not always there, behind the others.
    void add(const LibraryNote &library);

private:
    QTableWidget *m_table;
};
