// Photographs and maps that are laid on a terrain.
#include "geodata/geodata.h"
#include "geodata/geofile.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

class TestPhotos : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void oneThatLiesElsewhereIsTold();
    void aWorldFileAloneCountsInTheTerrainsSystem();
    void aWorldFileAloneInDegreesIsUnderstood();

private:
    [[nodiscard]] QString at(const QString &name) const
    {
        return m_folder.filePath(name);
    }
    /// A red picture with nothing but a world file beside it.
    [[nodiscard]] QString redPicture(const QString &name, const QByteArray &world) const;
    [[nodiscard]] Result<QImage> laid(const QString &photo) const
    {
        NoProgress progress;
        return m_source->photo({photo}, m_grid, {64, 48}, progress);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<TerrainSource> m_source;
    OutputGrid m_grid;
};

// Two kilometres at 15 degrees east and 45.15 north.
void TestPhotos::initTestCase()
{
    GeoFile file;
    file.name = at("under.tif");
    QVERIFY(write(file));
    m_source = makeGeodata();
    NoProgress progress;
    const auto terrain = m_source->open({file.name}, {}, progress);
    QVERIFY(terrain);
    const auto grid = (*terrain)->plan({});
    QVERIFY(grid);
    m_grid = *grid;
}

QString TestPhotos::redPicture(const QString &name, const QByteArray &world) const
{
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(qRgb(200, 0, 0));
    QFile beside(at(name + ".pgw"));
    if (!picture.save(at(name + ".png")) || !beside.open(QIODevice::WriteOnly) ||
        beside.write(world) != world.size())
        qFatal("cannot write");
    return at(name + ".png");
}

void TestPhotos::oneThatLiesElsewhereIsTold()
{
    const QString far = redPicture("far", "100\n0\n0\n-100\n900000\n5000000\n");
    const auto picture = laid(far);
    QVERIFY(!picture);
    QVERIFY2(picture.error().text.contains("far.png"), qPrintable(picture.error().text));
}

void TestPhotos::aWorldFileAloneCountsInTheTerrainsSystem()
{
    const auto picture = laid(redPicture("metres", "100\n0\n0\n-100\n500050\n4999950\n"));
    QVERIFY2(picture, qPrintable(picture ? QString() : picture.error().text));
    QCOMPARE(picture->pixel(30, 20), qRgb(200, 0, 0));
}

void TestPhotos::aWorldFileAloneInDegreesIsUnderstood()
{
    const auto picture = laid(redPicture("degrees", "0.1\n0\n0\n-0.1\n14\n46\n"));
    QVERIFY2(picture, qPrintable(picture ? QString() : picture.error().text));
    QCOMPARE(picture->pixel(30, 20), qRgb(200, 0, 0));
}

QTEST_GUILESS_MAIN(TestPhotos)
#include "test_photos.moc"
