#include "importers/xyzreader.h"

#include "base/notices.h"

#include <QBuffer>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>
#include <QTextStream>

#include <algorithm>
#include <bit>
#include <new>
#include <random>

namespace {

/// Blanks without a line end and without an end of their own.
class EndlessLine : public QIODevice {
public:
    qint64 given = 0;

protected:
    qint64 readData(char *data, qint64 most) override
    {
        std::fill_n(data, most, ' ');
        given += most;
        return most;
    }
    qint64 writeData(const char *, qint64) override { return -1; }
};

struct Lines {
    QStringList seen;

    void add(bool empty, int items, double x, double y, double z)
    {
        const auto bits = [](double v) {
            return QString::number(std::bit_cast<quint64>(v), 16);
        };
        seen << QStringLiteral("%1 %2 %3 %4 %5")
                    .arg(int(empty))
                    .arg(empty ? 0 : items)
                    .arg(bits(x), bits(y), bits(z));
    }
};

QStringList quickly(const QByteArray &text)
{
    QBuffer in;
    in.setData(text);
    in.open(QIODevice::ReadOnly | QIODevice::Text);
    XyzReader reader(in);
    Lines lines;
    while (!reader.atEnd()) {
        const XyzReader::Line line = reader.readLine();
        lines.add(line.empty, line.items, line.x, line.y, line.z);
    }
    return lines.seen;
}

// The way that the quick one has to agree with.
QStringList plainly(const QByteArray &text)
{
    QBuffer in;
    in.setData(text);
    in.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&in);
    Lines lines;
    while (!stream.atEnd()) {
        const QString line = stream.readLine();
        const QStringList items = line.split(QRegularExpression(QStringLiteral("\\s+")));
        const auto number = [&](int i) {
            return i < items.size() ? items[i].toDouble() : 0.0;
        };
        const int count = std::min(int(items.size()), 3);
        lines.add(line.isEmpty(), count, line.isEmpty() ? 0 : number(0), number(1),
                  number(2));
    }
    return lines.seen;
}

QByteArray encoded(const QString &text, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder(text);
}

} // namespace

class TestXyzReader : public QObject {
    Q_OBJECT

private slots:
    void splitsAsAStreamAndARegularExpressionDo_data();
    void splitsAsAStreamAndARegularExpressionDo();
    void splitsRandomTextTheSameWay();
    void readsNumbersAsTheToolkitDoes_data();
    void readsNumbersAsTheToolkitDoes();
    void readsRandomNumbersAsTheToolkitDoes();
    void skipsLines();
    void readsALineOfManyMegabytes();
    void endlessLineIsGivenUpAtTheBudget();
};

