#pragma once

#include "base/framecamera.h"
#include "base/pi.h"
#include "base/progress.h"
#include "bench/views.h"

#include "render/terrainsweep.h"
#include "render/transformation.h"

#include <functional>

inline const Inputs &inputs()
{
    static const Inputs made;
    return made;
}

inline TextureImage textureOf(const QImage &picture)
{
    return {picture.constBits(), picture.width(), picture.height(),
            picture.bytesPerLine(), picture.format()};
}

/// A view with all that a frame of it needs, of the plain renderer.
template <typename Sweep, typename Camera> struct Frame {
    Frame(const View &view, int quality, int width = 1280, int height = 960,
          int cells = 1024)
        : m_quality(quality), m_elevation(inputs().elevation),
          m_texture(textureOf(inputs().picture)),
          m_target(width, height, QImage::Format_RGB32),
          m_camera(nullptr, Light, width, height)
    {
        m_camera.SetzeTexturDatei(&m_texture);
        m_camera.SetView(view.position, 0.0, view.pitch / 180 * Pi,
                         view.focal * width / 1280.0, 0.0);
        sweep.meshCellsX = sweep.meshCellsY = cells;
        sweep.Licht = normalized(Light);
        sweep.renderWidth = width;
        sweep.renderHeight = height;
        sweep.activeTransformation = &m_camera;
        sweep.renderElevation = &m_elevation;
        sweep.renderTarget = &m_target;
        sweep.dustRange = 5000.0;
        sweep.terrainX = m_elevation.width();
        sweep.terrainY = m_elevation.height();
    }

    void draw() { sweep.Scan(&m_texture, false, 0, m_quality); }

    Sweep sweep;

private:
    static constexpr C4Vector Light{1.0, 1.0, -1.0, 0.0};
    int m_quality;
    ElevationImage m_elevation;
    TextureImage m_texture;
    TextureImage m_target;
    Camera m_camera;
};

/// The same of the renderer of the program.
class FastFrame : private Progress {
public:
    FastFrame(const View &view, int quality, int width = 1280, int height = 960,
              int cells = 1024)
        : m_elevation(inputs().elevation), m_texture(textureOf(inputs().picture)),
          m_target(width, height, QImage::Format_RGB32),
          m_view(nullptr, Light, width, height)
    {
        m_camera.position = view.position;
        m_camera.pitch = view.pitch / 180 * Pi;
        m_camera.focal = view.focal * width / 1280.0;
        m_camera.zScale = m_elevation.zScale();
        m_camera.dustRange = 5000.0;
        setup.target = &m_target;
        setup.texture = &m_texture;
        setup.elevation = &m_elevation;
        setup.view = &m_view;
        setup.light = normalized(Light);
        setup.meshCellsX = setup.meshCellsY = cells;
        setup.terrainX = m_elevation.width();
        setup.terrainY = m_elevation.height();
        setup.quality = quality;
    }

    void draw() { m_sweep.renderFrame(setup, m_camera, *this); }

    FrameSetup setup;
    std::function<bool()> rowStarts; // false stops the frame

private:
    bool step(qint64, qint64) override { return !rowStarts || rowStarts(); }

    static constexpr C4Vector Light{1.0, 1.0, -1.0, 0.0};
    ElevationImage m_elevation;
    TextureImage m_texture;
    TextureImage m_target;
    Transformation m_view;
    FrameCamera m_camera;
    TerrainSweep m_sweep;
};
