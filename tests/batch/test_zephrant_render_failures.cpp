// What goes wrong around the program: its files, its streams, its memory, its signals.

#include "batch/renderfixture.h"
#include "raster/imagefile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

class TestZephrantRenderFailures : public QObject, private RenderFixture {
    Q_OBJECT

private slots:
    void init() { makeScenery(); }
    void cleanup()
    {
        ::chmod(QFile::encodeName(m_dir->path()).constData(), 0700);
        removeScenery();
    }
    void aDrawingAsTextureIsAFailure();
    void failedWriteTellsWhy_data();
    void failedWriteTellsWhy();
    void folderWithoutPermissionIsTold();
    void absentFolderIsToldBeforeAnythingElse();
    void framesOfOneNameAreWarnedOf();
    void emptyRangeIsWrongUsage_data();
    void emptyRangeIsWrongUsage();
    void sceneryWithoutAFrameIsTold();
    void outputThatTakesNothingEndsNoRun_data();
    void outputThatTakesNothingEndsNoRun();
    void answerThatDoesNotArriveIsAFailure();
    void closedStreamsLeadToNoFrame();
    void signalEndsTheWaitForAScenery_data();
    void signalEndsTheWaitForAScenery();
    void endlessSceneryIsRefused();
    void elevationsOfOtherNumbersAreTold();
    void pictureBeyondTheBudgetIsTold();
    void frameBeyondTheBudgetIsTold();
    void lackOfMemoryIsTold();
};

namespace {

// No file of the process grows beyond this.
std::function<void(QProcess &)> withLimit(decltype(RLIMIT_FSIZE) kind, rlim_t most)
{
    return [=](QProcess &process) {
        process.setChildProcessModifier([=] {
            const rlimit limit{most, most};
            ::setrlimit(kind, &limit);
        });
    };
}

std::function<void(QProcess &)> withBudget(const QString &bytes)
{
    return [bytes](QProcess &process) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ZEPHRANT_MEMORY_BUDGET", bytes);
        process.setProcessEnvironment(environment);
    };
}

// Whether a process has a handler for a signal by now.
bool catches(qint64 process, int signal)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("SigCgt:"))
            return line.mid(7).trimmed().toULongLong(nullptr, 16) >> (signal - 1) & 1;
    return false;
}

} // namespace

void TestZephrantRenderFailures::failedWriteTellsWhy_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("room");
    for (const char *format : {"png", "tga", "jpg", "ppm"}) {
        QTest::addRow("%s, nothing fits", format) << QString(format) << 0;
        QTest::addRow("%s, a part fits", format) << QString(format) << 150;
    }
}

void TestZephrantRenderFailures::failedWriteTellsWhy()
{
    QFETCH(QString, format);
    QFETCH(int, room);
    const QString frame = path("f04." + format);
    QFile earlier(frame);
    QVERIFY(earlier.open(QIODevice::WriteOnly) && earlier.write("earlier") == 7);
    earlier.close();
    const Outcome outcome = render({"--format", format, path("s.zph")},
                                   withLimit(RLIMIT_FSIZE, rlim_t(room)));
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.err.contains(
                 QString("Could not save file \"%1\": File too large.\n").arg(frame)),
             qPrintable(outcome.err));
    QVERIFY2(!outcome.err.contains("Bogus"), qPrintable(outcome.err));
    QCOMPARE(frames(), QStringList("f04." + format));
    QVERIFY(earlier.open(QIODevice::ReadOnly));
    QCOMPARE(earlier.readAll(), QByteArray("earlier"));
    earlier.close();

    QVERIFY(earlier.remove() && QFile::link("/dev/full", frame));
    const QString told = render({"--format", format, "--to", "0", path("s.zph")}).err;
    QVERIFY2(
        told.endsWith(
            QString("Could not save file \"%1\": No space left on device.\n").arg(frame)),
        qPrintable(told));
}

void TestZephrantRenderFailures::folderWithoutPermissionIsTold()
{
    QCOMPARE(::chmod(QFile::encodeName(m_dir->path()).constData(), 0500), 0);
    // The superuser is stopped by no permission, unless he gives that up.
    const Outcome outcome = render({path("s.zph")}, [](QProcess &process) {
        process.setChildProcessModifier(
            [] { ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0); });
    });
    QCOMPARE(outcome.status, 1);
    QVERIFY2(
        outcome.err.startsWith(QString("Could not save file \"%1\": Permission denied.\n")
                                   .arg(path("f04.png"))),
        qPrintable(outcome.err));
}

