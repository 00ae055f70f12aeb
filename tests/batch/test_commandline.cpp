#include "batch/commandline.h"

#include <QRegularExpression>
#include <QTest>

class TestCommandLine : public QObject {
    Q_OBJECT

private slots:
    void allOptionsAreRead()
    {
        BatchOptions options;
        QString text;
        const QStringList arguments{
            "zephrant-render", "--preview", "--from",   "2",     "--to",      "5",
            "--size",          "320x200",   "--format", "tga",   "--format",  "jpg",
            "--quality",       "2",         "--output", "a%03d", "--missing", "--quiet",
            "scene.zph"};
        QCOMPARE(readCommandLine(arguments, options, &text), CommandLineResult::Run);
        QVERIFY(options.preview && options.missing && options.quiet);
        QCOMPARE(options.from, std::optional<int>(2));
        QCOMPARE(options.to, std::optional<int>(5));
        QCOMPARE(options.size, std::optional<QSize>(QSize(320, 200)));
        QCOMPARE(options.formats, QStringList({"tga", "jpg"}));
        QCOMPARE(options.quality, std::optional<int>(2));
        QCOMPARE(options.output, std::optional<QString>("a%03d"));
        QCOMPARE(options.scenery, QString("scene.zph"));
    }

    void whatIsAbsentStaysAsTheSceneryHasIt()
    {
        BatchOptions options;
        QString text;
        QCOMPARE(readCommandLine({"zephrant-render", "a.zph"}, options, &text),
                 CommandLineResult::Run);
        QVERIFY(!options.from && !options.to && !options.size && !options.quality);
        QVERIFY(!options.output && options.formats.isEmpty());
    }

    void threadsAreAllCoresUnlessToldOtherwise()
    {
        BatchOptions options;
        QString text;
        QCOMPARE(readCommandLine({"zephrant-render", "a.zph"}, options, &text),
                 CommandLineResult::Run);
        QCOMPARE(options.threads, 0);
        QCOMPARE(readCommandLine({"zephrant-render", "--threads", "3", "a.zph"}, options,
                                 &text),
                 CommandLineResult::Run);
        QCOMPARE(options.threads, 3);
    }

    void wrongUsageIsRefusedWithAReason_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no scenery") << QStringList{};
        QTest::newRow("two sceneries") << QStringList{"a.zph", "b.zph"};
        QTest::newRow("unknown option") << QStringList{"--fast", "a.zph"};
        QTest::newRow("format") << QStringList{"--format", "gif", "a.zph"};
        QTest::newRow("quality") << QStringList{"--quality", "3", "a.zph"};
        QTest::newRow("size without height") << QStringList{"--size", "640", "a.zph"};
        QTest::newRow("size too small") << QStringList{"--size", "7x8", "a.zph"};
        QTest::newRow("size too large") << QStringList{"--size", "32769x8", "a.zph"};
        QTest::newRow("negative frame") << QStringList{"--from=-1", "a.zph"};
        QTest::newRow("frame no number") << QStringList{"--to", "x", "a.zph"};
        QTest::newRow("frame too large") << QStringList{"--to", "99999999999", "a.zph"};
        QTest::newRow("no threads") << QStringList{"--threads", "0", "a.zph"};
        QTest::newRow("too many threads") << QStringList{"--threads", "65", "a.zph"};
        QTest::newRow("value missing") << QStringList{"a.zph", "--to"};
        QTest::newRow("value too many") << QStringList{"--quiet=3", "a.zph"};
        QTest::newRow("empty template") << QStringList{"--output", "", "a.zph"};
        QTest::newRow("empty range") << QStringList{"--from", "5", "--to", "3", "a.zph"};
        QTest::newRow("empty name") << QStringList{""};
    }
    // The sentence names the option.
    void wrongUsageIsRefusedWithAReason()
    {
        QFETCH(QStringList, arguments);
        const QString option = QStringList(arguments.filter("--"))
                                   .join(' ')
                                   .section(QRegularExpression("[ =]"), 0, 0);
        arguments.prepend("zephrant-render");
        BatchOptions options;
        QString text;
        QCOMPARE(readCommandLine(arguments, options, &text), CommandLineResult::Wrong);
        QVERIFY(!text.isEmpty());
        QVERIFY2(text.contains(option), qPrintable(text));
    }

    void oneFrameIsARange()
    {
        BatchOptions options;
        QString text;
        QCOMPARE(readCommandLine({"zephrant-render", "--from", "3", "--to", "3", "a.zph"},
                                 options, &text),
                 CommandLineResult::Run);
    }

    void everyWayToAskForHelpIsAnswered()
    {
        BatchOptions options;
        QString help;
        QCOMPARE(readCommandLine({"zephrant-render", "--help"}, options, &help),
                 CommandLineResult::Help);
        QVERIFY(help.contains("Examples:"));
        for (const char *option : {"-h", "--help-all"}) {
            QString text;
            QCOMPARE(readCommandLine({"zephrant-render", option}, options, &text),
                     CommandLineResult::Help);
            QCOMPARE(text, help);
        }
    }

    void helpAndVersionNeedNoScenery()
    {
        BatchOptions options;
        QString text;
        QCOMPARE(readCommandLine({"zephrant-render", "--help"}, options, &text),
                 CommandLineResult::Help);
        QVERIFY(text.contains("--missing"));
        QCOMPARE(readCommandLine({"zephrant-render", "--version"}, options, &text),
                 CommandLineResult::Version);
        QCOMPARE(text, QString("zephrant-render " ZEPHRANT_VERSION "\n"));
    }
};

QTEST_APPLESS_MAIN(TestCommandLine)
#include "test_commandline.moc"
