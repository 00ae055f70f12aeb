#include "batch/batchrun.h"

#include "base/freshfile.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "raster/picturecheck.h"
#include "run/framewriter.h"
#include "scene/scenerydata.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace {

QString clockText(qint64 ms)
{
    const qint64 seconds = (ms + 500) / 1000;
    const auto two = [](qint64 n) {
        return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
    };
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg(two(seconds / 60 % 60), two(seconds % 60));
}

QString secondsText(qint64 ms) { return QString::number(double(ms) / 1000.0, 'f', 2); }

bool namesAFormat(const SceneryData &data)
{
    return data.AusgabeTGA || data.AusgabePNG || data.AusgabeJPG || data.AusgabePPM;
}

} // namespace

void LineNotices::information(QWidget *, const QString &title, const QString &text)
{
    m_sink(QStringLiteral("%1: %2").arg(title, text.trimmed()));
}

void LineNotices::critical(QWidget *, const QString &title, const QString &text)
{
    m_sink(QStringLiteral("%1: %2").arg(title, text.trimmed()));
    m_toldFailure = true;
}

BatchRun::BatchRun(const BatchOptions &options, Sink out, Sink err)
    : m_options(options), m_out(std::move(out)), m_err(err), m_notices(std::move(err))
{
}

bool BatchRun::load(SceneryDelegate &delegate)
{
    if (delegate.open(m_options.scenery))
        return true;
    m_err(QStringLiteral("Cannot open file \"%1\":\n%2.")
              .arg(m_options.scenery, delegate.errorString()));
    return false;
}

void BatchRun::applyOptions(SceneryDelegate &delegate) const
{
    SceneryData &data = delegate.sceneryData();
    data.StartbildNr = m_options.from.value_or(data.StartbildNr);
    data.EndbildNr = m_options.to.value_or(data.EndbildNr);
    data.AusDateiname = m_options.output.value_or(data.AusDateiname);
    data.GenauRechnen = m_options.quality.value_or(data.GenauRechnen);
    if (m_options.size) {
        data.AusBreite = m_options.size->width();
        data.AusHoehe = m_options.size->height();
    }
    if (!m_options.formats.isEmpty()) {
        data.AusgabeTGA = m_options.formats.contains(QStringLiteral("tga"));
        data.AusgabePNG = m_options.formats.contains(QStringLiteral("png"));
        data.AusgabeJPG = m_options.formats.contains(QStringLiteral("jpg"));
        data.AusgabePPM = m_options.formats.contains(QStringLiteral("ppm"));
    }
    // A run takes its values from the form, where they are rounded as on a screen.
    delegate.dataToView();
    delegate.viewToData();
}

// What the scenery and the command line ask for together.
bool BatchRun::checkUsage(const SceneryData &data) const
{
    if (!namesAFormat(data)) {
        m_err(QStringLiteral("Neither the scenery nor the command line names a picture "
                             "format."));
        return false;
    }
    if (data.StartbildNr <= data.EndbildNr || (!m_options.from && !m_options.to))
        return true;
    m_err(m_options.from ? QStringLiteral("--from %1 lies above the scenery's last "
                                          "frame, %2: there is no frame to render.")
                               .arg(data.StartbildNr)
                               .arg(data.EndbildNr)
                         : QStringLiteral("--to %1 lies below the scenery's first "
                                          "frame, %2: there is no frame to render.")
                               .arg(data.EndbildNr)
                               .arg(data.StartbildNr));
    return false;
}

// Frames of one name replace each other, which is what the template says.
void BatchRun::warnOfSharedNames(const SceneryDelegate &delegate) const
{
    const SceneryData &data = delegate.sceneryData();
    QHash<QString, int> frames;
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame) {
        const QString name = delegate.frameFiles(frame).constFirst();
        const auto earlier = frames.constFind(name);
        if (earlier == frames.constEnd()) {
            frames.insert(name, frame);
            continue;
        }
        m_err(QStringLiteral("Warning: frames %1 and %2 have the same file name \"%3\"; "
                             "of such frames only the last one stays.")
                  .arg(*earlier)
                  .arg(frame)
                  .arg(name));
        return;
    }
}

