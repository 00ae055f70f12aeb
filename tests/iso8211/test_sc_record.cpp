#include "iso8211/sc_record.h"

#include <QTest>

#include <bit>
#include <sstream>
#include <vector>

namespace {

std::vector<sc_Subfield> walked;

int remember(sc_Subfield subfield)
{
    walked.push_back(subfield);
    return 0;
}

sc_Subfield subfieldOf(const std::string &mnemonic, std::int32_t value)
{
    sc_Subfield subfield;
    subfield.setMnemonic(mnemonic);
    subfield.setI(value);
    return subfield;
}

} // namespace

class TestScRecord : public QObject {
    Q_OBJECT
private slots:
    void aNewSubfieldIsAnIntegerWithoutValue();
    void aGetterOfAnotherTypeLeavesItsArgumentAlone();
    void anUnvaluedSubfieldKeepsItsType();
    void eachTypeGivesBackWhatWasSet();
    void aSingleKeepsItsBits_data();
    void aSingleKeepsItsBits();
    void aTextReplacesANumberAndBack();
    void signedAndUnsignedReadEachOther();
    void copiesOwnTheirTexts();
    void textsAreEqualOnlyToThemselves();
    void numbersCompareByTypeAndValue();
    void subfieldsCompareByAllTheyHold();
    void walkingCallsTheHookOncePerSubfield();
    void walkingGoesOnWhereTheStreamIsBad();
};

void TestScRecord::aNewSubfieldIsAnIntegerWithoutValue()
{
    const sc_Subfield subfield;
    QCOMPARE(subfield.getSubfieldType(), sc_Subfield::I);
    QCOMPARE(subfield.getValue().valueType(), sc_MultiTypeValue::None);
    QCOMPARE(subfield.getName(), std::string());
    QCOMPARE(subfield.getMnemonic(), std::string());
}

void TestScRecord::aGetterOfAnotherTypeLeavesItsArgumentAlone()
{
    sc_Subfield subfield;
    subfield.setR(2.5);
    std::int32_t number = 77;
    QVERIFY(!subfield.getI(number));
    QCOMPARE(number, 77);
    double real = 0;
    QVERIFY(!subfield.getS(real));
    QVERIFY(!subfield.getBFP64(real));
    QCOMPARE(real, 0.0);
    QVERIFY(subfield.getR(real));
    QCOMPARE(real, 2.5);
}

void TestScRecord::anUnvaluedSubfieldKeepsItsType()
{
    sc_Subfield subfield;
    subfield.setI(5);
    subfield.setUnvalued();
    std::int32_t number = 77;
    QVERIFY(!subfield.getI(number));
    QCOMPARE(number, 77);
    QCOMPARE(subfield.getSubfieldType(), sc_Subfield::I);
}

void TestScRecord::eachTypeGivesBackWhatWasSet()
{
    sc_Subfield subfield;
    std::int32_t number = 0;
    std::uint32_t positive = 0;
    double real = 0;
    std::string text;
    subfield.setBI8(-1);
    QVERIFY(subfield.getBI8(number) && number == -1 && !subfield.getBI16(number));
    subfield.setBI16(-2);
    QVERIFY(subfield.getBI16(number) && number == -2 && !subfield.getBI24(number));
    subfield.setBI24(-3);
    QVERIFY(subfield.getBI24(number) && number == -3 && !subfield.getBI32(number));
    subfield.setBI32(-4);
    QVERIFY(subfield.getBI32(number) && number == -4 && !subfield.getBI8(number));
    subfield.setBUI8(1);
    QVERIFY(subfield.getBUI8(positive) && positive == 1 && !subfield.getBUI16(positive));
    subfield.setBUI16(2);
    QVERIFY(subfield.getBUI16(positive) && positive == 2 && !subfield.getBUI24(positive));
    subfield.setBUI24(3);
    QVERIFY(subfield.getBUI24(positive) && positive == 3 && !subfield.getBUI32(positive));
    subfield.setBUI32(4294967295u);
    QVERIFY(subfield.getBUI32(positive) && positive == 4294967295u);
    subfield.setS(0.25);
    QVERIFY(subfield.getS(real) && real == 0.25);
    subfield.setBFP64(0.125);
    QVERIFY(subfield.getBFP64(real) && real == 0.125);
    subfield.setA("a");
    QVERIFY(subfield.getA(text) && text == "a" && !subfield.getC(text));
    subfield.setC("c");
    QVERIFY(subfield.getC(text) && text == "c" && !subfield.getA(text));
    QCOMPARE(int(subfield.getSubfieldType()), 4);
}

void TestScRecord::aSingleKeepsItsBits_data()
{
    QTest::addColumn<quint32>("bits");
    QTest::newRow("one") << 0x3F800000u;
    QTest::newRow("minus zero") << 0x80000000u;
    QTest::newRow("smallest") << 0x00000001u;
    QTest::newRow("infinite") << 0x7F800000u;
    QTest::newRow("no number") << 0x7FC12345u;
}

