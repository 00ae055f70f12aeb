// The templates work, so that a copy of them begins with something that does.
#include "support/patience.h"
#include "template/templatedock.h"
#include "template/templateimport.h"
#include "template/templatetool.h"

#include <QBuffer>
#include <QLabel>
#include <QtTest>

namespace {

// Two columns, two rows: 1, -2; unknown, 256.
const QByteArray TwoRows = QByteArray::fromHex("02000200"
                                               "0100feff"
                                               "00800001");

Result<ElevationImage> imported(QByteArray bytes, Progress &progress)
{
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    return importTemplate(in, {}, QStringLiteral("small.raw"), progress);
}

Result<ElevationImage> imported(const QByteArray &bytes)
{
    NoProgress nobody;
    return imported(bytes, nobody);
}

} // namespace

class TestTemplates : public QObject {
    Q_OBJECT

private slots:
    void rowsRunFromTheNorth();
    void everyCutFileIsToldByName();
    void aSizeOfNoRowsIsTold();
    void stoppedImportGivesNothing();
    void terrainIsTurnedUpsideDown();
    void aDockIsHiddenUntilItIsAskedFor();
};

void TestTemplates::rowsRunFromTheNorth()
{
    const Result<ElevationImage> image = imported(TwoRows);
    QVERIFY(image);
    QCOMPARE(image->elevation(0, 1), 1.0);
    QCOMPARE(image->elevation(1, 1), -2.0);
    QCOMPARE(image->elevation(0, 0), 0.0);
    QCOMPARE(image->elevation(1, 0), 256.0);
}

void TestTemplates::everyCutFileIsToldByName()
{
    for (qsizetype length = 0; length < TwoRows.size(); ++length) {
        const Result<ElevationImage> image = imported(TwoRows.left(length));
        QVERIFY2(!image, qPrintable(QString::number(length)));
        QVERIFY(image.error().text.contains(QLatin1String("\"small.raw\"")));
    }
}

void TestTemplates::aSizeOfNoRowsIsTold()
{
    const Result<ElevationImage> image = imported(QByteArray::fromHex("02000000"));
    QVERIFY(!image);
    QVERIFY(image.error().text.contains(QLatin1String("no rows")));
}

void TestTemplates::stoppedImportGivesNothing()
{
    Patience oneRow(1);
    const Result<ElevationImage> image = imported(TwoRows, oneRow);
    QVERIFY(!image && image.error().stopped);
}

void TestTemplates::terrainIsTurnedUpsideDown()
{
    NoProgress nobody;
    ElevationImage image = imported(TwoRows).value();
    image.setElevation(0, 0, ElevationImage::LowestStep);
    const Result<ElevationImage> turned = turnUpsideDown(image, nobody);
    QVERIFY(turned);
    QCOMPARE(turned->elevation(1, 1), 2.0);
    QCOMPARE(turned->elevation(1, 0), -256.0);
    QCOMPARE(turned->elevation(0, 1), double(ElevationImage::HighestStep));
    Patience none(0);
    QVERIFY(turnUpsideDown(image, none).error().stopped);
}

void TestTemplates::aDockIsHiddenUntilItIsAskedFor()
{
    TemplateDock dock;
    QVERIFY(dock.isHidden());
    dock.setSentence(QStringLiteral("<b>.zph"));
    const auto *const label = dock.findChild<QLabel *>(QStringLiteral("labelSentence"));
    QCOMPARE(label->text(), QStringLiteral("<b>.zph"));
    for (const QString &help :
         {label->toolTip(), label->whatsThis(), label->accessibleName()})
        QVERIFY(!help.isEmpty());
}

QTEST_MAIN(TestTemplates)
#include "test_templates.moc"
