#include "base/pi.h"
#include "support/textfile.h"
#include "terrain/pathtrack.h"
#include "terrain/sceneryonearth.h"
#include "terrain/terrainsource.h"

#include <QTest>
#include <QXmlStreamReader>

namespace {

NoProgress unwatched;

/// Knows nothing but a made-up way to longitudes and latitudes.
class PlainSource final : public TerrainSource {
public:
    bool fails = false;

    QStringList about() const override { return {}; }
    bool canOpen(const QString &) override { return false; }
    Result<std::unique_ptr<Terrain>> open(const QStringList &, const PointOptions &,
                                          Progress &) override
    {
        return failed("no");
    }
    Result<qint64> fillHoles(Heights &, double, Progress &) override { return 0; }
    Result<QSize> photoSize(const QStringList &, const OutputGrid &) override
    {
        return failed("no");
    }
    Result<QImage> photo(const QStringList &, const OutputGrid &, const QSize &,
                         Progress &) override
    {
        return failed("no");
    }
    Result<Track> track(const QString &, const QString &, Progress &) override
    {
        return failed("no");
    }
    Result<QList<QPointF>> geographic(const QList<QPointF> &places,
                                      const QString &) override
    {
        if (fails)
            return failed("There is no way to the earth.");
        QList<QPointF> all;
        for (const QPointF &place : places)
            all << QPointF(place.x() / 100000, place.y() / 100000);
        return all;
    }
    QString projectionText(const QString &crs) override { return crs; }
};

SceneryDocument straight(SceneryDocument document)
{
    SceneryData &data = document.parameters;
    data.Bildanzahl = 11;
    data.Traegheit = 0;
    data.BeobXA = 10;
    data.BeobXE = 110;
    data.BeobYA = data.BeobYE = 49;
    data.BeobZA = 40;
    data.BeobZE = 60.5;
    data.RichtungA = 90;
    data.RichtungE = 45;
    data.NeigungA = data.NeigungE = -12.5;
    data.VerkantenA = 0;
    data.VerkantenE = 30;
    return document;
}

} // namespace

class TestPathTrack : public QObject {
    Q_OBJECT

    SceneryOnEarth m_scenery;
    PlainSource m_source;

    Result<void> write(const SceneryDocument &document, const QString &file,
                       const QString &name = "flight")
    {
        return writePathTrack(document, m_scenery.folder(), name, m_scenery.path(file),
                              &m_source, unwatched);
    }

private slots:
    void aTableHoldsEveryFrame()
    {
        const auto written = write(straight(m_scenery.document), "a.csv");
        QVERIFY2(written, qPrintable(written ? QString() : written.error().text));
        const QByteArrayList lines = bytesIn(m_scenery.path("a.csv")).split('\n');
        QCOMPARE(lines.size(), 13);
        QCOMPARE(lines.at(0), QByteArray("frame,x,y,z,heading,pitch,roll"));
        QCOMPARE(lines.at(1), QByteArray("0,10,49,40,90,-12.5,0"));
        QCOMPARE(lines.at(6), QByteArray("5,60,49,50.25,67.5,-12.5,15"));
        QCOMPARE(lines.at(11), QByteArray("10,110,49,60.5,45,-12.5,30"));
    }

    void theRollOfACurvedFlightIsToldAsDrawn()
    {
        SceneryDocument document = straight(m_scenery.document);
        document.parameters.isStraight = false;
        for (int i = 0; i < 5; ++i)
            document.controlPoints.append(ControlPoint(20 * i, 30, 50, 0));
        for (int i = 0; i < 7; ++i)
            document.waypoints.append(Waypoint(0, 0, 0, Pi / 2, -0.25));
        document.parameters.VerkantenE = 1.5; // radians, as it is drawn
        QVERIFY(write(document, "c.csv"));
        const QByteArrayList lines = bytesIn(m_scenery.path("c.csv")).split('\n');
        QCOMPARE(lines.size(), 13);
        QVERIFY(lines.at(1).startsWith("0,0,30,50,90,-14.3239"));
        const QByteArrayList last = lines.at(11).split(',');
        QVERIFY(std::fabs(last.at(6).toDouble() - 1.5 / Pi * 180) < 1e-6);
    }

