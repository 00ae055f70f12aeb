#include "livedocks/livesession.h"

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "flight/flight.h"

#include <QAbstractButton>
#include <QImageReader>
#include <QLineEdit>
#include <QSpinBox>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int FlyTick = 16;           // milliseconds
constexpr int LookAtFilesEach = 1000; // milliseconds

// What the camera of a frame is made from; nothing where the flight cannot be flown.
std::optional<FrameCamera> cameraOf(const SceneryDocument &document, int frame)
{
    if (!checkFlight(document))
        return {};
    return Flight(document, 1.0).camera(frame);
}

bool isSameView(const std::optional<FrameCamera> &a, const std::optional<FrameCamera> &b)
{
    if (!a || !b)
        return !a && !b;
    return a->position.x == b->position.x && a->position.y == b->position.y &&
           a->position.z == b->position.z && a->direction == b->direction &&
           a->pitch == b->pitch && a->roll == b->roll && a->focal == b->focal;
}

} // namespace

LiveSession::LiveSession(LiveView &view) : m_view(view)
{
    m_flyTimer.setInterval(FlyTick);
    m_flyTimer.setTimerType(Qt::PreciseTimer);
    m_playTimer.setTimerType(Qt::PreciseTimer);
    m_change.setSingleShot(true);
    m_change.setInterval(0);
    m_watch.setInterval(LookAtFilesEach);
    connect(&m_flyTimer, &QTimer::timeout, this, &LiveSession::flyTick);
    connect(&m_playTimer, &QTimer::timeout, this, &LiveSession::playTick);
    connect(&m_change, &QTimer::timeout, this, &LiveSession::documentChanged);
    connect(&m_watch, &QTimer::timeout, this, [this] { m_engine.lookForChanges(); });
    connect(&m_engine, &LiveEngine::drawn, this, &LiveSession::take);
    connectView();
    leaveScenery();
}

LiveSession::~LiveSession() = default;

void LiveSession::connectView()
{
    connect(&m_view, &LiveView::resized, this, [this] { ask(false); });
    connect(&m_view, &LiveView::keysChanged, this, &LiveSession::keysChanged);
    connect(&m_view, &LiveView::dragged, this, [this](const QPointF &pixels) {
        if (!m_scenery || m_view.picture().isNull())
            return;
        beginFlying();
        m_flyer.look(pixels, m_view.pictureRect().width(),
                     document().parameters.AusBreite);
        ask(true);
    });
    connect(&m_view, &LiveView::dragEnded, this, &LiveSession::endFlying);
    connect(&m_view, &LiveView::wheelTurned, this, [this](double notches, bool control) {
        if (!control) {
            m_flyer.hurry(notches);
            emit speedChanged(m_flyer.speed());
            return;
        }
        if (!m_scenery)
            return;
        beginFlying();
        m_flyer.zoom(notches);
        endFlying();
    });
}

// --- The scenery ---------------------------------------------------------------------

void LiveSession::setScenery(SceneryMdiChild *scenery)
{
    if (m_scenery == scenery)
        return;
    play(false);
    keepPlace();
    if (m_scenery) {
        m_scenery->delegate().disconnect(this);
        for (QWidget *field : m_scenery->findChildren<QWidget *>())
            field->disconnect(this);
    }
    m_scenery = scenery;
    if (!scenery)
        return leaveScenery();
    m_placeOf = scenery;
    m_oldest = m_request + 1;
    if (!m_places.contains(scenery))
        connect(scenery, &QObject::destroyed, &m_guard, [this, scenery] {
            if (m_placeOf == scenery)
                leaveScenery();
            m_places.remove(scenery);
        });
    const Place place = m_places[scenery];
    m_flown = place.flown.has_value();
    m_frame = std::clamp(place.frame, 0, frames() - 1);
    if (place.flown)
        m_flyer.setCamera(*place.flown);
    const SceneryDelegate *const delegate = &scenery->delegate();
    connect(delegate, &SceneryDelegate::changed, this, &LiveSession::noteChange);
    connect(delegate, &SceneryDelegate::extrasChanged, this, &LiveSession::noteChange);
    connect(delegate, &SceneryDelegate::runningChanged, this, [this] {
        emit stateChanged();
        ask(false);
    });
    for (const auto *edit : scenery->findChildren<QLineEdit *>())
        connect(edit, &QLineEdit::textChanged, this, &LiveSession::noteChange);
    for (const auto *button : scenery->findChildren<QAbstractButton *>())
        if (button->isCheckable())
            connect(button, &QAbstractButton::toggled, this, &LiveSession::noteChange);
    m_known = document();
    m_changed = false;
    emit stateChanged();
    ask(false);
}

void LiveSession::keepPlace()
{
    if (!m_placeOf)
        return;
    m_places[m_placeOf] = {m_frame,
                           m_flown ? std::optional(m_flyer.camera()) : std::nullopt};
    m_placeOf = nullptr;
}

