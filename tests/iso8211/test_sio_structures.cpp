#include "iso8211/sio_8211ddrfield.h"
#include "iso8211/sio_8211record.h"
#include "iso8211/sio_utils.h"
#include "support/isofile.h"

#include <QTest>

#include <sstream>

namespace {

const std::string Leader = "001672L   0600057   2204"; // entries of 4 + 2 + 2 bytes

std::string bytesOf(const sio_8211Field *field)
{
    return std::string(field->getData(), std::size_t(field->getDataLength()));
}

} // namespace

class TestSioStructures : public QObject {
    Q_OBJECT
private slots:
    void wholeNumbersAreReadAsFarAsTheyGo_data();
    void wholeNumbersAreReadAsFarAsTheyGo();
    void realNumbersAreReadAsAStreamDoes_data();
    void realNumbersAreReadAsAStreamDoes();
    void textsEndAtAZeroByte();
    void aLeaderIsTakenApart();
    void aShortLeaderChangesNothing();
    void blanksAndLettersInALeaderAreNoFailure();
    void aDirectoryWithoutEntriesIsARecordWithoutFields();
    void aDirectoryThatNeverEndsFails();
    void anEntryOfNoBytesFails();
    void aFieldNeedsItsTerminator();
    void aFieldBeyondTheFileTakesNoMemory();
    void fieldsOfADataRecordCountFromItsDirectory();
    void aReusingRecordIsItsFieldAreaOnly();
    void positionsAndLengthsMustBeSound_data();
    void positionsAndLengthsMustBeSound();
    void fieldsMayStandInAnyOrder();
    void variableSubfieldsEndAtTheirTerminator();
    void aDescriptiveFieldIsTakenApart();
    void textsOfADescriptiveFieldAreCutOff();
    void aDescriptiveFieldOfOneByteIsHarmless();
};

void TestSioStructures::wholeNumbersAreReadAsFarAsTheyGo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("digits") << QByteArray("00167") << 167;
    QTest::newRow("blanks lead") << QByteArray("   42") << 42;
    QTest::newRow("blanks only") << QByteArray("     ") << 0;
    QTest::newRow("letters") << QByteArray("ab") << 0;
    QTest::newRow("junk behind") << QByteArray("12ab") << 12;
    QTest::newRow("negative") << QByteArray("-12") << -12;
    QTest::newRow("plus") << QByteArray("+7") << 7;
    QTest::newRow("zero byte ends it") << QByteArray("1\0002", 3) << 1;
    QTest::newRow("nothing") << QByteArray() << 0;
    QTest::newRow("highest") << QByteArray("2147483647") << 2147483647;
    QTest::newRow("beyond") << QByteArray("2147483648") << 2147483647;
    QTest::newRow("lowest") << QByteArray("-2147483648") << -2147483647 - 1;
    QTest::newRow("far below") << QByteArray("-99999999999999999999") << -2147483647 - 1;
}

void TestSioStructures::wholeNumbersAreReadAsFarAsTheyGo()
{
    QFETCH(QByteArray, text);
    QFETCH(int, number);
    QCOMPARE(sio_Utils::getLong(("x" + text).constData(), 1, int(text.size())), number);
}

void TestSioStructures::realNumbersAreReadAsAStreamDoes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("exponent") << QByteArray("1.5E3") << 1500.0;
    QTest::newRow("blanks lead") << QByteArray("  -2.5 ") << -2.5;
    QTest::newRow("no fraction") << QByteArray("7.") << 7.0;
    QTest::newRow("no whole part") << QByteArray("+.25") << 0.25;
    QTest::newRow("point alone") << QByteArray(".") << 0.0;
    QTest::newRow("exponent without digits") << QByteArray("12e") << 0.0;
    QTest::newRow("exponent with a sign alone") << QByteArray("12e+") << 0.0;
    QTest::newRow("negative exponent") << QByteArray("125e-2") << 1.25;
    QTest::newRow("comma ends it") << QByteArray("1,5") << 1.0;
    QTest::newRow("words") << QByteArray("nan") << 0.0;
    QTest::newRow("no hexadecimals") << QByteArray("0x10") << 0.0;
    QTest::newRow("too great") << QByteArray("-1e999") << -1.7976931348623157e308;
    QTest::newRow("too small") << QByteArray("1e-999") << 0.0;
    QTest::newRow("nothing") << QByteArray() << 0.0;
}

