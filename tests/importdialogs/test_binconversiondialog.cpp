#include "importdialogs/binconversiondialog.h"
#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "support/factsof.h"
#include "support/modalanswer.h"

#include <QCheckBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Title = QStringLiteral("Convert Binary File Into Elevation File");
const QByteArray Header = "nrows 3\nncols 3\nnbits 8\nulxmap 1\nulymap 2\nxdim 0.5\n"
                          "ydim 0.5\nmap_units km\nnodata 0\n";

} // namespace

class TestBinConversionDialog : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<BinConversionDialog> m_dialog;

    QString path(const QString &name) const { return m_dir->filePath(name); }
    template <typename Widget> Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(name);
    }
    double value(const char *name) const { return child<QDoubleSpinBox>(name)->value(); }
    void click(const char *name) const
    {
        QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton);
    }
    void write(const QString &name, const QByteArray &bytes)
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void choose(ModalAnswers &answers, const QString &caption, const QString &name,
                const char *browse)
    {
        answers.chooseFile(caption, path(name));
        click(browse);
    }
    void chooseAll(ModalAnswers &answers, const QByteArray &raster,
                   const QByteArray &header, const QString &output = "out.png")
    {
        write("a.bil", raster);
        write("a.hdr", header);
        choose(answers, "Open File", "a.bil", "pushButtonBrowseFromFile");
        choose(answers, "Save File", output, "pushButtonBrowseToFile");
        choose(answers, "Open File", "a.hdr", "pushButtonBrowseHeaderFile");
    }
    static void expectRange(ModalAnswers &answers, const QString &lowest,
                            const QString &highest)
    {
        answers.pressButton(Title,
                            QString("Range of elevations written to the output file:\n"
                                    "minimum %1\nmaximum %2")
                                .arg(lowest, highest),
                            QMessageBox::Ok);
    }

