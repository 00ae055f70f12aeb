#pragma once

#include <QImage>
#include <QStringList>

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <thread>

/// What is told of a frame file that could not be written.
[[nodiscard]] QString unsavedText(const QString &name, const QString &reason);

/// Writes the files of finished frames on threads of its own, while the next frame is
/// drawn.
///
/// Frames are handed over whole and are reported in the order in which they came. Two
/// frames with a file name in common are written one after the other.
class FrameWriter {
public:
    /// Told once for each frame, on the thread that owns the writer: a sentence for each
    /// of its files that could not be written, with the reason.
    using Written = std::function<void(int frame, const QStringList &complaints)>;
    /// Called now and then while the writer waits.
    using Wait = std::function<void()>;

    /// `most` frames are written at a time.
    FrameWriter(int most, Written written, Wait wait);
    /// Waits for all frames.
    ~FrameWriter();
    FrameWriter(const FrameWriter &) = delete;
    FrameWriter &operator=(const FrameWriter &) = delete;

    /// Takes a frame, once there is room for it. It is brought to half its size first
    /// if `halve` says so.
    void write(int frame, const QImage &picture, bool halve, const QStringList &names);
    /// Waits until all frames are written.
    void finish();
    /// Frames that are being written now.
    [[nodiscard]] int busy() const;

private:
    /// A frame with the thread that writes its files.
    struct Job {
        int frame = 0;
        QImage picture;
        bool halve = false;
        QStringList names;
        QStringList complaints; // of all files, until they are written
        std::atomic<bool> done = false;
        std::thread thread;

        void run();

    private:
        void save();
    };

    void reportDone();
    void waitUntil(const std::function<bool()> &ready);
    [[nodiscard]] bool sharesAName(const QStringList &names) const;

    int m_most;
    Written m_written;
    Wait m_wait;
    std::deque<std::unique_ptr<Job>> m_jobs; // in the order of the frames
};
