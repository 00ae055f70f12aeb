#include "run/framewriter.h"

#include "run/framescale.h"

#include "raster/imagefile.h"

#include <QObject>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <new>
#include <system_error>
#include <utility>

namespace {

// Short enough for a window that stays alive meanwhile.
constexpr std::chrono::milliseconds Pause(2);
// Larger frames are not kept twice: they are written before the next one begins.
constexpr qsizetype MostBytesAside = qsizetype(64) << 20;

} // namespace

QString unsavedText(const QString &name, const QString &reason)
{
    return QObject::tr("Could not save file \"%1\": %2.").arg(name, reason);
}

FrameWriter::FrameWriter(int most, Written written, Wait wait)
    : m_most(std::max(most, 1)), m_written(std::move(written)), m_wait(std::move(wait))
{
}

FrameWriter::~FrameWriter()
{
    // Each frame is told once, so this ends even if every telling fails.
    for (bool finished = false; !finished;) {
        try {
            finish();
            finished = true;
        } catch (const std::bad_alloc &) {
        }
    }
}

void FrameWriter::Job::run()
{
    try {
        save();
    } catch (const std::bad_alloc &) {
        // Nothing was written, and that is what the complaints say so far.
    }
    picture = QImage();
    done = true;
}

void FrameWriter::Job::save()
{
    if (halve)
        picture = halvedFrame(picture);
    QStringList found;
    for (const QString &name : names) {
        QString reason;
        if (!saveImageFile(picture, name, &reason))
            found.append(unsavedText(name, reason));
    }
    complaints.swap(found);
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
    for (const QString &name : names)
        job->complaints.append(unsavedText(name, qt_error_string(ENOMEM)));
    if (names.isEmpty()) {
        job->done = true;
        m_jobs.push_back(std::move(job));
        return reportDone();
    }
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
        m_written(job->frame, job->complaints);
    }
}

void FrameWriter::waitUntil(const std::function<bool()> &ready)
{
    for (reportDone(); !ready(); reportDone()) {
        m_wait();
        std::this_thread::sleep_for(Pause);
    }
}
