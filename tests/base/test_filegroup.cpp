#include "base/filegroup.h"
#include "support/textfile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Several files that are there together, or not at all.
class TestFileGroup : public QObject {
    Q_OBJECT

private slots:
    void nothingIsThereBeforeAllAre();
    void anOlderFileStaysUntilTheEnd();
    void aGroupThatIsDroppedLeavesNothing();
    void aFileThatCannotTakeItsPlaceBringsTheOthersBack();
    void aWriterThatGivesUpHasNoText();
    void failuresNameTheFile();
    void aFileThatIsNotWantedGoesWithTheOthers();

private:
    static Result<void> put(FileGroup &group, const QString &name, const QByteArray &text)
    {
        return group.add(
            name, [&](QIODevice &device) { return device.write(text) == text.size(); });
    }
    static QStringList files(const QTemporaryDir &folder)
    {
        return QDir(folder.path())
            .entryList(QDir::Files | QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot);
    }
};

void TestFileGroup::nothingIsThereBeforeAllAre()
{
    const QTemporaryDir folder;
    FileGroup group;
    QVERIFY(put(group, folder.filePath("a"), "first"));
    QVERIFY(put(group, folder.filePath("b"), "second"));
    QVERIFY(!QFile::exists(folder.filePath("a")));
    QVERIFY(group.takePlaces());
    QCOMPARE(bytesIn(folder.filePath("a")), QByteArray("first"));
    QCOMPARE(bytesIn(folder.filePath("b")), QByteArray("second"));
    QCOMPARE(group.names().size(), 2);
    QCOMPARE(files(folder), (QStringList{"a", "b"}));
}

void TestFileGroup::anOlderFileStaysUntilTheEnd()
{
    const QTemporaryDir folder;
    {
        FileGroup first;
        QVERIFY(put(first, folder.filePath("a"), "old"));
        QVERIFY(first.takePlaces());
    }
    FileGroup group;
    QVERIFY(put(group, folder.filePath("a"), "new"));
    QCOMPARE(bytesIn(folder.filePath("a")), QByteArray("old"));
    QVERIFY(group.takePlaces());
    QCOMPARE(bytesIn(folder.filePath("a")), QByteArray("new"));
    QCOMPARE(files(folder), QStringList{"a"});
}

void TestFileGroup::aGroupThatIsDroppedLeavesNothing()
{
    const QTemporaryDir folder;
    {
        FileGroup group;
        QVERIFY(put(group, folder.filePath("a"), "text"));
    }
    QCOMPARE(files(folder), QStringList());
}

void TestFileGroup::aFileThatCannotTakeItsPlaceBringsTheOthersBack()
{
    const QTemporaryDir folder;
    {
        FileGroup first;
        QVERIFY(put(first, folder.filePath("a"), "old"));
        QVERIFY(first.takePlaces());
    }
    FileGroup group;
    QVERIFY(put(group, folder.filePath("a"), "new"));
    QVERIFY(put(group, folder.filePath("fresh"), "new"));
    QVERIFY(put(group, folder.filePath("b"), "new"));
    // What stands in the way came between.
    QVERIFY(QDir(folder.path()).mkpath("b/inside"));
    const Result<void> result = group.takePlaces();
    QVERIFY(!result);
    QVERIFY(result.error().text.contains(folder.filePath("b")));
    QCOMPARE(bytesIn(folder.filePath("a")), QByteArray("old"));
    QVERIFY(!QFile::exists(folder.filePath("fresh")));
}

void TestFileGroup::aWriterThatGivesUpHasNoText()
{
    const QTemporaryDir folder;
    FileGroup group;
    const Result<void> result =
        group.add(folder.filePath("a"), [](QIODevice &) { return false; });
    QVERIFY(!result);
    QVERIFY(result.error().text.isEmpty());
    QVERIFY(group.names().isEmpty());
    QCOMPARE(files(folder), QStringList());
}

void TestFileGroup::failuresNameTheFile()
{
    const QTemporaryDir folder;
    FileGroup group;
    const QString missing = folder.filePath("none/a");
    const Result<void> noFolder = put(group, missing, "text");
    QVERIFY(!noFolder);
    QVERIFY(noFolder.error().text.contains(missing));
    QVERIFY(QDir(folder.path()).mkpath("d"));
    const Result<void> noFile = put(group, folder.filePath("d"), "text");
    QVERIFY(!noFile);
    QVERIFY(noFile.error().text.contains(folder.filePath("d")));
}

void TestFileGroup::aFileThatIsNotWantedGoesWithTheOthers()
{
    const QTemporaryDir folder;
    {
        FileGroup first;
        QVERIFY(put(first, folder.filePath("old"), "old"));
        QVERIFY(first.takePlaces());
    }
    FileGroup group;
    QVERIFY(put(group, folder.filePath("a"), "new"));
    group.remove(folder.filePath("old"));
    group.remove(folder.filePath("never"));
    QVERIFY(QFile::exists(folder.filePath("old")));
    QVERIFY(group.takePlaces());
    QCOMPARE(files(folder), QStringList{"a"});
}

QTEST_APPLESS_MAIN(TestFileGroup)
#include "test_filegroup.moc"
