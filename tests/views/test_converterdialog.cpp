#include "support/modalanswer.h"
#include "views/converterdialog.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// The widgets of two inputs and an output, as a form has them.
class PairForm {
public:
    void setupUi(QDialog *dialog)
    {
        const auto named = [dialog](QWidget &widget, const char *name) {
            widget.setParent(dialog);
            widget.setObjectName(QLatin1String(name));
        };
        named(ok, "pushButtonOK");
        named(browseFirst, "pushButtonBrowseFirst");
        named(browseSecond, "pushButtonBrowseSecond");
        named(browseTo, "pushButtonBrowseToFile");
        named(first, "lineEditFirst");
        named(second, "lineEditSecond");
        named(to, "lineEditToFile");
    }

    QPushButton ok, browseTo, browseFirst, browseSecond;
    QLineEdit first, second, to;
};

/// A dialog of that form.
class PairDialog : public FormDialog<PairForm> {
public:
    PairDialog() : FormDialog(QStringLiteral("Pair"), nullptr)
    {
        addInput(&first, {.filter = QStringLiteral("Text Files (*.txt)")});
        addInput(&second, {.caption = QStringLiteral("Save File")});
    }
    bool save(const QImage &image) { return saveOutput(image); }
    using PairForm::browseFirst;
    using PairForm::browseSecond;
    using PairForm::browseTo;
    using PairForm::first;
    using PairForm::ok;
    using PairForm::second;
    using PairForm::to;
};

QSettings settings()
{
    return QSettings(QStringLiteral("Kolvenar"), QStringLiteral("Zephrant"));
}

} // namespace

class TestConverterDialog : public QObject {
    Q_OBJECT

private slots:
    void init();
    void okIsEnabledByTheLastFileAndNeverDisabled();
    void theDirectoryIsRememberedForTheNextDialog();
    void cancelledBrowsingChangesNothing();
    void anOpenDialogMayBearTheCaptionOfASaveDialog();
    void unwritableOutputIsTold();

private:
    QString path(const char *name) const
    {
        return m_dir.filePath(QString::fromLatin1(name));
    }

    QTemporaryDir m_dir;
};

void TestConverterDialog::init()
{
    settings().clear();
    for (const char *name : {"a.txt", "b.png"}) {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("out")));
}

void TestConverterDialog::okIsEnabledByTheLastFileAndNeverDisabled()
{
    PairDialog dialog;
    QVERIFY(!dialog.ok.isEnabled());
    ModalAnswers answers;
    answers.chooseFile(QStringLiteral("Open File"), path("a.txt"));
    answers.chooseFile(QStringLiteral("Save File"), path("out/c.png"));
    answers.chooseFile(QStringLiteral("Save File"), path("b.png"));
    dialog.browseFirst.click();
    QVERIFY(!dialog.ok.isEnabled());
    dialog.browseTo.click();
    QVERIFY(!dialog.ok.isEnabled());
    dialog.browseSecond.click();
    QVERIFY(dialog.ok.isEnabled());
    QCOMPARE(dialog.first.text(), path("a.txt"));
    QCOMPARE(dialog.to.text(), path("out/c.png"));

    dialog.second.clear();
    answers.chooseFile(QStringLiteral("Open File"), path("a.txt"));
    dialog.browseFirst.click();
    QVERIFY(dialog.ok.isEnabled());
    QCOMPARE(answers.complaints(), QStringList());
}

void TestConverterDialog::theDirectoryIsRememberedForTheNextDialog()
{
    PairDialog dialog;
    ModalAnswers answers;
    answers.chooseFile(QStringLiteral("Open File"), path("a.txt"));
    dialog.browseFirst.click();
    QCOMPARE(settings().value(QStringLiteral("MRUDirectory")).toString(), m_dir.path());
    answers.chooseFile(QStringLiteral("Save File"), path("out/c.png"));
    dialog.browseTo.click();
    QCOMPARE(settings().value(QStringLiteral("MRUDirectory")).toString(), path("out"));

    // A name without a directory is looked for in the remembered one.
    PairDialog next;
    answers.chooseFile(QStringLiteral("Save File"), QStringLiteral("d.png"));
    next.browseTo.click();
    QCOMPARE(next.to.text(), path("out/d.png"));
    QCOMPARE(answers.complaints(), QStringList());
}

void TestConverterDialog::cancelledBrowsingChangesNothing()
{
    PairDialog dialog;
    dialog.first.setText(QStringLiteral("kept"));
    ModalAnswers answers;
    answers.cancelFile(QStringLiteral("Open File"));
    answers.cancelFile(QStringLiteral("Save File"));
    dialog.browseFirst.click();
    dialog.browseTo.click();
    QCOMPARE(dialog.first.text(), QStringLiteral("kept"));
    QCOMPARE(dialog.to.text(), QString());
    QVERIFY(!settings().contains(QStringLiteral("MRUDirectory")));
    QCOMPARE(answers.complaints(), QStringList());
}

void TestConverterDialog::anOpenDialogMayBearTheCaptionOfASaveDialog()
{
    PairDialog dialog;
    ModalAnswers answers;
    answers.chooseFile(QStringLiteral("Save File"), path("b.png"));
    dialog.browseSecond.click(); // a save dialog would ask whether to replace
    QCOMPARE(dialog.second.text(), path("b.png"));
    QCOMPARE(answers.complaints(), QStringList());
}

void TestConverterDialog::unwritableOutputIsTold()
{
    PairDialog dialog;
    QImage image(2, 2, QImage::Format_RGB888);
    image.fill(0);
    dialog.to.setText(path("absent/c.png"));
    ModalAnswers answers;
    answers.pressButton(
        QStringLiteral("Pair"),
        QStringLiteral("Could not save file \"%1\".").arg(dialog.to.text()),
        QMessageBox::Ok);
    QVERIFY(!dialog.save(image));
    QCOMPARE(answers.complaints(), QStringList());
    dialog.to.setText(path("out/c.png"));
    QVERIFY(dialog.save(image));
    QVERIFY(QFile::exists(path("out/c.png")));
}

QTEST_MAIN(TestConverterDialog)
#include "test_converterdialog.moc"
