#pragma once

#include <QObject>
#include <QString>

class QIODevice;

/// The header record (type A) of a USGS DEM file, field by field.
class UsgsDemData : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    static constexpr int CornerCount = 4;

    /// Reads all fields from the start of a file. A file that ends early leaves the
    /// rest empty or zero.
    void read(QIODevice &in);

    QString fileName;
    QString freeFormatText;
    QString filler;
    int seLongitudeDegrees = 0; // south-east corner
    int seLongitudeMinutes = 0;
    double seLongitudeSeconds = 0.0;
    int seLatitudeDegrees = 0;
    int seLatitudeMinutes = 0;
    double seLatitudeSeconds = 0.0;
    QString processCode;
    QString filler2;
    QString sectionalIndicator;
    QString originCode;
    int demLevelCode = 0;
    int patternCode = 0;
    int planimetricReferenceSystemCode = 0;
    int zoneCode = 0;
    double mapProjectionParameters[15] = {};
    int planimetricUnitsCode = 0; // 3: arc-seconds
    int elevationUnitsCode = 0;
    int numberOfSides = 0;
    double cornerEasting[CornerCount] = {};
    double cornerNorthing[CornerCount] = {};
    double minimumElevation = 0.0;
    double maximumElevation = 0.0;
    double angle = 0.0;
    int accuracyCode = 0;
    double spatialResolution[3] = {}; // x, y, z
    int numberOfRows = 0;
    int numberOfColumns = 0; // of profiles
    int largestContourInterval = 0;
    int largestContourUnits = 0;
    int smallestContourInterval = 0;
    int smallestContourUnits = 0;
    int dataSourceDate = 0;
    int inspectionDate = 0;
    char inspectionFlag[2] = {}; // one character and the end of the string
    int validationFlag = 0;
    int suspectVoidFlag = 0;
    int verticalDatum = 0;
    int horizontalDatum = 0;
    int dataEdition = 0;
    int percentVoid = 0;
    int edgeMatchFlags[4] = {}; // west, north, east, south
    double verticalDatumShift = 0.0;
};
