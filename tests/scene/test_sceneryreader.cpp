#include "scene/keyvalue.h"
#include "scene/scenerydocument.h"
#include "scene/sceneryreader.h"
#include "scene/scenerywriter.h"

#include <QTest>
#include <QTextStream>

#include <optional>

using Line = SceneryReader::Line;

class TestSceneryReader : public QObject {
    Q_OBJECT

private slots:
    void init();
    void keySideLosesBlanksAndTabs_data();
    void keySideLosesBlanksAndTabs();
    void linesAreComplainedAbout_data();
    void linesAreComplainedAbout();
    void numbersThatDoNotConvertReadAsZero();
    void colourIsBlueFirstInTheFile();
    void onceSetPngStays();
    void obsoleteFormatStandsInForPng();
    void listLinesGrowTheLists();
    void listIndicesAreLimited_data();
    void listIndicesAreLimited();
    void writtenLinesReadBackTheSame();
    void linesAreWrittenInTheirOrder();

private:
    // What a line is; nothing where it is refused, with the complaint in m_error.
    std::optional<Line> read(const QString &line);

    SceneryDocument m_document;
    SceneryData *const m_data = &m_document.parameters;
    QList<ControlPoint> &m_points = m_document.controlPoints;
    QList<Waypoint> &m_waypoints = m_document.waypoints;
    QString m_error;
};

void TestSceneryReader::init()
{
    m_document = SceneryDocument();
    m_error.clear();
}

std::optional<Line> TestSceneryReader::read(const QString &line)
{
    const auto taken = SceneryReader(m_document).readLine(line);
    if (taken)
        return *taken;
    m_error = taken.error().text;
    return std::nullopt;
}

void TestSceneryReader::keySideLosesBlanksAndTabs_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("compact");
    QTest::newRow("blanks and tabs") << "Beob \tXA = 5"
                                     << "BeobXA= 5";
    QTest::newRow("value keeps its blanks") << "TDateiname= a b.png"
                                            << "TDateiname= a b.png";
    QTest::newRow("without equals sign") << "a b c"
                                         << "a b c";
    QTest::newRow("second equals sign") << "a = b = c"
                                        << "a= b = c";
}
void TestSceneryReader::keySideLosesBlanksAndTabs()
{
    QFETCH(QString, line);
    QFETCH(QString, compact);
    compactKey(line);
    QCOMPARE(line, compact);
}

void TestSceneryReader::linesAreComplainedAbout_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *line, const char *error) {
        QTest::newRow(line) << line << error;
    };
    row("BeobXA", "No key/value pair: BeobXA");
    row("BeobXA5", "No key/value pair: BeobXA5");
    row("BeobXAB=1", "No such key: BeobXAB=1");
    row("beobxa=1", "No such key: beobxa=1");
    row("   ", "No such key:    ");
    row("Hintergrund=xyz", "No color value: xyz");
    row("Punkt07=12", "No comma in two value parameter: Punkt07=12");
    row("Punkt07", "No key/value pair: Punkt07");
    row("Punkt7=1,2", "No such key: Punkt7=1,2");
    row("Punkt07_q=1", "No such key: Punkt07_q=1");
    row("cPunkt07=12", "No first comma in three value parameter: cPunkt07=12");
    row("cPunkt07=1,2", "No second comma in three value parameter: cPunkt07=1,2");
    row("cPunkt7=1,2,3", "No such key: cPunkt7=1,2,3");
}
void TestSceneryReader::linesAreComplainedAbout()
{
    QFETCH(QString, line);
    QFETCH(QString, error);
    QVERIFY(!read(line));
    QCOMPARE(m_error, error);
}

void TestSceneryReader::numbersThatDoNotConvertReadAsZero()
{
    QVERIFY(read("BeobXA=abc") == Line::Plain);
    QCOMPARE(m_data->BeobXA, 0.0);
    QVERIFY(read("BeobXA= 5") == Line::Plain);
    QCOMPARE(m_data->BeobXA, 5.0);
    QVERIFY(read("AusBreite=99999999999") == Line::Plain);
    QCOMPARE(m_data->AusBreite, 0);
    QVERIFY(read("TDateiname= a.png") == Line::Plain);
    QCOMPARE(m_data->TDateiname, QString(" a.png"));
}

void TestSceneryReader::colourIsBlueFirstInTheFile()
{
    QVERIFY(read("Hintergrund=0000ff") == Line::Plain);
    QCOMPARE(m_data->Hintergrund, 0xFFFF0000u);
    QCOMPARE(colourText(m_data->Hintergrund), QString("0000ff"));
}

void TestSceneryReader::onceSetPngStays()
{
    m_data->AusgabePNG = false;
    QVERIFY(read("AusgabePNG=0") == Line::Plain);
    QVERIFY(!m_data->AusgabePNG);
    QVERIFY(read("AusgabePNG=1") == Line::Plain);
    QVERIFY(read("AusgabePNG=0") == Line::Plain);
    QVERIFY(m_data->AusgabePNG);
}

