// The window that opens terrain, on a terrain that no file holds.

#include "terraindialogs/madeupterrain.h"
#include "terraindialogs/openterraindialog.h"
#include "views/fieldhelp.h"

#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

TerrainSourceMaker madeUp(int pause = 0)
{
    return [pause]() -> Result<std::unique_ptr<TerrainSource>> {
        return std::make_unique<MadeUpSource>(pause);
    };
}

} // namespace

class TestOpenTerrainDialog : public QObject {
    Q_OBJECT

    template <class Widget> static Widget *find(const QWidget &window, const char *name)
    {
        auto *const found = window.findChild<Widget *>(QLatin1String(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    /// Opens a file and waits until OK may be pressed.
    static void openHills(OpenTerrainDialog &dialog)
    {
        dialog.show();
        dialog.setFiles({QStringLiteral("/somewhere/hills.tif")});
        QTRY_VERIFY(find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
    }

    QString written(const QString &name, const QByteArray &text) const
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test's file");
        return file.fileName();
    }
    static void openPoints(OpenTerrainDialog &dialog, const QString &file)
    {
        dialog.show();
        dialog.setFiles({file});
        QTRY_VERIFY(find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
        auto *const tabs = find<QTabWidget>(dialog, "tabWidget");
        QVERIFY(tabs->isTabVisible(tabs->indexOf(find<QWidget>(dialog, "tabPoints"))));
    }
    static QStringList headsOf(const QTableWidget *table)
    {
        QStringList heads;
        for (int column = 0; column < table->columnCount(); ++column)
            heads << table->horizontalHeaderItem(column)->text();
        return heads;
    }
    /// By the menu of the column's cell.
    static void makeColumn(QTableWidget *table, int column, const QString &what)
    {
        table->setCurrentCell(0, column);
        emit table->customContextMenuRequested(
            table->visualItemRect(table->item(0, column)).center());
        auto *const menu = find<QMenu>(*table, "menuPointColumn");
        for (QAction *const action : menu->actions())
            if (action->text().remove(QLatin1Char('&')).endsWith(what))
                action->trigger();
        delete menu;
    }

private slots:
    void aFileShowsItsFactsAndItsMap()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        auto *const facts = find<QLabel>(dialog, "labelFacts");
        QTRY_VERIFY(facts->text().contains(QStringLiteral("200 to 1800 m")));
        QVERIFY(facts->text().contains(QStringLiteral("300 by 200 cells")));
        QVERIFY(facts->text().contains(QStringLiteral("EPSG:32632")));
        QVERIFY(facts->text().contains(QStringLiteral("600 voids (1 %)")));
        QVERIFY(find<QLabel>(dialog, "labelPart")
                    ->text()
                    .contains(QStringLiteral("9000 m by 6000 m")));
        QCOMPARE(find<QLineEdit>(dialog, "lineEditOut")->text(),
                 QDir::homePath() + QStringLiteral("/hills"));
    }

    void untouchedFieldsMeanTheDefaults()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        const TerrainRequest request = dialog.request();
        const TerrainRequest defaults;
        QCOMPARE(request.files, QStringList{QStringLiteral("/somewhere/hills.tif")});
        QVERIFY(request.grid == defaults.grid);
        QVERIFY(request.points == defaults.points);
        QVERIFY(request.texture == defaults.texture);
        QCOMPARE(request.fill, defaults.fill);
        QCOMPARE(request.unit, defaults.unit);
        QCOMPARE(request.exaggeration, defaults.exaggeration);
    }

    void aDraggedPartIsWanted()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        // The last text has come, nothing moves the map any more.
        QTRY_VERIFY(find<QLabel>(dialog, "labelFacts")
                        ->text()
                        .contains(QStringLiteral("1800 m")));
        QTRY_VERIFY(!find<QProgressBar>(dialog, "progressBarTerrain")->isVisible());
        QCoreApplication::processEvents();
        auto *const map = find<TerrainMapView>(dialog, "terrainMapView");
        const QPoint middle = map->rect().center();
        QTest::mousePress(map, Qt::LeftButton, {}, middle - QPoint(40, 30));
        QTest::mouseMove(map, middle + QPoint(40, 30));
        QTest::mouseRelease(map, Qt::LeftButton, {}, middle + QPoint(40, 30));
        const std::optional<QRect> part = dialog.request().grid.cells;
        QVERIFY(part);
        QVERIFY(QRect(0, 0, 300, 200).contains(*part));
        QVERIFY(qAbs(part->center().x() - 150) <= 2);
        QVERIFY(qAbs(part->center().y() - 100) <= 2);
        QCOMPARE(find<QSpinBox>(dialog, "spinBoxCellsW")->value(), part->width());
        const QString text =
            QStringLiteral("%1 by %2 cells").arg(part->width()).arg(part->height());
        QTRY_VERIFY(find<QLabel>(dialog, "labelPart")->text().contains(text));
        QTest::mouseDClick(map, Qt::LeftButton, {}, middle);
        QVERIFY(!dialog.request().grid.cells);
    }

    void keysSelectAPart()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        auto *const map = find<TerrainMapView>(dialog, "terrainMapView");
        QTest::keyClick(map, Qt::Key_Left, Qt::ShiftModifier);
        QTest::keyClick(map, Qt::Key_Up, Qt::ShiftModifier | Qt::ControlModifier);
        QTest::keyClick(map, Qt::Key_Right);
        QCOMPARE(dialog.request().grid.cells, QRect(3, 0, 297, 199));
        QTest::keyClick(map, Qt::Key_Delete);
        QVERIFY(!dialog.request().grid.cells);
    }

