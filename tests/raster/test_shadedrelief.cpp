#include "raster/shadedrelief.h"

#include "base/progress.h"
#include "raster/elevationfacts.h"
#include "raster/elevationimage.h"

#include <QTest>

#include <functional>

namespace {

ElevationImage heights(const QSize &size, const std::function<double(int, int)> &height,
                       QImage::Format format = QImage::Format_RGB888)
{
    ElevationImage image(size, format);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setElevation(x, y, height(x, y));
    return image;
}

class StopAtOnce : public Progress {
public:
    [[nodiscard]] bool step(qint64, qint64) override { return false; }
};

NoProgress unwatched;

} // namespace

class TestShadedRelief : public QObject {
    Q_OBJECT

private slots:
    // A pyramid: its north-western sides are lit, the others lie in shade.
    void lightComesFromTheNorthWest()
    {
        const ElevationImage image = heights({41, 41}, [](int x, int y) {
            return 100.0 - 2 * std::max(std::abs(x - 20), std::abs(y - 20));
        });
        const auto relief = shadedRelief(image, unwatched);
        QVERIFY(relief);
        QCOMPARE(relief->size(), image.size());
        const auto light = [&relief](int x, int y) { return qGray(relief->pixel(x, y)); };
        QVERIFY(light(20, 10) > light(20, 30) + 20); // north, south
        QVERIFY(light(10, 20) > light(30, 20) + 20); // west, east
        QVERIFY(light(20, 10) == light(10, 20));
    }

    void lowAndHighHaveOtherColours()
    {
        const auto relief = shadedRelief(
            heights({64, 64}, [](int x, int) { return x / 16 * 100.0; }), unwatched);
        QVERIFY(relief);
        QSet<QRgb> level;
        for (const int x : {4, 24, 40, 58})
            level << relief->pixel(x, 30);
        QCOMPARE(level.size(), 4);
    }

    // A single void takes neither the colours nor the light of all the others.
    void oneVoidDoesNotSpoilThePicture()
    {
        const auto plain = [](int x, int y) { return 100.0 + (x + 3 * y) % 20; };
        const auto relief = shadedRelief(heights({100, 100}, plain), unwatched);
        const auto holed =
            shadedRelief(heights({100, 100},
                                 [&plain](int x, int y) {
                                     return x == 50 && y == 50 ? -32768.0 : plain(x, y);
                                 }),
                         unwatched);
        QCOMPARE(holed->pixel(10, 10), relief->pixel(10, 10));
        QCOMPARE(holed->pixel(90, 40), relief->pixel(90, 40));
    }

    void everySizeAndFormatIsDrawn_data()
    {
        QTest::addColumn<QSize>("size");
        for (const QSize &size : {QSize(1, 1), QSize(1, 9), QSize(9, 1), QSize(2, 2)})
            QTest::addRow("%dx%d", size.width(), size.height()) << size;
    }
    void everySizeAndFormatIsDrawn()
    {
        QFETCH(QSize, size);
        const auto height = [](int x, int y) { return x + 2.0 * y; };
        for (const auto format : {QImage::Format_RGB32, QImage::Format_RGB888}) {
            const auto relief = shadedRelief(heights(size, height, format), unwatched);
            QVERIFY(relief);
            QCOMPARE(relief->size(), size);
        }
        QVERIFY(shadedRelief(QImage(), unwatched)->isNull());
    }

    void workCanBeStopped()
    {
        const ElevationImage image = heights({8, 8}, [](int, int) { return 1.0; });
        StopAtOnce stop;
        QVERIFY(shadedRelief(image, stop).error().stopped);
        QVERIFY(elevationFacts(image, {}, stop).error().stopped);
    }

    void lowestHighestAndVoidsAreFound()
    {
        const ElevationImage image = heights(
            {70, 130}, [](int x, int y) { return x % 10 == 3 ? -9999.0 : x + y - 5.0; });
        const auto facts = elevationFacts(image, -9999, unwatched);
        QCOMPARE(*facts, (ElevationFacts{-5, 193, 7 * 130}));
        QCOMPARE(*elevationFacts(image, {}, unwatched), (ElevationFacts{-9999, 193, 0}));
        const ElevationImage none = heights({3, 3}, [](int, int) { return -9999.0; });
        QCOMPARE(*elevationFacts(none, -9999, unwatched),
                 (ElevationFacts{-9999, -9999, 9}));
    }
};

QTEST_MAIN(TestShadedRelief)
#include "test_shadedrelief.moc"
