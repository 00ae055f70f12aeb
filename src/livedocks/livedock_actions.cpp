// What the buttons and fields of the live view's dock do.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "flight/flight.h"
#include "livedocks/livedock.h"
#include "livedocks/livesession.h"
#include "livedocks/liveview.h"
#include "raster/imagefile.h"
#include "run/flightrun.h"
#include "run/framefiles.h"
#include "run/runlistener.h"
#include "scene/scenerydocument.h"
#include "views/backgroundwork.h"
#include "views/decimalspinbox.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QTimer>

#include <limits>
#include <memory>

namespace {

constexpr int LookForFilesEach = 2000; // milliseconds

// Where the flight comes nearest to each of its control points.
std::vector<double> framesOfPoints(const SceneryDocument &document, Progress &progress)
{
    std::vector<double> frames;
    if (document.parameters.isStraight || !checkFlight(document))
        return frames;
    const Flight flight(document, 1.0);
    const int all = document.parameters.Bildanzahl;
    std::vector<C4Vector> places(std::max(all, 0));
    for (int frame = 0; frame < all; ++frame)
        places[frame] = flight.camera(frame).position;
    for (const ControlPoint &point : document.controlPoints) {
        if (!progress.step(qint64(frames.size()), document.controlPoints.size()))
            return {};
        double nearest = std::numeric_limits<double>::max();
        int at = 0;
        for (int frame = 0; frame < all; ++frame) {
            const double dx = places[frame].x - point.x, dy = places[frame].y - point.y;
            if (dx * dx + dy * dy < nearest) {
                nearest = dx * dx + dy * dy;
                at = frame;
            }
        }
        frames.push_back(at);
    }
    return frames;
}

Timeline::Marks marksOf(const SceneryDocument &document, Progress &progress)
{
    const SceneryData &data = document.parameters;
    Timeline::Marks marks;
    marks.from = data.StartbildNr;
    marks.to = data.EndbildNr;
    marks.points = framesOfPoints(document, progress);
    for (int frame = 0; frame < data.Bildanzahl; ++frame) {
        if (frame % 64 == 0 && !progress.step(frame, data.Bildanzahl))
            break;
        const QStringList files = frameFiles(data, frameNumber(data, frame));
        const bool there = !files.isEmpty() &&
                           std::all_of(files.begin(), files.end(), [](const QString &f) {
                               return QFileInfo::exists(f);
                           });
        if (there)
            marks.files.push_back(frame);
    }
    return marks;
}

// One frame, whose files are written; keeps the complaints.
class OneFrame : public RunListener {
public:
    explicit OneFrame(Progress &progress) : m_progress(progress) {}
    void targetMade(const QImage &) override {}
    void flightRefused(const QString &) override {}
    bool wants(int) override { return true; }
    void frameStarted(int, int, const QImage &) override {}
    void frameDrawn(int, const QImage &) override {}
    void frameSaved(int, const QStringList &complaints) override { told += complaints; }
    void waiting() override {}
    bool step(qint64 done, qint64 of) override
    {
        if (m_progress.step(done, of))
            return true;
        if (run)
            run->stop();
        return false;
    }

    FlightRun *run = nullptr;
    QStringList told;

private:
    Progress &m_progress;
};

} // namespace

void LiveDock::connectTimeline()
{
    connect(m_timeline, &QSlider::valueChanged, this, [this](int frame) {
        m_session->play(false);
        m_session->setFrame(frame, m_timeline->isSliderDown());
    });
    connect(m_timeline, &QSlider::sliderReleased, this,
            [this] { m_session->setFrame(m_timeline->value()); });
    connect(m_play, &QPushButton::toggled, m_session.get(), &LiveSession::play);
    m_lookForFiles->setInterval(LookForFilesEach);
    connect(m_lookForFiles, &QTimer::timeout, this, [this] {
        if (!m_session->isPlaying() && !m_marking->isOn())
            updateMarks(true);
    });
    connect(m_loop, &QCheckBox::toggled, m_session.get(), &LiveSession::setLoop);
    connect(m_framesPerSecond, &QComboBox::activated, this, [this] {
        m_session->setFramesPerSecond(m_framesPerSecond->currentData().toInt());
    });
}

