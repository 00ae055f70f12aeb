// Sceneries that are cut off, damaged or too large: what is read is what stands there,
// and nothing else.
#include "scene/inputfile.h"
#include "scene/sceneryfiles.h"
#include "scene/waypointlevel.h"

#include <QDir>
#include <QLocale>
#include <QRandomGenerator>
#include <QTest>

namespace {

// A scenery with something of everything.
SceneryDocument ordinaryScenery()
{
    SceneryDocument document;
    document.parameters.BeobXA = -12.5;
    document.parameters.TDateiname = "ground.png";
    document.parameters.isStraight = false;
    document.parameters.Hintergrund = 0xFF102030u;
    for (int k = 0; k < 4; ++k)
        document.controlPoints.append(ControlPoint(k, 2 * k, -k, 0.0));
    for (int k = 0; k < 7; ++k)
        document.waypoints.append(Waypoint(k, k, k, 0.5 * k, -0.25));
    document.extras.SunHeight = 12.5;
    document.extras.keptLines = "Fog=1\n";
    return document;
}

// The longest complete list that is no longer, found by trying all levels from the top.
int levelByTrying(qsizetype entries)
{
    for (int level = MaxWaypointLevel; level > 0; --level)
        if (waypointCount(level) <= entries)
            return level;
    return 0;
}

} // namespace

class TestDamagedScenery : public QObject {
    Q_OBJECT

private slots:
    void everyCutLengthIsReadUpToTheCut();
    void noByteThatChangesCanDoHarm();
    void fileThatIsTooLargeIsRefused();
    void linesWithoutEndAreTold();
    void writingIsTheSameInEveryLocale_data();
    void writingIsTheSameInEveryLocale();
    void waypointListsAreCutToTheLongestCompleteOne();
    void inputsStandBesideTheirScenery();
};

void TestDamagedScenery::everyCutLengthIsReadUpToTheCut()
{
    const SceneryDocument whole = ordinaryScenery();
    const QByteArray text = written(whole).toUtf8();
    const qsizetype told = text.indexOf("\n\n");
    for (qsizetype length = 0; length <= text.size(); ++length) {
        const auto reading = readText(text.left(length));
        QVERIFY(reading);
        QCOMPARE(reading->headSeen, length >= 7); // "[Param]"
        // What is read is what stands there in full, but for the last line.
        const qsizetype lastEnd = text.lastIndexOf('\n', length - 1);
        if (length > 0 && length == lastEnd + 1 && length <= told) {
            const auto again = readText(written(reading->document).toUtf8());
            QVERIFY(again);
            QCOMPARE(reading->complaint, QString());
            QVERIFY(again->document == reading->document);
        }
        if (length >= told) // the extras may be missing, the rest may not
            QVERIFY(reading->document.parameters == whole.parameters &&
                    reading->document.controlPoints == whole.controlPoints &&
                    reading->document.waypoints == whole.waypoints);
    }
}

void TestDamagedScenery::noByteThatChangesCanDoHarm()
{
    QRandomGenerator random(15);
    const QByteArray text = written(ordinaryScenery()).toUtf8();
    for (int round = 0; round < 500; ++round) {
        QByteArray damaged = text;
        for (int k = random.bounded(1, 5); k > 0; --k) {
            const int at = random.bounded(int(damaged.size()));
            switch (random.bounded(3)) {
            case 0:
                damaged[at] = char(random.bounded(256));
                break;
            case 1:
                damaged.remove(at, random.bounded(1, 9));
                break;
            default:
                damaged.insert(at, "9999999999", random.bounded(1, 11));
                break;
            }
        }
        const auto reading = readText(damaged);
        QVERIFY(reading);
        const SceneryDocument &document = reading->document;
        QVERIFY(document.waypoints.isEmpty() ||
                document.waypoints.size() == waypointCount(document.waypointLevel));
        QVERIFY(document.waypoints.isEmpty() || document.controlPoints.size() >= 4);
        QVERIFY(document.controlPoints.size() <= 65536);
        // Whatever was made of it is a scenery, which is written and read as any other.
        const auto again = readText(written(document).toUtf8());
        QVERIFY(again);
        QVERIFY2(again->complaint.isEmpty(), qPrintable(again->complaint));
        QCOMPARE(written(again->document), written(document));
    }
}

