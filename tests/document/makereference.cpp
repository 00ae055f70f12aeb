// Makes the pictures of reference/ by the plain method: terrain, textures and frames.
//
//     makereference FOLDER           writes them into FOLDER, which has the sceneries
//     makereference --check FOLDER   compares them with those that are there

#include "base/pi.h"
#include "base/vectormath.h"
#include "document/framecases.h"
#include "flight/curvedflight.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "raster/textureimage.h"
#include "render/plain/terrainsweep.h"
#include "render/plain/transformation.h"
#include "scene/scenerydocument.h"
#include "scene/sceneryreader.h"
#include "scene/waypointlevel.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>

#include <cmath>
#include <cstdio>

namespace {

using Scene = SceneryDocument;

bool readScene(const QString &fileName, Scene *scene)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    SceneryReader reader(*scene);
    QTextStream lines(&file);
    QString line;
    while (lines.readLineInto(&line))
        if (!reader.readLine(line))
            return false;
    const int count = static_cast<int>(scene->controlPoints.size());
    return normalizeWaypoints(scene->waypoints, count) >= 0;
}

// What the field of a scenery is at t, 0 to 1, on its way from A to E.
double onTheWay(double t, double a, double e, double inertia)
{
    double share = t;
    if (inertia != 0.0) {
        const auto eased = [&](double u) {
            return u * (1 - std::exp(-u / inertia)) / (1 - std::exp(-0.5 / inertia));
        };
        share = t < 0.5 ? eased(t) : 1 - eased(1 - t);
    }
    return a + (e - a) * share;
}

// A run of the plain method.
class PlainRun {
public:
    PlainRun(const QDir &folder, const Scene &scene, bool isPreview)
        : m_scene(scene), m_data(scene.parameters),
          m_factor(isPreview                  ? 0.5
                   : m_data.GenauRechnen == 2 ? 2.0
                                              : 1.0),
          m_light(normalized({m_data.LichtX, m_data.LichtY, m_data.LichtZ, 0.0})),
          m_texture(folder.filePath(m_data.TDateiname), nullptr),
          m_elevation(folder.filePath(m_data.HDateiname), m_data.HDateiSkalaX,
                      m_data.HDateiSkalaY, nullptr),
          m_target(int(m_data.AusBreite * m_factor), int(m_data.AusHoehe * m_factor),
                   QImage::Format_RGB32),
          m_camera(nullptr, m_light, m_target.width(), m_target.height())
    {
        m_texture.setBackgroundColor(m_data.Hintergrund);
        m_camera.SetzeTexturDatei(&m_texture);
        m_sweep.meshCellsX = isPreview ? m_data.AusAuflX / 4 : m_data.AusAuflX;
        m_sweep.meshCellsY = isPreview ? m_data.AusAuflY / 4 : m_data.AusAuflY;
        m_sweep.Licht = m_light;
        m_sweep.renderWidth = m_target.width();
        m_sweep.renderHeight = m_target.height();
        m_sweep.activeTransformation = &m_camera;
        m_sweep.renderElevation = &m_elevation;
        m_sweep.renderTarget = &m_target;
        m_sweep.terrainX = m_elevation.width() * m_data.HDateiSkalaX;
        m_sweep.terrainY = m_elevation.height() * m_data.HDateiSkalaY;
    }

    QImage frame(int number)
    {
        const double last = m_data.Bildanzahl - 1.0;
        m_t = m_data.Bildanzahl < 2 ? 0.0 : number / last;
        const double focal = at(m_data.BrennA, m_data.BrennE) * m_factor;
        const double roll = at(m_data.VerkantenA, m_data.VerkantenE);
        if (m_data.isStraight)
            m_camera.SetView({at(m_data.BeobXA, m_data.BeobXE),
                              at(m_data.BeobYA, m_data.BeobYE),
                              at(m_data.BeobZA, m_data.BeobZE), 1.0},
                             radians(m_data.RichtungA, m_data.RichtungE),
                             radians(offStraightDown(m_data.NeigungA),
                                     offStraightDown(m_data.NeigungE)),
                             focal, roll / 180 * Pi);
        else
            flyCurve(number, focal, roll);
        m_elevation.setZScale(at(m_data.HDateiSkalaZA, m_data.HDateiSkalaZE));
        m_sweep.dustRange = at(m_data.NebelA, m_data.NebelE);
        m_sweep.Scan(&m_texture, m_data.HintergrundVerwenden, m_data.Hintergrund,
                     m_data.GenauRechnen);
        return m_target.copy();
    }

private:
    [[nodiscard]] double at(double a, double e) const
    {
        return onTheWay(m_t, a, e, m_data.Traegheit);
    }
    [[nodiscard]] double radians(double a, double e) const { return at(a, e) / 180 * Pi; }
    static double offStraightDown(double pitch)
    {
        return pitch == -90.0 ? -89.999 : pitch;
    }

