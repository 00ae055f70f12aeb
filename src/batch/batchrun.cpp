#include "batch/batchrun.h"

#include "scenery/scenerydata.h"
#include "scenery/scenerydelegate.h"
#include "scenery/scenerymdichild.h"

#include <QFileInfo>

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

bool BatchRun::isWanted(const SceneryDelegate &delegate, int frame) const
{
    if (!m_options.missing)
        return true;
    const QStringList files = delegate.frameFiles(frame);
    return std::any_of(files.begin(), files.end(),
                       [](const QString &file) { return !QFileInfo::exists(file); });
}

int BatchRun::countWanted(const SceneryDelegate &delegate) const
{
    const SceneryData &data = delegate.sceneryData();
    int count = 0;
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame)
        count += isWanted(delegate, frame);
    return count;
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
        const qint64 left = now * (m_frames - m_done) / m_done;
        m_out(QStringLiteral("frame %1, %2 of %3: %4, %5 s, %6 left")
                  .arg(frame)
                  .arg(m_done)
                  .arg(m_frames)
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
    if (!namesAFormat(delegate.sceneryData())) {
        m_err(QStringLiteral("Neither the scenery nor the command line names a picture "
                             "format."));
        return WrongUsage;
    }
    m_frames = countWanted(delegate);
    if (m_frames == 0 || m_stopped)
        return m_stopped ? Stopped : AllWritten;

    delegate.setThreads(m_options.threads);
    delegate.setFrameFilter([&](int frame) { return isWanted(delegate, frame); });
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
    return m_stopped && m_done < m_frames ? Stopped : AllWritten;
}
