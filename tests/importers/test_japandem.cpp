#include "importers/japandem.h"
#include "raster/elevationimage.h"

#include <QBuffer>
#include <QTest>

namespace {

// Two rows of three elevations.
QByteArray smallFile(const QByteArray &lineEnd = "\n")
{
    return "543800 anything at all  3  2 more" + lineEnd +
           "prefix 01   12-0034-9999 rest" + lineEnd + "prefix 02  +5   ab     0" +
           lineEnd;
}

} // namespace

class TestJapanDem : public QObject {
    Q_OBJECT

private:
    ElevationImage m_image;
    int m_count = 0;
    QString m_error;

    bool convert(QByteArray bytes, int voidValue = -9999)
    {
        QBuffer in(&bytes);
        if (!in.open(QIODevice::ReadOnly | QIODevice::Text))
            return false;
        m_image = {};
        m_count = -1;
        m_error.clear();
        NoProgress unwatched;
        const Result<JapanDem> dem = convertJapanDem(in, voidValue, "a.mem", unwatched);
        if (dem) {
            m_image = dem->image;
            m_count = dem->nonZeroCount;
        } else {
            m_error = dem.error().text;
        }
        return dem.has_value();
    }
    QVector<int> pixels() const
    {
        QVector<int> all;
        for (int row = 0; row < m_image.height(); ++row)
            for (int column = 0; column < m_image.width(); ++column)
                all << ElevationImage::stepsOf(m_image.pixel(column, row));
        return all;
    }

private slots:
    void theFirstRowIsTheTop_data()
    {
        QTest::addColumn<QByteArray>("lineEnd");
        QTest::newRow("line feed") << QByteArray("\n");
        QTest::newRow("carriage return too") << QByteArray("\r\n");
    }
    void theFirstRowIsTheTop()
    {
        QFETCH(QByteArray, lineEnd);
        QVERIFY(convert(smallFile(lineEnd)));
        QCOMPARE(m_image.size(), QSize(3, 2));
        QCOMPARE(pixels(), (QVector<int>{12, -34, 0, 5, 0, 0}));
        QCOMPARE(m_count, 3);
    }

    void aVoidValueOfZeroChangesNothing()
    {
        QVERIFY(convert(smallFile(), 0));
        QCOMPARE(pixels(), (QVector<int>{12, -34, -9999, 5, 0, 0}));
        QCOMPARE(m_count, 4);
    }

    void aFileOfVoidsIsZero()
    {
        QVERIFY(
            convert("123456                   1  2\n123456789-9999\n123456789-9999\n"));
        QCOMPARE(pixels(), (QVector<int>{0, 0}));
        QCOMPARE(m_count, 0);
    }

    void aFileCutAnywhereTellsWhatIsMissing()
    {
        const QByteArray whole = smallFile();
        const qsizetype head = whole.indexOf('\n') + 1;
        const qsizetype second = whole.indexOf('\n', head) + 1;
        const auto expected = [&](qsizetype length) -> QString {
            if (length < 6)
                return "Could not read the first 6 bytes of \"a.mem\".";
            if (length < 26)
                return "Could not read width info in \"a.mem\".";
            if (length < 29)
                return "Could not read height info in \"a.mem\".";
            if (length < head)
                return "Could not scan to the first newline character in \"a.mem\".";
            const qsizetype row = length < second ? head : second;
            if (length < row + 9)
                return "Could not read 9 bytes in \"a.mem\".";
            if (length < row + 9 + 15)
                return "Could not read a 5 byte elevation value in \"a.mem\".";
            return "Could not scan to a newline character in \"a.mem\".";
        };
        for (qsizetype length = 0; length < whole.size(); ++length) {
            QVERIFY(!convert(whole.left(length)));
            QCOMPARE(m_error, expected(length));
            QVERIFY(m_image.isNull());
        }
    }

    void zeroSizesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("size");
        QTest::addColumn<QString>("error");
        const QString width = "Invalid input file:\nThe width was read as zero in "
                              "\"a.mem\".";
        const QString height = "Invalid input file:\nThe height was read as zero in "
                               "\"a.mem\".";
        QTest::newRow("width") << QByteArray("000005") << width;
        QTest::newRow("both") << QByteArray("000000") << width;
        QTest::newRow("width of text") << QByteArray("ab 005") << width;
        QTest::newRow("height") << QByteArray("005000") << height;
        QTest::newRow("height of text") << QByteArray("0050x5") << height;
    }
    void zeroSizesAreRefused()
    {
        QFETCH(QByteArray, size);
        QFETCH(QString, error);
        QVERIFY(!convert("12345678901234567890123" + size + "\n123456789"));
        QCOMPARE(m_error, error);
    }

    void negativeSizesGiveNoImage_data()
    {
        QTest::addColumn<QByteArray>("size");
        QTest::newRow("width") << QByteArray("-12  1");
        QTest::newRow("height") << QByteArray("  1-12");
    }
    void negativeSizesGiveNoImage()
    {
        QFETCH(QByteArray, size);
        QVERIFY(convert("12345678901234567890123" + size + "\n123456789\n123456789"));
        QVERIFY(m_image.isNull());
        QCOMPARE(m_count, 0);
    }

    void theLargestSizeIsRead()
    {
        QByteArray file = "12345678901234567890123999999\n";
        for (int row = 0; row < 999; ++row)
            file += "123456789" + QByteArray("00001").repeated(999) + "\n";
        QVERIFY(convert(file));
        QCOMPARE(m_image.size(), QSize(999, 999));
        QCOMPARE(m_count, 999 * 999);
    }

    void junkIsRefused()
    {
        QVERIFY(!convert(QByteArray(5000, '\xFF')));
        QVERIFY(!m_error.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestJapanDem)
#include "test_japandem.moc"
