#include "terrain/colourfile.h"
#include "terrain/madeterrain.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/// Files of colours: what they give, and what is said of those that are none.
class TestColourFile : public QObject {
    Q_OBJECT

private slots:
    void coloursOfHeights_data();
    void coloursOfHeights();
    void coloursOfVoids();
    void faultsNameTheirLine_data();
    void faultsNameTheirLine();
    void filesThatAreMissingOrEmptyAreTold();
    void junkIsRefusedOrRead();
    void gdaldemPaintsTheSame_data();
    void gdaldemPaintsTheSame();

private:
    static Result<ColourTable> read(const QString &name, const QByteArray &text)
    {
        QBuffer device;
        device.setData(text);
        device.open(QIODevice::ReadOnly);
        return name.endsWith(".cpt") ? readCpt(device, name)
                                     : readColourText(device, name);
    }
    static QRgb colour(const ColourTable &table, double metres)
    {
        const ColourRamp ramp(table, {0.0, 100.0});
        std::size_t near = 0;
        return ramp.at(metres, near);
    }
};

void TestColourFile::coloursOfHeights_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("metres");
    QTest::addColumn<QRgb>("expected");
    const auto row = [](const char *what, const char *name, const char *text,
                        double metres, QRgb expected) {
        QTest::newRow(what) << name << QByteArray(text) << metres << expected;
    };
    const char *const two = "# a comment\n0 10 20 30\n\n100 110 220 30 128\n";
    row("below all", "a.txt", two, -5.0, qRgb(10, 20, 30));
    row("above all", "a.txt", two, 200.0, qRgb(110, 220, 30));
    row("between, rounded down a little", "a.txt", two, 10.5, qRgb(20, 41, 30));
    row("in any order", "a.txt", "100 0 0 0\n0 200 200 200\n", 50.0, qRgb(100, 100, 100));
    row("names", "a.txt", "0 Aqua\n", 1.0, qRgb(0, 191, 191));
    row("separators", "a.txt", "0,1,2,3\n 10:\t4 5,6\r\n", 10.0, qRgb(4, 5, 6));
    row("shares of the range", "a.txt", "0% black\n100% 200 200 200\n", 50.0,
        qRgb(100, 100, 100));
    row("two at one height: below", "a.txt", "0 red\n5 red\n5 blue\n9 blue\n", 4.999,
        qRgb(255, 0, 0));
    row("two at one height: above", "a.txt", "0 red\n5 red\n5 blue\n9 blue\n", 5.001,
        qRgb(0, 0, 255));
    row("a map of another program", "a.txt",
        "INTERPOLATION:INTERPOLATED\n7,1,2,3,255,Seven\n", 7.0, qRgb(1, 2, 3));
    row("four and four numbers", "a.cpt", "0 0 0 0 10 100 100 100\n", 5.0,
        qRgb(50, 50, 50));
    row("slashes", "a.cpt", "0\t0/0/0\t10\t100/100/100\tL\n", 5.0, qRgb(50, 50, 50));
    row("hard segments", "a.cpt", "0 red 10 red\n10 #0000ff 20 #0000ff ; blue\n", 11.0,
        qRgb(0, 0, 255));
    row("grays and names", "a.cpt", "0 0 10 gray\n", 10.0, qRgb(190, 190, 190));
    row("hues", "a.cpt", "# COLOR_MODEL = HSV\n0 0-1-1 120 120-1-1\n", 60.0,
        qRgb(255, 255, 0));
    row("inks", "a.cpt", "# COLOR_MODEL = CMYK\n0 0/0/0/0 10 0/0/0/100\n", 0.0,
        qRgb(255, 255, 255));
    row("beyond the end", "a.cpt", "0 red 10 red\nB black\nF white\nN 1 2 3\n", 11.0,
        qRgb(255, 0, 0));
    row("spread over its range", "a.cpt", "# RANGE = -1000/2000\n0 black 1 white\n",
        2000.0, qRgb(255, 255, 255));
    row("with a hinge", "a.cpt",
        "# RANGE = -8000/4000\n# HARD_HINGE\n-1 red 0 red\n0 0/9/0 1 0/99/0\n", 4000.0,
        qRgb(0, 99, 0));
}

void TestColourFile::coloursOfHeights()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    QFETCH(double, metres);
    QFETCH(QRgb, expected);
    const Result<ColourTable> table = read(name, text);
    QVERIFY2(table, table ? "" : qPrintable(table.error().text));
    QCOMPARE(QColor(colour(*table, metres)), QColor(expected));
}

void TestColourFile::coloursOfVoids()
{
    const auto voids = [](const char *name, const char *text) {
        const Result<ColourTable> table = read(name, text);
        return table ? ColourRamp(*table, {0.0, 10.0}).ofVoids() : 0u;
    };
    QCOMPARE(voids("a.txt", "nv 9 8 7\n0 red\n"), qRgb(9, 8, 7));
    QCOMPARE(voids("a.cpt", "0 red 10 blue\nN 9/8/7\n"), qRgb(9, 8, 7));
    QCOMPARE(voids("a.txt", "0 red\n10 blue\n"), qRgb(255, 0, 0));
}

