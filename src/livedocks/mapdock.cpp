#include "livedocks/mapdock.h"

#include "base/pi.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "flight/flight.h"
#include "livedocks/livesession.h"
#include "livedocks/mapview.h"
#include "raster/imagefile.h"
#include "scene/scenerydocument.h"
#include "views/backgroundwork.h"

#include <QEvent>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr int LongestSide = 1024; // of the picture of the ground
constexpr int MostPathPoints = 200;

QPolygonF pathOf(const SceneryDocument &document)
{
    QPolygonF path;
    if (!checkFlight(document))
        return path;
    const Flight flight(document, 1.0);
    const int last = std::max(document.parameters.Bildanzahl, 1) - 1;
    const int points = document.parameters.isStraight ? 2 : MostPathPoints;
    for (int k = 0; k < points; ++k) {
        const FrameCamera camera =
            flight.camera(static_cast<int>(qint64(last) * k / (points - 1)));
        path.append({camera.position.x, camera.position.y});
    }
    return path;
}

} // namespace

MapDock::MapDock(LiveSession &session, QWidget *parent)
    : QDockWidget(tr("Map"), parent), m_session(session), m_view(new MapView(this)),
      m_loading(new BackgroundWork(this))
{
    setObjectName(QStringLiteral("mapDock"));
    setWidget(m_view);
    connect(&session, &LiveSession::stateChanged, this, &MapDock::showContent);
    connect(&session, &LiveSession::cameraChanged, this, &MapDock::showContent);
    connect(m_view, &MapView::cameraDragged, &session, &LiveSession::flyTo);
}

bool MapDock::event(QEvent *event)
{
    if (event->type() == QEvent::Show)
        showContent();
    return QDockWidget::event(event);
}

// A world unit is a pixel of the texture; without a texture the elevations tell.
QSizeF MapDock::findWorld() const
{
    if (!m_session.scenery())
        return {};
    const SceneryDelegate &delegate = m_session.scenery()->delegate();
    const SceneryData shown = m_session.document().parameters;
    const QSize texture = QImageReader(delegate.inputFile(shown.TDateiname)).size();
    if (!texture.isEmpty())
        return texture;
    const QSize elevation = QImageReader(delegate.inputFile(shown.HDateiname)).size();
    return {elevation.width() * shown.HDateiSkalaX,
            elevation.height() * shown.HDateiSkalaY};
}

// What changes with the scenery alone: while the camera flies it is not made anew.
void MapDock::takeDocument()
{
    const SceneryDocument document = m_session.document();
    const QString folder =
        m_session.scenery() ? m_session.scenery()->delegate().folder() : QString();
    if (document == m_document && folder == m_folder && !m_content.world.isEmpty())
        return;
    m_document = document;
    m_folder = folder;
    m_content = {};
    m_content.world = findWorld();
    if (m_content.world.isEmpty())
        return;
    m_content.path = pathOf(document);
    if (!document.parameters.isStraight)
        for (const ControlPoint &point : document.controlPoints)
            m_content.points.append(QPointF(point.x, point.y));
}

void MapDock::takeCamera()
{
    const SceneryData &shown = m_document.parameters;
    const ViewCamera camera = m_session.present();
    m_content.camera = camera;
    const double focal = std::max(camera.focal, 0.01);
    m_content.halfAngle = std::atan(shown.AusBreite / 2.0 / focal) * 180 / Pi;
    // Over level ground at height 0, as far as the map at most.
    const double half = std::atan(shown.AusHoehe / 2.0 / focal);
    const double pitch = camera.pitch / 180 * Pi;
    const double most = std::hypot(m_content.world.width(), m_content.world.height());
    const auto reach = [&](double down) {
        if (down <= 0.0)
            return most;
        if (down >= Pi / 2)
            return 0.0;
        return std::clamp(camera.z / std::tan(down), 0.0, most);
    };
    m_content.nearest = reach(-pitch + half);
    m_content.farthest = reach(-pitch - half);
}

void MapDock::showContent()
{
    if (!isVisible())
        return;
    if (m_session.scenery())
        takeDocument();
    else
        m_content = {};
    if (!m_content.world.isEmpty())
        takeCamera();
    m_view->setContent(m_content);
    showGround();
}

void MapDock::showGround()
{
    QString file;
    if (m_session.scenery())
        file = m_session.scenery()->delegate().inputFile(
            m_session.document().parameters.TDateiname);
    const QDateTime time = QFileInfo(file).lastModified();
    // One that is on its way cannot be stopped; it is followed by the one that is wanted.
    if ((file == m_file && time == m_time) || m_loading->isOn())
        return;
    m_file = file;
    m_time = time;
    m_view->setGround({});
    const auto loaded = std::make_shared<QImage>();
    m_loading->begin(
        [file, loaded](Progress &) {
            const QImage whole = loadImageFile(file);
            if (!whole.isNull())
                *loaded =
                    whole.scaled(QSize(LongestSide, LongestSide).boundedTo(whole.size()),
                                 Qt::KeepAspectRatio, Qt::SmoothTransformation);
        },
        [this, loaded] {
            m_view->setGround(*loaded);
            showGround();
        });
}
