#include "terrain/textlines.h"

#include <QBuffer>
#include <QStringEncoder>
#include <QTest>

namespace {

QStringList linesOf(QByteArray bytes)
{
    QBuffer device(&bytes);
    (void)device.open(QIODevice::ReadOnly);
    TextLines lines(device);
    QStringList all;
    while (const auto line = lines.next())
        all << QString::fromUtf8(line->data(), qsizetype(line->size()));
    return all;
}

} // namespace

class TestTextLines : public QObject {
    Q_OBJECT

private slots:
    void everyKindOfLineEndIsOne_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const QStringList both{QStringLiteral("a b"), QStringLiteral("c")};
        QTest::newRow("line feeds") << QByteArray("a b\nc\n") << both;
        QTest::newRow("no last one") << QByteArray("a b\nc") << both;
        QTest::newRow("carriage returns too") << QByteArray("a b\r\nc\r\n") << both;
        QTest::newRow("carriage returns alone") << QByteArray("a b\rc\r") << both;
        QTest::newRow("marked") << QByteArray("\xEF\xBB\xBF"
                                              "a b\nc\n")
                                << both;
        QTest::newRow("an empty line")
            << QByteArray("a\n\nb") << QStringList{"a", QString(), "b"};
        QTest::newRow("nothing") << QByteArray() << QStringList();
        QTest::newRow("a mark alone") << QByteArray("\xEF\xBB\xBF") << QStringList();
    }
    void everyKindOfLineEndIsOne()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QCOMPARE(linesOf(bytes), lines);
    }

    void textOfSixteenBitsIsRead()
    {
        for (const auto encoding :
             {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
            QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
            const QByteArray bytes = encoder(QStringLiteral("Höhe;1\r\n2;3\r\n"));
            QCOMPARE(linesOf(bytes), (QStringList{QStringLiteral("Höhe;1"), "2;3"}));
        }
    }

    void linesAcrossPiecesOfTheFileStayWhole()
    {
        QByteArray bytes;
        QStringList expected;
        for (int i = 0; i < 30000; ++i) {
            const QByteArray line = QByteArray::number(i) + QByteArray(i % 17, 'x');
            bytes += line + '\n';
            expected << QString::fromLatin1(line);
        }
        QCOMPARE(linesOf(bytes), expected);
    }

    void aLineWithoutEndIsNotTakenIn()
    {
        QByteArray bytes("short\n");
        bytes += QByteArray(qsizetype(3 * TextLines::LongestLine), '1');
        QBuffer device(&bytes);
        QVERIFY(device.open(QIODevice::ReadOnly));
        TextLines lines(device);
        QVERIFY(lines.next());
        QVERIFY(!lines.next());
        QVERIFY(lines.endedByLongLine());
        QCOMPARE(lines.number(), qint64(1));
        QVERIFY(lines.bytesRead() < qint64(2 * TextLines::LongestLine));
    }
};

QTEST_GUILESS_MAIN(TestTextLines)
#include "test_textlines.moc"
