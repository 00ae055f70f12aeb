#include "tooldialogs/rectifydialog.h"

#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "tools/optimization.h"
#include "tools/rectify.h"

#include <QIntValidator>

namespace {

constexpr int LowestCoordinate = -10000;
constexpr int HighestCoordinate = 100000;

} // namespace

RectifyDialog::RectifyDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    const AppSettings stored;
    for (const Coordinate &c : coordinates()) {
        c.field->setValidator(
            new QIntValidator(LowestCoordinate, HighestCoordinate, c.field));
        c.field->setText(stored.value(QLatin1String(c.key)).toString());
    }
}

std::array<RectifyDialog::Coordinate, 16> RectifyDialog::coordinates() const
{
    return {
        Coordinate{lineEditX1, "Rectify/X1", &Ax}, {lineEditY1, "Rectify/Y1", &Ay},
        {lineEditX2, "Rectify/X2", &Bx},           {lineEditY2, "Rectify/Y2", &By},
        {lineEditX3, "Rectify/X3", &Cx},           {lineEditY3, "Rectify/Y3", &Cy},
        {lineEditX4, "Rectify/X4", &Dx},           {lineEditY4, "Rectify/Y4", &Dy},
        {lineEditX1_, "Rectify/X1_", &Ax_},        {lineEditY1_, "Rectify/Y1_", &Ay_},
        {lineEditX2_, "Rectify/X2_", &Bx_},        {lineEditY2_, "Rectify/Y2_", &By_},
        {lineEditX3_, "Rectify/X3_", &Cx_},        {lineEditY3_, "Rectify/Y3_", &Cy_},
        {lineEditX4_, "Rectify/X4_", &Dx_},        {lineEditY4_, "Rectify/Y4_", &Dy_}};
}

void RectifyDialog::storeCoordinates() const
{
    AppSettings stored;
    for (const Coordinate &c : coordinates())
        stored.setValue(QLatin1String(c.key), c.field->text());
}

Result<QImage> RectifyDialog::work(Progress &progress)
{
    storeCoordinates();
    const Result<QImage> image = loadPicture(lineEditFromFile);
    if (!image)
        return image;
    for (const Coordinate &c : coordinates())
        *c.value = c.field->text().toInt();           // 0 where that is no number
    [[maybe_unused]] const Optimization optimization; // a search is not needed yet
    // What memory was short for cannot be saved, and that is told.
    return rectify(*image, progress).value_or(QImage());
}

void RectifyDialog::showProgress(qint64 row, qint64 of)
{
    progressBar->setRange(0, static_cast<int>(of));
    progressBar->setValue(static_cast<int>(row));
    progressBar->update();
}
