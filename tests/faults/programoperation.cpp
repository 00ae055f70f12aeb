#include "faults/operation.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryFile>

namespace {

constexpr int Patience = 60000; // ms
constexpr const char *KindNames[FaultKinds] = {"write",  "full",   "flush",
                                               "rename", "create", "allocation"};

QProcessEnvironment orders(const Fault &fault, const QString &report)
{
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    all.insert("LD_PRELOAD", QStringLiteral(FAULT_LIBRARY));
    all.insert("ZEPHRANT_FAULT",
               QStringLiteral("%1:%2").arg(KindNames[fault.kind]).arg(fault.n));
    all.insert("ZEPHRANT_FAULT_REPORT", report);
    if (!fault.unnamedFiles)
        all.insert("ZEPHRANT_FAULT_NAMED", "1");
    return all;
}

void readReport(QIODevice &report, Attempt &attempt)
{
    for (const QByteArray &line : report.readAll().split('\n')) {
        const QByteArray key = line.left(line.indexOf(' '));
        const QByteArray value = line.mid(key.size() + 1);
        for (int kind = 0; kind < FaultKinds; ++kind)
            if (key == KindNames[kind])
                attempt.counts[size_t(kind)] = value.toLong();
        if (key == "happened")
            attempt.happened = value == "1";
        if (key == "end")
            attempt.end = QString::fromLatin1(value);
    }
}

} // namespace

Attempt ProgramOperation::attempt(const Fault &fault)
{
    Attempt attempt;
    QTemporaryFile report;
    if (!report.open())
        qFatal("no file for the report");
    QProcess process;
    process.setProcessEnvironment(orders(fault, report.fileName()));
    process.start(program(), arguments());
    if (!process.waitForFinished(Patience)) {
        process.kill();
        process.waitForFinished();
    }
    QFile read(report.fileName()); // what another process wrote
    if (read.open(QIODevice::ReadOnly))
        readReport(read, attempt);
    attempt.ended = process.exitStatus() == QProcess::NormalExit && attempt.end.isEmpty();
    if (!attempt.ended) {
        attempt.happened = true;
        if (attempt.end.isEmpty())
            attempt.end = QStringLiteral("signal");
    }
    const QString told = QString::fromUtf8(process.readAllStandardError()).trimmed();
    if (process.exitCode() == 1 && !told.isEmpty())
        attempt.told << told;
    return attempt;
}
