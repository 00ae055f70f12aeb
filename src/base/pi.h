#pragma once

/// The ratio of a circle's circumference to its diameter, as all angles are told with.
inline constexpr double Pi = 3.141592653589793;
