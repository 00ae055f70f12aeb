#include "iso8211/sio_8211forwarditerator.h"
#include "iso8211/sio_8211reader.h"
#include "support/heap.h"
#include "support/isofile.h"

#include <QTest>

#include <sstream>

namespace {

using isofile::Description;

const sio_8211Converter_BI16 converterBI16;
const sio_8211ConverterHints Hints = {{"ELEVATION", &converterBI16}};

const Description Cell = {"CELL", "CELL", "MODN!RCID!ROWI", "(A,2I)"};
const Description Values = {"CVLS", "CELL VALUES", "*ELEVATION", "(B(16))", "26"};

isofile::Field cellOf(int row)
{
    return {"CELL", isofile::units({"CEL0", std::to_string(row), std::to_string(row)})};
}

isofile::Field valuesOf(const std::vector<int> &values)
{
    isofile::Field field = {"CVLS", ""};
    for (const int value : values)
        field.bytes += isofile::bigEndian(value, 2);
    return field;
}

QString described(const sc_Subfield &subfield)
{
    QString text = QString::fromStdString(
        subfield.getName().empty() ? subfield.getMnemonic() : subfield.getName());
    text += '=';
    std::int32_t number = 0;
    double real = 0;
    std::string letters;
    if (subfield.getValue().getLong(number))
        text += QString::number(number);
    else if (subfield.getValue().getDouble(real))
        text += QString::number(real);
    else if (subfield.getA(letters))
        text += QString::fromStdString(letters);
    return text;
}

// "CELL[MODN=CEL0 RCID=1] CVLS[ELEVATION=7]"
QString described(const sc_Record &record)
{
    QStringList fields;
    for (const sc_Field &field : record) {
        QStringList subfields;
        for (const sc_Subfield &subfield : field)
            subfields.append(described(subfield));
        fields.append(QString::fromStdString(field.getMnemonic()) + '[' +
                      subfields.join(' ') + ']');
    }
    return fields.join(' ');
}

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

std::string smallTransfer(char leaderIdentifier)
{
    std::string file =
        isofile::ddr({Cell, Values}) +
        isofile::record({cellOf(1), valuesOf({100, -2})}, leaderIdentifier);
    if (leaderIdentifier == 'R')
        return file + isofile::fieldArea({cellOf(2), valuesOf({300, 4})});
    return file + isofile::record({cellOf(2), valuesOf({300, 4})});
}

const QString First = "CELL[MODN=CEL0 RCID=1 ROWI=1] "
                      "CVLS[ELEVATION=100] CVLS[ELEVATION=-2]";
const QString Second = "CELL[MODN=CEL0 RCID=2 ROWI=2] "
                       "CVLS[ELEVATION=300] CVLS[ELEVATION=4]";

} // namespace

class TestSioReader : public QObject {
    Q_OBJECT
private slots:
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
    void textsOfTheDescriptionAreHeldOnce();
    void textsOutliveTheirReader();
    void aWalkTellsWhatAReadRecordDoes_data();
    void aWalkTellsWhatAReadRecordDoes();
    void aLargeRecordTakesLittleMemory_data();
    void aLargeRecordTakesLittleMemory();
    void ofFieldsWithOneTagTheFirstHolds();
    void unknownTagsAreLookedUp();
    void emptySubfieldsCannotBlowUpARecord();
    void aRecordWithoutBytesEndsTheFile();
    void fieldsThatGoBackwardsEndTheFile();
    void aRecordIsReadAtItsPosition();
    void everyCutIsHarmless();
    void everyChangedByteIsHarmless();
};

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

void TestSioReader::textsOfTheDescriptionAreHeldOnce()
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

void TestSioReader::textsOutliveTheirReader()
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

void TestSioReader::aWalkTellsWhatAReadRecordDoes_data()
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

void TestSioReader::aWalkTellsWhatAReadRecordDoes()
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

void TestSioReader::aLargeRecordTakesLittleMemory_data()
{
    QTest::addColumn<QString>("labels");
    QTest::addColumn<QString>("controls");
    const QString letters(990, 'L');
    QTest::newRow("one byte a subfield") << letters << "(A(1))";
    QTest::newRow("subfields without bytes") << "a!" + letters << "(A(0),A(1))";
    QTest::newRow("delimited") << letters << "(A(;))";
}

// A field of 1,000,000 bytes whose label has as many letters as are read.
void TestSioReader::aLargeRecordTakesLittleMemory()
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

void TestSioReader::ofFieldsWithOneTagTheFirstHolds()
{
    const std::string file = isofile::ddr({{"AAAA", "first", "ONE", "(A)"},
                                           {"AAAA", "second", "TWO", "(I)"}}) +
                             isofile::record({{"AAAA", "7"}});
    QCOMPARE(recordsOf(file), QStringList("AAAA[ONE=7]"));
}

// Each of 60 records has 7,000 fields that none of 7,000 others describes. To compare
// each with each takes a minute.
void TestSioReader::unknownTagsAreLookedUp()
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
