#include "views/windowplace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <limits>

/// Stored places of windows, seen from a screen of 800 by 800.
class TestWindowPlace : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::screens().size(), 1);
        QCOMPARE(QGuiApplication::primaryScreen()->availableGeometry(),
                 QRect(0, 0, 800, 800));
    }
    void placesThatCanBeReachedStay_data();
    void placesThatCanBeReachedStay();
    void placesOffTheScreenComeBack_data();
    void placesOffTheScreenComeBack();
};

namespace {

constexpr QSize Size(400, 300);

} // namespace

void TestWindowPlace::placesThatCanBeReachedStay_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("inside") << QPoint(200, 200);
    QTest::newRow("corner") << QPoint(0, 0);
    QTest::newRow("partly left") << QPoint(-390, 10);
    QTest::newRow("partly right") << QPoint(799, 10);
    QTest::newRow("partly below") << QPoint(10, 790);
    QTest::newRow("title partly above") << QPoint(10, -20);
}

void TestWindowPlace::placesThatCanBeReachedStay()
{
    QFETCH(QPoint, place);
    QCOMPARE(reachablePlace(place, Size), place);
}

void TestWindowPlace::placesOffTheScreenComeBack_data()
{
    constexpr int Low = std::numeric_limits<int>::min();
    constexpr int High = std::numeric_limits<int>::max();
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("back");
    // A border of 4 and a title of 24 stand around the window.
    QTest::newRow("left") << QPoint(-408, 10) << Size << QPoint(0, 10);
    QTest::newRow("right") << QPoint(800, 10) << Size << QPoint(392, 10);
    QTest::newRow("below") << QPoint(10, 800) << Size << QPoint(10, 472);
    QTest::newRow("title above") << QPoint(10, -100) << Size << QPoint(10, 0);
    QTest::newRow("far") << QPoint(5000, -7000) << Size << QPoint(392, 0);
    QTest::newRow("farthest") << QPoint(High, Low) << Size << QPoint(392, 0);
    QTest::newRow("larger than the screen")
        << QPoint(-3000, 900) << QSize(2000, 1000) << QPoint(0, 0);
    QTest::newRow("without a size") << QPoint(900, 900) << QSize() << QPoint(792, 772);
}

void TestWindowPlace::placesOffTheScreenComeBack()
{
    QFETCH(QPoint, place);
    QFETCH(QSize, size);
    QTEST(reachablePlace(place, size), "back");
}

QTEST_MAIN(TestWindowPlace)
#include "test_windowplace.moc"
