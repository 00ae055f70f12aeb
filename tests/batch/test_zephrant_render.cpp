// Drives the program itself: exit status, files, output, signals.

#include "raster/elevationimage.h"
#include "raster/imagefile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

constexpr int Patience = 60000; // ms

struct Outcome {
    int status = -1;
    QString out;
    QString err;
};

} // namespace

class TestZephrantRender : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void framesAreWrittenUnderTheirNumbers();
    void optionsGoBeforeTheScenery();
    void previewIsHalfTheSize();
    void missingRendersOnlyWhatIsNotThere();
    void withoutAFormatItIsWrongUsage();
    void wrongOptionIsWrongUsage();
    void missingSceneryIsAFailureWithItsName();
    void unreadableTextureIsAFailureWithItsName();
    void frameThatCannotBeWrittenIsAFailure();
    void obsoleteKeyIsToldOnStandardError();
    void signalStopsAndLeavesNoPartOfAFile_data();
    void signalStopsAndLeavesNoPartOfAFile();
    void localeDoesNotChangeTheFrames();
    void quietPrintsNothing();
    void examplesRender();

private:
    void writeScenery(const QString &more) const;
    [[nodiscard]] Outcome render(const QStringList &arguments) const;
    [[nodiscard]] QStringList frames() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestZephrantRender::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    QImage texture(64, 64, QImage::Format_RGB32);
    texture.fill(qRgb(200, 120, 40));
    QVERIFY(saveImageFile(texture, m_dir->filePath("t.png")));
    ElevationImage terrain(64, 64, QImage::Format_RGB888);
    terrain.clear(0xFF000000);
    for (int i = 10; i < 50; ++i)
        terrain.setElevation(i, 64 - i, 5000);
    QVERIFY(saveImageFile(terrain, m_dir->filePath("e.png")));
    writeScenery({});
}

void TestZephrantRender::cleanup() { m_dir.reset(); }

void TestZephrantRender::writeScenery(const QString &more) const
{
    QFile file(m_dir->filePath("s.zph"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        "[Param]\nBeobXA=32\nBeobYA=-20\nBeobZA=30\nBeobXE=40\nBeobYE=-10\n"
        "BeobZE=30\nRichtungA=0\nRichtungE=0\nNeigungA=-30\nNeigungE=-30\n"
        "BrennA=50\nBrennE=50\nBildanzahl=3\nOffset=4\nStartbildNr=0\nEndbildNr=2\n"
        "AusBreite=40\nAusHoehe=30\nAusAuflX=32\nAusAuflY=32\nAusgabePNG=1\n"
        "TDateiname=t.png\nHDateiname=e.png\n");
    file.write("AusDateiname=" + m_dir->filePath("f%02d").toUtf8() + "\n");
    file.write(more.toUtf8());
}

Outcome TestZephrantRender::render(const QStringList &arguments) const
{
    QProcess program;
    program.start(QStringLiteral(RENDER_PROGRAM), arguments);
    if (!program.waitForFinished(Patience))
        return {};
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

QStringList TestZephrantRender::frames() const
{
    return QDir(m_dir->path()).entryList({"f*"}, QDir::AllEntries | QDir::Hidden);
}

void TestZephrantRender::framesAreWrittenUnderTheirNumbers()
{
    // The pictures lie beside the scenery, not in the current folder.
    const Outcome outcome = render({m_dir->filePath("s.zph")});
    QCOMPARE(outcome.err, QString());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(frames(), QStringList({"f04.png", "f05.png", "f06.png"}));
    QCOMPARE(loadImageFile(m_dir->filePath("f04.png")).size(), QSize(40, 30));
    const QStringList lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].startsWith("frame 1, 2 of 3: "));
    QVERIFY(lines[2].endsWith("0:00:00 left"));
}

