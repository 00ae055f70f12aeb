#include "patheditors/pathpainter.h"
#include "patheditors/strokepictures.h"

#include <QTest>

using namespace strokes;

/// The painter's own strokes of the whole path say what every pixel has to be.
class TestPathPainter : public QObject {
    Q_OBJECT

private slots:
    void linesAreThePaintersToThePixel_data();
    void linesAreThePaintersToThePixel();
    void handlesAreThePaintersToThePixel_data();
    void handlesAreThePaintersToThePixel();
    void partsMakeTheWholePicture_data();
    void partsMakeTheWholePicture();
    void linesWithoutLengthAreBorne();
};

namespace {

void scales()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0})
        QTest::addRow("%g", scale) << scale;
}

QImage plainPicture(double scale, const QPainterPath &path, const QColor &colour)
{
    QImage image = canvas(scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(path, roundPen(Qt::white, 3));
    painter.strokePath(path, roundPen(colour, 1));
    return image;
}

// What draw(painter) shows in the parts of the picture, each painted for itself.
template <typename Draw>
QImage picture(double scale, const QList<QRect> &parts, Draw draw)
{
    QImage image = canvas(scale);
    PathIcons icons;
    for (const QRect &part : parts) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(part);
        PathPainter paint(painter, icons, part);
        draw(paint);
    }
    return image;
}

const QList<QRect> Whole{{0, 0, 200, 150}};

} // namespace

void TestPathPainter::linesAreThePaintersToThePixel_data() { scales(); }

void TestPathPainter::linesAreThePaintersToThePixel()
{
    QFETCH(double, scale);
    std::mt19937 random(11);
    for (const int reach : {5, 90, 400, 1500})
        for (int i = 0; i < 4; ++i) {
            const QList<QPointF> line = randomLine(random, 5 + 8 * i, reach);
            const QImage quick = picture(scale, Whole, [&](PathPainter &paint) {
                paint.strokeTwice(line, Qt::darkMagenta);
            });
            QCOMPARE(quick, plainPicture(scale, pathOf(line), Qt::darkMagenta));
        }
}

void TestPathPainter::handlesAreThePaintersToThePixel_data() { scales(); }

void TestPathPainter::handlesAreThePaintersToThePixel()
{
    QFETCH(double, scale);
    std::mt19937 random(12);
    std::uniform_real_distribution<double> place(-30, 230);
    std::uniform_real_distribution<double> way(-40, 40);
    for (int i = 0; i < 5; ++i) {
        QPainterPath lines;
        for (int k = 0; k < 60; ++k) {
            const QPointF from(place(random), place(random));
            lines.moveTo(from);
            lines.lineTo(from + QPointF(way(random), way(random)));
        }
        const QImage quick = picture(scale, Whole, [&](PathPainter &paint) {
            paint.strokeTwice(lines, Qt::blue);
        });
        QCOMPARE(quick, plainPicture(scale, lines, Qt::blue));
    }
}

void TestPathPainter::partsMakeTheWholePicture_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 2.0, 3.0})
        QTest::addRow("%g", scale) << scale;
}

void TestPathPainter::partsMakeTheWholePicture()
{
    QFETCH(double, scale);
    const QList<QRect> parts{{0, 0, 63, 40},
                             {63, 0, 137, 40},
                             {0, 40, 200, 1},
                             {0, 41, 17, 109},
                             {17, 41, 183, 109}};
    std::mt19937 random(13);
    for (int i = 0; i < 5; ++i) {
        const QList<QPointF> line = randomLine(random, 25, 40 + 200 * i);
        const QImage quick = picture(scale, parts, [&](PathPainter &paint) {
            paint.strokeTwice(line, Qt::darkMagenta);
        });
        QCOMPARE(quick, plainPicture(scale, pathOf(line), Qt::darkMagenta));
    }
}

void TestPathPainter::linesWithoutLengthAreBorne()
{
    const QPointF at(50, 50);
    for (const QList<QPointF> &line :
         {QList<QPointF>(), QList<QPointF>{at}, QList<QPointF>(5, at)}) {
        const QImage quick = picture(2.0, Whole, [&](PathPainter &paint) {
            paint.strokeTwice(line, Qt::darkMagenta);
        });
        QCOMPARE(quick, line.isEmpty()
                            ? canvas(2.0)
                            : plainPicture(2.0, pathOf(line), Qt::darkMagenta));
    }
}

QTEST_MAIN(TestPathPainter)
#include "test_pathpainter.moc"
