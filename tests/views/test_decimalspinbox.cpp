#include "views/decimalspinbox.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>

#include <memory>

/// The field of a decimal number, typed and pasted into in several locales.
class TestDecimalSpinBox : public QObject {
    Q_OBJECT

private slots:
    void pointAndCommaAreTheDecimalSign_data();
    void pointAndCommaAreTheDecimalSign();
    void whatIsNoPlainNumberIsRefused_data();
    void whatIsNoPlainNumberIsRefused();
    void refusedKeysLeaveTheRest_data();
    void refusedKeysLeaveTheRest();
    void fieldsShowTheSignOfTheLocaleAndNoGroups_data();
    void fieldsShowTheSignOfTheLocaleAndNoGroups();
    void aSignTypedInFrontOfTheSignStepsOverIt();
    void blanksAroundAPastedNumberAreTakenOff();
    void rangeAndDecimalsHoldAsEver();
    void unitsAroundTheNumberStay();
    void textsThatAProgramSetsAreReadTheSameWay();

private:
    void make(const QString &locale);
    void type(const QString &text);
    void paste(const QString &text);

    std::unique_ptr<DecimalSpinBox> m_box;
};

namespace {

const QStringList Locales{"de_DE", "fr_FR", "en_US", "de_CH", "C", "ar_EG"};

struct Number {
    const char *text;
    double value;
};

constexpr Number Numbers[]{
    {"0.75", 0.75},   {"0,75", 0.75},   {"305.25", 305.25},   {"305,25", 305.25},
    {"1,234", 1.234}, {"1.234", 1.234}, {"-12.5", -12.5},     {".5", 0.5},
    {",5", 0.5},      {"5,", 5.0},      {"123456", 123456.0},
};

} // namespace

void TestDecimalSpinBox::make(const QString &locale)
{
    m_box = std::make_unique<DecimalSpinBox>();
    m_box->setLocale(QLocale(locale));
    m_box->setRange(-1000000.0, 1000000.0);
    m_box->setDecimals(6);
    m_box->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_box.get()));
    m_box->setFocus();
    m_box->selectAll();
}

void TestDecimalSpinBox::type(const QString &text)
{
    m_box->selectAll();
    QTest::keyClicks(m_box.get(), text);
}

void TestDecimalSpinBox::paste(const QString &text)
{
    m_box->selectAll();
    QApplication::clipboard()->setText(text);
    QTest::keyClick(m_box.get(), Qt::Key_V, Qt::ControlModifier);
}

void TestDecimalSpinBox::pointAndCommaAreTheDecimalSign_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    for (const QString &locale : Locales)
        for (const auto &[text, value] : Numbers)
            QTest::addRow("%s %s", qPrintable(locale), text)
                << locale << QString(text) << value;
}

void TestDecimalSpinBox::pointAndCommaAreTheDecimalSign()
{
    QFETCH(QString, locale);
    QFETCH(QString, text);
    make(locale);
    type(text);
    QTEST(m_box->value(), "value");
    m_box->setValue(99.0);
    paste(text);
    QTEST(m_box->value(), "value");
    // The value stays when the field is left.
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QTEST(m_box->value(), "value");
}

void TestDecimalSpinBox::whatIsNoPlainNumberIsRefused_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    for (const QString &locale : Locales)
        for (const QString text :
             {"1.234.567", "1,234,567", "1.234,5", "1,234.5", "1 234", "1 234,5", "1'234",
              "1\u2019234", "1\u00a0234", "1\u202f234", "1\u066c234", "1..5", "0,,75"})
            QTest::addRow("%s %s", qPrintable(locale), qPrintable(text))
                << locale << text;
}

void TestDecimalSpinBox::whatIsNoPlainNumberIsRefused()
{
    QFETCH(QString, locale);
    QFETCH(QString, text);
    make(locale);
    m_box->setValue(12.5);
    const QString before = m_box->text();
    paste(text);
    QCOMPARE(m_box->text(), before);
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QCOMPARE(m_box->value(), 12.5);
}