void TestSceneryReader::obsoleteFormatStandsInForPng()
{
    m_data->AusgabePNG = false;
    QVERIFY(read("AusgabeYUV=0") == Line::ObsoleteFormatOff);
    QVERIFY(!m_data->AusgabePNG);
    QVERIFY(read("AusgabeYUV=1") == Line::ObsoleteFormatOn);
    QVERIFY(read("AusgabePNG=0") == Line::Plain);
    QVERIFY(m_data->AusgabePNG);
}

void TestSceneryReader::listLinesGrowTheLists()
{
    QVERIFY(read("Punkt02=3,-4") == Line::Plain);
    QCOMPARE(m_waypoints.size(), 3);
    QCOMPARE(m_waypoints[0], Waypoint());
    QCOMPARE(m_waypoints[2].x, 3);
    QCOMPARE(m_waypoints[2].y, -4);
    QVERIFY(read("Punkt02_z=100") == Line::Plain);
    QVERIFY(read("Punkt02_i=1.5") == Line::Plain);
    QVERIFY(read("Punkt02_a=-2.25") == Line::Plain);
    QVERIFY(read("Punkt02_p=0.5") == Line::Plain);
    QCOMPARE(m_waypoints[2].z, 100);
    QCOMPARE(m_waypoints[2].i, 1.5);
    QCOMPARE(m_waypoints[2].a, -2.25);
    QCOMPARE(m_waypoints[2].p, 0.5);
    QVERIFY(read("cPunkt123=1,2,3") == Line::Plain);
    QCOMPARE(m_points.size(), 124);
    QCOMPARE(m_points[123], ControlPoint(1, 2, 3, 0.0));
}

void TestSceneryReader::listIndicesAreLimited_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("last") << "Punkt65535=1,2" << true;
    QTest::newRow("too high") << "Punkt65536=1,2" << false;
    QTest::newRow("hostile") << "Punkt2147483647=1,2" << false;
    QTest::newRow("negative") << "Punkt-1=1,2" << false;
    QTest::newRow("hostile control point") << "cPunkt999999999=1,2,3" << false;
}
void TestSceneryReader::listIndicesAreLimited()
{
    QFETCH(QString, line);
    QFETCH(bool, accepted);
    QCOMPARE(read(line) == Line::Plain, accepted);
    if (!accepted) {
        QCOMPARE(m_error, "No such key: " + line);
        QVERIFY(m_waypoints.isEmpty() && m_points.isEmpty());
    }
}

void TestSceneryReader::writtenLinesReadBackTheSame()
{
    m_data->BeobXA = 1234567.8;
    m_data->isStraight = false;
    m_data->AusDateiname = "a b%03d";
    m_data->MaskenDateiName = "mask.png";
    m_data->HoeheUeberBoden = 12.5;
    m_waypoints = {Waypoint(1, 2, 3, 0.25, -0.5)};
    m_points = {ControlPoint(4, 5, 6, 9.0)};
    QString text;
    QTextStream stream(&text);
    writeScenery(stream, m_document);
    QVERIFY(text.contains("BeobXA=1.23457e+06\n")); // six significant digits
    QVERIFY(text.contains("Rundflug=1\n"));

    const QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    init();
    for (const QString &line : lines)
        QVERIFY(read(line) == Line::Plain);
    QCOMPARE(m_data->BeobXA, 1234570.0);
    QVERIFY(!m_data->isStraight);
    QCOMPARE(m_data->AusDateiname, QString("a b%03d"));
    QCOMPARE(m_data->MaskenDateiName, QString("mask.png"));
    QCOMPARE(m_data->HoeheUeberBoden, 12.5);
    QCOMPARE(m_waypoints, QList({Waypoint(1, 2, 3, 0.25, -0.5)}));
    QCOMPARE(m_points, QList({ControlPoint(4, 5, 6, 0.0)})); // no station
}

void TestSceneryReader::linesAreWrittenInTheirOrder()
{
    QString text;
    QTextStream stream(&text);
    m_waypoints = {Waypoint()};
    m_points = {ControlPoint()};
    writeScenery(stream, m_document);
    const QStringList lines = text.split('\n');
    QCOMPARE(lines.size(), 51 + 5 + 1 + 1);
    QCOMPARE(lines[0], QString("[Param]"));
    QCOMPARE(lines[1], QString("BeobXA=0"));
    QCOMPARE(lines[15], QString("Bildanzahl=1"));
    QCOMPARE(lines[26], QString("AusgabePNG=1"));
    QCOMPARE(lines[35], QString("HDateiSkalaZA=0.001"));
    QCOMPARE(lines[45], QString("Hintergrund=000000"));
    QCOMPARE(lines[50], QString("Recorder=0"));
    QCOMPARE(lines[51], QString("Punkt00=0,0"));
    QCOMPARE(lines[55], QString("Punkt00_p=0"));
    QCOMPARE(lines[56], QString("cPunkt00=0,0,0"));
}

QTEST_APPLESS_MAIN(TestSceneryReader)
#include "test_sceneryreader.moc"
