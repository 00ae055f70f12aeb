#include "importdialogs/japanconversiondialog.h"
#include "raster/imagefile.h"
#include "support/factsof.h"
#include "support/modalanswer.h"

#include <QDir>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Title = QStringLiteral("Japan DEM Import");
const QByteArray Whole = "12345678901234567890123  2  1\n123456789  -12-9999\n";

} // namespace

class TestJapanConversionDialog : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<JapanConversionDialog> m_dialog;

    QString path(const QString &name) const { return m_dir->filePath(name); }
    void click(const char *name) const
    {
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(name), Qt::LeftButton);
    }
    void choose(ModalAnswers &answers, const QByteArray &bytes, const QString &output)
    {
        QFile file(path("a.mem"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        answers.chooseFile("Open File", path("a.mem"));
        answers.chooseFile("Save File", path(output));
        click("pushButtonBrowseFromFile");
        click("pushButtonBrowseToFile");
    }

private slots:
    void init()
    {
        QSettings("Kolvenar", "Zephrant").clear();
        m_dir = std::make_unique<QTemporaryDir>();
        m_dialog = std::make_unique<JapanConversionDialog>();
        m_dialog->show();
    }

    void aFileIsImported()
    {
        QCOMPARE(m_dialog->windowTitle(), Title);
        const auto *ok = m_dialog->findChild<QPushButton *>("pushButtonOK");
        QVERIFY(!ok->isEnabled());
        ModalAnswers answers;
        choose(answers, Whole, "out.png");
        QVERIFY(ok->isEnabled());
        answers.pressButton(Title, "1 non-zero elevations found.", QMessageBox::Ok);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_dialog->isVisible());
        const QImage image = loadImageFile(path("out.png"));
        QCOMPARE(image.size(), QSize(2, 1));
        QCOMPARE(image.pixel(0, 0), QRgb(0xFFFFFFF4)); // -12
        QCOMPARE(image.pixel(1, 0), QRgb(0xFF000000));
        QCOMPARE(factsOf(m_dialog->outcome()), QString("Voids 1"));
    }

    void theVoidValueCounts()
    {
        m_dialog->findChild<QSpinBox *>("spinBoxVoidValue")->setValue(-12);
        ModalAnswers answers;
        choose(answers, Whole, "out.png");
        answers.pressButton(Title, "1 non-zero elevations found.", QMessageBox::Ok);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(loadImageFile(path("out.png")).pixel(0, 0), QRgb(0xFF000000));
    }

    void failuresLeaveTheDialogOpen()
    {
        ModalAnswers answers;
        choose(answers, Whole.chopped(1), "out.png");
        answers.pressButton("Error",
                            QString("Could not scan to a newline character in \"%1\".")
                                .arg(path("a.mem")),
                            QMessageBox::Ok);
        click("pushButtonOK");
        QVERIFY(m_dialog->isVisible());
        QVERIFY(!QFile::exists(path("out.png")));
        QVERIFY(QFile::remove(path("a.mem")));
        answers.pressButton(Title,
                            QString("Could not open file \"%1\".").arg(path("a.mem")),
                            QMessageBox::Ok);
        click("pushButtonOK");
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(answers.complaints(), QStringList());
    }

    void unwritableOutputIsToldBeforeTheCount()
    {
        QVERIFY(QDir(m_dir->path()).mkpath("gone"));
        ModalAnswers answers;
        choose(answers, Whole, "gone/out.png");
        QVERIFY(QDir(path("gone")).removeRecursively());
        answers.pressButton(
            Title, QString("Could not save file \"%1\".").arg(path("gone/out.png")),
            QMessageBox::Ok);
        answers.pressButton(Title, "1 non-zero elevations found.", QMessageBox::Ok);
        click("pushButtonOK");
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY(!m_dialog->isVisible());
    }
};

QTEST_MAIN(TestJapanConversionDialog)
#include "test_japanconversiondialog.moc"
