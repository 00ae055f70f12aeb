// The window's way to terrain: a module that is loaded at first use.
#include "support/textfile.h"
#include "terrain/terrainmodule.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString moduleFile()
{
    const QDir programs(QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
    return programs.filePath(QLatin1String(TerrainModuleFile));
}

} // namespace

class TestTerrainModule : public QObject {
    Q_OBJECT

private slots:
    void theModuleIsFoundAndTellsItsLibrary();
    void aMissingModuleIsTold();
    void aMissingLibraryIsToldWithItsPackage();
    void aFileThatIsNoModuleIsTold();
    void theProgramsStartWithoutGdal();
    void theModuleShowsOneFunction();
};

void TestTerrainModule::theModuleIsFoundAndTellsItsLibrary()
{
    const auto source = loadTerrainSource();
    QVERIFY2(source, qPrintable(source ? QString() : source.error().text));
    QCOMPARE((*source)->about().value(0), QStringLiteral("GDAL"));
    QVERIFY((*source)->about().value(1).contains(QLatin1Char('.')));
    QVERIFY(!(*source)->canOpen(QStringLiteral("no such file.tif")));
    // Once more is another one.
    const auto other = loadTerrainSource();
    QVERIFY(other && *other != *source);
}

void TestTerrainModule::aMissingModuleIsTold()
{
    const QTemporaryDir folder;
    const auto source = loadTerrainSource({folder.path()});
    QVERIFY(!source);
    QVERIFY(source.error().text.contains(QLatin1String(TerrainModuleFile)));
}

void TestTerrainModule::aMissingLibraryIsToldWithItsPackage()
{
    const QTemporaryDir folder;
    QByteArray module = bytesIn(moduleFile());
    const QByteArray library = QByteArrayLiteral("libgdal.so.");
    const qsizetype at = module.indexOf(library);
    QVERIFY(at > 0);
    module.replace(at + library.size(), 2, "98"); // a version that nobody has
    QFile copy(QDir(folder.path()).filePath(QLatin1String(TerrainModuleFile)));
    QVERIFY(copy.open(QIODevice::WriteOnly));
    copy.write(module);
    copy.close();
    const auto source = loadTerrainSource({folder.path()});
    QVERIFY(!source);
    QVERIFY2(source.error().text.contains(QLatin1String("package \"libgdal98\"")),
             qPrintable(source.error().text));
}

void TestTerrainModule::aFileThatIsNoModuleIsTold()
{
    const QTemporaryDir folder;
    QFile junk(QDir(folder.path()).filePath(QLatin1String(TerrainModuleFile)));
    QVERIFY(junk.open(QIODevice::WriteOnly));
    junk.write("junk");
    junk.close();
    const auto source = loadTerrainSource({folder.path()});
    QVERIFY(!source);
    QVERIFY(
        source.error().text.startsWith(QLatin1String("Terrain files cannot be read: ")));
}

void TestTerrainModule::theProgramsStartWithoutGdal()
{
    for (const char *program : {"zephrant", "zephrant-render"}) {
        const QDir programs(QCoreApplication::applicationDirPath() +
                            QStringLiteral("/.."));
        QProcess ldd;
        ldd.start(QStringLiteral("ldd"), {programs.filePath(QLatin1String(program))});
        QVERIFY(ldd.waitForFinished());
        const QByteArray libraries = ldd.readAllStandardOutput();
        QVERIFY2(libraries.contains("libQt6Core"), program);
        QVERIFY2(!libraries.contains("libgdal"), program);
    }
}

void TestTerrainModule::theModuleShowsOneFunction()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), moduleFile()});
    QVERIFY(nm.waitForFinished());
    QByteArrayList shown;
    for (const QByteArray &line : nm.readAllStandardOutput().split('\n'))
        if (line.contains(" T ") || line.contains(" W ") || line.contains(" V "))
            shown.append(line.mid(line.lastIndexOf(' ') + 1));
    QCOMPARE(shown, QByteArrayList{QByteArrayLiteral("zephrant_terrain_source")});
}

QTEST_GUILESS_MAIN(TestTerrainModule)
#include "test_terrainmodule.moc"
