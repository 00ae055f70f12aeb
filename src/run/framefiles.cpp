#include "run/framefiles.h"

#include "scene/framename.h"
#include "scene/scenerydata.h"

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
