#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"
#include "iso8211/smalltransfer.h"

#include <QTest>

#include <sstream>

using isofile::Description;
using namespace smalltransfer;

namespace {

// All records of a file; "!" marks one that could not be read to its end.
QStringList recordsOf(const std::string &file, bool *failed = nullptr)
{
    std::istringstream in(file);
    sio_8211Reader reader(in, &Hints);
    QStringList records;
    sc_Record record;
    for (sio_8211ForwardIterator i(reader); i; ++i) {
        const bool isWhole = i.get(record);
        records.append(described(record) + (isWhole ? "" : "!"));
    }
    if (failed != nullptr)
        *failed = in.fail();
    return records;
}

// One field of one record.
QString recordOf(const Description &description, const std::string &bytes)
{
    return recordsOf(isofile::ddr({description}) +
                     isofile::record({{description.tag, bytes}}))
        .join('|');
}

} // namespace

class TestSioReader : public QObject {
    Q_OBJECT
private slots:
    void theEndIsToldWithCauseAndRecord();
    void theSchemaHasTheFieldsOfData();
    void recordsComeInTheOrderOfTheFile_data();
    void recordsComeInTheOrderOfTheFile();
    void aDescriptionAloneHasNoRecords();
    void anEmptyOrForeignFileIsDoneAtOnce();
    void unknownTagsAreSkipped();
    void aFieldWithoutConverterEndsTheFile_data();
    void aFieldWithoutConverterEndsTheFile();
    void attributesAreNamed();
    void aShorterRecordLeavesNothingBehind();
    void aFailingRecordLeavesNothingBehind();
    void anIncompleteRepetitionIsReadAsFarAsItGoes_data();
    void anIncompleteRepetitionIsReadAsFarAsItGoes();
    void aFormatThatConsumesNothingIsReadOnce();
    void ofFieldsWithOneTagTheFirstHolds();
    void emptySubfieldsCannotBlowUpARecord();
    void aRecordWithoutBytesEndsTheFile();
    void fieldsThatGoBackwardsEndTheFile();
    void aRecordIsReadAtItsPosition();
    void everyCutIsHarmless();
    void everyChangedByteIsHarmless();
};

void TestSioReader::theEndIsToldWithCauseAndRecord()
{
    const auto stopOf = [](const std::string &file, bool withHints = true) {
        std::istringstream in(file);
        sio_8211Reader reader(in, withHints ? &Hints : nullptr);
        sio_8211ForwardIterator i(reader);
        for (sc_Record record; i; ++i)
            (void)i.get(record);
        return i.stop();
    };
    const std::string file = smallTransfer('D');
    QCOMPARE(stopOf(file), sio_8211Stop());
    QCOMPARE(stopOf(file).text(), std::string());
    QCOMPARE(stopOf("no module"), (sio_8211Stop{0, sio_8211Cause::Description}));
    QCOMPARE(stopOf(file.substr(0, file.size() - 2)).text(),
             std::string("record 2: the leader, the directory or a field is cut short or "
                         "none"));
    QCOMPARE(stopOf(file, false), (sio_8211Stop{1, sio_8211Cause::Subfield}));
    QCOMPARE(stopOf(isofile::ddr({Cell}) + isofile::record({}, 'R') + "xx"),
             (sio_8211Stop{2, sio_8211Cause::NoProgress}));
    QCOMPARE(stopOf(isofile::ddr({{"AAAA", "", "A", "(A)"}}) +
                    "00000 R     00000   2204AAAA0402AAAA0200\x1E" + "a\x1E" + "bcd\x1E"),
             (sio_8211Stop{1, sio_8211Cause::Backwards}));
}

void TestSioReader::theSchemaHasTheFieldsOfData()
{
    std::istringstream in(smallTransfer('D'));
    const sio_8211Reader reader(in, &Hints);
    QCOMPARE(reader.getSchema().size(), std::size_t(2));
    QCOMPARE(reader.getSchema().front().getTag(), std::string("CELL"));
    QCOMPARE(reader.getSchema().front().size(), std::size_t(3));
    QCOMPARE(reader.getSchema().back().getName(), std::string("CELL VALUES"));
}

void TestSioReader::recordsComeInTheOrderOfTheFile_data()
{
    QTest::addColumn<char>("leaderIdentifier");
    QTest::newRow("each with a directory") << 'D';
    QTest::newRow("the first directory reused") << 'R';
}

void TestSioReader::recordsComeInTheOrderOfTheFile()
{
    QFETCH(char, leaderIdentifier);
    QCOMPARE(recordsOf(smallTransfer(leaderIdentifier)), QStringList({First, Second}));
}

void TestSioReader::aDescriptionAloneHasNoRecords()
{
    QCOMPARE(recordsOf(isofile::ddr({Cell, Values})), QStringList());
}

