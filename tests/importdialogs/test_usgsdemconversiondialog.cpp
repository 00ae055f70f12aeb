#include "importdialogs/demdatadialog.h"
#include "importdialogs/usgsdemconversiondialog.h"
#include "importers/usgsdemfile.h"
#include "raster/imagefile.h"
#include "support/factsof.h"
#include "support/modalanswer.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Title = QStringLiteral("Convert USGS DEM File(s) Into Elevation File");
const QString Several = QStringLiteral("Select one or more files to open");

// Presses a button of the table with a header.
void answerHeader(QDialog *dialog, const char *button, QStringList *shown)
{
    const auto *table = dialog->findChild<QTableWidget *>("tableWidgetDEMData");
    QVERIFY(table);
    *shown << dialog->windowTitle() + ": " + table->item(0, 0)->text().trimmed();
    QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
}

} // namespace

class TestUsgsDemConversionDialog : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<UsgsDemConversionDialog> m_dialog;
    QStringList m_shown;

    QString path(const QString &name) const { return m_dir->filePath(name); }
    QPushButton *button(const char *name) const
    {
        return m_dialog->findChild<QPushButton *>(name);
    }
    QString text(const char *name) const
    {
        return m_dialog->findChild<QLineEdit *>(name)->text();
    }
    void click(const char *name) const
    {
        QTest::mouseClick(button(name), Qt::LeftButton);
    }
    void expectHeader(ModalAnswers &answers, const char *pressed = "pushButtonOK")
    {
        answers.withDialog(
            [this, pressed](QDialog *d) { answerHeader(d, pressed, &m_shown); });
    }
    // Two tiles side by side.
    void writeTiles() const
    {
        UsgsDemFile west;
        west.name = "WEST";
        west.profiles = {{1, 2, 0}, {3, 4, 0}, {5, 6, 0}};
        UsgsDemFile east = west;
        east.name = "EAST";
        east.east += 60.0;
        west.write(path("west.dem"));
        east.write(path("east.dem"));
    }
    void chooseTiles(ModalAnswers &answers, const QString &output)
    {
        answers.chooseFiles(Several, {path("west.dem"), path("east.dem")});
        answers.chooseFile("Save File", path(output));
        click("pushButtonBrowseFromFile");
        click("pushButtonBrowseToFile");
    }

private slots:
    void init()
    {
        QSettings("Kolvenar", "Zephrant").clear();
        m_dir = std::make_unique<QTemporaryDir>();
        m_dialog = std::make_unique<UsgsDemConversionDialog>();
        m_dialog->show();
        m_shown.clear();
    }

    void startsEmpty()
    {
        QCOMPARE(m_dialog->windowTitle(), Title);
        QVERIFY(!button("pushButtonOK")->isEnabled());
        const auto *voids = m_dialog->findChild<QSpinBox *>("spinBoxVoidValue");
        QCOMPARE(voids->value(), -9999);
        QCOMPARE(voids->minimum(), -8388608);
        QCOMPARE(voids->maximum(), 8388607);
    }

    void severalFilesBecomeOne()
    {
        writeTiles();
        ModalAnswers answers;
        chooseTiles(answers, "out.png");
        QCOMPARE(text("lineEditFromFile"),
                 QString("\"%1\" \"%2\"").arg(path("west.dem"), path("east.dem")));
        QCOMPARE(QSettings("Kolvenar", "Zephrant").value("MRUDirectory").toString(),
                 m_dir->path());
        QVERIFY(button("pushButtonOK")->isEnabled());
        expectHeader(answers);
        expectHeader(answers);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(m_shown, (QStringList{"DEM Data: EAST", "DEM Data: WEST"}));
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(text("lineEditCurrentInputFile"), QString());
        const QImage image = loadImageFile(path("out.png"));
        QCOMPARE(image.size(), QSize(4, 2));
        QCOMPARE(image.pixel(1, 0), QRgb(0xFF000004));
        QCOMPARE(factsOf(m_dialog->outcome()), QString("Voids 0"));
    }

    void voidsAreReported()
    {
        writeTiles();
        m_dialog->findChild<QSpinBox *>("spinBoxVoidValue")->setValue(4);
        ModalAnswers answers;
        chooseTiles(answers, "out.png");
        expectHeader(answers);
        expectHeader(answers);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(factsOf(m_dialog->outcome()), QString("Voids 2")); // one in each file
    }

    void cancelOfAHeaderSavesNothing()
    {
        writeTiles();
        ModalAnswers answers;
        chooseTiles(answers, "out.png");
        expectHeader(answers);
        expectHeader(answers, "pushButtonCancel");
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!QFile::exists(path("out.png")));
        QVERIFY(!m_dialog->isVisible());
    }

    void jumpsAreAskedAbout()
    {
        UsgsDemFile file;
        file.profiles = {{100, 700, 100, 0}, {1, 1, 1, 1}};
        file.write(path("a.dem"));
        ModalAnswers answers;
        answers.chooseFile(Several, path("a.dem"));
        answers.chooseFile("Save File", path("out.ppm"));
        click("pushButtonBrowseFromFile");
        click("pushButtonBrowseToFile");
        expectHeader(answers);
        answers.pressButton(Title,
                            "Suspicious elevation value:\nChanged from 100to 700 in "
                            "(0/1).\nContinue checking?",
                            QMessageBox::Yes);
        answers.pressButton(Title,
                            "Suspicious elevation value:\nChanged from 700to 100 in "
                            "(0/0).\nContinue checking?",
                            QMessageBox::No);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(QFile::exists(path("out.ppm")));
    }

    void unwritableOutputIsTold()
    {
        writeTiles();
        ModalAnswers answers;
        QVERIFY(QDir(m_dir->path()).mkpath("gone"));
        chooseTiles(answers, "gone/out.png");
        QVERIFY(QDir(path("gone")).removeRecursively());
        expectHeader(answers);
        expectHeader(answers);
        answers.pressButton(
            Title, QString("Could not save file \"%1\".").arg(path("gone/out.png")),
            QMessageBox::Ok);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_dialog->isVisible());
    }

    void cancelledBrowsingForgetsTheFiles()
    {
        writeTiles();
        ModalAnswers answers;
        chooseTiles(answers, "out.png");
        const QString shown = text("lineEditFromFile");
        answers.cancelFile(Several);
        click("pushButtonBrowseFromFile");
        QCOMPARE(text("lineEditFromFile"), shown);
        answers.pressButton(Title,
                            QString("Could not save file \"%1\".").arg(path("out.png")),
                            QMessageBox::Ok);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
    }

    void theHeaderCannotBeEdited()
    {
        UsgsDemData data;
        DemDataDialog dialog(nullptr, &data);
        const auto *table = dialog.findChild<QTableWidget *>("tableWidgetDEMData");
        QCOMPARE(table->columnCount(), 1);
        QCOMPARE(table->rowCount(), 51); // no corners
        QCOMPARE(table->verticalHeaderItem(5)->text(), QString("Sectional indicator"));
        for (int row = 0; row < table->rowCount(); ++row)
            QCOMPARE(int(table->item(row, 0)->flags()), 37);
    }
};

QTEST_MAIN(TestUsgsDemConversionDialog)
#include "test_usgsdemconversiondialog.moc"
