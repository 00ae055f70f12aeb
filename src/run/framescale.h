#pragma once

#include <QImage>
#include <QSize>

struct SceneryData;

/// In which size the frames of a scenery are drawn and written.
struct FrameScale {
    QSize target; ///< drawn
    QSize file;   ///< written
    /// Width of the target in terms of the width that the scenery asks for: focal lengths
    /// grow with it.
    double factor = 1.0;
    bool halved = false; ///< drawn at twice the size, so that edges are smooth
};

/// The size that a scenery asks for, or half of that for a preview.
[[nodiscard]] FrameScale frameScale(const SceneryData &data, bool preview);
/// The largest frame of the scenery's shape that fits into `within`, which is not empty.
[[nodiscard]] FrameScale frameScaleWithin(const SceneryData &data, QSize within);
/// A frame brought to half its size.
[[nodiscard]] QImage halvedFrame(const QImage &frame);