private slots:
    void init()
    {
        QSettings("Kolvenar", "Zephrant").clear();
        m_dir = std::make_unique<QTemporaryDir>();
        m_dialog = std::make_unique<BinConversionDialog>();
        m_dialog->show();
    }

    void theHeaderFillsTheFields()
    {
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header);
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(child<QPushButton>("pushButtonOK")->isEnabled());
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerX"), 1.0);
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerY"), 2.0);
        QCOMPARE(value("doubleSpinBoxExtentX"), 1.0);
        QCOMPARE(value("doubleSpinBoxExtentY"), 1.0);
        QCOMPARE(value("doubleSpinBoxZScale"), 256.0);
        QCOMPARE(child<QLabel>("labelKilobytes1")->text(), QString("0"));
        for (const char *label :
             {"labelUpperLeftCornerXunits", "labelUpperLeftCornerYunits",
              "labelExtentXunits", "labelExtentYunits"})
            QCOMPARE(child<QLabel>(label)->text(), QString("km"));
        QVERIFY(child<QCheckBox>("checkBoxKeepNODATAValues")->isEnabled());
    }

    void okFollowsTheFields()
    {
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header);
        child<QLineEdit>("lineEditToFile")->clear();
        choose(answers, "Open File", "a.bil", "pushButtonBrowseFromFile");
        QVERIFY(!child<QPushButton>("pushButtonOK")->isEnabled());
        choose(answers, "Save File", "out.png", "pushButtonBrowseToFile");
        QVERIFY(child<QPushButton>("pushButtonOK")->isEnabled());
        QCOMPARE(answers.complaints(), QStringList());
    }

    void theRectangleIsConverted()
    {
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header);
        child<QDoubleSpinBox>("doubleSpinBoxZScale")->setValue(2.0);
        expectRange(answers, "194", "202"); // a to e
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_dialog->isVisible());
        const QImage image = loadImageFile(path("out.png"));
        QCOMPARE(image.size(), QSize(2, 2));
        QCOMPARE(ElevationImage::stepsOf(image.pixel(1, 1)), 2 * 'e');
    }

    void voidsAndCutValuesAreReported()
    {
        ModalAnswers answers;
        const QByteArray header = "nrows 2\nncols 2\nnbits 16\nbyteorder M\nulxmap 0\n"
                                  "ulymap 1\nxdim 1\nydim 1\nnodata -9999\n";
        // 1, -9999, 32767, -9999
        chooseAll(answers, QByteArray("\0\1\xd8\xf1\x7f\xff\xd8\xf1", 8), header);
        child<QDoubleSpinBox>("doubleSpinBoxExtentX")->setValue(2.0);
        child<QDoubleSpinBox>("doubleSpinBoxExtentY")->setValue(2.0);
        child<QDoubleSpinBox>("doubleSpinBoxZScale")->setValue(300.0);
        expectRange(answers, "0", "8.38861e+06");
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(factsOf(m_dialog->outcome()), QString("Voids 2, Values cut 1"));
    }

    void aLocaleWithACommaChangesNothing()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        init();
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header);
        child<QDoubleSpinBox>("doubleSpinBoxZScale")->setValue(2.5);
        expectRange(answers, "242.5", "252.5");
        click("pushButtonOK");
        QLocale::setDefault(before);
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(loadImageFile(path("out.png")).size(), QSize(2, 2));
    }

    void projectedCoordinatesAreClamped()
    {
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi",
                  "nrows 3\nncols 3\nnbits 8\nulxmap 512345.5\nulymap -4e6\ncellsize 30");
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerX"), 360.0);
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerY"), -360.0);
        QCOMPARE(value("doubleSpinBoxExtentX"), 60.0);
        QVERIFY(!child<QCheckBox>("checkBoxKeepNODATAValues")->isEnabled());
        QCOMPARE(child<QLabel>("labelExtentXunits")->text(), QString("pixel"));
        QCOMPARE(answers.complaints(), QStringList());
    }

    void numbersThatAreNoneFillTheFieldsWithZero()
    {
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi",
                  "nrows 3\nncols 1\nnbits 8\nulxmap nan\nulymap inf\nxdim nan\nydim 1");
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerX"), 0.0);
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerY"), 360.0);
        QCOMPARE(value("doubleSpinBoxExtentX"), 0.0);
        QCOMPARE(answers.complaints(), QStringList());
    }

    void guessesAreTold_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("text");
        QTest::newRow("8") << 9 << "Guessing 8 bits per pixel from the file size.";
        QTest::newRow("16") << 18 << "Guessing 16 bits per pixel from the file size.";
        QTest::newRow("32") << 36 << "Guessing 32 bits per pixel from the file size.";
    }
    void guessesAreTold()
    {
        QFETCH(int, size);
        QFETCH(QString, text);
        QByteArray header = Header;
        ModalAnswers answers;
        answers.chooseFile("Open File", path("a.bil"));
        write("a.bil", QByteArray(size, 'x'));
        write("a.hdr", header.replace("nbits 8\n", ""));
        click("pushButtonBrowseFromFile");
        answers.chooseFile("Open File", path("a.hdr"));
        answers.pressButton("Information", text, QMessageBox::Ok);
        click("pushButtonBrowseHeaderFile");
        QCOMPARE(answers.complaints(), QStringList());
    }

    void faultsKeepTheFields()
    {
        write("b.hdr", "nrows 3\nncols 3\nnbits 8\nnbands 3\nulxmap 5\nulymap 5\n"
                       "cellsize 1\n");
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header);
        answers.chooseFile("Open File", path("b.hdr"));
        answers.pressButton(
            "Error",
            "One or more errors have occured while reading the header file:\n\nBANDS - "
            "Number of spectral bands missing or invalid. Valid: 1 only.\nMake sure that "
            "the *.BIL, *.HDR and *.BLW files are present.",
            QMessageBox::Ok);
        click("pushButtonBrowseHeaderFile");
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(value("doubleSpinBoxUpperLeftCornerX"), 1.0);
        QCOMPARE(child<QLabel>("labelExtentXunits")->text(), QString("km"));
        QVERIFY(!child<QCheckBox>("checkBoxKeepNODATAValues")->isEnabled());
        QVERIFY(child<QPushButton>("pushButtonOK")->isEnabled());
    }

    void aMissingRasterLeavesTheDialogOpen()
    {
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header);
        QVERIFY(QFile::remove(path("a.bil")));
        answers.pressButton("Error",
                            QString("Could not open file \"%1\".").arg(path("a.bil")),
                            QMessageBox::Ok);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(m_dialog->isVisible());
    }

    void aMissingKeywordIsAskedAbout()
    {
        const QString question =
            "The BIL file begins with \"II*\", which requires the \"WGS 84\" keyword\n"
            "to locate the beginning of the elevation data block in the BIL file.\n"
            "That keyword could not be located. An import can only be attempted\n"
            "beginning at the first byte, most probably leading to incorrect "
            "results.\nProceed anyway?";
        ModalAnswers answers;
        chooseAll(answers, QByteArray("II*\0fghij", 9), Header);
        answers.pressButton("Warning", question, QMessageBox::No);
        click("pushButtonOK");
        QVERIFY(m_dialog->isVisible());
        QVERIFY(!QFile::exists(path("out.png")));
        answers.pressButton("Warning", question, QMessageBox::Yes);
        expectRange(answers, "0", "26112"); // NUL and f, times 256
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_dialog->isVisible());
    }

    void unwritableOutputIsToldBeforeTheRange()
    {
        QVERIFY(QDir(m_dir->path()).mkpath("gone"));
        ModalAnswers answers;
        chooseAll(answers, "abcdefghi", Header, "gone/out.png");
        QVERIFY(QDir(path("gone")).removeRecursively());
        answers.pressButton(
            "Error", QString("Could not save file \"%1\".").arg(path("gone/out.png")),
            QMessageBox::Ok);
        expectRange(answers, "24832", "25856");
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_dialog->isVisible());
    }

    void anUnknownSizeStoresNothing()
    {
        ModalAnswers answers;
        write("a.bil", "abc");
        choose(answers, "Open File", "a.bil", "pushButtonBrowseFromFile");
        choose(answers, "Save File", "out.png", "pushButtonBrowseToFile");
        write("a.hdr", "");
        answers.chooseFile("Open File", path("a.hdr"));
        answers.withDialog([](QDialog *box) { box->accept(); }); // the faults
        click("pushButtonBrowseHeaderFile");
        answers.pressButton("Error",
                            QString("Could not save file \"%1\".").arg(path("out.png")),
                            QMessageBox::Ok);
        expectRange(answers, "3.40282e+38", "-3.40282e+38");
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
    }
};

QTEST_MAIN(TestBinConversionDialog)
#include "test_binconversiondialog.moc"
