#include "terrain/terrainmodule.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QRegularExpression>

namespace {

// From the loader's "libgdal.so.32: cannot open shared object file".
QString whatIsMissing(const QString &error)
{
    static const QRegularExpression gdal(QStringLiteral("libgdal\\.so\\.(\\d+): cannot"));
    static const QRegularExpression other(
        QStringLiteral("(lib[^\\s:/]+\\.so[^\\s:]*): cannot"));
    if (const auto match = gdal.match(error); match.hasMatch())
        return QObject::tr("Terrain files cannot be read: please install the package "
                           "\"libgdal%1\".")
            .arg(match.captured(1));
    if (const auto match = other.match(error); match.hasMatch())
        return QObject::tr("Terrain files cannot be read: the library \"%1\" is missing.")
            .arg(match.captured(1));
    return QObject::tr("Terrain files cannot be read: %1.").arg(error);
}

} // namespace

QStringList terrainModuleFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.path(),
            QDir::cleanPath(program.filePath(QStringLiteral("../lib/zephrant"))),
            QDir::cleanPath(program.filePath(QStringLiteral("..")))};
}

Result<std::unique_ptr<TerrainSource>> loadTerrainSource(const QStringList &folders)
{
    using MakeSource = TerrainSource *(*)();
    for (const QString &folder : folders) {
        const QString file = QDir(folder).filePath(QLatin1String(TerrainModuleFile));
        if (!QFileInfo(file).isFile())
            continue;
        // Its symbols stay its own; nothing of it may go while threads of its run.
        QLibrary module(file);
        module.setLoadHints(QLibrary::PreventUnloadHint);
        const auto make =
            reinterpret_cast<MakeSource>(module.resolve("zephrant_terrain_source"));
        if (!make)
            return failed(whatIsMissing(module.errorString()));
        return std::unique_ptr<TerrainSource>(make());
    }
    return failed(QObject::tr("Terrain files cannot be read: the program's own file "
                              "\"%1\" is missing; please install the package again.")
                      .arg(QLatin1String(TerrainModuleFile)));
}
