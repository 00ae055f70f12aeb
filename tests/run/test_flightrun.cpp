// Runs without a form and without a window.

#include "run/flightrun.h"

#include "run/framefiles.h"
#include "run/runlistener.h"
#include "scene/scenerydocument.h"

#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <thread>

namespace {

// Writes down what it is told.
class Notes : public RunListener {
public:
    void targetMade(const QImage &target) override
    {
        told << QStringLiteral("target %1x%2").arg(target.width()).arg(target.height());
    }
    void flightRefused(const QString &) override { told << "refused"; }
    bool wants(int frame) override { return frame != passedOver; }
    void frameStarted(int frame, int number, const QImage &) override
    {
        told << QStringLiteral("started %1 as %2").arg(frame).arg(number);
        if (onStart)
            onStart(frame);
    }
    bool step(qint64 row, qint64 of) override
    {
        inOrder &= row < of && (row == 0 || (row == lastRow + 1 && of == rows));
        lastRow = row;
        rows = of;
        return onRow ? onRow(row) : true;
    }
    void frameDrawn(int frame, const QImage &) override
    {
        told << QStringLiteral("drawn %1").arg(frame);
    }
    void frameSaved(int frame, const QStringList &complaints) override
    {
        saved << frame;
        complained << complaints;
    }
    void waiting() override {}

    QStringList told, complained;
    QList<int> saved;
    int passedOver = -1;
    qint64 lastRow = 0, rows = 0;
    bool inOrder = true;
    std::function<void(int frame)> onStart;
    std::function<bool(qint64 row)> onRow;
};

} // namespace

class TestFlightRun : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QImage picture(16, 16, QImage::Format_RGB32);
        picture.fill(0xFF406020u);
        QVERIFY(picture.save(m_dir->filePath("land.png")));
        m_document = SceneryDocument();
        SceneryData &data = m_document.parameters;
        data.TDateiname = data.HDateiname = "land.png"; // found beside the scenery
        data.AusDateiname = m_dir->filePath("f%d");
        data.AusBreite = 32;
        data.AusHoehe = 24;
        data.AusAuflX = data.AusAuflY = 8;
        data.BeobXA = data.BeobXE = 8.0;
        data.BeobYA = -6.0;
        data.BeobYE = -3.0;
        data.BeobZA = data.BeobZE = 4.0;
        data.RichtungA = data.RichtungE = 0.0;
        data.BrennA = data.BrennE = 30.0;
        data.Bildanzahl = 3;
        data.EndbildNr = 2;
        data.Offset = 5;
    }

    void framesAreToldInTheirOrderAndWritten()
    {
        Notes notes;
        QVERIFY(run(notes));
        QCOMPARE(notes.told,
                 (QStringList{"target 32x24", "started 0 as 5", "drawn 0",
                              "started 1 as 6", "drawn 1", "started 2 as 7", "drawn 2"}));
        QCOMPARE(notes.saved, (QList<int>{0, 1, 2}));
        QVERIFY(notes.complained.isEmpty());
        QVERIFY(notes.inOrder);
        QVERIFY(notes.rows > 0);
        QCOMPARE(notes.lastRow + 1, notes.rows); // of the last frame
        QCOMPARE(files(), (QStringList{"f5.png", "f6.png", "f7.png"}));
    }

    void previewIsOfHalfTheSize()
    {
        Notes notes;
        QVERIFY(run(notes, {true, false, 1, m_dir->path()}));
        QCOMPARE(notes.told.constFirst(), QString("target 16x12"));
        QCOMPARE(QImage(m_dir->filePath("f5.png")).size(),
                 frameScale(m_document.parameters, true).file);
    }

    void framesThatAreNotWantedArePassedOver()
    {
        Notes notes;
        notes.passedOver = 1;
        QVERIFY(run(notes));
        QCOMPARE(files(), (QStringList{"f5.png", "f7.png"}));
    }

    void stoppedInARowTheFrameIsNotWritten()
    {
        Notes notes;
        FlightRun *running = nullptr;
        notes.onRow = [&](qint64 row) {
            if (notes.told.constLast().startsWith("started 1") && row == 2)
                running->stop();
            return true;
        };
        FlightRun run(m_document, {false, false, 1, m_dir->path()}, notes);
        running = &run;
        const Result<void> result = run.run();
        QVERIFY(!result && result.error().stopped);
        QVERIFY(notes.lastRow < 2 + 8); // the eight walks of a frame each ask once more
        QCOMPARE(notes.told.constLast(), QString("drawn 1"));
        QCOMPARE(files(), QStringList("f5.png"));
    }

    void editsHoldFromTheFrameThatBeginsNext()
    {
        Notes notes;
        notes.onStart = [this](int frame) {
            if (frame == 0) {
                m_document.parameters.Offset = 20;
                m_document.parameters.EndbildNr = 1;
            }
        };
        QVERIFY(run(notes));
        QCOMPARE(files(), (QStringList{"f21.png", "f5.png"}));
    }

    void frameInHandCanBeLookedAt()
    {
        Notes notes;
        FlightRun run(m_document, {false, true, 1, m_dir->path()}, notes);
        QVERIFY(run.picture().isNull());
        int looked = 0;
        notes.onRow = [&](qint64) {
            looked += run.picture().size() == QSize(32, 24);
            return true;
        };
        QVERIFY(run.run());
        QVERIFY(looked > 0);
        QVERIFY(run.picture().isNull());
    }

    void failuresTellTheReason()
    {
        Notes notes;
        m_document.parameters.HDateiname = "none.png";
        const Result<void> noElevation = run(notes);
        QVERIFY(!noElevation && !noElevation.error().stopped);
        QCOMPARE(noElevation.error().text,
                 QString("Could not open elevation file \"none.png\""));
        m_document.parameters.TDateiname = "gone.png";
        QCOMPARE(run(notes).error().text,
                 QString("Could not open texture file \"gone.png\""));
        QVERIFY(notes.told.isEmpty());
    }

    void curvedFlightWithoutPointsIsRefused()
    {
        Notes notes;
        m_document.parameters.isStraight = false;
        const Result<void> result = run(notes);
        QVERIFY(!result);
        QVERIFY(result.error().text.startsWith("The number of control points is 0;"));
        QCOMPARE(notes.told, (QStringList{"target 32x24", "refused"}));
    }

    void filesThatCannotBeWrittenAreToldAndTheRunGoesOn()
    {
        Notes notes;
        m_document.parameters.AusDateiname = m_dir->filePath("none/f%d");
        QVERIFY(run(notes));
        QCOMPARE(notes.saved, (QList<int>{0, 1, 2}));
        QCOMPARE(notes.complained.size(), 3);
    }

    // Nothing of it needs the thread of the program's windows.
    void runsOnAnyThread()
    {
        Notes notes;
        bool good = false;
        std::thread other([&] { good = run(notes).has_value(); });
        other.join();
        QVERIFY(good);
        QCOMPARE(files().size(), 3);
    }

private:
    Result<void> run(Notes &notes)
    {
        return run(notes, {false, false, 1, m_dir->path()});
    }
    Result<void> run(Notes &notes, const RunOptions &options)
    {
        return FlightRun(m_document, options, notes).run();
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_dir->path()).entryList({"f*"}, QDir::Files, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    SceneryDocument m_document;
};

QTEST_GUILESS_MAIN(TestFlightRun)
#include "test_flightrun.moc"
