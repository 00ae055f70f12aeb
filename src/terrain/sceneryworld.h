#pragma once

#include "base/result.h"
#include "raster/elevationimage.h"
#include "scene/scenerydocument.h"
#include "terrain/sidecars.h"

#include <QPointF>

/// The elevation file of a scenery with what stands beside it.
struct SceneryGround {
    QString file;           ///< as found
    ElevationImage picture; ///< scaled as the scenery has it, z scale 1
    Georeference georeference;
};

/// Loads the elevation file of a scenery, which lies in `folder` (empty: nowhere yet).
[[nodiscard]] Result<SceneryGround> loadGround(const SceneryDocument &document,
                                               const QString &folder);

/// Why what lies on the earth cannot be placed on a ground of plain coordinates.
[[nodiscard]] Failure noSystem(const SceneryGround &ground);

/// Where the world of a scenery lies on the earth. World units have their origin in the
/// middle of the lower left pixel of the elevation file, y runs northward.
class SceneryWorld {
public:
    /// Fails with a sentence where the elevation file has no georeference.
    [[nodiscard]] static Result<SceneryWorld> of(const SceneryDocument &document,
                                                 const SceneryGround &ground);

    /// Place of the world in the reference system, and back.
    [[nodiscard]] QPointF placeAt(double x, double y) const;
    [[nodiscard]] QPointF worldAt(const QPointF &place) const;
    /// Well-known text; empty where the places are plain coordinates.
    [[nodiscard]] const QString &crs() const { return m_crs; }

    /// Metres of a world unit along x and y.
    [[nodiscard]] double metresX() const { return m_metresX; }
    [[nodiscard]] double metresY() const { return m_metresY; }
    /// World units of a metre of height under a z scale.
    [[nodiscard]] double unitsOfHeight(double zScale) const;

private:
    GeoTransform m_toPlace{}; // of world coordinates
    QString m_crs;
    double m_metresX = 1.0;
    double m_metresY = 1.0;
    double m_metresOfHeight = 1.0;         // of a world unit, without exaggeration
    std::optional<double> m_metresPerStep; // of the elevation file
};
