#include "scene/sceneryfile.h"

#include "scene/keyvalue.h"
#include "scene/sceneryreader.h"
#include "scene/waypointlevel.h"

#include <QCoreApplication>
#include <QFileDevice>
#include <QTextStream>

namespace {

// Far beyond every scenery. What is larger is no scenery, such as a device that gives
// zeros without end, and would take all memory or all day.
constexpr qint64 MostBytes = qint64(64) << 20;
constexpr qsizetype MostCharacters = 1048576; // of a line
constexpr qsizetype MostQuoted = 200;

QString tooLargeText()
{
    return QCoreApplication::translate("SceneryDelegate", "The file has more than %1 MB")
        .arg(MostBytes >> 20);
}

// As much of a line as a message box can show.
QString beginningOf(const QString &line)
{
    QString text = line.left(MostQuoted);
    for (QChar &c : text)
        if (!c.isPrint())
            c = QChar::ReplacementCharacter;
    return text;
}

QString tooLongText(const QString &line)
{
    return QCoreApplication::translate("SceneryDelegate", "Line too long: %1")
        .arg(beginningOf(line));
}

void takeLine(QString &line, SceneryReader &reader, SceneryReading &reading)
{
    using Line = SceneryReader::LineResult;
    compactKey(line);
    QString complaint;
    const Line result = reader.readLine(line, &complaint);
    if (result == Line::Rejected)
        reading.complaint = complaint;
    if (result == Line::ObsoleteFormatOff || result == Line::ObsoleteFormatOn)
        reading.obsoleteFormats.append(result == Line::ObsoleteFormatOn);
}

// An empty line ends the reading, as the end of the file does.
void readLines(QFileDevice &file, SceneryReading &reading)
{
    SceneryReader reader(reading.document);
    QTextStream stream(&file);
    QString line;
    qint64 length = 0; // read so far; a device does not tell its size
    while (stream.readLineInto(&line, MostCharacters + 1) && !line.isEmpty()) {
        length += line.size() + 1;
        if (line.size() > MostCharacters)
            reading.complaint = tooLongText(line);
        else if (length > MostBytes)
            reading.complaint = tooLargeText();
        else {
            takeLine(line, reader, reading);
            continue;
        }
        break;
    }
    reading.headSeen = reader.headSeen();
}

} // namespace

Result<SceneryReading> readScenery(QFileDevice &file, const SceneryDocument &present)
{
    if (file.size() > MostBytes)
        return failed(tooLargeText());
    SceneryReading reading;
    SceneryDocument &document = reading.document;
    document.parameters = present.parameters;
    document.parameters.AusgabePNG = false;
    readLines(file, reading);
    if (file.error() != QFileDevice::NoError) // the file may fail in its middle
        reading.complaint = file.errorString();
    document.waypointLevel = normalizeWaypoints(
        document.waypoints, static_cast<int>(document.controlPoints.size()));
    return reading;
}

QString obsoleteFormatTitle()
{
    return QCoreApplication::translate("SceneryDelegate", "Obsolete Output Image Format");
}

QString obsoleteFormatText(bool selected)
{
    return selected
               ? QCoreApplication::translate(
                     "SceneryDelegate",
                     "The YUV output image format selected in this input file is no "
                     "longer accepted.\nThe PNG format is selected instead.\nIf you wish "
                     "to select another format, please do so in the main dialog.")
               : QCoreApplication::translate(
                     "SceneryDelegate",
                     "The YUV output image format specified in this input file is no "
                     "longer accepted.\nThe YUV format specifier will be omitted when "
                     "this ZPH file is saved.");
}
