#include "document/sceneryviewfixture.h"

#include "raster/elevationimage.h"
#include "raster/imagefile.h"

#include <QSettings>

void SceneryViewFixture::openView()
{
    QSettings("Kolvenar", "Zephrant").clear();
    m_dir = std::make_unique<QTemporaryDir>();
    m_zoom = std::make_unique<QAction>();
    m_view = std::make_unique<SceneryMdiChild>(nullptr, m_zoom.get(), m_zoom.get(),
                                               m_zoom.get(), m_zoom.get());
    m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    m_form = &m_view->form();
    m_view->newFile();
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    QVERIFY(!m_view->isModified());
}

void SceneryViewFixture::closeView()
{
    m_view.reset();
    m_zoom.reset();
    m_dir.reset();
}

void SceneryViewFixture::writePictures(const QSize &texture, const QSize &elevation)
{
    QImage colours(texture, QImage::Format_RGB32);
    colours.fill(qRgb(90, 160, 60));
    QVERIFY(saveImageFile(colours, path("t.png")));
    ElevationImage heights(elevation, QImage::Format_RGB888);
    heights.clear(0xFF000000);
    heights.setElevation(1, 1, 500);
    heights.setElevation(2, 2, -100);
    QVERIFY(saveImageFile(heights, path("e.png")));
    m_form->lineEditTextureFile->setText(path("t.png"));
    m_form->lineEditElevationFile->setText(path("e.png"));
}

void SceneryViewFixture::prepareRun()
{
    writePictures({40, 30}, {40, 30});
    m_form->lineEditOutputFiles->setText(path("f%02d"));
    m_form->spinBoxSizeX->setValue(32);
    m_form->spinBoxSizeY->setValue(24);
    m_form->spinBoxFrameNumberTotal->setValue(3);
    m_form->spinBoxFrameNumberTo->setValue(2);
    click(m_form->pushButtonFromReposition);
    click(m_form->pushButtonToReposition);
}
