#include "base/workerpool.h"

#include <QTest>

#include <array>
#include <atomic>
#include <new>

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

    void tooLittleMemoryIsToldToTheCaller_data()
    {
        QTest::addColumn<int>("threads");
        QTest::addColumn<int>("failing");
        QTest::newRow("caller alone") << 1 << 0;
        QTest::newRow("caller of three") << 3 << 0;
        QTest::newRow("second of three") << 3 << 1;
        QTest::newRow("all of three") << 3 << -1;
    }
    void tooLittleMemoryIsToldToTheCaller()
    {
        QFETCH(int, threads);
        QFETCH(int, failing);
        WorkerPool pool(threads);
        if (pool.size() < threads)
            QSKIP("the system gives too few threads");
        std::atomic<int> ended = 0;
        const auto work = [&](int worker) {
            const bool fails = failing < 0 || worker == failing;
            if (fails)
                throw std::bad_alloc();
            ++ended;
        };
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, pool.run(work));
        QCOMPARE(ended.load(), failing < 0 ? 0 : threads - 1); // nobody still works
        ended = 0;
        pool.run([&](int) { ++ended; });
        QCOMPARE(ended.load(), threads);
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
