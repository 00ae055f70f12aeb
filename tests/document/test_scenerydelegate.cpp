// The document: its file, its lists and its messages.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "scene/scenerydata.h"
#include "support/modalanswer.h"
#include "ui_scenerymdichildform.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString listLines(int controlPoints, int waypoints)
{
    QString text;
    const auto index = [](int i) {
        return QStringLiteral("%1").arg(i, 2, 10, QLatin1Char('0'));
    };
    for (int i = 0; i < waypoints; ++i)
        text += QStringLiteral("Punkt%1=%2,1\n").arg(index(i)).arg(i);
    for (int i = 0; i < controlPoints; ++i)
        text += QStringLiteral("cPunkt%1=%2,1,1\n").arg(index(i)).arg(i);
    return text;
}

} // namespace

class TestSceneryDelegate : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void emptyLineEndsTheReading();
    void badLineDoesNotStopTheReading();
    void missingFileLeavesEverything();
    void directoryIsRefused();
    void listsAreNormalised_data();
    void listsAreNormalised();
    void fileWithoutPngHasNone();
    void revertKeepsWhatTheFileLeavesOut();
    void obsoleteFormatIsTold();
    void dustWithoutLogarithmIsReplaced();
    void savingWritesWhatTheFormShows();
    void failedSaveLeavesTheFileAndTheMark();
    void unusualNumbersStayInTheForm();
    void randomBytesLoadOrFailCleanly();
    void inputsAreFoundBesideTheScenery();

private:
    [[nodiscard]] QString path(const char *name) const { return m_dir->filePath(name); }
    void write(const char *name, const QByteArray &text) const;
    [[nodiscard]] QStringList savedLines(const char *key);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<SceneryMdiChild> m_view;
    SceneryDelegate *m_delegate = nullptr;
};

void TestSceneryDelegate::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_view =
        std::make_unique<SceneryMdiChild>(nullptr, nullptr, nullptr, nullptr, nullptr);
    m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    m_delegate = &m_view->delegate();
}

void TestSceneryDelegate::cleanup()
{
    m_view.reset();
    m_dir.reset();
}

void TestSceneryDelegate::write(const char *name, const QByteArray &text) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

QStringList TestSceneryDelegate::savedLines(const char *key)
{
    if (!m_delegate->save(path("saved.zph")))
        return {"not saved"};
    QFile file(path("saved.zph"));
    if (!file.open(QIODevice::ReadOnly))
        return {"not opened"};
    return QString::fromUtf8(file.readAll()).split('\n').filter(QRegularExpression(key));
}