void TestDamagedScenery::fileThatIsTooLargeIsRefused()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("large.zph"));
    QVERIFY(file.open(QIODevice::ReadWrite) && file.resize((qint64(64) << 20) + 1));
    const auto reading = readScenery(file, {});
    QVERIFY(!reading);
    QCOMPARE(reading.error().text, QString("The file has more than 64 MB"));
    QVERIFY(file.resize(qint64(64) << 20)); // one line of zeros
    const auto allowed = readScenery(file, {});
    QVERIFY(allowed);
    QVERIFY(allowed->complaint.startsWith("Line too long: "));
}

void TestDamagedScenery::linesWithoutEndAreTold()
{
    // A device does not tell its size.
    QFile zeros("/dev/zero");
    if (!zeros.open(QIODevice::ReadOnly))
        QSKIP("This system has no /dev/zero.");
    const auto reading = readScenery(zeros, ordinaryScenery());
    QVERIFY(reading);
    QVERIFY(reading->complaint.startsWith("Line too long: "));
    QVERIFY(reading->complaint.size() < 300);
    for (const QChar c : reading->complaint)
        QVERIFY(c.isPrint());
}

void TestDamagedScenery::writingIsTheSameInEveryLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("comma") << QLocale(QLocale::German);
    QTest::newRow("groups") << QLocale(QLocale::Hindi);
    QTest::newRow("other digits") << QLocale(QLocale::Arabic, QLocale::Egypt);
}
void TestDamagedScenery::writingIsTheSameInEveryLocale()
{
    QFETCH(QLocale, locale);
    SceneryDocument document = ordinaryScenery();
    document.parameters.BeobXA = 1234567.5;
    document.parameters.AusBreite = 12345;
    document.extras.MetresPerUnit = 0.25;
    const QString plain = written(document);
    QLocale::setDefault(locale);
    const QString there = written(document);
    const auto reading = readText(plain.toUtf8());
    QLocale::setDefault(QLocale::c());
    QCOMPARE(there, plain);
    QVERIFY(reading && reading->complaint.isEmpty());
    QCOMPARE(reading->document.parameters.BeobXA, 1234570.0); // six digits
    QCOMPARE(reading->document.parameters.AusBreite, 12345);
    QCOMPARE(reading->document.extras.MetresPerUnit, 0.25);
}

void TestDamagedScenery::waypointListsAreCutToTheLongestCompleteOne()
{
    for (const int controlPoints : {0, 3, 4, 100})
        for (int entries = 0; entries < 400; ++entries) {
            QList<Waypoint> waypoints;
            for (int k = 0; k < entries; ++k)
                waypoints.append(Waypoint(k, 0, 0, 0.0, 0.0));
            const int level = normalizeWaypoints(waypoints, controlPoints);
            const bool isList = controlPoints >= 4 && entries >= 7;
            QCOMPARE(level, isList ? levelByTrying(entries) : 0);
            QCOMPARE(waypoints.size(), isList ? waypointCount(level) : 0);
            for (qsizetype k = 0; k < waypoints.size(); ++k)
                QCOMPARE(waypoints[k].x, qint32(k));
        }
}

void TestDamagedScenery::inputsStandBesideTheirScenery()
{
    const QTemporaryDir folder;
    const QDir place(folder.path());
    QVERIFY(place.mkpath("here/maps") && place.mkpath("elsewhere"));
    for (const char *name : {"here/maps/a.png", "here/b.png", "elsewhere/b.png"}) {
        QFile file(place.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(place.filePath("elsewhere")));
    const QString here = place.filePath("here");
    const QString beside = findInputFile("maps/a.png", here);
    const QString current = findInputFile("b.png", here);
    const QString missing = findInputFile("c.png", here);
    const QString unsaved = findInputFile("maps/a.png", {});
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(beside, here + "/maps/a.png");
    QCOMPARE(current, QString("b.png")); // the current folder goes first
    QCOMPARE(missing, QString("c.png")); // told as it stands in the scenery
    QCOMPARE(unsaved, QString("maps/a.png"));
    QCOMPARE(findInputFile({}, here), QString());
    QCOMPARE(findInputFile(here + "/none.png", here), here + "/none.png");
}

QTEST_APPLESS_MAIN(TestDamagedScenery)
#include "test_damagedscenery.moc"
