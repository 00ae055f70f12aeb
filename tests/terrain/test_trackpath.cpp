#include "base/pi.h"
#include "flight/flight.h"
#include "scene/waypointlevel.h"
#include "support/patience.h"
#include "terrain/sceneryonearth.h"
#include "terrain/trackpath.h"

#include <QTest>

#include <functional>

namespace {

NoProgress unwatched;

using Way = std::function<std::pair<double, double>(double t)>; // cells

Track trackOf(int count, const Way &way, std::optional<double> metres = {})
{
    Track track;
    for (int i = 0; i < count; ++i) {
        const auto [column, row] = way(count > 1 ? double(i) / (count - 1) : 0.0);
        const QPointF place = SceneryOnEarth::placeOf(column, row);
        track.points.append({place.x(), place.y(), metres});
    }
    return track;
}

std::pair<double, double> bend(double t)
{
    return {20 + 160 * t, 75 + 50 * std::sin(7 * t)};
}
std::pair<double, double> loops(double t)
{
    return {100 + 60 * std::cos(4 * Pi * t), 75 + (20 + 30 * t) * std::sin(4 * Pi * t)};
}

QList<FrameCamera> flown(SceneryDocument document, const TrackPath &path)
{
    flyAlong(document, path);
    QList<FrameCamera> cameras;
    if (!checkFlight(document))
        return cameras;
    const Flight flight(document, 1.0);
    for (int frame = 0; frame < document.parameters.Bildanzahl; ++frame)
        cameras << flight.camera(frame);
    return cameras;
}

// The place of a camera in cells.
QPointF cellOf(const FrameCamera &camera)
{
    return {camera.position.x, SceneryOnEarth::Height - 1 - camera.position.y};
}

} // namespace

class TestTrackPath : public QObject {
    Q_OBJECT

    SceneryOnEarth m_scenery;

    Result<TrackPath> along(const Track &track,
                            const TrackPathOptions &options = {}) const
    {
        return pathAlong(track, m_scenery.document, m_scenery.ground(), options,
                         unwatched);
    }

private slots:
    void theFlightFollowsTheTrack_data()
    {
        QTest::addColumn<int>("points");
        QTest::addColumn<int>("shape");
        QTest::addColumn<int>("most");
        QTest::addColumn<double>("nearer"); // cells
        QTest::newRow("a bend") << 500 << 0 << 40 << 1.5;
        QTest::newRow("a bend, few points") << 500 << 0 << 6 << 8.0;
        QTest::newRow("loops") << 2000 << 1 << 40 << 1.5;
        QTest::newRow("loops, many control points") << 2000 << 1 << 200 << 1.5;
        QTest::newRow("a large track") << 100000 << 1 << 40 << 1.5;
    }
    void theFlightFollowsTheTrack()
    {
        QFETCH(int, points);
        QFETCH(int, shape);
        QFETCH(int, most);
        QFETCH(double, nearer);
        const Track track = trackOf(points, shape == 0 ? bend : loops, 1500.0);
        TrackPathOptions options;
        options.points = most;
        const auto path = along(track, options);
        QVERIFY2(path, qPrintable(path ? QString() : path.error().text));
        QVERIFY(path->controlPoints.size() <= most);
        QVERIFY(path->notes.isEmpty());
        QVERIFY(path->hasTrackHeights);
        QCOMPARE(path->waypoints.size(), qsizetype(waypointCount(path->waypointLevel)));
        const auto cameras = flown(m_scenery.document, *path);
        QCOMPARE(cameras.size(), qsizetype(300));
        // Every frame is near to the track, and the track to the frames.
        double most2 = 0.0;
        for (const TrackPoint &point : track.points) {
            double least = 1e9;
            for (const FrameCamera &camera : cameras) {
                const QPointF at = cellOf(camera);
                const QPointF place = SceneryOnEarth::placeOf(at.x(), at.y());
                least =
                    std::min(least, std::hypot(place.x() - point.x, place.y() - point.y));
            }
            most2 = std::max(most2, least);
            if (points > 10000 && &point - track.points.data() > 3000)
                break;
        }
        QVERIFY2(path->greatestDistance <= nearer * 30.0,
                 qPrintable(QString::number(path->greatestDistance)));
        // Frames are up to three cells apart.
        QVERIFY(most2 <= path->greatestDistance + 1.6 * 30.0);
        QVERIFY(path->greatestDistance > 0.0);
        for (const FrameCamera &camera : cameras)
            QVERIFY(std::fabs(camera.position.z - 1500.0 / 30.0) < 1e-9);
    }

