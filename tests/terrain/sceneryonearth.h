#pragma once

#include "raster/elevationimage.h"
#include "terrain/sceneryworld.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

/// A scenery of 200 by 150 cells of 30 m with hills, with its files in a folder of its
/// own.
class SceneryOnEarth {
public:
    static constexpr int Width = 200;
    static constexpr int Height = 150;
    static constexpr double Cell = 30.0; // metres
    static constexpr double Unit = 0.01; // metres of a height step
    static constexpr double West = 400000.0;
    static constexpr double North = 5204500.0;

    explicit SceneryOnEarth(double exaggeration = 1.0)
    {
        ElevationImage picture(Width, Height, QImage::Format_RGB888);
        for (int row = 0; row < Height; ++row)
            for (int column = 0; column < Width; ++column)
                picture.setPixel(column, row,
                                 ElevationImage::pixelOf(metresAt(column, row), Unit));
        if (!picture.save(path("t_elevation.png")))
            qFatal("cannot write the test's picture");
        georeference.transform = {West, Cell, 0.0, North, 0.0, -Cell};
        georeference.crs = QStringLiteral("PROJCS[\"test\"]");
        georeference.metresX = georeference.metresY = Cell;
        georeference.metresPerHeightUnit = Unit;
        write("t_elevation.pgw", worldFileText(georeference.transform));
        write("t_elevation.png.aux.xml", auxiliaryFileText(georeference));
        document.parameters.HDateiname = QStringLiteral("t_elevation.png");
        document.parameters.HDateiSkalaZA = document.parameters.HDateiSkalaZE =
            Unit / Cell * exaggeration;
        document.extras.MetresPerUnit = Cell;
    }

    static double metresAt(double column, double row)
    {
        return 800.0 + 300.0 * std::sin(column / 17.0) * std::cos(row / 11.0);
    }
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_folder.filePath(name);
    }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test's file");
    }
    void remove(const QString &name) const { QFile::remove(path(name)); }
    [[nodiscard]] SceneryGround ground() const
    {
        auto loaded = loadGround(document, folder());
        return loaded ? *loaded : SceneryGround();
    }
    /// A place of the reference system, given in cells from the upper left middle.
    [[nodiscard]] static QPointF placeOf(double column, double row)
    {
        return {West + (column + 0.5) * Cell, North - (row + 0.5) * Cell};
    }

    SceneryDocument document;
    Georeference georeference;

private:
    QTemporaryDir m_folder;
};
