#include "base/appsettings.h"
#include "base/notices.h"
#include "support/limits.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

// Looked up once: every object tries to store what another could not.
QString fileName()
{
    static const QString name = AppSettings().fileName();
    return name;
}

QByteArray contents()
{
    QFile file(fileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// As another start of the program would find them.
QString valueInFile(const QByteArray &key)
{
    for (const QByteArray &line : contents().split('\n'))
        if (line.startsWith(key + '='))
            return QString::fromLatin1(line.mid(key.size() + 1));
    return {};
}

} // namespace

class TestAppSettings : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_told.clear();
        setNoticeSink([this](const QString &text, NoticeStay) { m_told += text; });
        AppSettings settings;
        settings.clear();
        settings.setValue("MainWindow/Position", QPoint(3, 4));
        settings.setValue("mostRecentFile1", QString(100, 'a'));
    }
    void cleanup() { setNoticeSink({}); }

    void changesAreStored()
    {
        AppSettings().setValue("mostRecentFile1", "b");
        QCOMPARE(valueInFile("mostRecentFile1"), QString("b"));
        QCOMPARE(valueInFile("Position"), QString("@Point(3 4)"));
        AppSettings().remove("mostRecentFile1");
        QVERIFY(valueInFile("mostRecentFile1").isNull());
        AppSettings().clear();
        QCOMPARE(contents(), QByteArray());
        QCOMPARE(m_told, QStringList());
        QCOMPARE(files().size(), 1);
    }

    void linesOfEveryKindAreStored()
    {
        {
            AppSettings settings;
            settings.setValue("text", "one\ntwo = [three]\n");
            settings.setValue("[group]/a=b", QByteArray("\0\1\n", 3));
            settings.setValue("list", QStringList{"a", "b;c"});
            settings.setValue("nothing", QVariant());
        }
        QCOMPARE(m_told, QStringList());
        QCOMPARE(AppSettings().value("text").toString(), "one\ntwo = [three]\n");
        QCOMPARE(AppSettings().value("[group]/a=b").toByteArray(),
                 QByteArray("\0\1\n", 3));
    }

    // Wherever the disk fills up, the earlier settings stay, or the new ones are whole.
    void fullDiskKeepsTheEarlierSettings()
    {
        const QByteArray earlier = contents();
        int kept = 0;
        for (rlim_t room = 0; room < rlim_t(earlier.size()) + 20; ++room) {
            {
                const FileSizeLimit limit(room);
                AppSettings().setValue("mostRecentFile1", QString(100, 'b'));
            }
            const bool stored = valueInFile("mostRecentFile1").startsWith('b');
            QCOMPARE(valueInFile("mostRecentFile1").size(), qsizetype(100));
            QCOMPARE(valueInFile("Position"), QString("@Point(3 4)"));
            QCOMPARE(m_told.isEmpty(), stored);
            QCOMPARE(files().size(), 1);
            kept += !stored;
            m_told.clear();
            AppSettings().setValue("mostRecentFile1", QString(100, 'a'));
            QCOMPARE(contents(), earlier);
        }
        QVERIFY(kept >= earlier.size());
    }

    void linkToTheFileStays()
    {
        const QString name = fileName();
        const QString real = name + ".real";
        QVERIFY(QFile::rename(name, real) && QFile::link(real, name));
        {
            const FileSizeLimit limit(100);
            AppSettings().setValue("mostRecentFile1", QString(100, 'b'));
        }
        QCOMPARE(valueInFile("mostRecentFile1"), QString(100, 'a'));
        AppSettings().setValue("mostRecentFile1", "c");
        QCOMPARE(valueInFile("mostRecentFile1"), QString("c"));
        QVERIFY(QFileInfo(name).isSymLink());
        QVERIFY(QFile::remove(name) && QFile::rename(real, name));
    }

private:
    static QStringList files()
    {
        return QFileInfo(fileName()).dir().entryList(QDir::Files | QDir::Hidden);
    }

    QStringList m_told;
};

QTEST_GUILESS_MAIN(TestAppSettings)
#include "test_appsettings.moc"