    void typedCellsAndCoordinates()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        find<QSpinBox>(dialog, "spinBoxCellsW")->setValue(50);
        QCOMPARE(dialog.request().grid.cells, QRect(0, 0, 50, 200));
        auto *const east = find<QDoubleSpinBox>(dialog, "doubleSpinBoxRectE");
        QTRY_COMPARE(east->value(), 401500.0);
        east->setValue(402000.0);
        const GridRequest request = dialog.request().grid;
        QVERIFY(request.rect && !request.cells);
        QVERIFY(*request.rect == Extent({400000.0, 5294000.0, 402000.0, 5300000.0}));
    }

    void anUnknownSystemIsTold()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        find<QComboBox>(dialog, "comboBoxCrs")->setCurrentText(QStringLiteral("EPSG:1"));
        auto *const ok = find<QPushButton>(dialog, "pushButtonOK");
        QTRY_VERIFY(!ok->isEnabled());
        QCOMPARE(find<QLabel>(dialog, "labelPart")->text(),
                 QStringLiteral("\"EPSG:1\" is no reference system."));
        find<QComboBox>(dialog, "comboBoxCrs")->setCurrentIndex(0);
        QTRY_VERIFY(ok->isEnabled());
    }

    void theHeadOfPointsIsShownAsItIsRead()
    {
        const QString file = written("points.csv", "Höhe;Ost;Nord\n7,5;100;200\n"
                                                   "8,5;110;200\n9,5;100;210\n");
        OpenTerrainDialog dialog(madeUp());
        openPoints(dialog, file);
        auto *const table = find<QTableWidget>(dialog, "tableWidgetPoints");
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(headsOf(table), (QStringList{"Höhe = z", "Ost = x", "Nord = y"}));
        QCOMPARE(table->item(1, 0)->text(), QString("8,5"));
        QCOMPARE(find<QComboBox>(dialog, "comboBoxSeparator")->currentText(),
                 QString("Automatic: Semicolon"));
        QCOMPARE(find<QComboBox>(dialog, "comboBoxDecimal")->currentText(),
                 QString("Automatic: Comma"));
        QCOMPARE(find<QSpinBox>(dialog, "spinBoxSkip")->text(), QString("Automatic: 1"));
        QCOMPARE(find<QLineEdit>(dialog, "lineEditColumns")->placeholderText(),
                 QString("2,3,1, found in the file"));
        QVERIFY(dialog.request().points == PointOptions());
    }

    void theFileWhoseLinesAreShownIsNamed()
    {
        const QString first = written("first.txt", "1 2 3\n4 5 6\n");
        const QString second = written("second.txt", "7 8 9\n1 2 3\n");
        OpenTerrainDialog dialog(madeUp());
        dialog.setFiles({first, second});
        QTRY_COMPARE(find<QTableWidget>(dialog, "tableWidgetPoints")->rowCount(), 2);
        const QString told = find<QLabel>(dialog, "labelPointHead")->text();
        QVERIFY2(told.contains("\"first.txt\"") && told.contains("other files"),
                 qPrintable(told));
    }

    void aWrongChoiceIsShownAndCanBeTakenBack()
    {
        const QString file = written("points.csv", "x;y;z\n1;2;3\n4;5;6\n");
        OpenTerrainDialog dialog(madeUp());
        openPoints(dialog, file);
        auto *const tabs = find<QTabWidget>(dialog, "tabWidget");
        tabs->setCurrentWidget(find<QWidget>(dialog, "tabPoints"));
        auto *const separator = find<QComboBox>(dialog, "comboBoxSeparator");
        auto *const table = find<QTableWidget>(dialog, "tableWidgetPoints");
        separator->setCurrentIndex(1); // comma
        QTRY_COMPARE(table->columnCount(), 1);
        QCOMPARE(table->item(1, 0)->text(), QString("1;2;3"));
        QTRY_VERIFY(dialog.failure().contains("no lines with three numbers"));
        QCOMPARE(find<QLabel>(dialog, "labelPointHead")->text(), dialog.failure());
        QCOMPARE(find<QLineEdit>(dialog, "lineEditColumns")->placeholderText(),
                 QString("found in the file"));
        QVERIFY(!find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
        QCOMPARE(tabs->currentWidget()->objectName(), QString("tabPoints"));
        separator->setCurrentIndex(0);
        QTRY_VERIFY(find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
        QCOMPARE(table->columnCount(), 3);
        find<QSpinBox>(dialog, "spinBoxSkip")->setValue(2);
        QTRY_COMPARE(table->rowCount(), 1);
        QCOMPARE(table->item(0, 0)->text(), QString("4"));
        QCOMPARE(dialog.request().points.skippedLines, 2);
    }

    void theHeadOfAColumnMakesItAnother()
    {
        const QString file = written("points.txt", "1 2 3 4\n5 6 7 9\n");
        OpenTerrainDialog dialog(madeUp());
        openPoints(dialog, file);
        auto *const table = find<QTableWidget>(dialog, "tableWidgetPoints");
        QCOMPARE(headsOf(table), (QStringList{"Column 1 = x", "Column 2 = y",
                                              "Column 3 = z", "Column 4"}));
        makeColumn(table, 3, "z");
        QTRY_COMPARE(headsOf(table), (QStringList{"Column 1 = x", "Column 2 = y",
                                                  "Column 3", "Column 4 = z"}));
        makeColumn(table, 1, "x");
        QTRY_COMPARE(headsOf(table), (QStringList{"Column 1 = y", "Column 2 = x",
                                                  "Column 3", "Column 4 = z"}));
        QCOMPARE(dialog.request().points.columns, (QList<int>{2, 1, 4}));
        QCOMPARE(find<QLineEdit>(dialog, "lineEditColumns")->text(), QString("2,1,4"));
    }

    void columnsThatAreNoneAreTold()
    {
        const QString file = written("points.txt", "1 2 3 4\n5 6 7 9\n");
        OpenTerrainDialog dialog(madeUp());
        openPoints(dialog, file);
        find<QTabWidget>(dialog, "tabWidget")
            ->setCurrentWidget(find<QWidget>(dialog, "tabPoints"));
        auto *const columns = find<QLineEdit>(dialog, "lineEditColumns");
        auto *const ok = find<QPushButton>(dialog, "pushButtonOK");
        for (const char *const wrong : {"1,2", "1,1,2", "x", "0,1,2"}) {
            columns->setText(wrong);
            QTest::keyClick(columns, Qt::Key_Return);
            QTRY_VERIFY2(dialog.failure().contains("three different numbers from 1"),
                         wrong);
            QVERIFY(!ok->isEnabled());
        }
        columns->setText("1,2,5");
        QTest::keyClick(columns, Qt::Key_Return);
        QTRY_VERIFY2(dialog.failure().endsWith("has 4 columns; there is no column 5."),
                     qPrintable(dialog.failure()));
        columns->clear();
        QTest::keyClick(columns, Qt::Key_Return);
        QTRY_VERIFY(ok->isEnabled());
    }

    // To pass a field by costs nothing of what is selected.
    void aFieldThatIsOnlyPassedChangesNothing()
    {
        const QString file = written("points.txt", "1 2 3\n4 5 6\n");
        OpenTerrainDialog dialog(madeUp());
        openPoints(dialog, file);
        find<QSpinBox>(dialog, "spinBoxCellsW")->setValue(50);
        find<QTabWidget>(dialog, "tabWidget")
            ->setCurrentWidget(find<QWidget>(dialog, "tabPoints"));
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *const columns = find<QLineEdit>(dialog, "lineEditColumns");
        columns->setFocus();
        QVERIFY(columns->hasFocus());
        QTest::keyClick(columns, Qt::Key_Tab);
        QVERIFY(!columns->hasFocus());
        QCOMPARE(dialog.request().grid.cells, QRect(0, 0, 50, 200));
    }

    void whatCannotBeReadIsTold()
    {
        OpenTerrainDialog dialog(madeUp());
        dialog.show();
        dialog.setFiles({QStringLiteral("/somewhere/broken.tif")});
        QTRY_COMPARE(dialog.failure(),
                     QStringLiteral("Cannot read \"/somewhere/broken.tif\": broken."));
        QVERIFY(!find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
        dialog.setFiles({QStringLiteral("/somewhere/hills.tif")});
        QTRY_VERIFY(find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
    }

    void aMissingLibraryIsTold()
    {
        OpenTerrainDialog dialog([]() -> Result<std::unique_ptr<TerrainSource>> {
            return failed(QStringLiteral("The package is missing."));
        });
        dialog.setFiles({QStringLiteral("/somewhere/hills.tif")});
        QTRY_COMPARE(dialog.failure(), QStringLiteral("The package is missing."));
    }

    void aLongLookIsNoHindrance()
    {
        OpenTerrainDialog dialog(madeUp(50)); // ten seconds for the whole map
        openHills(dialog);
        find<QSpinBox>(dialog, "spinBoxCellsW")->setValue(50);
        QTRY_VERIFY(find<QLabel>(dialog, "labelPart")
                        ->text()
                        .contains(QStringLiteral("50 by 200 cells")));
        dialog.reject();
        QVERIFY(!dialog.isVisible());
    }

    void okWritesASceneryAndClosesTheWindow()
    {
        QTemporaryDir folder;
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        find<QLineEdit>(dialog, "lineEditOut")->setText(folder.filePath("hills"));
        QSignalSpy written(&dialog, &OpenTerrainDialog::sceneryWritten);
        find<QPushButton>(dialog, "pushButtonOK")->click();
        QTRY_COMPARE(written.count(), 1);
        QVERIFY(!dialog.isVisible());
        const auto report = written.at(0).at(0).value<TerrainReport>();
        QCOMPARE(report.written.constLast(), folder.filePath("hills.zph"));
        for (const char *const name :
             {"hills.zph", "hills_elevation.png", "hills_texture.png"})
            QVERIFY2(QFile::exists(folder.filePath(name)), name);
    }

    void whatCannotBeWrittenIsToldAndTheWindowStays()
    {
        OpenTerrainDialog dialog(madeUp());
        openHills(dialog);
        find<QLineEdit>(dialog, "lineEditOut")->setText("/no/such/folder/hills");
        QString text;
        QTimer answer;
        connect(&answer, &QTimer::timeout, &dialog, [&] {
            if (auto *const box =
                    qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                text = box->text();
                box->close();
            }
        });
        answer.start(20);
        find<QPushButton>(dialog, "pushButtonOK")->click();
        QTRY_VERIFY(text.contains(QStringLiteral("/no/such/folder/hills")));
        QVERIFY(dialog.isVisible());
        QTRY_VERIFY(find<QPushButton>(dialog, "pushButtonOK")->isEnabled());
    }

    void everyFieldHasHelp()
    {
        OpenTerrainDialog dialog(madeUp());
        for (const QWidget *const field : fieldsOf(&dialog)) {
            const QByteArray name = field->objectName().toUtf8();
            QVERIFY2(!field->toolTip().isEmpty(), name);
            QVERIFY2(!field->whatsThis().isEmpty(), name);
            QVERIFY2(!field->accessibleName().isEmpty(), name);
        }
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(TestOpenTerrainDialog)
#include "test_openterraindialog.moc"
