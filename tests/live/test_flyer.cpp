// A camera that is flown by hand, and how fine pictures are chosen.

#include "live/flyer.h"
#include "live/livelevels.h"

#include <QTest>

#include <cmath>

class TestFlyer : public QObject {
    Q_OBJECT

private slots:
    void keysGoAlongTheHeading_data()
    {
        QTest::addColumn<double>("heading");
        QTest::addColumn<FlyKeys>("keys");
        QTest::addColumn<QList<double>>("way");
        const auto row = [](const char *name, double heading, FlyKeys keys,
                            const QList<double> &way) {
            QTest::newRow(name) << heading << keys << way;
        };
        row("ahead to the north", 0, {.ahead = true}, {0, 10, 0});
        row("ahead to the east", 90, {.ahead = true}, {10, 0, 0});
        row("back", 90, {.back = true}, {-10, 0, 0});
        row("right of north is east", 0, {.right = true}, {10, 0, 0});
        row("left", 0, {.left = true}, {-10, 0, 0});
        row("up", 45, {.up = true}, {0, 0, 10});
        row("down and fast", 45, {.down = true, .fast = true}, {0, 0, -50});
        row("both ways", 0, {.ahead = true, .back = true}, {0, 0, 0});
    }
    void keysGoAlongTheHeading()
    {
        QFETCH(double, heading);
        QFETCH(FlyKeys, keys);
        QFETCH(QList<double>, way);
        Flyer flyer;
        flyer.setSpeed(20);
        // Level, whatever the pitch.
        flyer.setCamera({1, 2, 3, heading, -60, 0, 500});
        flyer.move(keys, 0.5);
        const ViewCamera &c = flyer.camera();
        QVERIFY(std::abs(c.x - 1 - way[0]) < 1e-9);
        QVERIFY(std::abs(c.y - 2 - way[1]) < 1e-9);
        QVERIFY(std::abs(c.z - 3 - way[2]) < 1e-9);
        QCOMPARE(c.pitch, -60.0);
    }

    // Dragged to the right, the picture turns to the left, as far as the pointer.
    void theGroundFollowsThePointer()
    {
        Flyer flyer;
        flyer.setCamera({0, 0, 0, 10, 0, 0, 1000});
        flyer.look({500, 0}, 640, 1280);
        QVERIFY(std::abs(flyer.camera().heading - (10 - 45 + 360)) < 1e-9);
        flyer.look({0, 1e9}, 640, 1280);
        QVERIFY(flyer.camera().pitch > 89.9 && flyer.camera().pitch <= 90.0);
        for (int k = 0; k < 3; ++k)
            flyer.look({0, -1e9}, 640, 1280);
        QCOMPARE(flyer.camera().pitch, -90.0);
    }

    void wheelsStayWithinTheirRanges()
    {
        Flyer flyer;
        flyer.setCamera({0, 0, 0, 0, 0, 0, 500});
        flyer.zoom(1);
        QVERIFY(flyer.camera().focal > 500);
        flyer.zoom(1e4);
        QCOMPARE(flyer.camera().focal, 100000.0);
        flyer.zoom(-1e6);
        QCOMPARE(flyer.camera().focal, 1.0);
        flyer.hurry(1e5);
        QCOMPARE(flyer.speed(), Flyer::MostSpeed);
        flyer.hurry(-1e5);
        QCOMPARE(flyer.speed(), Flyer::LeastSpeed);
    }

    void stepsAreThoseOfTheForm()
    {
        const ViewCamera camera =
            Flyer::onSteps({1.2345, -9.999, 1e9, 359.996, -0.004, 0.005, 0.0001});
        QCOMPARE(camera, (ViewCamera{1.23, -10.0, 1000000.0, 360.0, 0.0, 0.01, 0.01}));
        QCOMPARE(Flyer::onSteps(camera), camera);
    }

    void levelsFollowTheMachine()
    {
        LiveLevels levels;
        const QSize full(960, 540), mesh(1024, 1024);
        QCOMPARE(levels.within(1.0, full, mesh), LiveLevels::all().front());
        const double all = LiveLevels::work({}, full, mesh);
        levels.took(all, 0.1);
        QCOMPARE(levels.within(0.1, full, mesh), LiveLevel());
        const LiveLevel &half = levels.within(0.04, full, mesh);
        QVERIFY(half.size < 1.0 && half.size >= 0.5);
        QVERIFY(levels.secondsFor(LiveLevels::work(half, full, mesh)) <= 0.04);
        QCOMPARE(levels.within(1e-9, full, mesh), LiveLevels::all().front());
        // A machine that has become slow is believed sooner than one that has become
        // fast.
        LiveLevels slower = levels, faster = levels;
        slower.took(all, 0.2);
        faster.took(all, 0.05);
        QVERIFY(slower.secondsFor(all) >= 0.15);
        QVERIFY(faster.secondsFor(all) > 0.08);
        for (int k = 0; k < 30; ++k)
            faster.took(all, 0.05);
        QVERIFY(faster.secondsFor(all) < 0.051);
    }

    // Coarse to fine, and never less than a quarter as wide as the view.
    void levelsRise()
    {
        double before = 0.0;
        for (const LiveLevel &level : LiveLevels::all()) {
            const double work = LiveLevels::work(level, {960, 540}, {1024, 1024});
            QVERIFY(work > before);
            before = work;
            QVERIFY(level.size >= 0.25);
        }
        QCOMPARE(LiveLevels::all().back(), LiveLevel());
    }
};

QTEST_GUILESS_MAIN(TestFlyer)
#include "test_flyer.moc"
