#include "commands/helptext.h"

#include <QTest>

#include <algorithm>

namespace {

Command sample()
{
    return {.name = "sample",
            .summary = "Turns one file into another one.",
            .positionals = {{.name = "FROM", .help = "What is read.", .several = true},
                            {.name = "TO", .help = "What is written."}},
            .options = {{.name = "mask-file",
                         .kind = OptionKind::InputFile,
                         .valueName = "FILE",
                         .help = "A picture.",
                         .required = true},
                        {.name = "z-scale",
                         .kind = OptionKind::Real,
                         .valueName = "FACTOR",
                         .help = "Every elevation is multiplied by it, and this sentence "
                                 "is too long for a single line of the help.",
                         .lowest = -5,
                         .highest = 5,
                         .decimals = 2,
                         .defaultValue = "1"},
                        {.name = "width",
                         .kind = OptionKind::Integer,
                         .valueName = "N",
                         .help = "Columns.",
                         .lowest = 1,
                         .highest = 9,
                         .defaultNote = "found in the file"},
                        {.name = "keep", .help = "Keeps them."}},
            .examples = {"program sample a b", "    Does it."}};
}

} // namespace

class TestHelpText : public QObject {
    Q_OBJECT

private slots:
    void aCommandTellsRangesAndDefaults()
    {
        const Program program{"program", "1.0", "", {sample()}};
        const QString help = helpOf(program, sample());
        QVERIFY(help.startsWith("Usage: program sample --mask-file FILE [options] "
                                "FROM... TO\n\nTurns one file into another one.\n"));
        QVERIFY(help.contains("  FROM...\n      What is read.\n"));
        QVERIFY(help.contains("  --mask-file FILE\n      A picture.\n      required\n"));
        QVERIFY(help.contains("      Takes a number from -5 to 5 with at most 2 decimals."
                              "\n      default: 1\n"));
        QVERIFY(help.contains("      default: found in the file\n"));
        QVERIFY(help.contains("  --keep\n      Keeps them.\n      default: off\n"));
        QVERIFY(help.contains("\nExamples:\n  program sample a b\n      Does it.\n"));
        for (const char *word : {"--json", "--quiet", "--help", "--version", "130"})
            QVERIFY2(help.contains(word), word);
        const QStringList lines = help.split('\n');
        QVERIFY(std::all_of(lines.begin(), lines.end(),
                            [](const QString &line) { return line.size() < 80; }));
    }

    void theProgramTellsItsCommands()
    {
        const Program program{
            "program", "1.0", "Does several things.", {sample()}, {"program sample a b"}};
        const QString help = helpOf(program);
        QVERIFY(help.startsWith("Usage: program COMMAND [options] FILES...\n"));
        QVERIFY(help.contains("  sample\n      Turns one file into another one.\n"));
        QVERIFY(help.contains("\nExamples:\n  program sample a b\n"));
        QVERIFY(
            help.contains("Exit status: 0 done, 1 failed, 2 wrong usage, 130 stopped"));
    }
};

QTEST_GUILESS_MAIN(TestHelpText)
#include "test_helptext.moc"
