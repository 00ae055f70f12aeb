#include "terraindialogs/pointtable.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace {

constexpr int Axes = 3;
constexpr int RowMargin = 3; // pixels, so that ten rows have room

QString nameOfAxis(int axis) { return QStringLiteral("xyz").mid(axis, 1); }

} // namespace

PointTable::PointTable(QWidget *parent) : QTableWidget(parent)
{
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + RowMargin);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        const QPoint corner(horizontalHeader()->sectionViewportPosition(column),
                            horizontalHeader()->height());
        openMenu(column, horizontalHeader()->viewport()->mapToGlobal(corner));
    });
    connect(this, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        const int column = columnAt(at.x());
        openMenu(column < 0 ? currentColumn() : column, viewport()->mapToGlobal(at));
    });
}

void PointTable::setPreview(const PointPreview &preview)
{
    m_preview = preview;
    fillRows();
    paintColumns();
    resizeColumnsToContents();
}

void PointTable::fillRows()
{
    clear();
    setRowCount(int(m_preview.rows.size()));
    setColumnCount(std::min(m_preview.columns, MostColumns));
    QStringList heads;
    for (int column = 0; column < columnCount(); ++column)
        heads << headOf(column);
    setHorizontalHeaderLabels(heads);
    for (int row = 0; row < rowCount(); ++row) {
        const QStringList &fields = m_preview.rows.at(row);
        for (int column = 0; column < columnCount(); ++column) {
            auto *const cell = new QTableWidgetItem(fields.value(column));
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            setItem(row, column, cell);
        }
    }
}

QString PointTable::headOf(int column) const
{
    const auto &columns = m_preview.format.columns;
    const QString name =
        m_preview.names.value(column, tr("Column %1").arg(column + 1)).simplified();
    const auto axis = std::find(columns.begin(), columns.end(), column);
    return axis == columns.end()
               ? name
               : tr("%1 = %2").arg(name, nameOfAxis(int(axis - columns.begin())));
}

void PointTable::paintColumns()
{
    const auto &columns = m_preview.format.columns;
    for (int column = 0; column < columnCount(); ++column) {
        const bool isRead =
            std::find(columns.begin(), columns.end(), column) != columns.end();
        QFont font = this->font();
        font.setBold(isRead);
        horizontalHeaderItem(column)->setFont(font);
        for (int row = 0; row < rowCount() && !isRead; ++row)
            item(row, column)
                ->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
    }
}

void PointTable::openMenu(int column, const QPoint &where)
{
    if (column < 0 || column >= columnCount())
        return;
    auto *const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("menuPointColumn"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int axis = 0; axis < Axes; ++axis) {
        QAction *const action = menu->addAction(tr("Take As &%1").arg(nameOfAxis(axis)));
        action->setCheckable(true);
        action->setChecked(m_preview.format.columns[std::size_t(axis)] == column);
        connect(action, &QAction::triggered, this,
                [this, axis, column] { choose(axis, column); });
    }
    menu->popup(where);
}

// What the column was before, the one that gives way becomes.
void PointTable::choose(int axis, int column)
{
    auto columns = m_preview.format.columns;
    const auto had = std::find(columns.begin(), columns.end(), column);
    if (had != columns.end())
        std::swap(*had, columns[std::size_t(axis)]);
    columns[std::size_t(axis)] = column;
    // Where none could be found, the others are the first that are left.
    for (int &each : columns)
        for (int free = 0; each < 0; ++free)
            if (std::find(columns.begin(), columns.end(), free) == columns.end())
                each = free;
    emit columnsChosen({columns[0] + 1, columns[1] + 1, columns[2] + 1});
}
