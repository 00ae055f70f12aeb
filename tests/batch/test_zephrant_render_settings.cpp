// Keys of the scenery from the command line, and what a scenery tells of its extras.

#include "batch/renderfixture.h"
#include "raster/imagefile.h"

#include <QFile>
#include <QTest>

class TestZephrantRenderSettings : public QObject, private RenderFixture {
    Q_OBJECT

private slots:
    void init() { makeScenery(); }
    void cleanup() { removeScenery(); }
    void settingDrawsAsTheSceneryThatSaysSo_data();
    void settingDrawsAsTheSceneryThatSaysSo();
    void lastSettingOfAKeyCountsAndOptionsGoBeforeIt();
    void settingOfAPointNeedsThePoint();
    void sceneryFileStaysAsItIs();
    void wrongSettingIsWrongUsageWithItsName_data();
    void wrongSettingIsWrongUsageWithItsName();
    void linesOfTheExtrasAreToldAndFailNothing();

private:
    [[nodiscard]] QByteArray bytes(const QString &name) const;
    void writeCurvedScenery(const QString &more) const;
};

QByteArray TestZephrantRenderSettings::bytes(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestZephrantRenderSettings::writeCurvedScenery(const QString &more) const
{
    QString text = QStringLiteral("Rundflug=1\nTraegheit=0\n");
    for (int i = 0; i < 7; ++i)
        text +=
            QStringLiteral("Punkt%1=%2,%3\nPunkt%1_z=60\nPunkt%1_i=%2\nPunkt%1_p=-1\n")
                .arg(i, 2, 10, QLatin1Char('0'))
                .arg(5 + 5 * i)
                .arg(4 * i);
    for (int i = 0; i < 4; ++i)
        text += QStringLiteral("cPunkt%1=%2,%3,60\n")
                    .arg(i, 2, 10, QLatin1Char('0'))
                    .arg(5 + 10 * i)
                    .arg(8 * i);
    writeScenery(text + more);
}

void TestZephrantRenderSettings::settingDrawsAsTheSceneryThatSaysSo_data()
{
    QTest::addColumn<QStringList>("settings");
    QTest::newRow("camera") << QStringList{"BeobZE=45.5", "NeigungE=-4e1"};
    QTest::newRow("size") << QStringList{"AusBreite=50"};
    QTest::newRow("light") << QStringList{"LichtX=1", "LichtZ=-0.5"};
    QTest::newRow("background")
        << QStringList{"HintergrundVerwenden=1", "Hintergrund=ff8000"};
    QTest::newRow("dust") << QStringList{"NebelA=50", "NebelE=50"};
    QTest::newRow("way point") << QStringList{"Punkt03_p=-0.8"};
    QTest::newRow("control point") << QStringList{"cPunkt02=30,10,80"};
}
void TestZephrantRenderSettings::settingDrawsAsTheSceneryThatSaysSo()
{
    QFETCH(QStringList, settings);
    if (settings[0].contains("unkt"))
        writeCurvedScenery({});
    QStringList arguments{"--from", "1", "--to", "1"};
    QCOMPARE(render(arguments + QStringList{path("s.zph")}).status, 0);
    const QByteArray plain = bytes("f05.png");
    for (const QString &setting : settings)
        arguments += {"--set", setting};
    const Outcome outcome = render(arguments + QStringList{path("s.zph")});
    QCOMPARE(outcome.err, QString());
    QCOMPARE(outcome.status, 0);
    const QByteArray set = bytes("f05.png");
    QVERIFY(set != plain);

    const QString lines = settings.join('\n') + '\n';
    if (settings[0].contains("unkt"))
        writeCurvedScenery(lines);
    else
        writeScenery(lines);
    QCOMPARE(render({"--from", "1", "--to", "1", path("s.zph")}).status, 0);
    QCOMPARE(bytes("f05.png"), set);
}

void TestZephrantRenderSettings::lastSettingOfAKeyCountsAndOptionsGoBeforeIt()
{
    const Outcome outcome =
        render({"--size", "24x16", "--from", "1", "--set", "AusBreite=99", "--set",
                "EndbildNr=2", "--set", "EndbildNr=1", "--set", "StartbildNr=0", "--set",
                "AusgabePNG=0", "--set", "AusgabePPM=1", path("s.zph")});
    QCOMPARE(outcome.err, QString());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(frames(), QStringList("f05.ppm"));
    QCOMPARE(loadImageFile(path("f05.ppm")).size(), QSize(24, 16));
}

void TestZephrantRenderSettings::settingOfAPointNeedsThePoint()
{
    const QStringList arguments{"--set", "cPunkt04=1,2,3", path("s.zph")};
    writeCurvedScenery({});
    const Outcome outcome = render(arguments);
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.err, QString("--set: cPunkt04: the scenery has no such point.\n"));
    QCOMPARE(frames(), QStringList());
}

void TestZephrantRenderSettings::sceneryFileStaysAsItIs()
{
    const QByteArray before = bytes("s.zph");
    QCOMPARE(
        render({"--set", "BeobXA=3", "--set", "Exposure=1", "--to", "0", path("s.zph")})
            .status,
        0);
    QCOMPARE(bytes("s.zph"), before);
}

void TestZephrantRenderSettings::wrongSettingIsWrongUsageWithItsName_data()
{
    QTest::addColumn<QString>("told");
    QTest::newRow("Nope=1") << "--set: There is no key Nope.";
    QTest::newRow("BeobXA=1,5")
        << "--set: BeobXA takes a number from -1e+06 to 1e+06, not \"1,5\".";
    QTest::newRow("SkyLight=2")
        << "--set: SkyLight takes a number from 0 to 1, not \"2\".";
    QTest::newRow("Sun=noon")
        << "--set: Sun takes one of told, angles, time, not \"noon\".";
    QTest::newRow("AusgabePNG=0")
        << "Neither the scenery nor the command line names a picture format.";
    QTest::newRow("StartbildNr=5")
        << "--set: the first frame, 5, lies above the last, 2: "
           "there is no frame to render.";
    QTest::newRow("Punkt00=1,2") << "--set: Punkt00: the scenery has no such point.";
}
void TestZephrantRenderSettings::wrongSettingIsWrongUsageWithItsName()
{
    QFETCH(QString, told);
    const Outcome outcome = render({"--set", QTest::currentDataTag(), path("s.zph")});
    QCOMPARE(outcome.status, 2);
    QVERIFY2(outcome.err.startsWith(told + '\n'), qPrintable(outcome.err));
    QCOMPARE(frames(), QStringList());
}

void TestZephrantRenderSettings::linesOfTheExtrasAreToldAndFailNothing()
{
    QCOMPARE(render({"--to", "0", path("s.zph")}).status, 0);
    const QByteArray plain = bytes("f04.png");
    writeScenery("\n[Extras]\nFog=1\nSkyLight=7\n");
    const Outcome outcome = render({"--to", "0", "--quiet", path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.err,
             QString("This line of the extras is not known here and is kept: Fog=1\n"
                     "An extra is out of its range, 1 is taken: SkyLight=7\n"));
    QVERIFY(!plain.isEmpty());
    QVERIFY(!bytes("f04.png").isEmpty());
}

QTEST_GUILESS_MAIN(TestZephrantRenderSettings)
#include "test_zephrant_render_settings.moc"
