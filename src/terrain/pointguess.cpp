#include "terrain/pointguess.h"

#include "terrain/pointnames.h"
#include "terrain/textlines.h"

#include <QObject>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr std::size_t SampleLines = 400;
constexpr qint64 SampleBytes = 1 << 16;
constexpr int FewestColumns = 3;

using Sample = std::vector<std::string>;

Sample sampleOf(QIODevice &device)
{
    TextLines lines(device);
    Sample sample;
    qint64 bytes = 0;
    while (sample.size() < SampleLines && bytes < SampleBytes) {
        const auto line = lines.next();
        if (!line)
            break;
        bytes += qint64(line->size());
        sample.emplace_back(line->substr(0, std::size_t(SampleBytes)));
    }
    return sample;
}

bool isValue(std::string_view field, char decimalPoint)
{
    return pointNumber(field, decimalPoint).has_value();
}

// Fields of a line that are numbers.
int countNumbers(const std::string &line, char separator, char decimalPoint)
{
    PointFields fields;
    const int count = splitPointLine(line, separator, fields);
    return int(std::count_if(
        fields.begin(), fields.begin() + count,
        [decimalPoint](std::string_view field) { return isValue(field, decimalPoint); }));
}

struct Signs {
    char separator;
    char decimalPoint;
};

// Those that are taken first where several would do.
constexpr std::array<Signs, 10> AllSigns{{{'\t', '.'},
                                          {';', '.'},
                                          {',', '.'},
                                          {'|', '.'},
                                          {' ', '.'},
                                          {'\t', ','},
                                          {';', ','},
                                          {',', ','},
                                          {'|', ','},
                                          {' ', ','}}};

// What lines give if they are split and read so: lines that hold points come first.
struct Harvest {
    int rows = 0;
    int numbers = 0;

    [[nodiscard]] bool isMoreThan(const Harvest &other) const
    {
        return rows != other.rows ? rows > other.rows : numbers > other.numbers;
    }
};

Harvest harvestOf(const Sample &sample, const Signs &signs)
{
    Harvest harvest;
    for (const std::string &line : sample) {
        const int numbers =
            isRemark(line) ? 0 : countNumbers(line, signs.separator, signs.decimalPoint);
        if (numbers < FewestColumns)
            continue;
        ++harvest.rows;
        harvest.numbers += numbers;
    }
    return harvest;
}

bool isAllowed(const Signs &signs, const PointOptions &options)
{
    return (!options.separator || *options.separator == QLatin1Char(signs.separator)) &&
           (!options.decimalPoint ||
            *options.decimalPoint == QLatin1Char(signs.decimalPoint));
}

Signs guessSigns(const Sample &sample, const PointOptions &options)
{
    Signs best{options.separator ? options.separator->toLatin1() : ' ',
               options.decimalPoint ? options.decimalPoint->toLatin1() : '.'};
    Harvest most;
    for (const Signs &signs : AllSigns) {
        const Harvest harvest =
            isAllowed(signs, options) ? harvestOf(sample, signs) : Harvest();
        if (harvest.isMoreThan(most)) {
            most = harvest;
            best = signs;
        }
    }
    return best;
}

// Number of lines ahead of the first that holds a point.
std::size_t firstRow(const Sample &sample, const Signs &signs, int needed)
{
    const auto isRow = [&](const std::string &line) {
        return !isRemark(line) &&
               countNumbers(line, signs.separator, signs.decimalPoint) >= needed;
    };
    return std::size_t(std::find_if(sample.begin(), sample.end(), isRow) -
                       sample.begin());
}

// The rows of a sample as numbers; NaN where there is none.
class Table {
public:
    Table(const Sample &sample, std::size_t first, const Signs &signs)
    {
        for (std::size_t i = first; i < sample.size(); ++i)
            if (!isRemark(sample[i]))
                add(sample[i], signs);
    }

