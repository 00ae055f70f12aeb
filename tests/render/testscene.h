#pragma once

#include "base/vectormath.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"

#include <QTemporaryDir>

#include <cmath>

/// A small terrain with hills, a texture of its own and one camera over it.
struct TestScene {
    int terrainPixels = 64;
    double scaleX = 1.0, scaleY = 1.0; // world units a pixel
    int texturePixels = 64;
    double zScale = 0.01;
    double cellsX = 64.0, cellsY = 64.0;
    int width = 96, height = 72;
    C4Vector position{32.3, -20.0, 30.0, 1.0};
    double direction = 0.0, pitch = -0.5, focal = 90.0, roll = 0.0;
    C4Vector light{1.0, 1.0, -1.0, 0.0};
    double dustRange = 1000.0;
    int quality = 0;
    bool useBackground = true;
    unsigned int background = 0xFF102030u;

    [[nodiscard]] ElevationImage elevation() const
    {
        ElevationImage stored(terrainPixels, terrainPixels, QImage::Format_RGB32);
        for (int y = 0; y < terrainPixels; ++y)
            for (int x = 0; x < terrainPixels; ++x)
                stored.setElevation(
                    x, y,
                    std::round(300 * std::sin(x * 0.3) * std::cos(y * 0.2) + 400 +
                               (x * 7 + y * 13) % 11));
        // Scales come with a file alone.
        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("elevation.png"));
        stored.save(name);
        ElevationImage image(name, scaleX, scaleY, nullptr);
        image.setZScale(zScale);
        return image;
    }

    [[nodiscard]] TextureImage texture() const
    {
        TextureImage image(texturePixels, texturePixels, QImage::Format_RGB32);
        for (int y = 0; y < texturePixels; ++y)
            for (int x = 0; x < texturePixels; ++x)
                image.setPixel(x, y, qRgb(x * 4 & 255, y * 4 & 255, (x ^ y) * 9 & 255));
        image.setBackgroundColor(0xFFFF00FFu);
        return image;
    }
};

/// A plain sweep over a test scene with all that it borrows.
template <typename Sweep, typename Camera> struct TestRun {
    explicit TestRun(const TestScene &scene)
        : m_scene(scene), elevation(scene.elevation()), texture(scene.texture()),
          target(scene.width, scene.height, QImage::Format_RGB32),
          camera(nullptr, normalized(scene.light), scene.width, scene.height)
    {
        texture.setBackgroundColor(0xFFFF00FFu);
        camera.SetzeTexturDatei(&texture);
        camera.SetView(scene.position, scene.direction, scene.pitch, scene.focal,
                       scene.roll);
        sweep.meshCellsX = scene.cellsX;
        sweep.meshCellsY = scene.cellsY;
        sweep.Licht = normalized(scene.light);
        sweep.renderWidth = scene.width;
        sweep.renderHeight = scene.height;
        sweep.activeTransformation = &camera;
        sweep.renderElevation = &elevation;
        sweep.renderTarget = &target;
        sweep.dustRange = scene.dustRange;
        sweep.terrainX = elevation.width() * scene.scaleX;
        sweep.terrainY = elevation.height() * scene.scaleY;
    }

    QImage frame()
    {
        sweep.Scan(&texture, m_scene.useBackground, m_scene.background, m_scene.quality);
        return target.copy();
    }

private:
    TestScene m_scene;

public:
    ElevationImage elevation;
    TextureImage texture;
    TextureImage target;
    Camera camera;
    Sweep sweep;
};
