#pragma once

#include "batch/commandline.h"
#include "run/runlistener.h"
#include "scene/scenerydocument.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>

#include <functional>

class FlightRun;

/// Exit status of a run.
enum ExitStatus {
    AllWritten = 0,
    RunFailed = 1,
    WrongUsage = 2,
    Stopped = 130,
};

/// Renders the frames of one scenery without a window, one line a frame.
class BatchRun : public QObject, private RunListener {
    Q_OBJECT

public:
    using Sink = std::function<void(const QString &line)>;

    /// `out` takes the progress lines, `err` what goes wrong.
    BatchRun(const BatchOptions &options, Sink out, Sink err);

    /// Loads the scenery and renders; the program's exit status.
    [[nodiscard]] int run();

public slots:
    /// Ends the run as the Stop command does: the frame in hand is not written.
    void stop();

private:
    [[nodiscard]] bool load();
    /// Settings first, then the options that have a name. False if the scenery has no
    /// point that a setting names.
    [[nodiscard]] bool applyOptions();
    [[nodiscard]] bool checkUsage() const;
    void warnOfSharedNames() const;
    [[nodiscard]] bool checkFolders() const;
    /// Looks up which frames are to be rendered.
    void findWanted();
    [[nodiscard]] QStringList filesOf(int frame) const;
    [[nodiscard]] int render();

    void targetMade(const QImage &) override {}
    void flightRefused(const QString &reason) override;
    [[nodiscard]] bool wants(int frame) override { return m_wanted.contains(frame); }
    void frameStarted(int frame, int number, const QImage &target) override;
    [[nodiscard]] bool step(qint64 row, qint64 of) override;
    void frameDrawn(int frame, const QImage &target) override;
    void frameSaved(int frame, const QStringList &complaints) override;
    void waiting() override;

    const BatchOptions m_options;
    const Sink m_out;
    const Sink m_err;
    SceneryDocument m_document;
    QString m_folder;               // of the scenery
    FlightRun *m_running = nullptr; // borrowed while run() is on
    QElapsedTimer m_clock;
    qint64 m_frameStart = 0; // ms on m_clock
    QSet<int> m_wanted;      // frames of this run
    int m_done = 0;
    bool m_stopped = false;
    bool m_failed = false;
    bool m_toldFailure = false;
};