// A folder that is not there is told before a long frame is drawn.
bool BatchRun::checkFolders(const SceneryDelegate &delegate) const
{
    const SceneryData &data = delegate.sceneryData();
    QSet<QString> folders;
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame) {
        const QString name = delegate.frameFiles(frame).constFirst();
        const QString folder = QFileInfo(name).path();
        if (folders.contains(folder))
            continue;
        if (!QFileInfo(folder).isDir()) {
            m_err(unsavedText(name,
                              QStringLiteral("there is no folder \"%1\"").arg(folder)));
            return false;
        }
        removeLeftovers(folder);
        folders.insert(folder);
    }
    return true;
}

void BatchRun::findWanted(const SceneryDelegate &delegate)
{
    const SceneryData &data = delegate.sceneryData();
    const QSize size = delegate.fileSize(m_options.preview);
    const auto isDone = [&](int frame) {
        const QStringList files = delegate.frameFiles(frame);
        return std::all_of(files.begin(), files.end(), [&](const QString &file) {
            return isWholePicture(file, size);
        });
    };
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame)
        if (!m_options.missing || !isDone(frame))
            m_wanted.insert(frame);
}

void BatchRun::frameSaved(const SceneryDelegate &delegate, int frame,
                          const QStringList &complaints)
{
    if (!complaints.isEmpty()) {
        m_err(complaints.constFirst());
        m_failed = true;
        m_running->stopRendering();
        return;
    }
    ++m_done;
    const qint64 now = m_clock.elapsed();
    if (!m_options.quiet) {
        const qsizetype all = m_wanted.size();
        const qint64 left = now * (all - m_done) / m_done;
        m_out(QStringLiteral("frame %1, %2 of %3: %4, %5 s, %6 left")
                  .arg(frame)
                  .arg(m_done)
                  .arg(all)
                  .arg(delegate.frameFiles(frame).join(QStringLiteral(" ")),
                       secondsText(now - m_frameStart), clockText(left)));
    }
    m_frameStart = now;
}

void BatchRun::stop()
{
    m_stopped = true;
    if (m_running)
        m_running->stopRendering();
}

int BatchRun::run()
{
    SceneryMdiChild view(nullptr, nullptr, nullptr, nullptr, nullptr);
    SceneryDelegate &delegate = view.delegate();
    delegate.setNotices(&m_notices);
    if (!load(delegate))
        return RunFailed;
    applyOptions(delegate);
    const SceneryData &data = delegate.sceneryData();
    if (!checkUsage(data))
        return WrongUsage;
    if (data.StartbildNr > data.EndbildNr)
        m_err(QStringLiteral("The scenery's first frame, %1, lies above its last, %2: "
                             "there is no frame to render.")
                  .arg(data.StartbildNr)
                  .arg(data.EndbildNr));
    warnOfSharedNames(delegate);
    if (!checkFolders(delegate))
        return RunFailed;
    findWanted(delegate);
    QCoreApplication::processEvents(); // a signal may have come meanwhile
    if (m_wanted.isEmpty() || m_stopped)
        return m_stopped ? Stopped : AllWritten;
    return render(delegate);
}

int BatchRun::render(SceneryDelegate &delegate)
{
    delegate.setThreads(m_options.threads);
    delegate.setFrameFilter([this](int frame) { return m_wanted.contains(frame); });
    connect(&delegate, &SceneryDelegate::frameSaved, this,
            [&](int frame, const QStringList &complaints) {
                frameSaved(delegate, frame, complaints);
            });
    m_running = &delegate;
    m_clock.start();
    const bool good = m_options.preview ? delegate.renderPreview(nullptr)
                                        : delegate.renderFinal(nullptr);
    m_running = nullptr;
    if (!good && !m_notices.toldFailure())
        m_err(delegate.errorString());
    if (!good || m_failed)
        return RunFailed;
    // A signal that comes with the last frame stops nothing.
    return m_stopped && m_done < m_wanted.size() ? Stopped : AllWritten;
}
