// Drives the program itself: exit status, files, output, signals.

#include "batch/renderfixture.h"
#include "raster/imagefile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>

class TestZephrantRender : public QObject, private RenderFixture {
    Q_OBJECT

private slots:
    void init() { makeScenery(); }
    void cleanup() { removeScenery(); }
    void framesAreWrittenUnderTheirNumbers();
    void optionsGoBeforeTheScenery();
    void framesFitIntoASize();
    void previewIsHalfTheSize();
    void framesHaveTheResolutionOfUsualScreens();
    void missingRendersOnlyWhatIsNotThere();
    void missingRendersWhatIsNotWhole_data();
    void missingRendersWhatIsNotWhole();
    void missingRendersWhatHasAnotherSize();
    void withoutAFormatItIsWrongUsage();
    void wrongOptionIsWrongUsage();
    void missingSceneryIsAFailureWithItsName();
    void unreadableTextureIsAFailureWithItsName();
    void obsoleteKeyIsToldOnStandardError();
    void signalStopsAndLeavesNoPartOfAFile_data();
    void signalStopsAndLeavesNoPartOfAFile();
    void localeDoesNotChangeTheFrames();
    void quietPrintsNothing();
    void examplesRender();
};

void TestZephrantRender::framesAreWrittenUnderTheirNumbers()
{
    // The pictures lie beside the scenery, not in the current folder.
    const Outcome outcome = render({path("s.zph")});
    QCOMPARE(outcome.err, QString());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(frames(), QStringList({"f04.png", "f05.png", "f06.png"}));
    QCOMPARE(loadImageFile(path("f04.png")).size(), QSize(40, 30));
    const QStringList lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].startsWith("frame 1, 2 of 3: "));
    QVERIFY(lines[2].endsWith("0:00:00 left"));
}

