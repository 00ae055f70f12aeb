#include "importers/sdtsconversion.h"
#include "importers/sdtsunits.h"
#include "importers/sdtswalk.h"
#include "importers/storedelevations.h"
#include "iso8211/sc_subfield.h"
#include "support/sdtstransfer.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <iostream>
#include <sstream>

namespace {

int numbered(int column, int row) { return 100 * (row + 1) + column; }

// Takes what a walk writes.
class CapturedOutput {
public:
    CapturedOutput() : m_former(std::cout.rdbuf(m_text.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(m_former); }
    CapturedOutput(const CapturedOutput &) = delete;
    CapturedOutput &operator=(const CapturedOutput &) = delete;
    [[nodiscard]] std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf *m_former;
};

} // namespace

class TestSdtsConversion : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void aTransferIsReadFromItsCatalog();
    void leadersMayBeReused();
    void modulesLieBesideTheirCatalog();
    void missingModulesLeaveWhatWasThere();
    void voidAndFillBecomeZero();
    void gapsStayAtZero();
    void cellsOutsideAreDropped();
    void cellsCountedFromZeroStandOnTheFirstRowAndColumn();
    void elevationsAreCalibrated();
    void anUnknownFormatGivesOnePixel();
    void cellsThatCannotBeReadGiveNoImage_data();
    void cellsThatCannotBeReadGiveNoImage();
    void aSmallFileCannotClaimALargeImage();
    void aCutFileKeepsItsWholeRows();
    void everyCutAndChangedByteIsHarmless();
    void cellsAreReadInStepsAndCanBeStopped();
    void aWalkWritesItsFields();
    void aWalkLeavesTheOutputAsItWas();
    void onlyKnownConvertersAreHints();
    void unitsEndWithThatOfTheUser();

private:
    QString write(const QString &name, const std::string &bytes) const
    {
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes.data(), qint64(bytes.size()));
        return path(name);
    }
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void writeTransfer(int columns, int rows, const sdts::Elevation &elevation) const
    {
        for (const auto &[name, bytes] : sdts::transfer(columns, rows, elevation))
            write(QString::fromStdString(name), bytes);
    }
    // Reads the transfer that lies in the folder; a null image if that fails.
    ElevationImage convert(SdtsConversion &conversion, double factor = 1.0) const
    {
        const CapturedOutput output;
        conversion.readCATDFile(path("TR01CATD.DDF"));
        NoProgress unwatched;
        return conversion.readCells(factor, unwatched).value_or(ElevationImage());
    }
    // What a conversion of these cells alone stores.
    QString pixelsOfCells(const std::string &cells) const
    {
        write("TR01CEL0.DDF", cells);
        SdtsConversion conversion;
        const ElevationImage image = convert(conversion);
        return image.isNull() ? QString("none") : pixelsOf(image);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSdtsConversion::init() { m_folder = std::make_unique<QTemporaryDir>(); }

void TestSdtsConversion::cleanup()
{
    QSettings("Kolvenar", "Zephrant").clear();
    QVERIFY(UseSubfield == nullptr);
}

void TestSdtsConversion::aTransferIsReadFromItsCatalog()
{
    writeTransfer(3, 2, numbered);
    SdtsConversion conversion;
    const ElevationImage image = convert(conversion);
    QCOMPARE(conversion.transfer().ddshFile, path("TR01DDSH.DDF"));
    QCOMPARE(conversion.transfer().ddomFile, path("TR01DDOM.DDF"));
    QCOMPARE(conversion.transfer().cel0File, path("TR01CEL0.DDF"));
    QCOMPARE(conversion.transfer().inputUnit, QString("meters"));
    QCOMPARE(conversion.transfer().fmt, std::string("BI16"));
    QCOMPARE(conversion.transfer().atlb, std::string("ELEVATION"));
    QCOMPARE(conversion.transfer().voidValue, -32767);
    QCOMPARE(conversion.transfer().fillValue, -32766);
    QCOMPARE(image.format(), QImage::Format_RGB888);
    QCOMPARE(pixelsOf(image), QString("100 101 102 | 200 201 202"));
}

void TestSdtsConversion::leadersMayBeReused()
{
    writeTransfer(3, 2, numbered);
    QCOMPARE(pixelsOfCells(sdts::cells(3, 4, numbered, 2, 'R')),
             QString("100 101 102 | 200 201 202 | 300 301 302 | 400 401 402"));
}

void TestSdtsConversion::modulesLieBesideTheirCatalog()
{
    writeTransfer(3, 2, numbered);
    write("TR01CATD.DDF",
          sdts::catalog({{"ddsh", "sub/dir/X.DDF"}, {"Cel0", "/etc/Y.DDF"}}));
    SdtsConversion conversion;
    const QString here = QDir::currentPath();
    QDir::setCurrent(m_folder->path());
    const CapturedOutput output;
    conversion.readCATDFile("TR01CATD.DDF");
    QDir::setCurrent(here);
    QCOMPARE(conversion.transfer().ddshFile, path("X.DDF"));
    QCOMPARE(conversion.transfer().cel0File, path("Y.DDF"));
    QCOMPARE(conversion.transfer().ddomFile, m_folder->path() + '/');
}

void TestSdtsConversion::missingModulesLeaveWhatWasThere()
{
    writeTransfer(3, 2, numbered);
    SdtsConversion conversion;
    QVERIFY(!convert(conversion).isNull());
    QFile::remove(path("TR01CATD.DDF"));
    QFile::remove(path("TR01DDSH.DDF"));
    QFile::remove(path("TR01DDOM.DDF"));
    QVERIFY(!convert(conversion).isNull());
    QCOMPARE(conversion.transfer().inputUnit, QString("meters"));
    QCOMPARE(conversion.transfer().voidValue, -32767);
    QFile::remove(path("TR01CEL0.DDF"));
    QVERIFY(convert(conversion).isNull());
}

void TestSdtsConversion::voidAndFillBecomeZero()
{
    const int elevations[] = {-32767, 5, -32766, 6};
    writeTransfer(4, 1, [&](int column, int) { return elevations[column]; });
    SdtsConversion conversion;
    QCOMPARE(pixelsOf(convert(conversion)), QString("0 5 0 6"));
}

void TestSdtsConversion::gapsStayAtZero()
{
    writeTransfer(1, 1, numbered);
    // Rows 1 and 3 only, of different lengths.
    std::string cells = isofile::ddr(
        {{"CELL", "", "ROWI!COLI", "(2I)"}, {"CVLS", "", "*ELEVATION", "(B(16))", "26"}});
    cells += isofile::record(
        {{"CELL", isofile::units({"1", "1"})}, {"CVLS", isofile::bigEndian(7, 2)}});
    cells +=
        isofile::record({{"CELL", isofile::units({"3", "2"})},
                         {"CVLS", isofile::bigEndian(8, 2) + isofile::bigEndian(9, 2)}});
    QCOMPARE(pixelsOfCells(cells), QString("7 0 0 | 0 0 0 | 0 8 9"));
}

void TestSdtsConversion::cellsOutsideAreDropped()
{
    SdtsState conversion;
    conversion.setElevation(5.0); // no image yet
    conversion.image = ElevationImage(2, 1, QImage::Format_RGB888);
    conversion.image.clear(0xFF000000);
    for (const int position : {-2147483647 - 1, -2147483647, -1, 3, 2147483647}) {
        conversion.col = conversion.row = position;
        conversion.setElevation(5.0);
    }
    QCOMPARE(pixelsOf(conversion.image), QString("0 0"));
}

// Half a pixel is added and the rest cut off, toward zero from either side: the position
// before the first is the first.
void TestSdtsConversion::cellsCountedFromZeroStandOnTheFirstRowAndColumn()
{
    const auto cell = [](int row, int column, int value) {
        return isofile::record(
            {{"CELL", isofile::units({std::to_string(row), std::to_string(column)})},
             {"CVLS", isofile::bigEndian(value, 2)}});
    };
    const std::string description = isofile::ddr(
        {{"CELL", "", "ROWI!COLI", "(2I)"}, {"CVLS", "", "*ELEVATION", "(B(16))", "26"}});
    writeTransfer(3, 2, numbered);
    QCOMPARE(pixelsOfCells(description + cell(0, 0, 7) + cell(2, 2, 8)),
             QString("7 0 | 0 8"));
    QCOMPARE(pixelsOfCells(description + cell(0, 2, 7) + cell(2, 0, 8)),
             QString("0 7 | 8 0"));
    QCOMPARE(pixelsOfCells(description + cell(1, 1, 6) + cell(0, 1, 7) + cell(2, 2, 8)),
             QString("7 0 | 0 8"));
    QCOMPARE(pixelsOfCells(description + cell(-1, 1, 7) + cell(2, 2, 8)),
             QString("0 0 | 0 8"));
}

void TestSdtsConversion::elevationsAreCalibrated()
{
    writeTransfer(3, 1, numbered);
    SdtsConversion conversion;
    const double factor = 1000.0 / 304.8; // 328.08, 331.36, 334.65
    QCOMPARE(pixelsOf(convert(conversion, factor)), QString("328 331 335"));
}

void TestSdtsConversion::anUnknownFormatGivesOnePixel()
{
    writeTransfer(3, 2, numbered);
    write("TR01DDSH.DDF", sdts::schema("METERS", "BI12"));
    SdtsConversion conversion;
    QCOMPARE(pixelsOf(convert(conversion)), QString("0"));
}

void TestSdtsConversion::cellsThatCannotBeReadGiveNoImage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("junk") << QByteArray(5000, 'x');
    QTest::newRow("description only")
        << QByteArray::fromStdString(sdts::cells(3, 0, numbered));
    QTest::newRow("rows without cells")
        << QByteArray::fromStdString(sdts::cells(0, 1, numbered));
}

