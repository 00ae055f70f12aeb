// Frames of runs, in the window and without one.

#include "app/mainwindow.h"
#include "faults/operations.h"
#include "faults/testfiles.h"
#include "views/noticelabel.h"

#include <QAction>

namespace {

const QStringList Frames{"f0.png", "f0.ppm", "f1.png", "f1.ppm", "f2.png", "f2.ppm"};

void prepareRun(const QString &folder)
{
    writeScenery(folder, QStringLiteral("s.zph"));
    for (const QString &frame : Frames)
        writeText(folder + '/' + frame, "an earlier frame");
}

class WindowRun : public WindowOperation {
public:
    void prepare(const QString &folder) override
    {
        prepareRun(folder);
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->open(folder + QStringLiteral("/s.zph"));
    }
    [[nodiscard]] QStringList targets() const override { return Frames; }

protected:
    void perform() override
    {
        m_window->findChild<QAction *>("action_Final", Qt::FindDirectChildrenOnly)
            ->trigger();
    }
    [[nodiscard]] QString notice() const override
    {
        return m_window->findChild<NoticeLabel *>()->notice();
    }

private:
    std::unique_ptr<MainWindow> m_window;
};

class BatchRun : public ProgramOperation {
public:
    void prepare(const QString &folder) override
    {
        prepareRun(folder);
        m_scenery = folder + QStringLiteral("/s.zph");
    }
    [[nodiscard]] QStringList targets() const override { return Frames; }

protected:
    [[nodiscard]] QString program() const override
    {
        return QStringLiteral(RENDER_PROGRAM);
    }
    [[nodiscard]] QStringList arguments() const override { return {m_scenery}; }

private:
    QString m_scenery;
};

} // namespace

std::vector<OperationEntry> runOperations()
{
    return {{"run-window", [] { return std::make_unique<WindowRun>(); }},
            {"run-batch", [] { return std::make_unique<BatchRun>(); }}};
}
