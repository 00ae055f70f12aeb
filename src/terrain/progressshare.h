#pragma once

#include "base/progress.h"

/// A part of some work as work of its own: its steps are those from `first` to `last` of
/// `of` of the whole.
class ProgressShare final : public Progress {
public:
    ProgressShare(Progress &whole, qint64 first, qint64 last, qint64 of)
        : m_whole(whole), m_first(first), m_last(last), m_of(of)
    {
    }
    [[nodiscard]] bool step(qint64 done, qint64 of) override
    {
        const double share = of > 0 ? double(done) / double(of) : 0.0;
        const double at = double(m_first) + share * double(m_last - m_first);
        return m_whole.step(qint64(at), m_of);
    }

private:
    Progress &m_whole;
    qint64 m_first;
    qint64 m_last;
    qint64 m_of;
};