void TestXyzReader::splitsAsAStreamAndARegularExpressionDo_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, const QByteArray &text) {
        QTest::newRow(name) << text;
    };
    row("nothing", "");
    row("one line", "1 2 3\n");
    row("no line feed at the end", "1 2 3\n4 5 6");
    row("empty lines", "\n\n1 2 3\n\n");
    row("leading blanks", "  1 2 3\n");
    row("trailing blanks", "1 2 3  \n1 2 \n1 \n");
    row("white space alone", " \n\t\n  \t \n");
    row("one, two, four items", "1\n1 2\n1 2 3 4\n");
    row("commas", "1,2,3\n1;2;3\n1, 2, 3\n");
    row("tabs, vertical tabs, form feeds", "1\t2\v3\n1\f2\f\v3\n");
    row("carriage returns", "1 2 3\r\n4 5 6\r\n\r\n7 8 9\r");
    row("carriage returns alone", "1 2 3\r4 5 6\r");
    row("carriage returns amid numbers", "1\r2 3\r 4 \r 5\r\n");
    row("carriage return after the last line feed", "1 2 3\n\r");
    row("no-break space", "1\xC2\xA0"
                          "2 3 4\n\xC2\xA0"
                          "1 2 3\n");
    row("other blanks", "1\xE2\x80\x83"
                        "2 3\xC2\x85"
                        "4 5\n");
    row("letters beyond ASCII", "\xC3\xA4 1 2\n1 \xE2\x88\x92"
                                "2 3\n\xD9\xA1 2 3\n");
    row("not UTF-8", "\xFF 1 2\n1 2\xE9 3\n\xE2 1 2\n1 2 3\xC3\n4 5 6\n");
    row("cut off amid a character", "1 2 3\n4 5 6\xE2\x82");
    row("cut off after a line feed", "1 2 3\n\xE2\x82");
    row("NUL bytes", QByteArray("1 2 3\0\n\0 1 2\n1 2\0 3\n\0\n", 20));
    row("UTF-8 with a mark", "\xEF\xBB\xBF"
                             "1 2 3\n");
    row("a mark alone", "\xEF\xBB\xBF");
    row("a carriage return alone", "\r");
    row("half a character alone", "\xE2");
    row("a mark amid the text", "1 2 3\n\xEF\xBB\xBF"
                                "1 2 3\n");
    const QString text = QStringLiteral(" 1 2 3\r\n\r\n4,5 6\u00a0 7\u2212\n8 9 1e3");
    row("UTF-16, little end first", encoded(text, QStringConverter::Utf16LE));
    row("UTF-16, big end first", encoded(text, QStringConverter::Utf16BE));
    row("UTF-16 and half a character",
        encoded(text, QStringConverter::Utf16LE) + QByteArray("1"));
    row("UTF-32", encoded(text, QStringConverter::Utf32LE));
    row("numbers out of range", "1e400 -1e400 1e-400\nnan inf -inf\n0x10 1e5 1E5\n");
    row("more than a chunk", QByteArray("12.5 -7 1e3\n").repeated(20000));
    row("a line of more than a chunk",
        "1 2 " + QByteArray(200000, '7') + "\n4 5 6\n" + QByteArray(100000, ' ') + "1");
    row("a chunk of carriage returns", "1 2" + QByteArray(70000, '\r') + " 3\n");
}

void TestXyzReader::splitsAsAStreamAndARegularExpressionDo()
{
    QFETCH(QByteArray, text);
    QCOMPARE(quickly(text), plainly(text));
}

void TestXyzReader::splitsRandomTextTheSameWay()
{
    static const QByteArray pieces[] = {
        " ",  "\n",   "\r",       "\t",       "\v",       "1",    "-2.5",
        "e3", "+",    ".",        "\xC2\xA0", "\xC3\xA4", "\xFF", "inf",
        "\n", "\r\n", "\xE2\x80", "7",        "  ",       "0.1",  QByteArray(1, '\0')};
    std::mt19937 generator(5);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(pieces) - 1);
    for (int run = 0; run < 3000; ++run) {
        QByteArray text;
        for (int i = 0; i < 40; ++i)
            text += pieces[pick(generator)];
        QVERIFY2(quickly(text) == plainly(text), text.toPercentEncoding().constData());
    }
}

void TestXyzReader::readsNumbersAsTheToolkitDoes_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"0",
                             "-0",
                             "+0",
                             "1",
                             "+1",
                             "-1",
                             "--1",
                             "+-1",
                             "-+1",
                             "1.",
                             ".5",
                             "-.5",
                             "+.5",
                             ".",
                             "-",
                             "+",
                             "1e5",
                             "1E5",
                             "1e+5",
                             "1e-5",
                             "1e",
                             "1e+",
                             "e5",
                             ".e5",
                             "1.e5",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "-1e-400",
                             "1e-310",
                             "4.9e-324",
                             "2e-324",
                             "1.7976931348623157e308",
                             "1.7976931348623159e308",
                             "nan",
                             "NaN",
                             "NAN",
                             "-nan",
                             "+nan",
                             "inf",
                             "INF",
                             "+inf",
                             "-inf",
                             "infinity",
                             "nan(1)",
                             "0x10",
                             "0b1",
                             "1_0",
                             "1,5",
                             "1'000",
                             "1e5.5",
                             "1 ",
                             "12abc",
                             "1d5",
                             "1f",
                             "0.1",
                             "123456789.123456789",
                             "0.1000000000000000055511151231257827",
                             "9007199254740993",
                             "1e22",
                             "1e23",
                             "179769313486231580793728971405301199e273",
                             "00000000000000000000000001",
                             "0e999999999999",
                             "1e99999999999999999999",
                             "%",
                             "1%",
                             "e",
                             "E"})
        QTest::newRow(text) << QByteArray(text);
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("NUL behind") << QByteArray("1\0", 2);
    QTest::newRow("a thousand digits") << QByteArray(1000, '3');
    QTest::newRow("a thousand digits behind the point") << "0." + QByteArray(1000, '3');
    QTest::newRow("a thousand zeros") << "0." + QByteArray(1000, '0') + "1";
}

