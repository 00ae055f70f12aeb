#include "run/framescale.h"

#include "scene/scenerydata.h"

namespace {

constexpr double PreviewFactor = 0.5;

bool isHalved(const SceneryData &data) { return data.GenauRechnen == 2; }

} // namespace

FrameScale frameScale(const SceneryData &data, bool preview)
{
    FrameScale scale;
    scale.halved = isHalved(data) && !preview;
    scale.factor = preview ? PreviewFactor : scale.halved ? 2.0 : 1.0;
    scale.target = {static_cast<int>(data.AusBreite * scale.factor),
                    static_cast<int>(data.AusHoehe * scale.factor)};
    scale.file = preview ? scale.target : QSize(data.AusBreite, data.AusHoehe);
    return scale;
}

FrameScale frameScaleWithin(const SceneryData &data, QSize within)
{
    FrameScale scale;
    scale.halved = isHalved(data);
    scale.file = QSize(data.AusBreite, data.AusHoehe)
                     .scaled(within, Qt::KeepAspectRatio)
                     .expandedTo({1, 1});
    scale.target = scale.halved ? scale.file * 2 : scale.file;
    scale.factor = double(scale.target.width()) / data.AusBreite;
    return scale;
}

QImage halvedFrame(const QImage &frame)
{
    return frame.scaled(frame.width() / 2, frame.height() / 2, Qt::KeepAspectRatio,
                        Qt::SmoothTransformation);
}
