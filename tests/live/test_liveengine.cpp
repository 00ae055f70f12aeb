// Pictures of the live view against frames of runs, and against the last word of whoever
// asks for them.

#include "live/liveengine.h"

#include "live/flyer.h"
#include "live/livescene.h"

#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int Patience = 60000; // milliseconds

// Collects what an engine draws.
class Watcher {
public:
    Watcher()
    {
        QObject::connect(&engine, &LiveEngine::drawn, &context,
                         [this](const LivePicture &picture) { drawn.append(picture); });
    }

    // The best picture of a request; all pictures are in `drawn`.
    LivePicture last(const LiveRequest &wanted)
    {
        const quint64 number = engine.request(wanted);
        const bool came = QTest::qWaitFor(
            [&] {
                return !drawn.isEmpty() && drawn.last().request == number &&
                       drawn.last().last;
            },
            Patience);
        return came ? drawn.last() : LivePicture();
    }

    QList<LivePicture> drawn;
    QObject context;   // of this thread
    LiveEngine engine; // the first to go
};

} // namespace

class TestLiveEngine : public QObject {
    Q_OBJECT

private slots:
    void refinedPicturesAreFramesOfARun()
    {
        const LiveScene scene;
        Watcher watcher;
        for (quint32 seed = 1; seed <= 20; ++seed) {
            LiveRequest wanted = scene.request(seed, {70, 61});
            wanted.frame = static_cast<int>(seed % 9);
            const LivePicture picture = watcher.last(wanted);
            QCOMPARE(picture.message, QString());
            QVERIFY(picture.refined);
            QCOMPARE(picture.frame, wanted.frame);
            const QImage frame =
                scene.frameOfARun(wanted.document, wanted.frame, wanted.view);
            QVERIFY(!frame.isNull());
            QCOMPARE(picture.image.convertToFormat(frame.format()), frame);
            QVERIFY(frame.width() == 70 || frame.height() == 61);
        }
    }

    void aMovingPictureIsNotRefined()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(1, {400, 300});
        wanted.moving = true;
        const LivePicture picture = watcher.last(wanted);
        QVERIFY(!picture.image.isNull());
        QVERIFY(!picture.refined);
        QVERIFY(picture.image.width() >= 50);
    }

    // However many requests come, the last one is answered, to its end.
    void theLatestRequestWins()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(2, {300, 260});
        for (int frame = 0; frame < 200; ++frame) {
            wanted.frame = frame % 9;
            watcher.engine.request(wanted);
        }
        wanted.frame = 5;
        const LivePicture picture = watcher.last(wanted);
        QVERIFY(picture.refined);
        QCOMPARE(picture.frame, 5);
        quint64 before = 0;
        for (const LivePicture &each : watcher.drawn) {
            QVERIFY(each.request >= before);
            before = each.request;
        }
    }

    // A camera on the form's steps shows what the form shows that has it.
    void aFlownCameraIsTheOneThatTheFormWouldTake()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(4, {64, 64});
        wanted.camera =
            Flyer::onSteps({20.123, -9.876, 19.999, 3.3333, -31.009, 1.5, 44.4});
        const LivePicture flown = watcher.last(wanted);
        QCOMPARE(flown.camera, *wanted.camera);
        SceneryData &data = wanted.document.parameters;
        data.BeobXA = 20.12;
        data.BeobYA = -9.88;
        data.BeobZA = 20.0;
        data.RichtungA = 3.33;
        data.NeigungA = -31.01;
        data.VerkantenA = 1.5;
        data.BrennA = 44.4;
        wanted.camera.reset();
        QCOMPARE(watcher.last(wanted).image, flown.image);
    }

    void groundIsHeld()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(1, {64, 64});
        wanted.camera = {20, 20, 500, 0, -20, 0, 50};
        wanted.clearance = 2.5;
        const LivePicture picture = watcher.last(wanted);
        QVERIFY(picture.groundHeight);
        QVERIFY(std::abs(picture.camera.z - *picture.groundHeight - 2.5) <= 0.006);
    }

    void aFilledPictureShowsNoBackground()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(1, {200, 200});
        wanted.document.parameters.HintergrundVerwenden = true;
        wanted.document.parameters.Hintergrund = 0xFFFE0102u;
        wanted.camera = {24, -80, 90, 0, -5, 0, 60};
        wanted.fill = true;
        const LivePicture picture = watcher.last(wanted);
        QVERIFY(picture.refined);
        QVERIFY(picture.camera != *wanted.camera);
        int background = 0;
        for (int y = 0; y < picture.image.height(); ++y)
            for (int x = 0; x < picture.image.width(); ++x)
                background += picture.image.pixel(x, y) == 0xFFFE0102u;
        QCOMPARE(background, 0);
    }

    void missingFilesAreTold()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(1, {64, 64});
        wanted.document.parameters.TDateiname = "no.png";
        const LivePicture white = watcher.last(wanted);
        QVERIFY(white.refined);
        QVERIFY(white.message.contains("no.png"));
        // The ground of a white texture of the same size.
        QImage paper(48, 40, QImage::Format_RGB32);
        paper.fill(Qt::white);
        paper.save(scene.path("paper.png"));
        wanted.document.parameters.TDateiname = "paper.png";
        QCOMPARE(watcher.last(wanted).image, white.image);

        wanted.document.parameters.HDateiname = "none.png";
        const LivePicture none = watcher.last(wanted);
        QVERIFY(none.image.isNull());
        QVERIFY(none.message.contains("none.png"));
        wanted.document = scene.document(3);
        wanted.document.controlPoints.clear();
        const LivePicture still = watcher.last(wanted);
        QVERIFY(still.image.isNull());
        QVERIFY(!still.message.isEmpty());
    }

    void aChangedFileIsShown()
    {
        const LiveScene scene;
        Watcher watcher;
        LiveRequest wanted = scene.request(1, {64, 64});
        const QImage before = watcher.last(wanted).image;
        watcher.engine.lookForChanges(); // nothing has changed
        watcher.drawn.clear();
        QFile::remove(scene.path("land.png"));
        watcher.engine.lookForChanges();
        QTRY_VERIFY_WITH_TIMEOUT(!watcher.drawn.isEmpty() &&
                                     !watcher.drawn.last().message.isEmpty(),
                                 Patience);
        scene.writeTexture(40);
        watcher.engine.lookForChanges();
        QTRY_VERIFY_WITH_TIMEOUT(watcher.drawn.last().message.isEmpty() &&
                                     watcher.drawn.last().refined &&
                                     watcher.drawn.last().image != before,
                                 Patience);
    }

    void anEngineEndsInTheMidstOfItsWork()
    {
        const LiveScene scene;
        for (quint32 seed = 1; seed <= 12; ++seed) {
            LiveEngine engine;
            LiveRequest wanted = scene.request(seed, {700, 700});
            engine.request(wanted);
            if (seed % 2)
                QTest::qWait(5);
        }
    }
};

QTEST_GUILESS_MAIN(TestLiveEngine)
#include "test_liveengine.moc"
