#include "base/freshfile.h"
#include "base/wholefile.h"
#include "support/limits.h"
#include "support/textfile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

std::function<bool(QIODevice &)> bytes(const QByteArray &contents)
{
    return [contents](QIODevice &device) {
        return device.write(contents) == contents.size();
    };
}

unsigned int modeOf(const QString &name)
{
    struct stat status {};
    return ::stat(QFile::encodeName(name).constData(), &status) == 0
               ? status.st_mode & 07777
               : 0;
}

quint64 inodeOf(const QString &name)
{
    struct stat status {};
    return ::stat(QFile::encodeName(name).constData(), &status) == 0 ? status.st_ino : 0;
}

} // namespace

class TestWholeFile : public QObject {
    Q_OBJECT

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }
    void cleanup()
    {
        open(0777, 0);
        m_dir.reset();
    }

    void newFileHasTheUsualPermissions()
    {
        const mode_t mask = ::umask(027);
        const bool written = writeWholeFile(name(), bytes("new"));
        ::umask(mask);
        QVERIFY(written);
        QCOMPARE(bytesIn(name()), QByteArray("new"));
        QCOMPARE(modeOf(name()), 0640u);
        QCOMPARE(all(), QStringList("file"));
    }

    void earlierFileIsReplacedAndKeepsItsPermissions()
    {
        QVERIFY(writeBytes(name(), "an earlier one"));
        QVERIFY(QFile::setPermissions(name(), QFile::ReadOwner | QFile::WriteOwner |
                                                  QFile::ReadGroup | QFile::WriteGroup));
        QVERIFY(writeWholeFile(name(), bytes("new")));
        QCOMPARE(bytesIn(name()), QByteArray("new"));
        QCOMPARE(modeOf(name()), 0660u);
        QCOMPARE(all(), QStringList("file"));
    }

    // The last bytes reach the disk only when the file is finished.
    void diskThatFillsUpAtTheLastFlushIsAFailure_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("room");
        QTest::newRow("no room") << 100 << 0;
        QTest::newRow("room for a part") << 100 << 60;
        QTest::newRow("a buffer, and the rest") << 40000 << 39999;
        QTest::newRow("a large write") << 1000000 << 500000;
    }
    void diskThatFillsUpAtTheLastFlushIsAFailure()
    {
        QFETCH(int, size);
        QFETCH(int, room);
        QVERIFY(writeBytes(name(), "earlier"));
        QString error;
        {
            const FileSizeLimit limit{rlim_t(room)};
            QVERIFY(!writeWholeFile(name(), bytes(QByteArray(size, 'x')), &error));
            QVERIFY(
                !writeWholeFile(m_dir->filePath("other"), bytes(QByteArray(size, 'x'))));
        }
        QCOMPARE(error, QString("File too large"));
        QCOMPARE(bytesIn(name()), QByteArray("earlier"));
        QCOMPARE(all(), QStringList("file"));
    }

    void writerThatOverlooksAFailureDoesNotHideIt()
    {
        QVERIFY(writeBytes(name(), "earlier"));
        QString error;
        const auto careless = [](QIODevice &device) {
            for (int i = 0; i < 100; ++i)
                device.write(QByteArray(1000, 'x'));
            return true;
        };
        {
            const FileSizeLimit limit{50000};
            QVERIFY(!writeWholeFile(name(), careless, &error));
        }
        QCOMPARE(error, QString("File too large"));
        QCOMPARE(bytesIn(name()), QByteArray("earlier"));
    }

    void writerThatGivesUpLeavesTheEarlierFile()
    {
        QVERIFY(writeBytes(name(), "earlier"));
        QString error = "unset";
        const auto gives = [](QIODevice &device) { return device.write("x") != 1; };
        QVERIFY(!writeWholeFile(name(), gives, &error));
        QCOMPARE(error, QString());
        QCOMPARE(bytesIn(name()), QByteArray("earlier"));
        QCOMPARE(all(), QStringList("file"));
    }

    void lackOfMemoryIsAFailure()
    {
        QString error;
        const auto takes = [](QIODevice &) -> bool { throw std::bad_alloc(); };
        QVERIFY(!writeWholeFile(name(), takes, &error));
        QCOMPARE(error, QString("Cannot allocate memory"));
        QCOMPARE(all(), QStringList());
    }

    void absentFolderIsTold()
    {
        QString error;
        QVERIFY(!writeWholeFile(m_dir->filePath("none/file"), bytes("x"), &error));
        QCOMPARE(error, QString("No such file or directory"));
    }

    void linksAreFollowed_data()
    {
        QTest::addColumn<bool>("thereBefore");
        QTest::newRow("to a file") << true;
        QTest::newRow("to no file yet") << false;
    }
    void linksAreFollowed()
    {
        QFETCH(bool, thereBefore);
        if (thereBefore)
            QVERIFY(writeBytes(name(), "earlier"));
        QVERIFY(QFile::link(name(), m_dir->filePath("first")));
        QVERIFY(QFile::link("first", m_dir->filePath("second")));
        QVERIFY(writeWholeFile(m_dir->filePath("second"), bytes("new")));
        QCOMPARE(bytesIn(name()), QByteArray("new"));
        QVERIFY(QFileInfo(m_dir->filePath("second")).isSymLink());
        QVERIFY(QFileInfo(m_dir->filePath("first")).isSymLink());
    }

    void fullDeviceIsTold()
    {
        QString error;
        QVERIFY(!writeWholeFile("/dev/full", bytes("x"), &error));
        QCOMPARE(error, QString("No space left on device"));
    }

    void readOnlyFileIsNotReplaced()
    {
        QVERIFY(writeBytes(name(), "earlier"));
        open(0777, 0444);
        const OrdinaryUser user;
        QString error;
        QVERIFY(!writeWholeFile(name(), bytes("new"), &error));
        QCOMPARE(error, QString("Permission denied"));
        QCOMPARE(bytesIn(name()), QByteArray("earlier"));
    }

    void folderThatTakesNoFileHasItsFileOverwritten_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("shorter") << QByteArray("new");
        QTest::newRow("longer") << QByteArray(100000, 'n');
        QTest::newRow("empty") << QByteArray();
    }
    void folderThatTakesNoFileHasItsFileOverwritten()
    {
        QFETCH(QByteArray, contents);
        QVERIFY(writeBytes(name(), "an earlier one"));
        const quint64 inode = inodeOf(name());
        open(0555, 0666);
        const OrdinaryUser user;
        QString error;
        QVERIFY2(writeWholeFile(name(), bytes(contents), &error), qPrintable(error));
        QCOMPARE(bytesIn(name()), contents);
        QCOMPARE(inodeOf(name()), inode);
    }

    // A full disk must not cost the file that was there.
    void overwrittenFileIsPutBack()
    {
        const QByteArray earlier = "an earlier one, " + QByteArray(3000, 'e');
        QVERIFY(writeBytes(name(), earlier));
        open(0555, 0666);
        const OrdinaryUser user;
        QString error;
        {
            const FileSizeLimit limit{5000};
            QVERIFY(!writeWholeFile(name(), bytes(QByteArray(9000, 'n')), &error));
        }
        QCOMPARE(error, QString("File too large"));
        QCOMPARE(bytesIn(name()), earlier);
        // Nor must a writer that gives up.
        QVERIFY(!writeWholeFile(
            name(), [](QIODevice &device) { return device.write("half") != 4; }));
        QCOMPARE(bytesIn(name()), earlier);
    }

    void folderThatTakesNoFileTakesNoNewOne()
    {
        open(0555, 0);
        const OrdinaryUser user;
        QString error;
        QVERIFY(!writeWholeFile(name(), bytes("new"), &error));
        QCOMPARE(error, QString("Permission denied"));
    }

    void threadsThatWriteOneFileLeaveOneOfTheirs()
    {
        const auto writes = [this](char letter) {
            for (int i = 0; i < 50; ++i)
                if (!writeWholeFile(name(), bytes(QByteArray(30000, letter))))
                    qFatal("not written");
        };
        std::thread other(writes, 'a');
        writes('b');
        other.join();
        const QByteArray found = bytesIn(name());
        QVERIFY(found == QByteArray(30000, 'a') || found == QByteArray(30000, 'b'));
        QCOMPARE(all(), QStringList("file"));
    }

    void leftoversOfDeadProgramsGo()
    {
        QVERIFY(writeBytes(m_dir->filePath(".zephrant-1a2b.part"), "dead"));
        QVERIFY(writeBytes(m_dir->filePath("zephrant-1a2b.part"), "a user's"));
        QVERIFY(writeBytes(name(), "a frame"));
        // One that is being written.
        FreshFile alive;
        QVERIFY(alive.open(QFile::encodeName(m_dir->filePath("alive")), 0666));
        removeLeftovers(m_dir->path());
        QCOMPARE(all(), (QStringList{"file", "zephrant-1a2b.part"}));
        QVERIFY(alive.file().write("x") == 1 && alive.file().finish());
        QVERIFY(alive.takePlace());
        QCOMPARE(all(), (QStringList{"alive", "file", "zephrant-1a2b.part"}));
    }

private:
    [[nodiscard]] QString name() const { return m_dir->filePath("file"); }
    [[nodiscard]] QStringList all() const
    {
        return QDir(m_dir->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                           QDir::NoDotAndDotDot,
                       QDir::Name);
    }
    // Permissions of the folder and the file.
    void open(mode_t folder, mode_t file) const
    {
        if (file != 0)
            QCOMPARE(::chmod(QFile::encodeName(name()).constData(), file), 0);
        QCOMPARE(::chmod(QFile::encodeName(m_dir->path()).constData(), folder), 0);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestWholeFile)
#include "test_wholefile.moc"
