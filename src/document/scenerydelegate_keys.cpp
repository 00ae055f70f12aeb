// Reads of single keys, as a caller of this class may want them. The program itself reads
// whole files, by the same functions, and calls none of these; tests do.

#include "document/scenerydelegate.h"
#include "scene/keyvalue.h"

int SceneryDelegate::concluded(KeyMatch match, const QString &error)
{
    if (match == KeyMatch::Broken)
        setErrorString(error);
    return static_cast<int>(match);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      QString &value)
{
    QStringView text;
    QString error;
    const KeyMatch match = matchKey(line, key, &text, &error);
    if (match == KeyMatch::Read)
        value = text.toString();
    return concluded(match, error);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      unsigned int &colour)
{
    QStringView text;
    QString error;
    KeyMatch match = matchKey(line, key, &text, &error);
    if (match == KeyMatch::Read && !readColour(text, &colour, &error))
        match = KeyMatch::Broken;
    return concluded(match, error);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      bool &value)
{
    QStringView text;
    QString error;
    const KeyMatch match = matchKey(line, key, &text, &error);
    if (match == KeyMatch::Read)
        value = flagOf(text);
    return concluded(match, error);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key, int &value)
{
    QStringView text;
    QString error;
    const KeyMatch match = matchKey(line, key, &text, &error);
    if (match == KeyMatch::Read)
        value = wholeOf(text);
    return concluded(match, error);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      int &value1, int &value2)
{
    QStringView text;
    QString error;
    KeyMatch match = matchKey(line, key, &text, &error);
    std::array<qint32, 2> pair{value1, value2};
    if (match == KeyMatch::Read && !readPair(line, text, &pair, &error))
        match = KeyMatch::Broken;
    value1 = pair[0];
    value2 = pair[1];
    return concluded(match, error);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      int &value1, int &value2, int &value3)
{
    QStringView text;
    QString error;
    KeyMatch match = matchKey(line, key, &text, &error);
    std::array<qint32, 3> triple{value1, value2, value3};
    if (match == KeyMatch::Read && !readTriple(line, text, &triple, &error))
        match = KeyMatch::Broken;
    value1 = triple[0];
    value2 = triple[1];
    value3 = triple[2];
    return concluded(match, error);
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      double &value)
{
    QStringView text;
    QString error;
    const KeyMatch match = matchKey(line, key, &text, &error);
    if (match == KeyMatch::Read)
        value = realOf(text);
    return concluded(match, error);
}
