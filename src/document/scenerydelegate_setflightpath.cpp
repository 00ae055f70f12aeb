// The flight path editors of a document: they work on copies of its lists.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "flight/flightplan.h"
#include "flight/flightprofile.h"
#include "patheditors/setflightpathdialog.h"
#include "scene/scenerydata.h"

#include <QLineEdit>

#include <algorithm>

void SceneryDelegate::setFlightPath()
{
    viewToData();
    setFlightPathDialog.reset();
    dialogControlPoints = scenery.controlPoints;
    dialogWaypoints = scenery.waypoints;
    dialogWaypointLevel = scenery.waypointLevel;
    // The names that the form shows, which may be newer than those of the parameters.
    const QString texture = view->findChild<QLineEdit *>("lineEditTextureFile")->text();
    const QString elevation =
        view->findChild<QLineEdit *>("lineEditElevationFile")->text();
    setFlightPathDialog = std::make_unique<SetFlightPathDialog>(
        dialogControlPoints, dialogWaypoints, dialogWaypointLevel,
        scenery.parameters.HDateiSkalaZA, scenery.parameters.HDateiSkalaZE,
        inputFile(texture), inputFile(elevation), scenery.parameters.HDateiSkalaX,
        scenery.parameters.HDateiSkalaY);
    if (setFlightPathDialog->error()) {
        setFlightPathDialog.reset();
        return;
    }
    connect(setFlightPathDialog.get(), &SetFlightPathDialog::pathAccepted, this,
            &SceneryDelegate::acceptSetFlightPathDialog);
    setFlightPathDialog->setVisible(true);
}

void SceneryDelegate::acceptSetFlightPathDialog()
{
    scenery.controlPoints = dialogControlPoints;
    scenery.waypoints = dialogWaypoints;
    scenery.waypointLevel = dialogWaypointLevel;
    setModified();
}

SceneryDocument SceneryDelegate::shown()
{
    viewToData();
    return scenery;
}

bool SceneryDelegate::pathEditorHoldsChanges() const
{
    if (!setFlightPathDialog || !setFlightPathDialog->isVisible())
        return false;
    // What lies on the curve follows it with each repaint and is no work of the user.
    const auto isSamePoint = [](const ControlPoint &a, const ControlPoint &b) {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    };
    const auto isSameView = [](const Waypoint &a, const Waypoint &b) {
        return a.a == b.a && a.p == b.p;
    };
    return dialogWaypointLevel != scenery.waypointLevel ||
           !std::equal(dialogControlPoints.begin(), dialogControlPoints.end(),
                       scenery.controlPoints.begin(), scenery.controlPoints.end(),
                       isSamePoint) ||
           !std::equal(dialogWaypoints.begin(), dialogWaypoints.end(),
                       scenery.waypoints.begin(), scenery.waypoints.end(), isSameView);
}

void SceneryDelegate::showPathInEditor()
{
    if (!setFlightPathDialog || !setFlightPathDialog->isVisible())
        return;
    dialogControlPoints = scenery.controlPoints;
    dialogWaypoints = scenery.waypoints;
    dialogWaypointLevel = scenery.waypointLevel;
    setFlightPathDialog->showLists();
}

void SceneryDelegate::addControlPoint(int x, int y, int z)
{
    if (setFlightPathDialog && setFlightPathDialog->isVisible()) {
        dialogControlPoints.append({x, y, z, 0.0});
        setFlightPathDialog->showLists();
        emit changed();
        return;
    }
    scenery.controlPoints.append({x, y, z, 0.0});
    fitWaypoints(scenery.controlPoints, scenery.waypoints, scenery.waypointLevel);
    updatePlan(scenery.controlPoints, scenery.waypoints, scenery.waypointLevel);
    updateStations(scenery.controlPoints);
    updateProfile(scenery.controlPoints, scenery.waypoints, scenery.waypointLevel);
    setModified();
}

void SceneryDelegate::takePath(const SceneryDocument &flown)
{
    viewToData();
    scenery.controlPoints = flown.controlPoints;
    scenery.waypoints = flown.waypoints;
    scenery.waypointLevel = flown.waypointLevel;
    SceneryData &data = scenery.parameters;
    data.isStraight = flown.parameters.isStraight;
    data.Bildanzahl = flown.parameters.Bildanzahl;
    data.StartbildNr = flown.parameters.StartbildNr;
    data.EndbildNr = flown.parameters.EndbildNr;
    scenery.extras.FollowGround = flown.extras.FollowGround;
    // Its OK would bring back the path before.
    showPathInEditor();
    dataToView();
    setModified();
}
