#include "geodata/coverage.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<int> sortedOnce(std::vector<int> values)
{
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

int indexOf(const std::vector<int> &values, int value)
{
    return static_cast<int>(std::lower_bound(values.begin(), values.end(), value) -
                            values.begin());
}

} // namespace

Coverage coverageOf(const QList<QRect> &rectangles, const QSize &grid)
{
    std::vector<int> xs{0, grid.width()};
    std::vector<int> ys{0, grid.height()};
    for (const QRect &r : rectangles) {
        xs.insert(xs.end(), {r.left(), r.left() + r.width()});
        ys.insert(ys.end(), {r.top(), r.top() + r.height()});
    }
    xs = sortedOnce(std::move(xs));
    ys = sortedOnce(std::move(ys));
    std::vector<std::vector<const QRect *>> begins(ys.size());
    std::vector<std::vector<const QRect *>> ends(ys.size());
    for (const QRect &r : rectangles) {
        begins[indexOf(ys, r.top())].push_back(&r);
        ends[indexOf(ys, r.top() + r.height())].push_back(&r);
    }
    // How many rectangles lie on each column of the strip in hand.
    std::vector<int> lying(xs.size(), 0);
    const auto add = [&](const QRect &r, int by) {
        const int until = indexOf(xs, r.left() + r.width());
        for (int i = indexOf(xs, r.left()); i < until; ++i)
            lying[i] += by;
    };
    Coverage found;
    for (std::size_t y = 0; y + 1 < ys.size(); ++y) {
        for (const QRect *r : ends[y])
            add(*r, -1);
        for (const QRect *r : begins[y])
            add(*r, 1);
        qint64 over = 0;
        qint64 none = 0;
        for (std::size_t x = 0; x + 1 < xs.size(); ++x) {
            const qint64 width = xs[x + 1] - xs[x];
            over += lying[x] > 1 ? width : 0;
            none += lying[x] == 0 ? width : 0;
        }
        found.overlaps += over * (ys[y + 1] - ys[y]);
        found.gaps += none * (ys[y + 1] - ys[y]);
    }
    return found;
}
