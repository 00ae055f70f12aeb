#include "importers/demdatarows.h"
#include "importers/usgsdemdata.h"
#include "importers/usgsdemfile.h"

#include <QBuffer>
#include <QTest>

namespace {

void readFrom(QByteArray bytes, UsgsDemData &data)
{
    QBuffer in(&bytes);
    QVERIFY(in.open(QIODevice::ReadOnly));
    data.read(in);
}

QString valueOf(const UsgsDemData &data, const QString &label)
{
    for (const DemDataRow &row : demDataRows(data))
        if (row.label == label)
            return row.value;
    return QStringLiteral("no such row");
}

} // namespace

class TestUsgsDemData : public QObject {
    Q_OBJECT

private slots:
    void everyFieldComesFromItsColumns()
    {
        UsgsDemFile file;
        file.profiles = {{1, 2, 3}, {4, 5, 6}};
        UsgsDemData d;
        readFrom(file.header(), d);
        QCOMPARE(d.fileName, QString("TILE").leftJustified(40));
        QCOMPARE(d.freeFormatText, QString("free text").leftJustified(40));
        QCOMPARE(d.filler, QString(29, ' '));
        QCOMPARE(d.seLongitudeDegrees, -117);
        QCOMPARE(d.seLongitudeMinutes, 30);
        QCOMPARE(d.seLongitudeSeconds, 15.25);
        QCOMPARE(d.seLatitudeDegrees, 34);
        QCOMPARE(d.seLatitudeMinutes, 7);
        QCOMPARE(d.seLatitudeSeconds, 30.1234);
        QCOMPARE(d.processCode, QString("1"));
        QCOMPARE(d.filler2, QString(" "));
        QCOMPARE(d.sectionalIndicator, QString("SEC"));
        QCOMPARE(d.originCode, QString("ORIG"));
        QCOMPARE(d.demLevelCode, 1);
        QCOMPARE(d.patternCode, 1); // stands for 0
        QCOMPARE(d.planimetricReferenceSystemCode, 1);
        QCOMPARE(d.zoneCode, 11);
        QCOMPARE(d.mapProjectionParameters[0], 0.5);
        QCOMPARE(d.mapProjectionParameters[14], 14.5);
        QCOMPARE(d.planimetricUnitsCode, 2);
        QCOMPARE(d.elevationUnitsCode, 2);
        QCOMPARE(d.numberOfSides, 4);
        QCOMPARE(d.cornerEasting[0], 1000.0);
        QCOMPARE(d.cornerNorthing[1], 2060.0);
        QCOMPARE(d.cornerEasting[3], 1030.0);
        QCOMPARE(d.minimumElevation, 10.0);
        QCOMPARE(d.maximumElevation, 90.5);
        QCOMPARE(d.angle, 0.25);
        QCOMPARE(d.accuracyCode, 1); // stands for 0
        QCOMPARE(d.spatialResolution[0], 30.0);
        QCOMPARE(d.spatialResolution[2], 1.0);
        QCOMPARE(d.numberOfRows, 1); // stands for 0
        QCOMPARE(d.numberOfColumns, 2);
        QCOMPARE(d.largestContourInterval, 40);
        QCOMPARE(d.largestContourUnits, 1);
        QCOMPARE(d.smallestContourInterval, 20);
        QCOMPARE(d.smallestContourUnits, 2);
        QCOMPARE(d.dataSourceDate, 787);
        QCOMPARE(d.inspectionDate, 1991);
        QCOMPARE(d.inspectionFlag, "2");
        QCOMPARE(d.validationFlag, 3);
        QCOMPARE(d.suspectVoidFlag, 1);
        QCOMPARE(d.verticalDatum, 2);
        QCOMPARE(d.horizontalDatum, 3);
        QCOMPARE(d.dataEdition, 4);
        QCOMPARE(d.percentVoid, 5);
        QCOMPARE(d.edgeMatchFlags[0], 1);
        QCOMPARE(d.edgeMatchFlags[3], 4);
        QCOMPARE(d.verticalDatumShift, 1.25);
    }

