#pragma once

#include <string_view>

/// What the name of a column says of it.
enum class PointColumn { Unknown, X, Y, Longitude, Latitude, Height };

/// The meaning of a column's name in one of the languages of Europe, such as "Easting",
/// "Rechtswert", "lon", "Latitude (deg)", "point_x", "Höhe [m]"; UTF-8.
[[nodiscard]] PointColumn meaningOfName(std::string_view name);
