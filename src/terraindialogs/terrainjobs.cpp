#include "terraindialogs/terrainjobs.h"

#include "terraindialogs/terrainmap.h"

#include <QElapsedTimer>

namespace {

constexpr QSize MapSize(1000, 1000); // pixels, at most
constexpr qint64 TellEvery = 40;     // milliseconds

} // namespace

/// Tells how far work is, some times a second, and hears when it is to stop.
class TerrainJobs::Watch final : public Progress {
public:
    Watch(TerrainJobs &jobs, Token stop, bool tells = true)
        : m_jobs(jobs), m_stop(std::move(stop)), m_tells(tells)
    {
    }
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        if (*m_stop)
            return false;
        if (m_since.isValid() && m_since.elapsed() < TellEvery)
            return true;
        m_since.start();
        if (m_tells)
            emit m_jobs.progressed(done, of);
        return true;
    }

private:
    TerrainJobs &m_jobs;
    Token m_stop;
    bool m_tells;
    QElapsedTimer m_since;
};

TerrainJobs::TerrainJobs(TerrainSourceMaker make, QObject *parent)
    : QObject(parent), m_make(std::move(make)), m_worker(new QObject)
{
    qRegisterMetaType<std::shared_ptr<const Heights>>();
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.setObjectName(QStringLiteral("terrain"));
    m_thread.start();
}

TerrainJobs::~TerrainJobs()
{
    stop();
    // What reads terrain goes where it has worked.
    QMetaObject::invokeMethod(m_worker, [this] {
        m_terrain.reset();
        m_source.reset();
    });
    m_thread.quit();
    m_thread.wait();
}

void TerrainJobs::post(const std::function<void(const Token &)> &job)
{
    ++m_waiting;
    QMetaObject::invokeMethod(m_worker, [this, job, stop = m_stop] {
        if (!*stop)
            job(stop);
        if (--m_waiting == 0)
            emit idle();
    });
}

void TerrainJobs::stop()
{
    *m_stop = true;
    *m_stopLook = true;
    m_stop = std::make_shared<std::atomic<bool>>(false);
    m_stopLook = std::make_shared<std::atomic<bool>>(false);
    const std::lock_guard lock(m_planMutex);
    m_plan.reset();
}

void TerrainJobs::open(const QStringList &files, const PointOptions &points)
{
    stop();
    post([this, files, points](const Token &stop) { openNow(files, points, stop); });
    // The look has a flag of its own: writing ends it and leaves all else.
    post([this, ends = m_stopLook](const Token &) {
        if (m_terrain)
            look(ends);
    });
}

void TerrainJobs::plan(const GridRequest &request)
{
    {
        const std::lock_guard lock(m_planMutex);
        m_plan = request;
    }
    post([this](const Token &) { answerPlan(); });
}

void TerrainJobs::write(const TerrainRequest &request)
{
    *m_stopLook = true;
    m_stopLook = std::make_shared<std::atomic<bool>>(false);
    post([this, request](const Token &stop) { writeNow(request, stop); });
}

void TerrainJobs::run(const Work &work,
                      const std::function<void(const Failure &why)> &without)
{
    post([this, work, without](const Token &stop) {
        Watch watch(*this, stop);
        const Result<TerrainSource *> reader = source();
        if (reader)
            work(**reader, watch);
        else if (without)
            without(reader.error());
        else
            tell(reader.error());
    });
}

void TerrainJobs::runAlone(const std::function<void(Progress &)> &work)
{
    post([this, work](const Token &stop) {
        Watch watch(*this, stop);
        work(watch);
    });
}

Result<TerrainSource *> TerrainJobs::source()
{
    if (!m_source) {
        Result<std::unique_ptr<TerrainSource>> made = m_make();
        if (!made)
            return tl::unexpected(made.error());
        m_source = std::move(*made);
    }
    return m_source.get();
}

void TerrainJobs::tell(const Failure &failure)
{
    emit failed(failure.stopped ? QString() : failure.text);
}

void TerrainJobs::openNow(const QStringList &files, const PointOptions &points,
                          const Token &stop)
{
    m_terrain.reset();
    const Result<TerrainSource *> reader = source();
    if (!reader)
        return tell(reader.error());
    Watch watch(*this, stop);
    const bool isKnown = files == m_given && !m_pointFile.isEmpty();
    findPoints(files, isKnown ? QStringList{m_pointFile} : files, points, watch);
    Result<std::unique_ptr<Terrain>> terrain = (*reader)->open(files, points, watch);
    if (!terrain)
        return tell(terrain.error());
    m_terrain = std::move(*terrain);
    const TerrainFacts &facts = m_terrain->facts();
    // What lies in folders and archives is known by now.
    if (m_pointFile.isEmpty() && facts.pointsRead > 0)
        findPoints(files, facts.files, points, watch);
    emit opened(facts);
}

void TerrainJobs::findPoints(const QStringList &given, const QStringList &named,
                             const PointOptions &points, Progress &progress)
{
    m_given = given;
    m_pointFile.clear();
    const auto head = m_source->pointHead(named, points, progress);
    if (!head)
        return;
    m_pointFile = head->file;
    emit pointsFound(*head);
}

void TerrainJobs::look(const Token &stop)
{
    answerPlan();
    drawMap(stop);
    answerPlan();
    if (*stop)
        return;
    Watch watch(*this, stop);
    const Result<TerrainScan> scan = m_terrain->scan(watch);
    if (scan)
        emit scanned(*scan);
    else if (!scan.error().stopped)
        tell(scan.error());
}

void TerrainJobs::drawMap(const Token &stop)
{
    const double shape = metresShape(m_terrain->facts());
    QElapsedTimer since;
    const auto ready = [&](const Heights &overview, int, int to) {
        answerPlan();
        if (*stop)
            return false;
        const bool isWhole = to == overview.size.height();
        if (since.isValid() && since.elapsed() < 4 * TellEvery && !isWhole)
            return true;
        emit progressed(to, overview.size.height());
        const auto kept = std::make_shared<const Heights>(overview);
        emit mapDrawn(drawnMap(*kept, to, shape), isWhole ? kept : nullptr);
        since.start();
        return true;
    };
    const Result<Heights> overview = m_terrain->overview(MapSize, ready);
    if (!overview && !overview.error().stopped)
        tell(overview.error());
}

void TerrainJobs::answerPlan()
{
    std::optional<GridRequest> request;
    {
        const std::lock_guard lock(m_planMutex);
        request.swap(m_plan);
    }
    if (!request || !m_terrain)
        return;
    const Result<OutputGrid> grid = m_terrain->plan(*request);
    if (grid)
        emit planned(*grid);
    else
        emit planFailed(grid.error().text);
}

void TerrainJobs::writeNow(const TerrainRequest &request, const Token &stop)
{
    const Result<TerrainSource *> reader = source();
    if (!reader)
        return tell(reader.error());
    Watch watch(*this, stop);
    const Result<TerrainReport> report =
        m_terrain ? writeTerrain(**reader, *m_terrain, request, watch)
                  : writeTerrain(**reader, request, watch);
    if (report)
        emit written(*report);
    else
        tell(report.error());
}
