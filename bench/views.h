#pragma once

#include "base/vectormath.h"
#include "raster/elevationimage.h"
#include "raster/textureimage.h"

#include <QString>

#include <cmath>

/// The two views that frames are timed with: 1280 by 960 pixels, a mesh of 1024 by
/// 1024 cells over terrain and texture of 1024 by 1024 pixels.
struct View {
    C4Vector position;
    double pitch; // degrees
    double focal;
};

/// 60 units inside the southern edge and 150 high, looking north.
constexpr View Flight{{512.0, 60.0, 150.0, 1.0}, -12.0, 1000.0};
/// The whole terrain from the south.
constexpr View Overview{{512.0, -1024.0, 1536.0, 1.0}, -45.0, 1000.0};

/// Terrain and texture: elev24.png and tex.png of the folder named by ZEPHRANT_PERF,
/// or a terrain of our own, the same in every run.
struct Inputs {
    static constexpr int Side = 1024;

    Inputs()
    {
        const QString folder = qEnvironmentVariable("ZEPHRANT_PERF");
        if (!folder.isEmpty()) {
            elevation = ElevationImage(folder + QStringLiteral("/elev24.png"));
            picture = QImage(folder + QStringLiteral("/tex.png"));
        }
        if (elevation.isNull() || picture.isNull())
            generate();
        elevation.setZScale(0.001);
    }

    ElevationImage elevation;
    QImage picture;

private:
    void generate()
    {
        elevation = ElevationImage(Side, Side, QImage::Format_RGB32);
        picture = QImage(Side, Side, QImage::Format_RGB32);
        unsigned int noise = 12345u;
        for (int y = 0; y < Side; ++y) {
            auto *const row = reinterpret_cast<QRgb *>(picture.scanLine(y));
            for (int x = 0; x < Side; ++x) {
                noise = noise * 1664525u + 1013904223u;
                const double height = 40 + 30 * std::sin(x * .021) * std::cos(y * .017) +
                                      12 * std::sin(x * .11 + y * .07) +
                                      4 * std::cos(x * .31 - y * .43) +
                                      (noise >> 28) * .05;
                elevation.setElevation(x, y, height * 1000.0);
                row[x] = 0xFF406030u + (noise >> 8 & 0x3F3F3Fu);
            }
        }
    }
};
