#include "commands/console.h"
#include "commands/progressprinter.h"

#include <QFile>
#include <QTemporaryFile>
#include <QTest>

#include <functional>

#include <unistd.h>

namespace {

/// What is written to standard error, which is no terminal then.
QString errorOf(const std::function<void()> &work)
{
    QTemporaryFile file;
    if (!file.open())
        return {};
    const int former = ::dup(STDERR_FILENO);
    ::dup2(file.handle(), STDERR_FILENO);
    work();
    ::dup2(former, STDERR_FILENO);
    ::close(former);
    file.seek(0);
    return QString::fromLocal8Bit(file.readAll());
}

} // namespace

class TestProgressPrinter : public QObject {
    Q_OBJECT

private slots:
    void aShortRunTellsNothing()
    {
        const QString told = errorOf([] {
            Console console;
            const std::atomic<bool> stop = false;
            ProgressPrinter progress(console, stop);
            for (int i = 0; i < 100; ++i)
                QVERIFY(progress.step(i, 100));
            progress.end();
        });
        QCOMPARE(told, "");
    }

    void aLongRunTellsEachTenthOnceAndThoseThatHadPassed()
    {
        const QString told = errorOf([] {
            Console console;
            const std::atomic<bool> stop = false;
            ProgressPrinter progress(console, stop);
            QVERIFY(progress.step(55, 100));
            QTest::qWait(1100);
            QVERIFY(progress.step(56, 100));
            QVERIFY(progress.step(20, 100)); // never back
            QVERIFY(progress.step(75, 100));
            progress.end();
        });
        QCOMPARE(told, "10 %\n20 %\n30 %\n40 %\n50 %\n60 %\n70 %\n80 %\n90 %\n100 %\n");
    }

    void quietTellsErrorsOnly()
    {
        const QString told = errorOf([] {
            Console console(Console::Talk::ErrorsOnly);
            console.message("a row");
            console.progress("10 %");
            console.error("a failure");
        });
        QCOMPARE(told, "a failure\n");
    }

    void aStopEndsTheWork()
    {
        Console console;
        std::atomic<bool> stop = false;
        ProgressPrinter progress(console, stop);
        QVERIFY(progress.step(1, 10));
        stop = true;
        QVERIFY(!progress.step(1, 10));
        PartOfProgress part(progress, 0.5, 1.0);
        QVERIFY(!part.step(1, 10));
    }

    void aPartIsAShareOfTheWhole()
    {
        class Last final : public Progress {
        public:
            double share = -1;
            bool step(qint64 done, qint64 of) override
            {
                share = double(done) / double(of);
                return true;
            }
        };
        Last whole;
        PartOfProgress part(whole, 0.5, 0.75);
        QVERIFY(part.step(1, 2));
        QCOMPARE(whole.share, 0.625);
        QVERIFY(part.step(7, 2));
        QCOMPARE(whole.share, 0.75);
        QVERIFY(part.step(3, 0)); // nobody knows of how many
        QCOMPARE(whole.share, 0.5);
    }
};

QTEST_GUILESS_MAIN(TestProgressPrinter)
#include "test_progressprinter.moc"