    void earthlyTracksHaveMetres_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::newRow("gpx") << "gpx";
        QTest::newRow("kml") << "KML";
    }
    void earthlyTracksHaveMetres()
    {
        QFETCH(QString, suffix);
        const QString name = "A & B <\"c\"> \x01 Höhe";
        const auto written = write(straight(m_scenery.document), "t." + suffix, name);
        QVERIFY2(written, qPrintable(written ? QString() : written.error().text));
        const QByteArray text = bytesIn(m_scenery.path("t." + suffix));
        QXmlStreamReader xml(text);
        QList<double> numbers;
        QString found;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            if (xml.name() == u"name")
                found = xml.readElementText();
            else if (xml.name() == u"trkpt")
                numbers << xml.attributes().value("lon").toDouble()
                        << xml.attributes().value("lat").toDouble();
            else if (xml.name() == u"ele")
                numbers << xml.readElementText().toDouble();
            else if (xml.name() == u"coordinates")
                for (const QString &place : xml.readElementText().split(' '))
                    for (const QString &number : place.split(','))
                        numbers << number.toDouble();
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(found, QString("A & B <\"c\">   Höhe"));
        QCOMPARE(numbers.size(), 33);
        // Frame 0 stands at x 10, y 49 and 40 units of 30 m.
        const QPointF place = SceneryOnEarth::placeOf(10, 100);
        QVERIFY(std::fabs(numbers.at(0) - place.x() / 100000) < 1e-8);
        QVERIFY(std::fabs(numbers.at(1) - place.y() / 100000) < 1e-8);
        QCOMPARE(numbers.at(2), 1200.0);
        QCOMPARE(numbers.at(32), 1815.0);
    }

    void exaggerationIsTakenOut()
    {
        const SceneryOnEarth tall(2.0);
        PlainSource source;
        QVERIFY(writePathTrack(straight(tall.document), tall.folder(), "t",
                               tall.path("t.gpx"), &source, unwatched));
        QVERIFY(bytesIn(tall.path("t.gpx")).contains("<ele>600.000</ele>"));
    }

    void oneFrameIsAPoint()
    {
        SceneryDocument document = straight(m_scenery.document);
        document.parameters.Bildanzahl = 1;
        QVERIFY(write(document, "one.kml"));
        QVERIFY(bytesIn(m_scenery.path("one.kml")).contains("<Point>"));
    }

    void whatCannotBeWrittenLeavesTheOldFile()
    {
        m_scenery.write("old.gpx", "old");
        m_source.fails = true;
        const auto refused = write(straight(m_scenery.document), "old.gpx");
        m_source.fails = false;
        QVERIFY(!refused);
        QCOMPARE(refused.error().text, QString("There is no way to the earth."));
        QCOMPARE(bytesIn(m_scenery.path("old.gpx")), QByteArray("old"));
        QVERIFY(!write(straight(m_scenery.document), "none/t.csv"));
        QCOMPARE(write(straight(m_scenery.document), "t.txt").error().text,
                 QString("The name of a path must end in .gpx, .kml or .csv."));
        SceneryDocument curved = m_scenery.document;
        curved.parameters.isStraight = false;
        QVERIFY(write(curved, "t.csv").error().text.contains("control points is 0"));
    }

    void aTableNeedsNoGeoreference()
    {
        SceneryDocument document = straight({});
        QVERIFY(writePathTrack(document, {}, "t", m_scenery.path("n.csv"), nullptr,
                               unwatched));
        QCOMPARE(writePathTrack(document, {}, "t", m_scenery.path("n.gpx"), &m_source,
                                unwatched)
                     .error()
                     .text,
                 QString("The scenery has no elevation file."));
    }
};

QTEST_GUILESS_MAIN(TestPathTrack)
#include "test_pathtrack.moc"
