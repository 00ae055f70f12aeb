// Palettes of the Generic Mapping Tools, as their manual describes them.

#include "terrain/colourfile.h"
#include "terrain/colourlines.h"

#include <QColor>
#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// Three numbers of the palette's colour model: bytes, or hue (degrees), saturation and
// value (0 to 1).
using Colour = std::array<double, 3>;

enum class Model { Rgb, Hsv, Cmyk };

// Pieces of a line through another colour space; each is then straight in bytes.
constexpr int PiecesOfHue = 32;

struct Head {
    Model model = Model::Rgb;
    std::optional<std::pair<double, double>> range;
    double hinge = 0.0;
    bool hasHinge = false;
};

std::optional<double> within(const QByteArray &text, double highest)
{
    const std::optional<double> number = numberOf(text);
    return number && *number >= 0.0 && *number <= highest ? number : std::nullopt;
}

std::optional<Colour> fromBytes(const std::optional<std::array<int, 3>> &rgb, Model model)
{
    if (!rgb)
        return std::nullopt;
    if (model != Model::Hsv)
        return Colour{double((*rgb)[0]), double((*rgb)[1]), double((*rgb)[2])};
    float h = 0.0f;
    float s = 0.0f;
    float v = 0.0f;
    QColor((*rgb)[0], (*rgb)[1], (*rgb)[2]).getHsvF(&h, &s, &v);
    return Colour{std::max(h, 0.0f) * 360.0, double(s), double(v)};
}

std::optional<Colour> ofNumbers(const QByteArrayList &numbers, Model model)
{
    if (numbers.size() == 4) { // shares of ink, percent
        std::array<double, 4> ink{};
        for (qsizetype i = 0; i < 4; ++i) {
            const std::optional<double> share = within(numbers[i], 100.0);
            if (!share)
                return std::nullopt;
            ink[static_cast<std::size_t>(i)] = *share / 100.0;
        }
        const double light = 255.0 * (1.0 - ink[3]);
        return Colour{light * (1.0 - ink[0]), light * (1.0 - ink[1]),
                      light * (1.0 - ink[2])};
    }
    if (model != Model::Hsv)
        return fromBytes(channelsOf(numbers, 0), model);
    const std::optional<double> hue = within(numbers.value(0), 360.0);
    const std::optional<double> saturation = within(numbers.value(1), 1.0);
    const std::optional<double> value = within(numbers.value(2), 1.0);
    if (!hue || !saturation || !value)
        return std::nullopt;
    return Colour{*hue, *saturation, *value};
}

// The names are those of the X11 list, of which four differ from those of the web.
std::optional<std::array<int, 3>> ofName(const QByteArray &text)
{
    const QByteArray name = text.toLower();
    if (name == "green")
        return std::array{0, 255, 0};
    if (name == "gray" || name == "grey")
        return std::array{190, 190, 190};
    if (name == "maroon")
        return std::array{176, 48, 96};
    if (name == "purple")
        return std::array{160, 32, 240};
    if (name.startsWith("gray") || name.startsWith("grey")) {
        const std::optional<double> percent = within(name.mid(4), 100.0);
        if (percent) {
            const int gray = static_cast<int>(std::lround(*percent * 2.55));
            return std::array{gray, gray, gray};
        }
    }
    const QString asText = QString::fromLatin1(name);
    if (!QColor::isValidColor(asText))
        return std::nullopt;
    const QColor colour(asText);
    return std::array{colour.red(), colour.green(), colour.blue()};
}

// A colour that is one word.
std::optional<Colour> ofWord(const QByteArray &word, Model model)
{
    if (word.contains('/'))
        return ofNumbers(word.split('/'), model);
    if (model == Model::Hsv && word.count('-') == 2)
        return ofNumbers(word.split('-'), model);
    if (const std::optional<int> gray = channelOf(word))
        return fromBytes(std::array{*gray, *gray, *gray}, model);
    return fromBytes(ofName(word), model);
}

std::optional<Colour> ofWords(const QByteArrayList &words, Model model)
{
    return words.size() == 1 ? ofWord(words[0], model) : ofNumbers(words, model);
}

std::array<int, 3> bytesOf(const Colour &colour, Model model)
{
    if (model != Model::Hsv)
        return {static_cast<int>(std::lround(colour[0])),
                static_cast<int>(std::lround(colour[1])),
                static_cast<int>(std::lround(colour[2]))};
    const QColor rgb =
        QColor::fromHsvF(static_cast<float>(std::fmod(colour[0], 360.0) / 360.0),
                         static_cast<float>(colour[1]), static_cast<float>(colour[2]));
    return {rgb.red(), rgb.green(), rgb.blue()};
}