void LiveSession::leaveScenery()
{
    m_scenery.clear(); // also where it is being destroyed
    m_placeOf = nullptr;
    play(false);
    m_flyTimer.stop();
    m_keys = {};
    m_flown = false;
    m_oldest = m_request + 1;
    m_engine.clear();
    m_view.showMessage(tr("There is no scenery to show: open one, or click into its "
                          "window."));
    emit stateChanged();
}

// Many fields may change at once: what follows waits until they all have.
void LiveSession::noteChange()
{
    if (!m_scenery || document() == m_known)
        return;
    m_changed = true;
    m_view.setStale();
    m_view.beginInput();
    m_change.start();
}

SceneryMdiChild *LiveSession::scenery() const { return m_scenery; }

SceneryDocument LiveSession::document() const
{
    return m_scenery ? m_scenery->delegate().seen() : SceneryDocument();
}

int LiveSession::frames() const
{
    return m_scenery ? std::max(document().parameters.Bildanzahl, 1) : 0;
}

int LiveSession::framesPerSecond() const { return document().extras.FramesPerSecond; }

bool LiveSession::isStraight() const
{
    return m_scenery && document().parameters.isStraight;
}

bool LiveSession::isRunning() const
{
    return m_scenery && m_scenery->delegate().isRunning();
}

void LiveSession::setAwake(bool awake)
{
    if (m_awake == awake)
        return;
    m_awake = awake;
    if (!awake) {
        play(false);
        m_watch.stop();
        m_engine.clear();
        return;
    }
    m_watch.start();
    ask(false);
}

// A camera that was flown stays while other things change, and goes when the frame gets
// another camera: who types one wants to see it.
void LiveSession::documentChanged()
{
    if (!m_scenery)
        return;
    const SceneryDocument now = document();
    m_changed = false;
    if (now == m_known)
        return ask(false);
    if (m_flown && !isSameView(cameraOf(now, m_frame), cameraOf(m_known, m_frame)))
        m_flown = false;
    m_known = now;
    m_frame = std::clamp(m_frame, 0, frames() - 1);
    emit stateChanged();
    ask(false);
}

// --- Pictures ------------------------------------------------------------------------

void LiveSession::ask(bool moving, bool fill)
{
    if (!m_scenery || !m_awake || m_view.deviceSize().isEmpty())
        return;
    LiveRequest wanted;
    wanted.document = document();
    wanted.folder = m_scenery->delegate().folder();
    wanted.frame = m_frame;
    if (m_flown) {
        wanted.camera = m_flyer.camera();
        if (m_holdsGround)
            wanted.clearance = m_clearance;
    }
    wanted.fill = fill;
    wanted.view = m_view.deviceSize();
    wanted.moving = moving || m_playing || m_keys.any();
    wanted.besideRun = isRunning();
    m_view.setStale();
    m_request = m_engine.request(wanted);
    m_view.inputAsked(m_request);
}

void LiveSession::take(const LivePicture &picture)
{
    if (!m_scenery || !m_awake || picture.request < m_oldest)
        return;
    LivePicture shown = picture;
    // Refined is what is final of the present state.
    shown.refined = shown.refined && picture.request >= m_request && !m_changed;
    const bool flying = m_keys.any();
    if (!m_flown || (picture.request >= m_request && !flying))
        m_flyer.setCamera(picture.camera);
    else if (m_holdsGround) {
        ViewCamera camera = m_flyer.camera();
        camera.z = picture.camera.z;
        m_flyer.setCamera(camera);
    }
    m_view.show(shown, m_flown ? LiveView::Source::Flown : LiveView::Source::Frame);
    emit cameraChanged(picture.groundHeight);
}

// --- Flying --------------------------------------------------------------------------

void LiveSession::beginFlying()
{
    play(false);
    if (m_flown)
        return;
    m_flyer.setCamera(present());
    m_flown = true;
    emit stateChanged();
}

void LiveSession::endFlying()
{
    if (!m_scenery || !m_flown)
        return;
    fly(Flyer::onSteps(m_flyer.camera()), false);
}

void LiveSession::fly(const ViewCamera &camera, bool moving)
{
    m_flown = true;
    m_flyer.setCamera(camera);
    ask(moving);
}

ViewCamera LiveSession::present() const
{
    if (m_flown)
        return m_flyer.camera();
    const std::optional<FrameCamera> camera = cameraOf(document(), m_frame);
    return camera ? viewOf(*camera) : m_flyer.camera();
}

void LiveSession::flyTo(const ViewCamera &camera, bool moving)
{
    if (!m_scenery)
        return;
    play(false);
    const bool was = std::exchange(m_flown, true);
    fly(moving ? camera : Flyer::onSteps(camera), moving);
    if (!was)
        emit stateChanged();
}

