// The frame writer where memory runs out on its threads. This program's operator new
// fails on all threads but the first, on demand.

#include "run/framewriter.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <thread>

namespace {

std::atomic<bool> failElsewhere = false;
const std::thread::id here = std::this_thread::get_id();

} // namespace

void *operator new(std::size_t size)
{
    if (failElsewhere && std::this_thread::get_id() != here)
        throw std::bad_alloc();
    if (void *const memory = std::malloc(std::max<std::size_t>(size, 1)))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept { std::free(memory); }

void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }

class TestFrameWriterMemory : public QObject {
    Q_OBJECT

private slots:
    void framesForWhichMemoryLacksAreToldAsFailed_data()
    {
        QTest::addColumn<bool>("halve");
        QTest::newRow("as it is") << false;
        QTest::newRow("halved") << true;
    }

    void framesForWhichMemoryLacksAreToldAsFailed()
    {
        QFETCH(bool, halve);
        const QTemporaryDir folder;
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        const auto nameOf = [&](int frame) {
            return folder.filePath(QStringLiteral("f%1.png").arg(frame));
        };
        QStringList told;
        FrameWriter writer(
            2,
            [&](int frame, const QStringList &complaints) {
                told << QStringLiteral("%1:").arg(frame) +
                            complaints.join(QLatin1Char(','));
            },
            [] { QCoreApplication::processEvents(); });
        failElsewhere = true;
        writer.write(0, picture, halve, {nameOf(0)});
        writer.finish();
        failElsewhere = false;
        writer.write(1, picture, halve, {nameOf(1)});
        writer.finish();
        const QString complaint = unsavedText(nameOf(0), qt_error_string(ENOMEM));
        QCOMPARE(told, QStringList({"0:" + complaint, "1:"}));
        QVERIFY(!QFileInfo::exists(nameOf(0)));
        QCOMPARE(QImage(nameOf(1)).width(), halve ? 32 : 64);
    }
};

QTEST_MAIN(TestFrameWriterMemory)
#include "test_framewriter_memory.moc"
