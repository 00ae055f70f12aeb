#include "iso8211/sio_8211ddrfield.h"
#include "iso8211/sio_8211field.h"
#include "iso8211/sio_8211fieldformat.h"
#include "iso8211/sio_8211formatcontrols.h"
#include "iso8211/sio_8211leader.h"

#include <QTest>

#include <sstream>

namespace {

using Format = sio_8211SubfieldFormat;

const sio_8211Converter_BI16 converterBI16;

// Type, width or delimiter, "+" for a converter and "-" for none.
QString described(const Format &format)
{
    const QString size =
        format.getFormat() == Format::fixed ? QString::number(format.getLength())
        : format.getDelimiter() == 0x1F     ? QString()
                                            : QString(QLatin1Char(format.getDelimiter()));
    return QString(QLatin1Char("AIRSCBX"[format.getType()])) + size +
           (format.getConverter() != nullptr ? '+' : '-');
}

std::vector<Format> subfieldsWithLabels(const QStringList &labels)
{
    std::vector<Format> subfields;
    for (const QString &label : labels)
        subfields.emplace_back().setLabel(label.toStdString());
    return subfields;
}

// A descriptive field as a file holds it.
sio_8211FieldFormat formatOf(const std::string &bytes, bool *ok)
{
    sio_8211DDRLeader leader;
    std::istringstream leaderBytes("000002L   0600000   2204");
    leaderBytes >> leader;
    sio_8211Field field(std::int32_t(bytes.size()));
    std::istringstream in(bytes + '\x1E');
    in >> field;
    sio_8211FieldFormat format;
    *ok =
        sio_8211MakeFieldFormat(format, sio_8211DDRField(leader, field), "CELL", nullptr);
    return format;
}

} // namespace

class TestSioFormatControls : public QObject {
    Q_OBJECT
private slots:
    void controlsFillTheSubfields_data();
    void controlsFillTheSubfields();
    void aHintGivesABinaryItsConverter();
    void otherLettersChangeNoType();
    void nestingAMillionDeepIsHarmless();
    void aFieldFormatTakesLabelsAndCodes_data();
    void aFieldFormatTakesLabelsAndCodes();
    void unknownCodesAreRefused_data();
    void unknownCodesAreRefused();
    void fieldFormatsCompareByTag();
    void aNewSubfieldFormatIsAVariableText();
};

void TestSioFormatControls::controlsFillTheSubfields_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("subfields"); // of three labels
    QTest::addColumn<bool>("isGood");
    const auto row = [](const char *text, const char *subfields, bool isGood) {
        QTest::newRow(text) << QByteArray(text) << QString(subfields) << isGood;
    };
    row("(A,I(5),R(,))", "A+ I5+ R,+", true);
    row("(3I(2))", "I2+ I2+ I2+", true);
    row("(2(I(2)))", "I2+ A- A-", true);
    row("(2(3(2I(4))))", "I4+ I4+ A-", true);
    row("((I,R))", "I+ R+ A-", true);
    row("(I,R)", "I+ R+ A-", true);
    row("(i(3))", "I3+ A- A-", true);
    row("(A(5))", "A5+ A- A-", true);
    row("(A( ),S(;))", "A + S;+ A-", true);
    row("(C,X,b(8))", "C- X- B8-", true);
    row("(0I,1R)", "I+ R+ A-", true);
    row("(2A,5I(3))", "A+ A+ I3+", true);
    row("(999999999999I(1))", "I1+ I1+ I1+", true);
    row("(A(99999999999))", "A2147483647+ A- A-", true);
    row("(I,I,I,R(4),A)", "I+ I+ I+", true);
    row("(I)\n(", "I+ A- A-", true);
    row("(I)\x1E", "I+ A- A-", true);
    row("(I)\x1F", "I+ A- A-", true);
    // What goes before a mistake holds.
    row("", "A- A- A-", false);
    row("I", "A- A- A-", false);
    row("()", "A- A- A-", false);
    row("(I", "I+ A- A-", false);
    row("(I))", "I+ A- A-", false);
    row("(I)x", "I+ A- A-", false);
    row("(I;R)", "I+ A- A-", false);
    row("(I,)", "I+ A- A-", false);
    row("(I(),R)", "A- A- A-", false);
    row("(I(-1))", "A- A- A-", false);
    row("(A(x))", "A- A- A-", false);
    row("(I(5,R)", "A- A- A-", false);
    row("(2(I,R))", "I+ A- A-", false);
    row("((A),I)", "A+ A- A-", false);
    row("(R,(I))", "R+ A- A-", false);
    row("(3)", "A- A- A-", false);
    row("( I)", "A- A- A-", false);
    row("(Z)", "A- A- A-", false);
}

void TestSioFormatControls::controlsFillTheSubfields()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, subfields);
    QFETCH(bool, isGood);
    std::vector<Format> formats = subfieldsWithLabels({"A", "B", "C"});
    QCOMPARE(sio_8211ParseFormatControls(text.toStdString(), formats, nullptr), isGood);
    QStringList found;
    for (const Format &format : formats)
        found.append(described(format));
    QCOMPARE(found.join(' '), subfields);
    QCOMPARE(formats[0].getLabel(), std::string("A"));
}

void TestSioFormatControls::aHintGivesABinaryItsConverter()
{
    const sio_8211ConverterHints hints = {{"ELEVATION", &converterBI16}};
    std::vector<Format> formats =
        subfieldsWithLabels({"ELEVATION", "Elevation", "ELEVATION"});
    QVERIFY(sio_8211ParseFormatControls("(3B(16))", formats, &hints));
    QCOMPARE(formats[0].getConverter(), &converterBI16);
    QCOMPARE(formats[1].getConverter(), nullptr);
    QCOMPARE(formats[2].getConverter(), &converterBI16);
    QCOMPARE(formats[2].getLength(), 16);
}

