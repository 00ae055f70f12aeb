#include "tooldialogs/resampledialog.h"

#include "base/notices.h"
#include "support/factsof.h"
#include "tooldialogs/dialogtest.h"

#include <QDoubleSpinBox>
#include <QSignalSpy>
#include <QSpinBox>

class TestResampleDialog : public QObject, private DialogTest {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_dialog.reset(); }
    void fieldsComeAliveWithTheInput();
    void pixelsFollowPercent();
    void percentFollowsPixels();
    void decoupledAxesGoTheirOwnWays();
    void everyFieldTellsOnceForEachStep();
    void theButtonShowsHowTheAxesAre();
    void anotherInputStartsAfresh();
    void aFileThatIsNoImageIsNotTaken();
    void theOutputHasTheSizeAsked();
    void elevationsBeyondWhatAPixelHoldsAreReported();
    void aSizeOfZeroIsRefused();
    void aSizeBeyondTheBudgetIsRefused();
    void anInputThatVanishedIsTold();

private:
    [[nodiscard]] QDoubleSpinBox *percent(char axis) const
    {
        return m_dialog->findChild<QDoubleSpinBox *>(
            QStringLiteral("doubleSpinBoxPercent") + QLatin1Char(axis));
    }
    [[nodiscard]] QSpinBox *pixels(char axis) const
    {
        return m_dialog->findChild<QSpinBox *>(QStringLiteral("spinBoxPixel") +
                                               QLatin1Char(axis));
    }
    void chooseSource(int width, int height)
    {
        chooseInput(*m_dialog, file(QStringLiteral("source%1.png").arg(width),
                                    images::noise(width, height)));
    }
    [[nodiscard]] QList<double> sizes() const
    {
        return {percent('X')->value(), double(pixels('X')->value()),
                percent('Y')->value(), double(pixels('Y')->value())};
    }

    std::unique_ptr<ResampleDialog> m_dialog;
};

void TestResampleDialog::init()
{
    settings().clear();
    m_dialog = std::make_unique<ResampleDialog>();
    m_dialog->show();
}

void TestResampleDialog::fieldsComeAliveWithTheInput()
{
    for (const char *name :
         {"doubleSpinBoxPercentX", "doubleSpinBoxPercentY", "spinBoxPixelX",
          "spinBoxPixelY", "pushButtonConnected", "doubleSpinBoxZScale"})
        QVERIFY(!find<QWidget>(*m_dialog, name)->isEnabled());
    chooseSource(201, 149);
    for (const char *name :
         {"doubleSpinBoxPercentX", "doubleSpinBoxPercentY", "spinBoxPixelX",
          "spinBoxPixelY", "pushButtonConnected", "doubleSpinBoxZScale"})
        QVERIFY(find<QWidget>(*m_dialog, name)->isEnabled());
    QCOMPARE(sizes(), (QList<double>{100, 201, 100, 149}));
    QVERIFY(!okEnabled(*m_dialog));
    VERIFY_ANSWERS();
}

void TestResampleDialog::pixelsFollowPercent()
{
    chooseSource(201, 149);
    percent('X')->setValue(33.33);
    QCOMPARE(sizes(), (QList<double>{33.33, 67, 33.33, 50})); // 66.99 and 49.66
    percent('Y')->setValue(250);
    QCOMPARE(sizes(), (QList<double>{250, 503, 250, 373})); // 502.5 and 372.5
    percent('X')->setValue(0);
    QCOMPARE(sizes(), (QList<double>{0, 0, 0, 0}));
    VERIFY_ANSWERS();
}

void TestResampleDialog::percentFollowsPixels()
{
    chooseSource(200, 150);
    pixels('X')->setValue(50);
    QCOMPARE(sizes(), (QList<double>{25, 50, 25, 38})); // 37.5
    pixels('Y')->setValue(50);
    QCOMPARE(sizes(), (QList<double>{33.33, 67, 33.33, 50})); // 66.67
    // Beyond what the percent fields hold the pixels stay as typed.
    pixels('X')->setValue(1000);
    QCOMPARE(sizes(), (QList<double>{400, 1000, 400, 750}));
    VERIFY_ANSWERS();
}

void TestResampleDialog::decoupledAxesGoTheirOwnWays()
{
    chooseSource(200, 150);
    click(*m_dialog, "pushButtonConnected");
    percent('X')->setValue(50);
    percent('Y')->setValue(200);
    QCOMPARE(sizes(), (QList<double>{50, 100, 200, 300}));
    pixels('X')->setValue(20);
    pixels('Y')->setValue(15);
    QCOMPARE(sizes(), (QList<double>{10, 20, 10, 15}));
    click(*m_dialog, "pushButtonConnected");
    percent('Y')->setValue(40);
    QCOMPARE(sizes(), (QList<double>{40, 80, 40, 60}));
    VERIFY_ANSWERS();
}

