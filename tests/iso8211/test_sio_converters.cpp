#include "iso8211/sc_subfield.h"
#include "iso8211/sio_8211converter.h"

#include <QTest>

#include <limits>

namespace {

const sio_8211Converter_A converterA;
const sio_8211Converter_C converterC;
const sio_8211Converter_I converterI;
const sio_8211Converter_R converterR;
const sio_8211Converter_S converterS;
const sio_8211Converter_BI8 converterBI8;
const sio_8211Converter_BI16 converterBI16;
const sio_8211Converter_BI24 converterBI24;
const sio_8211Converter_BI32 converterBI32;
const sio_8211Converter_BUI8 converterBUI8;
const sio_8211Converter_BUI16 converterBUI16;
const sio_8211Converter_BUI24 converterBUI24;
const sio_8211Converter_BUI32 converterBUI32;
const sio_8211Converter_BFP32 converterBFP32;
const sio_8211Converter_BFP64 converterBFP64;

using Converter = const sio_8211Converter *;

sc_Subfield made(Converter converter, const QByteArray &bytes, int length, int *consumed)
{
    sc_Subfield subfield;
    *consumed = converter->makeFixedSubfield(&subfield, bytes.constData(), length);
    return subfield;
}

} // namespace

Q_DECLARE_METATYPE(Converter)

class TestSioConverters : public QObject {
    Q_OBJECT
private slots:
    void aWholeNumberIsReadFromText_data();
    void aWholeNumberIsReadFromText();
    void anEmptyTextHasNoValue();
    void realNumbersAreReadFromText();
    void numbersBeyondTheRangeAreReadAsAStreamReadsThem_data();
    void numbersBeyondTheRangeAreReadAsAStreamReadsThem();
    void aTextEndsAtAZeroByte();
    void aTextOfTypeCIsStoredAsA();
    void binaryNumbersAreReadHighByteFirst_data();
    void binaryNumbersAreReadHighByteFirst();
    void aByteIsSignExtendedEvenAsUnsigned();
    void aWiderDeclarationSkipsItsSurplus();
    void aNarrowDeclarationSetsNothing();
    void singleAndDoubleAreStoredAsSingle();
    void aDoubleBeyondSinglesBecomesInfinite_data();
    void aDoubleBeyondSinglesBecomesInfinite();
    void variableLengthsEndAtTheDelimiter();
    void anEmptyVariableTextHasNoValue();
};

void TestSioConverters::aWholeNumberIsReadFromText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("blanks lead") << QByteArray("   42") << 42;
    QTest::newRow("blanks only") << QByteArray("   ") << 0;
    QTest::newRow("no number") << QByteArray("abc") << 0;
    QTest::newRow("negative") << QByteArray("-7") << -7;
    QTest::newRow("too great") << QByteArray("99999999999") << 2147483647;
}

void TestSioConverters::aWholeNumberIsReadFromText()
{
    QFETCH(QByteArray, text);
    QFETCH(int, number);
    int consumed = 0;
    const sc_Subfield subfield = made(&converterI, text, int(text.size()), &consumed);
    std::int32_t value = 99;
    QVERIFY(subfield.getI(value));
    QCOMPARE(value, number);
    QCOMPARE(consumed, int(text.size()));
}

void TestSioConverters::anEmptyTextHasNoValue()
{
    const std::pair<Converter, sc_Subfield::Type> converters[] = {
        {&converterA, sc_Subfield::A},
        {&converterI, sc_Subfield::I},
        {&converterR, sc_Subfield::R},
        {&converterS, sc_Subfield::S}};
    for (const auto &[converter, type] : converters)
        for (const int length : {0, -5}) {
            int consumed = 99;
            const sc_Subfield subfield = made(converter, "12", length, &consumed);
            QCOMPARE(consumed, 0);
            QCOMPARE(subfield.getSubfieldType(), type);
            QCOMPARE(subfield.getValue().valueType(), sc_MultiTypeValue::None);
        }
}

void TestSioConverters::realNumbersAreReadFromText()
{
    int consumed = 0;
    double value = 0;
    QVERIFY(made(&converterR, "1.5E3", 5, &consumed).getR(value));
    QCOMPARE(value, 1500.0);
    QCOMPARE(consumed, 5);
    QVERIFY(made(&converterS, "-0.25xx", 7, &consumed).getS(value));
    QCOMPARE(value, -0.25);
    QVERIFY(made(&converterR, "none", 4, &consumed).getR(value));
    QCOMPARE(value, 0.0);
}

