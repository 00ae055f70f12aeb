#include "terrain/pointguess.h"

#include <QBuffer>
#include <QTest>

namespace {

Result<PointPreview> previewOf(QByteArray text, const PointOptions &options = {})
{
    QBuffer device(&text);
    (void)device.open(QIODevice::ReadOnly);
    return orFault(lookAtPoints(device, QStringLiteral("\"p.txt\""), options));
}

} // namespace

class TestPointGuess : public QObject {
    Q_OBJECT

private slots:
    void formsOfFilesAreRecognised_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<char>("separator");
        QTest::addColumn<char>("point");
        QTest::addColumn<int>("skipped");
        QTest::addColumn<QList<int>>("columns");
        QTest::addColumn<bool>("isGeographic");
        const auto row = [](const char *name, const QByteArray &text, char separator,
                            char point, int skipped, const QList<int> &columns,
                            bool isGeographic = false) {
            QTest::newRow(name)
                << text << separator << point << skipped << columns << isGeographic;
        };
        row("blanks", "1 2 3\n4 5 6\n", ' ', '.', 0, {0, 1, 2});
        row("blanks and tabs", " 1\t2  3\n 4\t5  6\n", ' ', '.', 0, {0, 1, 2});
        row("commas", "1.5,2.5,3\n4,5,6\n", ',', '.', 0, {0, 1, 2});
        row("commas and blanks", "1, 2, 3\n4, 5, 6\n", ',', '.', 0, {0, 1, 2});
        row("semicolons", "1;2;3\n", ';', '.', 0, {0, 1, 2});
        row("decimal commas", "1,5;2,5;3,5\n4;5;6\n", ';', ',', 0, {0, 1, 2});
        row("decimal commas, blanks", "1,5 2,5 3,5\n", ' ', ',', 0, {0, 1, 2});
        row("decimal commas, tabs", "1,5\t2,5\t3,5\n", '\t', ',', 0, {0, 1, 2});
        row("decimal commas in marks", "\"1,5\",\"2,5\",\"3,5\"\n", ',', ',', 0,
            {0, 1, 2});
        row("head", "x,y,z\n1,2,3\n", ',', '.', 1, {0, 1, 2});
        row("head, another order", "Elevation;Northing;Easting\n1;2;3\n", ';', '.', 1,
            {2, 1, 0});
        row("German head", "Nr;Rechtswert;Hochwert;Höhe\n7;1,5;2;3\n", ';', ',', 1,
            {1, 2, 3});
        row("latitude first", "id,lat,lon,ele\n7,50.5,8.5,3\n", ',', '.', 1, {2, 1, 3},
            true);
        row("metres beside degrees", "lat,lon,x,y,z\n50.5,8.5,100,200,3\n", ',', '.', 1,
            {2, 3, 4});
        row("a head as a remark", "# lon lat z\n8.5 50.5 3\n", ' ', '.', 1, {0, 1, 2},
            true);
        row("lines ahead", "Survey of 2020\nby hand\n\nX Y Z\n1 2 3\n", ' ', '.', 4,
            {0, 1, 2});
        row("numbered", "1 10 20 30\n2 11 20 31\n3 12 20 32\n", ' ', '.', 0, {1, 2, 3});
        row("words in front", "P1 10 20 30\nP2 11 20 31\n", ' ', '.', 0, {1, 2, 3});
        row("latitudes by range", "47.5,-122.5,30\n47.6,-122.4,31\n", ',', '.', 0,
            {1, 0, 2});
        row("more behind", "1 2 3 255 128 0\n4 5 6 255 128 0\n", ' ', '.', 0, {0, 1, 2});
        row("a name for x and y only", "x,y,value\n1,2,3\n", ',', '.', 1, {0, 1, 2});
        row("mark and line ends", "\xEF\xBB\xBFx;y;z\r\n1;2;3\r\n", ';', '.', 1,
            {0, 1, 2});
    }
    void formsOfFilesAreRecognised()
    {
        QFETCH(QByteArray, text);
        QFETCH(char, separator);
        QFETCH(char, point);
        QFETCH(int, skipped);
        QFETCH(QList<int>, columns);
        QFETCH(bool, isGeographic);
        const auto preview = previewOf(text);
        QVERIFY2(preview, qPrintable(preview ? QString() : preview.error().text));
        const PointFormat &format = preview->format;
        QCOMPARE(format.separator, separator);
        QCOMPARE(format.decimalPoint, point);
        QCOMPARE(format.skippedLines, skipped);
        QCOMPARE(QList<int>(format.columns.begin(), format.columns.end()), columns);
        QCOMPARE(format.isGeographic, isGeographic);
    }

    void whatIsAskedForIsNotGuessed()
    {
        PointOptions options;
        options.columns = {3, 2, 1};
        options.separator = QLatin1Char(';');
        options.decimalPoint = QLatin1Char(',');
        options.skippedLines = 1;
        const auto preview = previewOf("1;2;3\n4;5;6\n7;8;9\n", options);
        QVERIFY(preview);
        QCOMPARE(preview->format, (PointFormat{';', ',', 1, {2, 1, 0}, false}));
        QCOMPARE(preview->rows.size(), qsizetype(2));
        QCOMPARE(preview->rows.first(), (QStringList{"4", "5", "6"}));
    }

    void tenRowsAreShownAsTheyStand()
    {
        QByteArray text("name;x;y;z\n");
        for (int i = 0; i < 30; ++i)
            text += "p" + QByteArray::number(i) + ";1,50;2;\"3\"\n";
        const auto preview = previewOf(text);
        QVERIFY(preview);
        QCOMPARE(preview->names, (QStringList{"name", "x", "y", "z"}));
        QCOMPARE(preview->columns, 4);
        QCOMPARE(preview->rows.size(), qsizetype(PointPreview::Rows));
        QCOMPARE(preview->rows.last(), (QStringList{"p9", "1,50", "2", "3"}));
    }

    void whatHoldsNoPointsIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("said");
        const QString none = "\"p.txt\" holds no lines with three numbers.";
        QTest::newRow("empty") << QByteArray() << none;
        QTest::newRow("words") << QByteArray("a b c\nd e f\n") << none;
        QTest::newRow("two columns") << QByteArray("1 2\n3 4\n") << none;
        QTest::newRow("bytes") << QByteArray("\x89PNG\0\0\xff\xfe 1 2", 12) << none;
    }
    void whatHoldsNoPointsIsRefused()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, said);
        const auto preview = previewOf(text);
        QVERIFY(!preview);
        QCOMPARE(preview.error().text, said);
    }

    // So that a window can show what a wrong choice makes of them.
    void linesThatCannotBeReadSoAreShown()
    {
        QByteArray text("x,y,z\n1,2,3\n4,5,6\n");
        PointOptions options;
        options.separator = QLatin1Char(';');
        QBuffer device(&text);
        QVERIFY(device.open(QIODevice::ReadOnly));
        PointPreview look = lookAtPoints(device, QStringLiteral("\"p.txt\""), options);
        QCOMPARE(look.fault, QString("\"p.txt\" holds no lines with three numbers."));
        QCOMPARE(look.columns, 1);
        QCOMPARE(look.rows.size(), qsizetype(3));
        QCOMPARE(look.rows.at(1), QStringList("1,2,3"));
        QVERIFY(device.seek(0));
        options.separator = QLatin1Char(',');
        options.columns = {1, 2, 7};
        look = lookAtPoints(device, QStringLiteral("\"p.txt\""), options);
        QCOMPARE(look.fault, QString("\"p.txt\" has 3 columns; there is no column 7."));
        QCOMPARE(look.rows.at(0), (QStringList{"1", "2", "3"}));
        QVERIFY(device.seek(0));
        options.columns = {1, 1, 3};
        look = lookAtPoints(device, QStringLiteral("\"p.txt\""), options);
        QCOMPARE(look.fault,
                 QString("The columns of x, y and the height of \"p.txt\" are "
                         "three different ones."));
        QVERIFY(device.seek(0));
        look = lookAtPoints(device, QStringLiteral("\"p.txt\""), {});
        QCOMPARE(look.fault, QString());
    }

    void aColumnThatIsNotThereIsNamed()
    {
        PointOptions options;
        options.columns = {1, 2, 5};
        const auto preview = previewOf("1 2 3\n4 5 6\n", options);
        QVERIFY(!preview);
        QCOMPARE(preview.error().text,
                 QString("\"p.txt\" has 3 columns; there is no column 5."));
    }
};

QTEST_GUILESS_MAIN(TestPointGuess)
#include "test_pointguess.moc"
