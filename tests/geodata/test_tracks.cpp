// Tracks of every kind of file, and surfaces between points of vector files.
#include "geodata/crs.h"
#include "geodata/geodata.h"
#include "geodata/tin.h"
#include "geodata/tracks.h"
#include "support/patience.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

NoProgress unwatched;
constexpr double NoLimit = std::numeric_limits<double>::infinity();

QByteArray gpxHead()
{
    return "<gpx version=\"1.1\" creator=\"t\" "
           "xmlns=\"http://www.topografix.com/GPX/1/1\">";
}

QByteArray gpxPoint(const char *kind, double lat, double lon, const char *more)
{
    return QByteArray("<") + kind + " lat=\"" + QByteArray::number(lat, 'f', 6) +
           "\" lon=\"" + QByteArray::number(lon, 'f', 6) + "\">" + more + "</" + kind +
           '>';
}

QByteArray trackOfTwoParts()
{
    QByteArray text = gpxHead();
    text += gpxPoint("wpt", 47.9, 11.9, "<ele>9</ele><name>hut</name>");
    text += "<rte><name>short</name>" + gpxPoint("rtept", 47, 11, "") +
            gpxPoint("rtept", 47.001, 11, "") + "</rte>";
    text += "<trk><name>Tour &amp; more</name><trkseg>";
    text += gpxPoint("trkpt", 47.0, 11.0, "<ele>1000.5</ele>");
    text += gpxPoint("trkpt", 47.01, 11.0, "");
    text += "</trkseg><trkseg>";
    text += gpxPoint("trkpt", 47.02, 11.02, "<ele>1200</ele>");
    text += gpxPoint("trkpt", 47.03, 11.02, "<ele>1300</ele>");
    text += "</trkseg></trk></gpx>";
    return text;
}

QByteArray geoJson(const QByteArray &features)
{
    return "{\"type\":\"FeatureCollection\",\"features\":[" + features + "]}";
}

QByteArray feature(const QByteArray &type, const QByteArray &coordinates,
                   const QByteArray &properties = "{}")
{
    return "{\"type\":\"Feature\",\"properties\":" + properties +
           ",\"geometry\":{\"type\":\"" + type + "\",\"coordinates\":" + coordinates +
           "}}";
}

QByteArray kml()
{
    return "<kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document><Placemark><name>way"
           "</name><LineString><coordinates>11,47,100 11.01,47,0 11.02,47,300"
           "</coordinates></LineString></Placemark></Document></kml>";
}

} // namespace

class TestTracks : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString written(const QString &name, const QByteArray &text) const
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test's file");
        return path;
    }

    Result<Track> degreesOf(const QString &file) const
    {
        return readTrack(file, wktOf("EPSG:4326").value_or(QString()), unwatched);
    }

