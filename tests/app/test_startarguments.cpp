// The arguments of the program, and the program itself where it needs no screen.

#include "app/startarguments.h"

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "raster/imagefile.h"
#include "support/modalanswer.h"
#include "views/mdichild.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestStartArguments : public QObject {
    Q_OBJECT

private slots:
    void filesAreNamedByTheirAbsolutePaths()
    {
        const auto start = StartArguments::read({"zephrant", "a.zph", "/x/b.png"});
        QCOMPARE(start.files,
                 QStringList({QDir::current().filePath("a.zph"), "/x/b.png"}));
        QCOMPARE(start.text(), QString());
    }

    void unknownOptionsArePassedOver()
    {
        const auto start =
            StartArguments::read({"zephrant", "-x", "--fast", "-", "/a.zph", "--", "-b"});
        QCOMPARE(start.files, QStringList({"/a.zph", QDir::current().filePath("-b")}));
        QCOMPARE(start.answer, StartArguments::Answer::None);
    }

    void helpAndVersionAreFoundAmongTheFiles()
    {
        using Answer = StartArguments::Answer;
        QCOMPARE(StartArguments::read({"zephrant", "a.zph", "--help"}).answer,
                 Answer::Help);
        QCOMPARE(StartArguments::read({"zephrant", "--version", "--help"}).answer,
                 Answer::Version);
        QCOMPARE(StartArguments::read({"zephrant", "--", "--help"}).answer, Answer::None);
    }

    void programPrintsAndEndsWithoutAScreen_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("beginning");
        QTest::newRow("help") << "--help"
                              << "Usage: zephrant [options] [FILE...]\n";
        QTest::newRow("version") << "--version"
                                 << "zephrant " PROJECT_VERSION "\n";
    }

    void programPrintsAndEndsWithoutAScreen()
    {
        QFETCH(QString, option);
        QFETCH(QString, beginning);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.remove("DISPLAY");
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(PROGRAM), {option});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(QString::fromUtf8(program.readAllStandardOutput()).startsWith(beginning));
        QCOMPARE(program.readAllStandardError(), QByteArray());
    }

    void givenFilesOpenAndAMissingOneIsTold()
    {
        AppSettings().clear();
        const QTemporaryDir folder;
        const QString picture = folder.filePath("a.png");
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        QVERIFY(saveImageFile(image, picture));
        const QString scenery = folder.filePath("b.zph");
        QFile file(scenery);
        QVERIFY(file.open(QFile::WriteOnly) && file.write("[Param]\n") > 0);
        file.close();
        const QString missing = folder.filePath("none.png");
        MainWindow window;
        window.show();
        ModalAnswers answers;
        answers.pressButton(
            "Error",
            QString("Cannot load file \"%1\":\nNo such file or directory.").arg(missing),
            QMessageBox::Ok);
        window.openGiven({picture, missing, scenery});
        QCOMPARE(answers.complaints(), QStringList());
        QStringList names;
        for (QMdiSubWindow *sub : window.findChild<QMdiArea *>()->subWindowList())
            names << qobject_cast<MdiChild *>(sub->widget())->userFriendlyCurrentFile();
        QCOMPARE(names, QStringList({"a.png", "b.zph"}));
        QCOMPARE(AppSettings().value("mostRecentFile1").toString(), scenery);
    }
};

QTEST_MAIN(TestStartArguments)
#include "test_startarguments.moc"
