// Curved flights of a document: its runs and what its editors do to it.

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "patheditors/setflightpathdialog.h"
#include "raster/elevationimage.h"
#include "views/usernotices.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

class KeptNotices : public UserNotices {
public:
    void information(QWidget *, const QString &, const QString &) override {}
    void critical(QWidget *, const QString &title, const QString &text) override
    {
        said << title << text;
    }
    QStringList said;
};

QByteArray flight(int controlPoints, int waypoints, const QByteArray &frames)
{
    QByteArray text = "[Param]\nRundflug=1\nAusBreite=32\nAusHoehe=24\nAusAuflX=8\n"
                      "AusAuflY=8\nTDateiname=texture.png\nHDateiname=elevation.png\n"
                      "AusgabePNG=1\nBrennA=30\nBrennE=30\n" +
                      frames;
    for (int i = 0; i < waypoints; ++i)
        text += "Punkt0" + QByteArray::number(i) + "_p=-0.5\n";
    for (int i = 0; i < controlPoints; ++i)
        text += "cPunkt0" + QByteArray::number(i) + "=" + QByteArray::number(10 * i) +
                ",20,100\n";
    return text;
}

} // namespace

static void initResources() { Q_INIT_RESOURCE(Zephrant); }

class TestCurvedScenery : public QObject {
    Q_OBJECT

private slots:
    void init();
    void limitsAreToldAndEndTheRun_data();
    void limitsAreToldAndEndTheRun();
    void framesPastTheLastSampleAreRendered();
    void endBelowStartRendersNothing();
    void stoppedFrameIsNotSaved();
    void okCommitsThePath();
    void cancelLeavesThePath();
    void closingTheDocumentEndsItsEditors();

private:
    void load(const QByteArray &text);
    [[nodiscard]] QStringList frames() const;
    [[nodiscard]] static SetFlightPathDialog *editor();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SceneryMdiChild> m_view;
    SceneryDelegate *m_delegate = nullptr;
    KeptNotices m_notices;
};

void TestCurvedScenery::init()
{
    initResources();
    m_view.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    QImage texture(64, 48, QImage::Format_RGB32);
    texture.fill(Qt::darkGreen);
    QVERIFY(texture.save(m_folder->filePath("texture.png")));
    ElevationImage elevation(64, 48, QImage::Format_RGB32);
    elevation.fill(QColor(0, 0, 9));
    QVERIFY(elevation.save(m_folder->filePath("elevation.png")));
}

void TestCurvedScenery::load(const QByteArray &text)
{
    const QString name = m_folder->filePath("flight.zph");
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text + "AusDateiname=" + m_folder->filePath("frame%d").toUtf8() + "\n");
    file.close();
    m_notices.said.clear();
    m_view =
        std::make_unique<SceneryMdiChild>(nullptr, nullptr, nullptr, nullptr, nullptr);
    m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    m_delegate = &m_view->delegate();
    m_delegate->setNotices(&m_notices);
    QVERIFY(m_view->loadFile(name));
}

QStringList TestCurvedScenery::frames() const
{
    return QDir(m_folder->path()).entryList({"frame*"}, QDir::Files, QDir::Name);
}

SetFlightPathDialog *TestCurvedScenery::editor()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *found = qobject_cast<SetFlightPathDialog *>(window))
            return found;
    return nullptr;
}

void TestCurvedScenery::limitsAreToldAndEndTheRun_data()
{
    QTest::addColumn<int>("controlPoints");
    QTest::addColumn<int>("waypoints");
    QTest::addColumn<QByteArray>("frames");
    QTest::addColumn<QString>("text");
    QTest::newRow("three control points")
        << 3 << 7 << QByteArray("Bildanzahl=9\n")
        << "The number of control points is 3; it has to be greater than 3.\n";
    QTest::newRow("no waypoints")
        << 4 << 0 << QByteArray("Bildanzahl=9\n")
        << "The number of waypoints is 0; it has to be greater than 6.\n";
    QTest::newRow("one frame")
        << 4 << 7 << QByteArray("Bildanzahl=1\n")
        << "The total number of frames is 1, has to be greater than 1.\n";
}

void TestCurvedScenery::limitsAreToldAndEndTheRun()
{
    QFETCH(int, controlPoints);
    QFETCH(int, waypoints);
    QFETCH(QByteArray, frames);
    QFETCH(QString, text);
    load(flight(controlPoints, waypoints, frames));
    QVERIFY(!m_delegate->renderFinal(nullptr));
    QCOMPARE(m_notices.said, QStringList({"SceneryDelegate::CurvedFlight()", text}));
    QVERIFY(m_delegate->toldFailure());
    QCOMPARE(m_delegate->errorString(), text);
    QVERIFY(this->frames().isEmpty());
}

void TestCurvedScenery::framesPastTheLastSampleAreRendered()
{
    load(flight(4, 7, "Bildanzahl=2\nStartbildNr=1\nEndbildNr=5\n"));
    QVERIFY(m_delegate->renderFinal(nullptr));
    QCOMPARE(frames().size(), 5);
    const QImage last(m_folder->filePath("frame2.png"));
    QVERIFY(!last.isNull());
    QCOMPARE(QImage(m_folder->filePath("frame5.png")), last);
}

void TestCurvedScenery::endBelowStartRendersNothing()
{
    load(flight(4, 7, "Bildanzahl=9\nStartbildNr=5\nEndbildNr=4\n"));
    QVERIFY(m_delegate->renderFinal(nullptr));
    QVERIFY(frames().isEmpty());
}

void TestCurvedScenery::stoppedFrameIsNotSaved()
{
    load(flight(4, 7, "Bildanzahl=9\nEndbildNr=8\n"));
    connect(m_delegate, &SceneryDelegate::frameStarted, this, [this](int frame) {
        if (frame == 2)
            m_delegate->stopRendering();
    });
    QVERIFY(m_delegate->renderFinal(nullptr));
    QCOMPARE(frames(), QStringList({"frame0.png", "frame1.png"}));
}

void TestCurvedScenery::okCommitsThePath()
{
    load(flight(4, 7, "Bildanzahl=9\n"));
    QVERIFY(!m_delegate->isModified());
    m_delegate->setFlightPath();
    QVERIFY(editor() && editor()->isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(editor()));
    QTest::mouseClick(editor()->findChild<QPushButton *>("pushButtonOK"), Qt::LeftButton);
    QVERIFY(m_delegate->isModified());
    QVERIFY(m_delegate->save());
    QFile file(m_folder->filePath("flight.zph"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    // Half way along four points 10 apart.
    QVERIFY2(text.contains("Punkt03=15,20\nPunkt03_z=100\nPunkt03_i=15\n"), text);
}

void TestCurvedScenery::cancelLeavesThePath()
{
    load(flight(4, 7, "Bildanzahl=9\n"));
    m_delegate->setFlightPath();
    QVERIFY(QTest::qWaitForWindowExposed(editor()));
    QTest::mouseClick(editor()->findChild<QPushButton *>("pushButtonCancel"),
                      Qt::LeftButton);
    QVERIFY(!m_delegate->isModified());
    QVERIFY(m_delegate->save());
    QFile file(m_folder->filePath("flight.zph"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("Punkt03=0,0\n"));
}

void TestCurvedScenery::closingTheDocumentEndsItsEditors()
{
    load(flight(4, 7, "Bildanzahl=9\n"));
    m_delegate->setFlightPath();
    m_delegate->setFlightPath();
    QVERIFY(editor());
    m_view.reset();
    QVERIFY(!editor());
}

QTEST_MAIN(TestCurvedScenery)
#include "test_curvedscenery.moc"
