#include "terrainbatch/terrainoptions.h"

#include "commands/arguments.h"
#include "terrain/groundpalettes.h"

namespace {

constexpr double MostCells = 1e9;       // of a mosaic
constexpr double MostPixels = 32768;    // of a side
constexpr double SmallestLength = 1e-6; // metres
constexpr double LargestLength = 1e9;   // metres
constexpr double LeastExaggeration = 0.001;
constexpr double MostExaggeration = 1000;
constexpr int MostColumns = 1000; // of a file of points
const QLatin1String NoFilling("none");

Option choice(const QString &name, const QStringList &choices, const QString &help)
{
    return {.name = name,
            .kind = OptionKind::Choice,
            .valueName = choices.join(QLatin1Char('|')),
            .help = help,
            .choices = choices,
            .defaultValue = choices.first()};
}

// What fill distances are: a number of cells, or the word for none.
std::optional<double> cellsOf(const QString &text)
{
    bool isNumber = false;
    const double cells = text.toDouble(&isNumber);
    if (!isNumber || !(cells >= 0.0 && cells <= MostCells))
        return std::nullopt;
    return cells;
}

template <class Value>
Value chosen(const Arguments &arguments, const QString &name,
             std::initializer_list<std::pair<const char *, Value>> of)
{
    const QString text = arguments.text(name);
    for (const auto &[word, value] : of)
        if (text == QLatin1String(word))
            return value;
    return of.begin()->second;
}

// The parts that are wanted, where they are named.
std::optional<Extent> rectOf(const Arguments &arguments)
{
    const QList<double> n = arguments.numbers("rect");
    return n.size() == 4 ? std::optional(Extent{n[0], n[1], n[2], n[3]}) : std::nullopt;
}

std::optional<QRect> cellsRectOf(const Arguments &arguments)
{
    const QList<double> n = arguments.numbers("cells");
    return n.size() == 4
               ? std::optional(QRect(int(n[0]), int(n[1]), int(n[2]), int(n[3])))
               : std::nullopt;
}

QString complaintOfSun(const Arguments &arguments)
{
    const QList<double> sun = arguments.numbers("sun");
    const bool isRight = sun.size() == 2 && sun[0] >= 0.0 && sun[0] <= 360.0 &&
                         sun[1] >= -90.0 && sun[1] <= 90.0;
    return isRight
               ? QString()
               : QStringLiteral("--sun takes an azimuth from 0 to 360 and a height from "
                                "-90 to 90, not \"%1\".")
                     .arg(arguments.text("sun"));
}

} // namespace

std::vector<Option> pointOptions()
{
    return {
        choice(
            "points", {"auto", "grid", "tin"},
            "What becomes of points: a grid where their steps are even, or triangles."),
        {.name = "columns",
         .kind = OptionKind::Integer,
         .valueName = "X,Y,Z",
         .help = "Columns of x, y and z, counted from 1.",
         .lowest = 1,
         .highest = MostColumns,
         .defaultNote = "found in the file",
         .numbers = 3},
        choice("separator", {"auto", "comma", "semicolon", "tab", "space"},
               "What stands between the numbers of a point."),
        {.name = "decimal",
         .kind = OptionKind::Choice,
         .valueName = ".|,",
         .help = "The decimal point.",
         .choices = {".", ","},
         .defaultNote = "found in the file"},
        {.name = "skip",
         .kind = OptionKind::Integer,
         .valueName = "N",
         .help = "Lines ahead of the points.",
         .lowest = 0,
         .highest = MostCells,
         .defaultNote = "found in the file"},
        {.name = "max-edge",
         .kind = OptionKind::Real,
         .valueName = "METRES",
         .help = "Longest edge of a triangle that is filled.",
         .lowest = SmallestLength,
         .highest = LargestLength,
         .defaultNote = "none"}};
}

