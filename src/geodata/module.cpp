#include "geodata/geodata.h"

/// What the module is loaded for: a new source, which the caller owns.
extern "C" Q_DECL_EXPORT TerrainSource *zephrant_terrain_source();

TerrainSource *zephrant_terrain_source() { return makeGeodata().release(); }
