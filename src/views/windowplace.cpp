#include "views/windowplace.h"

#include <QGuiApplication>
#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <limits>

namespace {

// About what any desktop puts around a window; before the window is shown its own frame
// is not known.
constexpr int TitleHeight = 24;
constexpr int BorderWidth = 4;
constexpr int Farthest = 1000000; // from there on the distance tells nothing more

// From a rectangle to another along both axes; 0 where they touch or overlap.
qint64 distance(const QRect &a, const QRect &b)
{
    const auto gap = [](qint64 low1, qint64 high1, qint64 low2, qint64 high2) {
        return std::max<qint64>({low2 - high1, low1 - high2, 0});
    };
    return gap(a.left(), a.right(), b.left(), b.right()) +
           gap(a.top(), a.bottom(), b.top(), b.bottom());
}

// One coordinate of a window: inside if it fits, else with its beginning inside.
int inside(int place, int length, int low, int room)
{
    return std::clamp(place, low, low + std::max(room - length, 0));
}

} // namespace

QPoint reachablePlace(const QPoint &place, const QSize &size)
{
    const QPoint stored(std::clamp(place.x(), -Farthest, Farthest),
                        std::clamp(place.y(), -Farthest, Farthest));
    const QSize framed(std::max(size.width(), 0) + 2 * BorderWidth,
                       std::max(size.height(), 0) + TitleHeight + BorderWidth);
    const QRect title(stored, QSize(framed.width(), TitleHeight));
    QRect nearest;
    qint64 least = std::numeric_limits<qint64>::max();
    const auto screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        const QRect area = screen->availableGeometry();
        if (area.intersects(title))
            return place;
        if (const qint64 far = distance(title, area); far < least) {
            least = far;
            nearest = area;
        }
    }
    if (nearest.isEmpty())
        return place;
    return {inside(stored.x(), framed.width(), nearest.left(), nearest.width()),
            inside(stored.y(), framed.height(), nearest.top(), nearest.height())};
}

void placeWindow(QWidget *window, const QPoint &place, const QSize &size)
{
    window->resize(size);
    window->move(reachablePlace(place, window->size()));
}
