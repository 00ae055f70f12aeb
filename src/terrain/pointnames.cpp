#include "terrain/pointnames.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

struct Name {
    QStringView word; // in small letters, without accents
    PointColumn column;
};

using enum PointColumn;

constexpr std::array Names{
    Name{u"x", X},
    Name{u"e", X},
    Name{u"east", X},
    Name{u"easting", X},
    Name{u"eastings", X},
    Name{u"ost", X},
    Name{u"ostwert", X},
    Name{u"rechts", X},
    Name{u"rechtswert", X},
    Name{u"rw", X},
    Name{u"est", X},
    Name{u"este", X},
    Name{u"xcoord", X},
    Name{u"coordx", X},
    Name{u"xkoord", X},
    Name{u"utmx", X},
    Name{u"abscisse", X},
    Name{u"y", Y},
    Name{u"n", Y},
    Name{u"north", Y},
    Name{u"northing", Y},
    Name{u"northings", Y},
    Name{u"nord", Y},
    Name{u"nordwert", Y},
    Name{u"hoch", Y},
    Name{u"hochwert", Y},
    Name{u"hw", Y},
    Name{u"norte", Y},
    Name{u"ycoord", Y},
    Name{u"coordy", Y},
    Name{u"ykoord", Y},
    Name{u"utmy", Y},
    Name{u"ordonnee", Y},
    Name{u"lon", Longitude},
    Name{u"lng", Longitude},
    Name{u"long", Longitude},
    Name{u"longitude", Longitude},
    Name{u"longitud", Longitude},
    Name{u"longitudine", Longitude},
    Name{u"lange", Longitude},
    Name{u"laenge", Longitude},
    Name{u"langengrad", Longitude},
    Name{u"laengengrad", Longitude},
    Name{u"lengtegraad", Longitude},
    Name{u"dlugosc", Longitude},
    Name{u"lat", Latitude},
    Name{u"latitude", Latitude},
    Name{u"latitud", Latitude},
    Name{u"latitudine", Latitude},
    Name{u"breite", Latitude},
    Name{u"breitengrad", Latitude},
    Name{u"breedtegraad", Latitude},
    Name{u"szerokosc", Latitude},
    Name{u"z", Height},
    Name{u"h", Height},
    Name{u"height", Height},
    Name{u"elev", Height},
    Name{u"ele", Height},
    Name{u"elevation", Height},
    Name{u"elevacion", Height},
    Name{u"alt", Height},
    Name{u"altitude", Height},
    Name{u"altitud", Height},
    Name{u"altezza", Height},
    Name{u"altura", Height},
    Name{u"hohe", Height},
    Name{u"hoehe", Height},
    Name{u"hoogte", Height},
    Name{u"hojd", Height},
    Name{u"hauteur", Height},
    Name{u"wysokosc", Height},
    Name{u"quota", Height},
    Name{u"cota", Height},
    Name{u"kote", Height},
    Name{u"dem", Height},
    Name{u"dtm", Height},
    Name{u"dsm", Height},
    Name{u"dgm", Height},
    Name{u"dom", Height},
    Name{u"mnt", Height},
    Name{u"zwert", Height},
    Name{u"zcoord", Height},
    Name{u"coordz", Height},
};

PointColumn meaningOfWord(const QString &word)
{
    const auto found = std::find_if(Names.begin(), Names.end(),
                                    [&](const Name &name) { return name.word == word; });
    return found == Names.end() ? Unknown : found->column;
}

// In small letters without accents and without what stands in brackets; other signs are
// blanks.
QString plainText(std::string_view name)
{
    const QString text = QString::fromUtf8(name.data(), qsizetype(name.size()))
                             .toLower()
                             .normalized(QString::NormalizationForm_KD);
    QString plain;
    for (const QChar c : text) {
        if (c == u'(' || c == u'[')
            break;
        if (c.isLetter())
            plain += c == QChar(0x142) ? QChar(u'l') : c; // that stroke is no accent
        else if (!c.isMark())
            plain += u' ';
    }
    return plain;
}

} // namespace

PointColumn meaningOfName(std::string_view name)
{
    constexpr std::size_t LongestName = 80;
    const QStringList words =
        plainText(name.substr(0, LongestName)).split(u' ', Qt::SkipEmptyParts);
    const PointColumn whole = meaningOfWord(words.join(QString()));
    if (whole != Unknown)
        return whole;
    for (const QString &word : words) {
        const PointColumn meaning = meaningOfWord(word);
        // One letter alone says nothing amid others, as in "id n": but axes do.
        const bool isAxis = word == u"x" || word == u"y" || word == u"z";
        if (meaning != Unknown && (word.size() > 1 || isAxis))
            return meaning;
    }
    return Unknown;
}
