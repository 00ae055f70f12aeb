#include "batch/renderfixture.h"

#include "raster/elevationimage.h"
#include "raster/imagefile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

void RenderFixture::makeScenery()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    QImage texture(64, 64, QImage::Format_RGB32);
    texture.fill(qRgb(200, 120, 40));
    QVERIFY(saveImageFile(texture, path("t.png")));
    ElevationImage terrain(64, 64, QImage::Format_RGB888);
    terrain.clear(0xFF000000);
    for (int i = 10; i < 50; ++i)
        terrain.setElevation(i, 64 - i, 5000);
    QVERIFY(saveImageFile(terrain, path("e.png")));
    writeScenery({});
}

void RenderFixture::writeScenery(const QString &more) const
{
    QFile file(path("s.zph"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        "[Param]\nBeobXA=32\nBeobYA=-20\nBeobZA=30\nBeobXE=40\nBeobYE=-10\n"
        "BeobZE=30\nRichtungA=0\nRichtungE=0\nNeigungA=-30\nNeigungE=-30\n"
        "BrennA=50\nBrennE=50\nBildanzahl=3\nOffset=4\nStartbildNr=0\nEndbildNr=2\n"
        "AusBreite=40\nAusHoehe=30\nAusAuflX=32\nAusAuflY=32\nAusgabePNG=1\n"
        "TDateiname=t.png\nHDateiname=e.png\n");
    file.write("AusDateiname=" + path("f%02d").toUtf8() + "\n");
    file.write(more.toUtf8());
}

Outcome RenderFixture::render(const QStringList &arguments,
                              const std::function<void(QProcess &)> &prepare) const
{
    QProcess program;
    if (prepare)
        prepare(program);
    program.start(QStringLiteral(RENDER_PROGRAM), arguments);
    if (!program.waitForFinished(Patience) ||
        program.exitStatus() != QProcess::NormalExit)
        return {};
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

QStringList RenderFixture::frames() const
{
    return QDir(m_dir->path())
        .entryList({"f*", ".*"}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}
