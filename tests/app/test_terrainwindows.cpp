// From files of heights to a scenery, a texture and a path, with the window as its user
// has it and the library that reads terrain.

#include "app/windowfixture.h"
#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "patheditors/setflightpathdialog.h"
#include "support/modalanswer.h"
#include "views/imagemdichild.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTableWidget>

#include <cmath>
#include <memory>

int qInitResources_Zephrant();

class TestTerrainWindows : public QObject, private WindowFixture {
    Q_OBJECT

private slots:
    void initTestCase() { qInitResources_Zephrant(); }
    void init() { openWindow(); }
    void cleanup() { closeWindow(); }

    void aGivenFileBecomesASceneryByOneKey()
    {
        SceneryMdiChild *const scenery = openHills();
        QVERIFY(scenery);
        const SceneryData &data = scenery->delegate().sceneryData();
        QCOMPARE(data.HDateiname, QString("hills_elevation.png"));
        QCOMPARE(data.TDateiname, QString("hills_texture.png"));
        QCOMPARE(scenery->delegate().extras().MetresPerUnit, 25.0);
        QVERIFY(!scenery->isModified());
        QTRY_VERIFY(hint().contains("hills_elevation.png"));
        QVERIFY2(hint().contains("voids 0"), qPrintable(hint()));
    }

    // The steps of the columns that are taken for x and y tell the size of the grid.
    void pointsAreOpenedAsTheirHeadShowsThem()
    {
        QFile points(m_dir->filePath("points.csv"));
        QVERIFY(points.open(QIODevice::WriteOnly));
        points.write("east;north;height;depth\n");
        for (int i = 0; i < 600; ++i)
            points.write(QByteArray::number(1000 + i % 30 * 10) + ";" +
                         QByteArray::number(2000 + i / 30 * 10) + ";" +
                         QByteArray::number(100 + i) + ",5;" +
                         QByteArray::number(7000 + i) + "\n");
        points.close();
        QDialog *const dialog = openedFrom(points.fileName());
        QVERIFY(dialog);
        auto *const table = dialog->findChild<QTableWidget *>("tableWidgetPoints");
        QCOMPARE(table->rowCount(), 10);
        QCOMPARE(table->item(9, 2)->text(), QString("109,5"));
        QCOMPARE(table->horizontalHeaderItem(2)->text(), QString("height = z"));
        auto *const facts = dialog->findChild<QLabel *>("labelFacts");
        QTRY_VERIFY2(facts->text().contains("100.5 to 699.5 m"),
                     qPrintable(facts->text()));
        auto *const columns = dialog->findChild<QLineEdit *>("lineEditColumns");
        columns->setText("1,2,4");
        emit columns->editingFinished();
        QTRY_VERIFY2(facts->text().contains("7000 to 7599 m"), qPrintable(facts->text()));
        QCOMPARE(table->horizontalHeaderItem(3)->text(), QString("depth = z"));
        QTRY_VERIFY(dialog->findChild<QPushButton *>("pushButtonOK")->isEnabled());
        dialog->findChild<QPushButton *>("pushButtonOK")->click();
        QTRY_VERIFY(m_window->findChild<SceneryMdiChild *>());
        QTRY_VERIFY2(hint().contains("rows 20, columns 30"), qPrintable(hint()));
    }

    // Also where no window has needed it yet.
    void theLibraryTellsItsVersion()
    {
        ModalAnswers answers;
        QString version;
        answers.withDialog([&version](QDialog *dialog) {
            const auto *table = dialog->findChild<QTableWidget *>("tableWidgetLibraries");
            const auto last = [table](int column) {
                return table->item(table->rowCount() - 1, column)->text();
            };
            QVERIFY(QTest::qWaitFor([&] { return last(0) == "GDAL"; }, 20000));
            version = last(1);
            dialog->reject();
        });
        action("action_Libraries")->trigger();
        QCOMPARE(answers.complaints(), QStringList());
        QVERIFY2(version.count('.') >= 2 && version.at(0).isDigit(), qPrintable(version));
    }

