#include "raster/textureimage.h"
#include "render/paintlists.h"
#include "render/transformation.h"

#include <QTest>

namespace {

QList<unsigned int> numbers(const PaintLists &lists, int share)
{
    QList<unsigned int> found;
    for (const PaintLists::Entry &entry : lists.of(share))
        found.append(entry.number);
    return found;
}

} // namespace

class TestPaintLists : public QObject {
    Q_OBJECT

private slots:
    // A picture of 100 by 60: strips of 16 rows, of which the last has 12.
    void trianglesGoWhereTheirRowsAre_data()
    {
        QTest::addColumn<int>("top");
        QTest::addColumn<int>("bottom");
        QTest::addColumn<QList<int>>("shares");
        QTest::newRow("first strip") << 0 << 15 << QList<int>{0};
        QTest::newRow("second strip") << 16 << 31 << QList<int>{1};
        QTest::newRow("across an edge") << 15 << 16 << QList<int>{0, 1};
        QTest::newRow("fourth strip is the first's share") << 48 << 59 << QList<int>{0};
        QTest::newRow("third and fourth") << 40 << 50 << QList<int>{0, 2};
        QTest::newRow("once in each") << 0 << 59 << QList<int>{0, 1, 2};
        QTest::newRow("from above the picture") << -300 << 3 << QList<int>{0};
        QTest::newRow("below the picture") << 60 << 70 << QList<int>{};
        QTest::newRow("to below the picture") << 59 << 16384 << QList<int>{0};
        QTest::newRow("above the picture") << -16384 << -1 << QList<int>{};
    }
    void trianglesGoWhereTheirRowsAre()
    {
        QFETCH(int, top);
        QFETCH(int, bottom);
        QFETCH(QList<int>, shares);
        PaintLists lists;
        lists.begin(100, 60, 3);
        lists.add({5, bottom}, {7, top}, {90, top}, 42);
        QCOMPARE(lists.rows().count() > 0, !shares.isEmpty());
        if (!shares.isEmpty()) {
            QCOMPARE(lists.rows().first, std::max(top, 0));
            QCOMPARE(lists.rows().last, std::min(bottom, 59));
        }
        for (int share = 0; share < 3; ++share)
            QCOMPARE(numbers(lists, share), shares.contains(share)
                                                ? QList<unsigned int>{42}
                                                : QList<unsigned int>{});
    }

    void whatLiesBesideThePictureIsLeftOut_data()
    {
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("right");
        QTest::addColumn<bool>("listed");
        QTest::newRow("left of it") << -9 << -2 << false;
        QTest::newRow("a rounding from the left edge") << -9 << -1 << true;
        QTest::newRow("right of it") << 101 << 300 << false;
        QTest::newRow("a rounding from the right edge") << 100 << 300 << true;
        QTest::newRow("around it") << -16384 << 16384 << true;
    }
    void whatLiesBesideThePictureIsLeftOut()
    {
        QFETCH(int, left);
        QFETCH(int, right);
        QFETCH(bool, listed);
        PaintLists lists;
        lists.begin(100, 60, 1);
        lists.add({left, 5}, {right, 9}, {left, 13}, 1);
        QCOMPARE(lists.of(0).size(), listed ? 1u : 0u);
    }

    void orderAndCornersStay()
    {
        PaintLists lists;
        lists.begin(100, 60, 2);
        lists.add({1, 2}, {3, 30}, {5, 6}, 7);
        lists.add({9, 20}, {9, 25}, {8, 20}, 3);
        lists.add({-16384, 16384}, {16384, -16384}, {0, 0}, 0xFEFFFFFFu);
        QCOMPARE(numbers(lists, 0), (QList<unsigned int>{7, 0xFEFFFFFFu}));
        QCOMPARE(numbers(lists, 1), (QList<unsigned int>{7, 3, 0xFEFFFFFFu}));
        const PaintLists::Entry &last = lists.of(1).back();
        QCOMPARE(last.x[0], std::int16_t(-16384));
        QCOMPARE(last.x[1], std::int16_t(16384));
        QCOMPARE(last.row[0], std::int16_t(16384));
        QCOMPARE(last.row[1], std::int16_t(-16384));
        lists.begin(100, 60, 3);
        for (int share = 0; share < 3; ++share)
            QVERIFY(lists.of(share).empty());
    }

    void aPainterGetsTrianglesAtOnce()
    {
        TextureImage target(100, 60, QImage::Format_RGB32);
        target.fill(qRgb(0, 0, 0));
        const Transformation camera(nullptr, {0, 0, -1, 0}, 100, 60);
        ScreenTrigon painter(&target, nullptr, {0, 0, -1, 0}, &camera, 0);
        PaintLists lists;
        lists.begin(100, 60, painter);
        lists.add({10, 20}, {10, 30}, {15, 25}, 7);
        QCOMPARE(target.pixel(11, 25) & RGB_MASK, 7u);
        QCOMPARE(painter.takePainted() > 0, true);
        lists.add({-10, 20}, {-10, 30}, {-5, 25}, 8); // beside the picture
        QCOMPARE(painter.takePainted(), 0);
        QVERIFY(lists.of(0).empty());
        QCOMPARE(lists.rows().first, 20);
        QCOMPARE(lists.rows().last, 30);
        lists.begin(100, 60, 1);
        lists.add({10, 40}, {10, 50}, {15, 45}, 9);
        QCOMPARE(lists.of(0).size(), 1u);
    }
};

QTEST_GUILESS_MAIN(TestPaintLists)
#include "test_paintlists.moc"
