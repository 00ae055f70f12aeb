#include "terrain/pointreader.h"

#include <QObject>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Bad lines that a file may have before their share is looked at.
constexpr qint64 FewLines = 100;
constexpr std::size_t LongestQuote = 40;
// No reference system reaches further.
constexpr double FarthestCoordinate = 1e12;

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

QString textOf(std::string_view field)
{
    const auto length = std::min(field.size(), LongestQuote);
    QString text = QString::fromUtf8(field.data(), qsizetype(length));
    for (QChar &c : text)
        if (!c.isPrint())
            c = u'?';
    return text;
}

} // namespace

PointReader::PointReader(QIODevice &device, QString name, const PointFormat &format)
    : m_lines(device), m_name(std::move(name)), m_format(format),
      m_columnsNeeded(*std::max_element(format.columns.begin(), format.columns.end()) + 1)
{
}

Result<void> PointReader::next(std::vector<GroundPoint> &batch)
{
    batch.clear();
    batch.reserve(BatchSize);
    const qint64 mostLines = m_lines.number() + qint64(4 * BatchSize);
    while (batch.size() < BatchSize && (batch.empty() || m_lines.number() < mostLines)) {
        const auto line = m_lines.next();
        if (!line)
            break;
        if (m_lines.number() <= m_format.skippedLines || isRemark(*line))
            continue;
        GroundPoint point;
        if (read(*line, point))
            batch.push_back(point);
        else if (isMostlyJunk())
            break;
    }
    m_points += qint64(batch.size());
    if (m_lines.endedByLongLine())
        return failed(QObject::tr("Line %1 of %2 is longer than %3 characters.")
                          .arg(m_lines.number() + 1)
                          .arg(m_name, QString::number(TextLines::LongestLine)));
    if (isMostlyJunk() || (batch.empty() && m_badLines > m_points))
        return failed(QObject::tr("%1 holds no points in most of its lines: %2.")
                          .arg(m_name, m_firstFault));
    return {};
}

bool PointReader::isMostlyJunk() const { return m_badLines > FewLines + m_points; }

bool PointReader::read(std::string_view line, GroundPoint &point)
{
    const int count = splitPointLine(line, m_format.separator, m_fields);
    const auto field = [this](std::size_t axis) {
        return m_fields[std::size_t(m_format.columns[axis])];
    };
    if (count < m_columnsNeeded) {
        complain(line, -1);
        return false;
    }
    double *const places[] = {&point.x, &point.y, &point.z};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto value = pointNumber(field(axis), m_format.decimalPoint);
        if (value && (axis == 2 || std::fabs(*value) < FarthestCoordinate)) {
            *places[axis] = *value;
        } else if (axis == 2 && isMissingHeight(field(axis))) {
            point.z = Missing;
        } else {
            complain(field(axis), m_format.columns[axis]);
            return false;
        }
    }
    if (isMissingHeight(point.z))
        point.z = Missing;
    return true;
}

void PointReader::complain(std::string_view text, int column)
{
    ++m_badLines;
    if (m_badLines > 1)
        return;
    m_firstFault = column < 0 ? QObject::tr("line %1 has fewer than %2 columns: \"%3\"")
                                    .arg(m_lines.number())
                                    .arg(m_columnsNeeded)
                                    .arg(textOf(text))
                              : QObject::tr("\"%3\" in line %1, column %2, is no number")
                                    .arg(m_lines.number())
                                    .arg(column + 1)
                                    .arg(textOf(text));
}

QString PointReader::complaint() const
{
    if (m_badLines == 0)
        return {};
    if (m_badLines == 1)
        return QObject::tr("One line of %1 holds no point: %2.")
            .arg(m_name, m_firstFault);
    return QObject::tr("%1 lines of %2 hold no point; the first: %3.")
        .arg(QString::number(m_badLines), m_name, m_firstFault);
}