void TestXyzReader::readsNumbersAsTheToolkitDoes()
{
    QFETCH(QByteArray, text);
    const double quick = numberOf({text.constData(), std::size_t(text.size())});
    const double plain = QString::fromLatin1(text).toDouble();
    QCOMPARE(std::bit_cast<quint64>(quick), std::bit_cast<quint64>(plain));
}

void TestXyzReader::readsRandomNumbersAsTheToolkitDoes()
{
    const QByteArray letters("0123456789012345678901234567890123456789....--+eEinfax,");
    std::mt19937 generator(11);
    std::uniform_int_distribution<int> pick(0, int(letters.size()) - 1);
    std::uniform_int_distribution<int> length(1, 24);
    for (int run = 0; run < 300000; ++run) {
        QByteArray text;
        for (int i = length(generator); i > 0; --i)
            text += letters[pick(generator)];
        const double quick = numberOf({text.constData(), std::size_t(text.size())});
        const double plain = QString::fromLatin1(text).toDouble();
        QVERIFY2(std::bit_cast<quint64>(quick) == std::bit_cast<quint64>(plain),
                 text.constData());
    }
}

void TestXyzReader::skipsLines()
{
    QBuffer in;
    in.setData("words\n\n1 2 3\n");
    in.open(QIODevice::ReadOnly);
    XyzReader reader(in);
    reader.skipLine();
    reader.skipLine();
    const XyzReader::Line line = reader.readLine();
    QCOMPARE(line.z, 3.0);
    QVERIFY(reader.atEnd());
    reader.skipLine();
    QVERIFY(reader.atEnd());
    QVERIFY(reader.readLine().empty);
}

void TestXyzReader::readsALineOfManyMegabytes()
{
    QByteArray text("1 2 3 ");
    text += QByteArray("45 ").repeated(10 * 1024 * 1024);
    QBuffer in(&text);
    in.open(QIODevice::ReadOnly);
    XyzReader reader(in);
    const XyzReader::Line line = reader.readLine();
    QCOMPARE(line.items, 3);
    QCOMPARE(line.z, 3.0);
    QVERIFY(reader.atEnd());
}

void TestXyzReader::endlessLineIsGivenUpAtTheBudget()
{
    qputenv("ZEPHRANT_MEMORY_BUDGET", "1000000");
    QStringList notices;
    const NoticeSink former =
        setNoticeSink([&](const QString &text, NoticeStay) { notices << text; });
    const auto restore = qScopeGuard([&] {
        setNoticeSink(former);
        qunsetenv("ZEPHRANT_MEMORY_BUDGET");
    });
    EndlessLine in;
    in.open(QIODevice::ReadOnly);
    XyzReader reader(in);
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, static_cast<void>(reader.readLine()));
    QVERIFY(in.given <= 1000000);
    // 512 KiB are at hand, and are copied into twice as many.
    QCOMPARE(notices, QStringList{"A line of the text file would take 1.6 MB of memory; "
                                  "the budget is 1.0 MB."});
}

QTEST_APPLESS_MAIN(TestXyzReader)
#include "test_xyzreader.moc"
