// The live view as a user works with it: beside the form, with mouse and keys.

#include "app/runfixture.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "livedocks/livedock.h"
#include "livedocks/livesession.h"
#include "livedocks/liveview.h"
#include "livedocks/mapview.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QWheelEvent>

class TestLiveView : public QObject, private RunFixture {
    Q_OBJECT

private slots:
    void init()
    {
        openWindow();
        QVERIFY(openScenery(9));
        m_window->findChild<QAction *>("action_LiveView")->trigger();
        QVERIFY(rests());
    }
    void cleanup() { m_window.reset(); }

    void itShowsTheFrameOfTheScenery()
    {
        QCOMPARE(view()->property("frame").toInt(), 0);
        QCOMPARE(view()->property("source").toString(), QString("frame"));
        QCOMPARE(view()->property("message").toString(), QString());
        QVERIFY(view()->property("shown").toInt() > 0);
        const QImage picture = view()->picture();
        const QSize fitted =
            QSize(64, 48).scaled(view()->deviceSize(), Qt::KeepAspectRatio);
        QCOMPARE(picture.size(), fitted);
        QVERIFY(!scenery()->isModified());
    }

    void anEditIsAnswered()
    {
        const QImage before = view()->picture();
        scenery()
            ->findChild<QDoubleSpinBox *>("doubleSpinBoxCameraFromHeading")
            ->setValue(12.0);
        QVERIFY(!view()->isRefined());
        QVERIFY(rests());
        QVERIFY(view()->picture() != before);
        QCOMPARE(view()->camera()[3].toDouble(), 12.0);
    }

    void theTimelineGoesThroughTheFlight()
    {
        auto *const slider = child<QSlider>("timelineSlider");
        QCOMPARE(slider->maximum(), 8);
        const QImage first = view()->picture();
        slider->setFocus();
        QTest::keyClick(slider, Qt::Key_End);
        QVERIFY(rests());
        QCOMPARE(view()->frame(), 8);
        QVERIFY(view()->picture() != first);
        QCOMPARE(view()->camera()[1].toDouble(), -50.0);
        click("pushButtonLookFromFirst");
        QVERIFY(rests());
        QCOMPARE(view()->picture(), first);
    }

    void keysFlyAndLeaveTheSceneryAlone()
    {
        view()->setFocus();
        const double y = view()->camera()[1].toDouble();
        QTest::keyPress(view(), Qt::Key_W);
        QVERIFY(!view()->isRefined());
        QTest::keyRelease(view(), Qt::Key_W);
        QVERIFY(rests());
        QCOMPARE(view()->property("source").toString(), QString("flown"));
        // At once by a thirtieth of a second's way at least.
        const double flown = view()->camera()[1].toDouble();
        QVERIFY(flown - y >= 50.0 / 30 - 0.01);
        QCOMPARE(flown, std::round(flown * 100) / 100);
        QVERIFY(view()->answerMilliseconds() > 0.0);
        QVERIFY(!scenery()->isModified());
        QCOMPARE(field("doubleSpinBoxCameraFromY"), -60.0);
    }

    void aDragLooksAroundAndWheelsZoom()
    {
        const QPoint middle = view()->rect().center();
        QTest::mousePress(view(), Qt::LeftButton, {}, middle);
        QTest::mouseMove(view(), middle + QPoint(20, 0));
        QTest::mouseRelease(view(), Qt::LeftButton, {}, middle + QPoint(20, 0));
        QVERIFY(rests());
        const double heading = view()->camera()[3].toDouble();
        QVERIFY(heading > 270.0 && heading < 360.0); // the ground follows the pointer
        const double focal = view()->camera()[6].toDouble();
        wheel(120, Qt::ControlModifier);
        QVERIFY(rests());
        QVERIFY(view()->camera()[6].toDouble() > focal);
        auto *const speed = child<QDoubleSpinBox>("doubleSpinBoxSpeed");
        const double before = speed->value();
        wheel(120, Qt::NoModifier);
        QVERIFY(speed->value() > before);
    }

