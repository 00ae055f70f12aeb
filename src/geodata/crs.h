#pragma once

#include "base/result.h"
#include "terrain/geogrid.h"

#include <QList>
#include <QPointF>
#include <QString>

#include <memory>

struct SrsDeleter {
    void operator()(void *srs) const;
};
/// A reference system of OGR, east before north.
using Srs = std::unique_ptr<void, SrsDeleter>;

/// The system of a text that OGR knows: well-known text, "EPSG:25833". Null if it is
/// none.
[[nodiscard]] Srs systemOf(const QString &text);

/// The well-known text of a code such as "EPSG:25833".
[[nodiscard]] Result<QString> wktOf(const QString &code);
/// The same of a system of two axes on the earth: one of heights alone, or of places in
/// space, is refused.
[[nodiscard]] Result<QString> wktOfMap(const QString &code);

/// Whether two systems, as well-known text, are the same; empty ones are.
[[nodiscard]] bool isSameCrs(const QString &one, const QString &other);

/// Whether coordinates of a system are degrees.
[[nodiscard]] bool isGeographic(const QString &crs);

/// Metres of a projected system's unit; 1 for others.
[[nodiscard]] double metresOfCrsUnit(const QString &crs);

/// "EPSG:32633" or the system's name; empty for none.
[[nodiscard]] QString shortNameOf(const QString &crs);

/// The UTM zone of a place in degrees, beyond 84 N and 80 S the polar system:
/// "EPSG:32633".
[[nodiscard]] QString utmOf(double longitude, double latitude);

/// Longitude and latitude (WGS 84) of places of a system.
[[nodiscard]] Result<QList<QPointF>> toDegrees(const QList<QPointF> &places,
                                               const QString &crs);

/// The box around a stretch of one system in another.
[[nodiscard]] Result<Extent> boundsIn(const QString &to, const Extent &extent,
                                      const QString &from);

/// What other programs read from a `.prj` file; empty for no system.
[[nodiscard]] QString projectionTextOf(const QString &crs);
