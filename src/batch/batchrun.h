#pragma once

#include "batch/commandline.h"
#include "views/usernotices.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>

#include <functional>

struct SceneryData;
class SceneryDelegate;

/// Exit status of a run.
enum ExitStatus {
    AllWritten = 0,
    RunFailed = 1,
    WrongUsage = 2,
    Stopped = 130,
};

/// Sends what a message box would say to a line sink.
class LineNotices : public UserNotices {
public:
    using Sink = std::function<void(const QString &line)>;

    explicit LineNotices(Sink sink) : m_sink(std::move(sink)) {}
    void information(QWidget *parent, const QString &title, const QString &text) override;
    void critical(QWidget *parent, const QString &title, const QString &text) override;
    /// Whether a failure has been told.
    [[nodiscard]] bool toldFailure() const { return m_toldFailure; }

private:
    Sink m_sink;
    bool m_toldFailure = false;
};

/// Renders the frames of one scenery without a window, one line a frame.
class BatchRun : public QObject {
    Q_OBJECT

public:
    using Sink = LineNotices::Sink;

    /// `out` takes the progress lines, `err` what goes wrong.
    BatchRun(const BatchOptions &options, Sink out, Sink err);

    /// Loads the scenery and renders; the program's exit status.
    [[nodiscard]] int run();

public slots:
    /// Ends the run as the Stop command does: the frame in hand is not written.
    void stop();

private:
    [[nodiscard]] bool load(SceneryDelegate &delegate);
    void applyOptions(SceneryDelegate &delegate) const;
    [[nodiscard]] bool checkUsage(const SceneryData &data) const;
    void warnOfSharedNames(const SceneryDelegate &delegate) const;
    [[nodiscard]] bool checkFolders(const SceneryDelegate &delegate) const;
    /// Looks up which frames are to be rendered.
    void findWanted(const SceneryDelegate &delegate);
    [[nodiscard]] int render(SceneryDelegate &delegate);
    void frameSaved(const SceneryDelegate &delegate, int frame,
                    const QStringList &complaints);

    const BatchOptions m_options;
    const Sink m_out;
    const Sink m_err;
    LineNotices m_notices;
    SceneryDelegate *m_running = nullptr; // borrowed while run() is on
    QElapsedTimer m_clock;
    qint64 m_frameStart = 0; // ms on m_clock
    QSet<int> m_wanted;      // frames of this run
    int m_done = 0;
    bool m_stopped = false;
    bool m_failed = false;
};
