#include "scene/keyvalue.h"
#include "scene/sceneryfiles.h"
#include "scene/scenerykeys.h"
#include "scene/sceneryreader.h"

#include <QTest>

namespace {

// A value of the file that is no key's default.
QString otherValue(const SceneryKey &key)
{
    const SceneryData standard;
    if (const auto *flag = std::get_if<keykind::Flag>(&key.field))
        return standard.*(flag->field) ? "0" : "1";
    if (const auto *flag = std::get_if<keykind::InvertedFlag>(&key.field))
        return standard.*(flag->field) ? "1" : "0";
    return "77";
}

} // namespace

class TestSceneryDocument : public QObject {
    Q_OBJECT

private slots:
    void copiesAreEqualUntilOneChanges()
    {
        SceneryDocument first;
        first.parameters.TDateiname = "a.png";
        first.controlPoints = {ControlPoint(1, 2, 3, 4.0)};
        SceneryDocument second = first;
        QVERIFY(second == first);
        second.controlPoints[0].z = 9;
        QVERIFY(second != first);
        QCOMPARE(first.controlPoints[0].z, 3);
        second = first;
        second.waypoints.append(Waypoint());
        QVERIFY(second != first);
        second = first;
        second.waypointLevel = 1;
        QVERIFY(second != first);
    }

    void everyKeyCountsAndIsClearedAndWritten()
    {
        for (const SceneryKey &key : sceneryKeys()) {
            SceneryDocument changed;
            changed.parameters.AusgabePNG = key.name != QLatin1String("AusgabePNG");
            const SceneryDocument before = changed;
            const QString line = key.name + '=' + otherValue(key);
            QVERIFY2(SceneryReader(changed).readLine(line), key.name.data());
            QVERIFY2(changed != before, key.name.data());
            QVERIFY2(written(changed) != written(before), key.name.data());
            changed.parameters.clear();
            QVERIFY2(changed == SceneryDocument(), key.name.data());
        }
    }

    void keysThatAFileLeavesOutStay()
    {
        SceneryDocument present;
        present.parameters.BeobXA = 3.0;
        present.parameters.BeobYA = 4.0;
        present.controlPoints = {ControlPoint(1, 2, 3, 0.0)};
        const auto reading = readText("[Param]\nBeobXA=5\n", present);
        QVERIFY(reading);
        QVERIFY(reading->headSeen);
        QCOMPARE(reading->document.parameters.BeobXA, 5.0);
        QCOMPARE(reading->document.parameters.BeobYA, 4.0);
        QVERIFY(!reading->document.parameters.AusgabePNG);
        QVERIFY(reading->document.controlPoints.isEmpty());
    }

    void lastComplaintIsKeptAndReadingGoesOn()
    {
        const auto reading =
            readText("Nope=1\nHintergrund=x\nBeobXA=5\n\nBeobXA=6\n", {});
        QVERIFY(reading);
        QCOMPARE(reading->complaint, QString("No color value: x"));
        QCOMPARE(reading->document.parameters.BeobXA, 5.0);
    }

    void obsoleteFormatsAreToldInTheirOrder()
    {
        const auto reading = readText("AusgabeYUV=0\nAusgabeYUV=1\n", {});
        QVERIFY(reading);
        QCOMPARE(reading->obsoleteFormats, (QList<bool>{false, true}));
        QVERIFY(reading->document.parameters.AusgabePNG);
    }

    void whatWasWrittenReadsBackTheSame()
    {
        SceneryDocument document;
        document.parameters.BeobXA = -12.5;
        document.parameters.isStraight = false;
        document.parameters.Hintergrund = 0xFF102030u;
        for (int k = 0; k < 4; ++k)
            document.controlPoints.append(ControlPoint(k, 2 * k, -k, 0.0));
        for (int k = 0; k < 13; ++k)
            document.waypoints.append(Waypoint(k, k, k, 0.5 * k, -0.25));
        document.waypointLevel = 1;
        const auto reading = readText(written(document).toUtf8(), {});
        QVERIFY(reading);
        QCOMPARE(reading->complaint, QString());
        QVERIFY(reading->document == document);
    }
};

QTEST_APPLESS_MAIN(TestSceneryDocument)
#include "test_scenerydocument.moc"
