#include "tooldialogs/rectifydialog.h"

#include "base/appsettings.h"
#include "tools/toolfiles.h"

#include <QIntValidator>

RectifyDialog::RectifyDialog(QWidget *parent) : FormDialog(parent)
{
    addInput(lineEditFromFile);
    const AppSettings stored;
    for (const Coordinate &c : coordinates()) {
        c.field->setValidator(
            new QIntValidator(RectifyCorner::Lowest, RectifyCorner::Highest, c.field));
        c.field->setText(stored.value(QLatin1String(c.key)).toString());
    }
}

std::array<RectifyDialog::Coordinate, 16> RectifyDialog::coordinates() const
{
    return {Coordinate{lineEditX1, "Rectify/X1", 0, &RectifyCorner::x},
            Coordinate{lineEditY1, "Rectify/Y1", 0, &RectifyCorner::y},
            Coordinate{lineEditX1_, "Rectify/X1_", 0, &RectifyCorner::x_},
            Coordinate{lineEditY1_, "Rectify/Y1_", 0, &RectifyCorner::y_},
            Coordinate{lineEditX2, "Rectify/X2", 1, &RectifyCorner::x},
            Coordinate{lineEditY2, "Rectify/Y2", 1, &RectifyCorner::y},
            Coordinate{lineEditX2_, "Rectify/X2_", 1, &RectifyCorner::x_},
            Coordinate{lineEditY2_, "Rectify/Y2_", 1, &RectifyCorner::y_},
            Coordinate{lineEditX3, "Rectify/X3", 2, &RectifyCorner::x},
            Coordinate{lineEditY3, "Rectify/Y3", 2, &RectifyCorner::y},
            Coordinate{lineEditX3_, "Rectify/X3_", 2, &RectifyCorner::x_},
            Coordinate{lineEditY3_, "Rectify/Y3_", 2, &RectifyCorner::y_},
            Coordinate{lineEditX4, "Rectify/X4", 3, &RectifyCorner::x},
            Coordinate{lineEditY4, "Rectify/Y4", 3, &RectifyCorner::y},
            Coordinate{lineEditX4_, "Rectify/X4_", 3, &RectifyCorner::x_},
            Coordinate{lineEditY4_, "Rectify/Y4_", 3, &RectifyCorner::y_}};
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
    RectifyCorners corners;
    for (const Coordinate &c : coordinates())
        corners[c.corner].*c.value = c.field->text().toInt(); // 0 where that is no number
    return rectifyFile(lineEditFromFile->text(), corners, progress);
}

void RectifyDialog::showProgress(qint64 row, qint64 of)
{
    progressBar->setRange(0, static_cast<int>(of));
    progressBar->setValue(static_cast<int>(row));
    progressBar->update();
}
