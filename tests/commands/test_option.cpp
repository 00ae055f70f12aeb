#include "commands/option.h"

#include <QTest>

class TestOption : public QObject {
    Q_OBJECT

private slots:
    void valuesAreTakenOrNamed_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("taken");
        QTest::newRow("a whole number") << "5" << true;
        QTest::newRow("with decimals") << "1.25" << true;
        QTest::newRow("no whole part") << ".5" << true;
        QTest::newRow("no decimals behind the point") << "5." << true;
        QTest::newRow("negative") << "-2.5" << true;
        QTest::newRow("with a plus") << "+2.5" << true;
        QTest::newRow("with an exponent") << "1.25e1" << true;
        QTest::newRow("least") << "-20" << true;
        QTest::newRow("greatest") << "20.00" << true;
        QTest::newRow("too small") << "-20.01" << false;
        QTest::newRow("too large") << "20.01" << false;
        QTest::newRow("too many decimals") << "1.255" << false;
        QTest::newRow("too many by the exponent") << "1e-3" << false;
        QTest::newRow("decimal comma") << "1,5" << false;
        QTest::newRow("thousands") << "1 000" << false;
        QTest::newRow("blank before") << " 1" << false;
        QTest::newRow("line feed behind") << "1\n" << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("a point alone") << "." << false;
        QTest::newRow("infinite") << "inf" << false;
        QTest::newRow("no number") << "nan" << false;
        QTest::newRow("hexadecimal") << "0x10" << false;
        QTest::newRow("beyond a double") << "1e999" << false;
        QTest::newRow("other digits") << QString::fromUtf8("\u0663") << false;
    }
    void valuesAreTakenOrNamed()
    {
        QFETCH(QString, value);
        QFETCH(bool, taken);
        const Option scale{.name = "z-scale",
                           .kind = OptionKind::Real,
                           .lowest = -20,
                           .highest = 20,
                           .decimals = 2};
        const QString complaint = complaintOf(scale, value);
        QCOMPARE(complaint.isEmpty(), taken);
        if (!taken)
            QCOMPARE(complaint, "--z-scale takes a number from -20 to 20 with at most 2 "
                                "decimals, not \"" +
                                    value + "\".");
    }

    void severalNumbersAreToldBeforeTheirRange()
    {
        Option cell{.name = "cell", .kind = OptionKind::Real, .numbers = 2};
        QCOMPARE(complaintOf(cell, "1,2"), QString());
        QCOMPARE(complaintOf(cell, "1"),
                 "--cell takes 2 numbers, with commas between, not \"1\".");
        cell.lowest = 0;
        cell.highest = 9;
        QCOMPARE(complaintOf(cell, "1,10"),
                 "--cell takes 2 numbers, with commas between, from 0 to 9, not "
                 "\"1,10\".");
    }

    void wholeNumbersAreWhole_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("taken");
        QTest::newRow("least") << "-9999" << true;
        QTest::newRow("greatest") << "100" << true;
        QTest::newRow("below") << "-10000" << false;
        QTest::newRow("decimals") << "5.0" << false;
        QTest::newRow("exponent") << "1e1" << false;
        QTest::newRow("beyond any integer") << "99999999999999999999" << false;
    }
    void wholeNumbersAreWhole()
    {
        QFETCH(QString, value);
        const Option option{.name = "void-value",
                            .kind = OptionKind::Integer,
                            .lowest = -9999,
                            .highest = 100};
        QTEST(complaintOf(option, value).isEmpty(), "taken");
    }

    void otherKindsAreCheckedToo_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("taken");
        const auto row = [](const char *name, OptionKind kind, const char *value,
                            bool taken) {
            QTest::newRow(name) << static_cast<int>(kind) << value << taken;
        };
        row("corner", OptionKind::Integer, "1,2,3", true);
        row("corner of two", OptionKind::Integer, "1,2", false);
        row("corner of four", OptionKind::Integer, "1,2,3,4", false);
        row("corner with a gap", OptionKind::Integer, "1,,3", false);
        row("size", OptionKind::Size, "100x8", true);
        row("size too small", OptionKind::Size, "100x0", false);
        row("size of three sides", OptionKind::Size, "1x2x3", false);
        row("size without a side", OptionKind::Size, "100x", false);
        row("size with a sign", OptionKind::Size, "+5x5", false);
        row("choice", OptionKind::Choice, "sun", true);
        row("choice in capitals", OptionKind::Choice, "Sun", false);
        row("file", OptionKind::InputFile, "a.png", true);
        row("no file", OptionKind::OutputFile, "", false);
    }
    void otherKindsAreCheckedToo()
    {
        QFETCH(int, kind);
        QFETCH(QString, value);
        const Option option{.name = "x",
                            .kind = static_cast<OptionKind>(kind),
                            .lowest = 1,
                            .highest = 100,
                            .choices = {"none", "sun"},
                            .numbers = 3};
        QTEST(complaintOf(option, value).isEmpty(), "taken");
    }
};

QTEST_GUILESS_MAIN(TestOption)
#include "test_option.moc"
