#include "document/framecases.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

bool FrameCase::isPreview() const
{
    return options.contains(QStringLiteral("--preview"));
}

QString FrameCase::pathOf(const QString &frame) const
{
    return QStringLiteral("frames/%1/%2").arg(scene.section('.', 0, 0), frame);
}

QList<FrameCase> frameCases(const QDir &folder)
{
    QFile manifest(folder.filePath(QStringLiteral("manifest.json")));
    QList<FrameCase> cases;
    if (!manifest.open(QIODevice::ReadOnly))
        return cases;
    for (const QJsonValue &entry : QJsonDocument::fromJson(manifest.readAll()).array()) {
        FrameCase one;
        one.scene = entry[QStringLiteral("scene")].toString();
        one.options =
            entry[QStringLiteral("options")].toString().split(' ', Qt::SkipEmptyParts);
        for (const QJsonValue &frame : entry[QStringLiteral("frames")].toArray())
            one.frames.append(frame.toString());
        cases.append(one);
    }
    return cases;
}

void storeSettings(const FrameCase &one)
{
    QSettings settings(QStringLiteral("Zephrant"), QString());
    settings.clear();
    for (const QString &name :
         {QStringLiteral("Quarter"), QStringLiteral("Antialiasing")}) {
        const qsizetype at = one.options.indexOf(QStringLiteral("--") + name.toLower());
        if (at >= 0)
            settings.setValue(QStringLiteral("Settings/") + name,
                              one.options.value(at + 1).toInt());
    }
}