    void aHeaderCutAnywhereReadsWhatIsThere()
    {
        UsgsDemFile file;
        file.profiles = {{1, 2}, {3, 4}};
        const QByteArray whole = file.header();
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            UsgsDemData d;
            readFrom(whole.left(length), d);
            QCOMPARE(d.fileName.size(), qMin(length, qsizetype(40)));
            QCOMPARE(d.patternCode, 1);
            QCOMPARE(d.numberOfSides, 4);
            QCOMPARE(d.dataEdition, length < 896 ? 1 : 4);
            QCOMPARE(d.numberOfColumns, length < 864 ? 0 : 2);
            QVERIFY(!demDataRows(d).isEmpty());
        }
    }

    void fieldsEndAtAZeroByte()
    {
        UsgsDemFile file;
        QByteArray header = file.header();
        header[4] = '\0';
        UsgsDemData d;
        readFrom(header, d);
        QCOMPARE(d.fileName, QString("TILE"));
        QCOMPARE(d.freeFormatText.trimmed(), QString("free text"));
    }

    void fortranExponentsEndAtTheMantissa()
    {
        UsgsDemFile file;
        file.exponent = 'D';
        UsgsDemData d;
        readFrom(file.header(), d);
        QCOMPARE(d.cornerEasting[0], 1.0);
        QCOMPARE(d.spatialResolution[0], 3.0);
    }

    void junkReadsAsZero()
    {
        UsgsDemData d;
        readFrom(QByteArray(915, '\xE4'), d);
        QCOMPARE(d.numberOfColumns, 0);
        QCOMPARE(d.cornerEasting[2], 0.0);
        QCOMPARE(demDataRows(d).size(), 55);
    }

    void theTableHasItsRowsInOrder()
    {
        UsgsDemFile file;
        file.profiles = {{1, 2, 3}, {4, 5, 6}};
        UsgsDemData d;
        readFrom(file.header(), d);
        const QVector<DemDataRow> rows = demDataRows(d);
        QCOMPARE(rows.size(), 55);
        QCOMPARE(rows[0].label, QString("File name"));
        QCOMPARE(rows[11].label, QString("Map projection parameter[0]"));
        QCOMPARE(rows[11].value, QString("0.50"));
        QCOMPARE(rows[29].label, QString("Corner 0"));
        QCOMPARE(rows[54].label, QString("Vertical datum shift"));
        QCOMPARE(rows[54].value, QString("1.25"));
    }

    void valuesAreShownAsTheUserReadsThem()
    {
        UsgsDemFile file;
        file.profiles = {{1, 2, 3}, {4, 5, 6}};
        UsgsDemData d;
        readFrom(file.header(), d);
        QCOMPARE(valueOf(d, "SE geographic corner longitude"),
                 QString::fromUtf8("-117°30'15\".2500"));
        QCOMPARE(valueOf(d, "SE geographic corner latitude"),
                 QString::fromUtf8("34°07'30\".1234"));
        QCOMPARE(valueOf(d, "Corner 1"), QString("1000.0000 m, 2060.0000 m"));
        QCOMPARE(valueOf(d, "Maximum elevation"), QString("90.50"));
        QCOMPARE(valueOf(d, "DEM spatial resolution (x, y, z)"),
                 QString("30.00 30.00 1.00"));
        QCOMPARE(valueOf(d, "Data source date"), QString("0787"));
        QCOMPARE(valueOf(d, "Data inspection/revision flag"), QString("2"));
        QCOMPARE(valueOf(d, "Edge match flags W, N, E, S"), QString("1, 2, 3, 4"));
    }

    void arcSecondsShowAsDegrees()
    {
        UsgsDemData d;
        d.numberOfSides = 2;
        d.planimetricUnitsCode = 3;
        d.cornerEasting[0] = -421230.0; // 117 * 3600 + 30
        d.cornerNorthing[0] = 123015.9; // 34 * 3600 + 10 * 60 + 15
        d.cornerEasting[1] = 1e300;
        QCOMPARE(valueOf(d, "Corner 0"), QString::fromUtf8("-117°00'30\", 34°10'15\""));
        QVERIFY(valueOf(d, "Corner 1").endsWith(QString::fromUtf8(", 0°00'00\"")));
        QCOMPARE(valueOf(d, "Corner 2"), QString("no such row"));
    }

    void moreSidesThanCornersAreNotShown()
    {
        UsgsDemData d;
        d.numberOfSides = 999999;
        QCOMPARE(demDataRows(d).size(), 55);
        d.numberOfSides = -5;
        QCOMPARE(demDataRows(d).size(), 51);
    }
};

QTEST_APPLESS_MAIN(TestUsgsDemData)
#include "test_usgsdemdata.moc"
