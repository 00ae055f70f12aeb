#include "importdialogs/asciiirregulardialog.h"
#include "importdialogs/asciiregulardialog.h"
#include "raster/elevationimage.h"
#include "support/factsof.h"
#include "support/modalanswer.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>

namespace {

template <typename T> T *child(const QDialog &dialog, const char *name)
{
    return dialog.findChild<T *>(QLatin1String(name));
}

QString textOf(const QDialog &dialog, const char *name)
{
    return child<QLineEdit>(dialog, name)->text();
}

int valueOf(const QDialog &dialog, const char *name)
{
    return child<QSpinBox>(dialog, name)->value();
}

QStringList rowsOf(const QDialog &dialog)
{
    QStringList rows;
    const auto *list = child<QListWidget>(dialog, "listWidgetResults");
    for (int i = 0; i < list->count(); ++i)
        rows << list->item(i)->text();
    return rows;
}

void click(const QDialog &dialog, const char *name)
{
    QTest::mouseClick(child<QPushButton>(dialog, name), Qt::LeftButton);
}

// 30 by 20 points, z = 10 x + y.
QByteArray gridText()
{
    QByteArray text;
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x)
            text += QByteArray::number(x + 5) + '\t' + QByteArray::number(y) + '\t' +
                    QByteArray::number(10 * x + y) + '\n';
    return text;
}

} // namespace

class TestAsciiDialogs : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aRegularMeshBecomesAnElevationFile();
    void anIrregularMeshBecomesAnElevationFile();
    void heightsThatHadToBeCutAreReported();
    void theScanOfASecondFileOnlyWidens();
    void linesToSkipCountWhenTheFileIsChosen();
    void typingIntoTheBoundariesHasNoEffect();
    void anEmptyFileIsTold();
    void aFileThatCannotBeOpenedIsTold();
    void aFileThatVanishesClosesTheDialog_data();
    void aFileThatVanishesClosesTheDialog();
    void anOutputThatCannotBeSavedIsTold_data();
    void anOutputThatCannotBeSavedIsTold();
    void aFailedTriangulationIsTold();
    void cancelWritesNothing();

private:
    QString write(const char *name, const QByteArray &text) const;
    QString path(const char *name) const { return m_dir->filePath(QLatin1String(name)); }
    void choose(QDialog &dialog, const QString &from, const QString &to);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ModalAnswers> m_answers;
};

void TestAsciiDialogs::init()
{
    QSettings(QStringLiteral("Kolvenar"), QStringLiteral("Zephrant")).clear();
    m_dir = std::make_unique<QTemporaryDir>();
    m_answers = std::make_unique<ModalAnswers>();
    std::srand(1);
}

QString TestAsciiDialogs::write(const char *name, const QByteArray &text) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write the input");
    return file.fileName();
}

// Chooses both files in the file dialogs.
void TestAsciiDialogs::choose(QDialog &dialog, const QString &from, const QString &to)
{
    dialog.show();
    m_answers->chooseFile(QStringLiteral("Open File"), from);
    click(dialog, "pushButtonBrowseFromFile");
    if (to.isEmpty())
        return;
    m_answers->chooseFile(QStringLiteral("Save File"), to);
    click(dialog, "pushButtonBrowseToFile");
}

void TestAsciiDialogs::aRegularMeshBecomesAnElevationFile()
{
    AsciiRegularDialog dialog;
    QVERIFY(!child<QPushButton>(dialog, "pushButtonOK")->isEnabled());
    choose(dialog, write("in.txt", gridText()), path("out.png"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryLeft"), QStringLiteral("5"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryRight"), QStringLiteral("34"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryTop"), QStringLiteral("19"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryBottom"), QStringLiteral("0"));
    QCOMPARE(valueOf(dialog, "spinBoxWidth"), 30);
    QCOMPARE(valueOf(dialog, "spinBoxHeight"), 20);
    QCOMPARE(rowsOf(dialog), QStringList());
    QVERIFY(child<QPushButton>(dialog, "pushButtonOK")->isEnabled());
    click(dialog, "pushButtonOK");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    const ElevationImage image(path("out.png"));
    QCOMPARE(image.size(), QSize(30, 20));
    QCOMPARE(image.elevation(0, 1), 256.0); // the z scale, once
    QCOMPARE(image.elevation(29, 19), 256.0 * 309);
    QCOMPARE(factsOf(dialog.outcome()), QString("Points used 600 of 600"));
    QCOMPARE(m_answers->complaints(), QStringList());
}

