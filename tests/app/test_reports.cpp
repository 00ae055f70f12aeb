// The report on what an importer or a tool has come to.

#include "app/windowfixture.h"
#include "raster/elevationimage.h"
#include "support/modalanswer.h"
#include "views/imagemdichild.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTimer>

class TestReports : public QObject, private WindowFixture {
    Q_OBJECT

private slots:
    void init() { openWindow(); }
    void cleanup() { closeWindow(); }

    void toolIsReported()
    {
        QVERIFY(!action("action_Report")->isEnabled());
        runTool();
        QTRY_COMPARE(notice(), QString("out.png: rows 60, columns 80, minimum 1, "
                                       "maximum 4524"));
        QCOMPARE(hintButton()->text(), QString("&Report..."));
        ModalAnswers answers;
        QString facts;
        QSize thumbnail;
        answers.withDialog([&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QString("reportDialog"));
            facts =
                dialog->findChild<QPlainTextEdit *>("plainTextEditFacts")->toPlainText();
            thumbnail = dialog->findChild<QLabel *>("labelThumbnail")->pixmap().size();
            QVERIFY(
                !dialog->findChild<QPushButton *>("pushButtonUseInScenery")->isEnabled());
            dialog->reject();
        });
        hintButton()->click();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(facts, QString("File: %1\nRows: 60\nColumns: 80\nMinimum: 1\n"
                                "Maximum: 4524")
                            .arg(m_dir->filePath("out.png")));
        QCOMPARE(thumbnail, QSize(80, 60));
    }

    void resultIsOpened()
    {
        runTool();
        QTRY_VERIFY(action("action_Report")->isEnabled());
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) {
            dialog->findChild<QPushButton *>("pushButtonOpenResult")->click();
        });
        action("action_Report")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        auto *const view = m_window->findChild<ImageMdiChild *>();
        QVERIFY(view);
        QCOMPARE(view->currentFile(),
                 QFileInfo(m_dir->filePath("out.png")).canonicalFilePath());
    }

    void resultIsUsedInTheScenery()
    {
        const QString name = path("s.zph");
        QVERIFY(writeBytes(name, "[Param]\n"));
        m_window->open(name);
        runTool();
        QTRY_VERIFY(action("action_Report")->isEnabled());
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) {
            dialog->findChild<QPushButton *>("pushButtonUseInScenery")->click();
        });
        action("action_Report")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QCOMPARE(m_window->findChild<QLineEdit *>("lineEditElevationFile")->text(),
                 m_dir->filePath("out.png"));
        QCOMPARE(m_window->findChild<QLineEdit *>("lineEditTextureFile")->text(),
                 QString());
        QVERIFY(m_window->activeMdiChild()->isModified());
        answers.pressButton("Close File",
                            QString("The file has been modified:\n\"%1\"\nSave the "
                                    "changes?")
                                .arg(name),
                            QMessageBox::No);
        m_window->findChild<QMdiArea *>()->closeAllSubWindows();
    }

    // What a box has told of a failed try stands in the report on the good one.
    void messagesAreKept()
    {
        ModalAnswers answers;
        answers.withDialog([this](QDialog *dialog) {
            setFiles(dialog, m_dir->filePath("none.png"));
            QTimer::singleShot(0, dialog, [] {
                auto *const box =
                    qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                QVERIFY(box);
                box->accept();
            });
            dialog->accept();
            QVERIFY(dialog->isVisible());
            setFiles(dialog, elevation());
            dialog->accept();
        });
        action("action_ChangeBlue0PixelsDialog")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QTRY_VERIFY(action("action_Report")->isEnabled());
        answers.withDialog([](QDialog *dialog) {
            const auto *list = dialog->findChild<QListWidget *>("listWidgetMessages");
            QCOMPARE(list->count(), 1);
            QVERIFY2(list->item(0)->text().contains("none.png"),
                     qPrintable(list->item(0)->text()));
            dialog->reject();
        });
        action("action_Report")->trigger();
    }

    void cancelledDialogIsNotReported()
    {
        ModalAnswers answers;
        answers.withDialog([](QDialog *dialog) { dialog->reject(); });
        action("action_ResampleDialog")->trigger();
        QTest::qWait(20);
        QCOMPARE(notice(), QString());
        QVERIFY(!action("action_Report")->isEnabled());
    }

private:
    QString elevation()
    {
        ElevationImage image(80, 60, QImage::Format_RGB888);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 80; ++x)
                image.setElevation(x, y, x / 2 * 2 * (y / 2 * 2));
        const QString name = m_dir->filePath("e.png");
        return saveImageFile(image, name) ? name : QString();
    }
    void setFiles(QDialog *dialog, const QString &from)
    {
        dialog->findChild<QLineEdit *>("lineEditFromFile")->setText(from);
        dialog->findChild<QLineEdit *>("lineEditToFile")
            ->setText(m_dir->filePath("out.png"));
    }
    // Runs a tool as its dialog does.
    void runTool()
    {
        ModalAnswers answers;
        answers.withDialog([this](QDialog *dialog) {
            setFiles(dialog, elevation());
            dialog->accept();
        });
        action("action_ChangeBlue0PixelsDialog")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
    }
    [[nodiscard]] QString notice() const { return noticeLabel()->notice(); }
};

QTEST_MAIN(TestReports)
#include "test_reports.moc"
