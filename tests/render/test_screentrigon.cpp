#include "render/screentrigon.h"

#include "base/pi.h"
#include "raster/textureimage.h"
#include "render/plain/screentrigon.h"
#include "render/plain/transformation.h"
#include "render/transformation.h"

#include <QRandomGenerator>
#include <QTest>

#include <optional>

namespace {

constexpr unsigned int Empty = 0xFF000001u;
constexpr int Size = 16;

// One triangle, whose number is 5, seen by a camera straight above flat ground: world
// x and y are the columns and the rows counted from the bottom.
class OneTriangle : public TriangleSource {
public:
    Triangle triangle(unsigned int) const override { return shape; }
    Triangle shape;
};

struct Fixture {
    explicit Fixture(C4Vector light = {0.0, 0.0, -1.0, 0.0}, bool withTexture = true,
                     int quality = 0)
        : texture(Size, Size, QImage::Format_RGB32),
          target(Size, Size, QImage::Format_RGB32), camera(nullptr, light, Size, Size)
    {
        texture.fill(qRgb(200, 100, 50));
        texture.setBackgroundColor(qRgb(10, 20, 30));
        trigon.emplace(&target, withTexture ? &texture : nullptr, light, &camera,
                       quality);
        target.fill(Empty);
        // Straight down from 100 above the middle, a pixel a unit.
        camera.SetView({8.0, 8.0, 100.0, 1.0}, 0.0, -Pi / 2, 100.0, 0.0);
        for (int k = 0; k < 3; ++k)
            source.shape.normals[k] = {0.0, 0.0, 1.0, 1.0};
    }

    void place(ScreenCorner a, ScreenCorner b, ScreenCorner c)
    {
        const ScreenCorner corners[3] = {a, b, c};
        for (int k = 0; k < 3; ++k) {
            source.shape.screen[k] = corners[k];
            source.shape.vertices[k] = {double(corners[k].x),
                                        double(Size - corners[k].row), 0.0, 1.0};
        }
        // A plane even where the corners lie on a line.
        source.shape.vertices[0] = {0.0, 0.0, 0.0, 1.0};
        source.shape.vertices[1] = {1.0, 0.0, 0.0, 1.0};
        source.shape.vertices[2] = {0.0, 1.0, 0.0, 1.0};
    }
    void draw()
    {
        const auto &s = source.shape.screen;
        trigon->Rechnen(s[0], s[1], s[2], 5);
        trigon->resolve(source, {0, Size - 1});
    }
    void draw(ScreenCorner a, ScreenCorner b, ScreenCorner c)
    {
        place(a, b, c);
        draw();
    }
    // Columns of a row that are filled, as "first-last".
    QString filled(int row) const
    {
        int first = -1, last = -1;
        for (int x = 0; x < Size; ++x) {
            if (target.pixel(x, row) != Empty) {
                first = first < 0 ? x : first;
                last = x;
            }
        }
        return first < 0 ? QString() : QStringLiteral("%1-%2").arg(first).arg(last);
    }
    QStringList filledRows() const
    {
        QStringList rows;
        for (int row = 0; row < Size; ++row)
            rows.append(filled(row));
        return rows;
    }

    TextureImage texture, target;
    Transformation camera;
    OneTriangle source;
    std::optional<ScreenTrigon> trigon;
};

QStringList rows(int first, QStringList spans)
{
    QStringList all;
    for (int row = 0; row < Size; ++row)
        all.append(row >= first && row < first + spans.size() ? spans[row - first]
                                                              : QString());
    return all;
}

} // namespace

class TestScreenTrigon : public QObject {
    Q_OBJECT

private slots:
    void rowsAreFilledBetweenTheEdges_data()
    {
        QTest::addColumn<QList<int>>("corners");
        QTest::addColumn<QStringList>("filled");
        QTest::newRow("right angle below")
            << QList<int>{2, 2, 2, 6, 6, 6}
            << rows(2, {"2-2", "2-3", "2-4", "2-5", "2-6"});
        QTest::newRow("point in the middle")
            << QList<int>{4, 2, 8, 4, 4, 6}
            << rows(2, {"4-4", "4-6", "4-8", "4-6", "4-4"});
        QTest::newRow("order of the corners does not matter")
            << QList<int>{4, 6, 4, 2, 8, 4}
            << rows(2, {"4-4", "4-6", "4-8", "4-6", "4-4"});
        // The lower part has one row and takes no step, so it fills one pixel there;
        // the upper part fills that row again, in full.
        QTest::newRow("flat base")
            << QList<int>{5, 3, 3, 5, 7, 5} << rows(3, {"5-5", "4-6", "3-7"});
        // Here the lower part comes down to the corners' row on both edges.
        QTest::newRow("flat top")
            << QList<int>{3, 3, 7, 3, 5, 5} << rows(3, {"3-7", "4-6", "5-5"});
        // No height at all: the first and the last of the sorted corners alone.
        QTest::newRow("one row") << QList<int>{2, 7, 9, 7, 5, 7} << rows(7, {"2-5"});
        QTest::newRow("one point") << QList<int>{3, 3, 3, 3, 3, 3} << rows(3, {"3-3"});
        QTest::newRow("begins above the picture")
            << QList<int>{4, -4, 0, 4, 8, 4}
            << rows(0, {"2-6", "1-6", "1-7", "0-7", "0-8"});
        QTest::newRow("ends below the picture")
            << QList<int>{4, 20, 0, 12, 8, 12} << rows(12, {"0-8", "0-7", "1-7", "1-6"});
        QTest::newRow("wider than the picture")
            << QList<int>{-20, 4, 40, 4, 10, 6} << rows(4, {"0-15", "0-15", "10-10"});
        QTest::newRow("right of the picture")
            << QList<int>{20, 4, 40, 4, 30, 6} << rows(0, {});
    }
    void rowsAreFilledBetweenTheEdges()
    {
        QFETCH(QList<int>, corners);
        QFETCH(QStringList, filled);
        Fixture f;
        f.draw({corners[0], corners[1]}, {corners[2], corners[3]},
               {corners[4], corners[5]});
        QCOMPARE(f.filledRows(), filled);
    }

