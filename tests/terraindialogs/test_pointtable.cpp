#include "terraindialogs/pointtable.h"

#include <QTest>

class TestPointTable : public QObject {
    Q_OBJECT

private slots:
    // A file without a line end is one line of very many fields.
    void aVeryWideLineIsShownInPart()
    {
        PointPreview preview;
        preview.columns = 500000;
        QStringList fields;
        for (int k = 0; k < preview.columns; ++k)
            fields << QString::number(k);
        preview.rows = {fields, {"7", "8"}};
        preview.format.columns = {0, 1, 499999};
        PointTable table;
        table.setPreview(preview);
        QCOMPARE(table.columnCount(), 500);
        QCOMPARE(table.rowCount(), 2);
        QCOMPARE(table.item(0, 499)->text(), "499");
        QCOMPARE(table.item(1, 1)->text(), "8");
        QCOMPARE(table.item(1, 2)->text(), "");
        QVERIFY(table.horizontalHeaderItem(1)->text().endsWith("= y"));
    }

    void aNarrowOneIsShownWhole()
    {
        PointPreview preview;
        preview.columns = 4;
        preview.rows = {{"1", "2", "3", "4"}};
        preview.format.columns = {1, 2, 3};
        PointTable table;
        table.setPreview(preview);
        QCOMPARE(table.columnCount(), 4);
        QVERIFY(table.horizontalHeaderItem(3)->text().endsWith("= z"));
        QVERIFY(!table.horizontalHeaderItem(0)->text().contains('='));
    }
};

QTEST_MAIN(TestPointTable)
#include "test_pointtable.moc"
