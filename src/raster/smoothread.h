#pragma once

#include <QRgb>

#include <cstdint>

/// The smooth read of TextureSampler in the processor's vectors: the same operations in
/// the same order, but those for the channels of a colour, and for the columns of a row
/// of texels, done side by side. The inner loop of pictures of high quality.
///
/// The colour at (fx, fy) between the inner texels of a 4-by-4 block; `weights` are the
/// 81 of the texture.
[[nodiscard, gnu::always_inline]] inline QRgb
smoothColour(const QRgb *block, double fx, double fy, const double *weights)
{
    using Four = double __attribute__((vector_size(4 * sizeof(double))));
    using FourInts = std::int32_t __attribute__((vector_size(4 * sizeof(std::int32_t))));
    using FourWords =
        std::uint32_t __attribute__((vector_size(4 * sizeof(std::uint32_t))));

    // Squared distances in tenths from the sample to the four columns and rows.
    const Four a = {fx + 1, fx, 1 - fx, (1 - fx) + 1};
    const Four b = {fy + 1, fy, 1 - fy, (1 - fy) + 1};
    const Four columns = a * 10.0 * a;
    const Four rows = b * 10.0 * b;
    Four sums = {}; // blue, green, red, and of the weights themselves
    for (int r = 0; r < 4; ++r) {
        const FourInts at = __builtin_convertvector(columns + rows[r], FourInts);
        for (int c = 0; c < 4; ++c) {
            const std::uint32_t texel = (block[r * 4 + c] & 0x00FFFFFFu) | 0x01000000u;
            const FourWords bytes =
                (FourWords{texel, texel, texel, texel} >> FourWords{0, 8, 16, 24}) & 255u;
            sums += weights[at[c]] *
                    __builtin_convertvector(__builtin_bit_cast(FourInts, bytes), Four);
        }
    }
    const double total = sums[3] + 1e-08;
    const auto byteOf = [](double v) {
        return v <= 255.0 ? static_cast<std::uint32_t>(v) : 255u;
    };
    return 0xFF000000u | byteOf(sums[2] / total) << 16 | byteOf(sums[1] / total) << 8 |
           byteOf(sums[0] / total);
}
