#include "run/framefiles.h"

#include "scene/framename.h"
#include "scene/scenerydata.h"

namespace {

constexpr double PreviewFactor = 0.5;

} // namespace

int frameNumber(const SceneryData &data, int frame)
{
    return static_cast<int>(static_cast<unsigned int>(frame) +
                            static_cast<unsigned int>(data.Offset));
}

QString frameTitle(const SceneryData &data, int number)
{
    return formatFrameName(data.AusDateiname, number);
}

QStringList frameFiles(const SceneryData &data, int number)
{
    QStringList names;
    const auto add = [&](bool wanted, const char *extension) {
        if (wanted)
            names.append(
                formatFrameName(data.AusDateiname + QLatin1String(extension), number));
    };
    add(data.AusgabeTGA, ".tga");
    add(data.AusgabePNG, ".png");
    add(data.AusgabeJPG, ".jpg");
    add(data.AusgabePPM, ".ppm");
    return names;
}

QSize frameFileSize(const SceneryData &data, bool preview)
{
    const auto side = [preview](int wanted) {
        return preview ? static_cast<int>(wanted * PreviewFactor) : wanted;
    };
    return {side(data.AusBreite), side(data.AusHoehe)};
}

bool isFrameHalved(const SceneryData &data, bool preview)
{
    return data.GenauRechnen == 2 && !preview;
}

double frameFactor(const SceneryData &data, bool preview)
{
    return preview ? PreviewFactor : data.GenauRechnen == 2 ? 2.0 : 1.0;
}
