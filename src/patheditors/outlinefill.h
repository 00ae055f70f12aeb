#pragma once

class QColor;
class QPainter;
class QPainterPath;
class QRectF;

/// Fills an outline in one opaque colour: every pixel becomes what
/// QPainter::fillPath() makes of it with antialiasing and the winding rule.
///
/// That searches through all pixels that are touched in a row for each one that an edge
/// touches, and follows every edge to its end for each few rows. Where many long lines
/// cross each other it takes a hundred times as long as this.
///
/// `visible` is in the painter's coordinates; nothing is drawn outside of it. The
/// painter may be shifted and scaled, and draws into a picture of 32 bits a pixel.
void fillOutline(QPainter &painter, const QPainterPath &outline, const QColor &colour,
                 const QRectF &visible);
