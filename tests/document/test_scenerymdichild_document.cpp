// Files, closing and runs of a scenery document.

#include "document/scenerydelegate.h"
#include "document/sceneryviewfixture.h"
#include "raster/imagefile.h"
#include "support/modalanswer.h"
#include "support/textfile.h"
#include "views/imagemdichild.h"

#include <QFileInfo>
#include <QTest>
#include <QTimer>

#include <new>

class TestSceneryMdiChildDocument : public QObject, private SceneryViewFixture {
    Q_OBJECT

private slots:
    void init() { openView(); }
    void cleanup() { closeView(); }
    void failedLoadIsTold();
    void closingAsks_data();
    void closingAsks();
    void failedSaveKeepsTheViewOpen();
    void runShowsItsPictureAndWritesFrames();
    void stoppedRunWritesNothingFurther();
    void viewCannotBeClosedDuringItsRun();
    void failedRunIsTold();
    void curvedRunWithoutPathIsTold();
    void runForWhichMemoryLacksIsToldAndEnds();
};

void TestSceneryMdiChildDocument::failedLoadIsTold()
{
    QVERIFY(writeBytes(path("a.zph"), "Bogus=1\n"));
    ModalAnswers answers;
    answers.pressButton(
        "Error",
        QString("Cannot open file \"%1\":\nNo such key: Bogus=1.").arg(path("a.zph")),
        QMessageBox::Ok);
    QVERIFY(!m_view->loadFile(path("a.zph")));
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(!QApplication::overrideCursor());
}

void TestSceneryMdiChildDocument::closingAsks_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closed");
    QTest::newRow("no") << int(QMessageBox::No) << true;
    QTest::newRow("cancel") << int(QMessageBox::Cancel) << false;
}

void TestSceneryMdiChildDocument::closingAsks()
{
    QFETCH(int, button);
    QFETCH(bool, closed);
    m_form->spinBoxGridX->setValue(5);
    ModalAnswers answers;
    answers.pressButton("Close File",
                        QString("The file has been modified:\n\"%1\"\nSave the changes?")
                            .arg(m_view->currentFile()),
                        QMessageBox::StandardButton(button));
    QCOMPARE(m_view->close(), closed);
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChildDocument::failedSaveKeepsTheViewOpen()
{
    QVERIFY(m_view->saveFile(path("a.zph")));
    QVERIFY(QFile::remove(path("a.zph")) && QDir().mkdir(path("a.zph")));
    m_form->spinBoxGridX->setValue(5);
    ModalAnswers answers;
    answers.pressButton("Close File",
                        QString("The file has been modified:\n\"%1\"\nSave the changes?")
                            .arg(m_view->currentFile()),
                        QMessageBox::Yes);
    answers.withDialog([this](QDialog *dialog) {
        auto *const box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), QString("Error"));
        QVERIFY(box->text().startsWith(
            QString("Cannot save file \"%1\":\n").arg(path("a.zph"))));
        box->button(QMessageBox::Ok)->click();
    });
    QVERIFY(!m_view->close());
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChildDocument::runShowsItsPictureAndWritesFrames()
{
    prepareRun();
    m_form->spinBoxFrameNumberOffset->setValue(4);
    m_form->spinBoxFrameNumberFrom->setValue(1);
    QVERIFY(!m_view->hasChildren());
    m_view->renderFinal();
    QVERIFY(m_view->hasChildren());
    QVERIFY(!QFileInfo::exists(path("f04.png")));
    QCOMPARE(loadImageFile(path("f05.png")).size(), QSize(32, 24));
    QVERIFY(QFileInfo::exists(path("f06.png")));
    auto *const image = m_view->findChild<ImageMdiChild *>();
    QCOMPARE(image->windowTitle(), path("f06"));
    QCOMPARE(image->size(),
             QSize(300, 200)); // the picture fits, the form's minimum holds
    m_view->renderPreview();
    QCOMPARE(loadImageFile(path("f06.png")).size(), QSize(16, 12));
    QCOMPARE(m_view->findChildren<ImageMdiChild *>().size(), 1); // used again
    m_zoom->setEnabled(true);
    delete image;
    QVERIFY(!m_zoom->isEnabled());
}

