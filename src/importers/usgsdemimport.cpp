#include "importers/usgsdemimport.h"

#include "base/truncate.h"
#include "importers/blankelevation.h"
#include "importers/numbers.h"
#include "importers/usgsdemreader.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cmath>

namespace {

// Keeps whole numbers of steps whole that a division leaves a trifle short.
constexpr double StepMargin = 0.0000000001;
constexpr double SuspiciousJump = 512.0;

double stepsOf(double distance, double resolution)
{
    return std::trunc(distance / resolution + StepMargin);
}

// Goes to the first profile: behind the first line feed or, where the records stand
// without, to the second record.
void skipHeader(QIODevice &in)
{
    constexpr qint64 RecordSize = 1024;
    in.setTextModeEnabled(false); // positions count every byte
    in.seek(0);
    const qint64 lineFeed = in.read(2 * RecordSize).indexOf('\n');
    in.seek(lineFeed < 0 ? qMin(RecordSize, in.size()) : lineFeed + 1);
    in.setTextModeEnabled(true);
}

// Stores a sample whose row may be any number; what lies outside is dropped.
void store(ElevationImage &image, int column, qint64 row, double z)
{
    // Row -1 counts as 0: the raster rounds positions before it tests them.
    if (row >= -1 && row < image.height())
        image.setElevation(column, static_cast<int>(row), z);
}

// The steps of one file among several, each as much as any other.
class ShareOfFiles final : public Progress {
public:
    ShareOfFiles(Progress &all, qint64 file, qint64 files)
        : m_all(all), m_file(file), m_files(files)
    {
    }
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        return m_all.step(m_file * of + done, m_files * of);
    }

private:
    Progress &m_all;
    qint64 m_file;
    qint64 m_files;
};

} // namespace

void UsgsDemMosaic::includeCorners(const UsgsDemData &data)
{
    for (const double easting : data.cornerEasting) {
        minEasting = std::min(minEasting, easting);
        maxEasting = std::max(maxEasting, easting);
    }
    for (const double northing : data.cornerNorthing) {
        minNorthing = std::min(minNorthing, northing);
        maxNorthing = std::max(maxNorthing, northing);
    }
}

void UsgsDemMosaic::includeResolution(const UsgsDemData &data)
{
    resolutionX = std::min(resolutionX, data.spatialResolution[0]);
    resolutionY = std::min(resolutionY, data.spatialResolution[1]);
}

ElevationImage UsgsDemMosaic::makeImage() const
{
    return blankElevation(stepsOf(maxEasting - minEasting, resolutionX),
                          stepsOf(maxNorthing - minNorthing, resolutionY));
}

int UsgsDemMosaic::columnOf(double easting) const
{
    return truncatedOrNearestNanLowest(stepsOf(easting - minEasting, resolutionX));
}

int UsgsDemMosaic::rowOf(double northing) const
{
    return truncatedOrNearestNanLowest(stepsOf(northing - minNorthing, resolutionY));
}

QString SuspiciousElevation::question() const
{
    return QCoreApplication::translate(
               "UsgsDemConversionDialog",
               "Suspicious elevation value:\nChanged from %1to %2 in "
               "(%3/%4).\nContinue checking?")
        .arg(wholeNumberText(previous), wholeNumberText(current))
        .arg(column)
        .arg(row);
}

UsgsDemImport::UsgsDemImport(int voidValue, UsgsDemQuestions &questions)
    : m_voidValue(voidValue), m_questions(questions)
{
}

Result<ElevationImage> UsgsDemImport::run(const QStringList &fileNames,
                                          Progress &progress)
{
    m_mosaic = {};
    m_losses = {};
    UsgsDemData data;
    for (const QString &fileName : fileNames) {
        parseDataHeader(data, fileName);
        m_mosaic.includeResolution(data);
    }
    ElevationImage image = m_mosaic.makeImage();
    for (qsizetype file = 0; file < fileNames.size(); ++file) {
        // The header shown is that of the file parsed last, not that of this one.
        if (!m_questions.confirmHeader(data))
            return stopped();
        ShareOfFiles share(progress, file, fileNames.size());
        const Result<qint64> positives = readData(data, fileNames[file], image, share);
        if (!positives)
            return tl::unexpected(positives.error());
    }
    return image;
}

bool UsgsDemImport::parseDataHeader(UsgsDemData &data, const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    data.read(file);
    m_mosaic.includeCorners(data);
    return true;
}

Result<qint64> UsgsDemImport::readData(UsgsDemData &data, const QString &fileName,
                                       ElevationImage &image, Progress &progress)
{
    m_questions.readingFile(fileName);
    parseDataHeader(data, fileName);
    QFile file(fileName);
    Result<qint64> positives = 0;
    if (file.open(QIODevice::ReadOnly | QIODevice::Text | QIODevice::Unbuffered))
        positives = readProfiles(file, data, image, progress);
    m_questions.readingFile({});
    return positives;
}

Result<qint64> UsgsDemImport::readProfiles(QIODevice &in, const UsgsDemData &data,
                                           ElevationImage &image, Progress &progress)
{
    skipHeader(in);
    m_checking = true;
    UsgsDemReader reader(in);
    const int last = data.numberOfColumns - 1;
    qint64 positives = 0;
    for (int p = 0; p <= last && !reader.isExhausted(); ++p) {
        if (!progress.step(p, data.numberOfColumns))
            return stopped();
        positives += readProfile(reader, p != last, image);
    }
    return positives;
}

qint64 UsgsDemImport::readProfile(UsgsDemReader &in, bool stored, ElevationImage &image)
{
    // Row, column, number of samples and of columns, which is always 1.
    int head[4];
    for (int &number : head)
        number = in.readInteger();
    const int count = head[2];
    const int column = m_mosaic.columnOf(in.readReal());
    const int lowest = m_mosaic.rowOf(in.readReal());
    for (int unused = 0; unused < 3; ++unused) // datum elevation, minimum, maximum
        (void)in.readReal();

    double previous = 0.0;
    qint64 positives = 0;
    for (int k = 0; k == 0 || k < count; ++k) {
        const double sample = in.ReadNumber();
        const bool isVoid = sample == m_voidValue;
        const double z = isVoid ? 0.0 : sample;
        if (in.isExhausted())
            return positives;
        // The last sample of a profile belongs to the neighbour, as the last profile.
        if (!stored || (k > 0 && k == count - 1))
            continue;
        const qint64 row = qint64(image.height()) - 1 - k - lowest;
        if (m_checking && k > 0 && std::abs(z - previous) >= SuspiciousJump)
            m_checking = m_questions.continueChecking({previous, z, column, row});
        store(image, column, row, z);
        m_losses.voids += isVoid ? 1 : 0;
        m_losses.countHeight(z);
        previous = z;
        if (z > 0.0)
            ++positives;
    }
    return positives;
}