    void oneRowFillsItsEndsAlone()
    {
        Fixture f;
        f.draw({2, 7}, {9, 7}, {5, 7});
        QCOMPARE(f.target.pixel(2, 7), qRgb(200, 100, 50));
        QCOMPARE(f.target.pixel(3, 7), Empty);
        QCOMPARE(f.target.pixel(5, 7), qRgb(200, 100, 50));
        QCOMPARE(f.target.pixel(9, 7), Empty);
    }

    void lightFromStraightAboveShowsTheTexel()
    {
        Fixture f;
        f.draw({2, 2}, {2, 6}, {6, 6});
        QCOMPARE(f.target.pixel(3, 5), qRgb(200, 100, 50));
    }

    void dustBlendsTowardGrey_data()
    {
        QTest::addColumn<double>("dust");
        QTest::addColumn<QRgb>("colour");
        QTest::newRow("none") << 0.0 << qRgb(200, 100, 50);
        // trunc(255 * 0.5) = 127, and half of the texel, cut.
        QTest::newRow("half") << 0.5 << qRgb(100 + 127, 50 + 127, 25 + 127);
        QTest::newRow("nearly all") << 1 - 1e-9 << qRgb(254, 254, 254);
    }
    void dustBlendsTowardGrey()
    {
        QFETCH(double, dust);
        QFETCH(QRgb, colour);
        Fixture f;
        f.source.shape.dust = dust;
        f.draw({2, 2}, {2, 6}, {6, 6});
        QCOMPARE(f.target.pixel(3, 5), colour);
    }

    void lightFromBelowShowsDustAlone()
    {
        Fixture f({0.0, 0.0, 1.0, 0.0});
        f.source.shape.dust = 0.5;
        f.draw({2, 2}, {2, 6}, {6, 6});
        QCOMPARE(f.target.pixel(3, 5), qRgb(127, 127, 127));
    }

    void lightAlongTheGroundShowsDustToo()
    {
        Fixture f({1.0, 0.0, 0.0, 0.0}); // intensity exactly 0, brightness 0
        f.source.shape.dust = 0.5;
        f.draw({2, 2}, {2, 6}, {6, 6});
        QCOMPARE(f.target.pixel(3, 5), qRgb(0, 0, 0));
    }

    void withoutTextureTheGroundIsWhite()
    {
        Fixture f({0.0, 0.6, -0.8, 0.0}, false);
        f.source.shape.dust = 0.25;
        f.draw({2, 2}, {2, 6}, {6, 6});
        // 0.8 * 255 * 0.75 = 153, dust 0.8 * 255 * 0.25 = 51.
        QCOMPARE(f.target.pixel(3, 5), qRgb(204, 204, 204));
    }

    void normalsAreInterpolatedOverTheScreen()
    {
        Fixture f({0.0, 0.0, -1.0, 0.0}, false);
        f.place({0, 0}, {0, 8}, {8, 8});
        f.source.shape.normals[2] = {1.0, 0.0, 0.0, 1.0};
        f.draw();
        // At (4, 8), half way to the third corner, the normal is (0.5, 0, 0.5).
        QCOMPARE(f.target.pixel(4, 8), qRgb(180, 180, 180)); // 255 / sqrt(2) = 180.3
        QCOMPARE(f.target.pixel(0, 8), qRgb(255, 255, 255));
    }