void TestSdtsConversion::cellsThatCannotBeReadGiveNoImage()
{
    QFETCH(QByteArray, bytes);
    writeTransfer(3, 2, numbered);
    const QString pixels = pixelsOfCells(bytes.toStdString());
    // A row without cells still counts one, of no value.
    QCOMPARE(pixels,
             QTest::currentDataTag() == QString("rows without cells") ? "0" : "none");
}

void TestSdtsConversion::aSmallFileCannotClaimALargeImage()
{
    writeTransfer(1, 1, numbered);
    const auto claim = [](const std::string &row, const std::string &column) {
        return isofile::ddr({{"CELL", "", "ROWI!COLI", "(2I)"},
                             {"CVLS", "", "*ELEVATION", "(B(16))", "26"}}) +
               isofile::record({{"CELL", isofile::units({row, column})},
                                {"CVLS", isofile::bigEndian(7, 2)}});
    };
    QCOMPARE(pixelsOfCells(claim("30000", "30000")), QString("none"));
    QCOMPARE(pixelsOfCells(claim("2147483647", "2147483647")), QString("none"));
    QCOMPARE(pixelsOfCells(claim("-5", "1")), QString("none"));
    QVERIFY(pixelsOfCells(claim("1", "1000")).endsWith(" 7"));
}

