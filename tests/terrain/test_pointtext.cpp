#include "terrain/pointnames.h"
#include "terrain/pointreader.h"
#include "terrain/pointtext.h"

#include <QBuffer>
#include <QTest>

#include <cmath>

namespace {

using Points = std::vector<GroundPoint>;

struct Reading {
    Points points;
    QString complaint;
    QString failure;
};

Reading readAll(QByteArray text, const PointFormat &format)
{
    QBuffer device(&text);
    (void)device.open(QIODevice::ReadOnly);
    PointReader reader(device, QStringLiteral("\"p.txt\""), format);
    Reading reading;
    Points batch;
    do {
        const Result<void> read = reader.next(batch);
        if (!read) {
            reading.failure = read.error().text;
            return reading;
        }
        reading.points.insert(reading.points.end(), batch.begin(), batch.end());
    } while (!batch.empty());
    reading.complaint = reader.complaint();
    return reading;
}

PointFormat formatOf(char separator, char decimalPoint)
{
    PointFormat format;
    format.separator = separator;
    format.decimalPoint = decimalPoint;
    return format;
}

} // namespace

class TestPointText : public QObject {
    Q_OBJECT

private slots:
    void numbersOfManyFormsAreRead_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<char>("point");
        QTest::addColumn<double>("number");
        const double none = std::nan("");
        QTest::newRow("plain") << QByteArray("12.25") << '.' << 12.25;
        QTest::newRow("comma") << QByteArray("-12,25") << ',' << -12.25;
        QTest::newRow("sign") << QByteArray("+3") << '.' << 3.0;
        QTest::newRow("exponent") << QByteArray("4.5e6") << '.' << 4.5e6;
        QTest::newRow("D exponent") << QByteArray("0.45D+07") << '.' << 4.5e6;
        QTest::newRow("D exponent, comma") << QByteArray("0,45D+07") << ',' << 4.5e6;
        QTest::newRow("point first") << QByteArray(".5") << '.' << 0.5;
        QTest::newRow("empty") << QByteArray() << '.' << none;
        QTest::newRow("word") << QByteArray("x12") << '.' << none;
        QTest::newRow("infinite") << QByteArray("inf") << '.' << none;
        QTest::newRow("not a number") << QByteArray("nan") << '.' << none;
        QTest::newRow("both points") << QByteArray("1.234,5") << ',' << none;
        QTest::newRow("comma of a list") << QByteArray("12,") << ',' << none;
        QTest::newRow("two signs") << QByteArray("+-3") << '.' << -3.0;
        QTest::newRow("unit behind") << QByteArray("12m") << '.' << none;
        QTest::newRow("too large") << QByteArray("1e999") << '.' << none;
    }
    void numbersOfManyFormsAreRead()
    {
        QFETCH(QByteArray, text);
        QFETCH(char, point);
        QFETCH(double, number);
        const auto value =
            pointNumber({text.constData(), std::size_t(text.size())}, point);
        if (std::isnan(number))
            QVERIFY(!value);
        else
            QCOMPARE(value.value_or(0.5), number);
    }

    void linesAreSplitAtTheSeparatorOnly()
    {
        PointFields fields;
        QCOMPARE(splitPointLine("  1\t 2   3 ", ' ', fields), 3);
        QVERIFY(fields[0] == "1" && fields[1] == "2" && fields[2] == "3");
        QCOMPARE(splitPointLine("\"1,5\" , 2,,x", ',', fields), 4);
        QVERIFY(fields[0] == "1,5" && fields[1] == "2" && fields[2].empty());
        QCOMPARE(splitPointLine("", ';', fields), 1);
        const std::string many(1000, ';');
        QCOMPARE(splitPointLine(many, ';', fields), MostPointColumns);
    }

    void namesInManyLanguagesAreUnderstood_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("column");
        const auto row = [](const char *name, PointColumn column) {
            QTest::newRow(name) << QString::fromUtf8(name) << int(column);
        };
        row("x", PointColumn::X);
        row("Easting", PointColumn::X);
        row("POINT_X", PointColumn::X);
        row("Rechtswert [m]", PointColumn::X);
        row("utm_y", PointColumn::Y);
        row("Hochwert", PointColumn::Y);
        row("Northing (ft)", PointColumn::Y);
        row("lon", PointColumn::Longitude);
        row("Länge", PointColumn::Longitude);
        row("Geographische Breite", PointColumn::Latitude);
        row("GPS Latitude", PointColumn::Latitude);
        row("Höhe ü. NN", PointColumn::Height);
        row("Élévation", PointColumn::Height);
        row("elev", PointColumn::Height);
        row("id", PointColumn::Unknown);
        row("", PointColumn::Unknown);
        row("station n", PointColumn::Unknown);
    }
    void namesInManyLanguagesAreUnderstood()
    {
        QFETCH(QString, name);
        QFETCH(int, column);
        QCOMPARE(int(meaningOfName(name.toStdString())), column);
    }

    void pointsAreReadInOrder()
    {
        const Reading reading =
            readAll("# a remark\r\n1;2,5;3\r\n\r\n4;5;-6,25\r\n", formatOf(';', ','));
        QCOMPARE(reading.points, (Points{{1, 2.5, 3}, {4, 5, -6.25}}));
        QVERIFY(reading.complaint.isEmpty());
    }

    void heightsThatAreNotThereAreVoid_data()
    {
        QTest::addColumn<QByteArray>("height");
        for (const char *const text : {"", "nan", "NaN", "NULL", "-", "-9999", "-32768",
                                       "-9999.0", "1e30", "-3.4028234663852886e+38"})
            QTest::newRow(*text ? text : "empty") << QByteArray(text);
    }
    void heightsThatAreNotThereAreVoid()
    {
        QFETCH(QByteArray, height);
        const Reading reading = readAll("1;2;" + height + "\n3;4;5", formatOf(';', '.'));
        QCOMPARE(reading.points.size(), std::size_t(2));
        QVERIFY(std::isnan(reading.points[0].z));
        QCOMPARE(reading.points[1].z, 5.0);
    }

    void badLinesArePassedOverAndTold()
    {
        QByteArray text;
        for (int i = 0; i < 20; ++i)
            text += "1 2 3\n";
        const Reading one = readAll("9 9 9\n1 x 3\n" + text, formatOf(' ', '.'));
        QCOMPARE(one.points.size(), std::size_t(21));
        QCOMPARE(one.complaint, QString("One line of \"p.txt\" holds no point: \"x\" in "
                                        "line 2, column 2, is no number."));
        const Reading two = readAll(text + "1 2\n1 2 oh\n" + text, formatOf(' ', '.'));
        QCOMPARE(two.points.size(), std::size_t(40));
        QCOMPARE(
            two.complaint,
            QString("2 lines of \"p.txt\" hold no point; the first: line 21 has fewer "
                    "than 3 columns: \"1 2\"."));
    }

    void junkIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("words") << QByteArray("oh no\n").repeated(5);
        QTest::newRow("many words") << QByteArray("oh no\n").repeated(500000);
        QTest::newRow("points, then words")
            << QByteArray("1 2 3\n").repeated(5) + QByteArray("oh no\n").repeated(6);
        QTest::newRow("bytes") << QByteArray("\0\x01\xff\n", 4).repeated(300);
    }
    void junkIsRefused()
    {
        QFETCH(QByteArray, text);
        const Reading reading = readAll(text, formatOf(' ', '.'));
        QVERIFY2(reading.failure.startsWith("\"p.txt\" holds no points in most of its "
                                            "lines: line "),
                 qPrintable(reading.failure));
    }

    void aLineWithoutEndIsNamed()
    {
        const Reading reading =
            readAll("1 2 3\n" + QByteArray(3 << 20, '7'), formatOf(' ', '.'));
        QCOMPARE(reading.failure,
                 QString("Line 2 of \"p.txt\" is longer than 1048576 characters."));
    }
};

QTEST_GUILESS_MAIN(TestPointText)
#include "test_pointtext.moc"
