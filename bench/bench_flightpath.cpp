// The repaint of the flight path editors during a drag: 20 control points and 193
// waypoints over a texture of 1024 by 1024 pixels, and 200 control points with 7 and
// 193 waypoints over one of 4096 by 4096. It should take less than 16 ms.
//
// QT_SCALE_FACTOR=2 tells the figures of a screen whose pixels are half as large,
// QT_QPA_PLATFORM=xcb those of a real window.
#include "flight/flightplan.h"
#include "flight/pathcurve.h"
#include "patheditors/setflightpathdialog.h"
#include "patheditors/setflightpathprofiledialog.h"
#include "raster/elevationimage.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr int Side = 1024;
constexpr int LargeSide = 4096;
constexpr int Points = 20;
constexpr int ManyPoints = 200;
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

ControlPoint pointOfLarge(double x, double y, int i)
{
    return {LargeSide / 2 + static_cast<qint32>(x),
            LargeSide / 2 + static_cast<qint32>(y), 100 + i % 70, 0.0};
}

QList<ControlPoint> largeSpiral()
{
    QList<ControlPoint> points;
    for (int i = 0; i < ManyPoints; ++i) {
        const double radius = 300.0 + 8.0 * i;
        points.append(
            pointOfLarge(radius * std::sin(0.09 * i), radius * std::cos(0.09 * i), i));
    }
    return points;
}

// Long segments that cross each other all over the texture.
QList<ControlPoint> largeZigzag()
{
    QList<ControlPoint> points;
    for (int i = 0; i < ManyPoints; ++i)
        points.append(pointOfLarge(1900.0 * std::sin(0.37 * i) * std::cos(0.011 * i),
                                   1900.0 * std::cos(0.29 * i), i));
    return points;
}

// Both editors, with a window that shows the whole texture or the usual part of it.
struct Editors {
    explicit Editors(const QSize &size, QList<ControlPoint> net = spiral(),
                     int side = Side, int listed = Level)
        : points(std::move(net)), level(listed)
    {
        QImage texture(side, side, QImage::Format_RGB32);
        texture.fill(QColor(100, 140, 90));
        texture.save(folder.filePath("texture.png"));
        ElevationImage elevation(side, side, QImage::Format_RGB32);
        elevation.fill(QColor(0, 0, 50));
        elevation.save(folder.filePath("elevation.png"));
        ways = QList<Waypoint>(waypointCount(level));
        plan = std::make_unique<SetFlightPathDialog>(
            points, ways, level, 1.0, 1.0, folder.filePath("texture.png"),
            folder.filePath("elevation.png"), 1.0, 1.0);
        plan->resize(size);
        plan->show();
        plan->profile()->resize(size);
        QApplication::processEvents();
    }

    QTemporaryDir folder;
    QList<ControlPoint> points;
    QList<Waypoint> ways;
    int level;
    std::unique_ptr<SetFlightPathDialog> plan;
};

const QSize Sizes[] = {{600, 400}, {115 + Side, Side}};

// The steps of a drag over the plan: the move of a point and the repaint that follows.
void dragOver(benchmark::State &state, const Editors &editors, int point)
{
    auto *picture = editors.plan->findChild<QLabel *>("labelImage");
    const ControlPoint start = editors.points.at(point);
    int step = 0;
    for (auto _ : state) {
        const QPointF at(start.x + step % 5, picture->height() - 1 - start.y);
        QMouseEvent move(QEvent::MouseMove, at, picture->mapToGlobal(at), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(picture, &move);
        picture->repaint();
        ++step;
    }
}

void planDrag(benchmark::State &state)
{
    const Editors editors(Sizes[state.range(0)]);
    dragOver(state, editors, 3);
}
BENCHMARK(planDrag)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Arguments: spiral or zigzag, level of the waypoints. The window is one of 1600 by
// 1000, scrolled to the point in hand.
void largePlanDrag(benchmark::State &state)
{
    const Editors editors({1600, 1000},
                          state.range(0) == 0 ? largeSpiral() : largeZigzag(), LargeSide,
                          static_cast<int>(state.range(1)));
    const ControlPoint &start = editors.points.first();
    editors.plan->findChild<QScrollArea *>()->ensureVisible(
        start.x, LargeSide - 1 - start.y, 300, 300);
    dragOver(state, editors, 0);
}
BENCHMARK(largePlanDrag)
    ->ArgsProduct({{0, 1}, {0, Level}})
    ->ArgNames({"zigzag", "level"})
    ->Unit(benchmark::kMillisecond);

void profileRepaint(benchmark::State &state)
{
    Editors editors(Sizes[state.range(0)]);
    for (auto _ : state)
        editors.plan->profile()->repaint();
}
BENCHMARK(profileRepaint)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void largeProfileRepaint(benchmark::State &state)
{
    const Editors editors({1600, 1000},
                          state.range(0) == 0 ? largeSpiral() : largeZigzag(), LargeSide,
                          static_cast<int>(state.range(1)));
    for (auto _ : state)
        editors.plan->profile()->repaint();
}
BENCHMARK(largeProfileRepaint)
    ->ArgsProduct({{0, 1}, {0, Level}})
    ->ArgNames({"zigzag", "level"})
    ->Unit(benchmark::kMillisecond);

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
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Q_INIT_RESOURCE(Zephrant);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
