#include "cases/casefile.h"

#include <QFile>
#include <QTextStream>

bool CaseFile::read(const QString &fileName, QString *error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = "cannot read " + fileName;
        return false;
    }
    QTextStream in(&file);
    QString line, section;
    while (in.readLineInto(&line)) {
        if (line.startsWith('[') && line.endsWith(']')) {
            const QStringList head = line.mid(1, line.size() - 2).split(' ');
            section = head.value(0);
            m_sections[section] = {};
            m_kinds[section] = head.value(1);
        } else if (section == "options" && !line.isEmpty()) {
            const QStringList words = line.split(' ');
            m_options[words[0]] = words.mid(1);
        } else if (!section.isEmpty()) {
            m_sections[section].append(line);
        }
    }
    for (QStringList &lines : m_sections) // one empty line parts the sections
        if (!lines.isEmpty() && lines.constLast().isEmpty())
            lines.removeLast();
    if (has("options") && has("expected"))
        return true;
    *error = fileName + " has no options or expects nothing";
    return false;
}

double CaseFile::number(const QString &name, double byDefault) const
{
    const QStringList words = option(name);
    return words.isEmpty() ? byDefault : words[0].toDouble();
}

int CaseFile::integer(const QString &name, int byDefault) const
{
    const QStringList words = option(name);
    return words.isEmpty() ? byDefault : words[0].toInt();
}

QByteArray CaseFile::bytes(const QString &section) const
{
    const QStringList lines = m_sections.value(section);
    if (m_kinds.value(section) != "bytes")
        return lines.isEmpty() ? QByteArray() : lines.join('\n').toLatin1() + '\n';
    const QByteArray text = lines.join(QString()).toLatin1();
    QByteArray out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isByte = text.mid(i, 2) == "\\x";
        out += isByte ? QByteArray::fromHex(text.mid(i + 2, 2)) : text.mid(i, 1);
        i += isByte ? 3 : 0;
    }
    return out;
}

QList<double> CaseFile::numbers(const QString &section) const
{
    QList<double> all;
    for (const QStringList &row : gridOf(section))
        for (const QString &word : row)
            all.append(word.toDouble());
    return all;
}

CaseFile::Grid CaseFile::gridOf(const QString &section) const
{
    Grid grid;
    for (const QString &line : m_sections.value(section))
        grid.append(line.split(' ', Qt::SkipEmptyParts));
    return grid;
}

ElevationImage CaseFile::elevations(const QString &section) const
{
    const Grid grid = gridOf(section);
    ElevationImage image(int(grid.value(0).size()), int(grid.size()),
                         QImage::Format_RGB888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setElevation(x, y, grid[y].value(x).toDouble());
    return image;
}

QImage CaseFile::colours(const QString &section) const
{
    const Grid grid = gridOf(section);
    QImage image(int(grid.value(0).size()), int(grid.size()), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QString word = grid[y].value(x);
            const QRgb opaque = word.size() > 6 ? 0u : 0xFF000000u;
            image.setPixel(x, y, opaque | word.toUInt(nullptr, 16));
        }
    return image;
}

template <class TextOf>
QString CaseFile::difference(const QImage &image, TextOf textOf) const
{
    const Grid expected = gridOf("expected");
    const QSize size(int(expected.value(0).size()), int(expected.size()));
    if (image.size() != size)
        return QStringLiteral("%1 by %2 pixels").arg(image.width()).arg(image.height());
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const QString is = textOf(x, y);
            const QString should = expected[y].value(x);
            if (is != should && should != ".")
                return QStringLiteral("(%1, %2) is %3, should be %4")
                    .arg(x)
                    .arg(y)
                    .arg(is, should);
        }
    return {};
}

QString CaseFile::differenceOfElevations(const ElevationImage &image) const
{
    return difference(image, [&](int x, int y) {
        return QString::number(ElevationImage::stepsOf(image.pixel(x, y)));
    });
}

QString CaseFile::differenceOfColours(const QImage &image) const
{
    return difference(image, [&](int x, int y) {
        return QStringLiteral("%1").arg(image.pixel(x, y) & 0xFFFFFFu, 6, 16,
                                        QLatin1Char('0'));
    });
}
