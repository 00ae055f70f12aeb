// Pictures of heights in their view.

#include "raster/elevationimage.h"
#include "raster/heightunit.h"
#include "raster/imagefile.h"
#include "views/imagemdichild.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

ElevationImage valley(int width = 90, int height = 60)
{
    ElevationImage image(width, height, QImage::Format_RGB888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setElevation(x, y, 100 * x + y - 50);
    return image;
}

} // namespace

class TestImageMdiChildHeights : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_view = new ImageMdiChild;
        m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    void cleanup() { delete m_view; }

    void heightsAreRecognised()
    {
        QVERIFY(m_view->loadFile(saved(valley())));
        QVERIFY(m_view->isElevation());
        QImage green(90, 60, QImage::Format_RGB32);
        green.fill(Qt::green);
        QVERIFY(m_view->loadFile(saved(green)));
        QVERIFY(!m_view->isElevation());
        // The user knows better.
        const QSignalSpy changed(m_view, &ImageMdiChild::heightsChanged);
        m_view->setElevation(true);
        QVERIFY(m_view->isElevation());
        QCOMPARE(changed.size(), 1);
    }

    void sidecarTellsThatAndTheUnit_data()
    {
        QTest::addColumn<QByteArray>("sidecar");
        QTest::addColumn<double>("metres");
        const auto item = [](const char *text) {
            return QByteArray("<PAMDataset><Metadata><MDI key=\"AREA\">x</MDI><MDI key=\""
                              "MetresPerHeightUnit\">") +
                   text + "</MDI></Metadata></PAMDataset>";
        };
        QTest::newRow("centimetres") << item("0.01") << 0.01;
        QTest::newRow("none") << QByteArray("<PAMDataset/>") << 0.0;
        QTest::newRow("zero") << item("0") << 0.0;
        QTest::newRow("infinite") << item("inf") << 0.0;
        QTest::newRow("comma") << item("0,01") << 0.0;
        QTest::newRow("junk") << QByteArray("<PAM\0<<<>", 9) << 0.0;
    }
    void sidecarTellsThatAndTheUnit()
    {
        QFETCH(QByteArray, sidecar);
        QFETCH(double, metres);
        QImage even(90, 60, QImage::Format_RGB32);
        even.fill(1234);
        const QString name = saved(even);
        QFile file(name + ".aux.xml");
        QVERIFY(file.open(QFile::WriteOnly) && file.write(sidecar) == sidecar.size());
        file.close();
        QCOMPARE(metresPerHeightUnit(name).value_or(0.0), metres);
        QVERIFY(m_view->loadFile(name));
        QCOMPARE(m_view->isElevation(), metres > 0);
        if (metres > 0)
            QCOMPARE(heightAt({5, 5}), QString("Height 12.34 m"));
    }

    void heightUnderTheMouseIsTold()
    {
        QVERIFY(m_view->loadFile(saved(valley())));
        m_view->resize(300, 300);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view));
        QCOMPARE(heightAt({0, 0}), QString("Height -50"));
        QCOMPARE(heightAt({89, 59}), QString("Height 8909"));
        QCOMPARE(heightAt({90, 10}), QString());
        m_view->slotFitToWindow(); // no main window: nothing happens
        label()->resize(180, 120); // enlarged
        QCOMPARE(heightAt({3, 5}), QString("Height 52"));
        QSignalSpy told(m_view, &ImageMdiChild::heightTold);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(m_view, &leave);
        QCOMPARE(told.last().first().toString(), QString());
        m_view->setElevation(false);
        told.clear();
        (void)heightAt({3, 5});
        QVERIFY(told.isEmpty());
    }

    void reliefIsShownAndThePictureStays()
    {
        const ElevationImage image = valley();
        const QString name = saved(image);
        QVERIFY(m_view->loadFile(name));
        const QImage raw = label()->pixmap().toImage();
        m_view->setShadedRelief(true);
        QVERIFY(m_view->isShadedRelief());
        QTRY_VERIFY(label()->pixmap().toImage() != raw);
        QCOMPARE(label()->pixmap().size(), image.size());
        QCOMPARE(heightAt({0, 0}), QString("Height -50"));
        QVERIFY(m_view->copy());
        QCOMPARE(QApplication::clipboard()->pixmap().toImage(), raw);
        const QString other = m_dir->filePath("other.png");
        QVERIFY(m_view->saveFile(other));
        QCOMPARE(QImage(other).convertToFormat(QImage::Format_RGB888),
                 QImage(name).convertToFormat(QImage::Format_RGB888));
        QVERIFY(!m_view->isModified());
        m_view->setShadedRelief(false);
        QCOMPARE(label()->pixmap().toImage(), raw);
    }

    // Neither its end nor the next picture waits for a relief that is being drawn.
    void reliefOfALargePictureIsStopped()
    {
        const QString name = saved(valley(3000, 2000));
        QVERIFY(m_view->loadFile(name));
        m_view->setShadedRelief(true);
        m_view->setShadedRelief(false);
        m_view->setShadedRelief(true);
        QVERIFY(m_view->loadFile(saved(valley())));
        QVERIFY(!m_view->isShadedRelief());
        QTest::qWait(20);
        QCOMPARE(label()->pixmap().size(), QSize(90, 60));
        QVERIFY(m_view->loadFile(name));
        m_view->setShadedRelief(true);
    }

    void frameOfARunIsShownAsItIs()
    {
        QVERIFY(m_view->loadFile(saved(valley())));
        m_view->setShadedRelief(true);
        QImage frame(20, 10, QImage::Format_RGB32);
        frame.fill(Qt::red);
        m_view->setPixmap(&frame, true);
        QVERIFY(!m_view->isElevation());
        QTest::qWait(20);
        QCOMPARE(label()->pixmap().toImage(), frame);
    }

private:
    QString saved(const QImage &image)
    {
        const QString name = m_dir->filePath(QString("%1.png").arg(++m_number));
        return saveImageFile(image, name) ? name : QString();
    }
    [[nodiscard]] QLabel *label() const
    {
        return qobject_cast<QLabel *>(m_view->findChild<QScrollArea *>()->widget());
    }
    // What is told with the mouse over a pixel of the label.
    QString heightAt(const QPoint &pixel)
    {
        QSignalSpy told(m_view, &ImageMdiChild::heightTold);
        const QPointF at = label()->mapTo(m_view, QPointF(pixel) + QPointF(.5, .5));
        QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(m_view, &move);
        return told.isEmpty() ? "nothing" : told.last().first().toString();
    }

    int m_number = 0;
    std::unique_ptr<QTemporaryDir> m_dir;
    ImageMdiChild *m_view = nullptr;
};

QTEST_MAIN(TestImageMdiChildHeights)
#include "test_imagemdichild_heights.moc"