    void theViewIsAlongThePath()
    {
        for (const Way &way : {Way(bend), Way(loops)}) {
            const auto path = along(trackOf(1000, way));
            QVERIFY(path);
            const auto cameras = flown(m_scenery.document, *path);
            for (qsizetype i = 5; i + 5 < cameras.size(); ++i) {
                const auto &before = cameras.at(i - 1).position;
                const auto &after = cameras.at(i + 1).position;
                const double course = std::atan2(after.x - before.x, after.y - before.y);
                const double off =
                    std::remainder(cameras.at(i).direction - course, 2 * Pi);
                QVERIFY2(std::fabs(off) < 0.15, qPrintable(QString::number(off)));
            }
        }
    }

    void moreControlPointsComeNearer()
    {
        double last = 1e9;
        for (const int points : {5, 8, 12, 20}) {
            TrackPathOptions options;
            options.points = points;
            const auto path = along(trackOf(3000, loops), options);
            QVERIFY(path);
            QVERIFY(path->greatestDistance < last);
            last = path->greatestDistance;
        }
    }

    void noFrameIsBelowTheClearance_data()
    {
        QTest::addColumn<double>("exaggeration");
        QTest::addColumn<double>("clearance");
        QTest::newRow("true") << 1.0 << 100.0;
        QTest::newRow("exaggerated") << 3.0 << 50.0;
        QTest::newRow("on the ground") << 1.0 << 0.0;
    }
    void noFrameIsBelowTheClearance()
    {
        QFETCH(double, exaggeration);
        QFETCH(double, clearance);
        const SceneryOnEarth scenery(exaggeration);
        TrackPathOptions options;
        options.heights = PathHeights::Ground;
        options.clearance = clearance;
        for (const Way &way : {Way(bend), Way(loops)}) {
            const auto path = pathAlong(trackOf(1000, way, 20.0), scenery.document,
                                        scenery.ground(), options, unwatched);
            QVERIFY(path);
            QVERIFY(!path->hasTrackHeights);
            ElevationImage ground = scenery.ground().picture;
            ground.setZScale(scenery.document.parameters.HDateiSkalaZA);
            double nearest = 1e9;
            for (const FrameCamera &camera : flown(scenery.document, *path)) {
                const double above =
                    (camera.position.z -
                     ground.elevation(camera.position.x, camera.position.y)) *
                    30.0 / exaggeration;
                QVERIFY2(above >= clearance, qPrintable(QString::number(above)));
                nearest = std::min(nearest, above);
            }
            // One unit is 30 m.
            QVERIFY2(nearest < clearance + 60.0, qPrintable(QString::number(nearest)));
        }
    }

    void theHeightsOfATrackAreRaisedWhereAClearanceIsGiven()
    {
        TrackPathOptions options;
        options.heights = PathHeights::Track;
        options.clearance = 60.0;
        const auto path = along(trackOf(1000, bend, 900.0), options);
        QVERIFY(path);
        ElevationImage ground = m_scenery.ground().picture;
        ground.setZScale(m_scenery.document.parameters.HDateiSkalaZA);
        for (const FrameCamera &camera : flown(m_scenery.document, *path)) {
            QVERIFY(camera.position.z * 30.0 >=
                    ground.elevation(camera.position.x, camera.position.y) * 30.0 + 60.0);
        }
    }

    void twoPointsAreALine()
    {
        const auto path = along(trackOf(2, bend, 1000.0));
        QVERIFY(path);
        QCOMPARE(path->controlPoints.size(), qsizetype(4));
        QVERIFY(path->greatestDistance < 30.0);
        const auto cameras = flown(m_scenery.document, *path);
        const QPointF first = cellOf(cameras.first());
        QVERIFY(std::hypot(first.x() - 20, first.y() - 75) < 1.0);
    }

    void stopsAreNoStops()
    {
        Track track = trackOf(100, bend, 1000.0);
        const TrackPoint rest = track.points.at(50);
        for (int i = 0; i < 5000; ++i)
            track.points.insert(
                50, {rest.x + 0.2 * (i % 3), rest.y - 0.1 * (i % 5), rest.metres});
        const auto path = along(track);
        QVERIFY(path);
        const auto cameras = flown(m_scenery.document, *path);
        double longest = 0.0;
        double shortest = 1e9;
        for (qsizetype i = 1; i < cameras.size(); ++i) {
            const double way =
                std::hypot(cameras.at(i).position.x - cameras.at(i - 1).position.x,
                           cameras.at(i).position.y - cameras.at(i - 1).position.y);
            longest = std::max(longest, way);
            shortest = std::min(shortest, way);
        }
        QVERIFY2(longest < 2.5 * shortest,
                 qPrintable(QString("%1 %2").arg(longest).arg(shortest)));
    }