void TestAsciiDialogs::anIrregularMeshBecomesAnElevationFile()
{
    AsciiIrregularDialog dialog;
    choose(dialog, write("in.txt", gridText()), path("out.tif"));
    QCOMPARE(valueOf(dialog, "spinBoxWidth"), 512); // the user's choice
    child<QSpinBox>(dialog, "spinBoxWidth")->setValue(60);
    child<QSpinBox>(dialog, "spinBoxHeight")->setValue(80);
    child<QDoubleSpinBox>(dialog, "doubleSpinBoxZScale")->setValue(100);
    click(dialog, "pushButtonOK");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(rowsOf(dialog), QStringList());
    const ElevationImage image(path("out.tif"));
    QCOMPARE(image.size(), QSize(60, 80));
    // u = 29 is x = 14.017 of the grid, row 40 from below is y = 9.5.
    QVERIFY(std::abs(image.elevation(29, 40) - 100 * (10 * 29 * 29 / 60.0 + 9.5)) < 40);
    QCOMPARE(factsOf(dialog.outcome()), QString("Points used 600 of 600"));
    QCOMPARE(m_answers->complaints(), QStringList());
}

// The z scale of the form is 256. A file may have grown since it was scanned.
void TestAsciiDialogs::heightsThatHadToBeCutAreReported()
{
    AsciiRegularDialog regular;
    choose(regular, write("high.txt", "0 0 1\n1 0 40000\n0 1 -40000\n1 1 1e99\n"),
           path("high.png"));
    click(regular, "pushButtonOK");
    QCOMPARE(factsOf(regular.outcome()), QString("Points used 4 of 4, Values cut 3"));
    AsciiIrregularDialog irregular;
    choose(irregular, write("out.txt", "0 0 1\n4 0 40000\n0 4 2\n4 4 3\n"),
           path("low.png"));
    write("out.txt", "0 0 1\n4 0 40000\n0 4 2\n4 4 3\n9 9 1\n");
    click(irregular, "pushButtonOK");
    QCOMPARE(factsOf(irregular.outcome()), QString("Points used 4 of 5, Values cut 1"));
}

void TestAsciiDialogs::theScanOfASecondFileOnlyWidens()
{
    AsciiRegularDialog dialog;
    choose(dialog, write("a.txt", "-3 7 1\n5 9 1\n"), {});
    choose(dialog, write("b.txt", "0 0 1\n1 8 1\n"), {});
    QCOMPARE(textOf(dialog, "lineEditBoundaryLeft"), QStringLiteral("-3"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryTop"), QStringLiteral("9"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryBottom"), QStringLiteral("0"));
    QCOMPARE(valueOf(dialog, "spinBoxWidth"), 9);
    QCOMPARE(valueOf(dialog, "spinBoxHeight"), 10);
}

void TestAsciiDialogs::linesToSkipCountWhenTheFileIsChosen()
{
    const QString file = write("in.txt", "some words here\n10 10 1\n12 12 1\n");
    AsciiRegularDialog unwarned;
    child<QSpinBox>(unwarned, "spinBoxSkip")->setValue(1);
    choose(unwarned, file, {});
    QCOMPARE(textOf(unwarned, "lineEditBoundaryLeft"), QStringLiteral("10"));
    QCOMPARE(rowsOf(unwarned), QStringList());

    AsciiRegularDialog warned;
    choose(warned, file, path("out.png"));
    QCOMPARE(textOf(warned, "lineEditBoundaryLeft"), QStringLiteral("0"));
    QCOMPARE(rowsOf(warned),
             QStringList({"All-zero triple detected at the beginning of the file.",
                          "  Check the number of lines to skip, you specified:",
                          "  \"Skip First 0 Line(s)\"."}));
    click(warned, "pushButtonOK");
    QCOMPARE(rowsOf(warned), QStringList()); // the scan's rows are gone
}

