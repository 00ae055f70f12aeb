// The templates of dialogs do what their users see, and their tables can make them.
#include "template/templatedialog.h"
#include "template/templateimportdialog.h"

#include "raster/elevationimage.h"
#include "tooldialogs/dialogtest.h"

class TestTemplateDialog : public QObject, private DialogTest {
    Q_OBJECT

private slots:
    void terrainIsWrittenUpsideDown();
    void aFileThatIsNoPictureIsTold();
    void theTablesMakeThem();
    void aFileIsImported();
    void aFileThatIsCutOffIsTold();

private:
    // Writes a file of the template's format with so many of its bytes.
    [[nodiscard]] QString rawFile(qsizetype length) const;
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

void TestTemplateDialog::theTablesMakeThem()
{
    for (const DialogEntry &entry : {TemplateEntry, TemplateImportEntry}) {
        const std::unique_ptr<QDialog> dialog = entry.make(nullptr);
        QCOMPARE(dialog->windowTitle(), QString::fromLatin1(entry.title));
        QCOMPARE("action_" + dialog->objectName(), QString::fromLatin1(entry.object));
        QVERIFY(!dialog->whatsThis().isEmpty());
    }
}

QString TestTemplateDialog::rawFile(qsizetype length) const
{
    const QByteArray bytes = QByteArray::fromHex("02000100"
                                                 "0100feff");
    QFile file(path("terrain.raw"));
    const bool written = file.open(QIODevice::WriteOnly) &&
                         file.write(bytes.left(length)) == std::min(length, bytes.size());
    return written ? file.fileName() : QString();
}

void TestTemplateDialog::aFileIsImported()
{
    const std::unique_ptr<QDialog> dialog = TemplateImportEntry.make(nullptr);
    chooseInput(*dialog, rawFile(8));
    chooseOutput(*dialog, path("terrain.png"));
    click(*dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    const ElevationImage image(path("terrain.png"));
    QCOMPARE(image.size(), QSize(2, 1));
    QCOMPARE(image.elevation(0, 0), 1.0);
    QCOMPARE(image.elevation(1, 0), -2.0);
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void TestTemplateDialog::aFileThatIsCutOffIsTold()
{
    TemplateImportDialog dialog;
    const QString name = rawFile(7);
    chooseInput(dialog, name);
    chooseOutput(dialog, path("terrain.png"));
    expectError(QStringLiteral("The file \"%1\" ends in row 0.").arg(name),
                QStringLiteral("Template Import"));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!QFile::exists(path("terrain.png")));
}

QTEST_MAIN(TestTemplateDialog)
#include "test_templatedialog.moc"
