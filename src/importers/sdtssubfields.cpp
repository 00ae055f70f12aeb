#include "importers/sdtssubfields.h"

#include "base/truncate.h"
#include "importers/numbers.h"
#include "importers/sdtswalk.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

SdtsState *pSDTSImport = nullptr;

namespace {

// Whether a subfield goes by a name, which is in small letters; in any case.
bool isCalled(const sc_Subfield &subfield, std::string_view name)
{
    const auto isSame = [](char c, char small) {
        return (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == small;
    };
    const std::string &mnemonic = subfield.getMnemonic();
    return mnemonic.size() == name.size() &&
           std::equal(mnemonic.begin(), mnemonic.end(), name.begin(), isSame);
}

// 0 without a value, as for the types that hold no number.
double doubleOf(const sc_Subfield &subfield)
{
    std::int32_t number = 0;
    std::uint32_t positive = 0;
    double real = 0.0;
    float single = 0.0F;
    std::string text;
    switch (subfield.getSubfieldType()) {
    case sc_Subfield::A:
        subfield.getA(text);
        return leadingNumber(QByteArrayView(text.data(), qsizetype(text.size())));
    case sc_Subfield::C:
        return 0.0;
    case sc_Subfield::R:
    case sc_Subfield::S:
    case sc_Subfield::BFP64:
        subfield.getValue().getDouble(real);
        return real;
    case sc_Subfield::BFP32:
        subfield.getBFP32(single);
        return single;
    case sc_Subfield::BUI8:
    case sc_Subfield::BUI16:
    case sc_Subfield::BUI24:
    case sc_Subfield::BUI32:
        subfield.getValue().getUnsignedLong(positive);
        return positive;
    case sc_Subfield::I:
    case sc_Subfield::BI8:
    case sc_Subfield::BI16:
    case sc_Subfield::BI24:
    case sc_Subfield::BI32:
        subfield.getValue().getLong(number);
        return number;
    }
    return 0.0;
}

// Unsigned numbers beyond the signed ones wrap.
std::int32_t longOf(const sc_Subfield &subfield)
{
    std::uint32_t whole = 0;
    if (subfield.getSubfieldType() != sc_Subfield::BFP32 &&
        subfield.getValue().getUnsignedLong(whole))
        return static_cast<std::int32_t>(whole);
    return truncatedOrNearestNanLowest(doubleOf(subfield));
}

void nextColumn(int &column)
{
    if (column < std::numeric_limits<int>::max())
        ++column;
}

} // namespace

void SdtsState::setElevation(double value)
{
    constexpr int Lowest = std::numeric_limits<int>::min();
    if (image.isNull() || col == Lowest || row == Lowest)
        return; // below them there is no number, and surely no cell
    image.setElevation(col - 1, row - 1, value * calibrationFactor);
    losses.countHeight(value * calibrationFactor);
}

// By value, as UseSubfield hands its copy over.
// NOLINTBEGIN(performance-unnecessary-value-param): the type of the hook

int UseSubfieldToDetermineFileNames(sc_Subfield subfield)
{
    std::string text;
    if (!subfield.getA(text))
        return 0;
    SdtsState &import = *pSDTSImport;
    if (isCalled(subfield, "name")) {
        toLowerCaseSTD(text);
        const bool isWanted = text == "ddsh" || text == "ddom" || text == "cel0";
        import.moduleName = isWanted ? QString::fromStdString(text) : QString();
    } else if (isCalled(subfield, "file")) {
        const QString file = QFile::decodeName(text.c_str());
        if (import.moduleName == "ddsh")
            import.ddshFile = file;
        else if (import.moduleName == "ddom")
            import.ddomFile = file;
        else if (import.moduleName == "cel0")
            import.cel0File = file;
    }
    return 0;
}

int UseSubfieldToDetermineUnits(sc_Subfield subfield)
{
    std::string text;
    if (!subfield.getA(text))
        return 0;
    if (isCalled(subfield, "unit")) {
        toLowerCaseSTD(text);
        pSDTSImport->inputUnit = QString::fromLocal8Bit(text.c_str());
    } else if (isCalled(subfield, "fmt")) {
        pSDTSImport->fmt = text;
    } else if (isCalled(subfield, "atlb")) {
        pSDTSImport->atlb = text;
    }
    return 0;
}

int UseSubfieldToDetermineVoidAndFill(sc_Subfield subfield)
{
    SdtsState &import = *pSDTSImport;
    if (isCalled(subfield, "dval")) {
        import.moduleName = QString::number(doubleOf(subfield), 'f', 10);
    } else if (isCalled(subfield, "dvdf")) {
        std::string text;
        subfield.getA(text);
        toLowerCaseSTD(text);
        const int value =
            truncatedOrNearestNanLowest(std::round(import.moduleName.toDouble()));
        if (text.find("void") != std::string::npos)
            import.voidValue = value;
        if (text.find("fill") != std::string::npos)
            import.fillValue = value;
    } else {
        import.moduleName.clear();
    }
    return 0;
}

int UseSubfieldToDetermineFileSize(sc_Subfield subfield)
{
    SdtsState &import = *pSDTSImport;
    if (isCalled(subfield, "elevation")) {
        nextColumn(import.col);
        import.maxCol = std::max(import.maxCol, import.col);
    } else if (isCalled(subfield, "rowi")) {
        import.row = longOf(subfield);
        import.maxRow = std::max(import.maxRow, import.row);
    } else if (isCalled(subfield, "coli")) {
        import.col = longOf(subfield);
        import.maxCol = std::max(import.maxCol, import.col);
    }
    return 0;
}

int UseSubfieldToReadElevations(sc_Subfield subfield)
{
    SdtsState &import = *pSDTSImport;
    if (isCalled(subfield, "elevation")) {
        double value = doubleOf(subfield);
        const double read = value;
        if (std::trunc(value) == import.voidValue)
            value = 0.0;
        if (std::trunc(value) == import.fillValue)
            value = 0.0;
        // A 0 may be a height, where no value was told.
        import.losses.voids += read != value ? 1 : 0;
        import.setElevation(value);
        nextColumn(import.col);
    } else if (isCalled(subfield, "rowi")) {
        import.row = truncatedOrNearestNanLowest(doubleOf(subfield));
    } else if (isCalled(subfield, "coli")) {
        import.col = truncatedOrNearestNanLowest(doubleOf(subfield));
    }
    return 0;
}

// NOLINTEND(performance-unnecessary-value-param)
