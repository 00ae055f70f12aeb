#include "importers/usgsdemdata.h"

#include "importers/numbers.h"

#include <QIODevice>

namespace {

constexpr int PairWidth = 24; // columns of a coordinate
constexpr int RecordWidth = 915;

// Hands out the fields of a record in their order.
class FieldReader {
public:
    explicit FieldReader(const QByteArray &record) : m_record(record) {}

    QString text(int width) { return QString::fromLatin1(next(width)); }
    int integer(int width) { return text(width).toInt(); }
    double real(int width) { return leadingNumber(next(width)); }
    int integerOr(int width, int insteadOfZero)
    {
        const int value = integer(width);
        return value == 0 ? insteadOfZero : value;
    }

private:
    QByteArray next(int width)
    {
        const QByteArray field = m_record.mid(m_position, width);
        m_position += width;
        const qsizetype zero = field.indexOf('\0');
        return zero < 0 ? field : field.left(zero);
    }

    QByteArray m_record;
    qsizetype m_position = 0;
};

void readNames(FieldReader &in, UsgsDemData &data)
{
    data.fileName = in.text(40);
    data.freeFormatText = in.text(40);
    data.filler = in.text(29);
    data.seLongitudeDegrees = in.integer(4);
    data.seLongitudeMinutes = in.integer(2);
    data.seLongitudeSeconds = in.real(7);
    data.seLatitudeDegrees = in.integer(4);
    data.seLatitudeMinutes = in.integer(2);
    data.seLatitudeSeconds = in.real(7);
    data.processCode = in.text(1);
    data.filler2 = in.text(1);
    data.sectionalIndicator = in.text(3);
    data.originCode = in.text(4);
    data.demLevelCode = in.integer(6);
    data.patternCode = in.integerOr(6, 1);
}

void readGeometry(FieldReader &in, UsgsDemData &data)
{
    data.planimetricReferenceSystemCode = in.integer(6);
    data.zoneCode = in.integer(6);
    for (double &parameter : data.mapProjectionParameters)
        parameter = in.real(PairWidth);
    data.planimetricUnitsCode = in.integer(6);
    data.elevationUnitsCode = in.integer(6);
    data.numberOfSides = in.integerOr(6, 4);
    for (int i = 0; i < UsgsDemData::CornerCount; ++i) {
        data.cornerEasting[i] = in.real(PairWidth);
        data.cornerNorthing[i] = in.real(PairWidth);
    }
    data.minimumElevation = in.real(PairWidth);
    data.maximumElevation = in.real(PairWidth);
    data.angle = in.real(PairWidth);
    data.accuracyCode = in.integerOr(6, 1);
    for (double &resolution : data.spatialResolution)
        resolution = in.real(12);
    data.numberOfRows = in.integerOr(6, 1);
    data.numberOfColumns = in.integer(6);
}

void readQuality(FieldReader &in, UsgsDemData &data)
{
    data.largestContourInterval = in.integer(5);
    data.largestContourUnits = in.integer(1);
    data.smallestContourInterval = in.integer(5);
    data.smallestContourUnits = in.integer(1);
    data.dataSourceDate = in.integer(4);
    data.inspectionDate = in.integer(4);
    const QString flag = in.text(1);
    data.inspectionFlag[0] = flag.isEmpty() ? '\0' : flag.front().toLatin1();
    data.validationFlag = in.integer(1);
    data.suspectVoidFlag = in.integer(2);
    data.verticalDatum = in.integer(2);
    data.horizontalDatum = in.integer(2);
    data.dataEdition = in.integerOr(4, 1);
    data.percentVoid = in.integer(4);
    for (int &flagOfEdge : data.edgeMatchFlags)
        flagOfEdge = in.integer(2);
    data.verticalDatumShift = in.real(7);
}

} // namespace

void UsgsDemData::read(QIODevice &in)
{
    FieldReader fields(in.read(RecordWidth));
    readNames(fields, *this);
    readGeometry(fields, *this);
    readQuality(fields, *this);
}
