// The flight path editors of a document: they work on copies of its lists.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "patheditors/setflightpathdialog.h"
#include "scene/scenerydata.h"

#include <QLineEdit>

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

void SceneryDelegate::takePath(const SceneryDocument &flown)
{
    viewToData();
    // An open editor works on copies of the lists before, which stay as they are.
    scenery.controlPoints = flown.controlPoints;
    scenery.waypoints = flown.waypoints;
    scenery.waypointLevel = flown.waypointLevel;
    SceneryData &data = scenery.parameters;
    data.isStraight = flown.parameters.isStraight;
    data.Bildanzahl = flown.parameters.Bildanzahl;
    data.StartbildNr = flown.parameters.StartbildNr;
    data.EndbildNr = flown.parameters.EndbildNr;
    scenery.extras.FollowGround = flown.extras.FollowGround;
    dataToView();
    setModified();
}