void TestSioStructures::realNumbersAreReadAsAStreamDoes()
{
    QFETCH(QByteArray, text);
    QFETCH(double, number);
    QCOMPARE(sio_Utils::doubleOf(text.toStdString()), number);
}

void TestSioStructures::textsEndAtAZeroByte()
{
    QCOMPARE(sio_Utils::getString("xCELL", 1, 4), std::string("CELL"));
    QCOMPARE(sio_Utils::getString("CE\0LL", 0, 5), std::string("CE"));
    QCOMPARE(sio_Utils::getString("CELL", 0, 0), std::string());
}

void TestSioStructures::aLeaderIsTakenApart()
{
    std::istringstream in("001672LEV1060005712322x4");
    sio_8211DDRLeader leader;
    in >> leader;
    QVERIFY(in.good());
    QCOMPARE(leader.getRecordLength(), 167);
    QCOMPARE(leader.getInterchangeLevel(), '2');
    QCOMPARE(leader.getLeaderIdentifier(), 'L');
    QCOMPARE(leader.getInlineCodeExtensionIndicator(), 'E');
    QCOMPARE(leader.getVersionNumber(), 'V');
    QCOMPARE(leader.getAppIndicator(), '1');
    QCOMPARE(leader.getFieldControlLength(), 6);
    QCOMPARE(leader.getBaseAddrOfFieldArea(), 57);
    QCOMPARE(leader.getSizeOfFieldLengthField(), 2);
    QCOMPARE(leader.getSizeOfFieldPosField(), 2);
    QCOMPARE(leader.getSizeOfFieldTagField(), 4);
}

void TestSioStructures::aShortLeaderChangesNothing()
{
    sio_8211DDRLeader leader;
    std::istringstream whole(Leader);
    whole >> leader;
    std::istringstream cut("009992R   090004"); // 20 bytes would be as short
    cut >> leader;
    QVERIFY(cut.fail());
    QCOMPARE(leader.getRecordLength(), 167);
    QCOMPARE(leader.getLeaderIdentifier(), 'L');
    QCOMPARE(leader.getBaseAddrOfFieldArea(), 57);
}

void TestSioStructures::blanksAndLettersInALeaderAreNoFailure()
{
    std::istringstream in("  88  D     00a49   x5 4");
    sio_8211DRLeader leader;
    in >> leader;
    QVERIFY(in.good());
    QCOMPARE(leader.getRecordLength(), 88);
    QCOMPARE(leader.getBaseAddrOfFieldArea(), 0);
    QCOMPARE(leader.getSizeOfFieldLengthField(), 0);
    QCOMPARE(leader.getSizeOfFieldPosField(), 5);
}

void TestSioStructures::aDirectoryWithoutEntriesIsARecordWithoutFields()
{
    std::istringstream in("00025 D     00025   2204\x1E");
    sio_8211DR record;
    in >> record;
    QVERIFY(in.good());
    QCOMPARE(record.getDirectory().size(), std::size_t(0));
    QCOMPARE(record.getFieldArea().size(), std::size_t(0));
}

void TestSioStructures::aDirectoryThatNeverEndsFails()
{
    std::istringstream cut("00025 D     00025   2204CELL1100CVLS");
    sio_8211DR record;
    cut >> record;
    QVERIFY(cut.fail());

    std::istringstream between("00025 D     00025   2204CELL1100");
    between >> record;
    QVERIFY(between.fail());

    // Longer than five digits can tell, so no directory.
    std::istringstream endless("00025 D     00025   1100" + std::string(300000, '1'));
    endless >> record;
    QVERIFY(endless.fail());
    QVERIFY(record.getDirectory().size() < 50001);
}

