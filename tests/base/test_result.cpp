// How work tells its end, and is asked to stop.
#include "base/progress.h"
#include "base/result.h"
#include "support/patience.h"

#include <QtTest>

namespace {

Result<qint64> sumTo(qint64 last, Progress &progress)
{
    if (last < 0)
        return failed(QStringLiteral("There is no sum to %1.").arg(last));
    qint64 sum = 0;
    for (qint64 i = 0; i <= last; ++i) {
        if (!progress.step(i, last))
            return stopped();
        sum += i;
    }
    return sum;
}

} // namespace

class TestResult : public QObject {
    Q_OBJECT

private slots:
    void workThatNobodyWatchesEnds()
    {
        NoProgress nobody;
        QCOMPARE(sumTo(10, nobody).value(), 55);
    }
    void failureHasASentence()
    {
        NoProgress nobody;
        const Failure told{QStringLiteral("There is no sum to -1."), false};
        QVERIFY(sumTo(-1, nobody).error() == told);
    }
    void stoppedWorkHasNone()
    {
        Patience three(3);
        const Failure asked{QString(), true};
        QVERIFY(sumTo(10, three).error() == asked);
    }
};

QTEST_APPLESS_MAIN(TestResult)
#include "test_result.moc"
