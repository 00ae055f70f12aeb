#include "importdialogs/sdtsconversiondialog.h"
#include "support/factsof.h"
#include "support/modalanswer.h"
#include "support/sdtstransfer.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

namespace {

int numbered(int column, int row) { return 100 * (row + 1) + column; }

} // namespace

class TestSdtsConversionDialog : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void itStartsEmpty();
    void choosingACatalogFillsTheForm();
    void aTransferIsConverted();
    void voidAndFillAreReported();
    void theSpinBoxesAreForShow();
    void metersBecomeFeet();
    void anUnknownUnitIsTakenForMillimeters();
    void theUnitOfTheUserIsOffered();
    void theUnitOfTheUserCountsInAnyCase();
    void withoutCellsTheDialogStays();
    void whatCannotBeSavedKeepsTheDialog();
    void cancelledBrowsingChangesNothing();
    void theDirectoryIsRemembered();
    void underlinedLettersAreKeys();
    void withoutUnitTheFactorIsOne();

private:
    template <class T> T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QLatin1String(name));
    }
    void click(const char *name) const
    {
        QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton);
    }
    QString text(const char *name) const { return child<QLineEdit>(name)->text(); }
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void write(const QString &name, const std::string &bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), qint64(bytes.size()));
    }
    void remake()
    {
        m_dialog = std::make_unique<SdtsConversionDialog>();
        m_dialog->show();
    }
    // Chooses the catalog and the output; `warning` is that about the unit, if any.
    void chooseFiles(const QString &warning = {}, const QString &output = "out.png") const
    {
        ModalAnswers answers;
        answers.chooseFile("Open File", path("TR01CATD.DDF"));
        if (!warning.isEmpty())
            answers.pressButton("Warning", warning, QMessageBox::Ok);
        click("pushButtonBrowseFromCATDFile");
        answers.chooseFile("Save File", path(output));
        click("pushButtonBrowseToFile");
        QCOMPARE(answers.complaints(), QStringList());
    }
    QList<int> rowOfOutput() const
    {
        const ElevationImage image(path("out.png"));
        QList<int> row;
        for (int x = 0; x < image.width(); ++x)
            row.append(ElevationImage::stepsOf(image.pixel(x, 0)));
        return row;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SdtsConversionDialog> m_dialog;
};

void TestSdtsConversionDialog::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    for (const auto &[name, bytes] : sdts::transfer(3, 2, numbered))
        write(QString::fromStdString(name), bytes);
    remake();
}

void TestSdtsConversionDialog::cleanup()
{
    m_dialog.reset();
    QSettings("Kolvenar", "Zephrant").clear();
}

void TestSdtsConversionDialog::itStartsEmpty()
{
    for (const char *const name :
         {"lineEditFromCATDFile", "lineEditDDSHFile", "lineEditDDOMFile",
          "lineEditCEL0File", "lineEditToFile", "lineEditInputUnits"}) {
        QVERIFY(child<QLineEdit>(name)->isReadOnly());
        QCOMPARE(text(name), QString());
    }
    QVERIFY(!child<QPushButton>("pushButtonOK")->isEnabled());
    QCOMPARE(child<QSpinBox>("spinBoxVoidValue")->value(), -32767);
    QCOMPARE(child<QSpinBox>("spinBoxFillValue")->value(), -32766);
    QCOMPARE(child<QComboBox>("comboBoxOutputUnits")->count(), 8);
    QCOMPARE(child<QComboBox>("comboBoxOutputUnits")->currentText(),
             QString("millimeters"));
}

void TestSdtsConversionDialog::choosingACatalogFillsTheForm()
{
    write("TR01DDOM.DDF", sdts::domain({{"-9999", "void"}, {"9999999", "FILL"}}));
    ModalAnswers answers;
    answers.chooseFile("Open File", path("TR01CATD.DDF"));
    click("pushButtonBrowseFromCATDFile");
    QCOMPARE(answers.complaints(), QStringList());
    QCOMPARE(text("lineEditFromCATDFile"), path("TR01CATD.DDF"));
    QCOMPARE(text("lineEditDDSHFile"), path("TR01DDSH.DDF"));
    QCOMPARE(text("lineEditDDOMFile"), path("TR01DDOM.DDF"));
    QCOMPARE(text("lineEditCEL0File"), path("TR01CEL0.DDF"));
    QCOMPARE(text("lineEditInputUnits"), QString("meters"));
    QCOMPARE(child<QComboBox>("comboBoxOutputUnits")->currentText(), QString("meters"));
    QCOMPARE(child<QSpinBox>("spinBoxVoidValue")->value(), -9999);
    QCOMPARE(child<QSpinBox>("spinBoxFillValue")->value(), 8388607); // as far as it goes
    QVERIFY(!child<QPushButton>("pushButtonOK")->isEnabled());
}

void TestSdtsConversionDialog::aTransferIsConverted()
{
    chooseFiles();
    QVERIFY(child<QPushButton>("pushButtonOK")->isEnabled());
    click("pushButtonOK");
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(rowOfOutput(), QList<int>({100, 101, 102}));
    QCOMPARE(ElevationImage(path("out.png")).height(), 2);
}

void TestSdtsConversionDialog::voidAndFillAreReported()
{
    write("TR01DDOM.DDF", sdts::domain({{"101", "VOID"}, {"202", "FILL"}}));
    chooseFiles();
    click("pushButtonOK");
    QCOMPARE(rowOfOutput(), QList<int>({100, 0, 102}));
    QCOMPARE(factsOf(m_dialog->outcome()), QString("Voids 2"));
}