void TestSioStructures::anEntryOfNoBytesFails()
{
    std::istringstream in("00025 D     00025   0000CELL1100\x1E");
    sio_8211DR record;
    in >> record;
    QVERIFY(in.fail());
}

void TestSioStructures::aFieldNeedsItsTerminator()
{
    sio_8211Field field(3);
    std::istringstream good("abc\x1E");
    good >> field;
    QVERIFY(good.good());
    QCOMPARE(bytesOf(&field), std::string("abc"));

    for (const char *const text : {"abcd", "abc", "ab", ""}) {
        sio_8211Field short3(3);
        std::istringstream bad(text);
        bad >> short3;
        QVERIFY2(bad.fail(), text);
    }
    sio_8211Field negative(-1);
    std::istringstream bad("abc\x1E");
    bad >> negative;
    QVERIFY(bad.fail());
    QCOMPARE(negative.getDataLength(), 0);
}

void TestSioStructures::aFieldBeyondTheFileTakesNoMemory()
{
    sio_8211Field field(2000000000);
    std::istringstream in("abc\x1E");
    in >> field;
    QVERIFY(in.fail());
    QCOMPARE(field.getDataLength(), 4); // what was there
}

void TestSioStructures::fieldsOfADataRecordCountFromItsDirectory()
{
    // The base address is 49 in truth.
    std::istringstream in("00060 D     00017   2204CELL0300CVLS0403\x1E"
                          "ab\x1Exyz\x1E");
    sio_8211DR record;
    in >> record;
    QVERIFY(in.good());
    QCOMPARE(record.getFieldArea().size(), std::size_t(2));
    QCOMPARE(record.getDirectory()[1].getTag(), std::string("CVLS"));
    QCOMPARE(bytesOf(record.getDirectory()[0].getField()), std::string("ab"));
    QCOMPARE(bytesOf(record.getDirectory()[1].getField()), std::string("xyz"));
}

void TestSioStructures::aReusingRecordIsItsFieldAreaOnly()
{
    std::istringstream in("00060 R     00017   2204CELL0300CVLS0403\x1E"
                          "ab\x1Exyz\x1E"
                          "cd\x1Euvw\x1E");
    sio_8211DR record;
    in >> record;
    record.reuseLeaderAndDirectory(true);
    in >> record;
    QVERIFY(in.good());
    QCOMPARE(record.getLeader().getLeaderIdentifier(), 'R');
    QCOMPARE(record.getFieldArea().size(), std::size_t(2));
    QCOMPARE(bytesOf(record.getDirectory()[0].getField()), std::string("cd"));
    QCOMPARE(bytesOf(record.getDirectory()[1].getField()), std::string("uvw"));
}

void TestSioStructures::positionsAndLengthsMustBeSound_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<int>("fieldsRead");
    QTest::newRow("length 0") << QByteArray("CELL0000") << 0;
    QTest::newRow("negative length") << QByteArray("CELL-300") << 0;
    QTest::newRow("negative position") << QByteArray("CELL03-1") << 0;
    QTest::newRow("position beyond the file") << QByteArray("CELL0399") << 0;
    QTest::newRow("length beyond the file") << QByteArray("CELL9900") << 0;
    QTest::newRow("the same field twice") << QByteArray("CELL0300CELL0300") << 1;
    QTest::newRow("second field bad") << QByteArray("CELL0300CVLS0503") << 1;
}

void TestSioStructures::positionsAndLengthsMustBeSound()
{
    QFETCH(QByteArray, entries);
    QFETCH(int, fieldsRead);
    std::istringstream in("00060 D     00017   2204" + entries.toStdString() +
                          "\x1E"
                          "ab\x1Exyz\x1E");
    sio_8211DR record;
    in >> record;
    QVERIFY(in.fail());
    int read = 0;
    for (const sio_8211DirEntry &entry : record.getDirectory())
        read += entry.getField() != nullptr ? 1 : 0;
    QCOMPARE(read, fieldsRead);
}

