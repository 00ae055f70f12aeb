#pragma once

#include "base/progress.h"

/// Asks to stop at the nth question, counted from 0, and ever after.
class StopsAt final : public Progress {
public:
    explicit StopsAt(int question) : m_left(question) {}
    [[nodiscard]] bool step(qint64, qint64) override { return m_left-- > 0; }
    /// That the question came: how many there are is left to how long the work takes.
    [[nodiscard]] bool wasAsked() const { return m_left < 0; }

private:
    int m_left;
};
