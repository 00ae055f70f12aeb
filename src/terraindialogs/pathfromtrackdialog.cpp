#include "terraindialogs/pathfromtrackdialog.h"

#include "terrain/sceneryworld.h"
#include "terrain/trackpath.h"

#include <QDir>
#include <QFileDialog>

#include <utility>

namespace {

using Found = std::pair<SceneryDocument, QStringList>;

/// The whole of the work: ground, track, path.
Result<Found> pathOf(SceneryDocument scenery, const QString &folder, const QString &file,
                     const TrackPathOptions &options, TerrainSource &source,
                     Progress &progress)
{
    const Result<SceneryGround> ground = loadGround(scenery, folder);
    if (!ground)
        return tl::unexpected(ground.error());
    const Result<SceneryWorld> world = SceneryWorld::of(scenery, *ground);
    if (!world)
        return tl::unexpected(world.error());
    const Result<Track> track = source.track(file, world->crs(), progress);
    if (!track)
        return tl::unexpected(track.error());
    const Result<TrackPath> path = pathAlong(*track, scenery, *ground, options, progress);
    if (!path)
        return tl::unexpected(path.error());
    flyAlong(scenery, *path);
    QStringList told{
        PathFromTrackDialog::tr("%1 control points, the path is at most %2 m off the "
                                "track")
            .arg(path->controlPoints.size())
            .arg(path->greatestDistance, 0, 'f', 1)};
    return Found{scenery, told + path->notes};
}

} // namespace

PathFromTrackDialog::PathFromTrackDialog(SceneryDocument scenery, QString folder,
                                         TerrainSourceMaker make, QWidget *parent)
    : TerrainJobDialog(std::move(make), parent), m_scenery(std::move(scenery)),
      m_folder(std::move(folder))
{
    setupUi(this);
    connect(lineEditTrack, &QLineEdit::textChanged, this,
            &PathFromTrackDialog::enableFields);
    connect(pushButtonBrowseTrack, &QPushButton::clicked, this,
            &PathFromTrackDialog::browse);
    connect(&jobs(), &TerrainJobs::failed, this, [this](const QString &reason) {
        if (isWorking())
            endWork(reason);
    });
    setUpForm();
    enableFields();
}

void PathFromTrackDialog::setTrack(const QString &file)
{
    lineEditTrack->setText(QDir::toNativeSeparators(file));
}

void PathFromTrackDialog::browse()
{
    const QString name = QFileDialog::getOpenFileName(
        this, tr("Open File"), lineEditTrack->text(),
        tr("Tracks (*.gpx *.kml *.kmz *.geojson *.json *.shp *.csv);;All Files (*)"));
    if (!name.isEmpty())
        setTrack(name);
}

void PathFromTrackDialog::enableFields()
{
    for (QWidget *const field :
         QList<QWidget *>{lineEditTrack, pushButtonBrowseTrack, spinBoxTrackPoints,
                          comboBoxHeight, doubleSpinBoxTrackClearance})
        field->setEnabled(!isWorking());
    pushButtonOK->setEnabled(!isWorking() && !lineEditTrack->text().trimmed().isEmpty());
}

void PathFromTrackDialog::accept()
{
    if (!pushButtonOK->isEnabled())
        return;
    TrackPathOptions options;
    options.points = spinBoxTrackPoints->value();
    options.heights = PathHeights(comboBoxHeight->currentIndex());
    if (doubleSpinBoxTrackClearance->value() > 0.0)
        options.clearance = doubleSpinBoxTrackClearance->value();
    const QString file = QDir::fromNativeSeparators(lineEditTrack->text().trimmed());
    startWork();
    jobs().run([this, options, file](TerrainSource &source, Progress &progress) {
        const Result<Found> found =
            pathOf(m_scenery, m_folder, file, options, source, progress);
        QMetaObject::invokeMethod(this, [this, found] { finish(found); });
    });
}

void PathFromTrackDialog::finish(const Result<Found> &found)
{
    if (!found)
        return endWork(found.error().text);
    endWork();
    emit pathFound(found->first, found->second);
    QDialog::accept();
}
