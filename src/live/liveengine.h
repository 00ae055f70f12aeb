#pragma once

#include "live/inputcache.h"
#include "live/livelevels.h"
#include "live/livepicture.h"

#include <QObject>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

class LiveFrame;
class TerrainSweep;

/// Draws what the live view is to show, on a thread of its own: the latest request wins.
///
/// A request is answered by a picture that is as fine as it can be to come at once; when
/// no other request follows it is refined up to the final frame. A newer request ends a
/// refinement in its midst.
class LiveEngine : public QObject {
    Q_OBJECT

public:
    /// Most seconds that a picture may take while things move.
    static constexpr double SecondsWhileMoving = 1.0 / 60;

    explicit LiveEngine(QObject *parent = nullptr);
    /// Ends the picture in hand and waits for that.
    ~LiveEngine() override;

    /// Asks for pictures; what was asked for before is forgotten. The number that the
    /// pictures will have.
    quint64 request(const LiveRequest &wanted);
    /// Shows nothing any more.
    void clear();
    /// Looks whether the input files have changed, and draws anew what was asked for
    /// last.
    void lookForChanges();

signals:
    /// A picture, on the thread of this object. It may answer a request that is not the
    /// newest any more.
    void drawn(const LivePicture &picture);

private slots:
    void deliver();

private:
    class Interruption;

    void work();
    /// Answers a request up to its end, or to where a newer one waits.
    void answer(const LiveRequest &wanted, quint64 number);
    void refine(const LiveFrame &frame, LivePicture picture, double workDone);
    bool drawLevel(const LiveFrame &frame, const LiveLevel *level, bool whole,
                   LivePicture &picture);
    [[nodiscard]] bool filesHaveChanged(const LiveRequest &drawn) const;
    void leaveCoresToTheRun();
    /// Gives a picture to the thread of this object, which delivers it.
    void handOver(const LivePicture &picture);

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<LiveRequest> m_wanted; // not yet taken
    quint64 m_number = 0;                // of the newest request
    bool m_lookForChanges = false;
    bool m_quit = false;
    std::vector<LivePicture> m_drawn; // not yet delivered
    // Whether the picture in hand is to end: a newer request waits, or the end.
    std::atomic<bool> m_interrupted = false;
    std::atomic<bool> m_ending = false;

    // Of the thread that works.
    InputCache m_inputs;
    LiveLevels m_levels;
    std::unique_ptr<TerrainSweep> m_sweep;
    int m_threads = 0; // that draw; 0 stands for all cores
    std::optional<LiveRequest> m_last;
    quint64 m_lastNumber = 0;
    std::thread m_thread; // the last to be made
};
