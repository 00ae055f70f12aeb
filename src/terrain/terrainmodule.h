#pragma once

#include "base/result.h"
#include "terrain/terrainsource.h"

#include <memory>

/// The module's file; its libraries would cost every start if the window linked them.
inline constexpr char TerrainModuleFile[] = "zephrant-geodata.so";

/// Where the module is looked for: beside the program, in lib/zephrant beside the
/// program's folder, and above it.
[[nodiscard]] QStringList terrainModuleFolders();

/// Loads what reads terrain, at first use; it stays loaded. A failure tells in one
/// sentence what is missing, and which Debian package brings it.
[[nodiscard]] Result<std::unique_ptr<TerrainSource>>
loadTerrainSource(const QStringList &folders = terrainModuleFolders());
