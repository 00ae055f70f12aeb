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
        QTest::newRow("fit without height") << QStringList{"--fit", "640", "a.zph"};
        QTest::newRow("nothing fits") << QStringList{"--fit", "0x8", "a.zph"};
        QTest::newRow("two sizes") << QStringList{"--fit", "64x8", "--preview", "a.zph"};
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
        for (const char *setting : {"Exposure",
                                    "=1",
                                    "",
                                    "Nope=1",
                                    "exposure=1",
                                    "Exposure=1,5",
                                    "Exposure=inf",
                                    "Exposure=",
                                    "Exposure=9",
                                    "MetresPerUnit=-1",
                                    "Water=2",
                                    "Water=true",
                                    "MotionBlur=1.5",
                                    "Sun=noon",
                                    "WaterMask=blue",
                                    "SunTime=2026-06-21",
                                    "BeobXA=1,5",
                                    "BeobXA=nan",
                                    "BeobXA=",
                                    "BeobXA=1000001",
                                    "NebelA=0",
                                    "HoeheUeberBoden=x",
                                    "AusBreite=7",
                                    "AusBreite=8.5",
                                    "AusBreite=1e6",
                                    "GenauRechnen=3",
                                    "Rundflug=2",
                                    "Rundflug=",
                                    "AusgabePNG=yes",
                                    "Hintergrund=fff",
                                    "AusgabeYUV=1",
                                    "[Extras]=1",
                                    "Punkt7=1,2"})
            QTest::addRow("setting %s", setting)
                << QStringList{"--set", setting, "a.zph"};
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

    void settingsAreReadAsTheyStand()
    {
        BatchOptions options;
        QString text;
        QStringList arguments{"zephrant-render", "a.zph"};
        const QStringList settings{
            "Exposure=-1e-1", "MotionBlur=1e1",   "Latitude=",     "SunTimeLast=",
            "Sky=daylight",   "MetresPerUnit=0",  "BeobXA=-2.5e3", "NebelA=1e-6",
            "Bildanzahl=1e2", "AusDateiname=a=b", "TDateiname=",   "Rundflug=1",
            "AusgabePNG=0",   "Punkt02_a=x",      "Exposure=2"};
        for (const QString &setting : settings)
            arguments += {"--set", setting};
        QCOMPARE(readCommandLine(arguments, options, &text), CommandLineResult::Run);
        QCOMPARE(text, QString());
        QStringList read;
        for (const ScenerySetting &setting : options.settings)
            read.append(setting.key + '=' + setting.value);
        QCOMPARE(read, settings);
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
