#pragma once

#include "render/meshrow.h"

#include <memory>
#include <mutex>
#include <vector>

/// Gives out rows of points, to several threads. A row that nobody holds any more is
/// given out again, since fresh memory costs more than what is computed into it.
class PointRowStore {
public:
    [[nodiscard]] std::shared_ptr<PointRow> take(int points)
    {
        const std::lock_guard lock(m_mutex);
        if (m_free.empty()) {
            m_all.push_back(std::make_shared<PointRow>(points));
            return m_all.back();
        }
        std::shared_ptr<PointRow> row = std::move(m_free.back());
        m_free.pop_back();
        row->resize(points);
        return row;
    }

    /// Looks which rows are held by nobody. No other thread may hold or drop one
    /// meanwhile.
    void reclaim()
    {
        m_free.clear();
        for (const std::shared_ptr<PointRow> &row : m_all)
            if (row.use_count() == 1)
                m_free.push_back(row);
    }

private:
    std::mutex m_mutex;
    std::vector<std::shared_ptr<PointRow>> m_all, m_free;
};
