#pragma once

#include <QRgb>

#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

/// A height and the colour that it has.
struct ColourStop {
    double metres = 0.0;  ///< or, of a share, 0 at the lowest height and 1 at the highest
    bool isShare = false; ///< of the range of the heights
    std::array<int, 3> rgb{};

    bool operator==(const ColourStop &) const = default;
};

/// The colours of a file, before the heights are known that they are for.
struct ColourTable {
    std::vector<ColourStop> stops; ///< in the order of the file
    std::optional<QRgb> ofVoids;
};

/// Colours of heights: straight lines between stops, the nearest stop beyond them.
///
/// The colours are those of `gdaldem color-relief`: where stops stand at one height, the
/// first ends what lies below, the last begins what lies above, and the height itself has
/// a colour between the two or one of them.
class ColourRamp {
public:
    /// Shares become heights of the range. The table needs at least one stop.
    ColourRamp(const ColourTable &table, std::pair<double, double> range);

    /// The colour of a height. `near` is the place of the stop that the last call found,
    /// 0 at first: neighbours have heights much alike.
    [[nodiscard]] QRgb at(double metres, std::size_t &near) const;
    /// Of cells without a height: the table's colour for them, or that of the lowest.
    [[nodiscard]] QRgb ofVoids() const { return m_ofVoids; }

private:
    [[nodiscard]] bool isUpperStop(std::size_t i, double metres) const;

    std::vector<ColourStop> m_stops; // by height
    QRgb m_ofVoids;
};
