#include "app/aboutzephrantdialog.h"
#include "app/newfiledialog.h"
#include "app/settingsdialog.h"
#include "base/appsettings.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>
#include <QValidator>

int qInitResources_Zephrant();

class TestShellDialogs : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { qInitResources_Zephrant(); }
    void init() { AppSettings().clear(); }

    void firstStartShowsNoRefreshAndFourSeconds()
    {
        const SettingsDialog dialog;
        QVERIFY(!box(dialog)->isChecked());
        QCOMPARE(cycle(dialog)->value(), 4000);
    }

    void storedCycleShows_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("shown");
        QTest::newRow("zero reads as the default") << 0 << 4000;
        QTest::newRow("too small") << 50 << 100;
        QTest::newRow("negative") << -7 << 100;
        QTest::newRow("too large") << 40000 << 32000;
        QTest::newRow("as it stands") << 7350 << 7350;
    }

    void storedCycleShows()
    {
        QFETCH(int, stored);
        AppSettings().setValue("refreshCycle", stored);
        const SettingsDialog dialog;
        QTEST(cycle(dialog)->value(), "shown");
    }

    void okStoresBothPreferences()
    {
        SettingsDialog dialog;
        dialog.show();
        QTest::mouseClick(box(dialog), Qt::LeftButton, {}, {8, 8});
        cycle(dialog)->setValue(500);
        QTest::mouseClick(button(dialog, "pushButtonOK"), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(AppSettings().value("periodicalRefresh").toBool(), true);
        QCOMPARE(AppSettings().value("refreshCycle").toInt(), 500);
    }

    void cancelStoresNothing()
    {
        SettingsDialog dialog;
        dialog.show();
        box(dialog)->setChecked(true);
        QTest::mouseClick(button(dialog, "pushButtonCancel"), Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
        QVERIFY(!AppSettings().contains("periodicalRefresh"));
        QVERIFY(!AppSettings().contains("refreshCycle"));
    }

    void newFileStartsAsSceneryWithTheSizeEnabled()
    {
        const NewFileDialog dialog;
        QVERIFY(!dialog.createImageFile());
        QVERIFY(edit(dialog, "lineEditWidth")->isEnabled());
        QVERIFY(edit(dialog, "lineEditHeight")->isEnabled());
        QCOMPARE(dialog.imageFileSize(), QSize(720, 576));
    }

    void sizeFollowsTheChoice()
    {
        NewFileDialog dialog;
        dialog.show();
        auto *const image = dialog.findChild<QRadioButton *>("radioButtonImage");
        auto *const scenery = dialog.findChild<QRadioButton *>("radioButtonScenery");
        scenery->click();
        QVERIFY(!edit(dialog, "lineEditWidth")->isEnabled());
        QVERIFY(!edit(dialog, "lineEditHeight")->isEnabled());
        image->click();
        QVERIFY(edit(dialog, "lineEditWidth")->isEnabled());
        QVERIFY(edit(dialog, "lineEditHeight")->isEnabled());
        QVERIFY(dialog.createImageFile());
    }

    void imageSizeIsWidthFirst()
    {
        NewFileDialog dialog;
        dialog.show();
        edit(dialog, "lineEditWidth")->clear();
        QTest::keyClicks(edit(dialog, "lineEditWidth"), "30");
        edit(dialog, "lineEditHeight")->clear();
        QCOMPARE(dialog.imageFileSize(), QSize(30, 0));
    }

    void sizeHasARange_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("none") << "0" << true;
        QTest::newRow("largest") << "16384" << true;
        QTest::newRow("larger") << "16385" << false;
        QTest::newRow("negative") << "-1" << false;
        QTest::newRow("letters") << "a" << false;
    }

    void sizeHasARange()
    {
        QFETCH(QString, text);
        const NewFileDialog dialog;
        int at = 0;
        const auto state =
            edit(dialog, "lineEditHeight")->validator()->validate(text, at);
        QTEST(state == QValidator::Acceptable, "accepted");
    }

    void aboutShowsNameAndLogo()
    {
        const AboutZephrantDialog dialog;
        QCOMPARE(dialog.windowTitle(), QString("About Zephrant"));
        QCOMPARE(dialog.findChild<QLabel *>("labelZephrant")->text(),
                 QString("Zephrant Version 6.0 (32bit/586/Qt/MinGW)"));
        QVERIFY(!dialog.findChild<QLabel *>("labelIcon")->pixmap().isNull());
    }

private:
    static QCheckBox *box(const QDialog &dialog)
    {
        return dialog.findChild<QCheckBox *>("checkBoxRefreshPeriodically");
    }
    static QSpinBox *cycle(const QDialog &dialog)
    {
        return dialog.findChild<QSpinBox *>("spinBoxRefreshCycle");
    }
    static QAbstractButton *button(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<QAbstractButton *>(name);
    }
    static QLineEdit *edit(const QDialog &dialog, const char *name)
    {
        return dialog.findChild<QLineEdit *>(name);
    }
};

QTEST_MAIN(TestShellDialogs)
#include "test_shelldialogs.moc"
