#include "live/liveengine.h"

#include "base/progress.h"
#include "live/liveframe.h"
#include "render/terrainsweep.h"

#include <chrono>
#include <new>

namespace {

using Clock = std::chrono::steady_clock;

// A refinement in between is worth its time where the final picture takes longer than
// this, in seconds, and the one in between not more than a third of that.
constexpr double LongRefinement = 0.2;
// Beside a run: five pictures a second at most, on one core, a sixth of that time.
constexpr double SecondsBesideARun = 1.0 / 30;
constexpr std::chrono::milliseconds BetweenPicturesBesideARun{200};

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

// Asked by the picture in hand whether it may go on. One that moves is drawn to its end,
// since it comes soon, and newer requests may come faster than pictures.
class LiveEngine::Interruption final : public Progress {
public:
    explicit Interruption(const std::atomic<bool> &interrupted) : m_flag(interrupted) {}
    [[nodiscard]] bool step(qint64, qint64) override { return !m_flag; }

private:
    const std::atomic<bool> &m_flag;
};

LiveEngine::LiveEngine(QObject *parent)
    : QObject(parent), m_sweep(std::make_unique<TerrainSweep>())
{
    m_thread = std::thread([this] { work(); });
}

LiveEngine::~LiveEngine()
{
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
        m_interrupted = true;
        m_ending = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

quint64 LiveEngine::request(const LiveRequest &wanted)
{
    quint64 number = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_wanted = wanted;
        m_interrupted = true;
        number = ++m_number;
    }
    m_wake.notify_one();
    return number;
}

void LiveEngine::clear() { request({}); }

void LiveEngine::lookForChanges()
{
    {
        const std::lock_guard lock(m_mutex);
        m_lookForChanges = true;
    }
    m_wake.notify_one();
}

void LiveEngine::work()
{
    for (;;) {
        std::optional<LiveRequest> wanted;
        bool look = false;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_quit || m_wanted || m_lookForChanges; });
            if (m_quit)
                return;
            look = std::exchange(m_lookForChanges, false);
            wanted = std::exchange(m_wanted, std::nullopt);
            if (wanted) {
                m_interrupted = false;
                m_lastNumber = m_number;
            }
        }
        if (!wanted && look && m_last && filesHaveChanged(*m_last))
            wanted = m_last;
        if (!wanted)
            continue;
        answer(*wanted, m_lastNumber);
        m_last = wanted->view.isEmpty() ? std::nullopt : std::move(wanted);
    }
}

bool LiveEngine::filesHaveChanged(const LiveRequest &drawn) const
{
    const LiveFiles files(drawn);
    return m_inputs.hasChanged(files.texture, files.elevation);
}

void LiveEngine::handOver(const LivePicture &picture)
{
    {
        const std::lock_guard lock(m_mutex);
        m_drawn.push_back(picture);
    }
    QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection);
}

void LiveEngine::deliver()
{
    std::vector<LivePicture> pictures;
    {
        const std::lock_guard lock(m_mutex);
        pictures.swap(m_drawn);
    }
    for (const LivePicture &picture : pictures)
        emit drawn(picture);
}

void LiveEngine::leaveCoresToTheRun()
{
    std::unique_lock lock(m_mutex);
    m_wake.wait_for(lock, BetweenPicturesBesideARun, [this] { return m_quit; });
}

void LiveEngine::answer(const LiveRequest &wanted, quint64 number)
{
    LivePicture picture;
    picture.request = number;
    picture.frame = wanted.frame;
    if (wanted.view.isEmpty()) { // nothing is shown: its files are let go
        m_inputs = {};
        return;
    }
    try {
        LiveFrame frame(wanted, m_inputs);
        m_threads = wanted.besideRun ? 1 : 0;
        if (wanted.fill) {
            Interruption interruption(m_interrupted);
            frame.settle(*m_sweep, m_threads, interruption);
            if (m_interrupted)
                return;
        }
        picture.message = frame.message();
        picture.camera = frame.camera();
        picture.groundHeight = frame.groundHeight();
        if (!frame.canBeDrawn()) {
            picture.last = true;
            handOver(picture);
            return;
        }
        const double seconds = wanted.besideRun ? SecondsBesideARun : SecondsWhileMoving;
        const LiveLevel &level =
            m_levels.within(seconds, frame.fullSize(), frame.fullMesh());
        if (!drawLevel(frame, &level, true, picture))
            return;
        const bool isFinal =
            level == LiveLevel() && wanted.document.parameters.GenauRechnen == 0;
        const bool stays = !wanted.moving && !wanted.besideRun && !isFinal;
        picture.refined = isFinal && !wanted.moving;
        picture.last = !stays;
        handOver(picture);
        if (stays)
            refine(frame, std::move(picture),
                   LiveLevels::work(level, frame.fullSize(), frame.fullMesh()));
        else if (wanted.besideRun)
            leaveCoresToTheRun();
    } catch (const std::bad_alloc &) {
        picture.image = {};
        picture.refined = false;
        picture.last = true;
        picture.message = tr("There is not enough memory for this picture.");
        handOver(picture);
    }
}

void LiveEngine::refine(const LiveFrame &frame, LivePicture picture, double workDone)
{
    const QSize full = frame.fullSize(), mesh = frame.fullMesh();
    const double all = m_levels.secondsFor(LiveLevels::work({}, full, mesh));
    if (all > LongRefinement) {
        const LiveLevel &level = m_levels.within(all / 3, full, mesh);
        if (LiveLevels::work(level, full, mesh) > 2 * workDone) {
            if (!drawLevel(frame, &level, false, picture))
                return;
            handOver(picture);
        }
    }
    if (!drawLevel(frame, nullptr, false, picture))
        return;
    picture.refined = true;
    picture.last = true;
    handOver(picture);
}

// False where it was ended by a newer request.
bool LiveEngine::drawLevel(const LiveFrame &frame, const LiveLevel *level, bool whole,
                           LivePicture &picture)
{
    Interruption interruption(whole ? m_ending : m_interrupted);
    const auto start = Clock::now();
    QImage image = frame.draw(*m_sweep, level, m_threads, interruption);
    if (whole ? m_ending : m_interrupted)
        return false;
    if (image.isNull())
        throw std::bad_alloc();
    if (level)
        m_levels.took(LiveLevels::work(*level, frame.fullSize(), frame.fullMesh()),
                      secondsSince(start));
    picture.image = std::move(image);
    return true;
}
