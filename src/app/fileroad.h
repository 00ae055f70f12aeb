#pragma once

#include "raster/tiffhead.h"

#include <QString>

#include <optional>

/// Which part of the program opens a file that it was given or that was dropped on it.
enum class FileRoad {
    Open,      ///< what File, Open does
    Terrain,   ///< Open Terrain
    Track,     ///< a flight path for the active scenery
    AskTerrain ///< Open Terrain if it can read the file, else File, Open
};

/// What has to be known of a file beside its name.
struct FileLook {
    bool exists = true; ///< as a file or a folder
    bool isFolder = false;
    std::optional<TiffHead> tiff; ///< its head, if it has one of TIFF
};

/// Chooses the road by the name, which for ".tif" alone does not tell enough.
[[nodiscard]] FileRoad roadOf(const QString &path, const FileLook &look,
                              bool sceneryIsActive);

/// Looks at a file: its head is read if its name ends in ".tif".
[[nodiscard]] FileLook lookAt(const QString &path);
