#include "terraindialogs/openterraindialog.h"
#include "terraindialogs/terraintexts.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>

#include <cmath>

namespace {

/// The choices of a size of which one side may be automatic.
std::optional<QSize> sizeOf(const QSpinBox *width, const QSpinBox *height)
{
    if (width->value() == 0 || height->value() == 0)
        return {};
    return QSize(width->value(), height->value());
}

} // namespace

void OpenTerrainDialog::connectFiles()
{
    connect(pushButtonAddFiles, &QPushButton::clicked, this, [this] {
        const QStringList files = QFileDialog::getOpenFileNames(
            this, tr("Add Files"), QString(),
            tr("All Files (*);;Elevations (*.tif *.tiff *.hgt *.asc *.bil *.flt *.dem "
               "*.dt0 *.dt1 *.dt2 *.nc *.img *.vrt *.zip *.xyz *.csv *.txt *.gpx)"));
        if (!files.isEmpty())
            addFiles(files);
    });
    connect(pushButtonAddFolder, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, tr("Add Folder"));
        if (!folder.isEmpty())
            addFiles({folder});
    });
    connect(pushButtonRemoveFile, &QPushButton::clicked, this, [this] {
        const QList<QListWidgetItem *> selected = listWidgetFiles->selectedItems();
        qDeleteAll(selected);
        if (selected.isEmpty())
            return;
        forgetPoints();
        reopen();
    });
}

void OpenTerrainDialog::connectPart()
{
    connect(terrainMapView, &TerrainMapView::partChanged, this,
            [this](const std::optional<QRect> &part) {
                m_takesRect = false;
                showCells(part);
                askForGrid();
            });
    connect(terrainMapView, &TerrainMapView::pointed, this,
            &OpenTerrainDialog::showUnderMouse);
    for (QSpinBox *const field :
         {spinBoxCellsX, spinBoxCellsY, spinBoxCellsW, spinBoxCellsH})
        connect(field, &QSpinBox::valueChanged, this, &OpenTerrainDialog::cellsTyped);
    for (QDoubleSpinBox *const field :
         QList<QDoubleSpinBox *>{doubleSpinBoxRectW, doubleSpinBoxRectS,
                                 doubleSpinBoxRectE, doubleSpinBoxRectN})
        connect(field, &QDoubleSpinBox::valueChanged, this,
                &OpenTerrainDialog::rectTyped);
    connect(pushButtonWhole, &QPushButton::clicked, this, [this] {
        m_takesRect = false;
        terrainMapView->setPart({});
        showCells({});
        askForGrid();
    });
    connect(comboBoxCrs, &QComboBox::currentTextChanged, this, [this] {
        // Coordinates of another system mean another place.
        m_takesRect = false;
        askForGrid();
    });
    for (QSpinBox *const field : {spinBoxTerrainSizeX, spinBoxTerrainSizeY})
        connect(field, &QSpinBox::valueChanged, this, &OpenTerrainDialog::askForGrid);
    connect(comboBoxResample, &QComboBox::currentIndexChanged, this,
            &OpenTerrainDialog::askForGrid);
    connect(checkBoxFill, &QCheckBox::toggled, this, &OpenTerrainDialog::enableFields);
}

void OpenTerrainDialog::connectTexture()
{
    connect(pushButtonAddPhoto, &QPushButton::clicked, this, [this] {
        const QStringList files = QFileDialog::getOpenFileNames(
            this, tr("Add Photographs"), QString(), tr("All Files (*)"));
        for (const QString &file : files) {
            auto *const item = new QListWidgetItem(QFileInfo(file).fileName());
            item->setData(Qt::UserRole, file);
            item->setToolTip(QDir::toNativeSeparators(file));
            listWidgetPhoto->addItem(item);
        }
        enableFields();
    });
    connect(pushButtonRemovePhoto, &QPushButton::clicked, this, [this] {
        qDeleteAll(listWidgetPhoto->selectedItems());
        enableFields();
    });
}

void OpenTerrainDialog::showCells(const std::optional<QRect> &cells)
{
    if (!m_facts)
        return;
    const QSize whole = m_facts->size;
    const QRect shown = cells.value_or(QRect(QPoint(), whole));
    const auto show = [](QSpinBox *field, int least, int most, int value) {
        const QSignalBlocker silent(field);
        field->setRange(least, most);
        field->setValue(value);
    };
    show(spinBoxCellsX, 0, whole.width() - 1, shown.x());
    show(spinBoxCellsY, 0, whole.height() - 1, shown.y());
    show(spinBoxCellsW, 1, whole.width(), shown.width());
    show(spinBoxCellsH, 1, whole.height(), shown.height());
}

