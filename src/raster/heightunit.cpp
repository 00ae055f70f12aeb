#include "raster/heightunit.h"

#include <QFile>
#include <QXmlStreamReader>

#include <cmath>

std::optional<double> metresPerHeightUnit(const QString &pictureFile)
{
    constexpr qint64 LargestSidecar = qint64(4) << 20;
    QFile file(pictureFile + QStringLiteral(".aux.xml"));
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestSidecar)
        return {};
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() || xml.name() != QLatin1String("MDI") ||
            xml.attributes().value(QLatin1String("key")) !=
                QLatin1String("MetresPerHeightUnit"))
            continue;
        bool good = false;
        const double metres = xml.readElementText().trimmed().toDouble(&good);
        if (good && metres > 0 && std::isfinite(metres))
            return metres;
        return {};
    }
    return {};
}
