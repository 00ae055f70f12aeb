#include "importers/sdtssubfields.h"

#include "importers/storedelevations.h"

#include <QTest>

#include <string>
#include <vector>

namespace {

sc_Subfield textOf(const std::string &mnemonic, const std::string &text)
{
    sc_Subfield subfield;
    subfield.setMnemonic(mnemonic);
    subfield.setA(text);
    return subfield;
}

sc_Subfield numberOf(const std::string &mnemonic, double number)
{
    sc_Subfield subfield;
    subfield.setMnemonic(mnemonic);
    subfield.setR(number);
    return subfield;
}

} // namespace

class TestSdtsSubfields : public QObject {
    Q_OBJECT

private slots:
    void namesOfModulesComeBeforeTheirFiles();
    void theLastUnitOfTheSchemaHolds();
    void textsWithoutValueAreNone();
    void voidAndFillComeFromTheDomain_data();
    void voidAndFillComeFromTheDomain();
    void aDefinitionMustFollowItsValue();
    void everyNumericTypeIsAnElevation();
    void theExtentEndsOneBeyondTheLastCell();
    void countersDoNotOverflow();
};

void TestSdtsSubfields::namesOfModulesComeBeforeTheirFiles()
{
    SdtsState conversion;
    pSDTSImport = &conversion;
    UseSubfieldToDetermineFileNames(textOf("FILE", "early.ddf"));
    UseSubfieldToDetermineFileNames(textOf("Name", "DdSh"));
    UseSubfieldToDetermineFileNames(textOf("TYPE", "x"));
    UseSubfieldToDetermineFileNames(numberOf("FILE", 7.0));
    UseSubfieldToDetermineFileNames(textOf("FILE", "Schema.DDF"));
    UseSubfieldToDetermineFileNames(textOf("NAME", "IREF"));
    UseSubfieldToDetermineFileNames(textOf("FILE", "other.ddf"));
    pSDTSImport = nullptr;
    QCOMPARE(conversion.ddshFile, QString("Schema.DDF"));
    QCOMPARE(conversion.ddomFile, QString());
    QCOMPARE(conversion.cel0File, QString());
    QCOMPARE(conversion.moduleName, QString());
}

void TestSdtsSubfields::theLastUnitOfTheSchemaHolds()
{
    SdtsState conversion;
    pSDTSImport = &conversion;
    UseSubfieldToDetermineUnits(textOf("UNIT", "METERS"));
    UseSubfieldToDetermineUnits(textOf("unit", "Feet"));
    UseSubfieldToDetermineUnits(textOf("Fmt", "BI16"));
    UseSubfieldToDetermineUnits(textOf("ATLB", "Elevation"));
    UseSubfieldToDetermineUnits(numberOf("ATLB", 7.0));
    pSDTSImport = nullptr;
    QCOMPARE(conversion.inputUnit, QString("feet"));
    QCOMPARE(conversion.fmt, std::string("BI16"));
    QCOMPARE(conversion.atlb, std::string("Elevation"));
}

void TestSdtsSubfields::textsWithoutValueAreNone()
{
    sc_Subfield empty = textOf("UNIT", "");
    empty.setUnvalued();
    SdtsState conversion;
    pSDTSImport = &conversion;
    UseSubfieldToDetermineUnits(textOf("UNIT", "METERS"));
    UseSubfieldToDetermineUnits(empty);
    pSDTSImport = nullptr;
    QCOMPARE(conversion.inputUnit, QString("meters"));
}

void TestSdtsSubfields::voidAndFillComeFromTheDomain_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("definition");
    QTest::addColumn<int>("voidValue"); // 7 before
    QTest::addColumn<int>("fillValue"); // 8 before
    QTest::newRow("void") << "-32767"
                          << "VOID" << -32767 << 8;
    QTest::newRow("fill") << "-32766"
                          << "fill value" << 7 << -32766;
    QTest::newRow("both") << "12"
                          << "Fill and Void" << 12 << 12;
    QTest::newRow("neither") << "12"
                             << "minimum" << 7 << 8;
    QTest::newRow("half rounds up") << "2.5"
                                    << "void" << 3 << 8;
    QTest::newRow("half rounds down") << "-2.5"
                                      << "void" << -3 << 8;
    QTest::newRow("below the half") << "2.4999"
                                    << "void" << 2 << 8;
    QTest::newRow("beyond an int") << "1e20"
                                   << "void" << 2147483647 << 8;
    QTest::newRow("no number") << "none"
                               << "void" << 0 << 8;
}

