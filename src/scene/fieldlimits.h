#pragma once

#include "scene/scenerydata.h"

#include <span>

/// What the field of a real parameter holds and shows.
struct RealLimits {
    double SceneryData::*field;
    double lowest;
    double highest;
    int decimals = 2;
    bool isLogarithm = false; ///< shows the logarithm to the base of 10
};

/// What the field of a whole parameter holds.
struct WholeLimits {
    qint32 SceneryData::*field;
    int lowest;
    int highest;
};

/// Characters that the field of a text holds.
constexpr int MaxFieldText = 32767;

/// Everything that the form shows as a number. Other parameters have no limits.
[[nodiscard]] std::span<const RealLimits> realLimits();
[[nodiscard]] std::span<const WholeLimits> wholeLimits();

/// What is put into the field of a parameter, and what is taken from it, before and after
/// the field rounds to its decimals and holds its range.
[[nodiscard]] double fieldValue(const RealLimits &limits, double parameter);
[[nodiscard]] double parameterValue(const RealLimits &limits, double field);
/// The parameter itself where it can be shown; what stands for it where it cannot.
[[nodiscard]] double showableValue(const RealLimits &limits, double parameter);

/// The parameters as the form gives them back that shows these.
[[nodiscard]] SceneryData asShown(SceneryData data);
