#pragma once

#include "base/framecamera.h"
#include "base/progress.h"
#include "render/terrainsweep.h"
#include "render/testscene.h"

#include <functional>

/// A sweep over a test scene with all that it borrows.
struct FastRun : private Progress {
    explicit FastRun(const TestScene &scene)
        : elevation(scene.elevation()), texture(scene.texture()),
          target(scene.width, scene.height, QImage::Format_RGB32),
          view(nullptr, normalized(scene.light), scene.width, scene.height)
    {
        texture.setBackgroundColor(0xFFFF00FFu);
        look(scene.position, scene.direction, scene.pitch, scene.focal, scene.roll);
        camera.zScale = scene.zScale;
        camera.dustRange = scene.dustRange;
        setup.target = &target;
        setup.texture = &texture;
        setup.elevation = &elevation;
        setup.view = &view;
        setup.light = normalized(scene.light);
        setup.meshCellsX = scene.cellsX;
        setup.meshCellsY = scene.cellsY;
        setup.terrainX = elevation.width() * scene.scaleX;
        setup.terrainY = elevation.height() * scene.scaleY;
        setup.useBackground = scene.useBackground;
        setup.background = scene.background;
        setup.quality = scene.quality;
    }

    void look(C4Vector position, double direction, double pitch, double focal,
              double roll)
    {
        camera.position = position;
        camera.direction = direction;
        camera.pitch = pitch;
        camera.focal = focal;
        camera.roll = roll;
    }

    QImage frame()
    {
        sweep.renderFrame(setup, camera, *this);
        return target.copy();
    }

    ElevationImage elevation;
    TextureImage texture;
    TextureImage target;
    Transformation view;
    FrameCamera camera;
    FrameSetup setup;
    std::function<bool()> rowStarts; // false stops the walk
    TerrainSweep sweep;

private:
    bool step(qint64, qint64) override { return !rowStarts || rowStarts(); }
};
