#include "scene/sceneryfile.h"

#include "scene/extrassection.h"
#include "scene/keyvalue.h"
#include "scene/quotedline.h"
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

QString tooLargeText()
{
    return QCoreApplication::translate("SceneryDelegate", "The file has more than %1 MB")
        .arg(MostBytes >> 20);
}

QString tooLongText(const QString &line)
{
    return QCoreApplication::translate("SceneryDelegate", "Line too long: %1")
        .arg(beginningOf(line));
}

void takeLine(QString &line, SceneryReader &reader, SceneryReading &reading)
{
    compactKey(line);
    const Result<SceneryReader::Line> taken = reader.readLine(line);
    if (!taken)
        reading.complaint = taken.error().text;
    else if (*taken != SceneryReader::Line::Plain)
        reading.obsoleteFormats.append(*taken == SceneryReader::Line::ObsoleteFormatOn);
}

// The lines of a file, within the limits of its size.
class LineSource {
public:
    explicit LineSource(QFileDevice &file) : m_stream(&file) {}

    [[nodiscard]] bool next(QString &line)
    {
        if (!m_stream.readLineInto(&line, MostCharacters + 1))
            return false;
        m_length += line.size() + 1;
        if (line.size() > MostCharacters)
            m_complaint = tooLongText(line);
        else if (m_length > MostBytes)
            m_complaint = tooLargeText();
        return m_complaint.isEmpty();
    }
    /// Why the lines ended ahead of the file's end.
    [[nodiscard]] const QString &complaint() const { return m_complaint; }

private:
    QTextStream m_stream;
    qint64 m_length = 0; // read so far; a device does not tell its size
    QString m_complaint;
};

// An empty line ends the told part, as the end of the file does.
void readToldPart(LineSource &lines, SceneryReading &reading)
{
    SceneryReader reader(reading.document);
    QString line;
    while (lines.next(line) && !line.isEmpty())
        takeLine(line, reader, reading);
    reading.headSeen = reader.headSeen();
}

void readExtras(LineSource &lines, SceneryReading &reading)
{
    ExtrasReader reader(reading.document.extras);
    QString line;
    while (lines.next(line))
        reader.readLine(line);
    reading.extrasTold = reader.told();
    // What stands ahead of the section may be as large as it wants.
    if (reader.hasBegun() && !lines.complaint().isEmpty())
        reading.complaint = lines.complaint();
}

void readLines(QFileDevice &file, SceneryReading &reading)
{
    LineSource lines(file);
    readToldPart(lines, reading);
    if (lines.complaint().isEmpty())
        readExtras(lines, reading);
    else
        reading.complaint = lines.complaint();
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
