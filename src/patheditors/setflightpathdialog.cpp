#include "patheditors/setflightpathdialog.h"

#include "base/appsettings.h"
#include "flight/flightplan.h"
#include "flight/pathcurve.h"
#include "patheditors/pathcursor.h"
#include "patheditors/setflightpathprofiledialog.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "scene/waypointlevel.h"
#include "views/fieldhelp.h"
#include "views/label.h"
#include "views/windowplace.h"

#include <QMessageBox>
#include <QScrollArea>

#include "ui_setflightpathdialog.h"

namespace {

const QPoint CursorHotSpot(15, 15);

} // namespace

SetFlightPathDialog::SetFlightPathDialog(QList<ControlPoint> &points,
                                         QList<Waypoint> &ways, int &level, double zA,
                                         double zE, const QString &textureFile,
                                         const QString &elevationFile, double scaleX,
                                         double scaleY)
    : PathEditor(nullptr, points, ways, level),
      ui(std::make_unique<Ui_SetFlightPathDialog>())
{
    ui->setupUi(this);
    tellPlacesIn(ui->labelCoordinates);
    // The program ends with its main window, whose documents end their editors.
    setAttribute(Qt::WA_QuitOnClose, false);
    const AppSettings stored;
    placeWindow(this,
                stored.value("SetFlightPathDialog/Position", QPoint(100, 100)).toPoint(),
                stored.value("SetFlightPathDialog/Size", QSize(600, 400)).toSize());

    if (!loadFiles(textureFile, elevationFile, scaleX, scaleY)) {
        failed = true;
        return;
    }
    makeImageWidget();
    completeHelp(this);
    connectSignals();
    loadCursors();

    ui->actionRemoveWaypoints->setEnabled(*waypointLevel >= 1);
    ui->actionAddWaypoints->setEnabled(*waypointLevel < MaxWaypointLevel);
    const bool hasCurve = controlPoints->size() >= CurveMinimum;
    ui->actionEyesFront->setEnabled(hasCurve);
    ui->actionFocus->setEnabled(hasCurve);
    if (!hasCurve) {
        ui->actionAddWaypoints->setEnabled(false);
        waypoints->clear();
    }
    makeProfileDialog(zA, zE);
}

SetFlightPathDialog::~SetFlightPathDialog() = default;

bool SetFlightPathDialog::loadFiles(const QString &textureFile,
                                    const QString &elevationFile, double scaleX,
                                    double scaleY)
{
    const auto complain = [this](const QString &name) {
        QMessageBox::critical(this, tr("Error"),
                              tr("Could not open file \"%1\".").arg(name));
        return false;
    };
    textureImage = loadImageFile(textureFile);
    if (textureImage.isNull())
        return complain(textureFile);
    elevationImage =
        std::make_unique<ElevationImage>(elevationFile, scaleX, scaleY, nullptr);
    return !elevationImage->isNull() || complain(elevationFile);
}

void SetFlightPathDialog::makeImageWidget()
{
    texturePixmap = QPixmap::fromImage(textureImage);
    if (texturePixmap.isNull()) {
        QMessageBox::critical(this, tr("Error"), tr("Can't display the texture."));
        failed = true;
    }
    imageWidget = new Label;
    imageWidget->setObjectName(QStringLiteral("labelImage"));
    imageWidget->setPixmap(texturePixmap);
    imageWidget->resize(texturePixmap.size());

    scrollArea = new QScrollArea(this);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setAccessibleName(tr("Texture with the flight path"));
    // A frame would shift the picture against the positions of the pointer.
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setWidget(imageWidget);
    // The area beside the picture is the dialog's own.
    scrollArea->viewport()->setAutoFillBackground(false);
    imageWidget->setAutoFillBackground(false);
    // A picture that hides what is behind it spares the filling of that.
    imageWidget->setAttribute(Qt::WA_OpaquePaintEvent, !texturePixmap.hasAlphaChannel());

    // A move goes up from the picture only through widgets that track the mouse.
    setMouseTracking(true);
    scrollArea->setMouseTracking(true);
    scrollArea->viewport()->setMouseTracking(true);
    imageWidget->setMouseTracking(true);
    imageWidget->installEventFilter(this);
    for (QWidget *widget : findChildren<QWidget *>())
        if (widget->focusPolicy() != Qt::NoFocus)
            widget->installEventFilter(this);
}

void SetFlightPathDialog::connectSignals()
{
    connect(imageWidget, &Label::paintEventSignal, this,
            &SetFlightPathDialog::paintEventSlot);
    // The form has already told them to accept() and reject(), so the window is
    // hidden when these run.
    connect(ui->pushButtonOK, &QPushButton::clicked, this,
            &SetFlightPathDialog::pushButtonOKClicked);
    connect(ui->pushButtonCancel, &QPushButton::clicked, this,
            &SetFlightPathDialog::pushButtonCancelClicked);
    connect(ui->actionAddWaypoints, &QAction::triggered, this,
            &SetFlightPathDialog::addWaypoints);
    connect(ui->actionRemoveWaypoints, &QAction::triggered, this,
            &SetFlightPathDialog::removeWaypoints);
    connect(ui->actionEyesFront, &QAction::triggered, this,
            &SetFlightPathDialog::eyesFront);
    connect(ui->actionFocus, &QAction::triggered, this, &SetFlightPathDialog::focus);
}

