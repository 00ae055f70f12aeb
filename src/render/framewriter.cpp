#include "render/framewriter.h"

#include "raster/imagefile.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <system_error>
#include <utility>

namespace {

// Short enough for a window that stays alive meanwhile.
constexpr std::chrono::milliseconds Pause(2);
// Larger frames are not kept twice: they are written before the next one begins.
constexpr qsizetype MostBytesAside = qsizetype(64) << 20;

QImage halved(const QImage &image)
{
    return image.scaled(image.width() / 2, image.height() / 2, Qt::KeepAspectRatio,
                        Qt::SmoothTransformation);
}

// Too little memory is a failure like any other: left to itself it would end the program
// from its thread.
template <typename Step> bool succeeds(const Step &step)
{
    try {
        return step();
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace

FrameWriter::FrameWriter(int most, Written written, Wait wait)
    : m_most(std::max(most, 1)), m_written(std::move(written)), m_wait(std::move(wait))
{
}

FrameWriter::~FrameWriter()
{
    // Each frame is told once, so this ends even if every telling fails.
    const auto finished = [this] {
        finish();
        return true;
    };
    while (!succeeds(finished)) {
    }
}

void FrameWriter::Job::run()
{
    const auto halveIt = [this] {
        picture = halved(picture);
        return true;
    };
    if (halve && !succeeds(halveIt))
        picture = QImage();
    for (const QString &name : names)
        if (!succeeds([&] { return saveImageFile(picture, name); }))
            failed.append(name);
    picture = QImage();
    done = true;
}

void FrameWriter::write(int frame, const QImage &picture, bool halve,
                        const QStringList &names)
{
    waitUntil([&] {
        return m_jobs.size() < static_cast<std::size_t>(m_most) && !sharesAName(names);
    });
    auto job = std::make_unique<Job>();
    job->frame = frame;
    job->halve = halve;
    job->names = names;
    if (names.isEmpty()) {
        job->done = true;
        m_jobs.push_back(std::move(job));
        return reportDone();
    }
    job->failed.reserve(names.size()); // what fails for want of memory is told as well
    bool aside = picture.sizeInBytes() <= MostBytesAside;
    job->picture = aside ? picture.copy() : picture;
    if (job->picture.isNull()) { // no memory for a copy
        job->picture = picture;
        aside = false;
    }
    Job &started = *job;
    m_jobs.push_back(std::move(job));
    try {
        started.thread = std::thread([&started] { started.run(); });
    } catch (const std::system_error &) {
        started.run(); // the system gives no thread
    } catch (const std::bad_alloc &) {
        started.run();
    }
    if (!aside)
        finish();
}

void FrameWriter::finish()
{
    waitUntil([this] { return m_jobs.empty(); });
}

int FrameWriter::busy() const
{
    return static_cast<int>(std::count_if(m_jobs.begin(), m_jobs.end(),
                                          [](const auto &job) { return !job->done; }));
}

bool FrameWriter::sharesAName(const QStringList &names) const
{
    return std::any_of(m_jobs.begin(), m_jobs.end(), [&names](const auto &job) {
        return std::any_of(names.begin(), names.end(), [&job](const QString &name) {
            return job->names.contains(name);
        });
    });
}

// The first frames only: a later one that is done waits for its turn.
void FrameWriter::reportDone()
{
    while (!m_jobs.empty() && m_jobs.front()->done) {
        const std::unique_ptr<Job> job = std::move(m_jobs.front());
        m_jobs.pop_front();
        if (job->thread.joinable())
            job->thread.join();
        m_written(job->frame, job->failed);
    }
}

void FrameWriter::waitUntil(const std::function<bool()> &ready)
{
    for (reportDone(); !ready(); reportDone()) {
        m_wait();
        std::this_thread::sleep_for(Pause);
    }
}
