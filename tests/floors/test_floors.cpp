// Reads the plan of the house, all includes of the sources and what CMake links. The rows
// of the first function are small houses with one mistake each.
#include "floors/floors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString Page = QStringLiteral("# A house\n\n"
                                    "```\n"
                                    "ground, water   earth / what flows\n"
                                    "hall            where people meet\n"
                                    "```\n"
                                    "```toolkit\n"
                                    "Qt6::Core    ground, water\n"
                                    "Qt6::Widgets hall\n"
                                    "```\n"
                                    "```\n"
                                    "+--a picture--+\n"
                                    "```\n");

const QString LinkTable = QStringLiteral("public ground Qt6::Core\n"
                                         "public water Qt6::Core\n"
                                         "public hall ground\n"
                                         "private hall water\n"
                                         "public hall Qt6::Widgets\n"
                                         "private hall warnings\n");

void add(const QDir &tree, const QString &file, const QString &text)
{
    QVERIFY(tree.mkpath(QFileInfo(file).path()));
    QFile out(tree.filePath(file));
    QVERIFY(out.open(QIODevice::Append));
    out.write(text.toUtf8() + '\n');
}

/// A house without a fault: headers of three folders, and headers of a toolkit.
void build(const QDir &tree)
{
    add(tree, "src/ground/stone.h", "#include <QString>\n#include <vector>");
    add(tree, "src/ground/stone.cpp", "#include \"ground/stone.h\"");
    add(tree, "src/water/well.h", "#include <QtCore/QString>");
    add(tree, "src/water/well.cpp", "#include \"water/well.h\"");
    add(tree, "src/hall/door.h", "#include \"ground/stone.h\"\n#include <QWidget>");
    add(tree, "src/hall/door.cpp",
        "#include \"hall/door.h\"\n#include \"water/well.h\"\n"
        "#include \"ui_door.h\"");
    add(tree, "toolkit/QtCore/QString", {});
    add(tree, "toolkit/QtGui/QImage", {});
    add(tree, "toolkit/QtWidgets/QWidget", {});
}

QStringList allFaults(const QString &page, const QString &table, const QDir &top,
                      const Sources &outside = {})
{
    const Plan plan = planOf(page);
    const Links links = linksOf(table);
    const Sources sources = sourcesBelow(top.filePath(QStringLiteral("src")));
    return strangers(plan, sources) + wrongArrows(plan, links, sources) +
           unlinkedIncludes(links, sources) + unusedLinks(plan, links, sources) +
           toolkitFaults(plan, links, sources) + lonelyHeaders(sources, outside);
}

QString textOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestFloors : public QObject {
    Q_OBJECT

private slots:
    void oneMistakeIsFound_data();
    void oneMistakeIsFound();
    void aCleanHouseHasNone();
    void sourcesKeepTheirFloors();
};

void TestFloors::oneMistakeIsFound_data()
{
    QTest::addColumn<QString>("file"); // gets a line more
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("links"); // lines more of the table
    QTest::addColumn<QString>("fault"); // how one of those that are told begins
    const auto row = [](const char *name, const char *file, const char *line,
                        const char *links, const char *fault) {
        QTest::newRow(name) << QString(file) << QString(line) << QString(links)
                            << QString(fault);
    };
    row("an include that runs up", "src/ground/stone.cpp", "#include \"hall/door.h\"", "",
        "ground/stone.cpp includes \"hall/door.h\", which stands no lower");
    row("an include that runs sideways", "src/ground/stone.cpp",
        "#include \"water/well.h\"", "",
        "ground/stone.cpp includes \"water/well.h\", which stands no lower");
    row("an include behind blanks", "src/ground/stone.cpp",
        "  #  include \"hall/door.h\"", "",
        "ground/stone.cpp includes \"hall/door.h\", which stands no lower");
    row("an include of what is not linked", "src/ground/stone.cpp",
        "#include \"water/well.h\"", "",
        "ground/stone.cpp includes \"water/well.h\", which its folder does not link");
    row("an include of a private link in a header", "src/hall/door.h",
        "#include \"water/well.h\"", "",
        "hall/door.h includes \"water/well.h\", which its folder links privately");
    row("an include without its folder", "src/hall/door.cpp", "#include \"door.h\"", "",
        "hall/door.cpp includes \"door.h\", which begins with no folder");
    row("a link that runs up", "", "", "private ground hall\n",
        "ground links hall, which stands no lower");
    row("a link that nothing uses", "", "", "private hall Qt6::Gui\n",
        "hall links Qt6::Gui and does not use it");
    row("a folder without a place", "src/roof/tile.cpp", "", "",
        "roof stands on no floor");
    row("a header that nobody includes", "src/hall/window.h",
        "#include \"hall/window.h\"", "", "nobody includes hall/window.h");
    row("widgets on the ground", "src/ground/stone.cpp", "#include <QWidget>", "",
        "ground/stone.cpp includes <QWidget>, which is of Qt6::Widgets");
    row("widgets by their folder", "src/ground/stone.cpp", "#include <QtWidgets/QWidget>",
        "", "ground/stone.cpp includes <QtWidgets/QWidget>, which is of Qt6::Widgets");
    row("all widgets", "src/ground/stone.cpp", "#include <QtWidgets>", "",
        "ground/stone.cpp includes <QtWidgets>, which is of Qt6::Widgets");
    row("a form on the ground", "src/ground/stone.cpp", "#include \"ui_door.h\"", "",
        "ground/stone.cpp includes <ui_door.h>, which is of Qt6::Widgets");
    row("pictures where only the core is", "src/ground/stone.cpp", "#include <QImage>",
        "", "ground/stone.cpp includes <QImage>, which is of Qt6::Gui");
    row("a link to the widgets", "src/water/well.cpp", "#include <QWidget>",
        "private water Qt6::Widgets\n",
        "water links Qt6::Widgets, and is told under \"Qt6::Core\"");
}

