#pragma once

#include <vector>

/// Irregularity that is the same in every run: smooth noise of several sizes, the values
/// of a row of pixels at a time.
class SpeckleRows {
public:
    explicit SpeckleRows(int width);

    /// Wide patches, of 16 and 64 pixels, -1 to 1.
    void readPatches(int y, float *values);
    /// Fine grain, of 1 and 4 pixels, -1 to 1.
    void readGrain(int y, float *values);

private:
    void add(int y, int size, float weight, unsigned int seed, float *values);

    int m_width;
    std::vector<float> m_lattice; // the values of a row at the corners of the patches
};
