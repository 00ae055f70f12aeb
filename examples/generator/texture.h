#pragma once

#include <QImage>

struct HeightField;

/// Height below which the lake of a terrain stands.
constexpr double LakeLevel = 0.11;

/// A picture of the ground for a terrain: water, meadows, woods, rock and snow by
/// height, steepness and chance. Not lit: the renderer brings the light.
[[nodiscard]] QImage paintGround(const HeightField &terrain, int side, double relief);
