#include "app/allwindows.h"

#include "app/aboutzephrantdialog.h"
#include "app/librariesdialog.h"
#include "app/mainwindow.h"
#include "app/newfiledialog.h"
#include "app/settingsdialog.h"
#include "document/scenerymdichild.h"
#include "importdialogs/demdatadialog.h"
#include "importdialogs/importdialogs.h"
#include "importers/usgsdemdata.h"
#include "patheditors/setflightpathdialog.h"
#include "patheditors/setflightpathprofiledialog.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "terraindialogs/openterraindialog.h"
#include "terraindialogs/pathfromtrackdialog.h"
#include "terraindialogs/texturefromelevationdialog.h"
#include "tooldialogs/tooldialogs.h"
#include "views/imagemdichild.h"
#include "views/reportdialog.h"

#include <QTemporaryDir>

namespace {

template <class Window> std::shared_ptr<QWidget> made()
{
    return std::make_shared<Window>(nullptr);
}

std::shared_ptr<QWidget> mainWindow() { return std::make_shared<MainWindow>(); }

std::shared_ptr<QWidget> sceneryView()
{
    return std::make_shared<SceneryMdiChild>(nullptr, nullptr, nullptr, nullptr, nullptr);
}

Result<std::unique_ptr<TerrainSource>> noTerrain() { return failed(QString()); }

std::shared_ptr<QWidget> openTerrain()
{
    return std::make_shared<OpenTerrainDialog>(noTerrain);
}

std::shared_ptr<QWidget> pathFromTrack()
{
    return std::make_shared<PathFromTrackDialog>(SceneryDocument(), QString(), noTerrain);
}

std::shared_ptr<QWidget> report()
{
    return std::make_shared<ReportDialog>(OperationOutcome(), QImage());
}

std::shared_ptr<QWidget> demData()
{
    UsgsDemData header;
    return std::make_shared<DemDataDialog>(nullptr, &header);
}

// What both editors of a flight path work on.
struct Flight {
    QTemporaryDir folder;
    QList<ControlPoint> points;
    QList<Waypoint> ways;
    int level = 0;
    std::unique_ptr<ElevationImage> elevation;
    std::unique_ptr<QWidget> editor;

    [[nodiscard]] QString picture() const
    {
        const QString name = folder.filePath("picture.png");
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        return saveImageFile(image, name) ? name : QString();
    }
};

// The window lives as long as what it works on.
std::shared_ptr<QWidget> shared(const std::shared_ptr<Flight> &flight)
{
    return {flight, flight->editor.get()};
}

std::shared_ptr<QWidget> planEditor()
{
    const auto flight = std::make_shared<Flight>();
    const QString picture = flight->picture();
    flight->editor =
        std::make_unique<SetFlightPathDialog>(flight->points, flight->ways, flight->level,
                                              1.0, 1.0, picture, picture, 1.0, 1.0);
    return shared(flight);
}

std::shared_ptr<QWidget> profileEditor()
{
    const auto flight = std::make_shared<Flight>();
    flight->elevation =
        std::make_unique<ElevationImage>(flight->picture(), 1.0, 1.0, nullptr);
    flight->editor = std::make_unique<SetFlightPathProfileDialog>(
        nullptr, flight->elevation.get(), flight->points, flight->ways, flight->level,
        1.0, 1.0);
    return shared(flight);
}

void addDialogs(std::span<const DialogEntry> dialogs, std::vector<WindowCase> &windows)
{
    for (const DialogEntry &entry : dialogs)
        windows.push_back({entry.title, [&entry] {
                               return std::shared_ptr<QWidget>(entry.make(nullptr));
                           }});
}

std::vector<WindowCase> madeCases()
{
    std::vector<WindowCase> windows{
        {"main window", mainWindow},
        {"scenery", sceneryView},
        {"picture", made<ImageMdiChild>},
        {"new file", made<NewFileDialog>},
        {"settings", made<SettingsDialog>},
        {"about", made<AboutZephrantDialog>},
        {"libraries", made<LibrariesDialog>},
        {"open terrain", openTerrain},
        {"texture from elevation", made<TextureFromElevationDialog>},
        {"path from track", pathFromTrack},
        {"report", report},
        {"flight path from above", planEditor},
        {"flight path in profile", profileEditor},
        {"data of a DEM", demData},
    };
    addDialogs(importDialogs(), windows);
    addDialogs(toolDialogs(), windows);
    return windows;
}

} // namespace

const std::vector<WindowCase> &allWindows()
{
    static const std::vector<WindowCase> windows = madeCases();
    return windows;
}
