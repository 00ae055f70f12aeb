#include "patheditors/outlinefill.h"
#include "patheditors/strokepictures.h"

#include <QPainterPathStroker>
#include <QTest>

using namespace strokes;

/// The painter's own filling says what every pixel has to be.
class TestOutlineFill : public QObject {
    Q_OBJECT

private slots:
    void strokesAreThePaintersToThePixel_data();
    void strokesAreThePaintersToThePixel();
    void curvesAreThePaintersToThePixel_data();
    void curvesAreThePaintersToThePixel();
    void overlapsCountOnce();
    void turnsAreAddedUp();
    void shiftedPainterIsFollowed();
    void painterIsLeftAsItWas();
    void nothingIsDrawnOutOfSight();
    void outlinesOutOfSightDrawNothing();
    void emptyOutlinesDrawNothing();
};

namespace {

void fillBoth(QImage &quick, QImage &plain, const QPainterPath &outline,
              const QColor &colour)
{
    const QRectF everything(0, 0, 200, 150);
    QPainter a(&quick);
    a.setRenderHint(QPainter::Antialiasing);
    fillOutline(a, outline, colour, everything);
    QPainter b(&plain);
    b.setRenderHint(QPainter::Antialiasing);
    b.fillPath(outline, colour);
}

} // namespace

void TestOutlineFill::strokesAreThePaintersToThePixel_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("corners");
    QTest::addColumn<int>("reach");
    QTest::addColumn<int>("width");
    for (const double scale : {1.0, 1.25, 2.0, 3.0})
        for (const int width : {1, 3}) {
            QTest::addRow("%g, %d wide, in the picture", scale, width)
                << scale << 40 << 80 << width;
            QTest::addRow("%g, %d wide, all around it", scale, width)
                << scale << 25 << 900 << width;
            QTest::addRow("%g, %d wide, to the end of the world", scale, width)
                << scale << 4 << 65000 << width;
            QTest::addRow("%g, %d wide, on few pixels", scale, width)
                << scale << 60 << 4 << width;
        }
}

void TestOutlineFill::strokesAreThePaintersToThePixel()
{
    QFETCH(double, scale);
    QFETCH(int, corners);
    QFETCH(int, reach);
    QFETCH(int, width);
    std::mt19937 random(static_cast<unsigned>(corners * reach + width));
    for (int i = 0; i < 4; ++i) {
        const QColor colour = i % 2 == 0 ? Qt::white : Qt::darkMagenta;
        const QPen pen = roundPen(colour, width);
        const QPainterPath outline = QPainterPathStroker(pen).createStroke(
            pathOf(randomLine(random, corners, reach)));
        const auto format =
            i % 3 == 0 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
        QImage quick = canvas(scale, format);
        QImage plain = canvas(scale, format);
        fillBoth(quick, plain, outline, colour);
        QCOMPARE(quick, plain);
    }
}

void TestOutlineFill::curvesAreThePaintersToThePixel_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("reach");
    for (const double scale : {1.0, 1.25, 2.0})
        for (const double reach : {0.5, 3.0, 20.0, 100.0})
            QTest::addRow("%g, %g wide", scale, reach) << scale << reach;
}

void TestOutlineFill::curvesAreThePaintersToThePixel()
{
    QFETCH(double, scale);
    QFETCH(double, reach);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> offset(-reach, reach);
    const auto place = [&] { return QPointF(100 + offset(random), 75 + offset(random)); };
    for (int i = 0; i < 40; ++i) {
        QPainterPath outline(place());
        for (int k = 0; k < 3; ++k)
            outline.cubicTo(place(), place(), place());
        outline.setFillRule(Qt::WindingFill);
        QImage quick = canvas(scale);
        QImage plain = canvas(scale);
        fillBoth(quick, plain, outline, Qt::blue);
        QCOMPARE(quick, plain);
    }
}

