// What every window of the program promises about its fields.

#include "app/allwindows.h"
#include "base/appsettings.h"
#include "views/decimalspinbox.h"
#include "views/fieldhelp.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QTest>

int qInitResources_Zephrant();

class TestWindows : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qInitResources_Zephrant();
        AppSettings().clear();
    }
    void everyFieldSaysWhatItIs_data() { windows(); }
    void everyFieldSaysWhatItIs();
    void labelsAreReadWithoutMarkup_data() { windows(); }
    void labelsAreReadWithoutMarkup();
    void everyFieldHasHelp_data() { windows(); }
    void everyFieldHasHelp();
    void everyDialogHasAQuestionMark_data() { windows(); }
    void everyDialogHasAQuestionMark();
    void decimalNumbersAreReadInOneWay_data() { windows(); }
    void decimalNumbersAreReadInOneWay();

private:
    static void windows()
    {
        QTest::addColumn<WindowCase>("window");
        for (const WindowCase &window : allWindows())
            QTest::newRow(window.name) << window;
    }
};

Q_DECLARE_METATYPE(WindowCase)

void TestWindows::everyFieldSaysWhatItIs()
{
    QFETCH(WindowCase, window);
    const auto made = window.make();
    QStringList names;
    QStringList faults;
    for (QWidget *field : fieldsOf(made.get())) {
        const QAccessibleInterface *const spoken =
            QAccessible::queryAccessibleInterface(field);
        QVERIFY2(spoken, qPrintable(field->objectName()));
        // The toolkit calls a combo box by its value, and relies on its label.
        const QString name = qobject_cast<QComboBox *>(field)
                                 ? field->accessibleName()
                                 : spoken->text(QAccessible::Name);
        const bool plain =
            !name.contains('<') && !name.contains('&') && !name.contains('>');
        if (name.isEmpty() || name != field->accessibleName() || !plain)
            faults << field->objectName() + " is called \"" + name + "\"";
        if (names.contains(name))
            faults << "two are called \"" + name + "\"";
        names << name;
    }
    QCOMPARE(faults.join("; "), QString());
}

void TestWindows::labelsAreReadWithoutMarkup()
{
    QFETCH(WindowCase, window);
    const auto made = window.make();
    QStringList faults;
    for (QLabel *label : made->findChildren<QLabel *>()) {
        const QString name =
            QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name);
        if (Qt::mightBeRichText(name))
            faults << label->objectName() + " is read as \"" + name + "\"";
    }
    QCOMPARE(faults.join("; "), QString());
}

void TestWindows::everyFieldHasHelp()
{
    QFETCH(WindowCase, window);
    const auto made = window.make();
    QStringList faults;
    for (const QWidget *field : fieldsOf(made.get())) {
        if (field->toolTip().isEmpty())
            faults << field->objectName() + " has no tool tip";
        if (field->whatsThis().isEmpty())
            faults << field->objectName() + " has no help";
        if (field->toolTip().contains('\n'))
            faults << field->objectName() + " has a tool tip of several lines";
    }
    QCOMPARE(faults.join("; "), QString());
}

void TestWindows::everyDialogHasAQuestionMark()
{
    QFETCH(WindowCase, window);
    const auto made = window.make();
    if (qobject_cast<QDialog *>(made.get()))
        QVERIFY(made->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    // What stands around a title by default is there as well.
    QVERIFY(made->windowFlags().testFlag(Qt::WindowTitleHint));
    QVERIFY(made->windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

void TestWindows::decimalNumbersAreReadInOneWay()
{
    QFETCH(WindowCase, window);
    const auto made = window.make();
    for (const auto *box : made->findChildren<QDoubleSpinBox *>())
        QVERIFY2(qobject_cast<const DecimalSpinBox *>(box),
                 qPrintable(box->objectName()));
}

QTEST_MAIN(TestWindows)
#include "test_windows.moc"