void TestSioStructures::fieldsMayStandInAnyOrder()
{
    std::istringstream in("00060 D     00017   2204CVLS0403CELL0300\x1E"
                          "ab\x1Exyz\x1E");
    sio_8211DR record;
    in >> record;
    QVERIFY(in.good());
    QCOMPARE(bytesOf(record.getDirectory()[0].getField()), std::string("xyz"));
    QCOMPARE(bytesOf(record.getDirectory()[1].getField()), std::string("ab"));
    QCOMPARE(record.endOfFields(), std::int64_t(41 + 7));
}

void TestSioStructures::variableSubfieldsEndAtTheirTerminator()
{
    sio_8211Field field(7);
    std::istringstream in("ab\x1F\x1F"
                          "cde\x1E");
    in >> field;
    QVERIFY(in.good());
    std::string text = "old";
    std::int32_t offset = 0;
    QVERIFY(field.getVariableSubfield(text, offset, 0x1F, 999));
    QCOMPARE(text, std::string("ab"));
    QCOMPARE(offset, 3);
    QVERIFY(field.getVariableSubfield(text, offset, 0x1F, 999));
    QCOMPARE(text, std::string());
    QCOMPARE(offset, 4);
    QVERIFY(field.getVariableSubfield(text, offset, 0x1F, 999));
    QCOMPARE(text, std::string("cde"));
    QCOMPARE(offset, 11); // beyond the end by the way it is counted
    QVERIFY(!field.getVariableSubfield(text, offset, 0x1F, 999));
    offset = -1;
    QVERIFY(!field.getVariableSubfield(text, offset, 0x1F, 999));
    QCOMPARE(text, std::string("cde"));
}

void TestSioStructures::aDescriptiveFieldIsTakenApart()
{
    std::istringstream in(isofile::ddr({{"CELL", "CELL", "MODN!RCID", "(A,I)", "26"}}));
    sio_8211DDR ddr;
    in >> ddr;
    QVERIFY(in.good());
    QCOMPARE(ddr.getDirectory().size(), std::size_t(3));
    const sio_8211DDRField field(ddr.getLeader(), *ddr.getDirectory()[2].getField());
    QCOMPARE(field.getDataStructCode(), '2');
    QCOMPARE(field.getDataTypeCode(), '6');
    QCOMPARE(field.getFieldControlLength(), 6);
    QCOMPARE(field.getDataFieldName(), std::string("CELL"));
    QCOMPARE(field.getArrayDescriptor(), std::string("MODN!RCID"));
    QCOMPARE(field.getFormatControls(), std::string("(A,I)"));
    const sio_8211DDRField identifier(ddr.getLeader(), *ddr.getDirectory()[1].getField());
    QCOMPARE(identifier.getDataFieldName(), std::string("DDF RECORD IDENTIFIER"));
    QCOMPARE(identifier.getFormatControls(), std::string());
}

void TestSioStructures::textsOfADescriptiveFieldAreCutOff()
{
    std::istringstream in(
        isofile::ddr({{"CELL", std::string(5000, 'n'), "MODN", "(A)"}}));
    sio_8211DDR ddr;
    in >> ddr;
    QVERIFY(in.good());
    const sio_8211DDRField field(ddr.getLeader(), *ddr.getDirectory()[2].getField());
    QCOMPARE(field.getDataFieldName(), std::string(999, 'n'));
    QCOMPARE(field.getArrayDescriptor(), std::string("MODN"));
}

void TestSioStructures::aDescriptiveFieldOfOneByteIsHarmless()
{
    sio_8211Field data(1);
    std::istringstream in("1\x1E");
    in >> data;
    const sio_8211DDRField field(sio_8211DDRLeader(), data);
    QCOMPARE(field.getDataStructCode(), '1');
    QCOMPARE(field.getDataTypeCode(), ' ');
    QCOMPARE(field.getDataFieldName(), std::string("1"));
}

QTEST_APPLESS_MAIN(TestSioStructures)
#include "test_sio_structures.moc"