std::vector<Option> gridOptions()
{
    return {
        {.name = "rect",
         .kind = OptionKind::Real,
         .valueName = "W,S,E,N",
         .help = "The part that is wanted, in the reference system of the output.",
         .defaultNote = "the whole",
         .numbers = 4,
         .group = "part"},
        {.name = "cells",
         .kind = OptionKind::Integer,
         .valueName = "X,Y,W,H",
         .help = "The part that is wanted, in cells from the upper left corner.",
         .lowest = 0,
         .highest = MostCells,
         .defaultNote = "the whole",
         .numbers = 4,
         .group = "part"},
        {.name = "size",
         .kind = OptionKind::Size,
         .valueName = "WxH",
         .help = "Cells of the elevation file.",
         .lowest = 1,
         .highest = MostPixels,
         .defaultNote = "square cells, as many as suit the files, at most 4096 a side"},
        {.name = "crs",
         .kind = OptionKind::Text,
         .valueName = "utm|keep|CODE",
         .help = "The reference system: the UTM zone of the middle, that of the files, "
                 "or a code such as EPSG:25833.",
         .defaultNote = "utm for longitudes and latitudes, keep else"},
        choice("resample", {"auto", "nearest", "bilinear", "cubic", "average"},
               "How heights between cells are found.")};
}

std::vector<Option> textureOptions(const QString &light)
{
    Option shade = choice("shade", {"none", "sun", "shadow", "sky"},
                          "Light that is baked in, each with those before it.");
    shade.defaultValue = light;
    return {
        {.name = "palette",
         .kind = OptionKind::Text,
         .valueName = "NAME|FILE",
         .help = QStringLiteral("Colours by height: %1, or a .cpt file or a colour text "
                                "of gdaldem, in metres.")
                     .arg(groundPaletteNames().join(QStringLiteral(", "))),
         .defaultValue = "temperate"},
        shade,
        {.name = "sun",
         .kind = OptionKind::Real,
         .valueName = "AZIMUTH,HEIGHT",
         .help =
             "Where the sun stands: degrees clockwise from north, 0 to 360, and above "
             "the horizon, -90 to 90.",
         .defaultValue = "225,40",
         .numbers = 2}};
}

std::vector<Option> openOptions()
{
    return {
        {.name = "out",
         .kind = OptionKind::Text,
         .valueName = "NAME",
         .help = "Name of the files, which _elevation.png, _texture.png and .zph are "
                 "added to.",
         .required = true},
        {.name = "fill",
         .kind = OptionKind::Text,
         .valueName = "CELLS|none",
         .help = "Fills holes that known cells enclose, up to this distance; voids that "
                 "stay take the lowest height.",
         .defaultValue = "100"},
        {.name = "unit",
         .kind = OptionKind::Real,
         .valueName = "METRES",
         .help = "Metres of a height unit.",
         .lowest = SmallestLength,
         .highest = LargestLength,
         .defaultNote = "0.01, or the smallest of 0.1, 1, 10 ... that the scenery's z "
                        "scale bears"},
        {.name = "exaggerate",
         .kind = OptionKind::Real,
         .valueName = "F",
         .help = "Makes heights of the scenery larger; 1 is true to scale.",
         .lowest = LeastExaggeration,
         .highest = MostExaggeration,
         .defaultValue = "1"},
        {.name = "photo",
         .kind = OptionKind::InputFile,
         .valueName = "FILE",
         .help = "A photograph or map with a georeference as the texture, instead of a "
                 "palette; a later one wins.",
         .several = true},
        {.name = "texture-size",
         .kind = OptionKind::Size,
         .valueName = "WxH",
         .help = "Pixels of the texture.",
         .lowest = 1,
         .highest = MostPixels,
         .defaultNote = "square pixels, as many as cells; with a photograph its own, at "
                        "most 8192 a side"}};
}

std::vector<Option> scaleOptions()
{
    return {{.name = "out",
             .kind = OptionKind::OutputFile,
             .valueName = "FILE",
             .help = "The texture.",
             .required = true},
            {.name = "unit",
             .kind = OptionKind::Real,
             .valueName = "METRES",
             .help = "Metres of a height unit.",
             .lowest = SmallestLength,
             .highest = LargestLength,
             .defaultNote = "told by the file beside the elevation file, else 1"},
            {.name = "cell",
             .kind = OptionKind::Real,
             .valueName = "X,Y",
             .help = "Metres of a cell.",
             .lowest = SmallestLength,
             .highest = LargestLength,
             .defaultNote = "told by the files beside the elevation file, else 1,1",
             .numbers = 2}};
}