    // To the pixel, since the camera at rest stands on the form's steps.
    void setWritesTheCameraIntoTheForm()
    {
        view()->setFocus();
        QTest::keyClick(view(), Qt::Key_E);
        QTest::keyClick(view(), Qt::Key_D);
        QVERIFY(rests());
        const QImage flown = view()->picture();
        const QVariantList camera = view()->camera();
        click("pushButtonSetLast");
        QVERIFY(rests());
        QCOMPARE(view()->property("source").toString(), QString("frame"));
        QCOMPARE(view()->frame(), 8);
        QCOMPARE(view()->picture(), flown);
        QCOMPARE(field("doubleSpinBoxCameraToZ"), camera[2].toDouble());
        QCOMPARE(field("doubleSpinBoxCameraFromZ"), 60.0);
        QVERIFY(scenery()->isModified());
    }

    void kindsOfFlightHaveTheirButtons()
    {
        QVERIFY(child<QPushButton>("pushButtonSetFirst")->isEnabled());
        QVERIFY(!child<QPushButton>("pushButtonAddControlPoint")->isEnabled());
        scenery()->findChild<QAbstractButton *>("radioButtonCurve")->click();
        QTRY_VERIFY(!child<QPushButton>("pushButtonSetFirst")->isEnabled());
        QVERIFY(child<QPushButton>("pushButtonAddControlPoint")->isEnabled());
        // A curved flight without points cannot be flown, but flown through by hand.
        QTRY_VERIFY(!view()->message().isEmpty());
        click("pushButtonReposition");
        QVERIFY(rests());
        for (int k = 0; k < 4; ++k) {
            QTest::keyClick(view(), Qt::Key_W);
            QVERIFY(rests());
            click("pushButtonAddControlPoint");
        }
        const SceneryDocument document = scenery()->delegate().document();
        QCOMPARE(document.controlPoints.size(), 4);
        QVERIFY(document.waypoints.size() >= 4);
        QTRY_COMPARE(view()->message(), QString());
    }

    void playGoesToTheEnd()
    {
        scenery()->findChild<QSpinBox *>("spinBoxFrameNumberTotal")->setValue(4);
        QTRY_COMPARE(child<QSlider>("timelineSlider")->maximum(), 3);
        auto *const play = child<QPushButton>("pushButtonPlay");
        play->click();
        QVERIFY(play->isChecked());
        QVERIFY(!view()->isRefined());
        QTRY_VERIFY_WITH_TIMEOUT(!play->isChecked(), 60000);
        QVERIFY(rests());
        QCOMPARE(view()->frame(), 3);
    }

    void frameRatesAreKeptInTheScenery()
    {
        auto *const rates = child<QComboBox>("comboBoxFramesPerSecond");
        QCOMPARE(rates->currentData().toInt(), 25);
        rates->setCurrentIndex(rates->findData(60));
        emit rates->activated(rates->currentIndex());
        QCOMPARE(scenery()->delegate().extras().FramesPerSecond, 60);
        SceneryExtras extras = scenery()->delegate().extras();
        extras.FramesPerSecond = 17;
        scenery()->delegate().setExtras(extras);
        QTRY_COMPARE(rates->currentData().toInt(), 17);
    }

    void aFrameIsWritten()
    {
        child<QSlider>("timelineSlider")->setValue(4);
        QVERIFY(rests());
        click("pushButtonRenderFrame");
        QTRY_COMPARE_WITH_TIMEOUT(frames(), QStringList("f4.png"), 60000);
        QCOMPARE(scenery()->findChild<QSpinBox *>("spinBoxFrameNumberFrom")->value(), 0);
        QCOMPARE(scenery()->findChild<QSpinBox *>("spinBoxFrameNumberTo")->value(), 8);
        QTRY_VERIFY(child<QPushButton>("pushButtonRenderFrame")->isEnabled());
    }