void TestSceneryDelegate::emptyLineEndsTheReading()
{
    write("a.zph", "[Param]\nBeobXA=1\n\nBeobYA=2\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    QCOMPARE(m_delegate->sceneryData().BeobXA, 1.0);
    QCOMPARE(m_delegate->sceneryData().BeobYA, 0.0);
    QVERIFY(!m_delegate->isModified());
}

void TestSceneryDelegate::badLineDoesNotStopTheReading()
{
    write("a.zph", "BeobXA=1\nNonsense=5\r\n  \nBeobYA=2");
    QVERIFY(!m_delegate->open(path("a.zph")));
    QCOMPARE(m_delegate->errorString(), QString("No such key:   "));
    QCOMPARE(m_delegate->sceneryData().BeobXA, 1.0);
    QCOMPARE(m_view->form().doubleSpinBoxCameraFromY->value(), 2.0);
}

void TestSceneryDelegate::missingFileLeavesEverything()
{
    write("a.zph", "BeobXA=7\nAusgabePNG=1\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    QVERIFY(!m_delegate->open(path("none.zph")));
    QVERIFY(!m_delegate->errorString().isEmpty());
    QCOMPARE(m_delegate->sceneryData().BeobXA, 7.0);
    QVERIFY(m_delegate->sceneryData().AusgabePNG);
}

void TestSceneryDelegate::directoryIsRefused()
{
    QVERIFY(!m_delegate->open(m_dir->path()));
    QVERIFY(!m_delegate->save(m_dir->path()));
    QVERIFY(!m_delegate->errorString().isEmpty());
}

void TestSceneryDelegate::listsAreNormalised_data()
{
    QTest::addColumn<int>("controlPoints");
    QTest::addColumn<int>("waypoints");
    QTest::addColumn<int>("kept");
    QTest::newRow("3 control points") << 3 << 13 << 0;
    QTest::newRow("6 waypoints") << 4 << 6 << 0;
    QTest::newRow("7") << 4 << 7 << 7;
    QTest::newRow("12") << 4 << 12 << 7;
    QTest::newRow("13") << 4 << 13 << 13;
    QTest::newRow("20") << 5 << 20 << 13;
    QTest::newRow("48") << 5 << 48 << 25;
    QTest::newRow("96") << 5 << 96 << 49;
    QTest::newRow("192") << 5 << 192 << 97;
    QTest::newRow("200") << 5 << 200 << 193;
    QTest::newRow("500") << 5 << 500 << 193;
}
void TestSceneryDelegate::listsAreNormalised()
{
    QFETCH(int, controlPoints);
    QFETCH(int, waypoints);
    QFETCH(int, kept);
    write("a.zph", listLines(controlPoints, waypoints).toUtf8());
    QVERIFY(m_delegate->open(path("a.zph")));
    const QStringList lines = savedLines("^Punkt\\d+=");
    QCOMPARE(lines.size(), kept);
    if (kept > 0)
        QCOMPARE(
            lines.last(),
            QString("Punkt%1=%1,1").arg(kept - 1, 2, 10, QChar('0')).replace("=0", "="));
    QCOMPARE(savedLines("^cPunkt").size(), controlPoints);
}

void TestSceneryDelegate::fileWithoutPngHasNone()
{
    QVERIFY(m_delegate->sceneryData().AusgabePNG);
    write("a.zph", "BeobXA=1\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    QVERIFY(!m_view->form().checkBoxPNG->isChecked());
}

void TestSceneryDelegate::revertKeepsWhatTheFileLeavesOut()
{
    write("a.zph", "Traegheit=0.25\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    m_view->form().doubleSpinBoxSmoothness->setValue(0.75); // in the form alone
    QVERIFY(m_delegate->isModified());
    write("a.zph", "BeobXA=1\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    QCOMPARE(m_view->form().doubleSpinBoxSmoothness->value(), 0.25);
}

void TestSceneryDelegate::obsoleteFormatIsTold()
{
    write("a.zph", "AusgabeYUV=0\nAusgabeYUV=1\nAusgabePNG=0\n");
    ModalAnswers answers;
    answers.pressButton("Obsolete Output Image Format",
                        "The YUV output image format specified in this input file is no "
                        "longer accepted.\nThe YUV format specifier will be omitted when "
                        "this ZPH file is saved.",
                        QMessageBox::Ok);
    answers.pressButton("Obsolete Output Image Format",
                        "The YUV output image format selected in this input file is no "
                        "longer accepted.\nThe PNG format is selected instead.\nIf you "
                        "wish to select another format, please do so in the main dialog.",
                        QMessageBox::Ok);
    QVERIFY(m_delegate->open(path("a.zph")));
    QCOMPARE(answers.complaints(), QStringList());
    QVERIFY(m_delegate->sceneryData().AusgabePNG);
    QCOMPARE(savedLines("YUV"), QStringList());
}

void TestSceneryDelegate::dustWithoutLogarithmIsReplaced()
{
    write("a.zph", "NebelA=0\nNebelE=-5\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    QCOMPARE(m_view->form().doubleSpinBoxCameraFromDust->value(), -6.0);
    QCOMPARE(m_delegate->sceneryData().NebelA, 0.000001);
    QCOMPARE(savedLines("^Nebel"), QStringList({"NebelA=1e-06", "NebelE=1e-06"}));
}

void TestSceneryDelegate::savingWritesWhatTheFormShows()
{
    write("a.zph", "BeobXA=0.123\nRecorder=1\nVoraussicht=77.5\nHintergrund=0080ff\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    QCOMPARE(savedLines("^BeobXA"), QStringList("BeobXA=0.12"));
    QCOMPARE(savedLines("^Recorder"), QStringList("Recorder=1"));
    QCOMPARE(savedLines("^Voraussicht"), QStringList("Voraussicht=77.5"));
    QCOMPARE(savedLines("^Hintergrund="), QStringList("Hintergrund=0080ff"));
    QVERIFY(!m_delegate->isModified());
    QVERIFY(m_delegate->open(path("saved.zph")));
    QCOMPARE(m_delegate->sceneryData().Hintergrund, 0xFFFF8000u);
}

void TestSceneryDelegate::failedSaveLeavesTheFileAndTheMark()
{
    m_view->form().spinBoxSizeX->setValue(100);
    QVERIFY(m_delegate->isModified());
    QVERIFY(!m_delegate->save(path("none/a.zph")));
    QVERIFY(!m_delegate->errorString().isEmpty());
    QVERIFY(m_delegate->isModified());
    QVERIFY(!QFileInfo::exists(path("none")));
}

void TestSceneryDelegate::unusualNumbersStayInTheForm()
{
    write("a.zph", "BeobXA=nan\nBeobYA=inf\nBrennA=-1e400\nNebelA=nan\nNebelE=inf\n"
                   "AusBreite=-5\nAusHoehe=2147483647\nGenauRechnen=-3\n");
    QVERIFY(m_delegate->open(path("a.zph")));
    const Ui_SceneryMdiChildForm &form = m_view->form();
    QCOMPARE(form.doubleSpinBoxCameraFromX->value(), 0.0);
    QCOMPARE(form.doubleSpinBoxCameraFromY->value(), 1000000.0);
    QCOMPARE(form.doubleSpinBoxCameraFromFocalLength->value(), 0.01);
    QCOMPARE(form.doubleSpinBoxCameraFromDust->value(), -6.0);
    QCOMPARE(form.doubleSpinBoxCameraToDust->value(), 6.0);
    QCOMPARE(form.spinBoxSizeX->value(), 8);
    QCOMPARE(form.spinBoxSizeY->value(), 32768);
    QVERIFY(form.radioButtonLQ->isChecked());
}

void TestSceneryDelegate::randomBytesLoadOrFailCleanly()
{
    QByteArray bytes(200000, '\0');
    quint32 state = 12345;
    for (char &byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    write("a.zph", bytes);
    QVERIFY(!m_delegate->open(path("a.zph")));
    QVERIFY(m_delegate->errorString().startsWith("No such key: "));
    write("b.zph", "AusDateiname=" + QByteArray(1000000, 'x'));
    QVERIFY(m_delegate->open(path("b.zph")));
    write("c.zph", QByteArray("BeobXA=1\n").repeated(200000));
    QVERIFY(m_delegate->open(path("c.zph")));
}

void TestSceneryDelegate::inputsAreFoundBesideTheScenery()
{
    write("a.zph", "TDateiname=t.png\n");
    write("t.png", "x");
    QVERIFY(m_delegate->open(path("a.zph")));
    QCOMPARE(m_delegate->inputFile("t.png"), path("t.png"));
    QCOMPARE(m_delegate->inputFile("none.png"), QString("none.png"));
    QCOMPARE(m_delegate->inputFile(""), QString());
    QCOMPARE(savedLines("^TDateiname="), QStringList("TDateiname=t.png"));
}

QTEST_MAIN(TestSceneryDelegate)
#include "test_scenerydelegate.moc"