    [[nodiscard]] int columns() const { return m_columns; }
    [[nodiscard]] bool isNumeric(int column) const
    {
        const auto numbers =
            std::count_if(m_rows.begin(), m_rows.end(), [&](const auto &row) {
                return !std::isnan(row[std::size_t(column)]);
            });
        return 2 * numbers > std::ptrdiff_t(m_rows.size());
    }
    // Whether a column counts its rows.
    [[nodiscard]] bool isCounter(int column) const
    {
        const auto at = [&](std::size_t row) { return m_rows[row][std::size_t(column)]; };
        for (std::size_t row = 1; row < m_rows.size(); ++row)
            if (at(row) != at(row - 1) + 1)
                return false;
        return m_rows.size() > 1 && at(0) == std::floor(at(0));
    }
    [[nodiscard]] double largest(int column) const
    {
        double most = 0.0;
        for (const auto &row : m_rows)
            most = std::fmax(most, std::fabs(row[std::size_t(column)]));
        return most;
    }

private:
    using Row = std::array<double, MostPointColumns>;

    void add(const std::string &line, const Signs &signs)
    {
        PointFields fields;
        const int count = splitPointLine(line, signs.separator, fields);
        Row &row = m_rows.emplace_back();
        row.fill(std::nan(""));
        for (std::size_t i = 0; i < std::size_t(count); ++i)
            row[i] = pointNumber(fields[i], signs.decimalPoint).value_or(std::nan(""));
        m_columns = std::max(m_columns, count);
    }

    std::vector<Row> m_rows;
    int m_columns = 0;
};

// The columns that names tell; -1 where they do not.
struct NamedColumns {
    int x = -1, y = -1, z = -1;
    bool isGeographic = false;
};

NamedColumns namedColumns(const PointFields &names, int count)
{
    NamedColumns named;
    const auto take = [](int &column, int found) {
        if (column < 0)
            column = found;
    };
    int longitude = -1;
    int latitude = -1;
    for (int i = 0; i < count; ++i) {
        switch (meaningOfName(names[std::size_t(i)])) {
        case PointColumn::X:
            take(named.x, i);
            break;
        case PointColumn::Y:
            take(named.y, i);
            break;
        case PointColumn::Longitude:
            take(longitude, i);
            break;
        case PointColumn::Latitude:
            take(latitude, i);
            break;
        case PointColumn::Height:
            take(named.z, i);
            break;
        case PointColumn::Unknown:
            break;
        }
    }
    // Metres before degrees, where a file has both.
    if ((named.x < 0 || named.y < 0) && longitude >= 0 && latitude >= 0)
        named = {longitude, latitude, named.z, true};
    return named;
}

constexpr double MostLatitude = 90.0;
constexpr double MostLongitude = 360.0;

// By the numbers: the first three columns of them, but for one that counts the points;
// latitudes and longitudes by what only one of them can be.
std::optional<std::array<int, 3>> columnsOfNumbers(const Table &table)
{
    QList<int> numeric;
    for (int column = 0; column < table.columns(); ++column)
        if (table.isNumeric(column))
            numeric << column;
    if (numeric.size() > FewestColumns && table.isCounter(numeric.front()))
        numeric.removeFirst();
    if (numeric.size() < FewestColumns)
        return {};
    std::array<int, 3> columns{numeric.at(0), numeric.at(1), numeric.at(2)};
    const double second = table.largest(columns[1]);
    if (table.largest(columns[0]) <= MostLatitude && second > MostLatitude &&
        second <= MostLongitude)
        std::swap(columns[0], columns[1]);
    return columns;
}

// The height: the column of that name, else the first of numbers that is left.
int heightColumn(const NamedColumns &named, const Table &table)
{
    if (named.z >= 0)
        return named.z;
    for (int column = 0; column < table.columns(); ++column)
        if (column != named.x && column != named.y && table.isNumeric(column) &&
            column > std::min(named.x, named.y))
            return column;
    return -1;
}

