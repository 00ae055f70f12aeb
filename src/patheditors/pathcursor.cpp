#include "patheditors/pathcursor.h"

#include "base/truncate.h"

#include <QCoreApplication>
#include <QMessageBox>

#include <cmath>

QBitmap loadCursorBitmap(QWidget *parent, const QString &dialog, const QString &file)
{
    const QString name = QStringLiteral(":/%1/%2").arg(dialog, file);
    const QPixmap picture(name);
    if (!picture.isNull())
        return QBitmap::fromPixmap(picture);
    QMessageBox::warning(parent, dialog,
                         QCoreApplication::translate("SetFlightPathDialog",
                                                     "Could not load resource \"%1\".")
                             .arg(name));
    return {};
}

QCursor bitmapCursor(const QBitmap &bitmap, const QBitmap &mask, const QPoint &hotSpot)
{
    if (bitmap.isNull() || mask.isNull() || bitmap.size() != mask.size())
        return QCursor(Qt::ArrowCursor);
    return QCursor(bitmap, mask, hotSpot.x(), hotSpot.y());
}

QPoint pixelUnder(const QMouseEvent *event)
{
    const QPointF at = event->position();
    return {truncatedOrNearest(std::floor(at.x())),
            truncatedOrNearest(std::floor(at.y()))};
}
