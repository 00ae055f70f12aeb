#pragma once

#include <QSize>

struct SceneryData;

/// Which of the two cameras of a straight flight.
enum class FlightEnd { First, Last };

/// Sets a camera south of a terrain, in its middle, that looks north and down, as one
/// reads a book. `texture` is the size of the texture, which is that of the world.
void setStandardCamera(SceneryData &data, const QSize &texture, FlightEnd end);