void TestAsciiDialogs::typingIntoTheBoundariesHasNoEffect()
{
    AsciiRegularDialog dialog;
    choose(dialog, write("in.txt", "0 0 1\n1 1 2\n"), path("out.png"));
    auto *const right = child<QLineEdit>(dialog, "lineEditBoundaryRight");
    right->selectAll();
    QTest::keyClicks(right, QStringLiteral("99"));
    QCOMPARE(right->text(), QStringLiteral("99"));
    click(dialog, "pushButtonOK");
    QCOMPARE(ElevationImage(path("out.png")).elevation(1, 1), 512.0);
}

void TestAsciiDialogs::anEmptyFileIsTold()
{
    const QString empty = write("in.txt", "");
    AsciiRegularDialog regular;
    choose(regular, empty, path("out.png"));
    QCOMPARE(rowsOf(regular), QStringList());
    QCOMPARE(textOf(regular, "lineEditBoundaryLeft"), QStringLiteral("2.14748e+09"));
    QCOMPARE(textOf(regular, "lineEditBoundaryTop"), QStringLiteral("-2.14748e+09"));
    QCOMPARE(valueOf(regular, "spinBoxWidth"), 1);
    click(regular, "pushButtonOK");
    QCOMPARE(rowsOf(regular), QStringList({"Not a single valid line encountered.",
                                           "No output file was written."}));
    AsciiIrregularDialog irregular;
    choose(irregular, empty, path("out.png"));
    QCOMPARE(rowsOf(irregular), QStringList("Not a single valid line encountered."));
    click(irregular, "pushButtonOK");
    QCOMPARE(rowsOf(irregular), QStringList("Not a single valid line encountered."));
    QVERIFY(!QFile::exists(path("out.png")));
    QVERIFY(!irregular.isVisible());
    QCOMPARE(m_answers->complaints(), QStringList());
}

void TestAsciiDialogs::aFileThatCannotBeOpenedIsTold()
{
    // A socket has a name that can be chosen, and opens for nobody.
    const QByteArray name = QFile::encodeName(path("in.txt"));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    QVERIFY(std::size_t(name.size()) < sizeof address.sun_path);
    std::copy(name.begin(), name.end(), address.sun_path);
    const int socketHandle = socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(
        bind(socketHandle, reinterpret_cast<const sockaddr *>(&address), sizeof address),
        0);
    AsciiRegularDialog dialog;
    choose(dialog, write("good.txt", "0 0 0\n1 1 1\n4 4 4\n"), path("out.png"));
    QCOMPARE(rowsOf(dialog).size(), 3);
    m_answers->chooseFile(QStringLiteral("Open File"), path("in.txt"));
    m_answers->pressButton(
        QStringLiteral("ASCII Regular Import"),
        QStringLiteral("Could not open file \"%1\".").arg(path("in.txt")),
        QMessageBox::Ok);
    click(dialog, "pushButtonBrowseFromFile");
    close(socketHandle);
    QCOMPARE(rowsOf(dialog), QStringList());
    QCOMPARE(textOf(dialog, "lineEditFromFile"), path("in.txt"));
    QCOMPARE(textOf(dialog, "lineEditBoundaryRight"), QStringLiteral("4"));
    QVERIFY(dialog.isVisible());
    QCOMPARE(m_answers->complaints(), QStringList());
}

void TestAsciiDialogs::aFileThatVanishesClosesTheDialog_data()
{
    QTest::addColumn<bool>("regular");
    QTest::newRow("regular") << true;
    QTest::newRow("irregular") << false;
}

