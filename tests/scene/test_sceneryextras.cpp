#include "scene/extrakeys.h"
#include "scene/sceneryfiles.h"

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <cmath>

namespace {

constexpr QLatin1String Section("\n[Extras]\n");

SceneryReading readSection(const QString &lines)
{
    auto reading = readText("[Param]\nBeobXA=5\n\n[Extras]\n" + lines.toUtf8());
    return reading ? *reading : SceneryReading{{}, reading.error().text, {}, {}, {}};
}

// What the file of a document appends to the told lines.
QString section(const SceneryDocument &document)
{
    SceneryDocument plain = document;
    plain.extras = {};
    const QString told = written(plain);
    const QString all = written(document);
    return all.startsWith(told) ? all.mid(told.size())
                                : QStringLiteral("told lines differ");
}

// Some value of a kind that it can take.
class RandomValue {
public:
    RandomValue(QRandomGenerator &random, SceneryExtras &extras)
        : m_random(random), m_extras(extras)
    {
    }

    void operator()(extrakind::Flag f) { m_extras.*f.field = coin(); }
    void operator()(extrakind::Whole f)
    {
        m_extras.*f.field = static_cast<qint32>(
            f.lowest +
            std::floor(m_random.generateDouble() * (double(f.highest) - f.lowest + 1)));
    }
    void operator()(extrakind::Real f)
    {
        m_extras.*f.field = within(f.lowest, f.highest);
    }
    void operator()(extrakind::OptionalReal f)
    {
        m_extras.*f.field =
            coin() ? std::optional(within(f.lowest, f.highest)) : std::nullopt;
    }
    void operator()(extrakind::Colour f) { m_extras.*f.field = colour(); }
    void operator()(extrakind::OptionalColour f)
    {
        m_extras.*f.field = coin() ? std::optional(colour()) : std::nullopt;
    }
    void operator()(extrakind::Time f)
    {
        m_extras.*f.field = coin() ? QStringLiteral("2026-06-21T%1:00:00+02:00")
                                         .arg(m_random.bounded(24), 2, 10, QChar('0'))
                                   : QString();
    }
    template <class Enum, const auto &Words>
    void operator()(extrakind::Choice<Enum, Words> f)
    {
        m_extras.*f.field = static_cast<Enum>(m_random.bounded(int(f.words.size())));
    }

private:
    bool coin() { return m_random.bounded(2) == 1; }
    QRgb colour() { return 0xFF000000u | m_random.bounded(0x1000000u); }
    double within(double lowest, double highest)
    {
        const double share = std::pow(m_random.generateDouble(), m_random.bounded(1, 9));
        return std::clamp(lowest + (highest - lowest) * share, lowest, highest);
    }

    QRandomGenerator &m_random;
    SceneryExtras &m_extras;
};

} // namespace

class TestSceneryExtras : public QObject {
    Q_OBJECT

private slots:
    void withoutExtrasNothingIsAppended();
    void everyKeyHasItsDefaultAndIsWrittenOtherwise_data();
    void everyKeyHasItsDefaultAndIsWrittenOtherwise();
    void allKeysAreAmongTheRowsAbove();
    void valuesOutOfRangeAreLimitedWithAWord_data();
    void valuesOutOfRangeAreLimitedWithAWord();
    void badLinesAreKeptAndToldAndFailNothing_data();
    void badLinesAreKeptAndToldAndFailNothing();
    void linesKeepTheirOrderAndTheirBlanks();
    void sectionsOfNewerProgramsAreKept();
    void lastGoodValueOfAKeyCounts();
    void blanksAroundKeyAndValueDoNotCount();
    void readingSetsAllToTheirDefaultsFirst();
    void sectionIsFoundBehindPointsAndEmptyLines();
    void sectionWithoutAnEmptyLineIsAToldLine();
    void lineEndsAndByteOrderMarkDoNotMatter_data();
    void lineEndsAndByteOrderMarkDoNotMatter();
    void ofMuchJunkOnlyTheBeginningIsTold();
    void lineThatIsTooLongIsRefusedInTheSectionOnly();
    void randomValuesReadBackTheSame();
};

void TestSceneryExtras::withoutExtrasNothingIsAppended()
{
    const QString text = written({});
    QVERIFY(text.endsWith("Recorder=0\n"));
    QVERIFY(!text.contains("\n\n"));
    const SceneryReading reading = readSection("Water=0\nExposure=0\nSunTime=\n");
    QCOMPARE(reading.extrasTold, QStringList());
    QCOMPARE(section(reading.document), QString());
}

