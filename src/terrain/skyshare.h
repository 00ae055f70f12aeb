#pragma once

#include <vector>

class WorkerPool;
struct Ground;
struct Stretch;

/// The share of the sky that each cell sees, each direction counting by its cosine to the
/// ground's normal: open flat ground 1, an open slope (1 + cos) / 2. False if it was
/// stopped.
[[nodiscard]] bool skyShare(const Ground &ground, std::vector<float> &share,
                            WorkerPool &pool, const Stretch &stretch);
