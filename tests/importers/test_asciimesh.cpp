#include "importers/asciimesh.h"

#include <QBuffer>
#include <QTest>

class TestAsciiMesh : public QObject {
    Q_OBJECT

private slots:
    void anEmptyFileLeavesTheBoundaries();
    void boundariesOnlyWiden();
    void countsTheZeroTriplesOfTheBeginning_data();
    void countsTheZeroTriplesOfTheBeginning();
    void aShortLineIsThePointOfOrigin();
    void skippedLinesCount();
    void refreshesEveryThousandLines();
    void whatIsNoPlainNumber();
    void closesTheListAtAHundredRows();
};

namespace {

// Notes the steps, and stops at one.
class Steps : public Progress {
public:
    [[nodiscard]] bool step(qint64 done, qint64 whole) override
    {
        told << done;
        of = whole;
        return done != last;
    }
    QList<qint64> told;
    qint64 of = 0;
    qint64 last = -1;
};

MeshScan scan(const QByteArray &text, MeshBoundaries *boundaries = nullptr, int skip = 0)
{
    MeshBoundaries own;
    QBuffer in;
    in.setData(text);
    in.open(QIODevice::ReadOnly);
    NoProgress unwatched;
    return scanTextMesh(in, skip, boundaries ? *boundaries : own, unwatched)
        .value_or(MeshScan());
}

} // namespace

void TestAsciiMesh::anEmptyFileLeavesTheBoundaries()
{
    MeshBoundaries boundaries;
    QCOMPARE(scan("", &boundaries).lineCounter, 0);
    QVERIFY(boundaries == MeshBoundaries());
    QCOMPARE(boundaries.minX, 2147483647.0);
    QCOMPARE(boundaries.maxY, -2147483647.0);
}

void TestAsciiMesh::boundariesOnlyWiden()
{
    MeshBoundaries boundaries;
    scan("10 20 1\n15 30 1\n", &boundaries);
    QVERIFY((boundaries == MeshBoundaries{10, 15, 30, 20}));
    scan("12 -5 1\n", &boundaries);
    QVERIFY((boundaries == MeshBoundaries{10, 15, 30, -5}));
}

void TestAsciiMesh::countsTheZeroTriplesOfTheBeginning_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("count");
    QTest::newRow("none") << QByteArray("0 0 1\n") << 0;
    QTest::newRow("words") << QByteArray("x y z\n1 2 3\n") << 1;
    QTest::newRow("one word") << QByteArray("words\n1 2 3\n") << 1;
    QTest::newRow("a blank line") << QByteArray("\n1 2 3\n") << 1;
    QTest::newRow("two") << QByteArray("0 0 0\n-0 0.0 +0\n1 2 3\n") << 2;
    QTest::newRow("later ones are points") << QByteArray("1 2 3\n0 0 0\n\n") << 0;
    QTest::newRow("no number is not zero") << QByteArray("nan 0 0\n0 0 0\n") << 0;
}

void TestAsciiMesh::countsTheZeroTriplesOfTheBeginning()
{
    QFETCH(QByteArray, text);
    QFETCH(int, count);
    const MeshScan result = scan(text);
    QCOMPARE(result.zeroTriples, count);
    QStringList rows;
    if (count == 1)
        rows << QStringLiteral("All-zero triple detected at the beginning of the file.");
    if (count > 1)
        rows << QStringLiteral(
                    "There were %1 all-zero triples detected at the beginning of "
                    "the file.")
                    .arg(count);
    if (count > 0)
        rows << QStringLiteral("  Check the number of lines to skip, you specified:")
             << QStringLiteral("  \"Skip First 7 Line(s)\".");
    QCOMPARE(zeroTripleWarnings(result, 7), rows);
}

void TestAsciiMesh::aShortLineIsThePointOfOrigin()
{
    MeshBoundaries boundaries;
    scan("10 20 1\n\n15 30 1\n", &boundaries);
    QVERIFY((boundaries == MeshBoundaries{0, 15, 30, 0}));
}

void TestAsciiMesh::skippedLinesCount()
{
    MeshBoundaries boundaries;
    QCOMPARE(scan("words\n1 2 3\n", &boundaries, 1).lineCounter, 2);
    QVERIFY((boundaries == MeshBoundaries{1, 1, 2, 2}));
    QCOMPARE(scan("words\n1 2 3\n", nullptr, 99).lineCounter, 99);
}

void TestAsciiMesh::refreshesEveryThousandLines()
{
    QByteArray text = QByteArray("1 2 3\n").repeated(3000);
    QBuffer in(&text);
    in.open(QIODevice::ReadOnly);
    MeshBoundaries boundaries;
    Steps steps;
    QVERIFY(scanTextMesh(in, 5, boundaries, steps).has_value());
    QCOMPARE(steps.told.size(), 3); // at 1000, 2000 and 3000, five lines skipped
    QCOMPARE(steps.of, qint64(text.size()));
    in.seek(0);
    steps.last = steps.told.constLast();
    const Result<MeshScan> none = scanTextMesh(in, 1000, boundaries, steps);
    QVERIFY(!none.has_value() && none.error().stopped);
}

void TestAsciiMesh::whatIsNoPlainNumber()
{
    MeshBoundaries boundaries;
    scan("1 1 1\n1e400 -1e400 0\n0x10 2,5 3\nnan nan nan\n", &boundaries);
    QCOMPARE(boundaries.minX, 0.0);   // 0x10 is refused
    QVERIFY(boundaries.maxX > 1e308); // beyond the range is infinite
    QVERIFY(boundaries.minY < -1e308);
    QCOMPARE(boundaries.maxY, 1.0);
}

void TestAsciiMesh::closesTheListAtAHundredRows()
{
    MeshMessages messages(3);
    for (int line = 0; line < 99; ++line) {
        messages.addShortLine(line % 3);
        messages.endLine();
    }
    QCOMPARE(messages.rows().size(), 99);
    QCOMPARE(messages.rows()[0], QStringLiteral("Line 3: no item found."));
    QCOMPARE(messages.rows()[1], QStringLiteral("Line 4: only one item found."));
    QCOMPARE(messages.rows()[98], QStringLiteral("Line 101: only two items found."));
    messages.endLine(); // a good line counts, too
    messages.addShortLine(1);
    messages.endLine();
    QCOMPARE(messages.rows().size(), 101);
    QCOMPARE(messages.rows()[99], QStringLiteral("Line 103: only one item found."));
    QCOMPARE(messages.rows()[100], QStringLiteral("Number of error messages exceeded."));
    messages.addShortLine(1);
    messages.endLine();
    QCOMPARE(messages.rows().size(), 101);
    messages.add(QStringLiteral("last"));
    QCOMPARE(messages.rows().size(), 102);
}

QTEST_APPLESS_MAIN(TestAsciiMesh)
#include "test_asciimesh.moc"