void TestSceneryExtras::everyKeyHasItsDefaultAndIsWrittenOtherwise_data()
{
    QTest::addColumn<QString>("standard");
    QTest::addColumn<QString>("other");
    const auto row = [](const char *key, const char *standard, const char *other) {
        QTest::newRow(key) << standard << other;
    };
    for (const char *key :
         {"FollowGround", "CastShadows", "SunDisc", "Water", "SmoothGround",
          "ClosedSurface", "SmoothEdges", "FilmicCurve", "OutputEXR", "OutputPNG16"})
        row(key, "0", "1");
    row("MetresPerUnit", "0", "30.87");
    row("FramesPerSecond", "25", "120");
    row("Sun", "told", "time");
    row("SunAzimuth", "225", "12.25");
    row("SunHeight", "40", "-90");
    row("SunTime", "", "2026-06-21T05:14:00+02:00");
    row("SunTimeLast", "", "2026-06-21T05:14:00.5Z");
    row("Latitude", "", "0");
    row("Longitude", "", "-13.1");
    row("SunDiameter", "0.53", "0");
    row("SkyLight", "0", "0.1");
    row("BounceLight", "0", "1");
    row("Sky", "color", "daylight");
    row("SkyZenith", "3a6ea5", "00ff7f");
    row("SkyHorizon", "cfdfee", "000000");
    row("Turbidity", "3", "2");
    row("Haze", "told", "sky");
    row("HazeDistance", "30000", "0.3333333333333333");
    row("HazeScaleHeight", "2000", "1e+09");
    row("WaterLevel", "0", "-12.5");
    row("WaterMask", "", "0000ff");
    row("WaterColor", "1d3b4a", "ffffff");
    row("WaterClarity", "8", "0.001");
    row("WaveHeight", "0.2", "0");
    row("Detail", "0", "5e-324");
    row("SnowLine", "", "2800");
    row("SnowSlope", "45", "90");
    row("Seed", "1", "-2147483648");
    row("Exposure", "0", "-8");
    row("MotionBlur", "1", "64");
    row("ShutterAngle", "180", "360");
}
void TestSceneryExtras::everyKeyHasItsDefaultAndIsWrittenOtherwise()
{
    QFETCH(QString, standard);
    QFETCH(QString, other);
    const QString name = QTest::currentDataTag();
    const ExtraKey *const key = findExtra(name);
    QVERIFY(key);
    QCOMPARE(extraText({}, *key), standard);
    const QString line = name + '=' + other + '\n';
    const SceneryReading reading = readSection(line);
    QCOMPARE(reading.complaint, QString());
    QCOMPARE(reading.extrasTold, QStringList());
    QVERIFY(reading.document.extras != SceneryExtras());
    QCOMPARE(section(reading.document), Section + line);
    // Back again, by a line that says so.
    QCOMPARE(section(readSection(line + name + '=' + standard).document), QString());
}

void TestSceneryExtras::allKeysAreAmongTheRowsAbove()
{
    QCOMPARE(extraKeys().size(), std::size_t(41));
    for (const ExtraKey &key : extraKeys())
        QCOMPARE(findExtra(QString(key.name)), &key);
    QCOMPARE(findExtra(u"water"), nullptr);
    QCOMPARE(findExtra(u""), nullptr);
}

void TestSceneryExtras::valuesOutOfRangeAreLimitedWithAWord_data()
{
    QTest::addColumn<QString>("limited");
    QTest::newRow("SkyLight=3") << "SkyLight=1\n";
    QTest::newRow("SkyLight=-1") << "";
    QTest::newRow("FramesPerSecond=0") << "FramesPerSecond=1\n";
    QTest::newRow("FramesPerSecond=1e300") << "FramesPerSecond=120\n";
    QTest::newRow("Water=2") << "Water=1\n";
    QTest::newRow("Water=-1") << "";
    QTest::newRow("MetresPerUnit=-30") << "";
    QTest::newRow("Turbidity=11") << "Turbidity=10\n";
    QTest::newRow("Latitude=-91") << "Latitude=-90\n";
    QTest::newRow("Seed=2147483648") << "Seed=2147483647\n";
    QTest::newRow("WaterClarity=0") << "WaterClarity=0.001\n";
}
void TestSceneryExtras::valuesOutOfRangeAreLimitedWithAWord()
{
    QFETCH(QString, limited);
    const QString line = QTest::currentDataTag();
    const SceneryReading reading = readSection(line);
    QCOMPARE(reading.complaint, QString());
    QCOMPARE(reading.extrasTold.size(), 1);
    QVERIFY2(reading.extrasTold[0].endsWith(": " + line),
             qPrintable(reading.extrasTold[0]));
    QCOMPARE(section(reading.document),
             limited.isEmpty() ? QString() : Section + limited);
}

