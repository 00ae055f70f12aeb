#include "livedocks/livedock.h"

#include "livedocks/livesession.h"
#include "livedocks/liveview.h"
#include "views/backgroundwork.h"
#include "views/decimalspinbox.h"
#include "views/fieldhelp.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <array>

namespace {

constexpr int ButtonsARow = 3;
constexpr std::array FrameRates{24, 25, 30, 50, 60};
constexpr double MostClearance = 100000.0;

} // namespace

LiveDock::LiveDock(QWidget *parent)
    : QDockWidget(tr("Live View"), parent), m_view(new LiveView(this)),
      m_session(std::make_unique<LiveSession>(*m_view)),
      m_marking(new BackgroundWork(this)), m_rendering(new BackgroundWork(this)),
      m_lookForFiles(new QTimer(this))
{
    setObjectName(QStringLiteral("liveViewDock"));
    auto *const content = new QWidget(this);
    auto *const column = new QVBoxLayout(content);
    column->addWidget(m_view, 1);
    m_place = new QLabel(content);
    m_place->setObjectName(QStringLiteral("labelPlace"));
    m_place->setTextFormat(Qt::PlainText);
    // Two lines always: the picture above is not to change its size.
    m_place->setMinimumHeight(2 * m_place->fontMetrics().lineSpacing());
    m_place->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_place->setAccessibleName(tr("Camera"));
    m_place->setToolTip(tr("Where the camera is and where it looks."));
    m_place->setWhatsThis(
        tr("Where the camera is and where it looks: x, y and z in world units, heading, "
           "pitch and roll in degrees, and its height above the ground under it."));
    column->addWidget(m_place);
    column->addWidget(makeTimeline());
    column->addWidget(makeFlying());
    column->addWidget(makeButtons());
    setWidget(content);
    completeHelp(content);
    connectTimeline();
    connectFlying();
    connectButtons();
    connect(m_session.get(), &LiveSession::stateChanged, this, &LiveDock::updateState);
    connect(m_session.get(), &LiveSession::cameraChanged, this, &LiveDock::showPlace);
    updateState();
}

LiveDock::~LiveDock() = default;

void LiveDock::setScenery(SceneryMdiChild *scenery) { m_session->setScenery(scenery); }

bool LiveDock::event(QEvent *event)
{
    if (event->type() == QEvent::Show) {
        m_session->setAwake(true);
        m_lookForFiles->start();
    } else if (event->type() == QEvent::Hide) {
        m_session->setAwake(false);
        m_lookForFiles->stop();
    }
    return QDockWidget::event(event);
}

// --- Widgets -------------------------------------------------------------------------

QWidget *LiveDock::makeTimeline()
{
    auto *const box = new QWidget;
    auto *const row = new QHBoxLayout(box);
    row->setContentsMargins({});
    m_play = new QPushButton(tr("Play"));
    m_play->setObjectName(QStringLiteral("pushButtonPlay"));
    m_play->setCheckable(true);
    m_play->setWhatsThis(
        tr("To play the flight in real time. Frames that come too late are "
           "passed over. Click again to stop."));
    m_timeline = new Timeline;
    m_loop = new QCheckBox(tr("Loop"));
    m_loop->setObjectName(QStringLiteral("checkBoxLoop"));
    m_loop->setWhatsThis(
        tr("To begin anew at the end of the flight while it is played."));
    m_framesPerSecond = new QComboBox;
    m_framesPerSecond->setObjectName(QStringLiteral("comboBoxFramesPerSecond"));
    m_framesPerSecond->setAccessibleName(tr("Frames a second"));
    m_framesPerSecond->setWhatsThis(tr(
        "How many frames of the flight go by in a second. It is kept in the scenery."));
    m_length = new QLabel;
    m_length->setObjectName(QStringLiteral("labelLength"));
    m_length->setAccessibleName(tr("Place in the flight"));
    m_length->setToolTip(tr("The frame that is shown, and how long the flight lasts."));
    m_length->setWhatsThis(
        tr("The frame that is shown, of all frames, counted from 0, and "
           "how long the flight lasts at these frames a second."));
    row->addWidget(m_play);
    row->addWidget(m_timeline, 1);
    row->addWidget(m_length);
    row->addWidget(m_loop);
    row->addWidget(m_framesPerSecond);
    return box;
}

QWidget *LiveDock::makeFlying()
{
    auto *const box = new QWidget;
    auto *const row = new QHBoxLayout(box);
    row->setContentsMargins({});
    m_holdGround = new QCheckBox(tr("Hold above ground:"));
    m_holdGround->setObjectName(QStringLiteral("checkBoxHoldGround"));
    m_holdGround->setWhatsThis(
        tr("To keep a camera that is flown at this height above the ground."));
    m_clearance = new DecimalSpinBox;
    m_clearance->setObjectName(QStringLiteral("doubleSpinBoxClearance"));
    m_clearance->setRange(0.0, MostClearance);
    m_clearance->setValue(10.0);
    m_clearance->setAccessibleName(tr("Height above ground"));
    m_clearance->setWhatsThis(tr("The height above the ground that is held, in world "
                                 "units."));
    auto *const label = new QLabel(tr("Speed:"));
    m_speed = new DecimalSpinBox;
    m_speed->setObjectName(QStringLiteral("doubleSpinBoxSpeed"));
    m_speed->setRange(Flyer::LeastSpeed, Flyer::MostSpeed);
    m_speed->setValue(Flyer().speed());
    m_speed->setSuffix(tr(" /s"));
    m_speed->setWhatsThis(
        tr("How fast the keys go, in world units a second. The wheel over "
           "the picture changes it."));
    label->setBuddy(m_speed);
    row->addWidget(m_holdGround);
    row->addWidget(m_clearance);
    row->addStretch();
    row->addWidget(label);
    row->addWidget(m_speed);
    return box;
}

