#pragma once

#include "scene/scenerydocument.h"
#include "scene/sceneryfile.h"
#include "scene/scenerywriter.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

/// The text of the file of a scenery.
inline QString written(const SceneryDocument &document)
{
    QString text;
    QTextStream stream(&text);
    writeScenery(stream, document);
    return text;
}

/// What a file with this text gives.
inline Result<SceneryReading> readText(const QByteArray &text,
                                       const SceneryDocument &present = {})
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("s.zph"));
    if (!file.open(QIODevice::ReadWrite) || file.write(text) != text.size())
        return failed("no file");
    file.close();
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return failed("cannot be opened");
    return readScenery(file, present);
}