void TestSioConverters::numbersBeyondTheRangeAreReadAsAStreamReadsThem_data()
{
    constexpr double Greatest = std::numeric_limits<double>::max();
    const QByteArray zeros(330, '0');
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("a large exponent") << QByteArray("1e999") << Greatest;
    QTest::newRow("below zero") << QByteArray("-1e999") << -Greatest;
    QTest::newRow("many digits") << "1" + zeros << Greatest;
    QTest::newRow("too many digits for their exponent")
        << "1" + zeros + "e-5" << Greatest;
    QTest::newRow("a small exponent") << QByteArray("1e-999") << 0.0;
    QTest::newRow("many zeros") << "0." + zeros + "1" << 0.0;
    QTest::newRow("too many zeros for their exponent") << "0." + zeros + "1e+5" << 0.0;
    QTest::newRow("many digits, small exponent") << "1" + zeros + "e-320" << 1e10;
    QTest::newRow("many zeros, large exponent") << "0." + zeros + "1e+330" << 0.1;
    QTest::newRow("the smallest") << QByteArray("4.9e-324") << 4.9e-324;
}

void TestSioConverters::numbersBeyondTheRangeAreReadAsAStreamReadsThem()
{
    QFETCH(QByteArray, text);
    QFETCH(double, number);
    int consumed = 0;
    double value = 7;
    QVERIFY(made(&converterR, text, int(text.size()), &consumed).getR(value));
    QVERIFY2(value == number, qPrintable(QString::number(value)));
}

void TestSioConverters::aTextEndsAtAZeroByte()
{
    int consumed = 0;
    std::string text;
    QVERIFY(made(&converterA, QByteArray("ab\0cd", 5), 5, &consumed).getA(text));
    QCOMPARE(text, std::string("ab"));
    QCOMPARE(consumed, 5);
}

void TestSioConverters::aTextOfTypeCIsStoredAsA()
{
    int consumed = 0;
    std::string text;
    const sc_Subfield subfield = made(&converterC, "0101", 4, &consumed);
    QVERIFY(!subfield.getC(text));
    QVERIFY(subfield.getA(text));
    QCOMPARE(text, std::string("0101"));
}

void TestSioConverters::binaryNumbersAreReadHighByteFirst_data()
{
    QTest::addColumn<Converter>("converter");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("number");
    const auto row = [](const char *name, Converter converter, int type,
                        const char *hex) -> QTestData & {
        return QTest::newRow(name) << converter << type << QByteArray::fromHex(hex);
    };
    row("BI8", &converterBI8, sc_Subfield::BI8, "FE") << qint64(-2);
    row("BI16", &converterBI16, sc_Subfield::BI16, "FFFE") << qint64(-2);
    row("BI24 lowest", &converterBI24, sc_Subfield::BI24, "800000") << qint64(-8388608);
    row("BI24 highest", &converterBI24, sc_Subfield::BI24, "7FFFFF") << qint64(8388607);
    row("BI24", &converterBI24, sc_Subfield::BI24, "010203") << qint64(66051);
    row("BI32", &converterBI32, sc_Subfield::BI32, "80000001") << qint64(-2147483647);
    row("BUI8", &converterBUI8, sc_Subfield::BUI8, "7F") << qint64(127);
    row("BUI16", &converterBUI16, sc_Subfield::BUI16, "FFFE") << qint64(65534);
    row("BUI24", &converterBUI24, sc_Subfield::BUI24, "FFFFFE") << qint64(16777214);
    row("BUI32", &converterBUI32, sc_Subfield::BUI32, "FFFFFFFE") << qint64(4294967294);
}

void TestSioConverters::binaryNumbersAreReadHighByteFirst()
{
    QFETCH(Converter, converter);
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, number);
    int consumed = 0;
    const int bits = int(bytes.size()) * 8;
    const sc_Subfield subfield = made(converter, bytes, bits, &consumed);
    QCOMPARE(consumed, int(bytes.size()));
    QCOMPARE(int(subfield.getSubfieldType()), type);
    if (type >= sc_Subfield::BUI8) {
        std::uint32_t value = 0;
        QVERIFY(subfield.getValue().getUnsignedLong(value));
        QCOMPARE(qint64(value), number);
    } else {
        std::int32_t value = 0;
        QVERIFY(subfield.getValue().getLong(value));
        QCOMPARE(qint64(value), number);
    }
}

