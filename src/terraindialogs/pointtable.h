#pragma once

#include "terrain/pointguess.h"

#include <QTableWidget>

/// Shows the first lines of a file of points as they are split. The head of a column
/// tells whether it is x, y or z; a click on it, or the menu key on a cell,
/// opens a menu that makes it one.
class PointTable : public QTableWidget {
    Q_OBJECT

public:
    /// Columns that are shown; a line of a file may have half a million.
    static constexpr int MostColumns = 500;

    explicit PointTable(QWidget *parent = nullptr);

    void setPreview(const PointPreview &preview);

signals:
    /// The columns of x, y and z, from 1, as the user wants them.
    void columnsChosen(const QList<int> &columns);

private:
    [[nodiscard]] QString headOf(int column) const;
    void fillRows();
    /// Marks the columns that are read.
    void paintColumns();
    void openMenu(int column, const QPoint &where);
    void choose(int axis, int column);

    PointPreview m_preview;
};
