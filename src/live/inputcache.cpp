#include "live/inputcache.h"

#include <QFileInfo>

InputCache::Stamp InputCache::stampOf(const QString &file)
{
    const QFileInfo info(file);
    if (file.isEmpty() || !info.exists())
        return {file, -1, {}};
    return {file, info.size(), info.lastModified()};
}

template <class Image>
std::shared_ptr<Image> InputCache::read(Held<Image> &held, const QString &file)
{
    // Before the reading: what changes meanwhile is read again.
    const Stamp stamp = stampOf(file);
    if (held.stamp == stamp)
        return held.image;
    held = {};
    if (stamp.bytes >= 0) {
        auto image = std::make_shared<Image>(file);
        if (!image->isNull())
            held.image = std::move(image);
    }
    held.stamp = stamp;
    return held.image;
}

std::shared_ptr<TextureImage> InputCache::texture(const QString &file)
{
    return read(m_texture, file);
}

std::shared_ptr<ElevationImage> InputCache::elevation(const QString &file)
{
    return read(m_elevation, file);
}

bool InputCache::hasChanged(const QString &texture, const QString &elevation) const
{
    return m_texture.stamp != stampOf(texture) || m_elevation.stamp != stampOf(elevation);
}
