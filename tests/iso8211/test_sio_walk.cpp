#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"
#include "iso8211/smalltransfer.h"
#include "support/heap.h"

#include <QTest>

#include <sstream>

using isofile::Description;
using namespace smalltransfer;

class TestSioWalk : public QObject {
    Q_OBJECT
private slots:
    void textsOfTheDescriptionAreHeldOnce();
    void textsOutliveTheirReader();
    void aWalkTellsWhatAReadRecordDoes_data();
    void aWalkTellsWhatAReadRecordDoes();
    void aLargeRecordTakesLittleMemory_data();
    void aLargeRecordTakesLittleMemory();
    void unknownTagsAreLookedUp();
};

void TestSioWalk::textsOfTheDescriptionAreHeldOnce()
{
    std::istringstream in(smallTransfer('D'));
    sio_8211Reader reader(in, &Hints);
    sc_Record record;
    QVERIFY(reader._fillScRecord(reader.firstRecord(), record));
    const sio_8211FieldFormat &values = reader.getSchema().back();
    QCOMPARE(record.size(), std::size_t(3));
    for (const std::size_t field : {1, 2}) {
        QCOMPARE(&record[field].getName(), &values.getName());
        QCOMPARE(&record[field].getMnemonic(), &values.getTag());
        QCOMPARE(&record[field][0].getMnemonic(), &values[0].getLabel());
    }
    const sc_Subfield copy = record[1][0];
    QCOMPARE(&copy.getMnemonic(), &values[0].getLabel());
}

void TestSioWalk::textsOutliveTheirReader()
{
    sc_Record record;
    {
        std::istringstream in(smallTransfer('D'));
        sio_8211Reader reader(in, &Hints);
        QVERIFY(reader._fillScRecord(reader.firstRecord(), record));
    }
    QCOMPARE(described(record), First);
    QCOMPARE(record[1].getName(), std::string("CELL VALUES"));
}

void TestSioWalk::aWalkTellsWhatAReadRecordDoes_data()
{
    const Description attributes = {"ATTP", "attributes", "ATLB!B", "(A,I)"};
    const Description unreadable = {"BADF", "", "ONE!TWO!THREE", "(I,X,I)"};
    QTest::addColumn<QByteArray>("file");
    const auto row = [](const char *name, const std::string &file) {
        QTest::newRow(name) << QByteArray::fromStdString(file);
    };
    row("leaders of their own", smallTransfer('D'));
    row("leaders reused", smallTransfer('R'));
    row("names of attributes",
        isofile::ddr({attributes}) +
            isofile::record({{"ATTP", isofile::units({"a", "7"})}, {"ATTP", "b"}}));
    row("a shorter record behind a longer one",
        isofile::ddr({Cell, Values}) +
            isofile::record({cellOf(1), valuesOf({1, 2, 3, 4, 5})}) +
            isofile::record({valuesOf({6})}));
    row("a field that cannot be read",
        isofile::ddr({Cell, unreadable}) +
            isofile::record({cellOf(1), {"BADF", isofile::units({"7", "8", "9"})}}) +
            isofile::record({cellOf(2)}));
    row("subfields without bytes",
        isofile::ddr({{"GREE", "", "a!a!a!a!b", "(4A(0),A(1))"}}) +
            isofile::record({{"GREE", std::string(9999, 'x')}, {"GREE", ""}}));
    row("nothing but a description", isofile::ddr({Cell}));
}

void TestSioWalk::aWalkTellsWhatAReadRecordDoes()
{
    QFETCH(QByteArray, file);
    static std::vector<sc_Subfield> seen;
    UseSubfield = [](sc_Subfield subfield) {
        seen.push_back(subfield);
        return 0;
    };
    std::ostringstream texts[2];
    std::vector<sc_Subfield> subfields[2];
    bool failed[2] = {};
    for (const int way : {0, 1}) {
        seen.clear();
        std::istringstream in(file.toStdString());
        sio_8211Reader reader(in, &Hints);
        sc_Record record;
        for (sio_8211ForwardIterator i(reader); i; ++i) {
            if (way == 0) {
                i.get(record);
                texts[0] << record << '\n';
            } else {
                i.walk(texts[1]);
            }
        }
        subfields[way] = seen;
        failed[way] = in.fail();
    }
    UseSubfield = nullptr;
    QCOMPARE(texts[1].str(), texts[0].str());
    QCOMPARE(failed[1], failed[0]);
    QCOMPARE(subfields[1].size(), subfields[0].size());
    for (std::size_t i = 0; i < subfields[0].size(); ++i)
        QCOMPARE(described(subfields[1][i]), described(subfields[0][i]));
}

void TestSioWalk::aLargeRecordTakesLittleMemory_data()
{
    QTest::addColumn<QString>("labels");
    QTest::addColumn<QString>("controls");
    const QString letters(990, 'L');
    QTest::newRow("one byte a subfield") << letters << "(A(1))";
    QTest::newRow("subfields without bytes") << "a!" + letters << "(A(0),A(1))";
    QTest::newRow("delimited") << letters << "(A(;))";
}

// A field of 1,000,000 bytes whose label has as many letters as are read.
void TestSioWalk::aLargeRecordTakesLittleMemory()
{
    QFETCH(QString, labels);
    QFETCH(QString, controls);
    constexpr std::size_t Bytes = 1000000;
    const Description description = {"CVLS", std::string(990, 'N'), labels.toStdString(),
                                     controls.toStdString()};
    const std::string record = "00000 D     00000   9904CVLS001000001000000000\x1E" +
                               std::string(Bytes, ';') + "\x1E";
    std::istringstream in(isofile::ddr({description}) + record);
    sio_8211Reader reader(in);
    sio_8211ForwardIterator i(reader);
    std::ostream nowhere(nullptr);
    heap::startPeak();
    QVERIFY(i.walk(nowhere));
    QVERIFY2(heap::peak() < Bytes / 10, qPrintable(QString::number(heap::peak())));
    heap::startPeak();
    sc_Record whole;
    QVERIFY(i.get(whole));
    QCOMPARE(whole.size(), Bytes);
    // The list of the fields is twice as large while it grows.
    QVERIFY2(heap::peak() < 400 * Bytes, qPrintable(QString::number(heap::peak())));
}

// Each of 60 records has 7,000 fields that none of 7,000 others describes. To compare
// each with each takes a minute.
void TestSioWalk::unknownTagsAreLookedUp()
{
    constexpr int Count = 7000;
    constexpr int Records = 60;
    const std::string file = isofile::manyFields(Count, 'K', 'L') +
                             isofile::manyFields(Count, 'U', 'R') +
                             std::string(Count * (Records - 1), '\x1E');
    std::istringstream in(file);
    sio_8211Reader reader(in);
    QCOMPARE(reader.getSchema().size(), std::size_t(Count));
    sc_Record record;
    int count = 0;
    for (sio_8211ForwardIterator i(reader); i; ++i, ++count) {
        QVERIFY(i.get(record));
        QCOMPARE(record.size(), std::size_t(0));
    }
    QCOMPARE(count, Records);
}

QTEST_APPLESS_MAIN(TestSioWalk)
#include "test_sio_walk.moc"
