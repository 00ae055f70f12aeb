#pragma once

#include <QList>
#include <QString>

#include <optional>

/// A place of a track, in some reference system.
struct TrackPoint {
    double x = 0.0;
    double y = 0.0;
    std::optional<double> metres; ///< height above the sea
};

/// The longest line of a file with tracks, or all of its points in their order.
struct Track {
    QString name;
    QList<TrackPoint> points;
    bool hasSystem = false; ///< the file tells the reference system of its places
};