void TestSdtsConversionDialog::theSpinBoxesAreForShow()
{
    chooseFiles();
    child<QSpinBox>("spinBoxVoidValue")->setValue(100);
    child<QSpinBox>("spinBoxFillValue")->setValue(101);
    click("pushButtonOK");
    QCOMPARE(rowOfOutput(), QList<int>({100, 101, 102}));
}

void TestSdtsConversionDialog::metersBecomeFeet()
{
    chooseFiles();
    child<QComboBox>("comboBoxOutputUnits")->setCurrentText("feet");
    click("pushButtonOK");
    QCOMPARE(rowOfOutput(), QList<int>({328, 331, 335})); // by 1000 / 304.8
}

void TestSdtsConversionDialog::anUnknownUnitIsTakenForMillimeters()
{
    write("TR01DDSH.DDF", sdts::schema("Fathoms"));
    child<QComboBox>("comboBoxOutputUnits")->setCurrentText("centimeters");
    chooseFiles("The DDSH file \"" + path("TR01DDSH.DDF") +
                "\"\ncontains an unknown elevation unit: \"fathoms\"");
    QCOMPARE(child<QComboBox>("comboBoxOutputUnits")->currentText(),
             QString("centimeters"));
    click("pushButtonOK");
    QCOMPARE(rowOfOutput(), QList<int>({10, 10, 10})); // 10.0, 10.1, 10.2
}

void TestSdtsConversionDialog::theUnitOfTheUserIsOffered()
{
    QSettings("Kolvenar", "Zephrant").setValue("userDefinedUnitName", "fathoms");
    QSettings("Kolvenar", "Zephrant").setValue("userDefinedUnitScale", 1828.8);
    remake();
    write("TR01DDSH.DDF", sdts::schema("FATHOMS"));
    chooseFiles();
    QCOMPARE(child<QComboBox>("comboBoxOutputUnits")->currentIndex(), 8);
    child<QComboBox>("comboBoxOutputUnits")->setCurrentText("feet");
    click("pushButtonOK");
    QCOMPARE(rowOfOutput(), QList<int>({600, 606, 612}));
}

void TestSdtsConversionDialog::theUnitOfTheUserCountsInAnyCase()
{
    QSettings("Kolvenar", "Zephrant").setValue("userDefinedUnitName", "Fathoms");
    QSettings("Kolvenar", "Zephrant").setValue("userDefinedUnitScale", 1828.8);
    remake();
    write("TR01DDSH.DDF", sdts::schema("FATHOMS"));
    chooseFiles("The DDSH file \"" + path("TR01DDSH.DDF") +
                "\"\ncontains an unknown elevation unit: \"fathoms\"");
    child<QComboBox>("comboBoxOutputUnits")->setCurrentText("feet");
    click("pushButtonOK");
    QCOMPARE(rowOfOutput(), QList<int>({600, 606, 612}));
}

void TestSdtsConversionDialog::withoutCellsTheDialogStays()
{
    QFile::remove(path("TR01CEL0.DDF"));
    chooseFiles();
    ModalAnswers answers;
    answers.pressButton("Error", "Could not create output image.", QMessageBox::Ok);
    click("pushButtonOK");
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(m_dialog->isVisible());
    QVERIFY(!QFile::exists(path("out.png")));
}

void TestSdtsConversionDialog::whatCannotBeSavedKeepsTheDialog()
{
    chooseFiles();
    child<QLineEdit>("lineEditToFile")->setText(path("no/such/out.png"));
    ModalAnswers answers;
    answers.pressButton("Error",
                        "Could not save file \"" + path("no/such/out.png") + "\".",
                        QMessageBox::Ok);
    click("pushButtonOK");
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(m_dialog->isVisible());
}

void TestSdtsConversionDialog::cancelledBrowsingChangesNothing()
{
    ModalAnswers answers;
    answers.cancelFile("Open File");
    click("pushButtonBrowseFromCATDFile");
    answers.cancelFile("Save File");
    click("pushButtonBrowseToFile");
    QCOMPARE(answers.complaints(), QStringList());
    QCOMPARE(text("lineEditFromCATDFile"), QString());
    QCOMPARE(text("lineEditToFile"), QString());
    QCOMPARE(text("lineEditDDSHFile"), QString());
}

void TestSdtsConversionDialog::theDirectoryIsRemembered()
{
    ModalAnswers answers;
    answers.chooseFile("Open File", path("TR01CATD.DDF"));
    click("pushButtonBrowseFromCATDFile");
    QCOMPARE(QSettings("Kolvenar", "Zephrant").value("MRUDirectory").toString(),
             m_folder->path());
}

void TestSdtsConversionDialog::underlinedLettersAreKeys()
{
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    const std::pair<Qt::Key, const char *> keys[] = {{Qt::Key_F, "lineEditFromCATDFile"},
                                                     {Qt::Key_T, "lineEditToFile"},
                                                     {Qt::Key_V, "spinBoxVoidValue"},
                                                     {Qt::Key_L, "spinBoxFillValue"}};
    for (const auto &[key, name] : keys) {
        QTest::keyClick(m_dialog.get(), key, Qt::AltModifier);
        QVERIFY2(child<QWidget>(name)->hasFocus(), name);
    }
}

void TestSdtsConversionDialog::withoutUnitTheFactorIsOne()
{
    chooseFiles();
    child<QComboBox>("comboBoxOutputUnits")->setCurrentIndex(-1);
    ModalAnswers answers;
    answers.pressButton(
        "Error", "Unsupported unit in the input data.Using a scaling factor of 1.0.",
        QMessageBox::Ok);
    click("pushButtonOK");
    QCOMPARE(answers.complaints(), QStringList());
    QCOMPARE(rowOfOutput(), QList<int>({100, 101, 102}));
}

QTEST_MAIN(TestSdtsConversionDialog)
#include "test_sdtsconversiondialog.moc"
