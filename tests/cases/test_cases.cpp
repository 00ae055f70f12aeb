// Every importer and every tool on inputs whose outputs were worked out by hand.

#include "cases/casefile.h"
#include "cases/importcases.h"
#include "cases/toolcases.h"

#include <QDir>
#include <QSet>
#include <QTest>

class TestCases : public QObject {
    Q_OBJECT

private slots:
    void outputsAreMet_data();
    void outputsAreMet();
    void everyToolHasACase();
    void aWrongPixelIsSeen();

private:
    QDir m_folder{qEnvironmentVariable("ZEPHRANT_SOURCE") + "/tests/cases"};
};

void TestCases::outputsAreMet_data()
{
    QTest::addColumn<QString>("fileName");
    for (const QString &name : m_folder.entryList({"*.case"}, QDir::Files, QDir::Name))
        QTest::newRow(qPrintable(name)) << m_folder.filePath(name);
}

void TestCases::outputsAreMet()
{
    QFETCH(QString, fileName);
    CaseFile file;
    QString error;
    QVERIFY2(file.read(fileName, &error), qPrintable(error));
    const QString tool = file.option("tool").value(0);
    auto *const run = importCase(tool) ? importCase(tool) : toolCase(tool);
    QVERIFY2(run, qPrintable("unknown tool " + tool));
    const QString difference = run(file);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestCases::everyToolHasACase()
{
    QSet<QString> tools;
    for (const QString &name : m_folder.entryList({"*.case"}, QDir::Files)) {
        CaseFile file;
        QString error;
        QVERIFY(file.read(m_folder.filePath(name), &error));
        tools.insert(file.option("tool").value(0));
    }
    for (const char *const tool :
         {"ascii-regular", "ascii-irregular", "usgs-dem", "binary-dem", "sdts",
          "japan-dem", "delaunay", "scan-triangles", "elevation-to-color",
          "elevation-to-gray", "gray-to-elevation", "change-blue-0", "convolution",
          "mask", "merge", "resample", "rectify"})
        QVERIFY2(tools.contains(tool), tool);
}

void TestCases::aWrongPixelIsSeen()
{
    CaseFile file;
    QString error;
    QVERIFY(file.read(m_folder.filePath("resample.case"), &error));
    ElevationImage image = file.elevations("expected");
    QCOMPARE(file.differenceOfElevations(image), QString());
    image.setElevation(3, 2, 71);
    QCOMPARE(file.differenceOfElevations(image), QString("(3, 2) is 71, should be 70"));
    QVERIFY(!file.differenceOfElevations(file.elevations("source")).isEmpty());
}

QTEST_GUILESS_MAIN(TestCases)
#include "test_cases.moc"
