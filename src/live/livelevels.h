#pragma once

#include <QSize>

#include <span>

/// How much of a picture is drawn while things move: shares of the sides of the full
/// picture and of the full mesh.
struct LiveLevel {
    double size = 1.0;
    double mesh = 1.0;

    bool operator==(const LiveLevel &) const = default;
};

/// Chooses how fine pictures may be by what the last ones took, on whatever machine.
class LiveLevels {
public:
    /// Coarse to fine; the last one is the full picture.
    [[nodiscard]] static std::span<const LiveLevel> all();

    /// What a picture of a level asks for: its pixels and the cells of its mesh.
    [[nodiscard]] static double work(const LiveLevel &level, QSize full, QSize mesh);
    /// A picture of so much work took so many seconds.
    void took(double work, double seconds);
    /// The finest level that takes no more than so many seconds, about; the coarsest
    /// where none does or nothing is known yet.
    [[nodiscard]] const LiveLevel &within(double seconds, QSize full, QSize mesh) const;
    /// What a picture of so much work takes, about; 0 where nothing is known yet.
    [[nodiscard]] double secondsFor(double work) const { return m_secondsAWork * work; }

private:
    double m_secondsAWork = 0.0;
};