void TestFloors::oneMistakeIsFound()
{
    QFETCH(QString, file);
    QFETCH(QString, line);
    QFETCH(QString, links);
    QFETCH(QString, fault);
    const QTemporaryDir folder;
    const QDir tree(folder.path());
    build(tree);
    if (!file.isEmpty())
        add(tree, file, line);
    QString table = LinkTable + links;
    for (const char *module : {"Core", "Gui", "Widgets"})
        table += QStringLiteral("headers Qt6::%1 %2/toolkit/Qt%1\n")
                     .arg(QLatin1String(module), folder.path());
    const QStringList faults = allFaults(Page, table, tree);
    QVERIFY2(faults.contains(fault), qPrintable(faults.join(QLatin1Char('\n'))));
}

void TestFloors::aCleanHouseHasNone()
{
    const QTemporaryDir folder;
    const QDir tree(folder.path());
    build(tree);
    QString table = LinkTable;
    table += QStringLiteral("headers Qt6::Core %1/toolkit/QtCore\n"
                            "headers Qt6::Widgets %1/toolkit/QtWidgets\n")
                 .arg(folder.path());
    QCOMPARE(allFaults(Page, table, tree), QStringList());

    const QString named = QString(Page).replace(QLatin1String("ground, water "),
                                                QLatin1String("ground, water, air "));
    QVERIFY(allFaults(named, table, tree).contains("air is no folder with sources"));
    const QString twice =
        QString(Page).replace(QLatin1String("hall  "), QLatin1String("hall, water  "));
    QVERIFY(allFaults(twice, table, tree).contains("water stands twice"));
    // A folder that needs less than it is told to.
    const QString less =
        QString(table).replace(QLatin1String("public hall Qt6::Widgets\n"), QString());
    QVERIFY(allFaults(Page, less, tree)
                .contains("hall links Qt6::Core, and is told under \"Qt6::Widgets\""));
}

void TestFloors::sourcesKeepTheirFloors()
{
    const QDir top(qEnvironmentVariable("ZEPHRANT_SOURCE"));
    const QString page = textOf(top.filePath(QStringLiteral("docs/architecture.md")));
    const QString table = textOf(qEnvironmentVariable("ZEPHRANT_LINKS"));
    QVERIFY2(planOf(page).floors.size() > 5, "no plan");
    QVERIFY2(linksOf(table).headers.size() == 3, "no link table");
    Sources outside;
    for (const char *folder : {"tests", "bench", "examples"})
        outside.includes += sourcesBelow(top.filePath(QLatin1String(folder))).includes;
    const QStringList faults = allFaults(page, table, top, outside);
    QVERIFY2(faults.isEmpty(),
             qPrintable(QLatin1Char('\n') + faults.join(QLatin1Char('\n'))));
}

QTEST_APPLESS_MAIN(TestFloors)
#include "test_floors.moc"