void TestSceneryMdiChildDocument::stoppedRunWritesNothingFurther()
{
    prepareRun();
    connect(&m_view->delegate(), &SceneryDelegate::frameStarted, this, [this](int frame) {
        if (frame == 1)
            m_view->stopRendering();
    });
    m_view->renderFinal();
    QVERIFY(QFileInfo::exists(path("f00.png")));
    QVERIFY(!QFileInfo::exists(path("f01.png")));
    QVERIFY(!m_view->isRendering());
}

void TestSceneryMdiChildDocument::viewCannotBeClosedDuringItsRun()
{
    prepareRun();
    m_view->delegate().setModified(false);
    bool closed = true;
    bool imageClosed = true;
    QTimer::singleShot(0, this, [&] {
        closed = m_view->close();
        imageClosed = m_view->findChild<ImageMdiChild *>()->close();
    });
    m_view->renderFinal();
    QVERIFY(!closed);
    QVERIFY(!imageClosed);
    QVERIFY(m_view->close());
}

void TestSceneryMdiChildDocument::failedRunIsTold()
{
    prepareRun();
    m_form->lineEditTextureFile->setText("none.png");
    ModalAnswers answers;
    answers.pressButton("Error", "Could not open texture file \"none.png\"",
                        QMessageBox::Ok);
    m_view->renderFinal();
    m_form->lineEditTextureFile->setText(path("t.png"));
    m_form->lineEditElevationFile->setText("none.png");
    answers.pressButton("Error", "Could not open elevation file \"none.png\"",
                        QMessageBox::Ok);
    m_view->renderPreview();
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(m_view->findChild<ImageMdiChild *>()->isHidden());
    QVERIFY(!m_view->isRendering());
}

void TestSceneryMdiChildDocument::curvedRunWithoutPathIsTold()
{
    prepareRun();
    click(m_form->radioButtonCurve);
    ModalAnswers answers;
    answers.pressButton(
        "SceneryDelegate::CurvedFlight()",
        "The number of control points is 0; it has to be greater than 3.\n",
        QMessageBox::Ok);
    m_view->renderFinal(); // one box, and none behind it
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(m_view->findChild<ImageMdiChild *>()->isHidden());
    // A later run tells its own reason.
    click(m_form->radioButtonStraight);
    m_form->lineEditTextureFile->setText("none.png");
    answers.pressButton("Error", "Could not open texture file \"none.png\"",
                        QMessageBox::Ok);
    m_view->renderFinal();
    QCOMPARE(answers.complaints(), QStringList());
}

void TestSceneryMdiChildDocument::runForWhichMemoryLacksIsToldAndEnds()
{
    prepareRun();
    bool lacks = true;
    connect(&m_view->delegate(), &SceneryDelegate::frameStarted, this, [&](int frame) {
        if (lacks && frame == 1)
            throw std::bad_alloc();
    });
    ModalAnswers answers;
    answers.pressButton("Error", "There is not enough memory for this run.",
                        QMessageBox::Ok);
    m_view->renderFinal();
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(!m_view->isRendering());
    QVERIFY(QFile::exists(path("f00.png"))); // the frames before are kept
    QVERIFY(!QFile::exists(path("f01.png")));
    m_view->refreshTimerTick(); // there is nothing left to show
    lacks = false;
    m_view->renderFinal();
    QVERIFY(QFile::exists(path("f02.png")));
    m_view->delegate().setModified(false);
    QVERIFY(m_view->close());
}

QTEST_MAIN(TestSceneryMdiChildDocument)
#include "test_scenerymdichild_document.moc"