void LiveDock::connectFlying()
{
    const auto hold = [this] {
        m_session->holdGround(m_holdGround->isChecked(), m_clearance->value());
    };
    connect(m_holdGround, &QCheckBox::toggled, this, hold);
    connect(m_clearance, &QDoubleSpinBox::valueChanged, this, hold);
    connect(m_speed, &QDoubleSpinBox::valueChanged, m_session.get(),
            &LiveSession::setSpeed);
    connect(m_session.get(), &LiveSession::speedChanged, m_speed,
            &QDoubleSpinBox::setValue);
}

void LiveDock::connectButtons()
{
    const auto on = [this](QPushButton *button, auto act) {
        connect(button, &QPushButton::clicked, this, act);
    };
    on(m_setFirst, [this] { m_session->setEnd(FlightEnd::First); });
    on(m_setLast, [this] { m_session->setEnd(FlightEnd::Last); });
    on(m_addPoint, [this] { m_session->addControlPoint(); });
    on(m_lookFirst, [this] { m_session->lookFrom(FlightEnd::First); });
    on(m_lookLast, [this] { m_session->lookFrom(FlightEnd::Last); });
    on(m_reposition, [this] { m_session->reposition(); });
    on(m_fill, [this] { m_session->fillPicture(); });
    on(m_save, [this] { savePicture(); });
    on(m_copy, [this] { copyPicture(); });
    on(m_render, [this] { renderFrame(); });
}

// Looked for anew where the scenery has changed, and now and then for files that came.
void LiveDock::updateMarks(bool always)
{
    const SceneryDocument document = m_session->document();
    if (!always && document == m_marked)
        return;
    m_marked = document;
    if (!m_session->scenery()) {
        m_marking->stop();
        m_timeline->setMarks({});
        return;
    }
    const auto found = std::make_shared<Timeline::Marks>();
    m_marking->begin(
        [found, document](Progress &progress) { *found = marksOf(document, progress); },
        [this, found] { m_timeline->setMarks(*found); });
}

void LiveDock::savePicture()
{
    const QImage picture = m_view->picture();
    if (picture.isNull())
        return;
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Save Picture"), {},
        tr("Image Files (*.bmp *.jpg *.png *.ppm *.tga *.tif);;All Files (*.*)"));
    if (file.isEmpty())
        return;
    QString reason;
    if (saveImageFile(picture, file, &reason))
        emit told(tr("The picture was saved as \"%1\".").arg(file));
    else
        emit told(tr("The picture could not be saved as \"%1\": %2.").arg(file, reason));
}

void LiveDock::copyPicture()
{
    if (!m_view->picture().isNull())
        QApplication::clipboard()->setImage(m_view->picture());
}

void LiveDock::renderFrame()
{
    if (!m_session->scenery() || m_rendering->isOn() || m_session->isRunning())
        return;
    SceneryDocument document = m_session->document();
    const int frame = m_session->frame();
    document.parameters.StartbildNr = document.parameters.EndbildNr = frame;
    const QString folder = m_session->scenery()->delegate().folder();
    const auto text = std::make_shared<QString>();
    m_rendering->begin(
        [document, folder, text](Progress &progress) {
            OneFrame listener(progress);
            FlightRun run(document, {false, false, 0, folder}, listener);
            listener.run = &run;
            const Result<void> done = run.run();
            *text = done ? listener.told.join(QLatin1Char(' ')) : done.error().text;
        },
        [this, text, document, frame] {
            const SceneryData &drawn = document.parameters;
            const QStringList files = frameFiles(drawn, frameNumber(drawn, frame));
            emit told(!text->isEmpty() ? *text
                                       : tr("Frame %1 was written: %2")
                                             .arg(frame)
                                             .arg(files.join(QStringLiteral(", "))));
            updateState();
        });
    updateState();
}