void TestSioReader::anEmptyOrForeignFileIsDoneAtOnce()
{
    bool failed = false;
    QCOMPARE(recordsOf("", &failed), QStringList());
    QVERIFY(failed);
    QCOMPARE(recordsOf("x", &failed), QStringList());
    QCOMPARE(recordsOf(std::string(5000, '9'), &failed), QStringList());
    QVERIFY(failed);
    QCOMPARE(recordsOf(std::string(5000, '\0'), &failed), QStringList());
    QVERIFY(failed);
}

void TestSioReader::unknownTagsAreSkipped()
{
    const std::string file =
        isofile::ddr({Cell, Values}) +
        isofile::record(
            {{"0001", "    1"}, cellOf(1), {"XXXX", "unknown"}, valuesOf({100, -2})});
    QCOMPARE(recordsOf(file), QStringList({First}));
}

void TestSioReader::aFieldWithoutConverterEndsTheFile_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("controls");
    QTest::newRow("X") << "ELEVATION"
                       << "(X(2))";
    QTest::newRow("C") << "ELEVATION"
                       << "(C(2))";
    QTest::newRow("no hint") << "Elevation"
                             << "(B(16))";
    QTest::newRow("controls not understood") << "ELEVATION"
                                             << "{B(16)}";
}

void TestSioReader::aFieldWithoutConverterEndsTheFile()
{
    QFETCH(QString, label);
    QFETCH(QString, controls);
    const Description bad = {"CVLS", "", ("*" + label).toStdString(),
                             controls.toStdString(), "26"};
    const std::string file = isofile::ddr({Cell, bad}) +
                             isofile::record({cellOf(1), valuesOf({1, 2})}) +
                             isofile::record({cellOf(2), valuesOf({3, 4})});
    bool failed = false;
    QCOMPARE(recordsOf(file, &failed),
             QStringList({"CELL[MODN=CEL0 RCID=1 ROWI=1] CVLS[" + label + "=]!"}));
    QVERIFY(failed);
}

void TestSioReader::attributesAreNamed()
{
    for (const char *const tag : {"ATTP", "ATTS", "ATTX"}) {
        std::istringstream in(isofile::ddr({{tag, "", "ATLB", "(A)"}}) +
                              isofile::record({{tag, "text"}}));
        sio_8211Reader reader(in);
        sio_8211ForwardIterator i(reader);
        sc_Record record;
        QVERIFY(i.get(record));
        const sc_Subfield &subfield = record.at(0).at(0);
        const bool isAttribute = tag != std::string("ATTX");
        QCOMPARE(subfield.getName(), std::string(isAttribute ? "ATLB" : ""));
        QCOMPARE(subfield.getMnemonic(), std::string(isAttribute ? "" : "ATLB"));
    }
}

void TestSioReader::aShorterRecordLeavesNothingBehind()
{
    const std::string file = isofile::ddr({Cell, Values}) +
                             isofile::record({cellOf(1), valuesOf({1, 2, 3, 4, 5})}) +
                             isofile::record({valuesOf({6})});
    QCOMPARE(recordsOf(file).value(1), QString("CVLS[ELEVATION=6]"));
}

void TestSioReader::aFailingRecordLeavesNothingBehind()
{
    const Description bad = {"BADF", "", "ONE!TWO", "(I,X)"};
    const std::string file =
        isofile::ddr({Cell, Values, bad}) +
        isofile::record({cellOf(1), valuesOf({1, 2, 3, 4, 5})}) +
        isofile::record({{"BADF", isofile::units({"7", "8"})}, cellOf(2)});
    QCOMPARE(recordsOf(file).value(1), QString("BADF[ONE=7 TWO=]!"));
}

void TestSioReader::anIncompleteRepetitionIsReadAsFarAsItGoes_data()
{
    QTest::addColumn<QString>("labels");
    QTest::addColumn<QString>("controls");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("record");
    QTest::newRow("half a cell")
        << "ELEVATION"
        << "(B(16))" << QByteArray("\1\2\3") << "F[ELEVATION=258] F[ELEVATION=]";
    QTest::newRow("texts") << "A!B"
                           << "(A(2),A(3))" << QByteArray("aabbbccb")
                           << "F[A=aa B=bbb] F[A=cc B=b]";
    QTest::newRow("numbers") << "A!B"
                             << "(I(2),I(3))" << QByteArray("110222")
                             << "F[A=11 B=22] F[A=2 B=]";
    QTest::newRow("delimited") << "A!B"
                               << "(I,I)"
                               << QByteArray("1\x1F"
                                             "2\x1F"
                                             "3")
                               << "F[A=1 B=2] F[A=3 B=]";
    QTest::newRow("no bytes at all") << "A!B"
                                     << "(I,A(3))" << QByteArray() << "F[A= B=]";
    QTest::newRow("width beyond the field")
        << "A"
        << "(A(2147483647))" << QByteArray("abc") << "F[A=abc]";
    QTest::newRow("bits beyond the field")
        << "ELEVATION"
        << "(B(2147483647))" << QByteArray("\1\2\3") << "F[ELEVATION=258]";
}

