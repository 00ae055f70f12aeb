#pragma once

#include "render/meshrow.h"

#include <deque>
#include <memory>

/// Gives out rows of points. A row that nobody holds any more is given out again, since
/// fresh memory costs more than what is computed into it.
class PointRowStore {
public:
    [[nodiscard]] std::shared_ptr<PointRow> take(int points)
    {
        std::shared_ptr<PointRow> row;
        if (!m_rows.empty() && m_rows.front().use_count() == 1) {
            row = std::move(m_rows.front());
            m_rows.pop_front();
            row->resize(points);
        } else {
            row = std::make_shared<PointRow>(points);
        }
        m_rows.push_back(row);
        return row;
    }

private:
    std::deque<std::shared_ptr<PointRow>> m_rows; // those that were taken last at the end
};