void TestSdtsConversion::aCutFileKeepsItsWholeRows()
{
    writeTransfer(3, 3, numbered);
    const std::string whole = sdts::cells(3, 3, numbered);
    QCOMPARE(pixelsOfCells(whole.substr(0, whole.size() - 1)),
             QString("100 101 102 | 200 201 202"));
}

void TestSdtsConversion::everyCutAndChangedByteIsHarmless()
{
    for (const auto &[name, bytes] : sdts::transfer(2, 2, numbered)) {
        writeTransfer(2, 2, numbered);
        const QString file = QString::fromStdString(name);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            SdtsConversion conversion;
            write(file, bytes.substr(0, i));
            (void)convert(conversion);
            std::string changed = bytes;
            changed[i] = static_cast<char>(changed[i] ^ 0x15);
            write(file, changed);
            SdtsConversion second;
            (void)convert(second);
        }
    }
}

void TestSdtsConversion::cellsAreReadInStepsAndCanBeStopped()
{
    class Steps final : public Progress {
    public:
        QList<double> shares;
        qsizetype last = 1000;
        [[nodiscard]] bool step(qint64 done, qint64 of) override
        {
            shares << double(done) / double(of);
            return shares.size() < last;
        }
    };
    writeTransfer(20, 100, numbered);
    SdtsConversion conversion;
    const CapturedOutput output;
    conversion.readCATDFile(path("TR01CATD.DDF"));
    Steps steps;
    QVERIFY(conversion.readCells(1.0, steps).has_value());
    QVERIFY(steps.shares.size() > 6);
    QVERIFY(std::is_sorted(steps.shares.begin(), steps.shares.end()));
    QVERIFY(steps.shares.constLast() > 0.9 && steps.shares.constLast() <= 1.0);
    for (const qsizetype last : {qsizetype(1), steps.shares.size()}) {
        steps = {};
        steps.last = last;
        QVERIFY(conversion.readCells(1.0, steps).error().stopped);
        QCOMPARE(steps.shares.size(), last);
    }
}

