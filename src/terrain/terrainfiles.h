#pragma once

#include "base/filegroup.h"
#include "base/result.h"
#include "terrain/sidecars.h"

class QIODevice;
class QImage;
struct SceneryDocument;
struct Stretch;

/// The files of a terrain, by the name that is given for all of them.
struct TerrainNames {
    /// An ending .zph of the name is left out.
    explicit TerrainNames(const QString &out);

    QString name; ///< of the scenery, without its folder and ending
    QString elevation;
    QString texture;
    QString scenery;
};

/// Writes a picture into a group, and beside it what tells where it lies on the earth. A
/// file of an earlier run that this one has none of goes.
[[nodiscard]] Result<void> addPicture(FileGroup &group, const QString &file,
                                      const QImage &picture, const Georeference *place,
                                      const QString &projection, const Stretch &stretch);

/// The same for what stands beside a picture alone.
[[nodiscard]] Result<void> addSidecars(FileGroup &group, const QString &picture,
                                       const Georeference &place,
                                       const QString &projection);

/// Writes a scenery into a group.
[[nodiscard]] Result<void> addScenery(FileGroup &group, const QString &file,
                                      const SceneryDocument &document);
