#include "scene/scenerydata.h"
#include "scene/standardcamera.h"

#include <QTest>

/// Where the standard camera stands and looks.
class TestStandardCamera : public QObject {
    Q_OBJECT

private slots:
    void firstFrameOfAnOrdinaryTexture();
    void lastFrameLeavesTheFirstAlone();
};

void TestStandardCamera::firstFrameOfAnOrdinaryTexture()
{
    SceneryData data;
    data.VerkantenA = 5.0;
    setStandardCamera(data, QSize(400, 300), FlightEnd::First);
    QCOMPARE(data.BeobXA, 200.0);
    QCOMPARE(data.BeobYA, -300.0);
    QCOMPARE(data.BeobZA, 450.0);
    QCOMPARE(data.RichtungA, 0.0);
    QCOMPARE(data.NeigungA, -45.0);
    QCOMPARE(data.BrennA, 1000.0);
    QCOMPARE(data.VerkantenA, 0.0);
}

void TestStandardCamera::lastFrameLeavesTheFirstAlone()
{
    const SceneryData before;
    SceneryData data;
    setStandardCamera(data, QSize(3, 1), FlightEnd::Last);
    QCOMPARE(data.BeobXE, 1.5);
    QCOMPARE(data.BeobYE, -1.0);
    QCOMPARE(data.BeobZE, 1.5);
    QCOMPARE(data.BeobXA, before.BeobXA);
    QCOMPARE(data.NeigungA, before.NeigungA);
}

QTEST_APPLESS_MAIN(TestStandardCamera)
#include "test_standardcamera.moc"