QPushButton *LiveDock::addButton(QGridLayout *grid, const char *name, const QString &text,
                                 const QString &help)
{
    auto *const button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    button->setWhatsThis(help);
    const int place = grid->count();
    grid->addWidget(button, place / ButtonsARow, place % ButtonsARow);
    return button;
}

QWidget *LiveDock::makeButtons()
{
    auto *const box = new QWidget;
    auto *const grid = new QGridLayout(box);
    grid->setContentsMargins({});
    m_setFirst = addButton(grid, "pushButtonSetFirst", tr("Set first"),
                           tr("To make the camera that is shown the camera of the first "
                              "frame. Off on a curved flight."));
    m_setLast = addButton(grid, "pushButtonSetLast", tr("Set last"),
                          tr("To make the camera that is shown the camera of the last "
                             "frame. Off on a curved flight."));
    m_addPoint =
        addButton(grid, "pushButtonAddControlPoint", tr("Add control point here"),
                  tr("To add a control point where the camera is, at the end of "
                     "the path. Off on a straight flight."));
    m_lookFirst = addButton(grid, "pushButtonLookFromFirst", tr("Look from first"),
                            tr("To go to the first frame and its camera."));
    m_lookLast = addButton(grid, "pushButtonLookFromLast", tr("Look from last"),
                           tr("To go to the last frame and its camera."));
    m_reposition =
        addButton(grid, "pushButtonReposition", tr("Reposition"),
                  tr("To fly to the standard place: south of the terrain, in "
                     "its middle, looking north and down. The scenery stays as "
                     "it is."));
    m_fill = addButton(grid, "pushButtonFillPicture", tr("Fill picture"),
                       tr("To come nearer and, where sky is left, to look down, until no "
                          "background is seen. The scenery stays as it is."));
    m_save = addButton(grid, "pushButtonSavePicture", tr("Save this picture..."),
                       tr("To save the picture that is shown to a file."));
    m_copy = addButton(grid, "pushButtonCopyPicture", tr("Copy"),
                       tr("To copy the picture that is shown to the clipboard."));
    m_render = addButton(grid, "pushButtonRenderFrame", tr("Render this frame"),
                         tr("To draw the frame of the timeline at the scenery's size and "
                            "write its files, under the names and in the formats of the "
                            "scenery. From and To stay as they are."));
    return box;
}

// --- State ---------------------------------------------------------------------------

void LiveDock::updateState()
{
    const int frames = m_session->frames();
    const bool has = m_session->scenery() != nullptr;
    const bool straight = m_session->isStraight();
    const QSignalBlocker blocked(m_timeline);
    m_timeline->setRange(0, std::max(frames - 1, 0));
    m_timeline->setValue(m_session->frame());
    m_timeline->setEnabled(has);
    m_play->setEnabled(has && frames > 1);
    m_play->setChecked(m_session->isPlaying());
    const std::initializer_list<QPushButton *> always = {
        m_lookFirst, m_lookLast, m_reposition, m_fill, m_save, m_copy};
    for (QPushButton *const button : always)
        button->setEnabled(has);
    m_setFirst->setEnabled(has && straight);
    m_setLast->setEnabled(has && straight);
    m_addPoint->setEnabled(has && !straight);
    m_render->setEnabled(has && !m_rendering->isOn() && !m_session->isRunning());
    const int rate = m_session->framesPerSecond();
    m_length->setText(has ? tr("%1 of %2, %3 s")
                                .arg(m_session->frame())
                                .arg(frames)
                                .arg(double(frames) / rate, 0, 'f', 1)
                          : QString());
    // The scenery's own rate is in the list, too.
    m_framesPerSecond->setEnabled(has);
    if (m_framesPerSecond->currentData().toInt() != rate)
        listRates(rate);
    if (!m_session->isPlaying())
        updateMarks();
}

void LiveDock::listRates(int own)
{
    const QSignalBlocker blocked(m_framesPerSecond);
    m_framesPerSecond->clear();
    std::vector<int> all(FrameRates.begin(), FrameRates.end());
    if (std::find(all.begin(), all.end(), own) == all.end())
        all.push_back(own);
    std::sort(all.begin(), all.end());
    for (const int each : all)
        m_framesPerSecond->addItem(tr("%1 a second").arg(each), each);
    m_framesPerSecond->setCurrentIndex(m_framesPerSecond->findData(own));
}

void LiveDock::showPlace(std::optional<double> groundHeight)
{
    if (!m_session->scenery() || m_view->picture().isNull()) {
        m_place->clear();
        return;
    }
    const ViewCamera &c = m_session->camera();
    QString text = tr("x %1   y %2   z %3\nheading %4°   pitch %5°   roll %6°")
                       .arg(c.x, 0, 'f', 2)
                       .arg(c.y, 0, 'f', 2)
                       .arg(c.z, 0, 'f', 2)
                       .arg(c.heading, 0, 'f', 2)
                       .arg(c.pitch, 0, 'f', 2)
                       .arg(c.roll, 0, 'f', 2);
    if (groundHeight)
        text += tr("   above ground %1").arg(c.z - *groundHeight, 0, 'f', 2);
    m_place->setText(text);
}