void TestDecimalSpinBox::refusedKeysLeaveTheRest_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::newRow("blank") << "1 234" << 1234.0;
    QTest::newRow("apostrophe") << "1'234" << 1234.0;
    QTest::newRow("second point") << "1.2.3" << 1.23;
    QTest::newRow("second comma") << "1,2,3" << 1.23;
    QTest::newRow("comma after point") << "1.2,3" << 1.23;
    QTest::newRow("letter") << "1x2" << 12.0;
}

void TestDecimalSpinBox::refusedKeysLeaveTheRest()
{
    QFETCH(QString, typed);
    for (const QString &locale : Locales) {
        make(locale);
        type(typed);
        QTEST(m_box->value(), "value");
    }
}

void TestDecimalSpinBox::fieldsShowTheSignOfTheLocaleAndNoGroups_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("shown");
    QTest::newRow("de_DE") << "de_DE"
                           << "12345,50";
    QTest::newRow("fr_FR") << "fr_FR"
                           << "12345,50";
    QTest::newRow("en_US") << "en_US"
                           << "12345.50";
    QTest::newRow("de_CH") << "de_CH"
                           << "12345.50";
}

void TestDecimalSpinBox::fieldsShowTheSignOfTheLocaleAndNoGroups()
{
    QFETCH(QString, locale);
    make(locale);
    m_box->setDecimals(2);
    m_box->setValue(12345.5);
    QTEST(m_box->text(), "shown");
    type("12345.5");
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QTEST(m_box->text(), "shown");
}

void TestDecimalSpinBox::aSignTypedInFrontOfTheSignStepsOverIt()
{
    make("de_DE");
    m_box->setDecimals(2);
    m_box->setValue(0.75);
    QTest::keyClick(m_box.get(), Qt::Key_Home);
    QTest::keyClicks(m_box.get(), "3");
    QTest::keyClick(m_box.get(), Qt::Key_Delete); // the 0
    QTest::keyClicks(m_box.get(), ".");
    QTest::keyClick(m_box.get(), Qt::Key_Delete); // the 7
    QTest::keyClicks(m_box.get(), "1");
    QCOMPARE(m_box->value(), 3.15);
}

void TestDecimalSpinBox::blanksAroundAPastedNumberAreTakenOff()
{
    for (const QString &locale : Locales) {
        make(locale);
        paste(" 0.75\n");
        QCOMPARE(m_box->value(), 0.75);
    }
}

void TestDecimalSpinBox::rangeAndDecimalsHoldAsEver()
{
    make("de_DE");
    m_box->setRange(0.0, 100.0);
    m_box->setDecimals(2);
    m_box->setValue(1.0);
    const QString before = m_box->text();
    for (const char *text : {"100.5", "-1", "0.755", "1e", "x"}) {
        paste(text);
        QCOMPARE(m_box->text(), before);
    }
    type("99.99");
    QCOMPARE(m_box->value(), 99.99);
}

void TestDecimalSpinBox::unitsAroundTheNumberStay()
{
    make("de_DE");
    m_box->setPrefix("ca. ");
    m_box->setSuffix(" m, z");
    m_box->setDecimals(2);
    type("0.75");
    QCOMPARE(m_box->value(), 0.75);
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QCOMPARE(m_box->text(), QString("ca. 0,75 m, z"));
    paste("1.5");
    QCOMPARE(m_box->value(), 1.5);
}

void TestDecimalSpinBox::textsThatAProgramSetsAreReadTheSameWay()
{
    make("de_DE");
    auto *const line = m_box->findChild<QLineEdit *>();
    m_box->setValue(4.0);
    line->setText("305.25");
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QCOMPARE(m_box->value(), 305.25);
    line->setText("1.234,5");
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QCOMPARE(m_box->value(), 305.25);
    QCOMPARE(m_box->valueFromText("0.75"), 0.75);
}

QTEST_MAIN(TestDecimalSpinBox)
#include "test_decimalspinbox.moc"
