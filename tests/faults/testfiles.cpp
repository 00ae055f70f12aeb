#include "faults/testfiles.h"

#include "raster/elevationimage.h"
#include "raster/imagefile.h"

#include <QFile>

QImage testPicture(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 11 % 256, x * y % 256));
    return image;
}

void writeText(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(name));
}

void writeScenery(const QString &folder, const QString &name)
{
    ElevationImage terrain(64, 64, QImage::Format_RGB888);
    terrain.clear(0xFF000000);
    for (int i = 10; i < 50; ++i)
        terrain.setElevation(i, 64 - i, 5000);
    if (!saveImageFile(testPicture({64, 64}), folder + "/texture.png") ||
        !saveImageFile(terrain, folder + "/elevation.png"))
        qFatal("cannot write the pictures");
    writeText(folder + '/' + name,
              "[Param]\nBeobXA=32\nBeobYA=-20\nBeobZA=30\nBeobXE=40\nBeobYE=-10\n"
              "BeobZE=30\nRichtungA=0\nRichtungE=0\nNeigungA=-30\nNeigungE=-30\n"
              "BrennA=50\nBrennE=50\nBildanzahl=3\nStartbildNr=0\nEndbildNr=2\n"
              "AusBreite=120\nAusHoehe=90\nAusAuflX=32\nAusAuflY=32\nAusgabePNG=1\n"
              "AusgabePPM=1\nGenauRechnen=2\nTDateiname=texture.png\n"
              "HDateiname=elevation.png\nAusDateiname=" +
                  QFile::encodeName(folder) + "/f%d\n");
}
