#include "tooldialogs/rectifydialog.h"

#include "tooldialogs/dialogtest.h"
#include "tools/rectify.h"

#include <QGuiApplication>
#include <QProgressBar>
#include <QSignalSpy>

namespace {

QString keyOf(const QLineEdit *field)
{
    return QStringLiteral("Rectify/") + field->objectName().mid(int(qstrlen("lineEdit")));
}

} // namespace

class TestRectifyDialog : public QObject, private DialogTest {
    Q_OBJECT

private slots:
    void init() { settings().clear(); }
    void fieldsTakeIntegersWithinTheirRange();
    void theSixteenFieldsAreRememberedAsTexts();
    void fieldsAreStoredEvenIfTheInputIsNoImage();
    void storedTextsThatAreNoNumbersCountAsZero();
    void theProgressBarTellsTheRowInHand();
    void emptyFieldsKeepTheImage();
    void theOutputMayBeTheInput();
    void anOutputThatCannotBeWrittenIsTold();

private:
    // All fields for coordinates.
    [[nodiscard]] static QList<QLineEdit *> fields(const QDialog &dialog)
    {
        QList<QLineEdit *> found;
        for (const char *prime : {"", "_"})
            for (int i = 1; i <= 4; ++i)
                for (const char *axis : {"X", "Y"})
                    found << dialog.findChild<QLineEdit *>(
                        QStringLiteral("lineEdit%1%2%3")
                            .arg(QLatin1String(axis))
                            .arg(i)
                            .arg(QLatin1String(prime)));
        return found;
    }
};

void TestRectifyDialog::fieldsTakeIntegersWithinTheirRange()
{
    RectifyDialog dialog;
    dialog.show();
    for (QLineEdit *field : fields(dialog)) {
        QVERIFY(field);
        QCOMPARE(field->text(), QString());
        field->setFocus();
        QTest::keyClicks(field, "-1x2.3");
        QCOMPARE(field->text(), QStringLiteral("-123"));
        field->setText("100000");
        QVERIFY(field->hasAcceptableInput());
        field->setText("100001");
        QVERIFY(!field->hasAcceptableInput());
        field->setText("-10001");
        QVERIFY(!field->hasAcceptableInput());
    }
}

void TestRectifyDialog::theSixteenFieldsAreRememberedAsTexts()
{
    {
        RectifyDialog dialog;
        dialog.show();
        chooseInput(dialog, file("in.png", images::noise(6, 5)));
        chooseOutput(dialog, path("out.png"));
        int n = -3;
        for (QLineEdit *field : fields(dialog))
            QTest::keyClicks(field, QString::number(n++));
        QVERIFY(!settings().contains("Rectify/X1"));
        click(dialog, "pushButtonOK");
        VERIFY_ANSWERS();
    }
    int n = -3;
    RectifyDialog next;
    for (const QLineEdit *field : fields(next)) {
        QCOMPARE(field->text(), QString::number(n));
        QCOMPARE(settings().value(keyOf(field)).toString(), QString::number(n++));
    }
    QCOMPARE(Ax, -3.0);
    QCOMPARE(Dy, 4.0);
    QCOMPARE(Ax_, 5.0);
    QCOMPARE(Dy_, 12.0);
}

void TestRectifyDialog::fieldsAreStoredEvenIfTheInputIsNoImage()
{
    RectifyDialog dialog;
    dialog.show();
    const QString bad = junk("bad.png");
    chooseInput(dialog, bad);
    chooseOutput(dialog, path("none.png"));
    find<QLineEdit>(dialog, "lineEditY3_")->setText("77");
    expectError(couldNotOpen(bad));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
    QCOMPARE(settings().value("Rectify/Y3_").toString(), QStringLiteral("77"));
    QVERIFY(!QFile::exists(path("none.png")));
}

void TestRectifyDialog::storedTextsThatAreNoNumbersCountAsZero()
{
    settings().setValue("Rectify/X1", "5.5");
    settings().setValue("Rectify/Y1", "x");
    settings().setValue("Rectify/X2", "99999999999");
    settings().setValue("Rectify/Y2", "+52");
    settings().setValue("Rectify/X1_", "2147483647");
    RectifyDialog dialog;
    dialog.show();
    QCOMPARE(text(dialog, "lineEditX1"), QStringLiteral("5.5"));
    chooseInput(dialog, file("in.png", images::noise(6, 5)));
    chooseOutput(dialog, path("out.png"));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(Ax, 0.0);
    QCOMPARE(Ay, 0.0);
    QCOMPARE(Bx, 0.0);
    QCOMPARE(By, 52.0);
    QCOMPARE(Ax_, 2147483647.0);
}

void TestRectifyDialog::theProgressBarTellsTheRowInHand()
{
    RectifyDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", images::noise(6, 5)));
    chooseOutput(dialog, path("out.png"));
    auto *bar = find<QProgressBar>(dialog, "progressBar");
    QSignalSpy told(bar, &QProgressBar::valueChanged);
    QList<Qt::CursorShape> cursors;
    connect(bar, &QProgressBar::valueChanged, &dialog, [&cursors] {
        const QCursor *const shown = QGuiApplication::overrideCursor();
        cursors << (shown ? shown->shape() : Qt::ArrowCursor);
    });
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 5);
    QCOMPARE(bar->value(), 4);
    QCOMPARE(told.last().first().toInt(), 4);
    QCOMPARE(cursors.count(Qt::WaitCursor), cursors.size());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestRectifyDialog::emptyFieldsKeepTheImage()
{
    RectifyDialog dialog;
    dialog.show();
    const QImage image = images::noise(6, 5);
    chooseInput(dialog, file("in.png", image));
    chooseOutput(dialog, path("same.png"));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    const QImage out(path("same.png"));
    QCOMPARE(out.size(), image.size());
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 6; ++x)
            QCOMPARE(out.pixel(x, y), image.pixel(std::min(x, 4), std::min(y, 3)));
}

void TestRectifyDialog::theOutputMayBeTheInput()
{
    RectifyDialog dialog;
    dialog.show();
    const QString both = file("both.png", images::plain(3, 3, qRgb(7, 8, 9)));
    chooseInput(dialog, both);
    chooseOutput(dialog, path("other.png"));
    find<QLineEdit>(dialog, "lineEditToFile")->setText(both);
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(QImage(both).pixel(2, 2), qRgb(7, 8, 9));
}

void TestRectifyDialog::anOutputThatCannotBeWrittenIsTold()
{
    RectifyDialog dialog;
    dialog.show();
    chooseInput(dialog, file("in.png", images::noise(2, 2)));
    chooseOutput(dialog, path("x.png"));
    const QString nowhere = path("absent/x.png");
    find<QLineEdit>(dialog, "lineEditToFile")->setText(nowhere);
    expectError(couldNotSave(nowhere));
    click(dialog, "pushButtonOK");
    VERIFY_ANSWERS();
    QVERIFY(dialog.isVisible());
}

QTEST_MAIN(TestRectifyDialog)
#include "test_rectifydialog.moc"
