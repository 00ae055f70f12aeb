// The template of a dialog does what its user sees, and its table can make it.
#include "template/templatedialog.h"

#include "raster/elevationimage.h"
#include "tooldialogs/dialogtest.h"

class TestTemplateDialog : public QObject, private DialogTest {
    Q_OBJECT

private slots:
    void terrainIsWrittenUpsideDown();
    void aFileThatIsNoPictureIsTold();
    void theTableMakesIt();
};

void TestTemplateDialog::terrainIsWrittenUpsideDown()
{
    ElevationImage image(2, 1, QImage::Format_RGB32);
    image.setElevation(0, 0, 7);
    image.setElevation(1, 0, -300);
    TemplateDialog dialog;
    chooseInput(dialog, file("terrain.png", image));
    chooseOutput(dialog, path("turned.png"));
    QVERIFY(okEnabled(dialog));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    const ElevationImage turned(path("turned.png"));
    QCOMPARE(turned.elevation(0, 0), -7.0);
    QCOMPARE(turned.elevation(1, 0), 300.0);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void TestTemplateDialog::aFileThatIsNoPictureIsTold()
{
    TemplateDialog dialog;
    const QString name = junk("junk.png");
    chooseInput(dialog, name);
    chooseOutput(dialog, path("turned.png"));
    expectError(couldNotOpen(name));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!QFile::exists(path("turned.png")));
}

void TestTemplateDialog::theTableMakesIt()
{
    const std::unique_ptr<QDialog> dialog = TemplateEntry.make(nullptr);
    QCOMPARE(dialog->windowTitle(), QString::fromLatin1(TemplateEntry.title));
}

QTEST_MAIN(TestTemplateDialog)
#include "test_templatedialog.moc"
