#include "terrain/colourlines.h"

#include <QCoreApplication>
#include <QIODevice>

#include <cmath>
#include <cstring>

namespace {

constexpr qint64 LongestLine = 10240;
constexpr qsizetype LongestQuoted = 40;

QString quoted(const QByteArray &text)
{
    QString shown = QString::fromUtf8(text.left(LongestQuoted));
    for (QChar &c : shown)
        if (!c.isPrint())
            c = QChar::ReplacementCharacter;
    return shown;
}

} // namespace

std::optional<QByteArray> ColourLines::next()
{
    QByteArray line = m_device.readLine(LongestLine + 1);
    if (line.isEmpty())
        return std::nullopt;
    ++m_line;
    m_isTooLong = line.size() >= LongestLine && !line.endsWith('\n');
    if (m_isTooLong)
        return std::nullopt;
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return line;
}

Result<void> ColourLines::ended() const
{
    if (m_isTooLong)
        return wrong(
            QCoreApplication::translate("Terrain", "the line is too long for colours."));
    return {};
}

tl::unexpected<Failure> ColourLines::wrong(const QString &what) const
{
    return failed(QCoreApplication::translate("Terrain", "Line %1 of \"%2\": %3")
                      .arg(m_line)
                      .arg(m_name, what));
}

tl::unexpected<Failure> ColourLines::noColour(const QByteArray &text) const
{
    return wrong(
        QCoreApplication::translate("Terrain", "\"%1\" is no colour.").arg(quoted(text)));
}

tl::unexpected<Failure> ColourLines::noHeight(const QByteArray &text) const
{
    return wrong(
        QCoreApplication::translate("Terrain", "\"%1\" is no height.").arg(quoted(text)));
}

QByteArrayList partsOf(const QByteArray &line, const char *separators)
{
    QByteArrayList parts;
    QByteArray part;
    for (const char c : line) {
        const bool separates = c != '\0' && std::strchr(separators, c) != nullptr;
        if (!separates)
            part.append(c);
        else if (!part.isEmpty())
            parts.append(std::exchange(part, {}));
    }
    if (!part.isEmpty())
        parts.append(part);
    return parts;
}

std::optional<double> numberOf(const QByteArray &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<int> channelOf(const QByteArray &text)
{
    const std::optional<double> number = numberOf(text);
    if (!number || *number < 0.0 || *number >= 256.0)
        return std::nullopt;
    return static_cast<int>(*number);
}

std::optional<std::array<int, 3>> channelsOf(const QByteArrayList &parts, int first)
{
    std::array<int, 3> channels{};
    for (int i = 0; i < 3; ++i) {
        const std::optional<int> channel = channelOf(parts.value(first + i));
        if (!channel)
            return std::nullopt;
        channels[static_cast<std::size_t>(i)] = *channel;
    }
    return channels;
}
