// Drives the commands of tracks from the shell.
#include "scene/sceneryfile.h"
#include "scene/scenerywriter.h"
#include "support/textfile.h"
#include "terrain/sceneryonearth.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <QTextStream>

#include <cmath>

namespace {

struct Run {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

Run run(const QStringList &arguments)
{
    QProcess process;
    process.start(TERRAIN_PROGRAM, arguments);
    process.waitForFinished();
    return {process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError()};
}

} // namespace

class TestTrackCommands : public QObject {
    Q_OBJECT

    SceneryOnEarth m_scenery;

    [[nodiscard]] SceneryDocument read(const QString &name) const
    {
        QFile file(m_scenery.path(name));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            return {};
        const auto reading = readScenery(file, {});
        return reading ? reading->document : SceneryDocument();
    }

private slots:
    void initTestCase()
    {
        // Real coordinates: the world of the scenery in UTM zone 32.
        m_scenery.georeference.crs = QStringLiteral("EPSG:32632");
        m_scenery.write("t_elevation.png.aux.xml",
                        auxiliaryFileText(m_scenery.georeference));
        QByteArray text;
        QTextStream stream(&text);
        writeScenery(stream, m_scenery.document);
        stream.flush();
        m_scenery.write("t.zph", text);
        QByteArray line("x;y;z\n");
        for (int i = 0; i <= 100; ++i) {
            const QPointF place =
                SceneryOnEarth::placeOf(20 + 1.6 * i, 75 + 40 * std::sin(i / 16.0));
            line += QByteArray::number(place.x(), 'f', 2) + ';' +
                    QByteArray::number(place.y(), 'f', 2) + ";1500\n";
        }
        m_scenery.write("track.csv", line);
    }

    void aTrackGoesInAndComesOutAgain()
    {
        const Run in = run({"track", m_scenery.path("track.csv"), "--scenery",
                            m_scenery.path("t.zph"), "--out", m_scenery.path("f.zph"),
                            "--points", "30", "--json"});
        QVERIFY2(in.status == 0, in.err.constData());
        const QJsonObject report = QJsonDocument::fromJson(in.out).object();
        QCOMPARE(report.value("pointsRead").toInt(), 101);
        QCOMPARE(report.value("heights").toString(), QString("track"));
        QVERIFY(report.value("greatestDistance").toDouble(1e9) < 60.0);
        const SceneryDocument flown = read("f.zph");
        QVERIFY(!flown.parameters.isStraight);
        QCOMPARE(flown.parameters.Bildanzahl, 300);
        QCOMPARE(flown.parameters.EndbildNr, 299);
        QVERIFY(flown.controlPoints.size() >= 4 && flown.controlPoints.size() <= 30);
        QCOMPARE(flown.controlPoints.first().z, 50);
        QCOMPARE(flown.extras.MetresPerUnit, 30.0);

        for (const char *const name : {"p.gpx", "p.kml", "p.csv"}) {
            const Run out =
                run({"path", m_scenery.path("f.zph"), "--out", m_scenery.path(name)});
            QVERIFY2(out.status == 0, out.err.constData());
        }
        QCOMPARE(bytesIn(m_scenery.path("p.csv")).count('\n'), 301);
        // The way there and back again ends where it began.
        const Run again =
            run({"track", m_scenery.path("p.gpx"), "--scenery", m_scenery.path("t.zph"),
                 "--out", m_scenery.path("g.zph"), "--quiet"});
        QVERIFY2(again.status == 0, again.err.constData());
        const SceneryDocument other = read("g.zph");
        const auto ends = [](const SceneryDocument &document) {
            return std::pair(document.controlPoints.first(),
                             document.controlPoints.last());
        };
        QVERIFY(std::abs(ends(flown).first.x - ends(other).first.x) <= 1);
        QVERIFY(std::abs(ends(flown).second.y - ends(other).second.y) <= 2);
        QCOMPARE(ends(flown).first.z, ends(other).first.z);
    }

    void theGroundIsKeptClearOf()
    {
        const Run ground = run({"track", m_scenery.path("track.csv"), "--scenery",
                                m_scenery.path("t.zph"), "--out", m_scenery.path("h.zph"),
                                "--height", "ground", "--clearance", "200"});
        QVERIFY2(ground.status == 0, ground.err.constData());
        QVERIFY(ground.out.contains("heights: ground"));
        QVERIFY(read("h.zph").controlPoints.first().z < 50);
    }

    void whatIsWrongIsSaid_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("said");
        const QString track = m_scenery.path("track.csv");
        const QString scenery = m_scenery.path("t.zph");
        const QString out = m_scenery.path("none.zph");
        QTest::newRow("too few points")
            << QStringList{"track", track, "--scenery", scenery,
                           "--out", out,   "--points",  "3"}
            << 2 << QByteArray("--points");
        QTest::newRow("no scenery")
            << QStringList{"track", track, "--out", out} << 2 << QByteArray("--scenery");
        QTest::newRow("no such track")
            << QStringList{"track",     m_scenery.path("nil.gpx"),
                           "--scenery", scenery,
                           "--out",     out}
            << 1 << QByteArray("nil.gpx");
        QTest::newRow("wrong ending")
            << QStringList{"path", scenery, "--out", m_scenery.path("p.txt")} << 2
            << QByteArray(".gpx, .kml or .csv");
        QTest::newRow("no such scenery") << QStringList{"path", m_scenery.path("nil.zph"),
                                                        "--out", m_scenery.path("q.csv")}
                                         << 1 << QByteArray("nil.zph");
    }
    void whatIsWrongIsSaid()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QByteArray, said);
        const Run wrong = run(arguments);
        QCOMPARE(wrong.status, status);
        QVERIFY2(wrong.err.contains(said), wrong.err.constData());
        QVERIFY(!QFile::exists(m_scenery.path("none.zph")));
    }
};

QTEST_GUILESS_MAIN(TestTrackCommands)
#include "test_trackcommands.moc"