    void cornersOnALineShareTheMeanNormal()
    {
        Fixture f({0.0, 0.0, -1.0, 0.0}, false);
        f.place({2, 2}, {4, 4}, {6, 6});
        f.source.shape.normals[0] = {1.0, 0.0, 0.0, 1.0};
        f.source.shape.normals[2] = {-1.0, 0.0, 0.0, 1.0};
        f.draw();
        for (int k = 2; k <= 6; ++k)
            QCOMPARE(f.target.pixel(k, k), qRgb(255, 255, 255));
    }

    void normalOfNoLengthIsNoAccident()
    {
        Fixture f;
        f.place({2, 2}, {2, 6}, {6, 6});
        for (C4Vector &normal : f.source.shape.normals)
            normal = {0.0, 0.0, 0.0, 1.0};
        f.draw();
        QCOMPARE(f.target.pixel(3, 5), qRgb(0, 0, 0));
    }

    void raysBesideTheTextureGiveItsBackground_data()
    {
        QTest::addColumn<int>("quality");
        QTest::newRow("low") << 0;
        QTest::newRow("high") << 1;
    }
    void raysBesideTheTextureGiveItsBackground()
    {
        QFETCH(int, quality);
        Fixture f({0.0, 0.0, -1.0, 0.0}, true, quality);
        f.camera.SetView({500.0, 500.0, 100.0, 1.0}, 0.0, -Pi / 2, 100.0, 0.0);
        f.draw({2, 2}, {2, 6}, {6, 6});
        QCOMPARE(f.target.pixel(3, 5), qRgb(10, 20, 30));
    }

    void laterTriangleHidesTheEarlierOne()
    {
        Fixture f;
        f.trigon->Rechnen({0, 0}, {0, 10}, {10, 10}, 3);
        f.place({2, 2}, {2, 6}, {6, 6});
        f.trigon->Rechnen({2, 2}, {2, 6}, {6, 6}, 5);
        const auto number = [&](int x, int y) {
            return reinterpret_cast<const QRgb *>(f.target.constScanLine(y))[x];
        };
        QCOMPARE(number(1, 9), 3u);
        QCOMPARE(number(3, 5), 5u);
        QCOMPARE(number(12, 3), Empty);
    }

    void sharesOfSeveralThreadsMakeTheWholePicture()
    {
        Fixture whole;
        whole.draw({1, 0}, {14, 9}, {3, 15});
        Fixture parts;
        parts.place({1, 0}, {14, 9}, {3, 15});
        for (int index = 0; index < 3; ++index) {
            ScreenTrigon trigon(&parts.target, &parts.texture, {0.0, 0.0, -1.0, 0.0},
                                &parts.camera, 0);
            trigon.setShare({index, 3});
            trigon.Rechnen({1, 0}, {14, 9}, {3, 15}, 5);
        }
        // Pieces that are not those of the shares.
        for (const RowRange rows : {RowRange{0, 4}, {5, 5}, {6, Size - 1}}) {
            ScreenTrigon trigon(&parts.target, &parts.texture, {0.0, 0.0, -1.0, 0.0},
                                &parts.camera, 0);
            trigon.resolve(parts.source, rows);
        }
        QVERIFY(QImage(parts.target) == QImage(whole.target));
    }

    // Those of one row or two, which have a shorter way, among them.
    void smallTrianglesCoverThePixelsOfThePlainMethod()
    {
        QRandomGenerator random(1);
        const C4Vector light{0.0, 0.0, -1.0, 0.0};
        plain::Transformation camera(nullptr, light, Size, Size);
        for (int round = 0; round < 4000; ++round) {
            const int height = 1 + round % 4;
            const int top = random.bounded(-3, Size + 2);
            Fixture f;
            TextureImage expected(Size, Size, QImage::Format_RGB32);
            expected.fill(Empty);
            ScreenCorner s[3];
            C4Vector screen[3], vertices[3], normals[3];
            for (int k = 0; k < 3; ++k) {
                s[k] = {random.bounded(-4, Size + 4), top + random.bounded(height)};
                screen[k] = {double(s[k].x), double(s[k].row), 0.0, 1.0};
                normals[k] = {0.0, 0.0, 1.0, 1.0};
            }
            f.trigon->Rechnen(s[0], s[1], s[2], 5);
            plain::ScreenTrigon(&expected, nullptr, 0, 0, Size, Size, light, &camera, 0)
                .Rechnen(screen, vertices, normals, 0.0);
            for (int row = 0; row < Size; ++row)
                for (int x = 0; x < Size; ++x)
                    QCOMPARE(f.target.pixel(x, row) != Empty,
                             expected.pixel(x, row) != Empty);
        }
    }

    void cornersAtTheEdgeOfTheScreenEndQuickly()
    {
        Fixture f;
        f.draw({-16384, -16384}, {16384, -16384}, {0, 16384});
        QCOMPARE(f.filled(0), QStringLiteral("0-15"));
        QCOMPARE(f.filled(15), QStringLiteral("0-15"));
    }
};

QTEST_GUILESS_MAIN(TestScreenTrigon)
#include "test_screentrigon.moc"
