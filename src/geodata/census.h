#pragma once

#include "geodata/mosaic.h"
#include "terrain/terrainsource.h"

#include <array>

/// What a look at the cells of a sheet, or at a sample of them, tells.
class Census {
public:
    /// `sheet` tells what its numbers mean.
    explicit Census(const RasterFile &raster);

    void add(const float *metres, std::size_t count);
    void add(const Census &other);
    /// The stored value that stands for a void without the file's telling, if there is
    /// one: a value that many programs write, a thousand or more below all others. It
    /// counts as a void from now on.
    [[nodiscard]] std::optional<double> takeUntoldVoid();
    /// Lowest and highest height; nothing where all cells are void.
    [[nodiscard]] std::optional<std::pair<double, double>> range() const;
    [[nodiscard]] qint64 voids() const { return m_voids; }
    [[nodiscard]] qint64 cells() const { return m_cells; }

    static constexpr int Habits = 6;

private:
    void addSlowly(const float *metres, std::size_t count);

    std::array<float, Habits> m_metres{}; // of the values that stand for voids by habit
    std::array<qint64, Habits> m_seen{};
    float m_highestHabit;
    float m_lowest; // of all others
    float m_highest;
    qint64 m_voids = 0;
    qint64 m_cells = 0;
};

/// Exact for sheets of up to `most` cells; of larger ones parts spread over them.
[[nodiscard]] Result<Census> takeCensus(const Sheet &sheet, qint64 most,
                                        Progress &progress);

/// Whether a raster may have voids that it does not tell of.
[[nodiscard]] bool mayHideVoids(const RasterFile &raster);
