#include "render/framewriter.h"

#include "raster/imagefile.h"

#include <algorithm>
#include <chrono>
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

} // namespace

FrameWriter::FrameWriter(int most, Written written, Wait wait)
    : m_most(std::max(most, 1)), m_written(std::move(written)), m_wait(std::move(wait))
{
}

FrameWriter::~FrameWriter() { finish(); }

void FrameWriter::Job::run()
{
    if (halve)
        picture = halved(picture);
    for (const QString &name : names)
        if (!saveImageFile(picture, name))
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
    const bool aside = picture.sizeInBytes() <= MostBytesAside;
    job->picture = aside ? picture.copy() : picture;
    Job &started = *job;
    m_jobs.push_back(std::move(job));
    try {
        started.thread = std::thread([&started] { started.run(); });
    } catch (const std::system_error &) {
        started.run(); // the system gives no thread
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
