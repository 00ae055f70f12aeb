#pragma once

#include "livedocks/timeline.h"
#include "scene/scenerydocument.h"

#include <QDockWidget>

#include <memory>
#include <optional>

class BackgroundWork;
class LiveSession;
class LiveView;
class QAbstractButton;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QTimer;
class SceneryMdiChild;

/// The dock with the live view, its timeline and its buttons.
class LiveDock : public QDockWidget {
    Q_OBJECT

public:
    explicit LiveDock(QWidget *parent = nullptr);
    ~LiveDock() override;

    /// Shows another scenery, or none.
    void setScenery(SceneryMdiChild *scenery);
    [[nodiscard]] LiveSession &session() const { return *m_session; }

signals:
    /// A sentence about what a button did.
    void told(const QString &text);

protected:
    bool event(QEvent *event) override;

private:
    QWidget *makeTimeline();
    QWidget *makeFlying();
    QWidget *makeButtons();
    QPushButton *addButton(QGridLayout *grid, const char *name, const QString &text,
                           const QString &help);
    void connectTimeline();
    void connectFlying();
    void connectButtons();
    void updateState();
    void listRates(int own);
    void updateMarks(bool always = false);
    void showPlace(std::optional<double> groundHeight);
    void savePicture();
    void copyPicture();
    void renderFrame();

    LiveView *m_view;
    std::unique_ptr<LiveSession> m_session;
    Timeline *m_timeline = nullptr;
    QPushButton *m_play = nullptr;
    QCheckBox *m_loop = nullptr;
    QComboBox *m_framesPerSecond = nullptr;
    QLabel *m_length = nullptr;
    QLabel *m_place = nullptr;
    QCheckBox *m_holdGround = nullptr;
    QDoubleSpinBox *m_clearance = nullptr;
    QDoubleSpinBox *m_speed = nullptr;
    QPushButton *m_setFirst = nullptr, *m_setLast = nullptr, *m_addPoint = nullptr;
    QPushButton *m_lookFirst = nullptr, *m_lookLast = nullptr, *m_reposition = nullptr;
    QPushButton *m_fill = nullptr, *m_save = nullptr, *m_copy = nullptr;
    QPushButton *m_render = nullptr;
    BackgroundWork *m_marking = nullptr;   // looks which files are there
    BackgroundWork *m_rendering = nullptr; // one frame
    QTimer *m_lookForFiles = nullptr;      // while the dock is shown
    SceneryDocument m_marked;              // whose marks are shown, or looked for
};
