#include "document/scenerydelegate.h"

#include "base/wholefile.h"
#include "document/scenerymdichild.h"
#include "patheditors/setflightpathdialog.h"
#include "render/terrainsweep.h"
#include "run/framewriter.h"
#include "scene/inputfile.h"
#include "scene/keyvalue.h"
#include "scene/scenerydata.h"
#include "scene/sceneryreader.h"
#include "scene/scenerywriter.h"
#include "scene/waypointlevel.h"
#include "views/usernotices.h"

#include <QDebug>
#include <QFileInfo>
#include <QTextStream>

namespace {

MessageBoxNotices messageBoxes;

// Far beyond every scenery. What is larger is no scenery, such as a device that gives
// zeros without end, and would take all memory or all day.
constexpr qint64 MostBytes = qint64(64) << 20;
constexpr qsizetype MostCharacters = 1048576; // of a line
constexpr qsizetype MostQuoted = 200;

QString tooLargeText()
{
    return SceneryDelegate::tr("The file has more than %1 MB").arg(MostBytes >> 20);
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

// Inputs are looked for beside the scenery also after the current folder has changed.
QString absolutePath(const QString &name)
{
    return name.isEmpty() ? name : QFileInfo(name).absoluteFilePath();
}

QString obsoleteFormatText(bool selected)
{
    return selected
               ? SceneryDelegate::tr(
                     "The YUV output image format selected in this input file is no "
                     "longer accepted.\nThe PNG format is selected instead.\nIf you wish "
                     "to select another format, please do so in the main dialog.")
               : SceneryDelegate::tr(
                     "The YUV output image format specified in this input file is no "
                     "longer accepted.\nThe YUV format specifier will be omitted when "
                     "this ZPH file is saved.");
}

} // namespace

SceneryDelegate::SceneryDelegate(SceneryMdiChild *owner)
    : sweep(std::make_unique<TerrainSweep>()), view(owner),
      data(std::make_unique<SceneryData>()), notices(&messageBoxes)
{
    dataToView();
}

SceneryDelegate::~SceneryDelegate() = default;

void SceneryDelegate::setNotices(UserNotices *other) { notices = other; }

void SceneryDelegate::setModified(bool isModified)
{
    modified = isModified;
    qDebug("setModified(%s)", isModified ? "true" : "false");
}

void SceneryDelegate::setModified()
{
    modified = true;
    qDebug("setModified()");
}

QString SceneryDelegate::inputFile(const QString &name) const
{
    const QString folder =
        fileName().isEmpty() ? QString() : QFileInfo(fileName()).absolutePath();
    return findInputFile(name, folder);
}

// --- Loading -----------------------------------------------------------------------

bool SceneryDelegate::open(const QString &fileName)
{
    close(); // a reading for which memory ran out left it open
    setFileName(absolutePath(fileName));
    if (!open(ReadOnly | Text))
        return false;
    if (size() > MostBytes) {
        close();
        setErrorString(tooLargeText());
        return false;
    }
    waypoints.clear();
    controlPoints.clear();
    waypointLevel = 0;
    data->AusgabePNG = false;

    QString complaint; // reading on resets the error string
    const bool good = readLines(&complaint);
    waypointLevel = normalizeWaypoints(waypoints, static_cast<int>(controlPoints.size()));
    dataToView();
    setModified(false); // the form's change signals have just said otherwise
    close();
    if (!good)
        setErrorString(complaint);
    return good;
}

bool SceneryDelegate::readLines(QString *complaint)
{
    bool good = true;
    const auto refuse = [&](const QString &text) {
        *complaint = text;
        return good = false;
    };
    QTextStream stream(this);
    QString line;
    qint64 length = 0; // read so far; a device does not tell its size
    // An empty line ends the reading, as the end of the file does.
    while (stream.readLineInto(&line, MostCharacters + 1) && !line.isEmpty()) {
        length += line.size() + 1;
        if (line.size() > MostCharacters)
            return refuse(tr("Line too long: %1").arg(beginningOf(line)));
        if (length > MostBytes)
            return refuse(tooLargeText());
        compactLine(line);
        if (!processLineLoad(line))
            refuse(errorString());
    }
    if (error() != NoError) // the file may fail in its middle
        refuse(errorString());
    return good;
}

void SceneryDelegate::compactLine(QString &line) { compactKey(line); }

bool SceneryDelegate::processLineLoad(const QString &line)
{
    using Result = SceneryReader::Result;
    SceneryReader reader(*data, controlPoints, waypoints);
    QString error;
    const Result result = reader.readLine(line, &error);
    headSeen |= reader.headSeen();
    if (result == Result::Rejected)
        setErrorString(error);
    if (result == Result::ObsoleteFormatOff || result == Result::ObsoleteFormatOn)
        notices->information(view, tr("Obsolete Output Image Format"),
                             obsoleteFormatText(result == Result::ObsoleteFormatOn));
    return result != Result::Rejected;
}

// --- Single keys -------------------------------------------------------------------

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

// --- Saving ------------------------------------------------------------------------

bool SceneryDelegate::save(const QString &fileName)
{
    setFileName(absolutePath(fileName));
    return save();
}

bool SceneryDelegate::save()
{
    QString error;
    const bool saved = writeWholeFile(
        fileName(),
        [this](QIODevice &device) {
            viewToData();
            QTextStream stream(&device);
            writeScenery(stream, *data, waypoints, controlPoints);
            stream.flush();
            return stream.status() == QTextStream::Ok;
        },
        &error);
    if (saved)
        setModified(false);
    else
        setErrorString(error);
    return saved;
}
