#pragma once

#include <QImage>
#include <QStringList>
#include <QTemporaryDir>

/// What a run of the program came to.
struct TerrainRun {
    int status = -1;
    QString out;
    QString err;
};

/// Drives zephrant-terrain in a folder of its own, with files for every command.
class TerrainFixture {
protected:
    /// Makes the folder and its files: dem.png and small.png (elevations), photo.png,
    /// kernel.png, mask.png, palette.png, west.dem, east.dem and jumps.dem, raster.bil
    /// and raster.hdr, sheet.mem, grid.txt and points.txt, and the transfer TR01CATD.DDF.
    void makeFiles();
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_dir->filePath(name);
    }
    void write(const QString &name, const QByteArray &bytes) const;
    [[nodiscard]] QByteArray bytesOf(const QString &name) const;
    /// Runs the program in the folder.
    [[nodiscard]] TerrainRun terrain(const QStringList &arguments,
                                     const QStringList &environment = {}) const;
    /// The names of all files.
    [[nodiscard]] QStringList files() const;

private:
    void makePictures() const;
    void makeDems() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};