void SetFlightPathDialog::loadCursors()
{
    const auto load = [this](const char *file) {
        return loadCursorBitmap(this, QStringLiteral("SetFlightPathDialog"),
                                QLatin1String(file));
    };
    plusBitmap = load("controlPointCursorPlusBitmap.png");
    plusMask = load("controlPointCursorPlusMask.png");
    directionBitmap = load("waypointDirectionCursorBitmap.png");
    directionMask = load("waypointDirectionCursorMask.png");
    plusCursor = bitmapCursor(plusBitmap, plusMask, CursorHotSpot);
    directionCursor = bitmapCursor(directionBitmap, directionMask, CursorHotSpot);
}

void SetFlightPathDialog::makeProfileDialog(double zA, double zE)
{
    profileDialog = std::make_unique<SetFlightPathProfileDialog>(
        nullptr, elevationImage.get(), *controlPoints, *waypoints, *waypointLevel, zA,
        zE);
    const AppSettings stored;
    placeWindow(
        profileDialog.get(),
        stored.value("SetFlightPathProfileDialog/Position", QPoint(200, 200)).toPoint(),
        stored.value("SetFlightPathProfileDialog/Size", QSize(600, 400)).toSize());
    profileDialog->show();
}

void SetFlightPathDialog::writeSettings() const
{
    AppSettings stored;
    stored.setValue("SetFlightPathDialog/Position", pos());
    stored.setValue("SetFlightPathDialog/Size", size());
    if (!profileDialog)
        return;
    stored.setValue("SetFlightPathProfileDialog/Position", profileDialog->pos());
    stored.setValue("SetFlightPathProfileDialog/Size", profileDialog->size());
}

void SetFlightPathDialog::leave()
{
    profileDialog.reset();
    dragIndex = -1;
    directionIndex = -1;
}

void SetFlightPathDialog::pushButtonOKClicked()
{
    writeSettings();
    accept();
    // A window that was covered or minimized all the time has not painted.
    followCurve();
    if (profileDialog)
        profileDialog->followCurve();
    harmonizeAngles();
    emit pathAccepted();
    leave();
}

void SetFlightPathDialog::pushButtonCancelClicked()
{
    writeSettings();
    reject();
    leave();
}

void SetFlightPathDialog::harmonizeAngles() { ::harmonizeAngles(*waypoints); }

void SetFlightPathDialog::followCurve()
{
    updatePlan(*controlPoints, *waypoints, *waypointLevel);
}

void SetFlightPathDialog::showLists()
{
    updateActionsAndWaypoints();
    ui->actionRemoveWaypoints->setEnabled(*waypointLevel >= 1);
    imageWidget->update();
    if (profileDialog)
        profileDialog->updateWaypointList();
}

void SetFlightPathDialog::addWaypoints()
{
    ui->actionRemoveWaypoints->setEnabled(true);
    followCurve();
    doubleWaypoints(*waypoints, *waypointLevel);
    if (*waypointLevel >= MaxWaypointLevel)
        ui->actionAddWaypoints->setEnabled(false);
    imageWidget->update();
    if (profileDialog)
        profileDialog->updateWaypointList();
}

void SetFlightPathDialog::removeWaypoints()
{
    ui->actionAddWaypoints->setEnabled(true);
    followCurve();
    halveWaypoints(*waypoints, *waypointLevel);
    if (*waypointLevel <= 0)
        ui->actionRemoveWaypoints->setEnabled(false);
    imageWidget->update();
    if (profileDialog)
        profileDialog->updateWaypointList();
}

void SetFlightPathDialog::eyesFront()
{
    followCurve();
    headAlongCurve(*controlPoints, *waypoints, *waypointLevel);
    imageWidget->update();
    if (!profileDialog)
        return;
    profileDialog->eyesFront();
    profileDialog->updateWaypointList();
}

void SetFlightPathDialog::focus()
{
    const QPoint plan = placeAt({menuX, menuY});
    focusX = plan.x();
    focusY = plan.y();
    followCurve();
    focusHeadings(*waypoints, focusX, focusY);
    imageWidget->update();
}

void SetFlightPathDialog::updateActionsAndWaypoints()
{
    const bool hasCurve = controlPoints->size() >= CurveMinimum;
    ui->actionEyesFront->setEnabled(hasCurve);
    ui->actionFocus->setEnabled(hasCurve);
    ui->actionAddWaypoints->setEnabled(hasCurve && *waypointLevel < MaxWaypointLevel);
    fitWaypoints(*controlPoints, *waypoints, *waypointLevel);
}
