#include "scene/extrassection.h"

#include "scene/extrakeys.h"
#include "scene/quotedline.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

constexpr QLatin1String Head("[Extras]");
// Nobody reads more, and a file of junk has millions of lines.
constexpr qsizetype MostTold = 100;

QString tr(const char *source)
{
    return QCoreApplication::translate("SceneryDelegate", source);
}

} // namespace

void ExtrasReader::readLine(const QString &line)
{
    const QStringView text = QStringView(line).trimmed();
    if (text == Head)
        m_place = Place::Within;
    else if (m_place == Place::Within && text.startsWith(u'['))
        m_place = Place::OtherSection;
    else if (m_place == Place::Within && !text.isEmpty())
        return readPair(line);
    if (m_place == Place::OtherSection)
        keep(line);
}

void ExtrasReader::readPair(const QString &line)
{
    const qsizetype equals = line.indexOf(u'=');
    const QStringView name =
        equals < 0 ? QStringView() : QStringView(line).left(equals).trimmed();
    const ExtraKey *const key = findExtra(name);
    const ExtraMatch match =
        key ? readExtra(m_extras, *key, QStringView(line).mid(equals + 1))
            : ExtraMatch::Unknown;
    if (match == ExtraMatch::Read)
        return;
    if (match == ExtraMatch::Limited)
        return tell(tr("An extra is out of its range, %1 is taken: %2")
                        .arg(extraText(m_extras, *key)),
                    line);
    keep(line);
    tell(match == ExtraMatch::Unknown
             ? tr("This line of the extras is not known here and is kept: %1")
             : tr("This extra has no such value, its line is kept: %1"),
         line);
}

void ExtrasReader::keep(const QString &line)
{
    m_extras.keptLines += line;
    m_extras.keptLines += u'\n';
}

void ExtrasReader::tell(const QString &sentence, const QString &line)
{
    if (m_told.size() < MostTold)
        m_told.append(sentence.arg(beginningOf(line)));
    else
        ++m_untold;
}

QStringList ExtrasReader::told() const
{
    if (m_untold == 0)
        return m_told;
    return m_told +
           QStringList{tr("%1 more lines of the extras are told nowhere").arg(m_untold)};
}

void writeExtras(QTextStream &stream, const SceneryExtras &extras)
{
    QString lines;
    for (const ExtraKey &key : extraKeys())
        if (!isDefault(extras, key))
            lines += key.name + u'=' + extraText(extras, key) + u'\n';
    if (lines.isEmpty() && extras.keptLines.isEmpty())
        return;
    stream << '\n' << Head << '\n' << lines << extras.keptLines;
}
