#include "document/scenerydelegate.h"

#include "base/wholefile.h"
#include "document/scenerymdichild.h"
#include "patheditors/setflightpathdialog.h"
#include "scene/inputfile.h"
#include "scene/keyvalue.h"
#include "scene/sceneryfile.h"
#include "scene/sceneryreader.h"
#include "scene/scenerywriter.h"
#include "views/usernotices.h"

#include <QDebug>
#include <QFileInfo>
#include <QTextStream>

namespace {

MessageBoxNotices messageBoxes;

// Inputs are looked for beside the scenery also after the current folder has changed.
QString absolutePath(const QString &name)
{
    return name.isEmpty() ? name : QFileInfo(name).absoluteFilePath();
}

} // namespace

SceneryDelegate::SceneryDelegate(SceneryMdiChild *owner)
    : view(owner), notices(&messageBoxes)
{
    limitFields();
    dataToView();
}

SceneryDelegate::~SceneryDelegate() = default;

void SceneryDelegate::setNotices(UserNotices *other) { notices = other; }

void SceneryDelegate::setModified(bool isModified)
{
    modified = isModified;
    qDebug("setModified(%s)", isModified ? "true" : "false");
    emit changed();
}

void SceneryDelegate::setModified()
{
    modified = true;
    qDebug("setModified()");
    emit changed();
}

QString SceneryDelegate::folder() const
{
    return fileName().isEmpty() ? QString() : QFileInfo(fileName()).absolutePath();
}

QString SceneryDelegate::inputFile(const QString &name) const
{
    return findInputFile(name, folder());
}

void SceneryDelegate::setExtras(const SceneryExtras &extras)
{
    if (scenery.extras == extras)
        return;
    scenery.extras = extras;
    setModified();
    emit extrasChanged();
}

// --- Loading -----------------------------------------------------------------------

bool SceneryDelegate::open(const QString &fileName)
{
    close(); // a reading for which memory ran out left it open
    setFileName(absolutePath(fileName));
    if (!open(ReadOnly | Text))
        return false;
    const Result<SceneryReading> reading = readScenery(*this, scenery);
    const bool good = reading && take(*reading);
    close();
    if (!good)
        setErrorString(reading ? reading->complaint : reading.error().text);
    return good;
}

bool SceneryDelegate::take(const SceneryReading &reading)
{
    for (const bool selected : reading.obsoleteFormats)
        tellObsoleteFormat(selected);
    const bool otherExtras = reading.document.extras != scenery.extras;
    scenery = reading.document;
    headSeen |= reading.headSeen;
    toldOfExtras = reading.extrasTold;
    dataToView();
    setModified(false); // the form's change signals have just said otherwise
    if (otherExtras)
        emit extrasChanged();
    return reading.complaint.isEmpty();
}

void SceneryDelegate::tellObsoleteFormat(bool selected)
{
    notices->information(view, obsoleteFormatTitle(), obsoleteFormatText(selected));
}

void SceneryDelegate::compactLine(QString &line) { compactKey(line); }

bool SceneryDelegate::processLineLoad(const QString &line)
{
    SceneryReader reader(scenery);
    const Result<SceneryReader::Line> taken = reader.readLine(line);
    headSeen |= reader.headSeen();
    if (!taken)
        setErrorString(taken.error().text);
    else if (*taken != SceneryReader::Line::Plain)
        tellObsoleteFormat(*taken == SceneryReader::Line::ObsoleteFormatOn);
    return taken.has_value();
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
            writeScenery(stream, scenery);
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
