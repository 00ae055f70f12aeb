// What the window tells after each importer and tool, beside what its command tells.

#include "app/mainwindow.h"
#include "base/appsettings.h"
#include "support/modalanswer.h"
#include "terrainbatch/terrainfixture.h"
#include "terrainbatch/toldruns.h"
#include "views/imagemdichild.h"
#include "views/noticelabel.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace {

// The facts of a command's report in the words and the order of the window.
QStringList factsOf(const QJsonObject &report)
{
    const auto number = [&report](const char *key) {
        return QString::number(qint64(report[key].toDouble()));
    };
    QStringList facts{"rows " + number("rows"), "columns " + number("columns")};
    if (report.contains("minimum"))
        facts << "minimum " + number("minimum") << "maximum " + number("maximum");
    if (report.contains("voids"))
        facts << "voids " + number("voids");
    if (report.contains("pointsRead"))
        facts << "points used " + number("pointsUsed") + " of " + number("pointsRead");
    if (report["cut"].toDouble() > 0)
        facts << "values cut " + number("cut");
    return facts;
}

bool isOneOf(const QString &action, const QStringList &some)
{
    return some.contains(action.mid(int(qstrlen("action_"))));
}

} // namespace

class TestToldReports : public QObject, private TerrainFixture {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        makeFiles();
        write("s.zph", "[Param]\n");
    }
    void init()
    {
        AppSettings().clear();
        QFile::remove(path("window.png"));
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void windowTellsWhatTheCommandTells_data() { ToldRun::addRows(); }
    void windowTellsWhatTheCommandTells()
    {
        const ToldRun told = ToldRun::fetched();
        m_window->open(path("s.zph"));
        runInWindow(told);
        QTRY_VERIFY(action("action_Report")->isEnabled());
        const TerrainRun run =
            terrain(told.arguments + QStringList{"--json", "command.png"});
        QVERIFY2(run.status == 0, qPrintable(run.err));
        const QJsonObject report = QJsonDocument::fromJson(run.out.toUtf8()).object();
        hasWhatAppliesTo(told.action, report);
        const QStringList facts = factsOf(report);
        QCOMPARE(notice(), "window.png: " + facts.join(", "));
        reportShows(facts);
        resultIsUsed(report.contains("minimum"));
        resultIsOpened();
    }

private:
    void runInWindow(const ToldRun &told)
    {
        ModalAnswers answers;
        QStringList complaints;
        answers.withDialog([&](QDialog *dialog) {
            ModalAnswers within(dialog);
            told.announce(within, path({}), "window.png");
            told.drive(*dialog);
            complaints = within.complaints();
        });
        action(told.action)->trigger();
        QCOMPARE(answers.complaints() + complaints, QStringList());
    }

    // Of each what is known of its kind, none of it by chance.
    static void hasWhatAppliesTo(const QString &action, const QJsonObject &report)
    {
        const bool ofPoints =
            isOneOf(action, {"AsciiRegularDialog", "AsciiIrregularDialog"});
        const bool ofSamples =
            isOneOf(action, {"UsgsDEMConversionDialog", "BinConversionDialog",
                             "JapanConversionDialog", "SdtsConversionDialog"});
        const bool ofHeights =
            ofPoints || ofSamples ||
            isOneOf(action, {"ResampleDialog", "GrayToElevationDialog"});
        const bool isCut =
            ofPoints || ofSamples ||
            isOneOf(action, {"ResampleDialog", "MergeDialog", "ConvolutionDialog",
                             "ElevationToColorDialog", "ElevationToGrayDialog"});
        QCOMPARE(report.contains("voids"), ofSamples);
        QCOMPARE(report.contains("pointsRead"), ofPoints);
        QCOMPARE(report.contains("pointsUsed"), ofPoints);
        QCOMPARE(report.contains("cut"), isCut);
        if (ofHeights)
            QVERIFY(report.contains("minimum") && report.contains("maximum"));
    }

    void withReport(const std::function<void(const QDialog &)> &act)
    {
        ModalAnswers answers;
        answers.withDialog([&act](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QString("reportDialog"));
            act(*dialog);
            dialog->reject();
        });
        action("action_Report")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
    }

    void reportShows(const QStringList &facts)
    {
        withReport([&facts](const QDialog &dialog) {
            const QString shown =
                dialog.findChild<QPlainTextEdit *>("plainTextEditFacts")->toPlainText();
            QCOMPARE(shown.toLower().remove(':').split('\n').mid(1), facts);
            const QPixmap thumbnail =
                dialog.findChild<QLabel *>("labelThumbnail")->pixmap();
            QVERIFY(!thumbnail.isNull());
        });
    }

    void resultIsUsed(bool asHeights)
    {
        withReport([](const QDialog &dialog) {
            dialog.findChild<QPushButton *>("pushButtonUseInScenery")->click();
        });
        const auto field = [this](const QString &name) {
            return m_window->findChild<QLineEdit *>(name)->text();
        };
        QCOMPARE(field("lineEditElevationFile"), asHeights ? path("window.png") : "");
        QCOMPARE(field("lineEditTextureFile"), asHeights ? "" : path("window.png"));
    }

    void resultIsOpened()
    {
        withReport([](const QDialog &dialog) {
            dialog.findChild<QPushButton *>("pushButtonOpenResult")->click();
        });
        const auto *const view = m_window->findChild<ImageMdiChild *>();
        QVERIFY(view);
        QCOMPARE(view->currentFile(), QFileInfo(path("window.png")).canonicalFilePath());
    }

    [[nodiscard]] QString notice() const
    {
        return m_window->findChild<NoticeLabel *>()->notice();
    }
    [[nodiscard]] QAction *action(const QString &name) const
    {
        return m_window->findChild<QAction *>(name);
    }

    std::unique_ptr<MainWindow> m_window;
};

QTEST_MAIN(TestToldReports)
#include "test_toldreports.moc"
