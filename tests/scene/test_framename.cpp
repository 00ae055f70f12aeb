#include "scene/framename.h"

#include <QTest>

#include <array>
#include <climits>
#include <cstdio>

class TestFrameName : public QObject {
    Q_OBJECT

private slots:
    void oneNumberIsFormattedAsByPrintf();
    void namesOfTheHelpText_data();
    void namesOfTheHelpText();
    void nonsenseStaysAsItStands_data();
    void nonsenseStaysAsItStands();
    void hugeWidthsAreCutToTheLongestName();
    void templateMustTellFramesApart_data();
    void templateMustTellFramesApart();
};

void TestFrameName::oneNumberIsFormattedAsByPrintf()
{
    constexpr std::array flags{"",   "-",  "+",  " ",  "#",   "0",   "-+", "-0",
                               "+0", " 0", "#0", "+ ", "#-0", "-#+", "00", "+ #0-"};
    constexpr std::array widths{"", "1", "3", "5", "12"};
    constexpr std::array precisions{"", ".", ".0", ".1", ".4", ".15"};
    constexpr std::array numbers{0, 1, -1, 7, 8, 10, -123, 9999, INT_MAX, INT_MIN};
    for (const char type : {'d', 'i', 'u', 'o', 'x', 'X', 'c'})
        for (const char *flag : flags)
            for (const char *width : widths)
                for (const char *precision : precisions)
                    for (const int number : numbers) {
                        const std::string format =
                            std::string("a%") + flag + width + precision + type + "b%%";
                        std::array<char, 64> expected{};
                        std::snprintf(expected.data(), expected.size(), format.c_str(),
                                      number);
                        const QString name =
                            formatFrameName(QString::fromStdString(format), number);
                        if (name != QString::fromLatin1(expected.data()))
                            QFAIL(
                                qPrintable(QStringLiteral("%1 of %2: \"%3\", not \"%4\"")
                                               .arg(QString::fromStdString(format))
                                               .arg(number)
                                               .arg(name, expected.data())));
                    }
}

void TestFrameName::namesOfTheHelpText_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::newRow("decimal") << "image%d" << 1 << "image1";
    QTest::newRow("hexadecimal") << "test%04x" << 10 << "test000a";
    QTest::newRow("octal") << "out%02o" << 8 << "out10";
    QTest::newRow("percent sign") << "100%%_%03d" << 5 << "100%_005";
}
void TestFrameName::namesOfTheHelpText()
{
    QFETCH(QString, pattern);
    QFETCH(int, number);
    QFETCH(QString, name);
    QCOMPARE(formatFrameName(pattern, number), name);
}

void TestFrameName::nonsenseStaysAsItStands_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("name");
    QTest::newRow("string") << "a%s"
                            << "a%s";
    QTest::newRow("write back") << "a%n%d"
                                << "a%n7";
    QTest::newRow("second conversion") << "a%d_%d"
                                       << "a7_%d";
    QTest::newRow("width from an argument") << "a%*d"
                                            << "a%*d";
    QTest::newRow("length") << "a%ld"
                            << "a%ld";
    QTest::newRow("real") << "a%f"
                          << "a%f";
    QTest::newRow("percent sign at the end") << "a%"
                                             << "a%";
    QTest::newRow("no conversion") << "plain"
                                   << "plain";
    QTest::newRow("width that no int holds") << "%99999999999d"
                                             << "%99999999999d";
}
void TestFrameName::nonsenseStaysAsItStands()
{
    QFETCH(QString, pattern);
    QFETCH(QString, name);
    QCOMPARE(formatFrameName(pattern, 7), name);
}

void TestFrameName::hugeWidthsAreCutToTheLongestName()
{
    const QString name = formatFrameName("%2000000000d", 7);
    QCOMPARE(name.size(), qsizetype(MaxFrameName));
    QCOMPARE(formatFrameName("%.2000000000d", 7).size(), qsizetype(MaxFrameName));
}

void TestFrameName::templateMustTellFramesApart_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("good");
    QTest::newRow("number") << "/x/image%04d.png" << true;
    QTest::newRow("none") << "/x/image.png" << false;
    QTest::newRow("string") << "/x/image%s.png" << false;
    QTest::newRow("percent sign") << "/x/image%%d.png" << false;
}
void TestFrameName::templateMustTellFramesApart()
{
    QFETCH(QString, pattern);
    QFETCH(bool, good);
    QCOMPARE(hasFrameNumber(pattern), good);
}

QTEST_APPLESS_MAIN(TestFrameName)
#include "test_framename.moc"
