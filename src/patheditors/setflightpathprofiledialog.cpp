#include "patheditors/setflightpathprofiledialog.h"

#include "base/truncate.h"
#include "patheditors/pathcursor.h"
#include "views/fieldhelp.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include "ui_setflightpathprofiledialog.h"

namespace {

constexpr int RefreshMilliseconds = 1000;
constexpr int ScrollStep = 20;
// Greys below are too dark for the black of the terrain and the dark curve.
constexpr int DarkestGround = 160;
constexpr QRgb LightGround = 0xffefefef;
const QPoint CursorHotSpot(9, 15);

} // namespace

SetFlightPathProfileDialog::SetFlightPathProfileDialog(QWidget *parent,
                                                       const ElevationImage *elevation,
                                                       QList<ControlPoint> &points,
                                                       QList<Waypoint> &ways, int &level,
                                                       double zA, double zE)
    : PathEditor(parent, points, ways, level),
      ui(std::make_unique<Ui_SetFlightPathProfileDialog>()), elevationImage(elevation),
      zScaleA(zA), zScaleE(zE), refreshTimer(new QTimer(this))
{
    ui->setupUi(this);
    tellPlacesIn(ui->labelCoordinates);
    completeHelp(this);
    // The program must not wait for a window that the user cannot close.
    setAttribute(Qt::WA_QuitOnClose, false);
    verticalBarWidth = ui->verticalScrollBar->width();
    horizontalBarHeight = ui->horizontalScrollBar->height();
    loadCursor();
    setScrollRanges();
    // Tab leads to the bars; until it has, no key does anything.
    for (QWidget *widget :
         {static_cast<QWidget *>(this), static_cast<QWidget *>(ui->horizontalScrollBar),
          static_cast<QWidget *>(ui->verticalScrollBar)})
        widget->setFocusPolicy(Qt::TabFocus);
    setFocus();
    ui->horizontalScrollBar->installEventFilter(this);
    connect(ui->horizontalScrollBar, &QScrollBar::valueChanged, this,
            &SetFlightPathProfileDialog::horizontalScrollBarChanged);
    connect(ui->verticalScrollBar, &QScrollBar::valueChanged, this,
            &SetFlightPathProfileDialog::verticalScrollBarChanged);
    connect(ui->actionFocus, &QAction::triggered, this,
            &SetFlightPathProfileDialog::focus);
    connect(refreshTimer, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    refreshTimer->start(RefreshMilliseconds);
}

SetFlightPathProfileDialog::~SetFlightPathProfileDialog() = default;

// Terrain and curve keep their dark colours in every palette, so the window keeps a
// light ground.
bool SetFlightPathProfileDialog::event(QEvent *event)
{
    const bool handled = PathEditor::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        setPalette(QPalette());
    if (event->type() == QEvent::Polish || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::ApplicationPaletteChange) {
        const QColor ground = palette().color(QPalette::Active, QPalette::Window);
        if (qGray(ground.rgb()) < DarkestGround)
            setPalette(QPalette(QColor(LightGround)));
    }
    return handled;
}

// A scroll bar takes its arrow keys for those of a vertical one, where the lower end is
// the greater: across they would lead the wrong way.
bool SetFlightPathProfileDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui->horizontalScrollBar || event->type() != QEvent::KeyPress)
        return PathEditor::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Left && key != Qt::Key_Right)
        return PathEditor::eventFilter(watched, event);
    ui->horizontalScrollBar->triggerAction(key == Qt::Key_Right
                                               ? QAbstractSlider::SliderSingleStepAdd
                                               : QAbstractSlider::SliderSingleStepSub);
    return true;
}

void SetFlightPathProfileDialog::loadCursor()
{
    const auto load = [this](const char *file) {
        return loadCursorBitmap(this, QStringLiteral("SetFlightPathProfileDialog"),
                                QLatin1String(file));
    };
    pitchBitmap = load("waypointPitchCursorBitmap.png");
    pitchMask = load("waypointPitchCursorMask.png");
    pitchCursor = bitmapCursor(pitchBitmap, pitchMask, CursorHotSpot);
}

void SetFlightPathProfileDialog::placeScrollBars()
{
    const int right = width() - verticalBarWidth;
    const int bottom = height() - horizontalBarHeight;
    ui->horizontalScrollBar->setGeometry(
        profileLeft, bottom, qMax(0, right - profileLeft), horizontalBarHeight);
    ui->verticalScrollBar->setGeometry(right, 0, verticalBarWidth, qMax(0, bottom));
    for (QScrollBar *bar : {ui->horizontalScrollBar, ui->verticalScrollBar})
        bar->setSingleStep(ScrollStep);
    // The part of the path that the bars leave to be seen.
    ui->horizontalScrollBar->setPageStep(qMax(ScrollStep, right - profileLeft));
    ui->verticalScrollBar->setPageStep(qMax(ScrollStep, bottom));
}