    void commandsOfPathsNeedAScenery()
    {
        QVERIFY(!action("action_PathFromTrack")->isEnabled());
        QVERIFY(!action("action_SavePathAs")->isEnabled());
        QVERIFY(action("action_OpenTerrain")->isEnabled());
        QVERIFY(action("action_TextureFromElevation")->isEnabled());
        QVERIFY(openHills());
        QVERIFY(action("action_PathFromTrack")->isEnabled());
        QVERIFY(action("action_SavePathAs")->isEnabled());
    }

    void aTrackBecomesThePath()
    {
        SceneryMdiChild *const scenery = openHills();
        QVERIFY(scenery);
        followTrack(200);
        QTRY_VERIFY(!scenery->delegate().document().controlPoints.isEmpty());
        QVERIFY(!scenery->delegate().sceneryData().isStraight);
        QCOMPARE(scenery->delegate().sceneryData().Bildanzahl, 300);
        QVERIFY(scenery->isModified());
        QVERIFY2(hint().contains("off the track"), qPrintable(hint()));
    }

    // Its OK would bring back the path before.
    void anOpenPathEditorGoesOnWithThePathOfATrack()
    {
        SceneryMdiChild *const scenery = openHills();
        QVERIFY(scenery);
        SceneryDelegate &delegate = scenery->delegate();
        delegate.setFlightPath();
        followTrack(200);
        QTRY_VERIFY(!delegate.document().controlPoints.isEmpty());
        const QList<ControlPoint> flown = delegate.document().controlPoints;
        QVERIFY(editor());
        QTRY_VERIFY(!delegate.pathEditorHoldsChanges());
        editor()->findChild<QPushButton *>("pushButtonOK")->click();
        QCOMPARE(delegate.document().controlPoints.size(), flown.size());
        QCOMPARE(delegate.document().controlPoints.constLast().x, flown.constLast().x);
    }

    void changesInAnOpenPathEditorAreAskedFor()
    {
        SceneryMdiChild *const scenery = openHills();
        QVERIFY(scenery);
        SceneryDelegate &delegate = scenery->delegate();
        followTrack(200);
        QTRY_VERIFY(!delegate.document().controlPoints.isEmpty());
        const QList<ControlPoint> first = delegate.document().controlPoints;
        delegate.setFlightPath();
        QVERIFY(editor() && !delegate.pathEditorHoldsChanges());
        editor()->findChild<QAction *>("actionEyesFront")->trigger();
        editor()->findChild<QAction *>("actionAddWaypoints")->trigger();
        QVERIFY(delegate.pathEditorHoldsChanges());
        ModalAnswers answers;
        const QString asked =
            QString("The open path editor of \"%1\" holds changes.\nReplace them by the "
                    "path of the track?")
                .arg(scenery->userFriendlyCurrentFile());
        answers.pressButton("Path From Track", asked, QMessageBox::No);
        followTrack(100);
        QTRY_COMPARE(hint(), QString("The path of the track was not taken."));
        QVERIFY(delegate.document().controlPoints == first);
        QVERIFY(delegate.pathEditorHoldsChanges());
        answers.pressButton("Path From Track", asked, QMessageBox::Yes);
        followTrack(100);
        QTRY_VERIFY(!(delegate.document().controlPoints == first));
        QVERIFY(!delegate.pathEditorHoldsChanges());
        const int level = delegate.document().waypointLevel;
        editor()->findChild<QPushButton *>("pushButtonOK")->click();
        QCOMPARE(delegate.document().waypointLevel, level);
        QCOMPARE(answers.complaints(), QStringList());
    }

    void aTableOfPlainCoordinatesFitsAGridOfThem()
    {
        SceneryMdiChild *const scenery = openHills({});
        QVERIFY(scenery);
        followTrack(200);
        QTRY_VERIFY2(!scenery->delegate().document().controlPoints.isEmpty(),
                     qPrintable(hint()));
        QTRY_VERIFY2(hint().contains("off the track"), qPrintable(hint()));
    }

