#include "importdialogs/importdialogs.h"
#include "support/modalanswer.h"
#include "terrainbatch/terrainfixture.h"
#include "terrainbatch/toldruns.h"
#include "tooldialogs/tooldialogs.h"

#include <QFile>
#include <QSettings>
#include <QTest>

namespace {

std::unique_ptr<QDialog> dialogOf(const QString &action)
{
    for (const auto &table : {importDialogs(), toolDialogs()})
        for (const DialogEntry &entry : table)
            if (action == entry.object)
                return entry.make(nullptr);
    return nullptr;
}

} // namespace

/// A command and its dialog, from the same files with the same fields.
class TestSameAsDialog : public QObject, private TerrainFixture {
    Q_OBJECT

private slots:
    void initTestCase() { makeFiles(); }
    void init()
    {
        QSettings("Kolvenar", "Zephrant").clear();
        for (const char *name : {"dialog.png", "command.png"})
            QFile::remove(path(name));
    }

    void filesAreTheSame_data() { ToldRun::addRows(); }
    void filesAreTheSame()
    {
        const ToldRun told = ToldRun::fetched();
        const std::unique_ptr<QDialog> dialog = dialogOf(told.action);
        QVERIFY(dialog);
        dialog->show();
        ModalAnswers answers;
        told.announce(answers, path({}), "dialog.png");
        told.drive(*dialog);
        QCOMPARE(answers.complaints(), QStringList());
        const TerrainRun run = terrain(told.arguments + QStringList{"command.png"});
        QVERIFY2(run.status == 0, qPrintable(run.err));
        const QByteArray wanted = bytesOf("dialog.png");
        QVERIFY(!wanted.isEmpty());
        QVERIFY(bytesOf("command.png") == wanted);
    }
};

QTEST_MAIN(TestSameAsDialog)
#include "test_sameasdialog.moc"
