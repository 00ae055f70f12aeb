// Covered pixels against a picture that is kept plainly, a flag a pixel.

#include "render/coveredpixels.h"

#include <QRandomGenerator>
#include <QTest>

#include <vector>

namespace {

constexpr int Width = 200;
constexpr int Height = 5;

struct PlainPicture {
    std::vector<bool> covered = std::vector<bool>(Width * Height, false);

    [[nodiscard]] bool covers(int row, int first, int last) const
    {
        for (int x = first; x <= last; ++x)
            if (!covered[row * Width + x])
                return false;
        return true;
    }
    std::vector<int> take(int row, int first, int last)
    {
        std::vector<int> taken;
        for (int x = first; x <= last; ++x) {
            if (!covered[row * Width + x])
                taken.push_back(x);
            covered[row * Width + x] = true;
        }
        return taken;
    }
};

std::vector<int> columnsOf(int from, std::uint64_t bits)
{
    std::vector<int> columns;
    for (int k = 0; k < 64; ++k)
        if (bits >> k & 1)
            columns.push_back(from + k);
    return columns;
}

} // namespace

class TestCoveredPixels : public QObject {
    Q_OBJECT

private slots:
    void randomParts()
    {
        QRandomGenerator random(3);
        CoveredPixels pixels;
        int refused = 0;
        for (int picture = 0; picture < 40; ++picture) {
            pixels.begin({Width, Height});
            PlainPicture plain;
            for (int k = 0; k < 60; ++k) {
                const int row = random.bounded(Height);
                const int first = random.bounded(Width);
                const int last = std::min(first + random.bounded(90) - 1, Width - 1);
                if (last >= first) {
                    const bool sure = pixels.surelyCovers(row, first, last);
                    // Sure of all that lies in two groups of columns at most.
                    if (last / 64 - first / 64 <= 1)
                        QCOMPARE(sure, plain.covers(row, first, last));
                    else
                        QVERIFY(!sure || plain.covers(row, first, last));
                    refused += !sure;
                }
                std::vector<int> taken;
                pixels.take(row, first, last, [&](int from, std::uint64_t bits) {
                    QVERIFY(bits != 0);
                    for (const int column : columnsOf(from, bits))
                        taken.push_back(column);
                });
                QCOMPARE(taken, plain.take(row, first, last));
            }
        }
        QVERIFY(refused > 100);
    }

    void bitsOfOneGroup()
    {
        QRandomGenerator random(5);
        CoveredPixels pixels;
        pixels.begin({Width, Height});
        PlainPicture plain;
        for (int k = 0; k < 300; ++k) {
            const int row = random.bounded(Height);
            const int first = random.bounded(Width);
            const int last = std::min({first + random.bounded(6), first | 63, Width - 1});
            QVERIFY(CoveredPixels::inOneGroup(first, last));
            const std::uint64_t bits = CoveredPixels::between(
                CoveredPixels::bitOf(first) | CoveredPixels::bitOf(last));
            const std::uint64_t free = pixels.take(row, first, bits);
            QCOMPARE(columnsOf(CoveredPixels::groupOf(first), free),
                     plain.take(row, first, last));
        }
        QVERIFY(!CoveredPixels::inOneGroup(63, 64));
    }

    void aNewPictureIsFree()
    {
        CoveredPixels pixels;
        pixels.begin({10, 2});
        pixels.take(1, 0, 9, [](int, std::uint64_t) {});
        QVERIFY(pixels.surelyCovers(1, 0, 9));
        pixels.begin({10, 2});
        QVERIFY(!pixels.surelyCovers(1, 0, 9));
        QVERIFY(!pixels.surelyCovers(0, 3, 3));
    }
};

QTEST_GUILESS_MAIN(TestCoveredPixels)
#include "test_coveredpixels.moc"
