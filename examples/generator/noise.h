#pragma once

/// Smooth gradient noise of the plane, about -1 to 1, the same on every machine.
[[nodiscard]] double gradientNoise(double x, double y, unsigned seed);

/// Sum of octaves of gradientNoise, each of double frequency and half weight.
[[nodiscard]] double fractalNoise(double x, double y, int octaves, unsigned seed);

/// Ridged fractal: sharp crests at 1, broad valleys at 0; finer octaves live on
/// the crests alone, so that valleys stay smooth.
[[nodiscard]] double ridgedNoise(double x, double y, int octaves, unsigned seed);
