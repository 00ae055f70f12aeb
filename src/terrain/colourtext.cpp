// The colour texts of gdaldem, and which reader a file of colours is for.

#include "terrain/colourfile.h"
#include "terrain/colourlines.h"
#include "terrain/filekind.h"

#include <QCoreApplication>
#include <QFile>

namespace {

using Rgb = std::array<int, 3>;

struct NamedColour {
    const char *name;
    Rgb rgb;
};

// The names that gdaldem knows, with its values.
constexpr std::array<NamedColour, 16> NamedColours{{
    {"white", {255, 255, 255}},
    {"black", {0, 0, 0}},
    {"red", {255, 0, 0}},
    {"green", {0, 255, 0}},
    {"blue", {0, 0, 255}},
    {"yellow", {255, 255, 0}},
    {"magenta", {255, 0, 255}},
    {"cyan", {0, 255, 255}},
    {"aqua", {0, 191, 191}},
    {"grey", {191, 191, 191}},
    {"gray", {191, 191, 191}},
    {"orange", {255, 127, 0}},
    {"brown", {191, 127, 63}},
    {"purple", {127, 0, 255}},
    {"violet", {127, 0, 255}},
    {"indigo", {0, 127, 255}},
}};

std::optional<Rgb> namedColour(const QByteArray &name)
{
    for (const NamedColour &colour : NamedColours)
        if (!name.isEmpty() && name.compare(colour.name, Qt::CaseInsensitive) == 0)
            return colour.rgb;
    return std::nullopt;
}

std::optional<Rgb> colourOf(const QByteArrayList &parts)
{
    return parts.size() >= 4 ? channelsOf(parts, 1) : namedColour(parts.value(1));
}

// A height or a share of the range; nothing where it is neither.
std::optional<ColourStop> heightOf(QByteArray text)
{
    ColourStop stop;
    stop.isShare = text.size() > 1 && text.endsWith('%');
    if (stop.isShare)
        text.chop(1);
    const std::optional<double> number = numberOf(text);
    if (!number || (stop.isShare && (*number < 0.0 || *number > 100.0)))
        return std::nullopt;
    stop.metres = stop.isShare ? *number / 100.0 : *number;
    return stop;
}

// Maps of colours that other programs write have a line on how colours run between.
bool isSkipped(const QByteArrayList &parts)
{
    return parts.size() < 2 || parts[0].startsWith('#') || parts[0].startsWith('/') ||
           parts[0].compare("INTERPOLATION", Qt::CaseInsensitive) == 0;
}

bool tellsColourModel(QFile &file)
{
    const QByteArray head = file.peek(4096);
    return head.contains("COLOR_MODEL");
}

Result<ColourTable> readOpen(QFile &file)
{
    const QString name = file.fileName();
    const bool isCpt = name.endsWith(QLatin1String(".cpt"), Qt::CaseInsensitive) ||
                       tellsColourModel(file);
    Result<ColourTable> table = isCpt ? readCpt(file, name) : readColourText(file, name);
    if (file.error() != QFileDevice::NoError)
        return failed(QCoreApplication::translate("Terrain", "Cannot read \"%1\": %2.")
                          .arg(name, file.errorString()));
    if (table && table->stops.empty())
        return failed(
            QCoreApplication::translate("Terrain", "\"%1\" holds no colours.").arg(name));
    return table;
}

} // namespace

Result<ColourTable> readColourText(QIODevice &device, const QString &name)
{
    ColourTable table;
    ColourLines lines(device, name);
    while (const std::optional<QByteArray> line = lines.next()) {
        const QByteArrayList parts = partsOf(*line, " ,\t:");
        if (isSkipped(parts))
            continue;
        const std::optional<Rgb> rgb = colourOf(parts);
        if (!rgb)
            return lines.noColour(parts.mid(1).join(' '));
        if (parts[0].compare("nv", Qt::CaseInsensitive) == 0) {
            table.ofVoids = qRgb((*rgb)[0], (*rgb)[1], (*rgb)[2]);
            continue;
        }
        std::optional<ColourStop> stop = heightOf(parts[0]);
        if (!stop)
            return lines.noHeight(parts[0]);
        stop->rgb = *rgb;
        table.stops.push_back(*stop);
    }
    const Result<void> ended = lines.ended();
    if (!ended)
        return tl::unexpected(ended.error());
    return table;
}

Result<ColourTable> readColourFile(const QString &fileName)
{
    if (const QString other = notAFileText(fileName); !other.isEmpty())
        return failed(other);
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return failed(QCoreApplication::translate("Terrain", "Cannot read \"%1\": %2.")
                          .arg(fileName, file.errorString()));
    return readOpen(file);
}
