#pragma once

#include "terrain/terrainrequest.h"
#include "terrain/terrainsource.h"
#include "terrain/writeterrain.h"

#include <QImage>
#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

/// Gives what reads terrain, or the sentence that tells what is missing. Called on the
/// thread that will use it.
using TerrainSourceMaker = std::function<Result<std::unique_ptr<TerrainSource>>()>;

/// The work of the windows around terrain, on a thread of its own.
///
/// One piece of work at a time, in the order of the calls. Signals come on the thread of
/// this object. A new open() and stop() end what is under way and what waits; write()
/// ends a look that is under way. plan() is answered in between while a look goes on;
/// only the last of several that wait is.
class TerrainJobs : public QObject {
    Q_OBJECT

public:
    explicit TerrainJobs(TerrainSourceMaker make, QObject *parent = nullptr);
    /// Waits until the work under way has ended.
    ~TerrainJobs() override;

    /// Opens files, then draws the map, then looks at every cell. Where they hold points
    /// as text, the head of the first such file comes before all else.
    void open(const QStringList &files, const PointOptions &points);
    /// Asks which cells a request means.
    void plan(const GridRequest &request);
    /// Does the whole of a request.
    void write(const TerrainRequest &request);
    /// Runs any work with the source; where there is none, tells why, by failed() if
    /// nobody else is named.
    using Work = std::function<void(TerrainSource &source, Progress &progress)>;
    void run(const Work &work,
             const std::function<void(const Failure &why)> &without = {});
    /// Runs any work without it.
    void runAlone(const std::function<void(Progress &progress)> &work);
    void stop();

signals:
    void pointsFound(const PointFileHead &head);
    void opened(const TerrainFacts &facts);
    /// The map so far: rows from the north down to some row.
    void mapDrawn(const QImage &map, const std::shared_ptr<const Heights> &overview);
    void scanned(const TerrainScan &scan);
    void planned(const OutputGrid &grid);
    void planFailed(const QString &reason);
    void written(const TerrainReport &report);
    /// Opening or writing failed; the reason is empty where it was asked to stop.
    void failed(const QString &reason);
    /// How far opening, looking or writing is; `of` is 0 where nobody knows.
    void progressed(qint64 done, qint64 of);
    /// Everything that was asked for is done or was stopped.
    void idle();

private:
    using Token = std::shared_ptr<std::atomic<bool>>; // set: stop
    class Watch;

    void post(const std::function<void(const Token &)> &job);
    /// The source, made at first use.
    [[nodiscard]] Result<TerrainSource *> source();
    void openNow(const QStringList &files, const PointOptions &points, const Token &stop);
    /// Tells of the head of the first file of points among `named`, which `given` have
    /// come to.
    void findPoints(const QStringList &given, const QStringList &named,
                    const PointOptions &points, Progress &progress);
    void look(const Token &stop);
    void drawMap(const Token &stop);
    void writeNow(const TerrainRequest &request, const Token &stop);
    /// Answers the plan that waits.
    void answerPlan();
    /// Tells of a failure of work.
    void tell(const Failure &failure);

    TerrainSourceMaker m_make;
    QThread m_thread;
    QObject *m_worker; // lives on the thread; work is sent to it
    Token m_stop = std::make_shared<std::atomic<bool>>(false);
    Token m_stopLook = std::make_shared<std::atomic<bool>>(false);
    std::atomic<int> m_waiting = 0;
    std::mutex m_planMutex;
    std::optional<GridRequest> m_plan; // guarded by the mutex

    // Used on the thread of the work only.
    std::unique_ptr<TerrainSource> m_source;
    std::unique_ptr<Terrain> m_terrain;
    QStringList m_given; // in which m_pointFile was found
    QString m_pointFile; // it may lie in an archive
};