void TestSioConverters::aByteIsSignExtendedEvenAsUnsigned()
{
    int consumed = 0;
    std::uint32_t value = 0;
    QVERIFY(made(&converterBUI8, "\xC8", 8, &consumed).getBUI8(value));
    QCOMPARE(value, 4294967240u);
}

void TestSioConverters::aWiderDeclarationSkipsItsSurplus()
{
    int consumed = 0;
    std::int32_t value = 0;
    QVERIFY(made(&converterBI16, QByteArray("\x01\x02\x03\x04"), 32, &consumed)
                .getBI16(value));
    QCOMPARE(value, 258);
    QCOMPARE(consumed, 4);
}

void TestSioConverters::aNarrowDeclarationSetsNothing()
{
    for (const int bits : {8, 15, 0, -8}) {
        int consumed = 99;
        const sc_Subfield subfield = made(&converterBI16, "\x01\x02", bits, &consumed);
        QCOMPARE(consumed, 0);
        QVERIFY(subfield == sc_Subfield());
    }
}

void TestSioConverters::singleAndDoubleAreStoredAsSingle()
{
    int consumed = 0;
    float single = 0;
    QVERIFY(made(&converterBFP32, QByteArray::fromHex("C0200000"), 32, &consumed)
                .getBFP32(single));
    QCOMPARE(single, -2.5f);
    const sc_Subfield narrowed =
        made(&converterBFP64, QByteArray::fromHex("3FB999999999999A"), 64, &consumed);
    QCOMPARE(consumed, 8);
    double value = 7.0;
    QVERIFY(!narrowed.getBFP64(value));
    QVERIFY(narrowed.getBFP32(single));
    QCOMPARE(single, 0.1f);
}

void TestSioConverters::aDoubleBeyondSinglesBecomesInfinite_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<float>("number");
    constexpr float Infinite = std::numeric_limits<float>::infinity();
    QTest::newRow("1e300") << QByteArray("7E37E43C8800759C") << Infinite;
    QTest::newRow("-1e300") << QByteArray("FE37E43C8800759C") << -Infinite;
    QTest::newRow("greatest single")
        << QByteArray("47EFFFFFE0000000") << 3.4028234664e38f;
    QTest::newRow("less than half a step above")
        << QByteArray("47EFFFFFEFFFFFFF") << 3.4028234664e38f;
    QTest::newRow("half a step above") << QByteArray("47EFFFFFF0000000") << Infinite;
    QTest::newRow("infinite") << QByteArray("7FF0000000000000") << Infinite;
}

void TestSioConverters::aDoubleBeyondSinglesBecomesInfinite()
{
    QFETCH(QByteArray, hex);
    QFETCH(float, number);
    int consumed = 0;
    float single = 0;
    QVERIFY(
        made(&converterBFP64, QByteArray::fromHex(hex), 64, &consumed).getBFP32(single));
    QVERIFY(single == number);
}

void TestSioConverters::variableLengthsEndAtTheDelimiter()
{
    QCOMPARE(converterA.findVariableSubfieldLength("ab,cd", 5, ','), 2);
    QCOMPARE(converterA.findVariableSubfieldLength("ab,cd", 2, ','), 2);
    QCOMPARE(converterA.findVariableSubfieldLength("abcd", 4, ','), 4);
    QCOMPARE(converterA.findVariableSubfieldLength(",b", 2, ','), 0);
    QCOMPARE(converterA.findVariableSubfieldLength("ab", 0, ','), 0);
    QCOMPARE(converterA.findVariableSubfieldLength("ab", -3, ','), 0);
    sc_Subfield subfield;
    std::int32_t value = 0;
    QCOMPARE(converterI.makeVarSubfield(&subfield, "42,17", 5, ','), 2);
    QVERIFY(subfield.getI(value));
    QCOMPARE(value, 42);
}

void TestSioConverters::anEmptyVariableTextHasNoValue()
{
    sc_Subfield subfield;
    subfield.setI(5);
    QCOMPARE(converterI.makeVarSubfield(&subfield, ",17", 3, ','), 0);
    std::int32_t value = 99;
    QVERIFY(!subfield.getI(value));
    QCOMPARE(value, 99);
}

QTEST_APPLESS_MAIN(TestSioConverters)
#include "test_sio_converters.moc"