    void aTextureIsMadeOfAnElevationFile()
    {
        QVERIFY(openHills());
        action("action_TextureFromElevation")->trigger();
        auto *const dialog = m_window->findChild<QDialog *>("textureFromElevationDialog");
        QVERIFY(dialog);
        QCOMPARE(dialog->findChild<QLineEdit *>("lineEditElevation")->text(),
                 m_dir->filePath("hills_elevation.png"));
        const QString out = m_dir->filePath("map.png");
        dialog->findChild<QLineEdit *>("lineEditOut")->setText(out);
        dialog->findChild<QPushButton *>("pushButtonOK")->click();
        QTRY_VERIFY(m_window->findChild<ImageMdiChild *>());
        QCOMPARE(QImage(out).size(), QSize(60, 40));
    }

private:
    [[nodiscard]] QAction *action(const char *name) const
    {
        return m_window->findChild<QAction *>(QLatin1String(name));
    }
    [[nodiscard]] QString hint() const
    {
        return m_window->findChild<QLabel *>("labelNotice")->toolTip();
    }
    /// Makes a track with bends of so many metres the path of the active scenery.
    void followTrack(double bend)
    {
        QFile track(m_dir->filePath("track.csv"));
        QVERIFY(track.open(QIODevice::WriteOnly));
        track.write("x,y,z\n");
        for (int i = 0; i < 40; ++i)
            track.write(QByteArray::number(600200 + i * 20) + ',' +
                        QByteArray::number(5300300 + bend * std::sin(i / 6.0)) +
                        ",900\n");
        track.close();
        action("action_PathFromTrack")->trigger();
        // Those that have closed are gone some time after.
        QPointer<QDialog> dialog;
        for (auto *const each : m_window->findChildren<QDialog *>("pathFromTrackDialog"))
            if (each->isVisible())
                dialog = each;
        QVERIFY(dialog);
        dialog->findChild<QLineEdit *>("lineEditTrack")->setText(track.fileName());
        dialog->findChild<QPushButton *>("pushButtonOK")->click();
        QTRY_VERIFY(!dialog || !dialog->isVisible());
    }
    [[nodiscard]] static SetFlightPathDialog *editor()
    {
        for (QWidget *const window : QApplication::topLevelWidgets())
            if (auto *const found = qobject_cast<SetFlightPathDialog *>(window);
                found && found->isVisible())
                return found;
        return nullptr;
    }
    /// An ASCII grid of 60 by 40 cells of 25 m.
    QString hills() const
    {
        QFile file(m_dir->filePath("hills.asc"));
        if (!file.open(QIODevice::WriteOnly))
            return {};
        file.write("ncols 60\nnrows 40\nxllcorner 600000\nyllcorner 5300000\n"
                   "cellsize 25\n");
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 60; ++x)
                file.write(QByteArray::number(500 + 200 * std::sin(x / 9.0) +
                                                  150 * std::cos(y / 7.0),
                                              'f', 2) +
                           ' ');
            file.write("\n");
        }
        return file.fileName();
    }
    /// Drops a file on the program; the window once OK may be pressed.
    QDialog *openedFrom(const QString &file)
    {
        m_window->openGiven({file});
        QDialog *dialog = nullptr;
        const bool ready = QTest::qWaitFor(
            [&] {
                dialog = m_window->findChild<QDialog *>("openTerrainDialog");
                return dialog &&
                       dialog->findChild<QPushButton *>("pushButtonOK")->isEnabled();
            },
            20000);
        return ready ? dialog : nullptr;
    }
    /// Drops the file on the program, presses OK.
    SceneryMdiChild *openHills(const QString &system = "EPSG:32632")
    {
        QDialog *const dialog = openedFrom(hills());
        if (!dialog)
            return nullptr;
        // The grid tells no system; tracks need one.
        if (!system.isEmpty())
            dialog->findChild<QComboBox *>("comboBoxCrs")->setCurrentText(system);
        if (!QTest::qWaitFor([&] {
                return dialog->findChild<QDoubleSpinBox *>("doubleSpinBoxRectW")
                           ->value() == 600000.0;
            }))
            return nullptr;
        dialog->findChild<QPushButton *>("pushButtonOK")->click();
        (void)QTest::qWaitFor([&] { return m_window->findChild<SceneryMdiChild *>(); },
                              20000);
        return m_window->findChild<SceneryMdiChild *>();
    }
};

QTEST_MAIN(TestTerrainWindows)
#include "test_terrainwindows.moc"
