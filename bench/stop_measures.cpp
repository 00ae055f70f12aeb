// How long work on terrain goes on without asking whether it may, and how long it takes
// to end when it is asked to stop; a row for each kind, milliseconds of the clock:
//
//     build/release/bench/stop_measures [raster sky holes grid scattered overview scan]
//
// On a machine that others use too, the least of several runs tells.
#include "geodata/geodata.h"
#include "geodata/geofile.h"
#include "terrain/maketexture.h"
#include "terrain/writeterrain.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>
#include <functional>
#include <random>

namespace {

const QTemporaryDir &folder()
{
    static const QTemporaryDir made;
    return made;
}

constexpr double Worth = 45.0; // to be told

// Remembers the longest time between two questions, and where in the work that was.
class Watch final : public Progress {
public:
    explicit Watch(double stopAt = 2.0) : m_stopAt(stopAt) { m_clock.start(); }

    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        const double share = of > 0 ? double(done) / double(of) : 0.0;
        if (!m_isStopped)
            look(share);
        // The question is answered; from here on the work is late.
        m_isStopped = m_isStopped || share >= m_stopAt;
        return !m_isStopped;
    }
    // The end of the work is a question too.
    void look(double share)
    {
        const double passed = double(m_clock.nsecsElapsed()) * 1e-6;
        m_clock.start();
        if (passed > Worth)
            std::printf("    %6.1f ms from %.3f to %.3f\n", passed, m_share, share);
        if (passed > longest)
            longest = passed, from = m_share, to = share;
        m_share = share;
    }
    [[nodiscard]] double sinceLast() const
    {
        return double(m_clock.nsecsElapsed()) * 1e-6;
    }

    double longest = 0.0;
    double from = 0.0;
    double to = 0.0;

private:
    QElapsedTimer m_clock;
    double m_stopAt;
    double m_share = 0.0;
    bool m_isStopped = false;
};

using Work = std::function<void(Progress &)>;

// Kinds of work that are not named on the command line, if any is, are left out.
QStringList wanted;

void measure(const char *name, const Work &work)
{
    if (!wanted.isEmpty() && !wanted.contains(QLatin1String(name)))
        return;
    Watch whole;
    work(whole);
    whole.look(1.0);
    double latest = 0.0;
    for (const double share : {0.01, 0.06, 0.2, 0.4, 0.6, 0.755, 0.8, 0.9}) {
        Watch watch(share);
        work(watch);
        latest = std::max(latest, watch.sinceLast());
    }
    std::printf("%-22s longest %6.1f (from %.3f to %.3f)   stopped %6.1f\n", name,
                whole.longest, whole.from, whole.to, latest);
    std::fflush(stdout);
}

GeoFile raster(const char *name, int side)
{
    GeoFile file;
    file.name = folder().filePath(QString::fromLatin1(name));
    file.size = {side, side};
    file.crs = QStringLiteral("EPSG:4326");
    file.transform = {14.0, 1.0 / 3600.0, 0.0, 47.0, 0.0, -1.0 / 3600.0};
    file.type = GDT_Int16;
    file.options = QStringList{"COMPRESS=LZW", "TILED=YES"};
    file.height = [](int x, int y) { return hills(x, y) + (x * 7 + y * 13) % 5; };
    return file;
}

QString written(const GeoFile &file) { return write(file) ? file.name : QString(); }

GeoFile withHoles()
{
    GeoFile holes = raster("holes.tif", 4096);
    holes.noData = -9999.0;
    holes.height = [](int x, int y) {
        return x % 150 < 9 && y % 170 < 11 ? -9999.0 : hills(x, y);
    };
    return holes;
}

QString points(const char *name, bool isGrid)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(0.0, 10000.0);
    QFile file(folder().filePath(QString::fromLatin1(name)));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    QTextStream text(&file);
    for (int i = 0; i < 1000000; ++i) {
        const double x = isGrid ? 10.0 * (i % 1000) : place(random);
        const double y = isGrid ? 10.0 * (i / 1000) : place(random);
        text << QString::number(x, 'f', 2) << ' ' << QString::number(y, 'f', 2) << ' '
             << QString::number(hills(int(x / 10), int(y / 10)), 'f', 2) << '\n';
    }
    return file.fileName();
}

void openAll(const QString &file, const TextureRequest &texture, Progress &progress)
{
    TerrainRequest request;
    request.files = QStringList{file};
    request.out = folder().filePath(QStringLiteral("scenery"));
    request.texture = texture;
    (void)writeTerrain(*makeGeodata(), request, progress);
}

// Tells of its rows as of steps.
void overview(const QString &file, Progress &progress)
{
    NoProgress opening;
    const auto terrain = makeGeodata()->open({file}, {}, opening);
    if (!terrain || !progress.step(0, 1))
        return;
    (void)(*terrain)->overview({1000, 1000}, [&](const Heights &all, int, int until) {
        return progress.step(until, all.size.height());
    });
}

void scan(const QString &file, Progress &progress)
{
    NoProgress opening;
    const auto terrain = makeGeodata()->open({file}, {}, opening);
    if (terrain && progress.step(0, 1))
        (void)(*terrain)->scan(progress);
}

} // namespace

int main(int count, char **arguments)
{
    for (int i = 1; i < count; ++i)
        wanted.append(QString::fromLocal8Bit(arguments[i]));
    TextureRequest sky;
    sky.light = BakedLight::Sky;
    QString file;
    const auto isWanted = [](const char *name) {
        return wanted.isEmpty() || wanted.contains(QLatin1String(name));
    };
    if (isWanted("raster") || isWanted("sky"))
        file = written(raster("usual.tif", 4096));
    measure("raster", [&](Progress &p) { openAll(file, {}, p); });
    measure("sky", [&](Progress &p) { openAll(file, sky, p); });
    if (isWanted("holes"))
        file = written(withHoles());
    measure("holes", [&](Progress &p) { openAll(file, {}, p); });
    if (isWanted("grid"))
        file = points("grid.xyz", true);
    measure("grid", [&](Progress &p) { openAll(file, {}, p); });
    if (isWanted("scattered"))
        file = points("scattered.xyz", false);
    measure("scattered", [&](Progress &p) { openAll(file, {}, p); });
    if (isWanted("overview") || isWanted("scan"))
        file = written(raster("large.tif", 8192));
    measure("overview", [&](Progress &p) { overview(file, p); });
    measure("scan", [&](Progress &p) { scan(file, p); });
    return 0;
}
