#pragma once

#include "base/framecamera.h"
#include "base/progress.h"
#include "base/result.h"
#include "scene/scenerydocument.h"

#include <QList>
#include <QString>

class TerrainSource;

/// The cameras of all frames of a scenery's flight, from 0 on.
[[nodiscard]] Result<QList<FrameCamera>> camerasOf(const SceneryDocument &document);

/// Writes the flight of a scenery as a track, whole or not at all: `file` ends in .csv
/// (frame, place, and angles in degrees of every frame, world units), .gpx or .kml
/// (longitude, latitude and metres, by the georeference of the elevation file, for which
/// `source` is needed). `name` is that of the track; `folder` that of the scenery.
[[nodiscard]] Result<void> writePathTrack(const SceneryDocument &document,
                                          const QString &folder, const QString &name,
                                          const QString &file, TerrainSource *source,
                                          Progress &progress);