// "# KEY = value", a colour model, the range that a normalised palette is for, its hinge.
void readComment(const QByteArray &line, Head &head)
{
    const QByteArray value = line.mid(line.indexOf('=') + 1).trimmed();
    if (line.contains("COLOR_MODEL")) {
        const QByteArray model = value.toUpper();
        head.model = model.contains("HSV")    ? Model::Hsv
                     : model.contains("CMYK") ? Model::Cmyk
                                              : Model::Rgb;
    } else if (line.contains("RANGE") && line.contains('=')) {
        const QByteArrayList ends = value.split('/');
        const std::optional<double> low = numberOf(ends.value(0).trimmed());
        const std::optional<double> high = numberOf(ends.value(1).trimmed());
        if (low && high && *low < *high)
            head.range.emplace(*low, *high);
    } else if (line.contains("HINGE")) {
        head.hasHinge = true;
        head.hinge = line.contains('=') ? numberOf(value).value_or(0.0) : 0.0;
    }
}

void appendSegment(const std::array<double, 2> &heights,
                   const std::array<Colour, 2> &ends, Model model, ColourTable &table)
{
    const int pieces = model == Model::Hsv ? PiecesOfHue : 1;
    for (int i = 0; i <= pieces; ++i) {
        const double share = double(i) / pieces;
        Colour colour{};
        for (std::size_t c = 0; c < 3; ++c)
            colour[c] = ends[0][c] + share * (ends[1][c] - ends[0][c]);
        table.stops.push_back({heights[0] + share * (heights[1] - heights[0]), false,
                               bytesOf(colour, model)});
    }
}

// A line of two heights and two colours; `words` are what its colours take together.
Result<void> readSegment(const QByteArrayList &parts, const ColourLines &lines,
                         Model model, ColourTable &table)
{
    const qsizetype words = (parts.size() - 2) / 2;
    if (parts.size() != 2 * words + 2 || words < 1 || words == 2 || words > 4)
        return lines.wrong(QCoreApplication::translate(
            "Terrain", "a height and its colour are expected twice."));
    std::array<double, 2> heights{};
    std::array<Colour, 2> ends{};
    for (qsizetype i = 0; i < 2; ++i) {
        const qsizetype first = i * (words + 1);
        const std::optional<double> height = numberOf(parts[first]);
        if (!height)
            return lines.noHeight(parts[first]);
        const QByteArrayList text = parts.mid(first + 1, words);
        const std::optional<Colour> colour = ofWords(text, model);
        if (!colour)
            return lines.noColour(text.join(' '));
        heights[static_cast<std::size_t>(i)] = *height;
        ends[static_cast<std::size_t>(i)] = *colour;
    }
    appendSegment(heights, ends, model, table);
    return {};
}

bool isEndColour(const QByteArray &part)
{
    return part == "B" || part == "F" || part == "N";
}

Result<void> readLine(const QByteArray &line, const ColourLines &lines, Model model,
                      ColourTable &table)
{
    QByteArrayList parts = partsOf(line.split(';').first(), " \t,");
    if (parts.isEmpty())
        return {};
    if (isEndColour(parts[0])) {
        const std::optional<Colour> colour = ofWords(parts.mid(1), model);
        if (!colour)
            return lines.noColour(parts.mid(1).join(' '));
        const std::array<int, 3> rgb = bytesOf(*colour, model);
        if (parts[0] == "N")
            table.ofVoids = qRgb(rgb[0], rgb[1], rgb[2]);
        return {};
    }
    const QByteArray last = parts.last();
    if (last == "L" || last == "U" || last == "B") // where a legend has its numbers
        parts.removeLast();
    return readSegment(parts, lines, model, table);
}

// A palette whose heights run from 0, or with a hinge from -1, to 1 is spread over the
// range that its head tells.
void spread(const Head &head, std::vector<ColourStop> &stops)
{
    if (!head.range || stops.empty())
        return;
    const auto [low, high] = std::minmax_element(
        stops.begin(), stops.end(),
        [](const ColourStop &a, const ColourStop &b) { return a.metres < b.metres; });
    const bool isHinged = head.hasHinge && low->metres == -1.0;
    if (high->metres != 1.0 || (!isHinged && low->metres != 0.0))
        return;
    const auto [first, last] = *head.range;
    const double middle = isHinged ? head.hinge : first;
    for (ColourStop &stop : stops)
        stop.metres = stop.metres < 0.0 ? middle + stop.metres * (middle - first)
                                        : middle + stop.metres * (last - middle);
}

} // namespace

Result<ColourTable> readCpt(QIODevice &device, const QString &name)
{
    ColourTable table;
    Head head;
    ColourLines lines(device, name);
    while (const std::optional<QByteArray> line = lines.next()) {
        if (line->startsWith('#')) {
            readComment(*line, head);
            continue;
        }
        const Result<void> read = readLine(*line, lines, head.model, table);
        if (!read)
            return tl::unexpected(read.error());
    }
    const Result<void> ended = lines.ended();
    if (!ended)
        return tl::unexpected(ended.error());
    spread(head, table.stops);
    return table;
}
