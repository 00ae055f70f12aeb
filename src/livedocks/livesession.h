#pragma once

#include "live/flyer.h"
#include "live/liveengine.h"
#include "livedocks/liveview.h"
#include "scene/standardcamera.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>

class SceneryDelegate;
class SceneryMdiChild;

/// What the live view shows at the moment: which scenery, which of its frames, or which
/// camera that was flown from there.
///
/// It asks the engine for pictures as things change and hands them to the view. Flying
/// changes nothing of the scenery; what does bears the name of a "Set ..." or "Add ...".
class LiveSession : public QObject {
    Q_OBJECT

public:
    explicit LiveSession(LiveView &view);
    ~LiveSession() override;

    /// Shows another scenery, or none.
    void setScenery(SceneryMdiChild *scenery);
    [[nodiscard]] SceneryMdiChild *scenery() const;
    /// Nothing is drawn while the view cannot be seen.
    void setAwake(bool awake);

    [[nodiscard]] int frame() const { return m_frame; }
    [[nodiscard]] int frames() const; ///< of the whole flight; 0 without a scenery
    [[nodiscard]] int framesPerSecond() const;
    [[nodiscard]] bool isStraight() const;
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool isFlown() const { return m_flown; }
    [[nodiscard]] bool isPlaying() const { return m_playing; }
    /// The document as the form shows it; a fresh one without a scenery.
    [[nodiscard]] SceneryDocument document() const;
    /// What the view shows: of the last picture, or as it was flown since.
    [[nodiscard]] const ViewCamera &camera() const { return m_flyer.camera(); }

    /// The camera as it is by now: as it was flown, or that of the frame.
    [[nodiscard]] ViewCamera present() const;
    /// Flies to a place; `moving` while more follow.
    void flyTo(const ViewCamera &camera, bool moving);

    /// Goes to a frame; `moving` while more follow.
    void setFrame(int frame, bool moving = false);
    void play(bool on);
    void setLoop(bool on) { m_loop = on; }
    void setFramesPerSecond(int frames);
    void setSpeed(double speed) { m_flyer.setSpeed(speed); }
    void holdGround(bool on, double clearance);

    /// Writes the camera that is shown into the form, and goes to that frame.
    void setEnd(FlightEnd end);
    void addControlPoint();
    void lookFrom(FlightEnd end);
    /// The told standard camera, flown.
    void reposition();
    void fillPicture();

signals:
    /// Frame, number of frames, kind of flight, play: something of it is another.
    void stateChanged();
    /// The camera is another, or the ground under it.
    void cameraChanged(std::optional<double> groundHeight);
    void speedChanged(double speed);

private:
    void connectView();
    void leaveScenery();
    void documentChanged();
    void take(const LivePicture &picture);
    void fly(const ViewCamera &camera, bool moving);
    void beginFlying();
    void endFlying();
    void keysChanged(const FlyKeys &keys, bool pressed);
    void flyTick();
    void playTick();
    void noteChange();
    void keepPlace();
    /// Asks for pictures of the present state.
    void ask(bool moving, bool fill = false);

    LiveView &m_view;
    LiveEngine m_engine;
    QPointer<SceneryMdiChild> m_scenery;
    bool m_awake = false;
    int m_frame = 0;
    Flyer m_flyer;
    bool m_flown = false;
    bool m_holdsGround = false;
    double m_clearance = 10.0;
    FlyKeys m_keys;
    QTimer m_flyTimer;
    QElapsedTimer m_flownSince;
    bool m_playing = false;
    bool m_loop = false;
    QTimer m_playTimer;
    QElapsedTimer m_playClock;
    int m_playedFrom = 0;    // the frame at which the clock began
    QTimer m_change;         // gathers changes of the document
    QTimer m_watch;          // looks at the files
    SceneryDocument m_known; // as it was when it changed last
    bool m_changed = false;  // and has changed since
    quint64 m_request = 0;
    quint64 m_oldest = 0; // request whose pictures are those of this scenery
    // Where the view was in each scenery.
    struct Place {
        int frame = 0;
        std::optional<ViewCamera> flown;
    };
    QHash<const SceneryMdiChild *, Place> m_places;
    const SceneryMdiChild *m_placeOf = nullptr; // the scenery, also while it goes
    QObject m_guard; // of connections that stay for all of a scenery's life
};