void TestSceneryExtras::badLinesAreKeptAndToldAndFailNothing_data()
{
    QTest::addColumn<QString>("line");
    for (const char *line : {"Exposure=1,5",
                             "Exposure=inf",
                             "Exposure=nan",
                             "Exposure=1e999",
                             "Exposure=",
                             "Exposure=0x1",
                             "Exposure=1 2",
                             "Exposure",
                             "MotionBlur=2.5",
                             "Water=true",
                             "Water=",
                             "Sun=noon",
                             "Sun=Told",
                             "Sun=",
                             "Sky=",
                             "SkyZenith=",
                             "SkyZenith=fff",
                             "SkyZenith=+fffff",
                             "SkyZenith=3a6ea5ff",
                             "SkyZenith=#3a6ea5",
                             "WaterMask=blue",
                             "SunTime=2026-06-21",
                             "SunTime=2026-06-21T12:00:00",
                             "SunTime=noon",
                             "SunTime=2026-02-30T12:00:00Z",
                             "SunTime=2026-06-21T12:00:00,5Z",
                             "Latitude=50N",
                             "exposure=1",
                             "Fog=1",
                             "=1",
                             "=",
                             "BeobXA=7",
                             "junk \t\x01",
                             "; a remark",
                             "Punkt00=1,2"})
        QTest::newRow(line) << line;
}
void TestSceneryExtras::badLinesAreKeptAndToldAndFailNothing()
{
    QFETCH(QString, line);
    const SceneryReading reading = readSection(line + "\nWater=1\n");
    QCOMPARE(reading.complaint, QString());
    QCOMPARE(reading.extrasTold.size(), 1);
    QString quoted = line;
    QVERIFY(reading.extrasTold[0].endsWith(
        ": " + quoted.replace(QRegularExpression("[\t\x01]"),
                              QChar(QChar::ReplacementCharacter))));
    QVERIFY(reading.document.extras.Water);
    QCOMPARE(reading.document.parameters.BeobXA, 5.0);
    QVERIFY(reading.document.waypoints.isEmpty());
    QCOMPARE(section(reading.document), Section + "Water=1\n" + line + '\n');
    // And once more: the same bytes.
    const auto again = readText(written(reading.document).toUtf8());
    QVERIFY(again);
    QVERIFY(again->document == reading.document);
    QCOMPARE(again->extrasTold, reading.extrasTold);
}

void TestSceneryExtras::linesKeepTheirOrderAndTheirBlanks()
{
    const SceneryReading reading = readSection(
        "  Later = 1 \nWater=1\n\nEven later=\xC3\xA4\nSunDisc=1\n\t\n  Later = 1 ");
    QCOMPARE(section(reading.document),
             Section + QString::fromUtf8("SunDisc=1\nWater=1\n  Later = 1 \n"
                                         "Even later=\xC3\xA4\n  Later = 1 \n"));
    QCOMPARE(reading.extrasTold.size(), 3);
}

void TestSceneryExtras::sectionsOfNewerProgramsAreKept()
{
    const QString other = "[Clouds]\nWater=1\n\nHeight=3\n";
    const SceneryReading reading = readSection("Fog=1\n" + other);
    QVERIFY(!reading.document.extras.Water); // of the other section
    QCOMPARE(reading.extrasTold.size(), 1);
    QCOMPARE(section(reading.document), Section + "Fog=1\n" + other);
}

void TestSceneryExtras::lastGoodValueOfAKeyCounts()
{
    SceneryReading reading = readSection("Exposure=1\nExposure=2\n");
    QCOMPARE(section(reading.document), Section + "Exposure=2\n");
    QCOMPARE(reading.extrasTold, QStringList());
    reading = readSection("Exposure=1\nExposure=x\n");
    QCOMPARE(section(reading.document), Section + "Exposure=1\nExposure=x\n");
}

