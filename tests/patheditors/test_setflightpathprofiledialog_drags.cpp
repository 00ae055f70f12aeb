#include "flight/figures.h"
#include "patheditors/editorfixture.h"

#include <QTest>

/// A drag in the profile widens or narrows the extent, from which the axis is made.
class TestSetFlightPathProfileDialogDrags : public QObject {
    Q_OBJECT

private slots:
    void pointStaysUnderThePointer();
    void handleStaysUnderThePointer();
    void axisJumpsWithTheRelease();
    void extentGoesOnDuringADrag();
    void pictureStandsStillDuringADrag();
};

namespace {

int highestScrollValue(const EditorFixture &f)
{
    return f.profile->findChild<QScrollBar *>("verticalScrollBar")->maximum();
}

} // namespace

// Each repaint widens the axis; the pointer moves by screen pixels alone.
void TestSetFlightPathProfileDialogDrags::pointStaysUnderThePointer()
{
    EditorFixture f;
    f.openLow();
    f.pressProfile(60, 100);
    for (int up = 2; up <= 30; up += 4) {
        f.moveProfile(60, 100 + up);
        QCOMPARE(f.points[1].z, 100 + up);
        QCOMPARE(f.profileText(), QStringLiteral("60/%1").arg(100 + up));
        f.paint();
    }
    for (int down = 30; down >= -150; down -= 20) {
        f.moveProfile(60, 100 + down);
        QCOMPARE(f.points[1].z, 100 + down);
        f.paint();
    }
    f.releaseProfile(60, -60);
    QCOMPARE(f.points[1].z, -60);
}

void TestSetFlightPathProfileDialogDrags::handleStaysUnderThePointer()
{
    EditorFixture f;
    f.openLow();
    f.pressProfile(130, 100);
    f.moveProfile(131, 101);
    f.points[0].z = -300; // as if the plan had changed meanwhile
    f.points[3].z = 240;
    f.paint();
    const int z = f.ways[3].z;
    f.moveProfile(90, z + 60);
    QVERIFY(near(f.ways[3].p, Pi / 2));
    f.paint();
    f.moveProfile(130, z + 40);
    QVERIFY(near(f.ways[3].p, Pi / 4));
    f.releaseProfile(130, z - 40);
    QVERIFY(near(f.ways[3].p, -Pi / 4));
}

void TestSetFlightPathProfileDialogDrags::axisJumpsWithTheRelease()
{
    EditorFixture f;
    f.openLow();
    const QPoint before = f.profilePixel(60, 100);
    f.pressProfile(60, 100);
    f.moveProfile(60, 102);
    f.moveProfile(60, 190);
    f.paint();
    f.moveProfile(60, 192);
    QCOMPARE(f.profileText(), "60/192");
    f.releaseProfile(60, 192);
    f.paint();
    const QPoint after = f.profilePixel(60, 100);
    QVERIFY(after != before);
    f.moveProfile(60, 192); // where the new axis has it
    QCOMPARE(f.profileText(), "60/192");
    QCOMPARE(f.profile->cursor().shape(), Qt::CrossCursor);
}

void TestSetFlightPathProfileDialogDrags::extentGoesOnDuringADrag()
{
    EditorFixture f;
    f.openLow();
    QCOMPARE(highestScrollValue(f), 100 + 300 - 1 - 0 - 249);
    f.pressProfile(60, 100);
    f.moveProfile(60, 102);
    f.moveProfile(60, 180);
    f.paint();
    QCOMPARE(highestScrollValue(f), 180 + 300 - 1 - 0 - 249);
    f.moveProfile(60, 279); // inside since the top is at 180
    QCOMPARE(f.profileText(), "60/279");
    f.moveProfile(60, 380);
    QCOMPARE(f.profileText(), QString());
    QCOMPARE(f.points[1].z, 279);
}

void TestSetFlightPathProfileDialogDrags::pictureStandsStillDuringADrag()
{
    EditorFixture f;
    f.openLow();
    f.pressProfile(60, 100);
    f.moveProfile(60, 102);
    f.paint();
    // A piece of the terrain, which runs at half the station.
    const QImage before = f.profile->grab().toImage();
    const qreal scale = before.devicePixelRatio();
    const QRect piece((QPointF(f.profilePixel(140, 80)) * scale).toPoint(),
                      QSize(14, 18) * scale);
    f.moveProfile(60, 160);
    f.paint();
    QCOMPARE(f.profile->grab().toImage().copy(piece), before.copy(piece));
    f.releaseProfile(60, 160);
    f.paint();
    QVERIFY(f.profile->grab().toImage().copy(piece) != before.copy(piece));
}

QTEST_MAIN(TestSetFlightPathProfileDialogDrags)
#include "test_setflightpathprofiledialog_drags.moc"
