#include "patheditors/editorfixture.h"

#include <QPainter>
#include <QScreen>
#include <QTest>

/// What the plan editor shows.
class TestSetFlightPathDialogPainting : public QObject {
    Q_OBJECT

private slots:
    void pictureShowsThePath();
    void textureIsShownPixelByPixel();
    void dragLeavesNoTraces_data();
    void dragLeavesNoTraces();
};

namespace {

// What stands on the screen in the area of the picture, without its scroll bars. Of a
// window of higher resolution the offscreen platform tells only the upper left part.
QImage screenOf(const EditorFixture &f)
{
    const QImage shown = f.plan->screen()->grabWindow(f.plan->winId()).toImage();
    const auto *area = f.plan->findChild<QScrollArea *>();
    const QRect inside(area->viewport()->mapTo(f.plan.get(), QPoint()),
                       area->viewport()->size());
    const qreal scale = shown.devicePixelRatio();
    const QRect pixels(inside.topLeft() * scale, inside.size() * scale);
    return shown.convertToFormat(QImage::Format_RGB32)
        .copy(pixels.intersected(shown.rect()));
}

QImage checkedPattern(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x % 251, y % 241, (x + y) % 239));
    return image;
}

} // namespace

void TestSetFlightPathDialogPainting::pictureShowsThePath()
{
    EditorFixture f;
    f.openSquare();
    f.paint();
    // Control point: a yellow ring some 9.6 pixels from its middle.
    const QColor ring = f.planColour(20 - 9, 100);
    QVERIFY2(ring.red() > 150 && ring.green() > 130 && ring.blue() < 120,
             qPrintable(ring.name()));
    // Number 1 in it: yellow somewhere in the middle.
    bool yellow = false;
    for (int x = 15; x <= 25; ++x)
        for (int y = 94; y <= 106; ++y) {
            const QColor c = f.planColour(x, y);
            yellow = yellow || (c.red() > 220 && c.green() > 220 && c.blue() < 90);
        }
    QVERIFY(yellow);
    // The curve passes level through (60, 80); 8 pixels east it lies hardly lower.
    bool magenta = false;
    bool white = false;
    for (int y = 74; y <= 84; ++y) {
        const QColor c = f.planColour(69, y);
        magenta = magenta || (c.red() > c.green() + 40 && c.blue() > c.green() + 40);
        white = white || (c.red() > 200 && c.green() > 200 && c.blue() > 200);
    }
    QVERIFY(magenta);
    QVERIFY(white);
    // The direction of waypoint 3 leads north: blue at half its length.
    const QColor line = f.planColour(60, 100);
    QVERIFY2(line.blue() > line.red() + 50, qPrintable(line.name()));
    // Ends in a small blue disc; beyond is texture.
    const QColor disc = f.planColour(60, 120);
    QVERIFY2(disc.blue() > disc.red() + 50, qPrintable(disc.name()));
    QCOMPARE(f.planColour(60, 130), QColor(100, 140, 90));
    QCOMPARE(f.planColour(150, 75), QColor(100, 140, 90));
}

// Again and again, and after scrolling.
void TestSetFlightPathDialogPainting::textureIsShownPixelByPixel()
{
    EditorFixture f;
    f.pattern = checkedPattern(900, 700);
    f.open();
    const auto *area = f.plan->findChild<QScrollArea *>();
    for (const QPoint &corner : {QPoint(0, 0), QPoint(333, 217), QPoint(334, 217)}) {
        area->horizontalScrollBar()->setValue(corner.x());
        area->verticalScrollBar()->setValue(corner.y());
        for (int i = 0; i < 4; ++i) {
            f.paint();
            const QImage shown = screenOf(f);
            QImage expected(shown.size(), QImage::Format_RGB32);
            expected.setDevicePixelRatio(shown.devicePixelRatio());
            QPainter(&expected).drawPixmap(-corner, QPixmap::fromImage(f.pattern));
            QCOMPARE(shown, expected);
        }
    }
}

void TestSetFlightPathDialogPainting::dragLeavesNoTraces_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::newRow("opaque texture") << QColor(100, 140, 90);
    QTest::newRow("transparent texture") << QColor(100, 140, 90, 60);
}

// What stands on the screen after a drag is what a picture drawn from nothing shows.
void TestSetFlightPathDialogPainting::dragLeavesNoTraces()
{
    QFETCH(QColor, ground);
    EditorFixture f;
    f.ground = ground;
    f.openSquare();
    f.dragPlan({{20, 100}, {24, 104}, {150, 130}, {60, 120}});
    f.paint();
    const QImage shown = screenOf(f);
    QImage drawn(shown.size(), QImage::Format_RGB32);
    drawn.setDevicePixelRatio(shown.devicePixelRatio());
    f.plan->render(&drawn, QPoint(), QRegion(QRect(QPoint(115, 0), f.plan->size())));
    QCOMPARE(shown, drawn);
}

QTEST_MAIN(TestSetFlightPathDialogPainting)
#include "test_setflightpathdialog_painting.moc"
