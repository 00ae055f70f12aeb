// Reads of single keys, as a caller of this class may want them. The program itself reads
// whole files, by the same functions, and calls none of these; tests do.

#include "document/scenerydelegate.h"
#include "scene/keyvalue.h"

namespace {

// What became of a line under a key, as the callers know it.
enum KeyMatch { Other = 0, Read = 1, Broken = 2 };

} // namespace

// `take` puts the text of the value where it belongs, or fails.
template <class Take>
int SceneryDelegate::readKey(const QString &line, const QString &key, const Take &take)
{
    const Result<std::optional<QStringView>> text = valueUnderKey(line, key);
    if (text && !*text)
        return Other;
    const Result<void> taken = text ? take(**text) : failed(text.error().text);
    if (taken)
        return Read;
    setErrorString(taken.error().text);
    return Broken;
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      QString &value)
{
    return readKey(line, key, [&value](QStringView text) -> Result<void> {
        value = text.toString();
        return {};
    });
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      QRgb &colour)
{
    return readKey(line, key, [&colour](QStringView text) {
        return readColour(text).map([&colour](QRgb read) { colour = read; });
    });
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      bool &value)
{
    return readKey(line, key, [&value](QStringView text) -> Result<void> {
        value = flagOf(text);
        return {};
    });
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key, int &value)
{
    return readKey(line, key, [&value](QStringView text) -> Result<void> {
        value = wholeOf(text);
        return {};
    });
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      int &value1, int &value2)
{
    return readKey(line, key, [&](QStringView text) {
        return readPair(line, text).map([&](const std::array<qint32, 2> &read) {
            value1 = read[0];
            value2 = read[1];
        });
    });
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      int &value1, int &value2, int &value3)
{
    return readKey(line, key, [&](QStringView text) {
        return readTriple(line, text).map([&](const std::array<qint32, 3> &read) {
            value1 = read[0];
            value2 = read[1];
            value3 = read[2];
        });
    });
}

int SceneryDelegate::readValueFromKey(const QString &line, const QString &key,
                                      double &value)
{
    return readKey(line, key, [&value](QStringView text) -> Result<void> {
        value = realOf(text);
        return {};
    });
}
