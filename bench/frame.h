#pragma once

#include "base/pi.h"
#include "bench/views.h"

#include "render/terrainsweep.h"
#include "render/transformation.h"

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

/// A view with all that a frame of it needs; of either renderer.
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

using FastFrame = Frame<TerrainSweep, Transformation>;