    void flyCurve(int number, double focal, double roll)
    {
        const CurvedFlight flight(m_scene.controlPoints, m_scene.waypoints,
                                  m_data.Bildanzahl);
        const CurvePoint point = flight.point(number);
        m_camera.SetView({point.x, point.y, point.z, 1.0}, point.heading, point.pitch,
                         focal, roll);
    }

    const Scene &m_scene;
    const SceneryData &m_data;
    double m_factor; // pixels that are drawn for each that is asked for
    C4Vector m_light;
    TextureImage m_texture;
    ElevationImage m_elevation;
    TextureImage m_target;
    plain::Transformation m_camera;
    plain::TerrainSweep m_sweep;
    double m_t = 0.0;
};

// Writes pictures, or compares them with those that are there.
class Pictures {
public:
    Pictures(QDir folder, bool isCheck) : m_folder(std::move(folder)), m_isCheck(isCheck)
    {
    }

    bool take(const QImage &picture, const QString &name)
    {
        const QString path = m_folder.filePath(name);
        bool isGood = false;
        if (m_isCheck)
            isGood = loadImageFile(path).convertToFormat(QImage::Format_RGB32) ==
                     picture.convertToFormat(QImage::Format_RGB32);
        else
            isGood = m_folder.mkpath(QFileInfo(name).path()) &&
                     saveImageFile(picture.convertToFormat(QImage::Format_RGB888), path);
        if (!isGood)
            std::fprintf(stderr, "%s: %s\n", m_isCheck ? "differs" : "not written",
                         qPrintable(name));
        return isGood;
    }

private:
    QDir m_folder;
    bool m_isCheck;
};

ElevationImage hills()
{
    ElevationImage image(60, 50, QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setElevation(x, y,
                               900 * std::sin(x * 0.21) * std::cos(y * 0.17) + 1100 +
                                   (x * 7 + y * 13) % 11 * 9);
    return image;
}

QImage hillsTexture()
{
    QImage image(120, 100, QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y,
                           (x / 8 + y / 8) % 2 == 0 ? qRgb(60 + x, 140, 70)
                                                    : qRgb(170, 120 + y, 60));
    return image;
}

// Each texel tells its place.
QImage texels()
{
    QImage image(40, 30, QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(40 + x * 5, 40 + y * 7, (x + y) % 2 * 100 + 60));
    return image;
}

ElevationImage flatLand()
{
    ElevationImage image(40, 30, QImage::Format_RGB888);
    image.clear(0xFF0001F4u); // 500 steps
    return image;
}

bool takeFrames(const QDir &folder, const FrameCase &one, Pictures &pictures)
{
    storeSettings(one);
    Scene scene;
    if (!readScene(folder.filePath(one.scene), &scene)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(one.scene));
        return false;
    }
    PlainRun run(folder, scene, one.isPreview());
    bool isGood = true;
    for (const QString &name : one.frames) {
        const int number = name.section('_', 1).section('.', 0, 0).toInt();
        isGood = pictures.take(run.frame(number), one.pathOf(name)) && isGood;
    }
    return isGood;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool isCheck = arguments.size() == 2 && arguments[0] == "--check";
    if (arguments.size() != 1 && !isCheck) {
        std::fputs("usage: makereference [--check] FOLDER\n", stderr);
        return 2;
    }
    const QTemporaryDir settings; // those of whoever runs this stay as they are
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    const QDir folder(arguments.constLast());
    Pictures pictures(folder, isCheck);
    bool isGood = pictures.take(hills(), "hills_elevation.png");
    isGood = pictures.take(hillsTexture(), "hills_texture.png") && isGood;
    isGood = pictures.take(texels(), "texels.png") && isGood;
    isGood = pictures.take(flatLand(), "flat_elevation.png") && isGood;
    const QList<FrameCase> cases = frameCases(folder);
    for (const FrameCase &one : cases)
        isGood = takeFrames(folder, one, pictures) && isGood;
    return isGood && !cases.isEmpty() ? 0 : 1;
}
