// Points of every kind of file as terrain; grids beside what GDAL makes of the same file.
#include "geodata/geodata.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <cstring>

namespace {

NoProgress unwatched;

double hill(int column, int row)
{
    return 500.0 + 200.0 * std::sin(column / 9.0) + 0.1 * row * row;
}

QByteArray gridText(char separator, const QByteArray &head)
{
    QByteArray text = head;
    for (int row = 0; row < 60; ++row)
        for (int column = 0; column < 80; ++column)
            text += QByteArray::number(600015 + 30 * column) + separator +
                    QByteArray::number(5200985 - 30 * row) + separator +
                    QByteArray::number(hill(column, row), 'f', 3) + '\n';
    return text;
}

Result<Heights> wholeOf(Terrain &terrain)
{
    GridRequest request;
    request.crs = QStringLiteral("keep");
    const auto grid = terrain.plan(request);
    if (!grid)
        return tl::unexpected(grid.error());
    return terrain.heights(*grid, unwatched);
}

} // namespace

class TestPointRasters : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<TerrainSource> m_source = makeGeodata();

    QString written(const QString &name, const QByteArray &text) const
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test's file");
        return path;
    }

private slots:
    void aGridIsTheOneThatGdalReads_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("blanks") << "a.xyz" << gridText(' ', {});
        QTest::newRow("commas") << "b.xyz" << gridText(',', {});
        QTest::newRow("a head") << "c.csv" << gridText(';', "x;y;z\n");
        QTest::newRow("tabs") << "d.txt" << gridText('\t', {});
    }
    void aGridIsTheOneThatGdalReads()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        const QString file = written(name, text);
        QVERIFY(m_source->canOpen(file));
        const auto terrain = m_source->open({file}, {}, unwatched);
        QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
        const TerrainFacts &facts = (*terrain)->facts();
        QCOMPARE(facts.size, QSize(80, 60));
        QCOMPARE(facts.type, QString("points"));
        QCOMPARE(facts.pointsRead, qint64(4800));
        QCOMPARE(facts.pointsUsed, qint64(4800));
        QCOMPARE(facts.transform, (GeoTransform{600000, 30, 0, 5201000, 0, -30}));
        const auto heights = wholeOf(**terrain);
        QVERIFY2(heights, qPrintable(heights ? QString() : heights.error().text));
        const QString judged = m_folder.filePath("judged.bin");
        QCOMPARE(QProcess::execute("gdal_translate",
                                   {"-q", "-of", "ENVI", "-ot", "Float32", file, judged}),
                 0);
        QFile cells(judged);
        QVERIFY(cells.open(QIODevice::ReadOnly));
        const QByteArray bytes = cells.readAll();
        QCOMPARE(bytes.size(), qsizetype(4800 * sizeof(float)));
        QCOMPARE(std::memcmp(bytes.constData(), heights->metres.data(),
                             std::size_t(bytes.size())),
                 0);
    }

    void scatteredPointsAreASurface()
    {
        QByteArray text("lon,lat,ele\n");
        for (int i = 0; i < 2000; ++i)
            text +=
                QByteArray::number(11 + std::fmod(i * 0.6180339887, 1.0) * 0.1, 'f', 7) +
                ',' + QByteArray::number(47 + i * 0.00005, 'f', 7) + ",1000\n";
        const auto terrain = m_source->open({written("s.csv", text)}, {}, unwatched);
        QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
        QVERIFY((*terrain)->facts().isGeographic);
        const auto grid = (*terrain)->plan({});
        QVERIFY(grid);
        const auto heights = (*terrain)->heights(*grid, unwatched);
        QVERIFY(heights);
        const auto range = rangeOf(*heights);
        QVERIFY(range && range->first > 999.9F && range->second < 1000.1F);
        QVERIFY(countVoids(*heights) < qint64(heights->metres.size()) / 4);
    }

    void archivesHoldPointsToo()
    {
        const QString file = written("z.xyz", gridText(' ', {}));
        QCOMPARE(QProcess::execute("gzip", {"-k", "-f", file}), 0);
        const auto terrain = m_source->open({file + ".gz"}, {}, unwatched);
        QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
        QCOMPARE((*terrain)->facts().size, QSize(80, 60));
        const QStringList named{m_folder.path(), (*terrain)->facts().files.value(0)};
        const auto head = m_source->pointHead(named, {}, unwatched);
        QVERIFY(head);
        QCOMPARE(head->file, named.at(1));
        QCOMPARE(head->preview.rows.size(), qsizetype(PointPreview::Rows));
        QCOMPARE(head->preview.fault, QString());
    }

    void aHeadIsShownAlsoWhereItCannotBeReadSo()
    {
        const QString file = written("h.csv", gridText(',', "x,y,z\n"));
        PointOptions options;
        options.separator = QLatin1Char(';');
        const auto head = m_source->pointHead({file}, options, unwatched);
        QVERIFY(head);
        QVERIFY(!head->preview.fault.isEmpty());
        QCOMPARE(head->preview.rows.value(0), QStringList("x,y,z"));
        const QString none = written("h.tif", QByteArray("II*"));
        QVERIFY(!m_source->pointHead({none}, {}, unwatched));
    }

    void columnsAndTrianglesAreAsAskedFor()
    {
        PointOptions options;
        options.columns = {2, 1, 3};
        const QString file = written("o.xyz", gridText(' ', {}));
        const auto turned = m_source->open({file}, options, unwatched);
        QVERIFY(turned);
        QCOMPARE((*turned)->facts().size, QSize(60, 80));
        options = {};
        options.surface = PointSurface::Triangles;
        const auto surface = m_source->open({file}, options, unwatched);
        QVERIFY(surface);
        QVERIFY((*surface)->facts().size != QSize(80, 60));
    }

    void vectorsWithHeightsAreASurface()
    {
        QByteArray text("<gpx version=\"1.1\" creator=\"t\" "
                        "xmlns=\"http://www.topografix.com/GPX/1/1\">");
        for (int i = 0; i < 400; ++i)
            text += "<wpt lat=\"" + QByteArray::number(47 + i / 20 * 0.001) +
                    "\" lon=\"" + QByteArray::number(11 + i % 20 * 0.001) + "\"><ele>" +
                    QByteArray::number(900 + i % 20) + "</ele></wpt>";
        const QString file = written("w.gpx", text + "</gpx>");
        QVERIFY(m_source->canOpen(file));
        const auto terrain = m_source->open({file}, {}, unwatched);
        QVERIFY2(terrain, qPrintable(terrain ? QString() : terrain.error().text));
        QCOMPARE((*terrain)->facts().pointsUsed, qint64(400));
    }

    void textWithoutPointsIsNamed()
    {
        const QString file = written("n.txt", "nothing\nto see\n");
        QVERIFY(!m_source->canOpen(file));
        const auto terrain = m_source->open({file}, {}, unwatched);
        QVERIFY(!terrain);
        QVERIFY2(terrain.error().text.contains("n.txt"),
                 qPrintable(terrain.error().text));
    }
};

QTEST_GUILESS_MAIN(TestPointRasters)
#include "test_pointrasters.moc"
