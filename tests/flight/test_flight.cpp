// One camera for each frame, whichever the flight.

#include "flight/flight.h"

#include "scene/scenerydocument.h"

#include <QTest>

class TestFlight : public QObject {
    Q_OBJECT

private slots:
    void straightFlightNeedsNoPoints()
    {
        SceneryDocument document;
        QVERIFY(checkFlight(document));
        document.parameters.BeobXA = document.parameters.BeobXE = 12.0;
        QCOMPARE(Flight(document, 1.0).camera(0).position.x, 12.0);
    }

    void curvedFlightFollowsItsPointsAndKeepsItsRoll()
    {
        SceneryDocument document = curved();
        QVERIFY(checkFlight(document));
        const Flight flight(document, 2.0);
        const FrameCamera first = flight.camera(0);
        QCOMPARE(first.position.x, 0.0);
        QCOMPARE(first.position.z, 100.0);
        QCOMPARE(first.position.w, 1.0);
        QCOMPARE(first.focal, 2.0 * document.parameters.BrennA);
        QCOMPARE(first.roll, 3.0); // as it stands, not from degrees
    }

    // What is edited while frames are drawn holds from the next one on; the curve does
    // not change any more.
    void parametersAreReadForEachFrame()
    {
        SceneryDocument document = curved();
        const Flight flight(document, 1.0);
        document.parameters.NebelA = 500.0;
        document.parameters.NebelE = 0.0;
        document.controlPoints[0].z = 7;
        QCOMPARE(flight.camera(0).dustRange, 500.0);
        QCOMPARE(flight.camera(0).position.z, 100.0);
    }

    void curvedFlightWithoutPointsIsRefused()
    {
        SceneryDocument document = curved();
        document.waypoints.clear();
        const Result<void> checked = checkFlight(document);
        QVERIFY(!checked && !checked.error().stopped);
        QCOMPARE(checked.error().text,
                 QString("The number of waypoints is 0; it has to be greater than 6.\n"));
    }

private:
    static SceneryDocument curved()
    {
        SceneryDocument document;
        for (int k = 0; k < 4; ++k)
            document.controlPoints.append(ControlPoint(10 * k, 5 * k, 100, 0.0));
        for (int k = 0; k < 7; ++k)
            document.waypoints.append(Waypoint(k, k, 100, 0.0, 0.0));
        SceneryData &data = document.parameters;
        data.isStraight = false;
        data.Bildanzahl = 5;
        data.VerkantenA = data.VerkantenE = 3.0;
        return document;
    }
};

QTEST_GUILESS_MAIN(TestFlight)
#include "test_flight.moc"
