#include "terrainbatch/terrainfixture.h"

#include "importers/usgsdemfile.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "support/sdtstransfer.h"
#include "tools/images.h"

#include <QDir>
#include <QProcess>
#include <QTest>

namespace {

constexpr int Patience = 120000; // ms

// Elevations below 0, within the grays and beyond.
ElevationImage slope(int width, int height)
{
    ElevationImage image(width, height, QImage::Format_RGB888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setElevation(x, y, 17 * x - 5 * y - 20);
    return image;
}

} // namespace

void TerrainFixture::makeFiles()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    makePictures();
    makeDems();
    QByteArray grid = "x y z\n";
    QByteArray points;
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 9; ++x) {
            const QByteArray z = QByteArray::number(10 * x + y);
            grid +=
                QByteArray::number(x + 5) + ' ' + QByteArray::number(y) + ' ' + z + '\n';
            points += QByteArray::number(x * 1.3 + y * 0.1) + '\t' +
                      QByteArray::number(y * 2 - x * 0.2) + '\t' + z + '\n';
        }
    write("grid.txt", grid + "1 2\n");
    write("points.txt", points + "only two\n");
    const auto numbered = [](int column, int row) { return 100 * (row + 1) + column; };
    for (const auto &[name, bytes] : sdts::transfer(5, 4, numbered))
        write(QString::fromStdString(name), QByteArray::fromStdString(bytes));
}

void TerrainFixture::makePictures() const
{
    QVERIFY(saveImageFile(slope(23, 17), path("dem.png")));
    QVERIFY(saveImageFile(slope(8, 6), path("small.png")));
    QVERIFY(saveImageFile(images::noise(19, 13), path("photo.png")));
    QVERIFY(saveImageFile(images::noise(5, 3, 7), path("kernel.png")));
    QVERIFY(saveImageFile(images::noise(6, 2, 9), path("palette.png")));
    QImage mask(7, 5, QImage::Format_ARGB32);
    for (int y = 0; y < mask.height(); ++y)
        for (int x = 0; x < mask.width(); ++x)
            mask.setPixelColor(x, y, QColor(30 * x, 50 * y, 99, 35 * x));
    QVERIFY(saveImageFile(mask, path("mask.png")));
}

void TerrainFixture::makeDems() const
{
    UsgsDemFile west;
    west.profiles = {{1, 2, 0}, {3, -9999, 0}, {5, 6, 0}};
    UsgsDemFile east = west;
    east.east += 60.0;
    UsgsDemFile jumps;
    jumps.profiles = {{100, 700, 100, 0}, {100, 700, 100, 0}, {0, 0, 0, 0}};
    west.write(path("west.dem"));
    east.write(path("east.dem"));
    jumps.write(path("jumps.dem"));
    write("raster.bil", "abcdefghijklmnopqrstuvwxyz");
    write("raster.hdr", "nrows 4\nncols 5\nnbits 8\nulxmap 1\nulymap 2\nxdim 0.5\n"
                        "ydim 0.5\nnodata 98\n");
    QByteArray sheet = QByteArray("53394512").leftJustified(23) + "  5  4\n";
    for (int row = 0; row < 4; ++row) {
        sheet += "533945000";
        for (int column = 0; column < 5; ++column)
            sheet += QByteArray::number(column == row ? -9999 : 10 * row + column)
                         .rightJustified(5);
        sheet += '\n';
    }
    write("sheet.mem", sheet);
}

void TerrainFixture::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray TerrainFixture::bytesOf(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TerrainRun TerrainFixture::terrain(const QStringList &arguments,
                                   const QStringList &environment) const
{
    QProcess program;
    program.setWorkingDirectory(m_dir->path());
    if (!environment.isEmpty())
        program.setEnvironment(QProcess::systemEnvironment() + environment);
    program.start(QStringLiteral(TERRAIN_PROGRAM), arguments);
    if (!program.waitForFinished(Patience) ||
        program.exitStatus() != QProcess::NormalExit)
        return {};
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

QStringList TerrainFixture::files() const
{
    return QDir(m_dir->path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}
