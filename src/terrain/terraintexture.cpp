#include "terrain/terraintexture.h"

#include "base/workerpool.h"
#include "terrain/rowwork.h"
#include "terrain/terrainsource.h"

namespace {

Result<QImage> inLight(const TextureJob &job, QImage texture, WorkerPool &pool,
                       const Stretch &stretch)
{
    if (job.request.light == BakedLight::None)
        return texture;
    const Result<LightMap> light =
        bakeLight(job.ground, job.request, pool, stretch.part(0.0, 0.9));
    if (!light)
        return tl::unexpected(light.error());
    if (!shadeTexture(texture, *light, pool, stretch.part(0.9, 1.0)))
        return stopped();
    return texture;
}

Result<QImage> paint(const TextureJob &job, WorkerPool &pool, const Stretch &stretch)
{
    return paintGround(job.filled, job.ground, job.colours, job.size, pool, stretch);
}

Result<QImage> photograph(const TextureJob &job, const PhotoSource &photos,
                          WorkerPool &pool, const Stretch &stretch)
{
    StretchProgress progress(stretch.part(0.0, 0.8));
    Result<QImage> photo =
        photos.source.photo(job.request.photos, photos.grid, job.size, progress);
    if (!photo || !photo->hasAlphaChannel())
        return photo;
    Result<QImage> texture = paint(job, pool, stretch.part(0.8, 0.95));
    if (texture)
        layOver(photo->convertToFormat(QImage::Format_ARGB32), *texture);
    return texture;
}

} // namespace

Result<QImage> terrainTexture(const TextureJob &job, const PhotoSource &photos,
                              WorkerPool &pool, const Stretch &stretch)
{
    if (job.request.photos.isEmpty())
        return terrainTexture(job, pool, stretch);
    Result<QImage> texture = photograph(job, photos, pool, stretch.part(0.0, 0.5));
    if (!texture)
        return texture;
    return inLight(job, texture->convertToFormat(QImage::Format_RGB32), pool,
                   stretch.part(0.5, 1.0));
}

Result<QImage> terrainTexture(const TextureJob &job, WorkerPool &pool,
                              const Stretch &stretch)
{
    const bool isLit = job.request.light != BakedLight::None;
    Result<QImage> texture = paint(job, pool, stretch.part(0.0, isLit ? 0.4 : 1.0));
    if (!texture)
        return texture;
    return inLight(job, std::move(*texture), pool, stretch.part(0.4, 1.0));
}