void OpenTerrainDialog::cellsTyped()
{
    m_takesRect = false;
    terrainMapView->setPart(QRect(spinBoxCellsX->value(), spinBoxCellsY->value(),
                                  spinBoxCellsW->value(), spinBoxCellsH->value()));
    askForGrid();
}

void OpenTerrainDialog::rectTyped()
{
    m_takesRect = true;
    terrainMapView->setPart({});
    askForGrid();
}

void OpenTerrainDialog::askForGrid()
{
    if (listWidgetFiles->count() > 0)
        jobs().plan(gridRequest());
}

void OpenTerrainDialog::showGrid(const OutputGrid &grid)
{
    m_grid = grid;
    labelPart->setText(gridText(grid));
    const bool isInDegrees = grid.metresX > 1000.0 * std::abs(grid.transform[1]);
    for (QDoubleSpinBox *const field :
         QList<QDoubleSpinBox *>{doubleSpinBoxRectW, doubleSpinBoxRectS,
                                 doubleSpinBoxRectE, doubleSpinBoxRectN}) {
        const QSignalBlocker silent(field);
        field->setDecimals(isInDegrees ? 6 : 2);
    }
    if (!m_takesRect) {
        const Extent extent = grid.extent();
        const auto show = [](QDoubleSpinBox *field, double value) {
            const QSignalBlocker silent(field);
            field->setValue(value);
        };
        show(doubleSpinBoxRectW, extent.west);
        show(doubleSpinBoxRectS, extent.south);
        show(doubleSpinBoxRectE, extent.east);
        show(doubleSpinBoxRectN, extent.north);
    }
    enableFields();
}

void OpenTerrainDialog::showUnderMouse(const std::optional<QPointF> &cell)
{
    if (!cell || !m_facts)
        return labelUnderMouse->setText(QStringLiteral(" "));
    std::optional<double> metres;
    if (m_overview) {
        const QSize size = m_overview->size;
        const int x = int(cell->x() / m_facts->size.width() * size.width());
        const int y = int(cell->y() / m_facts->size.height() * size.height());
        const float height = m_overview->row(
            qBound(0, y, size.height() - 1))[qBound(0, x, size.width() - 1)];
        if (!std::isnan(height))
            metres = double(height);
    }
    labelUnderMouse->setText(placeText(*m_facts, *cell, metres));
}

GridRequest OpenTerrainDialog::gridRequest() const
{
    GridRequest request;
    if (m_takesRect)
        request.rect = Extent{doubleSpinBoxRectW->value(), doubleSpinBoxRectS->value(),
                              doubleSpinBoxRectE->value(), doubleSpinBoxRectN->value()};
    else
        request.cells = terrainMapView->part();
    request.size = sizeOf(spinBoxTerrainSizeX, spinBoxTerrainSizeY);
    const QString crs = comboBoxCrs->currentText().trimmed();
    if (crs == comboBoxCrs->itemText(1))
        request.crs = QStringLiteral("utm");
    else if (crs == comboBoxCrs->itemText(2))
        request.crs = QStringLiteral("keep");
    else if (crs != comboBoxCrs->itemText(0))
        request.crs = crs;
    request.resampling = Resampling(comboBoxResample->currentIndex());
    return request;
}

TextureRequest OpenTerrainDialog::textureRequest() const
{
    TextureRequest texture = texturePanel->request();
    texture.photos = listed(listWidgetPhoto);
    texture.size = sizeOf(spinBoxTextureSizeX, spinBoxTextureSizeY);
    return texture;
}

TerrainRequest OpenTerrainDialog::request() const
{
    TerrainRequest request;
    request.files = listed(listWidgetFiles);
    request.out = QDir::fromNativeSeparators(lineEditOut->text().trimmed());
    request.grid = gridRequest();
    request.points = pointOptions();
    request.fill.reset();
    if (checkBoxFill->isChecked())
        request.fill = doubleSpinBoxFill->value();
    if (doubleSpinBoxUnit->value() > 0.0)
        request.unit = doubleSpinBoxUnit->value();
    request.exaggeration = doubleSpinBoxExaggerate->value();
    request.texture = textureRequest();
    return request;
}
