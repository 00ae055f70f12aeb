// The repaint of the flight path editors during a drag: 20 control points and 193
// waypoints over a texture of 1024 by 1024 pixels. It should take less than 16 ms.
#include "flightpath/flightplan.h"
#include "flightpath/pathcurve.h"
#include "flightpath/setflightpathdialog.h"
#include "flightpath/setflightpathprofiledialog.h"
#include "raster/elevationimage.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr int Side = 1024;
constexpr int Points = 20;
constexpr int Level = 5;

QList<ControlPoint> spiral()
{
    QList<ControlPoint> points;
    for (int i = 0; i < Points; ++i) {
        const double angle = 0.8 * i;
        const double radius = 60.0 + 20.0 * i;
        points.append({static_cast<qint32>(Side / 2 + radius * std::cos(angle)),
                       static_cast<qint32>(Side / 2 + radius * std::sin(angle)),
                       150 + 10 * (i % 5), 0.0});
    }
    return points;
}

// Both editors, with a window that shows the whole texture or the usual part of it.
struct Editors {
    explicit Editors(const QSize &size)
    {
        QImage texture(Side, Side, QImage::Format_RGB32);
        texture.fill(QColor(100, 140, 90));
        texture.save(folder.filePath("texture.png"));
        ElevationImage elevation(Side, Side, QImage::Format_RGB32);
        elevation.fill(QColor(0, 0, 50));
        elevation.save(folder.filePath("elevation.png"));
        ways = QList<Waypoint>(waypointCount(Level));
        plan = std::make_unique<SetFlightPathDialog>(
            points, ways, level, 1.0, 1.0, folder.filePath("texture.png"),
            folder.filePath("elevation.png"), 1.0, 1.0);
        plan->resize(size);
        plan->show();
        plan->profile()->resize(size);
        QApplication::processEvents();
    }

    QTemporaryDir folder;
    QList<ControlPoint> points = spiral();
    QList<Waypoint> ways;
    int level = Level;
    std::unique_ptr<SetFlightPathDialog> plan;
};

const QSize Sizes[] = {{600, 400}, {115 + Side, Side}};

// One step of a drag over the plan: the move of a point and the repaint that follows.
void planDrag(benchmark::State &state)
{
    Editors editors(Sizes[state.range(0)]);
    auto *picture = editors.plan->findChild<QLabel *>("labelImage");
    const ControlPoint start = editors.points.at(3);
    int step = 0;
    for (auto _ : state) {
        const QPointF at(start.x + step % 5, Side - 1 - start.y);
        QMouseEvent move(QEvent::MouseMove, at, picture->mapToGlobal(at), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(picture, &move);
        picture->repaint();
        ++step;
    }
}
BENCHMARK(planDrag)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void profileRepaint(benchmark::State &state)
{
    Editors editors(Sizes[state.range(0)]);
    for (auto _ : state)
        editors.plan->profile()->repaint();
}
BENCHMARK(profileRepaint)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void curveAlone(benchmark::State &state)
{
    const QList<ControlPoint> points = spiral();
    for (auto _ : state)
        benchmark::DoNotOptimize(sampleCurve(planNet(points), Level));
}
BENCHMARK(curveAlone)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Q_INIT_RESOURCE(Zephrant);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
