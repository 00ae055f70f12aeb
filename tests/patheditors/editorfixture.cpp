#include "patheditors/editorfixture.h"

#include "raster/elevationimage.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QWindow>

static void initResources() { Q_INIT_RESOURCE(Zephrant); }

EditorFixture::EditorFixture()
{
    initResources();
    QSettings("Kolvenar", "Zephrant").clear();
}

QString EditorFixture::texture(int width, int height)
{
    QString name = m_folder.filePath("texture.png");
    QImage image(width, height,
                 ground.alpha() < 255 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    image.fill(ground);
    (pattern.isNull() ? image : pattern).save(name);
    return name;
}

QString EditorFixture::elevation(int width, int height)
{
    QString name = m_folder.filePath("elevation.png");
    ElevationImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setElevation(x, y, x / 2.0);
    image.save(name);
    return name;
}

void EditorFixture::open(int width, int height)
{
    plan = std::make_unique<SetFlightPathDialog>(points, ways, level, zScale, zScale,
                                                 texture(width, height), elevation(), 1.0,
                                                 1.0);
    QVERIFY(!plan->error());
    profile = plan->profile();
    m_picture = plan->findChild<QLabel *>("labelImage");
    plan->setVisible(true);
    QVERIFY(QTest::qWaitForWindowExposed(plan.get()));
    QVERIFY(QTest::qWaitForWindowExposed(profile));
    paint();
}

void EditorFixture::openSquare()
{
    points = {{20, 20, 100, 0.0},
              {20, 100, 100, 0.0},
              {100, 100, 100, 0.0},
              {100, 20, 100, 0.0}};
    ways = QList<Waypoint>(7, Waypoint(0, 0, 100, 0.0, 0.0));
    open();
}

void EditorFixture::openLevel()
{
    points = {
        {0, 75, 100, 0.0}, {60, 75, 100, 0.0}, {120, 75, 100, 0.0}, {180, 75, 100, 0.0}};
    ways = QList<Waypoint>(7, Waypoint(0, 0, 0, 0.0, 0.0));
    open();
    paint();
}

void EditorFixture::openLow()
{
    openLevel();
    profile->resize(600, 250);
    paint();
}

QPoint EditorFixture::planPixel(int x, int y) const
{
    return m_picture->mapTo(
        plan.get(), QPoint(x, m_picture->pixmap(Qt::ReturnByValue).height() - 1 - y));
}

void EditorFixture::movePlan(int x, int y)
{
    QTest::mouseMove(plan->windowHandle(), planPixel(x, y));
    QCoreApplication::processEvents();
}

void EditorFixture::pressPlan(int x, int y, Qt::MouseButton button)
{
    QTest::mousePress(plan->windowHandle(), button, {}, planPixel(x, y));
}

void EditorFixture::releasePlan(int x, int y, Qt::MouseButton button)
{
    QTest::mouseRelease(plan->windowHandle(), button, {}, planPixel(x, y));
    QCoreApplication::processEvents();
}

void EditorFixture::clickPlan(int x, int y, Qt::MouseButton button)
{
    pressPlan(x, y, button);
    releasePlan(x, y, button);
}

void EditorFixture::dragPlan(const QList<QPoint> &places)
{
    pressPlan(places.first().x(), places.first().y());
    for (const QPoint &place : places)
        movePlan(place.x(), place.y());
    releasePlan(places.last().x(), places.last().y());
}

// Screen y of height 0.
int EditorFixture::baseline() const
{
    const auto *up = profile->findChild<QScrollBar *>("verticalScrollBar");
    int lowest = 1000000;
    for (const ControlPoint &p : points)
        lowest = qMin(lowest, p.z);
    // The terrain begins at height 0 in the west.
    lowest =
        points.size() > 1 ? qMin(lowest, int(points.first().x * zScale / 2)) : lowest;
    return up->maximum() + profile->height() + lowest - up->minimum() - up->value();
}

QPoint EditorFixture::profilePixel(int station, int height) const
{
    const auto *across = profile->findChild<QScrollBar *>("horizontalScrollBar");
    return {200 - across->value() + station,
            m_heldBaseline.value_or(baseline()) - height};
}

void EditorFixture::moveProfile(int station, int height)
{
    QTest::mouseMove(profile->windowHandle(), profilePixel(station, height));
    QCoreApplication::processEvents();
}

void EditorFixture::pressProfile(int station, int height)
{
    m_heldBaseline = baseline();
    QTest::mousePress(profile->windowHandle(), Qt::LeftButton, {},
                      profilePixel(station, height));
}

void EditorFixture::releaseProfile(int station, int height)
{
    QTest::mouseRelease(profile->windowHandle(), Qt::LeftButton, {},
                        profilePixel(station, height));
    m_heldBaseline.reset();
    QCoreApplication::processEvents();
}

namespace {

void choose(QWidget *over, const QPoint &at, const QString &text)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, over->mapToGlobal(at));
    QCoreApplication::sendEvent(over, &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    for (QAction *entry : menu->actions())
        if (entry->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, {},
                              menu->actionGeometry(entry).center());
            QCoreApplication::processEvents();
            return;
        }
    QFAIL("no such entry");
}

} // namespace

void EditorFixture::choosePlan(int x, int y, const QString &text)
{
    const QPoint at = planPixel(x, y);
    QWidget *const under = plan->childAt(at);
    choose(under, under->mapFrom(plan.get(), at), text);
}

void EditorFixture::chooseProfile(int station, int height, const QString &text)
{
    choose(profile, profilePixel(station, height), text);
}

QString EditorFixture::planText() const
{
    return plan->findChild<QLabel *>("labelCoordinates")->text();
}

QString EditorFixture::profileText() const
{
    return profile->findChild<QLabel *>("labelCoordinates")->text();
}

QAction *EditorFixture::action(const char *name) const
{
    return plan->findChild<QAction *>(name);
}

void EditorFixture::pressButton(const char *name)
{
    QTest::mouseClick(plan->findChild<QPushButton *>(name), Qt::LeftButton);
}

void EditorFixture::paint()
{
    m_picture->repaint();
    if (profile)
        profile->repaint();
    QCoreApplication::processEvents();
}

QImage EditorFixture::planPicture() const { return m_picture->grab().toImage(); }

QColor EditorFixture::planColour(int x, int y) const
{
    const QImage picture = planPicture();
    const qreal scale = picture.devicePixelRatio();
    const int row = m_picture->pixmap(Qt::ReturnByValue).height() - 1 - y;
    return picture.pixelColor(int(x * scale), int(row * scale));
}

QColor EditorFixture::profileColour(int station, int height) const
{
    const QImage picture = profile->grab().toImage();
    const qreal scale = picture.devicePixelRatio();
    return picture.pixelColor((QPointF(profilePixel(station, height)) * scale).toPoint());
}
