#include "views/imagemdichild.h"

#include "views/imageviewfixture.h"

#include <QScrollBar>
#include <QTest>

int qInitResources_Zephrant();

/// Zoom, fit mode, and the position under the pointer.
class TestImageMdiChildZoom : public QObject, private ImageViewFixture {
    Q_OBJECT

private slots:
    void initTestCase() { qInitResources_Zephrant(); }
    void init() { openView(); }
    void cleanup() { closeView(); }

    void zoomStepsAreAQuarter()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        QCOMPARE(m_workspace->message, QString("100%"));
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("125%"));
        QCOMPARE(label()->size(), QSize(250, 188));
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("156%"));
        m_view->slotZoomOut();
        QCOMPARE(m_workspace->message, QString("125%"));
        QCOMPARE(label()->size(), QSize(250, 188));
        m_view->slotNormalSize();
        QCOMPARE(label()->size(), QSize(200, 150));
    }

    void zoomWithoutAPictureDoesNothing()
    {
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString());
    }

    void zoomHasNoLimitsAndDoesNoHarm()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        for (int i = 0; i < 4000; ++i)
            m_view->slotZoomIn();
        QCOMPARE(label()->size(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        settle(); // paints
        moveMouse({5, 5});
        QCOMPARE(m_workspace->message, QString("inf% - 0/149")); // the corner
        for (int i = 0; i < 8000; ++i)
            m_view->slotZoomOut();
        settle();
        moveMouse({6, 6});
        // No factor brings that back.
        QCOMPARE(m_workspace->message, QString("inf% - 0/149"));
        QCOMPARE(label()->size(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        m_view->slotNormalSize();
        QCOMPARE(label()->size(), QSize(200, 150));
    }

    void enlargedPictureShowsTheRightPart()
    {
        // Left half red, right half blue, enlarged beyond what a copy is kept for.
        QImage image(100, 100, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int y = 0; y < 100; ++y)
            std::fill_n(reinterpret_cast<QRgb *>(image.scanLine(y)) + 50, 50,
                        0xFF0000FFu);
        m_view->setPixmap(&image, true);
        while (label()->width() < 8000)
            m_view->slotZoomIn();
        auto *const bar = scrollArea()->horizontalScrollBar();
        const int y = label()->height() / 2;
        const int width = label()->width();
        bar->setValue(0);
        QCOMPARE(label()->grab(QRect(10, y, 4, 4)).toImage().pixel(1, 1), 0xFFFF0000u);
        QCOMPARE(label()->grab(QRect(width - 14, y, 4, 4)).toImage().pixel(1, 1),
                 0xFF0000FFu);
        const QImage middle = label()->grab(QRect(width / 2 - 100, y, 200, 4)).toImage();
        QCOMPARE(middle.pixel(1, 1), 0xFFFF0000u);
        QCOMPARE(middle.pixel(198, 1), 0xFF0000FFu);
    }

    void zoomKeepsTheMiddleOfTheView()
    {
        QVERIFY(m_view->loadFile(picture(2000, 1500)));
        QScrollBar *const bar = scrollArea()->horizontalScrollBar();
        bar->setValue(400);
        const int page = bar->pageStep();
        m_view->slotZoomIn();
        // 1.25 * 400 + 0.25 * page / 2
        QCOMPARE(bar->value(), int(500 + 0.125 * page));
    }

    void zoomReachesTheActiveViewOnly()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        ImageMdiChild other;
        m_workspace->active = &other;
        m_view->slotZoomIn();
        m_view->slotFitToWindow();
        QCOMPARE(label()->size(), QSize(200, 150));
        QVERIFY(!m_view->isFitToWindow());
    }

    void zoomReachesThePictureOfTheActiveScenery()
    {
        ImageMdiChild scenery;
        auto *const render = new ImageMdiChild(&scenery);
        m_workspace->active = &scenery;
        const QImage frame(40, 20, QImage::Format_RGB32);
        render->setPixmap(&frame, true);
        render->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("125%"));
    }

    void fitFillsTheWindowAndZoomGoesOn()
    {
        QVERIFY(m_view->loadFile(picture(200, 150)));
        m_view->slotFitToWindow();
        QVERIFY(m_view->isFitToWindow());
        QVERIFY(m_workspace->fit->isChecked());
        QVERIFY(scrollArea()->widgetResizable());
        QTRY_COMPARE(label()->size(), scrollArea()->viewport()->size());
        for (const char *name : {"action_ZoomIn", "action_ZoomOut", "action_NormalSize"})
            QVERIFY(!m_view->findChild<QAction *>(name)->isEnabled());
        m_view->slotZoomIn();
        QCOMPARE(m_workspace->message, QString("125%"));
        m_view->slotFitToWindow();
        QVERIFY(!m_view->isFitToWindow());
        QVERIFY(!m_workspace->fit->isChecked());
        QCOMPARE(label()->size(), QSize(200, 150));
        QVERIFY(m_view->findChild<QAction *>("action_ZoomIn")->isEnabled());
    }

    void fitAlsoActsWithoutAnActiveView()
    {
        m_workspace->active = nullptr;
        m_view->slotFitToWindow();
        QVERIFY(m_view->isFitToWindow());
    }

    void viewStartsInNormalModeBesideOneInFitMode()
    {
        m_view->slotFitToWindow();
        const ImageMdiChild second;
        QVERIFY(!second.isFitToWindow());
        QVERIFY(!second.findChild<QScrollArea *>()->widgetResizable());
    }

    void mouseShowsThePositionFromTheBottomLine()
    {
        QVERIFY(m_view->loadFile(picture(300, 1000)));
        moveMouse({7, 0});
        QCOMPARE(m_workspace->message, QString("100% - 7/999"));
        m_view->slotZoomIn();
        m_view->slotZoomIn();
        scrollArea()->verticalScrollBar()->setValue(0);
        moveMouse({100, 50});
        // 100 / 1.5625 = 64, 50 / 1.5625 = 32
        QCOMPARE(m_workspace->message, QString("156% - 64/967"));
    }

    void mouseMayLeaveThePicture()
    {
        QVERIFY(m_view->loadFile(picture(20, 10)));
        moveMouse({30, 15});
        QCOMPARE(m_workspace->message, QString("100% - 30/-6"));
    }
};

QTEST_MAIN(TestImageMdiChildZoom)
#include "test_imagemdichild_zoom.moc"
