#include "importers/sdtsconversion.h"

#include "importers/blankelevation.h"
#include "importers/sdtswalk.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

// Half of a progress: cells are walked twice.
class HalfOfProgress final : public Progress {
public:
    HalfOfProgress(Progress &whole, int half) : m_whole(whole), m_half(half) {}
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        return m_whole.step(done + m_half * of, 2 * of);
    }

private:
    Progress &m_whole;
    int m_half;
};

} // namespace

bool SdtsConversion::walk(const QString &fileName, int (*use)(sc_Subfield),
                          Progress &progress)
{
    // The format controls of the cells only say that they are binary.
    const CConverterType hints[] = {{m_state.atlb.c_str(), m_state.fmt.c_str()}, {}};
    const bool readsCells =
        use == UseSubfieldToDetermineFileSize || use == UseSubfieldToReadElevations;
    pSDTSImport = &m_state;
    UseSubfield = use;
    // A module that cannot be opened tells nothing, and is no failure.
    const bool goesOn = walkSDTS(QFile::encodeName(fileName).constData(),
                                 readsCells ? hints : nullptr, progress);
    UseSubfield = nullptr;
    pSDTSImport = nullptr;
    return goesOn;
}

void SdtsConversion::readCATDFile(const QString &catdFile)
{
    NoProgress unwatched; // these modules are small
    (void)walk(catdFile, UseSubfieldToDetermineFileNames, unwatched);
    // The modules lie beside their catalog, whatever folders it names.
    const QString folder = QFileInfo(catdFile).absolutePath() + '/';
    for (QString *const file : {&m_state.ddshFile, &m_state.ddomFile, &m_state.cel0File})
        *file = folder + QFileInfo(*file).fileName();
    (void)walk(m_state.ddshFile, UseSubfieldToDetermineUnits, unwatched);
    (void)walk(m_state.ddomFile, UseSubfieldToDetermineVoidAndFill, unwatched);
}

Result<ElevationImage> SdtsConversion::readCells(double calibrationFactor,
                                                 Progress &progress)
{
    m_state.col = m_state.maxCol = m_state.row = m_state.maxRow = 0;
    m_state.calibrationFactor = calibrationFactor;
    m_state.losses = {};
    HalfOfProgress first(progress, 0);
    if (!walk(m_state.cel0File, UseSubfieldToDetermineFileSize, first))
        return stopped();
    m_state.image = makeImage();
    if (m_state.image.isNull())
        return failed(QCoreApplication::translate("SdtsConversionDialog",
                                                  "Could not create output image."));
    HalfOfProgress second(progress, 1);
    const bool done = walk(m_state.cel0File, UseSubfieldToReadElevations, second);
    ElevationImage image = std::exchange(m_state.image, ElevationImage());
    if (!done)
        return stopped();
    return image;
}

ElevationImage SdtsConversion::makeImage() const
{
    // Two numbers of a small file may claim any extent, but the file has at least a
    // byte for each cell that is no gap.
    constexpr double AlwaysAllowed = 16.0 * 1024 * 1024;
    constexpr double PixelsPerByte = 4.0;
    // The column counter ends one beyond the last cell.
    const double columns = m_state.maxCol - 1.0;
    const double bytes = double(QFileInfo(m_state.cel0File).size());
    if (columns * m_state.maxRow > std::max(AlwaysAllowed, PixelsPerByte * bytes))
        return {};
    return blankElevation(columns, m_state.maxRow);
}

QString unknownUnitText(const SdtsTransfer &transfer)
{
    return QCoreApplication::translate("SdtsConversionDialog",
                                       "The DDSH file \"%1\"\n"
                                       "contains an unknown elevation unit: \"%2\"")
        .arg(transfer.ddshFile, transfer.inputUnit);
}