void TestSceneryExtras::blanksAroundKeyAndValueDoNotCount()
{
    const SceneryReading reading = readSection(" Exposure\t=  1.50 \nSun = time\n");
    QCOMPARE(section(reading.document), Section + "Sun=time\nExposure=1.5\n");
}

void TestSceneryExtras::readingSetsAllToTheirDefaultsFirst()
{
    SceneryDocument present;
    present.extras.Exposure = 2.0;
    present.extras.Latitude = 50.0;
    present.extras.keptLines = "Fog=1\n";
    const auto reading = readText("[Param]\n", present);
    QVERIFY(reading);
    QVERIFY(reading->document.extras == SceneryExtras());
}

void TestSceneryExtras::sectionIsFoundBehindPointsAndEmptyLines()
{
    SceneryDocument document;
    for (int k = 0; k < 4; ++k)
        document.controlPoints.append(ControlPoint(k, 2 * k, -k, 0.0));
    for (int k = 0; k < 7; ++k)
        document.waypoints.append(Waypoint(k, k, k, 0.5 * k, -0.25));
    document.extras.SunHeight = 12.5;
    document.extras.keptLines = "Fog=1\n";
    const QString text = written(document);
    QVERIFY(text.endsWith("cPunkt03=3,6,-3\n\n[Extras]\nSunHeight=12.5\nFog=1\n"));
    QString spread = text;
    spread.replace("\n\n[", "\n\n\n# notes\n\n [");
    spread.replace("SunHeight", "\nSunHeight");
    for (const QString &file : {text, spread}) {
        const auto reading = readText(file.toUtf8());
        QVERIFY(reading);
        QCOMPARE(reading->complaint, QString());
        QVERIFY(reading->document == document);
        QCOMPARE(written(reading->document), text);
    }
}

void TestSceneryExtras::sectionWithoutAnEmptyLineIsAToldLine()
{
    const auto reading = readText("[Param]\n[Extras]\n");
    QVERIFY(reading);
    QCOMPARE(reading->complaint, QString("No such key: [Extras]"));
}

void TestSceneryExtras::lineEndsAndByteOrderMarkDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray plain("[Param]\nBeobXA=5\n\n[Extras]\nWater=1\nFog=1");
    QTest::newRow("no end of the last line") << plain;
    QTest::newRow("CR LF") << QByteArray(plain + '\n').replace("\n", "\r\n");
    QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + plain;
}
void TestSceneryExtras::lineEndsAndByteOrderMarkDoNotMatter()
{
    QFETCH(QByteArray, file);
    const auto reading = readText(file);
    QVERIFY(reading);
    QCOMPARE(reading->complaint, QString());
    QCOMPARE(section(reading->document), Section + "Water=1\nFog=1\n");
}

void TestSceneryExtras::ofMuchJunkOnlyTheBeginningIsTold()
{
    const SceneryReading reading = readSection(QStringLiteral("junk\n").repeated(200000));
    QCOMPARE(reading.complaint, QString());
    QCOMPARE(reading.extrasTold.size(), 101);
    QVERIFY(reading.extrasTold.constLast().startsWith("199900 more lines"));
    QCOMPARE(reading.document.extras.keptLines.size(), 5 * 200000);
}

void TestSceneryExtras::lineThatIsTooLongIsRefusedInTheSectionOnly()
{
    const QByteArray longest(1048576, 'a');
    QCOMPARE(readSection(longest).complaint, QString());
    QVERIFY(readSection(longest + 'a').complaint.startsWith("Line too long: aaa"));
    // Behind the told part a file may hold whatever it wants, as ever.
    const auto reading = readText("[Param]\nBeobXA=5\n\n" + longest + "aa\n");
    QVERIFY(reading);
    QCOMPARE(reading->complaint, QString());
    QCOMPARE(reading->document.parameters.BeobXA, 5.0);
}

void TestSceneryExtras::randomValuesReadBackTheSame()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 200; ++round) {
        SceneryDocument document;
        for (const ExtraKey &key : extraKeys())
            std::visit(RandomValue(random, document.extras), key.field);
        if (random.bounded(2) == 1)
            document.extras.keptLines = "Fog=1\nHail\n";
        const QString text = written(document);
        const auto reading = readText(text.toUtf8());
        QVERIFY(reading);
        QCOMPARE(reading->complaint, QString());
        QVERIFY2(reading->document == document, qPrintable(text));
        QCOMPARE(written(reading->document), text);
    }
}

QTEST_APPLESS_MAIN(TestSceneryExtras)
#include "test_sceneryextras.moc"
