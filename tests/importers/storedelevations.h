#pragma once

#include "raster/elevationimage.h"

#include <QString>
#include <QStringList>

/// The stored integers, rows apart by " | ".
inline QString pixelsOf(const ElevationImage &image)
{
    QStringList rows;
    for (int y = 0; y < image.height(); ++y) {
        QStringList row;
        for (int x = 0; x < image.width(); ++x)
            row.append(QString::number(ElevationImage::stepsOf(image.pixel(x, y))));
        rows.append(row.join(' '));
    }
    return rows.join(" | ");
}
