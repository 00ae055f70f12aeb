#include "flightpath/editorfixture.h"

#include <QScreen>
#include <QTest>

/// What the plan editor shows.
class TestSetFlightPathDialogPainting : public QObject {
    Q_OBJECT

private slots:
    void pictureShowsThePath();
    void dragLeavesNoTraces_data();
    void dragLeavesNoTraces();
};

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
    const QImage shown = f.plan->screen()
                             ->grabWindow(f.plan->winId())
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32);
    const QImage drawn = f.plan->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRect picture(QPoint(115, 0) * drawn.devicePixelRatio(),
                        QSize(200, 150) * drawn.devicePixelRatio());
    QCOMPARE(shown.copy(picture), drawn.copy(picture));
}

QTEST_MAIN(TestSetFlightPathDialogPainting)
#include "test_setflightpathdialog_painting.moc"