    void thePictureIsCopied()
    {
        click("pushButtonCopyPicture");
        QCOMPARE(QApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32),
                 view()->picture().convertToFormat(QImage::Format_RGB32));
    }

    // The map shows where the camera is, and the camera is dragged there.
    void theCameraIsDraggedOnTheMap()
    {
        m_window->findChild<QAction *>("action_Map")->trigger();
        auto *const map = m_window->findChild<MapView *>();
        QVERIFY(map->isVisible());
        QTRY_VERIFY(!map->ground().isNull());
        QVERIFY(rests());
        const QPoint at = map->property("cameraAt").toPoint();
        QTest::mousePress(map, Qt::LeftButton, {}, at);
        QTest::mouseMove(map, at + QPoint(3, -20));
        QTest::mouseRelease(map, Qt::LeftButton, {}, at + QPoint(3, -20));
        QVERIFY(rests());
        QCOMPARE(view()->property("source").toString(), QString("flown"));
        QVERIFY(view()->camera()[0].toDouble() > 32.0);
        QVERIFY(view()->camera()[1].toDouble() > -60.0);
        QVERIFY((map->cameraAt() - at - QPoint(3, -20)).manhattanLength() <= 1);
        const QPoint end = map->directionAt();
        const QPoint east = map->cameraAt() + QPoint(60, 0);
        QTest::mousePress(map, Qt::LeftButton, {}, end);
        QTest::mouseMove(map, east);
        QTest::mouseRelease(map, Qt::LeftButton, {}, east);
        QVERIFY(rests());
        QCOMPARE(view()->camera()[3].toDouble(), 90.0);
        map->setFocus();
        QTest::keyClick(map, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(rests());
        QCOMPARE(view()->camera()[3].toDouble(), 80.0);
        QVERIFY(!scenery()->isModified());
    }

    void whatIsMissingIsToldInTheView()
    {
        scenery()->findChild<QLineEdit *>("lineEditElevationFile")->setText("gone.png");
        QTRY_VERIFY(view()->message().contains("gone.png"));
        m_window->findChild<QMdiArea *>()->closeAllSubWindows();
        QTRY_COMPARE(view()->frame(), -1);
        QVERIFY(view()->picture().isNull());
        QVERIFY(!view()->message().isEmpty());
        QVERIFY(!child<QPushButton>("pushButtonReposition")->isEnabled());
    }

    // Each scenery keeps its place; the one that is closed leaves the other one's alone.
    void sceneriesKeepTheirPlaces()
    {
        QVERIFY(QFile::copy(m_dir->filePath("run.zph"), m_dir->filePath("other.zph")));
        child<QSlider>("timelineSlider")->setValue(4);
        QVERIFY(rests());
        m_window->open(m_dir->filePath("other.zph"));
        QVERIFY(rests());
        QCOMPARE(view()->frame(), 0);
        windows().last()->close();
        QVERIFY(rests());
        QTest::qWait(0);
        QCOMPARE(view()->frame(), 4);
        QCOMPARE(view()->message(), QString());
    }

    void aRunLeavesARefinedPicture()
    {
        action("action_Preview")->trigger();
        QTRY_VERIFY(!scenery()->isRendering());
        m_window->findChild<QMdiArea *>()->setActiveSubWindow(windows().first());
        QVERIFY(rests());
    }

    void theDockOpensAgain()
    {
        m_window->close();
        m_window.reset();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        QTRY_VERIFY(m_window->findChild<LiveDock *>()->isVisible());
        m_window->findChild<QAction *>("action_LiveView")->trigger();
        QVERIFY(!m_window->findChild<LiveDock *>()->isVisible());
    }

private:
    [[nodiscard]] LiveView *view() const { return m_window->findChild<LiveView *>(); }
    template <class Widget> [[nodiscard]] Widget *child(const char *name) const
    {
        return m_window->findChild<LiveDock *>()->findChild<Widget *>(name);
    }
    void click(const char *name) const { child<QPushButton>(name)->click(); }
    [[nodiscard]] SceneryMdiChild *scenery() const
    {
        return m_window->findChild<SceneryMdiChild *>();
    }
    [[nodiscard]] double field(const char *name) const
    {
        return scenery()->findChild<QDoubleSpinBox *>(name)->value();
    }
    // The final picture of the present state is shown.
    [[nodiscard]] bool rests() const
    {
        return QTest::qWaitFor([this] { return view()->isRefined(); }, 60000);
    }
    void wheel(int turned, Qt::KeyboardModifiers modifiers) const
    {
        const QPointF at = view()->rect().center();
        QWheelEvent event(at, view()->mapToGlobal(at), {}, {0, turned}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view(), &event);
    }
};

QTEST_MAIN(TestLiveView)
#include "test_liveview.moc"