void TestZephrantRenderFailures::absentFolderIsToldBeforeAnythingElse()
{
    // Nor is a texture read that cannot be read.
    writeScenery("TDateiname=none.png\n");
    const Outcome outcome = render({"--output", path("none/f%d"), path("s.zph")});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.err,
             QString("Could not save file \"%1\": there is no folder \"%2\".\n")
                 .arg(path("none/f4.png"), path("none")));
    // Also if a later frame has the folder.
    QVERIFY(QDir(m_dir->path()).mkdir("4"));
    QVERIFY(render({"--output", path("%d/f"), path("s.zph")}).err.contains(path("5/f")));
    QCOMPARE(QDir(path("4")).entryList(QDir::Files), QStringList());
}

void TestZephrantRenderFailures::framesOfOneNameAreWarnedOf()
{
    const Outcome outcome = render({"--output", path("fsame"), path("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out.count('\n'), 3);
    QCOMPARE(outcome.err,
             QString("Warning: frames 0 and 1 have the same file name \"%1\"; of such "
                     "frames only the last one stays.\n")
                 .arg(path("fsame.png")));
    QCOMPARE(frames(), QStringList("fsame.png"));
    // One frame can share its name with none.
    QCOMPARE(render({"--output", path("fsame"), "--to", "0", path("s.zph")}).err,
             QString());
}

void TestZephrantRenderFailures::emptyRangeIsWrongUsage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("told");
    QTest::newRow("both") << QStringList{"--from", "2", "--to", "1"}
                          << "--from 2 lies above --to 1: there is no frame to render.";
    QTest::newRow("from") << QStringList{"--from", "3"}
                          << "--from 3 lies above the scenery's last frame, 2: there is "
                             "no frame to render.";
    QTest::newRow("to") << QStringList{"--to", "0"}
                        << "--to 0 lies below the scenery's first frame, 1: there is no "
                           "frame to render.";
}

void TestZephrantRenderFailures::emptyRangeIsWrongUsage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, told);
    writeScenery("StartbildNr=1\n");
    const Outcome outcome = render(options + QStringList(path("s.zph")));
    QCOMPARE(outcome.status, 2);
    QVERIFY2(outcome.err.startsWith(told + '\n'), qPrintable(outcome.err));
    QCOMPARE(frames(), QStringList());
}

void TestZephrantRenderFailures::sceneryWithoutAFrameIsTold()
{
    writeScenery("StartbildNr=3\n");
    const Outcome outcome = render({path("s.zph")});
    QCOMPARE(outcome.status, 0); // as a run in the window is a success
    QCOMPARE(outcome.err, QString("The scenery's first frame, 3, lies above its last, 2: "
                                  "there is no frame to render.\n"));
}

void TestZephrantRenderFailures::outputThatTakesNothingEndsNoRun_data()
{
    QTest::addColumn<bool>("broken");
    QTest::newRow("nobody reads the pipe") << true;
    QTest::newRow("full") << false;
}

void TestZephrantRenderFailures::outputThatTakesNothingEndsNoRun()
{
    QFETCH(bool, broken);
    int ends[2] = {-1, -1};
    QCOMPARE(::pipe(ends), 0);
    ::close(ends[0]);
    const Outcome outcome = render({path("s.zph")}, [&](QProcess &process) {
        if (broken)
            process.setChildProcessModifier([&] { ::dup2(ends[1], STDOUT_FILENO); });
        else
            process.setStandardOutputFile("/dev/full");
    });
    ::close(ends[1]);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.err, QString("Cannot write to standard output: %1.\n")
                              .arg(broken ? "Broken pipe" : "No space left on device"));
    QCOMPARE(frames().size(), 3);
}

void TestZephrantRenderFailures::answerThatDoesNotArriveIsAFailure()
{
    const Outcome outcome = render({"--version"}, [](QProcess &process) {
        process.setStandardOutputFile("/dev/full");
    });
    QCOMPARE(outcome.status, 1);
    QVERIFY(outcome.err.contains("No space left"));
}

void TestZephrantRenderFailures::closedStreamsLeadToNoFrame()
{
    QCOMPARE(render({path("s.zph")}).status, 0);
    const QImage wanted = loadImageFile(path("f05.png"));
    const Outcome outcome = render({path("s.zph")}, [](QProcess &process) {
        process.setChildProcessModifier([] {
            for (int stream = 0; stream < 3; ++stream)
                ::close(stream);
        });
    });
    QCOMPARE(outcome.status, 0);
    QCOMPARE(frames().size(), 3);
    QCOMPARE(loadImageFile(path("f05.png")), wanted);
}

