#include "base/notices.h"
#include "importers/blankelevation.h"

#include <QTest>

#include <cmath>

class TestBlankElevation : public QObject {
    Q_OBJECT

private slots:
    void itHasTheSizeAsked()
    {
        const ElevationImage image = blankElevation(3.9, 2.0);
        QCOMPARE(image.size(), QSize(3, 2));
        QCOMPARE(image.pixel(2, 1), QRgb(0xFF000000));
    }

    void sizesOfJunkAreRefused()
    {
        for (const double side :
             {0.0, -5.0, 0.5, 1e9, 1e300, double(INFINITY), double(NAN)}) {
            QVERIFY(blankElevation(side, 10.0).isNull());
            QVERIFY(blankElevation(10.0, side).isNull());
        }
    }

    void sizeBeyondTheBudgetIsToldOf()
    {
        QStringList told;
        setNoticeSink([&told](const QString &text, NoticeStay) { told += text; });
        qputenv("ZEPHRANT_MEMORY_BUDGET", "2999999");
        QVERIFY(blankElevation(1000, 1000).isNull());
        qputenv("ZEPHRANT_MEMORY_BUDGET", "3000000");
        QVERIFY(!blankElevation(1000, 1000).isNull());
        qunsetenv("ZEPHRANT_MEMORY_BUDGET");
        setNoticeSink({});
        QCOMPARE(told, QStringList(
                           "An elevation file of 1000 x 1000 pixels would take 3.0 MB of "
                           "memory; the budget is 3.0 MB."));
    }
};

QTEST_GUILESS_MAIN(TestBlankElevation)
#include "test_blankelevation.moc"