void TestZephrantRender::optionsGoBeforeTheScenery()
{
    const Outcome outcome = render({"--from", "1", "--to", "1", "--size", "16x8",
                                    "--format", "ppm", "--format", "tga", "--output",
                                    m_dir->filePath("fo%d"), m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(frames(), QStringList({"fo5.ppm", "fo5.tga"}));
    const QImage picture = loadImageFile(m_dir->filePath("fo5.tga"));
    QCOMPARE(picture.size(), QSize(16, 8));
    QCOMPARE(loadImageFile(m_dir->filePath("fo5.ppm")).convertToFormat(picture.format()),
             picture);
}

void TestZephrantRender::previewIsHalfTheSize()
{
    QCOMPARE(render({"--preview", "--to", "0", m_dir->filePath("s.zph")}).status, 0);
    QCOMPARE(loadImageFile(m_dir->filePath("f04.png")).size(), QSize(20, 15));
}

void TestZephrantRender::missingRendersOnlyWhatIsNotThere()
{
    QFile kept(m_dir->filePath("f05.png"));
    QVERIFY(kept.open(QIODevice::WriteOnly) && kept.write("kept") == 4);
    kept.close();
    const Outcome outcome = render({"--missing", m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out.count('\n'), 2);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("kept"));
    QCOMPARE(render({"--missing", m_dir->filePath("s.zph")}).out, QString());
}

void TestZephrantRender::withoutAFormatItIsWrongUsage()
{
    writeScenery("AusgabePNG=0\n");
    QFile file(m_dir->filePath("s.zph"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    file.close();
    text.replace("AusgabePNG=1\n", "");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    const Outcome outcome = render({m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 2);
    QVERIFY(outcome.err.contains("format"));
    QCOMPARE(render({"--format", "png", m_dir->filePath("s.zph")}).status, 0);
}

void TestZephrantRender::wrongOptionIsWrongUsage()
{
    const Outcome outcome = render({"--size", "big", m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 2);
    QVERIFY(outcome.err.contains("--size"));
}

void TestZephrantRender::missingSceneryIsAFailureWithItsName()
{
    const Outcome outcome = render({m_dir->filePath("none.zph")});
    QCOMPARE(outcome.status, 1);
    QVERIFY(outcome.err.contains("none.zph"));
}

void TestZephrantRender::unreadableTextureIsAFailureWithItsName()
{
    writeScenery("TDateiname=none.png\n");
    const Outcome outcome = render({m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.err, QString("Could not open texture file \"none.png\"\n"));
    QCOMPARE(frames(), QStringList());
}

void TestZephrantRender::frameThatCannotBeWrittenIsAFailure()
{
    const Outcome outcome =
        render({"--output", m_dir->filePath("none/f%d"), m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 1);
    QVERIFY(outcome.err.contains("none/f4.png"));
}

void TestZephrantRender::obsoleteKeyIsToldOnStandardError()
{
    writeScenery("AusgabeYUV=0\n");
    const Outcome outcome = render({"--to", "0", m_dir->filePath("s.zph")});
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
    program.start(QStringLiteral(RENDER_PROGRAM),
                  {"--to", "32000", m_dir->filePath("s.zph")});
    QVERIFY(program.waitForReadyRead(Patience)); // the first frame is written
    QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
    QVERIFY(program.waitForFinished(Patience));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 130);
    const QStringList names = frames();
    QVERIFY(!names.isEmpty());
    for (const QString &name : names)
        QVERIFY2(!loadImageFile(m_dir->filePath(name)).isNull(), qPrintable(name));
}

void TestZephrantRender::localeDoesNotChangeTheFrames()
{
    QCOMPARE(render({"--to", "0", m_dir->filePath("s.zph")}).status, 0);
    const QImage plain = loadImageFile(m_dir->filePath("f04.png"));
    qputenv("LC_ALL", "de_DE.UTF-8");
    const int status = render({"--to", "0", m_dir->filePath("s.zph")}).status;
    qunsetenv("LC_ALL");
    QCOMPARE(status, 0);
    QCOMPARE(loadImageFile(m_dir->filePath("f04.png")), plain);
}

void TestZephrantRender::quietPrintsNothing()
{
    const Outcome outcome = render({"--quiet", m_dir->filePath("s.zph")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out + outcome.err, QString());
}

void TestZephrantRender::examplesRender()
{
    const QDir examples(qEnvironmentVariable("ZEPHRANT_SOURCE") + "/examples");
    const QStringList names = examples.entryList({"*.zph"});
    QVERIFY(names.size() >= 2);
    for (const QString &name : names) {
        const Outcome outcome =
            render({"--preview", "--to", "0", "--output", m_dir->filePath("f" + name),
                    examples.filePath(name)});
        QVERIFY2(outcome.status == 0, qPrintable(name + ": " + outcome.err));
        const QImage frame = loadImageFile(m_dir->filePath("f" + name + ".png"));
        // There is ground in the lower half, sky above.
        QVERIFY(!frame.isNull());
        QVERIFY(frame.pixel(frame.width() / 2, frame.height() - 10) !=
                frame.pixel(frame.width() / 2, 2));
    }
}

QTEST_GUILESS_MAIN(TestZephrantRender)
#include "test_zephrant_render.moc"
