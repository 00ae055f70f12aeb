#include "app/fileroad.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace {

constexpr std::array Opened{"zph", "bmp", "jpg", "png", "ppm", "tga"};
constexpr std::array Tracks{".gpx", ".kml", ".geojson"};

template <class Endings> bool endsInOneOf(const QString &path, const Endings &endings)
{
    return std::any_of(endings.begin(), endings.end(), [&path](const char *ending) {
        return path.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    });
}

bool isTif(const QString &path)
{
    return path.endsWith(QLatin1String(".tif"), Qt::CaseInsensitive);
}

} // namespace

FileRoad roadOf(const QString &path, const FileLook &look, bool sceneryIsActive)
{
    if (!look.exists || endsInOneOf(path, Opened))
        return FileRoad::Open;
    if (isTif(path) && !look.isFolder) {
        const bool terrain =
            look.tiff && (look.tiff->georeferenced || look.tiff->bits != 8);
        return terrain ? FileRoad::Terrain : FileRoad::Open;
    }
    if (endsInOneOf(path, Tracks))
        return sceneryIsActive ? FileRoad::Track : FileRoad::Terrain;
    return FileRoad::AskTerrain;
}

FileLook lookAt(const QString &path)
{
    const QFileInfo file(path);
    FileLook look{!path.isEmpty() && file.exists(), file.isDir(), {}};
    if (isTif(path))
        look.tiff = readTiffHead(path);
    return look;
}