// What several outlines enclose is as opaque as what one does.
void TestOutlineFill::overlapsCountOnce()
{
    QPainterPath outline;
    outline.setFillRule(Qt::WindingFill);
    for (int i = 0; i < 300; ++i)
        outline.addRect(20 + i * 0.1, 20, 60, 60.5);
    QImage quick = canvas(1.0);
    QImage plain = canvas(1.0);
    fillBoth(quick, plain, outline, Qt::white);
    QCOMPARE(quick, plain);
    QCOMPARE(quick.pixelColor(70, 50), QColor(Qt::white));
}

// Two half covered halves of one pixel make a whole one; two layers of paint would not.
void TestOutlineFill::turnsAreAddedUp()
{
    QPainterPath outline;
    outline.setFillRule(Qt::WindingFill);
    outline.addRect(10, 10, 0.5, 1);
    outline.addRect(10.5, 10, 0.5, 1);
    QImage quick = canvas(1.0);
    QImage plain = canvas(1.0);
    fillBoth(quick, plain, outline, Qt::white);
    QCOMPARE(quick, plain);
    QCOMPARE(quick.pixelColor(10, 10), QColor(Qt::white));
}

void TestOutlineFill::shiftedPainterIsFollowed()
{
    std::mt19937 random(3);
    const QPen pen = roundPen(Qt::white, 3);
    const QPainterPath line = pathOf(randomLine(random, 20, 150));
    for (const QPointF &shift :
         {QPointF(-37, 12), QPointF(-1000, -900), QPointF(0.3, 5)}) {
        QImage quick = canvas(2.0);
        QImage plain = canvas(2.0);
        QPainter a(&quick);
        a.setRenderHint(QPainter::Antialiasing);
        a.translate(shift);
        fillOutline(a, QPainterPathStroker(pen).createStroke(line), Qt::white,
                    QRectF(-shift, QSizeF(200, 150)));
        QPainter b(&plain);
        b.setRenderHint(QPainter::Antialiasing);
        b.translate(shift);
        b.strokePath(line, pen);
        QCOMPARE(quick, plain);
    }
}

void TestOutlineFill::painterIsLeftAsItWas()
{
    QImage image = canvas(2.0);
    QPainter painter(&image);
    painter.translate(7, 9);
    painter.setPen(Qt::yellow);
    const QTransform before = painter.worldTransform();
    QPainterPath outline;
    outline.addRect(10, 10, 50, 40);
    fillOutline(painter, outline, Qt::white, QRectF(0, 0, 190, 140));
    QCOMPARE(painter.worldTransform(), before);
    QCOMPARE(painter.pen().color(), QColor(Qt::yellow));
    QVERIFY(!painter.hasClipping());
}

void TestOutlineFill::nothingIsDrawnOutOfSight()
{
    QPainterPath outline;
    outline.addRect(-50, -50, 300, 300);
    QImage image = canvas(1.0);
    const QRect seen(30, 21, 60, 43);
    QPainter painter(&image);
    fillOutline(painter, outline, Qt::white, seen);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(image.pixelColor(x, y) == QColor(Qt::white), seen.contains(x, y));
}

void TestOutlineFill::outlinesOutOfSightDrawNothing()
{
    QImage image = canvas(1.0);
    QPainter painter(&image);
    for (const QPointF &at : {QPointF(-80, 50), QPointF(300, 50), QPointF(50, -80),
                              QPointF(50, 300), QPointF(1e9, -1e9)}) {
        QPainterPath outline;
        outline.addRect(QRectF(at, QSizeF(40, 40)));
        fillOutline(painter, outline, Qt::white, QRectF(0, 0, 200, 150));
    }
    QCOMPARE(image, canvas(1.0));
}

void TestOutlineFill::emptyOutlinesDrawNothing()
{
    QImage image = canvas(1.0);
    QPainter painter(&image);
    fillOutline(painter, {}, Qt::white, QRectF(0, 0, 200, 150));
    fillOutline(painter, QPainterPath(QPointF(20, 20)), Qt::white,
                QRectF(0, 0, 200, 150));
    QPainterPath outline;
    outline.addRect(10, 10, 50, 40);
    fillOutline(painter, outline, Qt::white, QRectF());
    QCOMPARE(image, canvas(1.0));
}

QTEST_MAIN(TestOutlineFill)
#include "test_outlinefill.moc"