void SetFlightPathProfileDialog::setScrollRanges()
{
    const qint64 mostX = qint64(profileWidth) + profileLeft - 1 + verticalBarWidth +
                         marginX - (width() - 1);
    const qint64 mostY = qint64(zMax) + 3 * qint64(marginY) - 1 - zMin - (height() - 1);
    ui->horizontalScrollBar->setRange(-marginX, saturated(mostX));
    ui->verticalScrollBar->setRange(marginY, saturated(mostY));
}

qint64 SetFlightPathProfileDialog::offsetX() const
{
    return qint64(profileLeft) - ui->horizontalScrollBar->value();
}

// A drag changes the extent and with it the axis: followed at once, the point would run
// away from the pointer, or with it.
qint64 SetFlightPathProfileDialog::baseline() const
{
    return isDragging() ? heldBaseline : movingBaseline();
}

qint64 SetFlightPathProfileDialog::movingBaseline() const
{
    const QScrollBar *const bar = ui->verticalScrollBar;
    return qint64(bar->maximum()) + height() + zMin - bar->minimum() - bar->value();
}

QPoint SetFlightPathProfileDialog::placeAt(const QPoint &pixel) const
{
    return {saturated(pixel.x() - offsetX()), saturated(baseline() - pixel.y())};
}

bool SetFlightPathProfileDialog::isInside(const QPoint &place) const
{
    return place.x() >= -marginX && place.x() <= qint64(profileWidth) + marginX &&
           place.y() >= qint64(zMin) - marginY && place.y() < qint64(zMax) + marginY;
}

int SetFlightPathProfileDialog::checkForControlPoint(int station, int height) const
{
    return profilePointAt(*controlPoints, station, height);
}

int SetFlightPathProfileDialog::checkForDirectionPoint(int station, int height) const
{
    return pitchHandleAt(*waypoints, handleLength, station, height);
}

// Only heights move here.
void SetFlightPathProfileDialog::movePoint(ControlPoint &point, const QPoint &place)
{
    point.z = place.y();
}

void SetFlightPathProfileDialog::dragBegun(const QPoint &place)
{
    heldBaseline = movingBaseline();
    // The station is taken back by the next repaint.
    if (dragIndex >= 0)
        (*controlPoints)[dragIndex].i = place.x();
}

bool SetFlightPathProfileDialog::turnHandle(Waypoint &waypoint, const QPoint &place)
{
    return tiltTowards(waypoint, place.x(), place.y());
}

double SetFlightPathProfileDialog::handleAngle(const Waypoint &waypoint) const
{
    return waypoint.p;
}

QCursor SetFlightPathProfileDialog::handleCursor() const { return pitchCursor; }

void SetFlightPathProfileDialog::updatePicture() { update(); }

// The wheel over the picture scrolls: upward, or along where there is nothing above.
// The axis stands still during a drag; what scrolled it then would be seen too late.
void SetFlightPathProfileDialog::wheelEvent(QWheelEvent *event)
{
    if (qobject_cast<QScrollBar *>(childAt(event->position().toPoint()))) {
        event->ignore(); // a bar at its end would go on with the other one
        return;
    }
    const QPoint turn = event->angleDelta();
    QScrollBar *const across = ui->horizontalScrollBar;
    QScrollBar *const up = ui->verticalScrollBar;
    const bool along = qAbs(turn.x()) > qAbs(turn.y()) || up->minimum() == up->maximum();
    if (along)
        QCoreApplication::sendEvent(across, event);
    else if (!isDragging())
        QCoreApplication::sendEvent(up, event);
}

void SetFlightPathProfileDialog::updateWaypointList()
{
    updateStations(*waypoints);
    update();
}

void SetFlightPathProfileDialog::followCurve()
{
    if (controlPoints->isEmpty())
        return;
    updateStations(*controlPoints);
    updateProfile(*controlPoints, *waypoints, *waypointLevel);
}

void SetFlightPathProfileDialog::eyesFront()
{
    followCurve();
    pitchAlongCurve(*controlPoints, *waypoints, *waypointLevel);
    update();
}

void SetFlightPathProfileDialog::focus()
{
    const QPoint place = placeAt({menuX, menuY});
    followCurve();
    focusPitches(*waypoints, place.x(), place.y());
    update();
}

void SetFlightPathProfileDialog::contextMenuEvent(QContextMenuEvent *event)
{
    popUp(*event, {ui->actionFocus});
}

void SetFlightPathProfileDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    placeScrollBars();
    setScrollRanges();
}

void SetFlightPathProfileDialog::horizontalScrollBarChanged(int) { update(); }

void SetFlightPathProfileDialog::verticalScrollBarChanged(int) { update(); }

// Only the plan editor ends this window.
void SetFlightPathProfileDialog::closeEvent(QCloseEvent *event) { event->ignore(); }

void SetFlightPathProfileDialog::hideEvent(QHideEvent *event) { event->ignore(); }

void SetFlightPathProfileDialog::keyPressEvent(QKeyEvent *event) { event->ignore(); }
