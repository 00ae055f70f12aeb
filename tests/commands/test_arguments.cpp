#include "commands/arguments.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Outcome = Arguments::Outcome;

QString refusesManyCuts(const Arguments &arguments)
{
    return arguments.integer("cuts") > 5 ? QString("--cuts is too many.") : QString();
}

Command sample()
{
    return {
        .name = "sample",
        .summary = "",
        .positionals = {{.name = "FROM", .several = true},
                        {.name = "TO", .kind = OptionKind::OutputFile}},
        .options = {{.name = "cuts",
                     .kind = OptionKind::Integer,
                     .lowest = -10,
                     .highest = 10,
                     .defaultValue = "3"},
                    {.name = "scale",
                     .kind = OptionKind::Real,
                     .decimals = 2,
                     .defaultValue = "1.5"},
                    {.name = "corner", .kind = OptionKind::Integer, .numbers = 2},
                    {.name = "size", .kind = OptionKind::Size, .lowest = 1},
                    {.name = "add", .group = "mode"},
                    {.name = "multiply", .group = "mode"},
                    {.name = "photo", .kind = OptionKind::InputFile, .several = true},
                    {.name = "mask", .kind = OptionKind::InputFile, .required = true}},
        .complaint = refusesManyCuts};
}

} // namespace

class TestArguments : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    [[nodiscard]] QString path(const char *name) const { return m_dir.filePath(name); }

private slots:
    void initTestCase()
    {
        for (const char *name : {"in.png", "mask.png"}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(QFile::link(path("in.png"), path("link.png")));
    }

    void valuesAreRead()
    {
        Arguments arguments;
        QString complaint;
        const QStringList given{"a.png",      "--cuts",  "-4",      "--scale=2.25",
                                "--corner",   "-1,5",    "--size",  "20x30",
                                "--multiply", "--photo", "p1.png",  "--photo=p2.png",
                                "--mask",     "m.png",   "--quiet", "--",
                                "-b.png",     "c.png"};
        QCOMPARE(arguments.read(sample(), given, &complaint), Outcome::Run);
        QCOMPARE(arguments.integer("cuts"), -4);
        QCOMPARE(arguments.real("scale"), 2.25);
        QCOMPARE(arguments.numbers("corner"), QList<double>({-1, 5}));
        QCOMPARE(arguments.size("size"), QSize(20, 30));
        QVERIFY(arguments.has("multiply") && !arguments.has("add"));
        QCOMPARE(arguments.texts("photo"), QStringList({"p1.png", "p2.png"}));
        QCOMPARE(arguments.texts("FROM"), QStringList({"a.png", "-b.png"}));
        QCOMPARE(arguments.text("TO"), "c.png");
        QVERIFY(arguments.quiet() && !arguments.json());
    }

    void whatIsNotGivenHasItsDefault()
    {
        Arguments arguments;
        QString complaint;
        QCOMPARE(
            arguments.read(sample(), {"a.png", "--mask", "m.png", "b.png"}, &complaint),
            Outcome::Run);
        QCOMPARE(arguments.integer("cuts"), 3);
        QVERIFY(!arguments.has("cuts"));
        QCOMPARE(arguments.real("scale"), 1.5);
        QVERIFY(arguments.numbers("corner").isEmpty());
        QVERIFY(arguments.size("size").isEmpty());
        QVERIFY(arguments.texts("photo").isEmpty());
    }

    void theLastOneGivenCounts()
    {
        Arguments arguments;
        QString complaint;
        QCOMPARE(arguments.read(sample(),
                                {"a", "--mask", "m", "--cuts", "1", "b", "--cuts", "2"},
                                &complaint),
                 Outcome::Run);
        QCOMPARE(arguments.integer("cuts"), 2);
    }

    void wrongUsageIsNamed_data()
    {
        QTest::addColumn<QStringList>("given");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char *name, const QStringList &given,
                            const QString &complaint) {
            QTest::newRow(name) << given << complaint;
        };
        const QStringList good{"--mask", "m", "a", "b"};
        row("no file", {"--mask", "m"}, "FROM is missing.");
        row("one file", {"--mask", "m", "a"}, "TO is missing.");
        row("empty name", {"--mask", "m", "", "b"}, "The name of a file is empty.");
        row("no mask", {"a", "b"}, "--mask is missing: it takes the name of a file.");
        row("empty mask", {"--mask=", "a", "b"},
            "--mask takes the name of a file, not \"\".");
        row("unknown", good + QStringList{"--fast"}, "There is no option --fast.");
        row("unknown with a value", good + QStringList{"--fast=3"},
            "There is no option --fast.");
        row("one hyphen", good + QStringList{"-cuts"}, "There is no option -cuts.");
        row("abbreviated", good + QStringList{"--cut", "3"}, "There is no option --cut.");
        row("without its value", good + QStringList{"--cuts"},
            "--cuts takes a whole number from -10 to 10.");
        row("a flag with a value", good + QStringList{"--add=1"},
            "--add takes no value.");
        row("out of range", good + QStringList{"--cuts", "11"},
            "--cuts takes a whole number from -10 to 10, not \"11\".");
        row("exclusive", good + QStringList{"--multiply", "--add"},
            "--add and --multiply exclude each other.");
        row("the command's own", good + QStringList{"--cuts", "6"},
            "--cuts is too many.");
    }
    void wrongUsageIsNamed()
    {
        QFETCH(QStringList, given);
        Arguments arguments;
        QString complaint;
        QCOMPARE(arguments.read(sample(), given, &complaint), Outcome::Wrong);
        QTEST(complaint, "complaint");
    }

    void oneFileTooManyIsNamed()
    {
        Command command = sample();
        command.positionals.front().several = false;
        Arguments arguments;
        QString complaint;
        QCOMPARE(arguments.read(command, {"--mask", "m", "a", "b", "c"}, &complaint),
                 Outcome::Wrong);
        QCOMPARE(complaint, "There is one argument too many: \"c\".");
    }

    void noFileIsReadAndWritten_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("to");
        const QString in = path("in.png");
        const QString mask = path("mask.png");
        QTest::newRow("FROM is TO") << in << mask << in;
        QTest::newRow("the mask is TO") << in << mask << mask;
        QTest::newRow("a link") << in << mask << path("link.png");
        QTest::newRow("another spelling") << in << mask << m_dir.path() + "/./in.png";
        QTest::newRow("neither is there") << path("no.png") << mask << path("no.png");
    }
    void noFileIsReadAndWritten()
    {
        QFETCH(QString, from);
        QFETCH(QString, mask);
        QFETCH(QString, to);
        Arguments arguments;
        QString complaint;
        QCOMPARE(arguments.read(sample(), {"--mask", mask, from, to}, &complaint),
                 Outcome::Wrong);
        QCOMPARE(complaint, '"' + to + "\" cannot be read and written at the same time.");
    }

    void helpAndVersionAreAskedFor()
    {
        Arguments arguments;
        QString complaint;
        for (const char *word : {"--help", "-h"})
            QCOMPARE(arguments.read(sample(), {word}, &complaint), Outcome::Help);
        for (const char *word : {"--version", "-v"})
            QCOMPARE(arguments.read(sample(), {word}, &complaint), Outcome::Version);
    }
};

QTEST_GUILESS_MAIN(TestArguments)
#include "test_arguments.moc"