void TestSioReader::anIncompleteRepetitionIsReadAsFarAsItGoes()
{
    QFETCH(QString, labels);
    QFETCH(QString, controls);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, record);
    const Description description = {"FFFF", "", labels.toStdString(),
                                     controls.toStdString()};
    QCOMPARE(recordOf(description, bytes.toStdString()).replace("FFFF", "F"), record);
}

void TestSioReader::aFormatThatConsumesNothingIsReadOnce()
{
    const Description narrow = {"CVLS", "", "ELEVATION", "(B(8))"};
    QCOMPARE(recordOf(narrow, "abcdef"), QString("CVLS[ELEVATION=]"));
    const Description noLabels = {"CVLS", "", "", "(I)"};
    QCOMPARE(recordOf(noLabels, "abcdef"), QString("CVLS[]"));
}

void TestSioReader::ofFieldsWithOneTagTheFirstHolds()
{
    const std::string file = isofile::ddr({{"AAAA", "first", "ONE", "(A)"},
                                           {"AAAA", "second", "TWO", "(I)"}}) +
                             isofile::record({{"AAAA", "7"}});
    QCOMPARE(recordsOf(file), QStringList("AAAA[ONE=7]"));
}

void TestSioReader::emptySubfieldsCannotBlowUpARecord()
{
    // 400 subfields of no width and one of one byte, over 50,000 bytes.
    std::string labels;
    for (int i = 0; i < 400; ++i)
        labels += "a!";
    const Description greedy = {"GREE", "", labels + "b", "(400A(0),A(1))"};
    std::istringstream in(isofile::ddr({greedy}) +
                          isofile::record({{"GREE", std::string(50000, 'x')}}));
    sio_8211Reader reader(in);
    sio_8211ForwardIterator i(reader);
    sc_Record record;
    QVERIFY(!i.get(record));
    QVERIFY(in.fail());
    QCOMPARE(i.stop(), (sio_8211Stop{1, sio_8211Cause::TooManyFields}));
    QVERIFY(record.size() < 1000);
}

void TestSioReader::aRecordWithoutBytesEndsTheFile()
{
    // The first record has no fields, so those that reuse it would be empty.
    const std::string file =
        isofile::ddr({Cell}) + isofile::record({}, 'R') + std::string(1000, 'x');
    QCOMPARE(recordsOf(file), QStringList({""}));
}

void TestSioReader::fieldsThatGoBackwardsEndTheFile()
{
    // Two entries with the second field before the first, reused from then on.
    const std::string file = isofile::ddr({{"AAAA", "", "A", "(A)"}}) +
                             "00000 R     00000   2204AAAA0402AAAA0200\x1E" + "a\x1E" +
                             "bcd\x1E" + "bcd\x1E" + "bcd\x1E";
    QCOMPARE(recordsOf(file), QStringList({"AAAA[A=bcd] AAAA[A=a]"}));
}

void TestSioReader::aRecordIsReadAtItsPosition()
{
    std::istringstream in(smallTransfer('D'));
    sio_8211Reader reader(in, &Hints);
    sc_Record record;
    QVERIFY(reader._fillScRecord(reader.firstRecord(), record));
    QCOMPARE(described(record), First);
    QVERIFY(!reader._fillScRecord(100000, record));
}

void TestSioReader::everyCutIsHarmless()
{
    for (const char leaderIdentifier : {'D', 'R'}) {
        const std::string file = smallTransfer(leaderIdentifier);
        for (std::size_t length = 0; length < file.size(); ++length) {
            const QStringList records = recordsOf(file.substr(0, length));
            QVERIFY(records.size() < 2);
            if (!records.isEmpty())
                QCOMPARE(records.first(), First);
        }
    }
}

void TestSioReader::everyChangedByteIsHarmless()
{
    for (const char leaderIdentifier : {'D', 'R'}) {
        const std::string file = smallTransfer(leaderIdentifier);
        for (std::size_t i = 0; i < file.size(); ++i)
            for (const char c : {'\0', '\xFF', '\x1E', '\x1F', '0', '9', '-', '('}) {
                std::string changed = file;
                changed[i] = c;
                QVERIFY(recordsOf(changed).size() < 10);
            }
    }
}

QTEST_APPLESS_MAIN(TestSioReader)
#include "test_sio_reader.moc"
