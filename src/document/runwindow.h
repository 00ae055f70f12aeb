#pragma once

#include "run/runlistener.h"

#include <QPointer>

class ImageMdiChild;
class SceneryDelegate;

/// What a run does on the desktop: shows its frames in a window, if there is one, keeps
/// the program alive by pumping events, and tells by the delegate's signals and notices.
class RunWindow final : public RunListener {
public:
    /// Borrows both; the window may go during the run.
    RunWindow(SceneryDelegate &delegate, ImageMdiChild *window);
    /// The window may be closed again.
    ~RunWindow() override;
    RunWindow(const RunWindow &) = delete;
    RunWindow &operator=(const RunWindow &) = delete;

    void targetMade(const QImage &target) override;
    void flightRefused(const QString &reason) override;
    [[nodiscard]] bool wants(int frame) override;
    void frameStarted(int frame, int number, const QImage &target) override;
    [[nodiscard]] bool step(qint64 row, qint64 of) override;
    void frameDrawn(int frame, const QImage &target) override;
    void frameSaved(int frame, const QStringList &complaints) override;
    void waiting() override;

    /// Shows a picture, if there is a window.
    void show(const QImage &picture);
    [[nodiscard]] bool toldFailure() const { return m_toldFailure; }

private:
    SceneryDelegate &m_delegate;
    QPointer<ImageMdiChild> m_window;
    bool m_toldFailure = false;
};