void TestScRecord::aSingleKeepsItsBits()
{
    QFETCH(quint32, bits);
    sc_Subfield subfield;
    subfield.setBFP32(std::bit_cast<float>(bits));
    float number = 0;
    QVERIFY(subfield.getBFP32(number));
    QCOMPARE(std::bit_cast<quint32>(number), bits);
    std::int32_t stored = 0;
    QVERIFY(subfield.getValue().getLong(stored));
    QCOMPARE(std::bit_cast<quint32>(stored), bits);
}

void TestScRecord::aTextReplacesANumberAndBack()
{
    sc_MultiTypeValue value;
    value.setDouble(1.5);
    value.setString("height");
    std::string text;
    double number = 7.0;
    QVERIFY(value.getString(text));
    QCOMPARE(text, std::string("height"));
    QVERIFY(!value.getDouble(number));
    value.setDouble(2.5);
    QVERIFY(!value.getString(text));
    QVERIFY(value.getDouble(number));
    QCOMPARE(number, 2.5);
    value.reset();
    QCOMPARE(value.valueType(), sc_MultiTypeValue::None);
}

void TestScRecord::signedAndUnsignedReadEachOther()
{
    sc_MultiTypeValue value;
    value.setUnsignedLong(42);
    std::int32_t number = 0;
    QVERIFY(!value.getLong(number)); // it is copied all the same
    QCOMPARE(number, 42);
    value.setLong(43);
    std::uint32_t positive = 0;
    QVERIFY(value.getUnsignedLong(positive));
    QCOMPARE(positive, 43u);
    value.setDouble(1.0);
    QVERIFY(!value.getLong(number));
    QVERIFY(!value.getUnsignedLong(positive));
    QCOMPARE(number, 42);
}

void TestScRecord::copiesOwnTheirTexts()
{
    sc_MultiTypeValue first;
    first.setString("first");
    sc_MultiTypeValue second = first;
    first.setString("changed");
    std::string text;
    QVERIFY(second.getString(text));
    QCOMPARE(text, std::string("first"));
    const sc_MultiTypeValue &same = second;
    second = same;
    QVERIFY(second.getString(text));
    QCOMPARE(text, std::string("first"));
}

void TestScRecord::textsAreEqualOnlyToThemselves()
{
    sc_MultiTypeValue first;
    first.setString("text");
    const sc_MultiTypeValue second = first;
    QVERIFY(!(first == second));
    const sc_MultiTypeValue &same = first;
    QVERIFY(first == same);
}

void TestScRecord::numbersCompareByTypeAndValue()
{
    sc_MultiTypeValue first;
    sc_MultiTypeValue second;
    QVERIFY(first == second);
    first.setLong(1);
    QVERIFY(!(first == second));
    second.setUnsignedLong(1);
    QVERIFY(!(first == second));
    second.setLong(1);
    QVERIFY(first == second);
    first.setDouble(0.0);
    second.setDouble(-0.0);
    QVERIFY(first == second);
}

void TestScRecord::subfieldsCompareByAllTheyHold()
{
    const sc_Subfield first = subfieldOf("ROWI", 3);
    QVERIFY(first == subfieldOf("ROWI", 3));
    QVERIFY(!(first == subfieldOf("ROWI", 4)));
    QVERIFY(!(first == subfieldOf("COLI", 3)));
    sc_Subfield other = first;
    other.setName("row");
    QVERIFY(!(first == other));
    other = first;
    other.setBI8(3);
    QVERIFY(!(first == other));
}

void TestScRecord::walkingCallsTheHookOncePerSubfield()
{
    sc_Field field;
    field.setMnemonic("CELL");
    field.setName("cell");
    field.push_back(subfieldOf("ROWI", 3));
    field.push_back(subfieldOf("COLI", 4));
    sc_Record record;
    record.push_back(field);
    sc_Module module;
    module.push_back(record);

    walked.clear();
    UseSubfield = remember;
    std::ostringstream text;
    text << module;
    UseSubfield = nullptr;
    QCOMPARE(text.str(), std::string("CELL : cell\n\n\n\n\n"));
    QCOMPARE(walked.size(), std::size_t(2));
    QVERIFY(walked[0] == subfieldOf("ROWI", 3));
    QVERIFY(walked[1] == subfieldOf("COLI", 4));

    text << module; // nobody listens: nothing is called
    QCOMPARE(walked.size(), std::size_t(2));
}

void TestScRecord::walkingGoesOnWhereTheStreamIsBad()
{
    walked.clear();
    UseSubfield = remember;
    std::ostringstream text;
    text.setstate(std::ios::badbit);
    text << subfieldOf("ROWI", 3);
    UseSubfield = nullptr;
    QCOMPARE(walked.size(), std::size_t(1));
    QCOMPARE(text.str(), std::string());
}

QTEST_APPLESS_MAIN(TestScRecord)
#include "test_sc_record.moc"