void TestZephrantRender::optionsGoBeforeTheScenery()
{
    const Outcome outcome =
        render({"--from", "1", "--to", "1", "--size", "16x8", "--format", "ppm",
                "--format", "tga", "--output", path("fo%d"), path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(frames(), QStringList({"fo5.ppm", "fo5.tga"}));
    const QImage picture = loadImageFile(path("fo5.tga"));
    QCOMPARE(picture.size(), QSize(16, 8));
    QCOMPARE(loadImageFile(path("fo5.ppm")).convertToFormat(picture.format()), picture);
}

// The scenery's frames are 40 by 30.
void TestZephrantRender::framesFitIntoASize()
{
    for (const char *const within : {"20x60", "300x15"}) {
        QCOMPARE(render({"--fit", within, "--to", "0", path("s.zph")}).status, 0);
        QCOMPARE(loadImageFile(path("f04.png")).size(), QSize(20, 15));
    }
    // Focal lengths are scaled with the frame.
    const QImage fitted = loadImageFile(path("f04.png"));
    writeScenery("BrennA=500\nBrennE=500\n");
    QCOMPARE(render({"--size", "20x15", "--to", "0", path("s.zph")}).status, 0);
    const QImage cut = loadImageFile(path("f04.png"));
    writeScenery("BrennA=1000\nBrennE=1000\n");
    QCOMPARE(render({"--fit", "20x15", "--to", "0", path("s.zph")}).status, 0);
    QCOMPARE(loadImageFile(path("f04.png")), cut);
    QVERIFY(cut != fitted);
}

void TestZephrantRender::previewIsHalfTheSize()
{
    QCOMPARE(render({"--preview", "--to", "0", path("s.zph")}).status, 0);
    QCOMPARE(loadImageFile(path("f04.png")).size(), QSize(20, 15));
}

// Whatever machine draws a frame, its file is the same.
void TestZephrantRender::framesHaveTheResolutionOfUsualScreens()
{
    writeScenery("AusgabeJPG=1\nGenauRechnen=2\n"); // halved on its way
    QCOMPARE(render({"--to", "0", path("s.zph")}).status, 0);
    QCOMPARE(loadImageFile(path("f04.png")).dotsPerMeterX(), 3780);
    QCOMPARE(loadImageFile(path("f04.png")).dotsPerMeterY(), 3780);
    QCOMPARE(loadImageFile(path("f04.jpg")).dotsPerMeterX(), 3779); // of 96 an inch
}

void TestZephrantRender::missingRendersOnlyWhatIsNotThere()
{
    QImage kept(40, 30, QImage::Format_RGB32);
    kept.fill(Qt::magenta);
    QVERIFY(saveImageFile(kept, path("f05.png")));
    const Outcome outcome = render({"--missing", path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out.count('\n'), 2);
    QCOMPARE(loadImageFile(path("f05.png")).pixel(3, 3), kept.pixel(3, 3));
    QCOMPARE(render({"--missing", path("s.zph")}).out, QString());
}

// Of two formats one may be missing, cut off or of another size.
void TestZephrantRender::missingRendersWhatIsNotWhole_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<qint64>("length");
    for (const char *file : {"f05.png", "f05.tga", "f05.jpg", "f05.ppm"}) {
        QTest::addRow("%s empty", file) << QString(file) << qint64(0);
        QTest::addRow("%s cut off", file) << QString(file) << qint64(-1);
    }
}
void TestZephrantRender::missingRendersWhatIsNotWhole()
{
    QFETCH(QString, file);
    QFETCH(qint64, length);
    writeScenery("AusgabeTGA=1\nAusgabeJPG=1\nAusgabePPM=1\n");
    QCOMPARE(render({path("s.zph")}).status, 0);
    QFile frame(path(file));
    QVERIFY(frame.open(QIODevice::ReadWrite));
    const QByteArray whole = frame.readAll();
    QVERIFY(frame.resize(length < 0 ? frame.size() + length : length));
    frame.close();
    const Outcome outcome = render({"--missing", path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.out.startsWith("frame 1, 1 of 1: "));
    QVERIFY(frame.open(QIODevice::ReadOnly));
    QCOMPARE(frame.readAll(), whole);
}

void TestZephrantRender::missingRendersWhatHasAnotherSize()
{
    QCOMPARE(render({"--to", "1", "--preview", path("s.zph")}).status, 0);
    QCOMPARE(render({"--preview", "--missing", path("s.zph")}).out.count('\n'), 1);
    QCOMPARE(render({"--missing", path("s.zph")}).out.count('\n'), 3);
    QCOMPARE(loadImageFile(path("f06.png")).size(), QSize(40, 30));
    // Of extra high quality what is written is as large as it is told to be.
    QCOMPARE(render({"--quality", "2", "--missing", path("s.zph")}).out, QString());
}

void TestZephrantRender::withoutAFormatItIsWrongUsage()
{
    writeScenery("AusgabePNG=0\n");
    QFile file(path("s.zph"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    file.close();
    text.replace("AusgabePNG=1\n", "");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    const Outcome outcome = render({path("s.zph")});
    QCOMPARE(outcome.status, 2);
    QVERIFY(outcome.err.contains("format"));
    QCOMPARE(render({"--format", "png", path("s.zph")}).status, 0);
}

void TestZephrantRender::wrongOptionIsWrongUsage()
{
    const Outcome outcome = render({"--size", "big", path("s.zph")});
    QCOMPARE(outcome.status, 2);
    QVERIFY(outcome.err.contains("--size"));
}

void TestZephrantRender::missingSceneryIsAFailureWithItsName()
{
    const Outcome outcome = render({path("none.zph")});
    QCOMPARE(outcome.status, 1);
    QVERIFY(outcome.err.contains("none.zph"));
}

void TestZephrantRender::unreadableTextureIsAFailureWithItsName()
{
    writeScenery("TDateiname=none.png\n");
    const Outcome outcome = render({path("s.zph")});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.err, QString("Could not open texture file \"none.png\"\n"));
    QCOMPARE(frames(), QStringList());
}

void TestZephrantRender::obsoleteKeyIsToldOnStandardError()
{
    writeScenery("AusgabeYUV=0\n");
    const Outcome outcome = render({"--to", "0", path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.err.contains("Obsolete Output Image Format"));
}

void TestZephrantRender::signalStopsAndLeavesNoPartOfAFile_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestZephrantRender::signalStopsAndLeavesNoPartOfAFile()
{
    QFETCH(int, signal);
    QProcess program;
    program.start(QStringLiteral(RENDER_PROGRAM), {"--to", "32000", path("s.zph")});
    QVERIFY(program.waitForReadyRead(Patience)); // the first frame is written
    QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
    QVERIFY(program.waitForFinished(Patience));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 130);
    const QStringList names = frames();
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QVERIFY2(!loadImageFile(path(name)).isNull(), qPrintable(name));
}

void TestZephrantRender::localeDoesNotChangeTheFrames()
{
    QCOMPARE(render({"--to", "0", path("s.zph")}).status, 0);
    const QImage plain = loadImageFile(path("f04.png"));
    qputenv("LC_ALL", "de_DE.UTF-8");
    const int status = render({"--to", "0", path("s.zph")}).status;
    qunsetenv("LC_ALL");
    QCOMPARE(status, 0);
    QCOMPARE(loadImageFile(path("f04.png")), plain);
}

void TestZephrantRender::quietPrintsNothing()
{
    const Outcome outcome = render({"--quiet", path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out + outcome.err, QString());
}

void TestZephrantRender::examplesRender()
{
    const QDir examples(qEnvironmentVariable("ZEPHRANT_SOURCE") + "/examples");
    const QStringList names = examples.entryList({"*.zph"});
    QVERIFY(names.size() >= 2);
    for (const QString &name : names) {
        const Outcome outcome = render({"--preview", "--to", "0", "--output",
                                        path("f" + name), examples.filePath(name)});
        QVERIFY2(outcome.status == 0, qPrintable(name + ": " + outcome.err));
        const QImage frame = loadImageFile(path("f" + name + ".png"));
        // There is ground in the lower half, sky above.
        QVERIFY(!frame.isNull());
        QVERIFY(frame.pixel(frame.width() / 2, frame.height() - 10) !=
                frame.pixel(frame.width() / 2, 2));
    }
}

QTEST_GUILESS_MAIN(TestZephrantRender)
#include "test_zephrant_render.moc"
