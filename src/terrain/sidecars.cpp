#include "terrain/sidecars.h"

#include "base/pi.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr qint64 MostBytes = qint64(16) << 20; // of a file beside a picture

const QLatin1String HeightUnit("MetresPerHeightUnit");
const QLatin1String CellX("MetresPerCellX");
const QLatin1String CellY("MetresPerCellY");

QString baseOf(const QString &picture)
{
    const QFileInfo info(picture);
    return picture.left(picture.size() - info.suffix().size() -
                        (info.suffix().isEmpty() ? 0 : 1));
}

// The shortest text that gives the same number again, with a point in every locale.
QString textOf(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

void writeItem(QXmlStreamWriter &xml, QLatin1String key, double value)
{
    xml.writeStartElement(QStringLiteral("MDI"));
    xml.writeAttribute(QStringLiteral("key"), key);
    xml.writeCharacters(textOf(value));
    xml.writeEndElement();
}

std::optional<QByteArray> contentsOf(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly) || file.size() > MostBytes)
        return std::nullopt;
    return file.read(MostBytes);
}

void readWorldFile(const QByteArray &text, Georeference &georeference)
{
    const QByteArrayList lines = text.simplified().split(' ');
    std::array<double, 6> n{};
    for (std::size_t i = 0; i < n.size(); ++i) {
        bool isNumber = false;
        n[i] = lines.value(qsizetype(i)).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(n[i]))
            return;
    }
    georeference.transform = {n[4] - (n[0] + n[2]) / 2, n[0], n[2],
                              n[5] - (n[1] + n[3]) / 2, n[1], n[3]};
}

void readItem(QXmlStreamReader &xml, Georeference &georeference)
{
    const QString key = xml.attributes().value(QLatin1String("key")).toString();
    bool isNumber = false;
    const double value = xml.readElementText().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value) || value <= 0.0)
        return;
    if (key == HeightUnit)
        georeference.metresPerHeightUnit = value;
    else if (key == CellX)
        georeference.metresX = value;
    else if (key == CellY)
        georeference.metresY = value;
}

void readTransform(const QString &text, Georeference &georeference)
{
    const QStringList parts = text.split(QLatin1Char(','));
    GeoTransform transform{};
    for (std::size_t i = 0; i < transform.size(); ++i) {
        bool isNumber = false;
        transform[i] = parts.value(qsizetype(i)).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(transform[i]))
            return;
    }
    georeference.transform = transform;
}

// Items of bands stand deeper than those of the whole picture, which alone count.
bool readAuxiliary(const QByteArray &text, Georeference &georeference)
{
    QXmlStreamReader xml(text);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("PAMDataset"))
        return false;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("SRS")) {
            georeference.crs = xml.readElementText();
        } else if (xml.name() == QLatin1String("GeoTransform")) {
            readTransform(xml.readElementText(), georeference);
        } else if (xml.name() == QLatin1String("Metadata")) {
            while (xml.readNextStartElement())
                readItem(xml, georeference);
        } else {
            xml.skipCurrentElement();
        }
    }
    return !xml.hasError();
}

bool isGeographic(const QString &crs)
{
    const QString start = crs.trimmed().left(8).toUpper();
    return start.startsWith(QLatin1String("GEOG"));
}

// Cells of files of other programs: metres, or degrees of a system of longitudes.
void findMetres(const QSize &size, Georeference &georeference)
{
    constexpr double MetresPerDegree = 111319.49079327358; // of the equator
    const GeoTransform &t = georeference.transform;
    if (georeference.metresX > 0.0 || t[1] == 0.0 || t[5] == 0.0)
        return;
    double perX = 1.0;
    double perY = 1.0;
    if (isGeographic(georeference.crs)) {
        const double middle = t[3] + t[5] * size.height() / 2;
        perY = MetresPerDegree;
        perX = MetresPerDegree * std::max(std::cos(middle * (Pi / 180.0)), 0.001);
    }
    georeference.metresX = std::hypot(t[1] * perX, t[4] * perY);
    georeference.metresY = std::hypot(t[2] * perX, t[5] * perY);
}

} // namespace

Georeference georeferenceOf(const OutputGrid &grid, const QSize &size)
{
    const double x = double(grid.size.width()) / size.width();
    const double y = double(grid.size.height()) / size.height();
    const GeoTransform &t = grid.transform;
    Georeference georeference;
    georeference.transform = {t[0], t[1] * x, t[2] * y, t[3], t[4] * x, t[5] * y};
    georeference.crs = grid.crs;
    georeference.metresX = grid.metresX * x;
    georeference.metresY = grid.metresY * y;
    return georeference;
}

QString worldFileName(const QString &picture)
{
    // The first and the last letter of the picture's ending, and a w.
    const QString suffix = QFileInfo(picture).suffix();
    const QString letters =
        suffix.isEmpty() ? QString() : QString(suffix.front()) + suffix.back();
    return baseOf(picture) + QLatin1Char('.') + letters + QLatin1Char('w');
}

QString projectionFileName(const QString &picture)
{
    return baseOf(picture) + QLatin1String(".prj");
}

QString auxiliaryFileName(const QString &picture)
{
    return picture + QLatin1String(".aux.xml");
}

QByteArray worldFileText(const GeoTransform &transform)
{
    const auto &t = transform;
    QByteArray text;
    for (const double number :
         {t[1], t[4], t[2], t[5], t[0] + t[1] / 2 + t[2] / 2, t[3] + t[4] / 2 + t[5] / 2})
        text += textOf(number).toLatin1() + '\n';
    return text;
}

QByteArray auxiliaryFileText(const Georeference &georeference)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartElement(QStringLiteral("PAMDataset"));
    if (!georeference.crs.isEmpty())
        xml.writeTextElement(QStringLiteral("SRS"), georeference.crs);
    QStringList numbers;
    for (const double number : georeference.transform)
        numbers.append(textOf(number));
    xml.writeTextElement(QStringLiteral("GeoTransform"),
                         numbers.join(QLatin1String(", ")));
    xml.writeStartElement(QStringLiteral("Metadata"));
    if (georeference.metresPerHeightUnit)
        writeItem(xml, HeightUnit, *georeference.metresPerHeightUnit);
    writeItem(xml, CellX, georeference.metresX);
    writeItem(xml, CellY, georeference.metresY);
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndDocument();
    return text;
}

Result<Georeference> readSidecars(const QString &picture, const QSize &size)
{
    Georeference georeference;
    georeference.metresX = 0.0;
    georeference.metresY = 0.0;
    if (const auto text = contentsOf(worldFileName(picture)))
        readWorldFile(*text, georeference);
    const QString auxiliary = auxiliaryFileName(picture);
    if (const auto text = contentsOf(auxiliary))
        if (!readAuxiliary(*text, georeference))
            return failed(QCoreApplication::translate(
                              "Terrain", "\"%1\" is no auxiliary file of a picture.")
                              .arg(auxiliary));
    findMetres(size, georeference);
    return georeference;
}
