// New files that are not whole yet, earlier ones that come back, and what is left of both
// when a program ends at once.
#include "base/freshfile.h"
#include "base/replacing.h"
#include "base/unfinished.h"
#include "support/limits.h"
#include "support/textfile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

// What a function leaves when its process is ended as by a second signal. The status is
// that of the process.
template <typename Function> int inAProcessOfItsOwn(Function function)
{
    const pid_t child = ::fork();
    if (child == 0) {
        function();
        ::_exit(0);
    }
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child ? status : -1;
}

} // namespace

class TestFreshFile : public QObject {
    Q_OBJECT

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }
    void cleanup() { m_dir.reset(); }

    void fileIsNowhereUntilItTakesItsPlace();
    void fileThatFailsOnceHasFailed();
    void firstReasonIsKept();
    void absentFolderIsAnErrorOfTheSystem();
    void earlierFileComesBack_data();
    void earlierFileComesBack();
    void killedProgramLeavesNothing();
    void unfinishedNamesGoWhenAProgramEndsAtOnce();
    void chainsOfLinksEnd();
    void permissionsAreTakenOver();

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return m_dir->filePath(name);
    }
    [[nodiscard]] QByteArray encoded(const QString &name) const
    {
        return QFile::encodeName(path(name));
    }
    [[nodiscard]] QStringList all() const
    {
        return QDir(m_dir->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                           QDir::NoDotAndDotDot,
                       QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestFreshFile::fileIsNowhereUntilItTakesItsPlace()
{
    QVERIFY(writeBytes(path("file"), "earlier"));
    {
        FreshFile dropped;
        QVERIFY(dropped.open(encoded("file"), 0600));
        QVERIFY(dropped.file().write("half") == 4);
        QCOMPARE(bytesIn(path("file")), QByteArray("earlier"));
    }
    QCOMPARE(all(), QStringList("file"));
    FreshFile fresh;
    QVERIFY(fresh.open(encoded("file"), 0600));
    QVERIFY(fresh.file().write("new") == 3 && fresh.file().finish());
    QVERIFY(fresh.takePlace());
    QCOMPARE(bytesIn(path("file")), QByteArray("new"));
    QCOMPARE(all(), QStringList("file"));
}

void TestFreshFile::fileThatFailsOnceHasFailed()
{
    FreshFile fresh;
    QVERIFY(fresh.open(encoded("file"), 0600));
    {
        const FileSizeLimit limit(10);
        QCOMPARE(fresh.file().write(QByteArray(11, 'x')), qint64(-1));
    }
    QVERIFY(fresh.file().hasFailed());
    // There is room again, and the bytes that fell short are missing all the same.
    QVERIFY(fresh.file().seek(0) && fresh.file().write("ok") == 2);
    QVERIFY(fresh.file().hasFailed());
    QVERIFY(!fresh.file().finish());
}

void TestFreshFile::firstReasonIsKept()
{
    OutputFile file(path("file"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.reason(), QString());
    {
        const FileSizeLimit limit(0);
        QCOMPARE(file.write("x"), qint64(-1));
    }
    QCOMPARE(file.reason(), QString("File too large"));
    OutputFile full("/dev/full");
    if (!full.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        QSKIP("This system has no /dev/full.");
    QCOMPARE(full.write("x"), qint64(-1));
    QCOMPARE(full.reason(), QString("No space left on device"));
    {
        const FileSizeLimit limit(0);
        QVERIFY(!full.finish());
    }
    QCOMPARE(full.reason(), QString("No space left on device"));
}

void TestFreshFile::absentFolderIsAnErrorOfTheSystem()
{
    FreshFile fresh;
    errno = 0;
    QVERIFY(!fresh.open(encoded("none/file"), 0600));
    QCOMPARE(errno, ENOENT);
    QVERIFY(writeBytes(path("plain"), {}));
    errno = 0;
    QVERIFY(!fresh.open(encoded("plain/file"), 0600));
    QCOMPARE(errno, ENOTDIR);
    QCOMPARE(all(), QStringList("plain"));
}

void TestFreshFile::earlierFileComesBack_data()
{
    QTest::addColumn<bool>("wasThere");
    QTest::addColumn<bool>("isReplaced");
    for (const bool wasThere : {true, false})
        for (const bool isReplaced : {true, false})
            QTest::addRow("%s, %s", wasThere ? "there" : "absent",
                          isReplaced ? "replaced" : "left alone")
                << wasThere << isReplaced;
}
void TestFreshFile::earlierFileComesBack()
{
    QFETCH(bool, wasThere);
    QFETCH(bool, isReplaced);
    if (wasThere)
        QVERIFY(writeBytes(path("file"), "earlier"));
    {
        const EarlierFile earlier(encoded("file"));
        if (isReplaced) {
            QFile::remove(path("file"));
            QVERIFY(writeBytes(path("file"), "half of"));
        }
        earlier.putBack();
    }
    QCOMPARE(all(), wasThere ? QStringList("file") : QStringList());
    if (wasThere)
        QCOMPARE(bytesIn(path("file")), QByteArray("earlier"));
}

void TestFreshFile::killedProgramLeavesNothing()
{
    QVERIFY(writeBytes(path("file"), "earlier"));
    const int status = inAProcessOfItsOwn([this] {
        FreshFile fresh;
        if (fresh.open(encoded("file"), 0600) && fresh.file().write("half") == 4)
            ::raise(SIGKILL);
    });
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    removeLeftovers(m_dir->path());
    QCOMPARE(all(), QStringList("file"));
    QCOMPARE(bytesIn(path("file")), QByteArray("earlier"));
}

void TestFreshFile::unfinishedNamesGoWhenAProgramEndsAtOnce()
{
    for (const char *name : {"half", "whole", "kept"})
        QVERIFY(writeBytes(path(name), name));
    const int status = inAProcessOfItsOwn([this] {
        rememberUnfinished(encoded("half"));
        rememberUnfinished(encoded("whole"));
        rememberUnfinished(encoded("never made"));
        forgetUnfinished(encoded("whole"));
        dropUnfinishedFiles();
    });
    QCOMPARE(status, 0);
    QCOMPARE(all(), (QStringList{"kept", "whole"}));
}

void TestFreshFile::chainsOfLinksEnd()
{
    QVERIFY(QFile::link("b", path("a")) && QFile::link("c", path("b")));
    QCOMPARE(linkTarget(path("a")), path("c")); // which need not exist
    QVERIFY(QFile::link("ring2", path("ring1")) && QFile::link("ring1", path("ring2")));
    QVERIFY(linkTarget(path("ring1")).startsWith(path("ring")));
    QCOMPARE(linkTarget(path("none")), path("none"));
}

void TestFreshFile::permissionsAreTakenOver()
{
    for (const mode_t mode : {0600u, 0640u, 0755u, 04755u}) {
        QVERIFY(writeBytes(path("earlier"), {}) && writeBytes(path("new"), {}));
        QCOMPARE(::chmod(encoded("earlier").constData(), mode), 0);
        struct stat earlier {};
        struct stat fresh {};
        QCOMPARE(::stat(encoded("earlier").constData(), &earlier), 0);
        QFile file(path("new"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        takeOver(file.handle(), earlier);
        QCOMPARE(::stat(encoded("new").constData(), &fresh), 0);
        // Nobody is given the rights of another by a file with other contents.
        QCOMPARE(fresh.st_mode & 07777u, mode & 0777u);
        QCOMPARE(fresh.st_uid, earlier.st_uid);
    }
}

QTEST_GUILESS_MAIN(TestFreshFile)
#include "test_freshfile.moc"
