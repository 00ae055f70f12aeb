#include "render/workerpool.h"

#include <QTest>

#include <array>
#include <atomic>

class TestWorkerPool : public QObject {
    Q_OBJECT

private slots:
    void everyThreadWorksOnce_data() { threadCounts(); }
    void everyThreadWorksOnce()
    {
        QFETCH(int, threads);
        WorkerPool pool(threads);
        QCOMPARE(pool.size(), std::max(threads, 1));
        for (int round = 0; round < 100; ++round) {
            std::array<std::atomic<int>, 8> calls{};
            pool.run([&](int worker) { ++calls[worker]; });
            for (int worker = 0; worker < 8; ++worker)
                QCOMPARE(calls[worker].load(), worker < pool.size() ? 1 : 0);
        }
    }

    void everyPieceIsDoneOnce_data() { threadCounts(); }
    void everyPieceIsDoneOnce()
    {
        QFETCH(int, threads);
        WorkerPool pool(threads);
        for (const int pieces : {0, 1, 2, 7, 50}) {
            std::array<std::atomic<int>, 60> done{};
            std::atomic<bool> knownWorker = true;
            pool.runPieces(pieces, [&](int worker, int piece) {
                ++done[piece];
                if (worker < 0 || worker >= pool.size())
                    knownWorker = false;
            });
            for (int piece = 0; piece < 60; ++piece)
                QCOMPARE(done[piece].load(), piece < pieces ? 1 : 0);
            QVERIFY(knownWorker);
        }
    }

private:
    static void threadCounts()
    {
        QTest::addColumn<int>("threads");
        for (const int threads : {0, 1, 2, 5})
            QTest::addRow("%d threads", threads) << threads;
    }
};

QTEST_GUILESS_MAIN(TestWorkerPool)
#include "test_workerpool.moc"
