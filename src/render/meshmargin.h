#pragma once

/// Keeps the mesh limit tests off the cell edges.
constexpr double MeshMargin = 1e-05;