void TestZephrantRenderFailures::signalEndsTheWaitForAScenery_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestZephrantRenderFailures::signalEndsTheWaitForAScenery()
{
    QFETCH(int, signal);
    const QByteArray pipe = QFile::encodeName(path("pipe.zph"));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    QProcess program;
    program.start(QStringLiteral(RENDER_PROGRAM), {path("pipe.zph")});
    QVERIFY(program.waitForStarted(Patience));
    QTRY_VERIFY_WITH_TIMEOUT(catches(program.processId(), signal), Patience);
    QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
    const bool ended = program.waitForFinished(Patience / 6);
    if (!ended)
        program.kill();
    QVERIFY(ended);
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 130);
    QCOMPARE(program.readAllStandardError(), QByteArray("Stopped.\n"));
}

void TestZephrantRenderFailures::endlessSceneryIsRefused()
{
#ifdef ZEPHRANT_SANITIZED
    QSKIP("the sanitizers need the address space for themselves");
#endif
    QVERIFY(QFile::link("/dev/zero", path("zero.zph")));
    const Outcome outcome =
        render({path("zero.zph")}, withLimit(RLIMIT_AS, rlim_t(3) << 30));
    QCOMPARE(outcome.status, 1);
    QVERIFY2(
        outcome.err.startsWith(
            QString("Cannot open file \"%1\":\nLine too long: ").arg(path("zero.zph"))),
        qPrintable(outcome.err));
    QVERIFY(outcome.err.size() < 500);
}

// The frames are drawn as ever.
void TestZephrantRenderFailures::elevationsOfOtherNumbersAreTold()
{
    QCOMPARE(render({path("s.zph")}).err, QString());
    QVERIFY(QImage(path("e.png"))
                .convertToFormat(QImage::Format_Grayscale16)
                .save(path("e.png")));
    const Outcome told = render({path("s.zph")});
    QCOMPARE(told.status, 0);
    QCOMPARE(told.err, QString("\"%1\" holds numbers of 16 bits, not heights of 24 bits; "
                               "Open Terrain reads it.\n")
                           .arg(path("e.png")));
    QCOMPARE(frames().size(), 3);
}

void TestZephrantRenderFailures::pictureBeyondTheBudgetIsTold()
{
    QImage large(30000, 100, QImage::Format_Mono);
    large.fill(1);
    QVERIFY(large.save(path("large.png")));
    writeScenery("TDateiname=large.png\n");
    const Outcome outcome = render({path("s.zph")}, withBudget("10000000"));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(
        outcome.err,
        QString("\"large.png\" (30000 x 100 pixels) would take 12.4 MB of memory; the "
                "budget is 10.0 MB.\nCould not open texture file \"large.png\"\n"));
}

void TestZephrantRenderFailures::frameBeyondTheBudgetIsTold()
{
    // The frame itself would fit.
    const Outcome outcome = render(
        {"--quality", "2", "--size", "1000x1000", path("s.zph")}, withBudget("19999999"));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(
        outcome.err,
        QString("A frame of 2000 x 2000 pixels with its copies would take 20.0 MB of "
                "memory; the budget is 20.0 MB.\nCould not create an image of 2000 x "
                "2000 pixels\n"));
    QCOMPARE(render({"--quality", "2", "--size", "1000x1000", "--to", "0", path("s.zph")},
                    withBudget("20000000"))
                 .status,
             0);
}

void TestZephrantRenderFailures::lackOfMemoryIsTold()
{
#ifdef ZEPHRANT_SANITIZED
    QSKIP("the sanitizers need the address space for themselves");
#endif
    for (const int megabytes : {150, 250}) {
        const Outcome outcome =
            render({"--size", "8000x8000", "--to", "0", path("s.zph")},
                   withLimit(RLIMIT_AS, rlim_t(megabytes) << 20));
        QVERIFY2(outcome.status == 0 || outcome.status == 1,
                 qPrintable(QString::number(megabytes)));
        QVERIFY(outcome.status == 0 || !outcome.err.trimmed().isEmpty());
    }
}

// With the toolkit's plug-in for drawings the text in one would end the program. Without
// it no plug-in reads the file. Its contents decide, not its name.
void TestZephrantRenderFailures::aDrawingAsTextureIsAFailure()
{
    QFile texture(path("t.png"));
    QVERIFY(texture.open(QIODevice::WriteOnly));
    texture.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"64\" height=\"64\">"
                  "<text x=\"4\" y=\"30\">Ben Nevis</text></svg>");
    texture.close();
    const Outcome outcome = render({path("s.zph")});
    QCOMPARE(outcome.status, 1);
    QVERIFY(outcome.err.contains("Could not open texture file \"t.png\""));
    QVERIFY(!QFile::exists(path("f04.png")));
}

QTEST_GUILESS_MAIN(TestZephrantRenderFailures)
#include "test_zephrant_render_failures.moc"
