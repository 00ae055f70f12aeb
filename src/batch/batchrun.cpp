#include "batch/batchrun.h"

#include "base/freshfile.h"
#include "raster/picturecheck.h"
#include "run/flightrun.h"
#include "run/framefiles.h"
#include "run/framewriter.h"
#include "scene/fieldlimits.h"
#include "scene/sceneryfile.h"

#include <QCoreApplication>
#include <QFile>
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

// What a message box would say.
QString titled(const QString &title, const QString &text)
{
    return QStringLiteral("%1: %2").arg(title, text.trimmed());
}

bool namesAFormat(const SceneryData &data)
{
    return data.AusgabeTGA || data.AusgabePNG || data.AusgabeJPG || data.AusgabePPM;
}

bool setsTheRange(const BatchOptions &options)
{
    return std::any_of(options.settings.begin(), options.settings.end(),
                       [](const ScenerySetting &setting) {
                           return setting.key == QLatin1String("StartbildNr") ||
                                  setting.key == QLatin1String("EndbildNr");
                       });
}

} // namespace

BatchRun::BatchRun(const BatchOptions &options, Sink out, Sink err)
    : m_options(options), m_out(std::move(out)), m_err(std::move(err))
{
}

bool BatchRun::load()
{
    QFile file(m_options.scenery.isEmpty()
                   ? QString()
                   : QFileInfo(m_options.scenery).absoluteFilePath());
    const auto refuse = [this](const QString &reason) {
        m_err(QStringLiteral("Cannot open file \"%1\":\n%2.")
                  .arg(m_options.scenery, reason));
        return false;
    };
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return refuse(file.errorString());
    const Result<SceneryReading> reading = readScenery(file, {});
    if (!reading)
        return refuse(reading.error().text);
    for (const bool selected : reading->obsoleteFormats)
        m_err(titled(obsoleteFormatTitle(), obsoleteFormatText(selected)));
    if (!reading->complaint.isEmpty())
        return refuse(reading->complaint);
    for (const QString &sentence : reading->extrasTold)
        m_err(sentence);
    m_document = reading->document;
    m_folder = QFileInfo(file.fileName()).absolutePath();
    return true;
}

bool BatchRun::applyOptions()
{
    for (const ScenerySetting &setting : m_options.settings)
        if (const Result<void> good = applySetting(m_document, setting); !good) {
            m_err(QStringLiteral("--set: ") + good.error().text);
            return false;
        }
    SceneryData &data = m_document.parameters;
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
    // The same frames as on the desktop, where a run takes what the form shows.
    data = asShown(data);
    return true;
}

// What the scenery and the command line ask for together.
bool BatchRun::checkUsage() const
{
    const SceneryData &data = m_document.parameters;
    if (!namesAFormat(data)) {
        m_err(QStringLiteral("Neither the scenery nor the command line names a picture "
                             "format."));
        return false;
    }
    if (data.StartbildNr <= data.EndbildNr)
        return true;
    if (m_options.from)
        m_err(
            QStringLiteral("--from %1 lies above the scenery's last frame, %2: there is "
                           "no frame to render.")
                .arg(data.StartbildNr)
                .arg(data.EndbildNr));
    else if (m_options.to)
        m_err(QStringLiteral("--to %1 lies below the scenery's first frame, %2: there is "
                             "no frame to render.")
                  .arg(data.EndbildNr)
                  .arg(data.StartbildNr));
    else if (setsTheRange(m_options))
        m_err(QStringLiteral("--set: the first frame, %1, lies above the last, %2: there "
                             "is no frame to render.")
                  .arg(data.StartbildNr)
                  .arg(data.EndbildNr));
    else // the scenery itself says so
        return true;
    return false;
}

// Frames of one name replace each other, which is what the template says.
void BatchRun::warnOfSharedNames() const
{
    const SceneryData &data = m_document.parameters;
    QHash<QString, int> frames;
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame) {
        const QString name = filesOf(frame).constFirst();
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
bool BatchRun::checkFolders() const
{
    const SceneryData &data = m_document.parameters;
    QSet<QString> folders;
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame) {
        const QString name = filesOf(frame).constFirst();
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

void BatchRun::findWanted()
{
    const SceneryData &data = m_document.parameters;
    const QSize size = m_options.within ? frameScaleWithin(data, *m_options.within).file
                                        : frameScale(data, m_options.preview).file;
    const auto isDone = [&](int frame) {
        const QStringList files = filesOf(frame);
        return std::all_of(files.begin(), files.end(), [&](const QString &file) {
            return isWholePicture(file, size);
        });
    };
    for (int frame = data.StartbildNr; frame <= data.EndbildNr; ++frame)
        if (!m_options.missing || !isDone(frame))
            m_wanted.insert(frame);
}

void BatchRun::frameSaved(int frame, const QStringList &complaints)
{
    if (!complaints.isEmpty()) {
        m_err(complaints.constFirst());
        m_failed = true;
        m_running->stop();
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
                  .arg(filesOf(frame).join(QStringLiteral(" ")),
                       secondsText(now - m_frameStart), clockText(left)));
    }
    m_frameStart = now;
}

void BatchRun::stop()
{
    m_stopped = true;
    if (m_running)
        m_running->stop();
}

int BatchRun::run()
{
    if (!load())
        return RunFailed;
    if (!applyOptions() || !checkUsage())
        return WrongUsage;
    const SceneryData &data = m_document.parameters;
    if (data.StartbildNr > data.EndbildNr)
        m_err(QStringLiteral("The scenery's first frame, %1, lies above its last, %2: "
                             "there is no frame to render.")
                  .arg(data.StartbildNr)
                  .arg(data.EndbildNr));
    warnOfSharedNames();
    if (!checkFolders())
        return RunFailed;
    findWanted();
    QCoreApplication::processEvents(); // a signal may have come meanwhile
    if (m_wanted.isEmpty() || m_stopped)
        return m_stopped ? Stopped : AllWritten;
    return render();
}

QStringList BatchRun::filesOf(int frame) const
{
    const SceneryData &data = m_document.parameters;
    return frameFiles(data, frameNumber(data, frame));
}

int BatchRun::render()
{
    FlightRun run(m_document,
                  {m_options.preview, false, m_options.threads, m_folder,
                   m_options.within.value_or(QSize())},
                  *this);
    m_running = &run;
    m_clock.start();
    const Result<void> result = run.run();
    m_running = nullptr;
    const bool good = result || result.error().stopped;
    if (!good && !m_toldFailure)
        m_err(result.error().text);
    if (!good || m_failed)
        return RunFailed;
    // A signal that comes with the last frame stops nothing.
    return m_stopped && m_done < m_wanted.size() ? Stopped : AllWritten;
}

// --- What the run tells --------------------------------------------------------------

void BatchRun::flightRefused(const QString &reason)
{
    m_err(titled(QStringLiteral("SceneryDelegate::CurvedFlight()"), reason));
    m_toldFailure = true;
}

// Events are pumped for the signals that stop the program.
void BatchRun::frameStarted(int, int, const QImage &)
{
    QCoreApplication::processEvents();
}

bool BatchRun::step(qint64, qint64)
{
    QCoreApplication::processEvents();
    return true;
}

void BatchRun::frameDrawn(int, const QImage &) { QCoreApplication::processEvents(); }

void BatchRun::waiting() { QCoreApplication::processEvents(); }
