#include "app/recentfiles.h"

#include "base/appsettings.h"

#include <QTest>

class TestRecentFiles : public QObject {
    Q_OBJECT

private slots:
    void init() { AppSettings().clear(); }

    void addedNameComesFirst_data()
    {
        QTest::addColumn<QString>("added");
        QTest::addColumn<QStringList>("result");
        QTest::newRow("slot 1") << "a" << QStringList{"a", "b", "c", "d"};
        QTest::newRow("slot 2") << "b" << QStringList{"b", "a", "c", "d"};
        QTest::newRow("slot 3") << "c" << QStringList{"c", "a", "b", "d"};
        QTest::newRow("slot 4 drops nothing") << "d" << QStringList{"d", "a", "b", "c"};
        QTest::newRow("new drops slot 4") << "e" << QStringList{"e", "a", "b", "c"};
        QTest::newRow("other case is new") << "A" << QStringList{"A", "a", "b", "c"};
    }

    void addedNameComesFirst()
    {
        QFETCH(QString, added);
        RecentFiles files{{"a", "b", "c", "d"}};
        files.addFirst(added);
        QTEST(QStringList(files.names.begin(), files.names.end()), "result");
    }

    void firstNamesFillTheListFromTheFront()
    {
        RecentFiles files;
        files.addFirst("one");
        files.addFirst("two");
        QCOMPARE(QStringList(files.names.begin(), files.names.end()),
                 (QStringList{"two", "one", "", ""}));
    }

    void listLivesInTheSettings()
    {
        RecentFiles{{"a", "b", "c", "d"}}.write();
        QCOMPARE(AppSettings().value("mostRecentFile1").toString(), QString("a"));
        QCOMPARE(AppSettings().value("mostRecentFile4").toString(), QString("d"));
        AppSettings().setValue("mostRecentFile2", "x");
        QCOMPARE(RecentFiles::read().names[1], QString("x"));
    }
};

QTEST_GUILESS_MAIN(TestRecentFiles)
#include "test_recentfiles.moc"