    void whatLiesOutsideIsCutAtTheEnds()
    {
        const auto path = along(
            trackOf(201, [](double t) { return std::pair(-100.0 + 400 * t, 60.0); }));
        QVERIFY(path);
        QCOMPARE(path->notes,
                 QStringList{"101 points of the track ahead of the terrain or behind it "
                             "were left out."});
        QCOMPARE(path->controlPoints.first().x, 0);
        QCOMPARE(path->controlPoints.last().x, 199);
        QCOMPARE(path->controlPoints.first().y, 149 - 60);
        const auto detour = along(trackOf(201, [](double t) {
            return std::pair(20.0 + 160 * t, 60 - 100 * std::sin(Pi * t));
        }));
        QVERIFY(detour);
        QCOMPARE(detour->notes.size(), 1);
        QVERIFY(detour->notes.first().endsWith("points of the track lie outside of the "
                                               "terrain."));
    }

    void whatMakesNoPathIsRefused_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("said");
        QTest::newRow("elsewhere") << "elsewhere"
                                   << "The track lies outside of the terrain.";
        QTest::newRow("one place")
            << "one"
            << "The track stays at one place; a flight needs a way.";
        QTest::newRow("nothing") << "none"
                                 << "The track stays at one place; a flight needs a way.";
        QTest::newRow("no heights")
            << "heights"
            << "The track has no heights; those of the ground can "
               "be taken.";
    }
    void whatMakesNoPathIsRefused()
    {
        QFETCH(QString, kind);
        QFETCH(QString, said);
        Track track = trackOf(10, bend);
        TrackPathOptions options;
        if (kind == "elsewhere")
            track = trackOf(10, [](double t) { return std::pair(-500.0 + t, 20.0); });
        else if (kind == "one")
            track = trackOf(10, [](double) { return std::pair(50.0, 50.0); });
        else if (kind == "none")
            track.points.clear();
        else
            options.heights = PathHeights::Track;
        const auto path = along(track, options);
        QVERIFY(!path);
        QCOMPARE(path.error().text, said);
    }

    void withoutGeoreferenceTheTrackHasNoPlace()
    {
        const SceneryOnEarth scenery;
        scenery.remove("t_elevation.pgw");
        scenery.remove("t_elevation.png.aux.xml");
        const auto path = pathAlong(trackOf(10, bend), scenery.document, scenery.ground(),
                                    {}, unwatched);
        QVERIFY(!path);
        QVERIFY2(path.error().text.contains("t_elevation.png\" has no georeference"),
                 qPrintable(path.error().text));
        SceneryDocument none;
        QCOMPARE(loadGround(none, {}).error().text,
                 QString("The scenery has no elevation file."));
    }

    // As tables and grids of a survey with coordinates of its own.
    void plainCoordinatesAreShared()
    {
        const SceneryOnEarth scenery;
        scenery.remove("t_elevation.png.aux.xml");
        Track track = trackOf(10, bend);
        const auto path =
            pathAlong(track, scenery.document, scenery.ground(), {}, unwatched);
        QVERIFY2(path, qPrintable(path ? QString() : path.error().text));
        const auto same = along(track);
        QVERIFY(same);
        QCOMPARE(path->controlPoints.size(), same->controlPoints.size());
        QCOMPARE(path->controlPoints.constFirst().x, same->controlPoints.constFirst().x);
        QCOMPARE(path->controlPoints.constFirst().y, same->controlPoints.constFirst().y);
        track.hasSystem = true; // on the earth, and nobody knows where the ground is
        const auto lost =
            pathAlong(track, scenery.document, scenery.ground(), {}, unwatched);
        QVERIFY(!lost);
        QVERIFY2(lost.error().text.contains("t_elevation.png\" has no reference system"),
                 qPrintable(lost.error().text));
    }

    void theWorkCanBeStopped()
    {
        Patience progress(0);
        const auto path = pathAlong(trackOf(10, bend), m_scenery.document,
                                    m_scenery.ground(), {}, progress);
        QVERIFY(!path);
        QVERIFY(path.error().stopped);
    }

    void placesOfTheWorldAreThoseOfTheEarth()
    {
        const auto world = SceneryWorld::of(m_scenery.document, m_scenery.ground());
        QVERIFY(world);
        QCOMPARE(world->placeAt(0, 0), SceneryOnEarth::placeOf(0, 149));
        QCOMPARE(world->placeAt(199, 149), SceneryOnEarth::placeOf(199, 0));
        QCOMPARE(world->worldAt(SceneryOnEarth::placeOf(7, 140)), QPointF(7, 9));
        QCOMPARE(world->unitsOfHeight(0.01 / 30), 1 / 30.0);
    }
};

QTEST_GUILESS_MAIN(TestTrackPath)
#include "test_trackpath.moc"