PointOptions pointsOf(const Arguments &arguments)
{
    PointOptions points;
    points.surface = chosen<PointSurface>(arguments, "points",
                                          {{"auto", PointSurface::Auto},
                                           {"grid", PointSurface::Grid},
                                           {"tin", PointSurface::Triangles}});
    for (const double column : arguments.numbers("columns"))
        points.columns.append(static_cast<int>(column));
    points.separator = chosen<std::optional<QChar>>(arguments, "separator",
                                                    {{"auto", std::nullopt},
                                                     {"comma", QChar(u',')},
                                                     {"semicolon", QChar(u';')},
                                                     {"tab", QChar(u'\t')},
                                                     {"space", QChar(u' ')}});
    if (arguments.has("decimal"))
        points.decimalPoint = arguments.text("decimal").front();
    if (arguments.has("skip"))
        points.skippedLines = arguments.integer("skip");
    if (arguments.has("max-edge"))
        points.longestEdge = arguments.real("max-edge");
    return points;
}

GridRequest gridOf(const Arguments &arguments)
{
    GridRequest grid;
    grid.rect = rectOf(arguments);
    grid.cells = cellsRectOf(arguments);
    if (arguments.has("size"))
        grid.size = arguments.size("size");
    grid.crs = arguments.text("crs");
    grid.resampling = chosen<Resampling>(arguments, "resample",
                                         {{"auto", Resampling::Auto},
                                          {"nearest", Resampling::Nearest},
                                          {"bilinear", Resampling::Bilinear},
                                          {"cubic", Resampling::Cubic},
                                          {"average", Resampling::Average}});
    return grid;
}

TextureRequest textureOf(const Arguments &arguments)
{
    TextureRequest texture;
    texture.palette = arguments.text("palette");
    texture.light = chosen<BakedLight>(arguments, "shade",
                                       {{"none", BakedLight::None},
                                        {"sun", BakedLight::Sun},
                                        {"shadow", BakedLight::Shadow},
                                        {"sky", BakedLight::Sky}});
    const QList<double> sun = arguments.numbers("sun");
    texture.sunAzimuth = sun.value(0);
    texture.sunHeight = sun.value(1);
    return texture;
}

std::optional<double> fillOf(const Arguments &arguments)
{
    return cellsOf(arguments.text("fill"));
}

QString complaintOfPoints(const Arguments &arguments)
{
    const QList<double> columns = arguments.numbers("columns");
    const bool repeats =
        columns.size() == 3 && (columns[0] == columns[1] || columns[0] == columns[2] ||
                                columns[1] == columns[2]);
    return repeats
               ? QStringLiteral("--columns takes three different columns, not \"%1\".")
                     .arg(arguments.text("columns"))
               : QString();
}

QString complaintOfOpen(const Arguments &arguments)
{
    const QString fill = arguments.text("fill");
    if (fill != NoFilling && !cellsOf(fill))
        return QStringLiteral("--fill takes a number of cells from 0 or \"none\", not "
                              "\"%1\".")
            .arg(fill);
    if (const auto rect = rectOf(arguments);
        rect && !(rect->west < rect->east && rect->south < rect->north))
        return QStringLiteral(
                   "--rect takes a west end below its east one and a south end "
                   "below its north one, not \"%1\".")
            .arg(arguments.text("rect"));
    if (const auto cells = cellsRectOf(arguments); cells && cells->isEmpty())
        return QStringLiteral(
                   "--cells takes at least one column and one row, not \"%1\".")
            .arg(arguments.text("cells"));
    const QString ofPoints = complaintOfPoints(arguments);
    return ofPoints.isEmpty() ? complaintOfSun(arguments) : ofPoints;
}

QString complaintOfTexture(const Arguments &arguments)
{
    return complaintOfSun(arguments);
}