// The line of names: the last one ahead of the points that is not empty.
std::string_view lineOfNames(const Sample &sample, std::size_t first)
{
    for (std::size_t i = std::min(first, sample.size()); i-- > 0;) {
        const std::string_view line = sample[i];
        const auto text = line.find_first_not_of(" \t#%!/");
        if (text != std::string_view::npos)
            return line.substr(text);
    }
    return {};
}

QStringList textsOf(const PointFields &fields, int count)
{
    QStringList texts;
    for (const std::string_view field : std::span(fields).first(std::size_t(count)))
        texts << QString::fromUtf8(field.data(), qsizetype(field.size()));
    return texts;
}

void fillRows(PointPreview &preview, const Sample &sample)
{
    PointFields fields;
    const auto first = std::min(std::size_t(preview.format.skippedLines), sample.size());
    for (std::size_t i = first; i < sample.size(); ++i) {
        if (preview.rows.size() == PointPreview::Rows)
            break;
        if (isRemark(sample[i]))
            continue;
        const int count = splitPointLine(sample[i], preview.format.separator, fields);
        preview.rows << textsOf(fields, count);
        preview.columns = std::max(preview.columns, count);
    }
}

// The columns as asked for, or as the names or the numbers have them.
bool chooseColumns(PointFormat &format, const PointOptions &options, const Table &table,
                   const NamedColumns &named)
{
    const bool isNamed = named.x >= 0 && named.y >= 0;
    const int z = isNamed ? heightColumn(named, table) : -1;
    const auto byNumbers = columnsOfNumbers(table);
    if (z >= 0)
        format.columns = {named.x, named.y, z};
    else if (byNumbers)
        format.columns = *byNumbers;
    else if (options.columns.size() != FewestColumns)
        return false;
    format.isGeographic = z >= 0 && named.isGeographic;
    if (options.columns.size() == FewestColumns)
        for (std::size_t i = 0; i < format.columns.size(); ++i)
            format.columns[i] = options.columns.at(qsizetype(i)) - 1;
    return true;
}

// Why the lines of a sample cannot be read as a preview says; empty where they can.
QString faultOf(const PointPreview &preview, bool hasColumns, const QString &name)
{
    if (!hasColumns)
        return QObject::tr("%1 has no three columns of numbers, for x, y and the height.")
            .arg(name);
    const auto &columns = preview.format.columns;
    if (columns[0] == columns[1] || columns[0] == columns[2] || columns[1] == columns[2])
        return QObject::tr("The columns of x, y and the height of %1 are three different "
                           "ones.")
            .arg(name);
    for (const int column : columns)
        if (column < 0 || column >= preview.columns)
            return QObject::tr("%1 has %2 columns; there is no column %3.")
                .arg(name)
                .arg(preview.columns)
                .arg(column + 1);
    return {};
}

} // namespace

PointPreview lookAtPoints(QIODevice &device, const QString &name,
                          const PointOptions &options)
{
    const Sample sample = sampleOf(device);
    const Signs signs = guessSigns(sample, options);
    std::size_t first = options.skippedLines
                            ? std::size_t(std::max(*options.skippedLines, 0))
                            : firstRow(sample, signs, FewestColumns);
    PointPreview preview;
    if (first >= sample.size() && !options.skippedLines) {
        preview.fault = QObject::tr("%1 holds no lines with three numbers.").arg(name);
        first = 0; // all lines show what the signs make of them
    }
    preview.format = {
        signs.separator, signs.decimalPoint, int(first), {-1, -1, -1}, false};
    PointFields fields;
    const int names = splitPointLine(lineOfNames(sample, first), signs.separator, fields);
    const NamedColumns named = namedColumns(fields, names);
    const Table table(sample, first, signs);
    const bool hasColumns = chooseColumns(preview.format, options, table, named);
    if (first > 0 && names >= FewestColumns)
        preview.names = textsOf(fields, names);
    fillRows(preview, sample);
    if (preview.fault.isEmpty())
        preview.fault = faultOf(preview, hasColumns, name);
    return preview;
}

Result<PointPreview> orFault(PointPreview preview)
{
    if (!preview.fault.isEmpty())
        return failed(preview.fault);
    return preview;
}
