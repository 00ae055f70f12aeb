#pragma once

#include "base/progress.h"

/// Lets so many steps of a work pass and then asks it to stop.
class Patience final : public Progress {
public:
    explicit Patience(qint64 steps) : m_steps(steps) {}
    [[nodiscard]] bool step(qint64 done, qint64) override { return done < m_steps; }

private:
    qint64 m_steps;
};
