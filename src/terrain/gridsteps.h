#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Different values of a coordinate, in bounded memory: where there are too many, values
/// that are close to each other count as one.
class AxisValues {
public:
    AxisValues();

    void add(double value)
    {
        if (value != m_last || !m_hasAny)
            insert(value);
    }
    /// Sorted.
    [[nodiscard]] std::vector<double> sorted() const;
    /// By how much a value may differ from what stands for it.
    [[nodiscard]] double blur() const { return m_blur; }
    [[nodiscard]] double lowest() const { return m_lowest; }
    [[nodiscard]] double highest() const { return m_highest; }
    [[nodiscard]] bool isEmpty() const { return !m_hasAny; }

private:
    void insert(double value);
    void place(double value);
    void grow();
    void placeAnew(std::size_t size);
    void blurMore();
    [[nodiscard]] double blurred(double value) const;

    std::vector<double> m_slots; // open addressing; NaN is a free one
    std::size_t m_count = 0;
    double m_blur = 0.0;
    double m_last = 0.0;
    double m_lowest = 0.0;
    double m_highest = 0.0;
    bool m_hasAny = false;
};

/// Values at even steps.
struct AxisSteps {
    double first = 0.0;
    double step = 0.0;
    std::int64_t count = 0;

    /// The number of the step nearest to a value.
    [[nodiscard]] std::int64_t indexOf(double value) const
    {
        return std::int64_t((value - first) / step + 0.5);
    }
};

/// The even steps on which sorted values lie, some of which may be missing, and which
/// may be off by a tenth of a step for the rounding of their text. The widest that fit.
[[nodiscard]] std::optional<AxisSteps> evenSteps(const std::vector<double> &values,
                                                 double blur);
