#include "views/fieldhelp.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

class TestFieldHelp : public QObject {
    Q_OBJECT

private slots:
    void firstSentenceIsPlainText_data();
    void firstSentenceIsPlainText();
    void fieldsAreWhatTakesOrShowsAValue();
    void namesComeFromCaptions();
    void toldTextsStay();
    void tipsComeFromTheHelp();
};

void TestFieldHelp::firstSentenceIsPlainText_data()
{
    QTest::addColumn<QString>("help");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("one") << "Enter a number."
                         << "Enter a number.";
    QTest::newRow("two") << "The x position. Origin is the corner."
                         << "The x position.";
    QTest::newRow("paragraph") << "Press this button\n\nValid: Any."
                               << "Press this button";
    QTest::newRow("abbreviation") << "Specify settings, e. g. the place. Then go on."
                                  << "Specify settings, e. g. the place.";
    QTest::newRow("number") << "Between -10.0 and +10.0. Not more."
                            << "Between -10.0 and +10.0.";
    QTest::newRow("file") << "Writes image.png and more. Always."
                          << "Writes image.png and more.";
    QTest::newRow("markup") << "<p>Shows <b>all</b> &amp; more.</p><p>Line by line.</p>"
                            << "Shows all & more.";
    QTest::newRow("no markup") << "Smaller than 5 (a < b). Else not."
                               << "Smaller than 5 (a < b).";
    QTest::newRow("question") << "Really? Yes."
                              << "Really?";
}

void TestFieldHelp::firstSentenceIsPlainText()
{
    QFETCH(QString, help);
    QTEST(firstSentence(help), "sentence");
}

void TestFieldHelp::fieldsAreWhatTakesOrShowsAValue()
{
    QWidget window;
    auto *const layout = new QVBoxLayout(&window);
    auto *const area = new QScrollArea;
    auto *const inside = new QSpinBox;
    area->setWidget(inside);
    auto *const list = new QListWidget;
    layout->addWidget(area);
    layout->addWidget(list);
    layout->addWidget(new QLabel("no field"));
    auto *const shown = new QLineEdit;
    shown->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(shown);
    auto *const bar = new QScrollBar;
    layout->addWidget(bar);
    auto *const other = new QDialog(&window);
    new QPushButton(other);
    QCOMPARE(fieldsOf(&window), QList<QWidget *>({inside, list, shown, bar}));
}

void TestFieldHelp::namesComeFromCaptions()
{
    QDialog window;
    QLabel label("<u>V</u>oid Value:", &window);
    QLineEdit edit(&window);
    label.setBuddy(&edit);
    QLabel mark("Lines && &to skip:", &window);
    QSpinBox box(&window);
    mark.setBuddy(&box);
    QCheckBox check("&Keep it", &window);
    completeHelp(&window);
    QCOMPARE(edit.accessibleName(), "Void Value");
    QCOMPARE(box.accessibleName(), "Lines & to skip");
    QCOMPARE(check.accessibleName(), "Keep it");
    QVERIFY(window.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

void TestFieldHelp::toldTextsStay()
{
    QDialog window;
    QCheckBox check("&Keep it", &window);
    check.setAccessibleName("Keep the value");
    check.setToolTip("Keeps the value. ");
    check.setWhatsThis("Something else.");
    completeHelp(&window);
    QCOMPARE(check.accessibleName(), "Keep the value");
    QCOMPARE(check.toolTip(), "Keeps the value. ");
    QCOMPARE(check.whatsThis(), "Something else.");
}

void TestFieldHelp::tipsComeFromTheHelp()
{
    QDialog window;
    QLabel label("Number:", &window);
    QSpinBox box(&window);
    label.setBuddy(&box);
    box.setWhatsThis("Enter the number. Valid: any.");
    completeHelp(&window);
    QCOMPARE(box.toolTip(), "Enter the number.");
    QCOMPARE(label.toolTip(), "Enter the number.");
    QCOMPARE(label.whatsThis(), box.whatsThis());
}

QTEST_MAIN(TestFieldHelp)
#include "test_fieldhelp.moc"