void TestAsciiDialogs::aFileThatVanishesClosesTheDialog()
{
    QFETCH(bool, regular);
    const std::unique_ptr<QDialog> dialog =
        regular ? std::unique_ptr<QDialog>(std::make_unique<AsciiRegularDialog>())
                : std::make_unique<AsciiIrregularDialog>();
    const QString from = write("in.txt", "word\n");
    choose(*dialog, from, path("out.png"));
    const QStringList rows = rowsOf(*dialog);
    QFile::remove(from);
    m_answers->pressButton(regular ? QStringLiteral("ASCII Regular Import")
                                   : QStringLiteral("ASCII Irregular Import"),
                           QStringLiteral("Could not open file \"%1\".").arg(from),
                           QMessageBox::Ok);
    click(*dialog, "pushButtonOK");
    QCOMPARE(rowsOf(*dialog), rows); // only a file that opens clears them
    QVERIFY(!dialog->isVisible());
    QVERIFY(!QFile::exists(path("out.png")));
    QCOMPARE(m_answers->complaints(), QStringList());
}

void TestAsciiDialogs::anOutputThatCannotBeSavedIsTold_data()
{
    QTest::addColumn<bool>("regular");
    QTest::addColumn<QString>("name");
    for (const bool regular : {true, false})
        for (const char *name : {"out.xyz", "out"})
            QTest::addRow("%s, %s", regular ? "regular" : "irregular", name)
                << regular << QString::fromLatin1(name);
}

void TestAsciiDialogs::anOutputThatCannotBeSavedIsTold()
{
    QFETCH(bool, regular);
    QFETCH(QString, name);
    const std::unique_ptr<QDialog> dialog =
        regular ? std::unique_ptr<QDialog>(std::make_unique<AsciiRegularDialog>())
                : std::make_unique<AsciiIrregularDialog>();
    const QString to = m_dir->filePath(name);
    choose(*dialog, write("in.txt", "0 0 1\n5 5 1\n0 4 3\n"), to);
    m_answers->pressButton(regular ? QStringLiteral("ASCII Regular Import")
                                   : QStringLiteral("ASCII Irregular Import"),
                           QStringLiteral("Could not save file \"%1\".").arg(to),
                           QMessageBox::Ok);
    click(*dialog, "pushButtonOK");
    QVERIFY(!dialog->isVisible());
    QVERIFY(!QFile::exists(to));
    QCOMPARE(m_answers->complaints(), QStringList());
}

void TestAsciiDialogs::aFailedTriangulationIsTold()
{
    // Points on a circle, then its centre, which lies within all their spheres.
    QByteArray text;
    for (int i = 0; i < 400; ++i)
        text += QByteArray::number(std::cos(i * 0.7), 'f', 9) + ' ' +
                QByteArray::number(std::sin(i * 0.7), 'f', 9) + " 1\n";
    AsciiIrregularDialog dialog;
    choose(dialog, write("in.txt", text + "0 0 5\n"), path("out.png"));
    m_answers->pressButton(QStringLiteral("Error"),
                           QStringLiteral("Temporary Delaunay storage exceeded."),
                           QMessageBox::Ok);
    m_answers->pressButton(
        QStringLiteral("ASCII Irregular Import"),
        QStringLiteral("The triangulation routine\nreturned an error code: 2."),
        QMessageBox::Ok);
    click(dialog, "pushButtonOK");
    QVERIFY(!dialog.isVisible());
    QVERIFY(!QFile::exists(path("out.png")));
    QCOMPARE(m_answers->complaints(), QStringList());
}

void TestAsciiDialogs::cancelWritesNothing()
{
    AsciiRegularDialog dialog;
    choose(dialog, write("in.txt", gridText()), path("out.png"));
    click(dialog, "pushButtonCancel");
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!QFile::exists(path("out.png")));
}

QTEST_MAIN(TestAsciiDialogs)
#include "test_asciidialogs.moc"