void LiveSession::keysChanged(const FlyKeys &keys, bool pressed)
{
    const bool was = m_keys.any();
    FlyKeys added = keys;
    if (was) { // what is held already goes on by the clock
        added.ahead &= !m_keys.ahead;
        added.back &= !m_keys.back;
        added.left &= !m_keys.left;
        added.right &= !m_keys.right;
        added.up &= !m_keys.up;
        added.down &= !m_keys.down;
        flyTick();
    }
    m_keys = keys;
    if (!m_scenery)
        return;
    if (pressed && added.any()) {
        beginFlying();
        m_flyer.move(added, Flyer::FirstStep);
        ask(true);
    }
    if (keys.any() && !m_flyTimer.isActive()) {
        m_flownSince.start();
        m_flyTimer.start();
    } else if (!keys.any() && was) {
        m_flyTimer.stop();
        endFlying();
    }
}

void LiveSession::flyTick()
{
    if (!m_scenery || !m_keys.any() || !m_flownSince.isValid())
        return;
    m_flyer.move(m_keys, static_cast<double>(m_flownSince.restart()) / 1000);
    ask(true);
}

void LiveSession::holdGround(bool on, double clearance)
{
    m_holdsGround = on;
    m_clearance = clearance;
    if (m_flown)
        ask(false);
}

void LiveSession::reposition()
{
    if (!m_scenery)
        return;
    SceneryData data = document().parameters;
    const QSize texture =
        QImageReader(m_scenery->delegate().inputFile(data.TDateiname)).size();
    const QSize elevation =
        QImageReader(m_scenery->delegate().inputFile(data.HDateiname)).size();
    if (texture.isEmpty() && elevation.isEmpty())
        return;
    const QSize world = texture.isEmpty() ? QSizeF(elevation.width() * data.HDateiSkalaX,
                                                   elevation.height() * data.HDateiSkalaY)
                                                .toSize()
                                          : texture;
    setStandardCamera(data, world, FlightEnd::First);
    beginFlying();
    fly({data.BeobXA, data.BeobYA, data.BeobZA, data.RichtungA, data.NeigungA,
         data.VerkantenA, data.BrennA},
        false);
}

void LiveSession::fillPicture()
{
    if (!m_scenery)
        return;
    beginFlying();
    ask(false, true);
}

// --- Form ----------------------------------------------------------------------------

void LiveSession::setEnd(FlightEnd end)
{
    if (!m_scenery || !isStraight())
        return;
    const ViewCamera camera = Flyer::onSteps(present());
    m_scenery->delegate().editForm([&](SceneryData &data) {
        const bool isLast = end == FlightEnd::Last;
        (isLast ? data.BeobXE : data.BeobXA) = camera.x;
        (isLast ? data.BeobYE : data.BeobYA) = camera.y;
        (isLast ? data.BeobZE : data.BeobZA) = camera.z;
        (isLast ? data.RichtungE : data.RichtungA) = camera.heading;
        (isLast ? data.NeigungE : data.NeigungA) = camera.pitch;
        (isLast ? data.VerkantenE : data.VerkantenA) = camera.roll;
        (isLast ? data.BrennE : data.BrennA) = camera.focal;
    });
    lookFrom(end);
}

void LiveSession::addControlPoint()
{
    if (!m_scenery || isStraight())
        return;
    const ViewCamera camera = present();
    const auto whole = [](double v) { return static_cast<int>(std::lround(v)); };
    m_scenery->delegate().addControlPoint(whole(camera.x), whole(camera.y),
                                          whole(camera.z));
}

void LiveSession::lookFrom(FlightEnd end)
{
    setFrame(end == FlightEnd::First ? 0 : frames() - 1);
}

// --- Timeline ------------------------------------------------------------------------

void LiveSession::setFrame(int frame, bool moving)
{
    if (!m_scenery)
        return;
    m_frame = std::clamp(frame, 0, frames() - 1);
    m_flown = false;
    emit stateChanged();
    ask(moving);
}

void LiveSession::setFramesPerSecond(int frames)
{
    if (!m_scenery || frames == framesPerSecond())
        return;
    SceneryExtras extras = m_scenery->delegate().extras();
    extras.FramesPerSecond = frames;
    m_scenery->delegate().setExtras(extras);
    if (m_playing) { // the clock begins anew
        play(false);
        play(true);
    }
}

void LiveSession::play(bool on)
{
    if (on == m_playing || (on && (!m_scenery || frames() < 2)))
        return;
    m_playing = on;
    if (on) {
        m_flown = false;
        if (m_frame >= frames() - 1)
            m_frame = 0;
        m_playedFrom = m_frame;
        m_playClock.start();
        // Twice a frame, so that none is missed by the rounding of the timer.
        m_playTimer.start(std::max(500 / framesPerSecond(), 1));
        ask(true);
        m_view.beginPlay(m_request, frames());
    } else {
        m_view.endPlay();
        m_playTimer.stop();
        ask(false);
    }
    emit stateChanged();
}

void LiveSession::playTick()
{
    const int all = frames();
    const qint64 passed = m_playClock.elapsed() * framesPerSecond() / 1000;
    const qint64 frame = m_playedFrom + passed;
    if (frame >= all && !m_loop) {
        setFrame(all - 1, true);
        play(false);
        return;
    }
    const int now = static_cast<int>(frame % all);
    if (now != m_frame)
        setFrame(now, true);
}
