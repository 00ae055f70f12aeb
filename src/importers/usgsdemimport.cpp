#include "importers/usgsdemimport.h"

#include "base/truncate.h"
#include "importers/blankelevation.h"
#include "importers/usgsdemreader.h"

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
void store(ElevationImage *image, int column, qint64 row, double z)
{
    // Row -1 counts as 0: the raster rounds positions before it tests them.
    if (row >= -1 && row < image->height())
        image->setElevation(column, static_cast<int>(row), z);
}

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

UsgsDemImport::UsgsDemImport(int voidValue, UsgsDemListener &listener)
    : m_voidValue(voidValue), m_listener(listener)
{
}

bool UsgsDemImport::run(const QStringList &fileNames, ElevationImage *image)
{
    m_mosaic = {};
    UsgsDemData data;
    for (const QString &fileName : fileNames) {
        parseDataHeader(&data, fileName);
        m_mosaic.includeResolution(data);
    }
    *image = m_mosaic.makeImage();
    qint64 positiveCount = 0;
    for (const QString &fileName : fileNames) {
        // The header shown is that of the file parsed last, not that of this one.
        if (!m_listener.confirmHeader(data))
            return false;
        readData(&data, fileName, image, &positiveCount);
    }
    return true;
}

bool UsgsDemImport::parseDataHeader(UsgsDemData *data, const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    data->read(file);
    m_mosaic.includeCorners(*data);
    return true;
}

bool UsgsDemImport::readData(UsgsDemData *data, const QString &fileName,
                             ElevationImage *image, qint64 *positiveCount)
{
    m_listener.readingFile(fileName);
    parseDataHeader(data, fileName);
    QFile file(fileName);
    const bool opened =
        file.open(QIODevice::ReadOnly | QIODevice::Text | QIODevice::Unbuffered);
    if (opened)
        readProfiles(file, *data, image, positiveCount);
    m_listener.readingFile({});
    return opened;
}

void UsgsDemImport::readProfiles(QIODevice &in, const UsgsDemData &data,
                                 ElevationImage *image, qint64 *positiveCount)
{
    skipHeader(in);
    m_checking = true;
    UsgsDemReader reader(in);
    const int last = data.numberOfColumns - 1;
    for (int p = 0; p <= last && !reader.isExhausted(); ++p)
        readProfile(reader, p != last, image, positiveCount);
}

double UsgsDemImport::readSample(UsgsDemReader &in) const
{
    const double z = in.ReadNumber();
    return z == m_voidValue ? 0.0 : z;
}

void UsgsDemImport::readProfile(UsgsDemReader &in, bool stored, ElevationImage *image,
                                qint64 *positiveCount)
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
    for (int k = 0; k == 0 || k < count; ++k) {
        const double z = readSample(in);
        if (in.isExhausted())
            return;
        // The last sample of a profile belongs to the neighbour, as the last profile.
        if (!stored || (k > 0 && k == count - 1))
            continue;
        const qint64 row = qint64(image->height()) - 1 - k - lowest;
        if (m_checking && k > 0 && std::abs(z - previous) >= SuspiciousJump)
            m_checking = m_listener.continueChecking({previous, z, column, row});
        store(image, column, row, z);
        previous = z;
        if (z > 0.0)
            ++*positiveCount;
    }
}