private slots:
    void theLongestLineIsTheTrack_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QList<QPointF>>("places");
        QTest::addColumn<QList<double>>("heights"); // negative: none
        const QList<QPointF> three{{11, 47}, {11.01, 47}, {11.02, 47}};
        QTest::newRow("GPX, two parts")
            << "a.gpx" << trackOfTwoParts() << "Tour & more"
            << QList<QPointF>{{11, 47}, {11, 47.01}, {11.02, 47.02}, {11.02, 47.03}}
            << QList<double>{1000.5, -1, 1200, 1300};
        QTest::newRow("GPX, waypoints by time")
            << "w.gpx"
            << gpxHead() +
                   gpxPoint("wpt", 47, 11.01, "<time>2020-05-01T10:30:00Z</time>") +
                   gpxPoint("wpt", 47, 11.02, "<time>2020-05-01T11:00:00Z</time>") +
                   gpxPoint("wpt", 47, 11, "<time>2020-04-30T23:00:00Z</time>") + "</gpx>"
            << "w" << three << QList<double>{-1, -1, -1};
        QTest::newRow("KML") << "a.kml" << kml() << "way" << three
                             << QList<double>{100, -1, 300};
        QTest::newRow("GeoJSON, lines that touch")
            << "a.geojson"
            << geoJson(feature("LineString", "[[11,47,5],[11.01,47,6]]") + "," +
                       feature("LineString", "[[11.02,47,7],[11.01,47,6]]") + "," +
                       feature("LineString", "[[12,47],[12.005,47]]"))
            << "a" << three << QList<double>{5, 6, 7};
        QTest::newRow("GeoJSON, points")
            << "p.geojson"
            << geoJson(feature("Point", "[11,47]", "{\"ele\":5.5}") + "," +
                       feature("Point", "[11.01,47]", "{\"ele\":null}") + "," +
                       feature("Point", "[11.02,47]", "{\"ele\":7}"))
            << "p" << three << QList<double>{5.5, -1, 7};
        QTest::newRow("GeoJSON, an area")
            << "g.json"
            << geoJson(feature("Polygon", "[[[11,47],[11.01,47],[11.02,47],[11,47]]]"))
            << "g" << (three + QList<QPointF>{{11, 47}}) << QList<double>{-1, -1, -1, -1};
        QTest::newRow("CSV with names")
            << "n.csv" << QByteArray("lat;lon;ele\n47;11;5,5\n47;11,01;\n47;11,02;7\n")
            << "n" << three << QList<double>{5.5, -1, 7};
        QTest::newRow("CSV without names")
            << "m.csv" << QByteArray("11,47,5\n11.01,47,6\n11.02,47,7\n") << "m" << three
            << QList<double>{5, 6, 7};
    }
    void theLongestLineIsTheTrack()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        QFETCH(QString, name);
        QFETCH(QList<QPointF>, places);
        QFETCH(QList<double>, heights);
        const auto track = degreesOf(written(file, text));
        QVERIFY2(track, qPrintable(track ? QString() : track.error().text));
        QCOMPARE(track->name, name);
        QCOMPARE(track->points.size(), places.size());
        for (qsizetype i = 0; i < places.size(); ++i) {
            const TrackPoint &point = track->points.at(i);
            QVERIFY(std::hypot(point.x - places.at(i).x(), point.y - places.at(i).y()) <
                    1e-9);
            QCOMPARE(point.metres.value_or(-1), heights.at(i));
        }
    }

    void placesAreBroughtToTheWantedSystem()
    {
        const QString utm = wktOf("EPSG:32632").value_or(QString());
        for (const QString &file :
             {written("t.kml", kml()),
              written("t.csv", "lon,lat,ele\n11,47,100\n11.01,47,2\n11.02,47,300\n")}) {
            const auto track = readTrack(file, utm, unwatched);
            QVERIFY2(track, qPrintable(track ? QString() : track.error().text));
            QCOMPARE(track->points.size(), qsizetype(3));
            // As gdaltransform -s_srs EPSG:4326 -t_srs EPSG:32632 has it.
            QVERIFY(std::fabs(track->points.first().x - 652049.04) < 0.1);
            QVERIFY(std::fabs(track->points.first().y - 5207105.33) < 0.1);
            QCOMPARE(track->points.first().metres, std::optional(100.0));
        }
        const auto kept = readTrack(written("k.csv", "x;y;z\n652000;5207000;3\n"
                                                     "652100;5207000;4\n"),
                                    utm, unwatched);
        QVERIFY(kept);
        QCOMPARE(kept->points.last().x, 652100.0);
    }

    void shapeFilesAndArchivesAreRead()
    {
        const QString json = written(
            "s.geojson", geoJson(feature("LineString", "[[11,47,5],[11.01,47,6]]")));
        const QString shape = m_folder.filePath("s.shp");
        const QString zipped = m_folder.filePath("s.kmz");
        QCOMPARE(QProcess::execute("ogr2ogr", {shape, json}), 0);
        QCOMPARE(QProcess::execute("ogr2ogr", {"-f", "LIBKML", zipped, json}), 0);
        for (const QString &file : {shape, zipped}) {
            const auto track = degreesOf(file);
            QVERIFY2(track, qPrintable(track ? QString() : track.error().text));
            QCOMPARE(track->points.size(), qsizetype(2));
            QCOMPARE(track->points.last().metres, std::optional(6.0));
        }
    }

    void whatIsNoTrackIsNamed_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("said");
        QTest::newRow("empty") << "e.gpx" << QByteArray() << "Could not read \"%1\": ";
        QTest::newRow("junk") << "j.gpx" << QByteArray("no track at all")
                              << "Could not read \"%1\": ";
        QTest::newRow("no lines") << "n.gpx" << gpxHead() + "</gpx>"
                                  << "\"%1\" holds neither a line nor two points.";
        QTest::newRow("one point")
            << "o.gpx" << gpxHead() + gpxPoint("wpt", 1, 2, "") + "</gpx>"
            << "\"%1\" holds neither a line nor two points.";
    }
    void whatIsNoTrackIsNamed()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        QFETCH(QString, said);
        const QString path = written(file, text);
        const auto track = degreesOf(path);
        QVERIFY(!track);
        QVERIFY2(track.error().text.startsWith(said.arg(path)),
                 qPrintable(track.error().text));
        QCOMPARE(degreesOf("/none.gpx").error().text,
                 QString("There is no file \"/none.gpx\"."));
    }

    void filesTellWhetherTheyAreOnTheEarth()
    {
        const auto told = [this](const char *name, const QByteArray &text) {
            const auto track = readTrack(written(name, text), {}, unwatched);
            return track && track->points.size() > 1 && track->hasSystem;
        };
        QVERIFY(told("y.gpx", trackOfTwoParts()));
        QVERIFY(told("y.kml", kml()));
        QVERIFY(told("y.csv", "lat,lon,ele\n47.1,11.2,300\n47.2,11.3,310\n"));
        QVERIFY(!told("plain.csv", "x,y,z\n100,200,300\n110,210,310\n"));
        const auto plain = readTrack(
            written("plain.csv", "x,y,z\n100,200,300\n110,210,310\n"), {}, unwatched);
        QVERIFY(plain);
        QCOMPARE(plain->points.value(1).x, 110.0);
        QCOMPARE(plain->points.value(1).y, 210.0);
    }

    void readingCanBeStopped()
    {
        Patience progress(0);
        const auto track = readTrack(written("z.gpx", trackOfTwoParts()), {}, progress);
        QVERIFY(!track);
        QVERIFY(track.error().stopped);
    }

    void theSourceReadsTracks()
    {
        const auto source = makeGeodata();
        const auto track = source->track(
            written("i.kml", kml()), wktOf("EPSG:4326").value_or(QString()), unwatched);
        QVERIFY(track);
        QCOMPARE(track->points.size(), qsizetype(3));
    }

    void pointsWithHeightsAreASurface()
    {
        QByteArray features;
        for (int i = 0; i < 10; ++i)
            for (int k = 0; k < 10; ++k)
                features +=
                    (features.isEmpty() ? "" : ",") +
                    feature("Point",
                            "[" + QByteArray::number(11 + i * 0.001 + k % 3 * 1e-4) +
                                "," + QByteArray::number(47 + k * 0.001) + "]",
                            "{\"elevation\":" + QByteArray::number(1000 + i) + "}");
        const auto surface =
            surfaceOfVectors(written("f.geojson", geoJson(features)), NoLimit, unwatched);
        QVERIFY2(surface, qPrintable(surface ? QString() : surface.error().text));
        QVERIFY(isGeographic(surface->crs));
        QVERIFY(surface->sheet.isGeographic);
        QCOMPARE(surface->sheet.pointsUsed, qint64(100));
        const auto range = rangeOf(surface->sheet.heights);
        QVERIFY(range && range->first >= 1000 && range->second <= 1009);
        // Cells are about as dense as the points: 76 m and 111 m apart.
        QCOMPARE(std::lround(surface->sheet.transform[5] * -111170), 50L);
        const auto none = surfaceOfVectors(
            written("h.geojson", geoJson(feature("LineString", "[[1,1],[2,2]]"))),
            NoLimit, unwatched);
        QVERIFY(none.error().text.endsWith("h.geojson\" have no heights."));
    }
};

QTEST_GUILESS_MAIN(TestTracks)
#include "test_tracks.moc"
