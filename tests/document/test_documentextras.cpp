// Settings beyond the told keys in an open document: kept, changed, saved and told.

#include "document/scenerydelegate.h"
#include "document/sceneryviewfixture.h"
#include "support/modalanswer.h"
#include "support/textfile.h"

#include <QFile>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

class TestDocumentExtras : public QObject, private SceneryViewFixture {
    Q_OBJECT

private slots:
    void init() { openView(); }
    void cleanup() { closeView(); }
    void savingKeepsWhatTheFileHeld();
    void savingUnderAnotherNameKeepsThemToo();
    void changeMarksTheDocumentAsOthersDo();
    void revertSetsAllToTheirDefaultsFirst();
    void badLinesAreToldAndFailNothing();
    void failedLoadTellsNothing();
    void sceneryWithoutExtrasIsSavedAsEver();

private:
    [[nodiscard]] SceneryDelegate &document() { return m_view->delegate(); }
    [[nodiscard]] QByteArray section(const QString &name) const;
};

// What stands in a file behind the first empty line.
QByteArray TestDocumentExtras::section(const QString &name) const
{
    const QByteArray text = bytesIn(path(name));
    const qsizetype empty = text.indexOf("\n\n");
    return empty < 0 ? QByteArray() : text.mid(empty + 2);
}

void TestDocumentExtras::savingKeepsWhatTheFileHeld()
{
    const QByteArray extras("[Extras]\nSunHeight=12.5\nWater=1\nFog=1\n");
    QVERIFY(writeBytes(path("a.zph"), "[Param]\nBeobXA=5\n\n" + extras));
    QVERIFY(m_view->loadFile(path("a.zph")));
    QVERIFY(!document().isModified());
    QCOMPARE(document().extras().SunHeight, 12.5);
    m_form->spinBoxGridX->setValue(5);
    QVERIFY(m_view->save());
    QCOMPARE(section("a.zph"), extras);
    const QByteArray text = bytesIn(path("a.zph"));
    QVERIFY(m_view->loadFile(path("a.zph")) && m_view->save());
    QCOMPARE(bytesIn(path("a.zph")), text);
}

void TestDocumentExtras::savingUnderAnotherNameKeepsThemToo()
{
    QVERIFY(writeBytes(path("a.zph"), "[Param]\n\n[Extras]\nSeed=7\n"));
    QVERIFY(m_view->loadFile(path("a.zph")));
    QVERIFY(m_view->saveFile(path("b.zph")));
    QCOMPARE(section("b.zph"), QByteArray("[Extras]\nSeed=7\n"));
}

void TestDocumentExtras::changeMarksTheDocumentAsOthersDo()
{
    document().setModified(false);
    const QSignalSpy changed(&document(), &SceneryDelegate::extrasChanged);
    SceneryExtras extras = document().extras();
    document().setExtras(extras);
    QVERIFY(!m_view->isModified());
    QCOMPARE(changed.size(), 0);
    extras.Latitude = 50.0;
    document().setExtras(extras);
    QVERIFY(m_view->isModified());
    QCOMPARE(changed.size(), 1);
    QVERIFY(m_view->saveFile(path("a.zph")));
    QVERIFY(!m_view->isModified());
    QCOMPARE(section("a.zph"), QByteArray("[Extras]\nLatitude=50\n"));
}

void TestDocumentExtras::revertSetsAllToTheirDefaultsFirst()
{
    QVERIFY(writeBytes(path("a.zph"), "[Param]\nBeobXA=5\n\n[Extras]\nSeed=7\n"));
    QVERIFY(m_view->loadFile(path("a.zph")));
    SceneryExtras extras = document().extras();
    extras.Exposure = 1.0;
    extras.keptLines = "Fog=1\n";
    document().setExtras(extras);
    const QSignalSpy changed(&document(), &SceneryDelegate::extrasChanged);
    QVERIFY(m_view->loadFile(path("a.zph")));
    QCOMPARE(changed.size(), 1);
    SceneryExtras expected;
    expected.Seed = 7;
    QVERIFY(document().extras() == expected);
    QVERIFY(!m_view->isModified());
}

void TestDocumentExtras::badLinesAreToldAndFailNothing()
{
    const QSignalSpy told(m_view.get(), &SceneryMdiChild::extrasTold);
    QVERIFY(writeBytes(path("a.zph"),
                       "[Param]\nBeobXA=5\n\n[Extras]\nExposure=1,5\nSkyLight=2\n"));
    QVERIFY(m_view->loadFile(path("a.zph")));
    QCOMPARE(told.size(), 1);
    const QStringList sentences = told[0][0].toStringList();
    QCOMPARE(sentences.size(), 2);
    QVERIFY(sentences[0].contains("Exposure=1,5"));
    QVERIFY(sentences[1].contains("SkyLight=2"));
    QCOMPARE(document().document().parameters.BeobXA, 5.0);
    QVERIFY(m_view->save());
    QCOMPARE(section("a.zph"), QByteArray("[Extras]\nSkyLight=1\nExposure=1,5\n"));
    // Mended, there is nothing to tell, which is told.
    QVERIFY(writeBytes(path("a.zph"), "[Param]\n"));
    QVERIFY(m_view->loadFile(path("a.zph")));
    QCOMPARE(told.size(), 2);
    QCOMPARE(told[1][0].toStringList(), QStringList());
}

void TestDocumentExtras::failedLoadTellsNothing()
{
    const QSignalSpy told(m_view.get(), &SceneryMdiChild::extrasTold);
    QVERIFY(writeBytes(path("a.zph"), "Bogus=1\n\n[Extras]\nFog=1\n"));
    ModalAnswers answers;
    answers.pressButton(
        "Error",
        QString("Cannot open file \"%1\":\nNo such key: Bogus=1.").arg(path("a.zph")),
        QMessageBox::Ok);
    QVERIFY(!m_view->loadFile(path("a.zph")));
    QCOMPARE(answers.complaints(), QStringList());
    QCOMPARE(told.size(), 0);
}

void TestDocumentExtras::sceneryWithoutExtrasIsSavedAsEver()
{
    QVERIFY(m_view->saveFile(path("a.zph")));
    QFile file(path("a.zph"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().endsWith("Recorder=0\n"));
    QCOMPARE(section("a.zph"), QByteArray());
}

QTEST_MAIN(TestDocumentExtras)
#include "test_documentextras.moc"