void TestResampleDialog::everyFieldTellsOnceForEachStep()
{
    chooseSource(201, 149);
    const QSignalSpy changed(pixels('X'), &QSpinBox::valueChanged);
    pixels('X')->setFocus();
    QTest::keyClick(pixels('X'), Qt::Key_Up);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(pixels('X')->value(), 202);
    QCOMPARE(percent('Y')->value(), 100.5); // 100.4975
}

void TestResampleDialog::theButtonShowsHowTheAxesAre()
{
    chooseSource(20, 20);
    auto *button = find<QPushButton>(*m_dialog, "pushButtonConnected");
    const auto shown = [button] {
        return button->icon().pixmap(button->iconSize()).toImage();
    };
    const QImage connected = shown();
    QVERIFY(!connected.isNull());
    click(*m_dialog, "pushButtonConnected");
    QVERIFY(shown() != connected);
    click(*m_dialog, "pushButtonConnected");
    QCOMPARE(shown(), connected);
}

void TestResampleDialog::anotherInputStartsAfresh()
{
    chooseSource(200, 150);
    percent('X')->setValue(50);
    chooseSource(100, 75); // as many pixels as the fields show already
    QCOMPARE(sizes(), (QList<double>{100, 100, 100, 75}));
    VERIFY_ANSWERS();
}

void TestResampleDialog::aFileThatIsNoImageIsNotTaken()
{
    const QString bad = junk("bad.png");
    answers.chooseFile("Open File", bad);
    expectError(QStringLiteral("Could not load image file \"%1\".").arg(bad));
    click(*m_dialog, "pushButtonBrowseFromFile");
    QCOMPARE(text(*m_dialog, "lineEditFromFile"), QString());
    QVERIFY(!pixels('X')->isEnabled());
    VERIFY_ANSWERS();
}

void TestResampleDialog::theOutputHasTheSizeAsked()
{
    chooseSource(8, 6);
    chooseOutput(*m_dialog, path("out.png"));
    click(*m_dialog, "pushButtonConnected");
    pixels('X')->setValue(4);
    pixels('Y')->setValue(12);
    find<QDoubleSpinBox>(*m_dialog, "doubleSpinBoxZScale")->setValue(0.0);
    click(*m_dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!m_dialog->isVisible());
    const QImage out(path("out.png"));
    QCOMPARE(out.size(), QSize(4, 12));
    QCOMPARE(out.pixel(1, 5), QRgb(0xFF000000));
}

void TestResampleDialog::elevationsBeyondWhatAPixelHoldsAreReported()
{
    QImage steep(4, 3, QImage::Format_RGB32);
    steep.fill(QColor(0x40, 0, 0)); // 4194304
    chooseInput(*m_dialog, file("steep.png", steep));
    chooseOutput(*m_dialog, path("out.png"));
    find<QDoubleSpinBox>(*m_dialog, "doubleSpinBoxZScale")->setValue(3.0);
    click(*m_dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    // The last column and the bottom row count as 0.
    QCOMPARE(factsOf(m_dialog->outcome()), QString("Values cut 6"));
}

void TestResampleDialog::aSizeOfZeroIsRefused()
{
    chooseSource(8, 6);
    chooseOutput(*m_dialog, path("zero.png"));
    pixels('X')->setValue(0);
    expectError("Could not create output file.");
    click(*m_dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(m_dialog->isVisible());
    QVERIFY(!QFile::exists(path("zero.png")));
    // The failed run can be tried again.
    pixels('X')->setValue(8);
    click(*m_dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(QFile::exists(path("zero.png")));
}

void TestResampleDialog::aSizeBeyondTheBudgetIsRefused()
{
    QString told;
    setNoticeSink([&told](const QString &text, NoticeStay) { told = text; });
    chooseSource(8, 6);
    chooseOutput(*m_dialog, path("large.png"));
    pixels('X')->setValue(2000);
    qputenv("ZEPHRANT_MEMORY_BUDGET", "1000000");
    expectError("Could not create output file.");
    click(*m_dialog, "pushButtonOK");
    qunsetenv("ZEPHRANT_MEMORY_BUDGET");
    setNoticeSink({});
    VERIFY_ANSWERS();
    QCOMPARE(told,
             QString("Resampling to 2000 x 1500 pixels would take 9.0 MB of memory; "
                     "the budget is 1.0 MB."));
    QVERIFY(!QFile::exists(path("large.png")));
}

void TestResampleDialog::anInputThatVanishedIsTold()
{
    chooseSource(8, 6);
    chooseOutput(*m_dialog, path("gone-out.png"));
    QVERIFY(QFile::remove(path("source8.png")));
    expectError(
        QStringLiteral("Could not load image file \"%1\".").arg(path("source8.png")));
    click(*m_dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(m_dialog->isVisible());
    QVERIFY(!QFile::exists(path("gone-out.png")));
}

int main(int argc, char **argv)
{
    Q_INIT_RESOURCE(Zephrant); // the button's icons
    QTEST_SET_MAIN_SOURCE_PATH
    const QApplication app(argc, argv);
    TestResampleDialog test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_resampledialog.moc"