void TestSdtsConversion::aWalkWritesItsFields()
{
    const QString file = write("TR01DDSH.DDF", sdts::schema());
    const CapturedOutput output;
    QCOMPARE(ReadSDTS(QFile::encodeName(file).constData(), nullptr), 0);
    QCOMPARE(output.text(), std::string("DDSH : DATA DICTIONARY/SCHEMA\n\n\n\n\n\n\n\n"));
    QCOMPARE(ReadSDTS(QFile::encodeName(path("none")).constData(), nullptr), -1);
    QCOMPARE(ReadSDTS(QFile::encodeName(m_folder->path()).constData(), nullptr), 0);
}

void TestSdtsConversion::aWalkLeavesTheOutputAsItWas()
{
    const QString file = write("TR01CEL0.DDF", sdts::cells(40000, 2, numbered));
    const CConverterType hints[] = {{"ELEVATION", "BI16"}, {}};
    const CapturedOutput output;
    std::streambuf *const buffer = std::cout.rdbuf();
    std::cout << "before\n";
    std::cout.setstate(std::ios::eofbit);
    QCOMPARE(ReadSDTS(QFile::encodeName(file).constData(), hints), 0);
    QVERIFY(std::cout.rdbuf() == buffer);
    QCOMPARE(std::cout.rdstate(), std::ios::eofbit);
    std::cout.clear();
    std::cout << "after\n";
    QVERIFY(output.text().starts_with("before\n"));
    QVERIFY(output.text().ends_with("\nafter\n"));
}

void TestSdtsConversion::onlyKnownConvertersAreHints()
{
    const QString file = write("TR01CEL0.DDF", sdts::cells(3, 1, numbered));
    static int count = 0;
    UseSubfield = [](sc_Subfield subfield) {
        count += subfield.getSubfieldType() == sc_Subfield::BI16 ? 1 : 0;
        return 0;
    };
    const CapturedOutput output;
    const auto countWith = [&](const std::vector<CConverterType> &hints) {
        count = 0;
        ReadSDTS(QFile::encodeName(file).constData(), hints.data());
        return count;
    };
    QCOMPARE(countWith({{"ELEVATION", "BI16"}, {}}), 3);
    QCOMPARE(countWith({{"ELEVATION", "bi16"}, {}}), 0);
    QCOMPARE(countWith({{"Elevation", "BI16"}, {}}), 0);
    QCOMPARE(countWith({{"ELEVATION", nullptr}, {"ELEVATION", "BI16"}, {}}), 3);
    QCOMPARE(countWith({{"", "BI16"}, {"ELEVATION", "BI16"}, {}}), 0);
    UseSubfield = nullptr;
}

void TestSdtsConversion::unitsEndWithThatOfTheUser()
{
    QCOMPARE(sdtsUnits().size(), 8);
    QCOMPARE(sdtsUnits().constFirst().name, QString("millimeters"));
    QCOMPARE(sdtsUnits().constLast().millimeters, 914.4);
    QSettings settings("Kolvenar", "Zephrant");
    settings.setValue("userDefinedUnitName", "Fathoms");
    settings.sync();
    QCOMPARE(sdtsUnits().size(), 9);
    QCOMPARE(sdtsUnits().constLast().millimeters, 1.0);
    settings.setValue("userDefinedUnitScale", 1828.8);
    settings.sync();
    QCOMPARE(sdtsUnits().constLast().name, QString("Fathoms"));
    QCOMPARE(sdtsUnits().constLast().millimeters, 1828.8);
}

QTEST_GUILESS_MAIN(TestSdtsConversion)
#include "test_sdtsconversion.moc"
