#include "terrain/pathtrack.h"

#include "base/pi.h"
#include "base/wholefile.h"
#include "flight/flight.h"
#include "terrain/sceneryworld.h"
#include "terrain/terrainsource.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>
#include <QObject>
#include <QXmlStreamWriter>

namespace {

double degrees(double radians) { return radians / Pi * 180.0; }

// Ten digits: more than a place needs, fewer than the noise of a sum has.
QByteArray number(double value)
{
    constexpr int Digits = 10;
    return QByteArray::number(value == 0.0 ? 0.0 : value, 'g', Digits);
}

QByteArray degreesText(double value)
{
    constexpr int Decimals = 9; // a tenth of a millimetre
    return QByteArray::number(value, 'f', Decimals);
}

QByteArray metresText(double value)
{
    constexpr int Decimals = 3;
    return QByteArray::number(value, 'f', Decimals);
}

QByteArray csvText(const QList<FrameCamera> &cameras)
{
    QByteArray text("frame,x,y,z,heading,pitch,roll\n");
    for (qsizetype i = 0; i < cameras.size(); ++i) {
        const FrameCamera &camera = cameras.at(i);
        text += QByteArray::number(i) + ',' + number(camera.position.x) + ',' +
                number(camera.position.y) + ',' + number(camera.position.z) + ',' +
                number(degrees(camera.direction)) + ',' + number(degrees(camera.pitch)) +
                ',' + number(degrees(camera.roll)) + '\n';
    }
    return text;
}

// A frame's place on the earth.
struct EarthPoint {
    double longitude;
    double latitude;
    double metres;
};

Result<QList<EarthPoint>> onEarth(const QList<FrameCamera> &cameras,
                                  const SceneryWorld &world, TerrainSource &source)
{
    QList<QPointF> places;
    for (const FrameCamera &camera : cameras)
        places << world.placeAt(camera.position.x, camera.position.y);
    const auto geographic = source.geographic(places, world.crs());
    if (!geographic)
        return tl::unexpected(geographic.error());
    QList<EarthPoint> points;
    for (qsizetype i = 0; i < cameras.size(); ++i)
        points.append(
            {geographic->at(i).x(), geographic->at(i).y(),
             cameras.at(i).position.z / world.unitsOfHeight(cameras.at(i).zScale)});
    return points;
}

// A control character has no place in a file of this kind, not even as an entity.
QString printable(QString text)
{
    for (QChar &c : text)
        if (c < QChar(0x20) || c.isNonCharacter() || c.isSurrogate())
            c = c == u'\t' || c.isSurrogate() ? c : QChar(u' ');
    return text;
}

QByteArray gpxText(const QList<EarthPoint> &points, const QString &name)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement("gpx");
    xml.writeDefaultNamespace("http://www.topografix.com/GPX/1/1");
    xml.writeAttribute("version", "1.1");
    xml.writeAttribute("creator", "Zephrant");
    xml.writeStartElement("trk");
    xml.writeTextElement("name", printable(name));
    xml.writeStartElement("trkseg");
    for (const EarthPoint &point : points) {
        xml.writeStartElement("trkpt");
        xml.writeAttribute("lat", QLatin1String(degreesText(point.latitude)));
        xml.writeAttribute("lon", QLatin1String(degreesText(point.longitude)));
        xml.writeTextElement("ele", QLatin1String(metresText(point.metres)));
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return text;
}

QByteArray coordinatesText(const QList<EarthPoint> &points)
{
    QByteArray text;
    for (const EarthPoint &point : points)
        text += (text.isEmpty() ? "" : " ") + degreesText(point.longitude) + ',' +
                degreesText(point.latitude) + ',' + metresText(point.metres);
    return text;
}

QByteArray kmlText(const QList<EarthPoint> &points, const QString &name)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement("kml");
    xml.writeDefaultNamespace("http://www.opengis.net/kml/2.2");
    xml.writeStartElement("Document");
    xml.writeTextElement("name", printable(name));
    xml.writeStartElement("Placemark");
    xml.writeTextElement("name", printable(name));
    // A line has two places at least.
    xml.writeStartElement(points.size() > 1 ? "LineString" : "Point");
    xml.writeTextElement("altitudeMode", "absolute");
    xml.writeTextElement("coordinates", QLatin1String(coordinatesText(points)));
    xml.writeEndDocument();
    return text;
}

Result<QByteArray> earthText(const SceneryDocument &document, const QString &folder,
                             const QList<FrameCamera> &cameras, const QString &name,
                             bool isGpx, TerrainSource &source)
{
    const auto ground = loadGround(document, folder);
    if (!ground)
        return tl::unexpected(ground.error());
    const auto world = SceneryWorld::of(document, *ground);
    if (!world)
        return tl::unexpected(world.error());
    if (world->crs().isEmpty())
        return tl::unexpected(noSystem(*ground));
    const auto points = onEarth(cameras, *world, source);
    if (!points)
        return tl::unexpected(points.error());
    return isGpx ? gpxText(*points, name) : kmlText(*points, name);
}

Result<void> write(const QString &file, const QByteArray &text)
{
    QString reason;
    const auto writeText = [&](QIODevice &device) {
        return device.write(text) == text.size();
    };
    if (writeWholeFile(file, writeText, &reason))
        return {};
    return failed(QObject::tr("Could not write file \"%1\": %2.")
                      .arg(QDir::toNativeSeparators(file), reason));
}

} // namespace

Result<QList<FrameCamera>> camerasOf(const SceneryDocument &document)
{
    if (const Result<void> good = checkFlight(document); !good)
        return failed(good.error().text.trimmed());
    const Flight flight(document, 1.0);
    QList<FrameCamera> cameras;
    for (int frame = 0; frame < document.parameters.Bildanzahl; ++frame)
        cameras << flight.camera(frame);
    return cameras;
}

Result<void> writePathTrack(const SceneryDocument &document, const QString &folder,
                            const QString &name, const QString &file,
                            TerrainSource *source, Progress &progress)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    const bool isGpx = suffix == QLatin1String("gpx");
    const bool isCsv = suffix == QLatin1String("csv");
    if (!isGpx && !isCsv && suffix != QLatin1String("kml"))
        return failed(QObject::tr("The name of a path must end in .gpx, .kml or .csv."));
    const auto cameras = camerasOf(document);
    if (!cameras)
        return tl::unexpected(cameras.error());
    if (!progress.step(1, 3))
        return stopped();
    if (isCsv)
        return write(file, csvText(*cameras));
    if (source == nullptr)
        return failed(QObject::tr("What places the path on the earth is missing."));
    const auto text = earthText(document, folder, *cameras, name, isGpx, *source);
    if (!text)
        return tl::unexpected(text.error());
    if (!progress.step(2, 3))
        return stopped();
    return write(file, *text);
}
