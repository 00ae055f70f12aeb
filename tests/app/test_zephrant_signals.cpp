// The program itself, under signals of writes that cannot succeed.

#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>

class TestZephrantSignals : public QObject {
    Q_OBJECT

private slots:
    void failedWritesDoNotEndIt_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("a pipe that nobody reads") << SIGPIPE;
        QTest::newRow("a file beyond its limit") << SIGXFSZ;
    }
    void failedWritesDoNotEndIt()
    {
        QFETCH(int, signal);
        QProcess program;
        program.start(QStringLiteral(ZEPHRANT_PROGRAM), {});
        QVERIFY(program.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(isIgnored(program.processId(), signal), 20000);
        QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
        QVERIFY(!program.waitForFinished(300));
        QCOMPARE(program.state(), QProcess::Running);
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
    }

private:
    static bool isIgnored(qint64 process, int signal)
    {
        QFile status(QStringLiteral("/proc/%1/status").arg(process));
        if (!status.open(QIODevice::ReadOnly))
            return false;
        for (const QByteArray &line : status.readAll().split('\n'))
            if (line.startsWith("SigIgn:"))
                return line.mid(7).trimmed().toULongLong(nullptr, 16) >> (signal - 1) & 1;
        return false;
    }
};

QTEST_GUILESS_MAIN(TestZephrantSignals)
#include "test_zephrant_signals.moc"