void TestColourFile::faultsNameTheirLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *what, const char *name, const QByteArray &text,
                        const char *said) {
        QTest::newRow(what) << name << text << said;
    };
    row("no such name", "a.txt", "# c\n0 red\n9 reddish\n",
        "Line 3 of \"a.txt\": \"reddish\" is no colour.");
    row("a channel too large", "a.txt", "0 1 2 256\n",
        "Line 1 of \"a.txt\": \"1 2 256\" is no colour.");
    row("a channel missing", "a.txt", "0 1 2\n",
        "Line 1 of \"a.txt\": \"1 2\" is no colour.");
    row("no height", "a.txt", "\nhigh red\n",
        "Line 2 of \"a.txt\": \"high\" is no height.");
    row("a share beyond all", "a.txt", "101% red\n",
        "Line 1 of \"a.txt\": \"101%\" is no height.");
    row("not a number", "a.txt", "nan red\n",
        "Line 1 of \"a.txt\": \"nan\" is no height.");
    row("half a segment", "a.cpt", "0 red 10 blue\n10 1/2/3\n",
        "Line 2 of \"a.cpt\": a height and its colour are expected twice.");
    row("no colour of a palette", "a.cpt", "0 red 10 1/2/300\n",
        "Line 1 of \"a.cpt\": \"1/2/300\" is no colour.");
    row("no colour for voids", "a.cpt", "N nothing\n",
        "Line 1 of \"a.cpt\": \"nothing\" is no colour.");
    row("a line without an end", "a.txt", "0 red\n" + QByteArray(20000, 'x'),
        "Line 2 of \"a.txt\": the line is too long for colours.");
}

void TestColourFile::faultsNameTheirLine()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    QFETCH(QString, said);
    const Result<ColourTable> table = read(name, text);
    QVERIFY(!table);
    QCOMPARE(table.error().text, said);
}

void TestColourFile::filesThatAreMissingOrEmptyAreTold()
{
    const QTemporaryDir folder;
    const QString missing = folder.filePath("none.txt");
    const Result<ColourTable> none = readColourFile(missing);
    QVERIFY(!none);
    QVERIFY(none.error().text.contains(missing));
    QFile file(folder.filePath("empty.cpt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const Result<ColourTable> empty = readColourFile(file.fileName());
    QVERIFY(!empty);
    QVERIFY(empty.error().text.contains("no colours"));
}

// Whatever the bytes, there is a table or a sentence, and a table has a colour for all.
void TestColourFile::junkIsRefusedOrRead()
{
    const QByteArray alphabet("0159 .,:/-#%nvBFNred\n\t;\xff\0", 25);
    quint32 seed = 1;
    for (int round = 0; round < 4000; ++round) {
        QByteArray text;
        for (int i = 0; i < 40; ++i) {
            seed = seed * 1664525u + 1013904223u;
            text.append(alphabet[int(seed >> 8) % alphabet.size()]);
        }
        for (const char *const name : {"a.txt", "a.cpt"}) {
            const Result<ColourTable> table = read(name, text);
            if (!table)
                QVERIFY(!table.error().text.isEmpty());
            else if (!table->stops.empty())
                QVERIFY(qAlpha(colour(*table, 3.0)) == 255);
        }
    }
}

void TestColourFile::gdaldemPaintsTheSame_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("stops") << "a.txt"
                           << QByteArray("0 red\n33.3 1 200 3\n47 white\n99.9 9 9 250\n");
    QTest::newRow("shares") << "a.txt"
                            << QByteArray("0% red\n12.5% blue\n100% 7 77 177\n");
    QTest::newRow("steps") << "a.txt"
                           << QByteArray("10 red\n20 red\n20 blue\n50 blue\n50 9 9 9\n");
    QTest::newRow("many steps")
        << "a.txt"
        << QByteArray("0 red\n0 9 9 9\n10 100 100 100\n10 1 1 200\n"
                      "10 7 7 7\n20 0 0 0\n20 50 50 50\n30 1 2 3\n"
                      "40 9 9 9\n40 1 2 3\n40 5 5 5\n40 6 6 6\n"
                      "80 250 250 250\n80 1 1 1\n80 2 2 2\n");
    QTest::newRow("a palette") << "a.cpt"
                               << QByteArray("# COLOR_MODEL = RGB\n"
                                             "10 10 20 30 40 240 20 90\n"
                                             "40 0 20 30 70 240 220 90\nB 1 2 3\n");
}

void TestColourFile::gdaldemPaintsTheSame()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    const QString gdaldem = QStandardPaths::findExecutable("gdaldem");
    if (gdaldem.isEmpty())
        QSKIP("There is no gdaldem to compare with.");
    const QTemporaryDir folder;
    constexpr int Side = 60;
    QByteArray grid = "ncols 60\nnrows 60\nxllcorner 0\nyllcorner 0\ncellsize 1\n";
    const Heights heights = madeHeights({Side, Side}, [](int x, int y) {
        return y == 0 ? x * 2.0 : double(float(x * y) / 37.0f) * 1.1;
    });
    for (const float height : heights.metres)
        grid += QByteArray::number(double(height), 'g', 17) + ' ';
    const auto write = [&](const QString &file, const QByteArray &contents) {
        QFile out(folder.filePath(file));
        return out.open(QIODevice::WriteOnly) && out.write(contents) == contents.size();
    };
    QVERIFY(write("grid.asc", grid) && write(name, text));
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(gdaldem,
                  {"color-relief", "-q", "-of", "PNG", "grid.asc", name, "o.png"});
    QVERIFY(process.waitForFinished() && process.exitCode() == 0);
    const QImage theirs(folder.filePath("o.png"));
    QCOMPARE(theirs.size(), QSize(Side, Side));
    const Result<ColourTable> table = readColourFile(folder.filePath(name));
    QVERIFY(table);
    const auto [lowest, highest] = *rangeOf(heights);
    const ColourRamp ramp(*table, {lowest, highest});
    std::size_t near = 0;
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x)
            QCOMPARE(QColor(ramp.at(double(heights.row(y)[x]), near)),
                     QColor(theirs.pixel(x, y)));
}

QTEST_GUILESS_MAIN(TestColourFile)
#include "test_colourfile.moc"