void TestSdtsSubfields::voidAndFillComeFromTheDomain()
{
    QFETCH(QString, value);
    QFETCH(QString, definition);
    QFETCH(int, voidValue);
    QFETCH(int, fillValue);
    SdtsState conversion;
    conversion.voidValue = 7;
    conversion.fillValue = 8;
    pSDTSImport = &conversion;
    UseSubfieldToDetermineVoidAndFill(textOf("DVAL", value.toStdString()));
    UseSubfieldToDetermineVoidAndFill(textOf("DVDF", definition.toStdString()));
    pSDTSImport = nullptr;
    QCOMPARE(conversion.voidValue, voidValue);
    QCOMPARE(conversion.fillValue, fillValue);
}

void TestSdtsSubfields::aDefinitionMustFollowItsValue()
{
    SdtsState conversion;
    conversion.fillValue = 8;
    pSDTSImport = &conversion;
    UseSubfieldToDetermineVoidAndFill(numberOf("dval", -9999.0));
    QCOMPARE(conversion.moduleName, QString("-9999.0000000000"));
    UseSubfieldToDetermineVoidAndFill(textOf("dvdf", "void"));
    UseSubfieldToDetermineVoidAndFill(textOf("MODN", "DDOM"));
    UseSubfieldToDetermineVoidAndFill(textOf("dvdf", "fill"));
    pSDTSImport = nullptr;
    QCOMPARE(conversion.voidValue, -9999);
    QCOMPARE(conversion.fillValue, 0);
}

void TestSdtsSubfields::everyNumericTypeIsAnElevation()
{
    SdtsState conversion;
    conversion.image = ElevationImage(16, 1, QImage::Format_RGB888);
    conversion.image.clear(0xFF000009);
    conversion.col = conversion.row = 1;
    std::vector<sc_Subfield> subfields(15);
    subfields[0].setI(-1);
    subfields[1].setR(2.5);
    subfields[2].setS(-3.5);
    subfields[3].setBI8(-4);
    subfields[4].setBI16(5);
    subfields[5].setBI24(6);
    subfields[6].setBI32(7);
    subfields[7].setBUI8(4294967240u); // wraps to -56
    subfields[8].setBUI16(65534);
    subfields[9].setBUI24(10);
    subfields[10].setBUI32(11);
    subfields[11].setBFP32(-12.25F);
    subfields[12].setBFP64(13.75);
    subfields[13].setA("14.5 m");
    subfields[14].setC("15");
    pSDTSImport = &conversion;
    for (sc_Subfield &subfield : subfields) {
        subfield.setMnemonic("Elevation");
        UseSubfieldToReadElevations(subfield);
    }
    pSDTSImport = nullptr;
    QCOMPARE(pixelsOf(conversion.image),
             QString("-1 3 -4 -4 5 6 7 -56 65534 10 11 -12 14 15 0 9"));
    QCOMPARE(conversion.col, 16);
}

void TestSdtsSubfields::theExtentEndsOneBeyondTheLastCell()
{
    SdtsState conversion;
    pSDTSImport = &conversion;
    for (const double row : {1.0, 2.9}) {
        UseSubfieldToDetermineFileSize(numberOf("ROWI", row));
        UseSubfieldToDetermineFileSize(numberOf("COLI", 1.0));
        for (int i = 0; i < 3; ++i)
            UseSubfieldToDetermineFileSize(numberOf("ELEVATION", 500.0));
    }
    pSDTSImport = nullptr;
    QCOMPARE(conversion.maxCol, 4);
    QCOMPARE(conversion.maxRow, 2);
}

void TestSdtsSubfields::countersDoNotOverflow()
{
    SdtsState conversion;
    pSDTSImport = &conversion;
    for (const double number : {1e300, -1e300, 2147483647.0}) {
        UseSubfieldToDetermineFileSize(numberOf("ROWI", number));
        UseSubfieldToDetermineFileSize(numberOf("COLI", number));
        UseSubfieldToDetermineFileSize(numberOf("ELEVATION", 1.0));
        UseSubfieldToReadElevations(numberOf("ROWI", number));
        UseSubfieldToReadElevations(numberOf("COLI", number));
        UseSubfieldToReadElevations(numberOf("ELEVATION", 1.0));
    }
    pSDTSImport = nullptr;
    QCOMPARE(conversion.maxCol, 2147483647);
    QCOMPARE(conversion.maxRow, 2147483647);
}

QTEST_APPLESS_MAIN(TestSdtsSubfields)
#include "test_sdtssubfields.moc"
