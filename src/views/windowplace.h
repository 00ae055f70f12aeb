#pragma once

class QPoint;
class QSize;
class QWidget;

/// Where a window of this size, stored to stand at `place`, can be reached: there, unless
/// the upper edge by which it is moved lies off every screen. Then it goes the shortest
/// way back onto the nearest one.
[[nodiscard]] QPoint reachablePlace(const QPoint &place, const QSize &size);

/// Gives a window its stored size, and its stored place if it can be reached there.
void placeWindow(QWidget *window, const QPoint &place, const QSize &size);