void TestSioFormatControls::otherLettersChangeNoType()
{
    Format format;
    setType('r', format);
    QCOMPARE(format.getType(), Format::R);
    setType('Q', format);
    setType('[', format);
    QCOMPARE(format.getType(), Format::R);
    setType('X', format);
    QCOMPARE(format.getType(), Format::X);
}

void TestSioFormatControls::nestingAMillionDeepIsHarmless()
{
    constexpr int Depth = 1000000;
    std::string text = "(";
    for (int i = 0; i < Depth; ++i)
        text += "2(";
    std::vector<Format> formats = subfieldsWithLabels({"A"});
    QVERIFY(!sio_8211ParseFormatControls(text, formats, nullptr));
    text += "I(7)" + std::string(Depth, ')');
    QVERIFY(!sio_8211ParseFormatControls(text, formats, nullptr));
    QVERIFY(sio_8211ParseFormatControls(text + ')', formats, nullptr));
    QCOMPARE(described(formats[0]), QString("I7+"));
    QVERIFY(!sio_8211ParseFormatControls(std::string(Depth, '('), formats, nullptr));
}

void TestSioFormatControls::aFieldFormatTakesLabelsAndCodes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("subfields");
    QTest::newRow("elementary")
        << QByteArray("0000;&CELL\x1FMODN\x1F(I)") << QString("MODN:I+");
    QTest::newRow("vector") << QByteArray("1600;&CELL\x1FMODN!RCID\x1F(A,I)")
                            << QString("MODN:A+ RCID:I+");
    QTest::newRow("array") << QByteArray("2600;&CELL\x1F*MODN!RCID\x1F(A,I)")
                           << QString("MODN:A+ RCID:I+");
    QTest::newRow("star of no array")
        << QByteArray("1600;&CELL\x1F*MODN\x1F(A)") << QString("*MODN:A+");
    QTest::newRow("empty label ends them") << QByteArray("1600;&CELL\x1F"
                                                         "A!!B\x1F(A,I)")
                                           << QString("A:A+");
    QTest::newRow("mark at the end") << QByteArray("1600;&CELL\x1F"
                                                   "A!B!\x1F(A,I)")
                                     << QString("A:A+ B:I+");
    QTest::newRow("no labels") << QByteArray("1600;&CELL\x1F\x1F(A,I)") << QString();
    QTest::newRow("no controls") << QByteArray("1600;&CELL\x1F"
                                               "A!B")
                                 << QString("A:A- B:A-");
}

void TestSioFormatControls::aFieldFormatTakesLabelsAndCodes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, subfields);
    bool ok = false;
    const sio_8211FieldFormat format = formatOf(bytes.toStdString(), &ok);
    QVERIFY(ok);
    QCOMPARE(format.getTag(), std::string("CELL"));
    QCOMPARE(format.getName(), std::string("CELL"));
    QCOMPARE(int(format.getDataStructCode()), bytes[0] - '0');
    QCOMPARE(int(format.getDataTypeCode()), bytes[1] - '0');
    QStringList found;
    for (const Format &subfield : format)
        found.append(QString::fromStdString(subfield.getLabel()) + ':' +
                     described(subfield));
    QCOMPARE(found.join(' '), subfields);
}

void TestSioFormatControls::unknownCodesAreRefused_data()
{
    QTest::addColumn<QByteArray>("codes");
    QTest::newRow("structure 4") << QByteArray("40");
    QTest::newRow("structure x") << QByteArray("x0");
    QTest::newRow("structure /") << QByteArray("/0");
    QTest::newRow("type 7") << QByteArray("07");
    QTest::newRow("type blank") << QByteArray("0 ");
}

void TestSioFormatControls::unknownCodesAreRefused()
{
    QFETCH(QByteArray, codes);
    bool ok = true;
    const sio_8211FieldFormat format =
        formatOf(codes.toStdString() + "00;&CELL\x1FMODN\x1F(A)", &ok);
    QVERIFY(!ok);
    QCOMPARE(format.getTag(), std::string("CELL"));
    QVERIFY(format.empty());
}

void TestSioFormatControls::fieldFormatsCompareByTag()
{
    sio_8211FieldFormat first;
    sio_8211FieldFormat second;
    QVERIFY(first == second);
    first.setTag("CELL");
    second.setTag("CVLS");
    second.setName("x");
    QVERIFY(first < second && second > first && !(first == second));
    QVERIFY(first == std::string("CELL") && first < std::string("D") &&
            first > std::string("B"));
    QCOMPARE(first.getFieldTerm(), ';');
    QCOMPARE(first.getUnitTerm(), '&');
    QVERIFY(!first.isRepeating());
    QCOMPARE(first.getDataStructCode(), sio_8211FieldFormat::elementary);
    QCOMPARE(first.getDataTypeCode(), sio_8211FieldFormat::implicit_point);
}

void TestSioFormatControls::aNewSubfieldFormatIsAVariableText()
{
    Format format;
    QCOMPARE(described(format), QString("A-"));
    QCOMPARE(int(format.getDelimiter()), 0x1F);
    format.setLength(5);
    QCOMPARE(format.getFormat(), Format::fixed);
    format.setDelimiter('\xC8');
    QCOMPARE(format.getFormat(), Format::variable);
    QCOMPARE(format.getDelimiter(), '\xC8');
}

QTEST_APPLESS_MAIN(TestSioFormatControls)
#include "test_sio_formatcontrols.moc"
