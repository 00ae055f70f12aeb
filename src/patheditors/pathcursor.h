#pragma once

#include <QBitmap>
#include <QCursor>
#include <QMouseEvent>
#include <QPoint>
#include <QString>

class QWidget;

/// Reads a bitmap of a cursor from the resources of a dialog; if it is missing, warns
/// the user under the dialog's name.
[[nodiscard]] QBitmap loadCursorBitmap(QWidget *parent, const QString &dialog,
                                       const QString &file);

/// A cursor of two bitmaps, or the arrow where one is missing.
[[nodiscard]] QCursor bitmapCursor(const QBitmap &bitmap, const QBitmap &mask,
                                   const QPoint &hotSpot);

/// The whole pixel that the pointer is on. On a screen of high resolution the
/// pointer also stands between them.
[[nodiscard]] QPoint pixelUnder(const QMouseEvent *event);
