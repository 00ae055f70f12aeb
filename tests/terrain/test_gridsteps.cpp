#include "terrain/gridsteps.h"

#include <QTest>

#include <cmath>
#include <random>

namespace {

// Numbers as a text with so many decimals has them.
std::vector<double> rounded(double first, double step, int count, int decimals)
{
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(QString::number(first + i * step, 'f', decimals).toDouble());
    return values;
}

std::vector<double> without(std::vector<double> values, std::initializer_list<int> gone)
{
    for (const int i : gone)
        values[std::size_t(i)] = std::nan("");
    std::erase_if(values, [](double v) { return std::isnan(v); });
    return values;
}

} // namespace

class TestGridSteps : public QObject {
    Q_OBJECT

private slots:
    void evenStepsAreFound_data()
    {
        QTest::addColumn<QList<double>>("values");
        QTest::addColumn<double>("step");
        QTest::addColumn<int>("count");
        const auto row = [](const char *name, const std::vector<double> &values,
                            double step, int count) {
            QTest::newRow(name)
                << QList<double>(values.begin(), values.end()) << step << count;
        };
        row("whole", {10, 40, 70, 100}, 30, 4);
        row("two", {10, 40}, 30, 2);
        row("tenths", {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7}, 0.1, 7);
        row("some missing", {0, 30, 90, 120, 3000}, 30, 101);
        row("arc seconds, rounded", rounded(6.0, 1 / 1200.0, 1201, 6), 1 / 1200.0, 1201);
        row("step as text", rounded(6.0, 0.000833333, 6001, 9), 0.000833333, 6001);
        row("arc seconds, missing",
            without(rounded(6.0, 1 / 3600.0, 3601, 7), {1, 2, 3, 1000, 3000}), 1 / 3600.0,
            3601);
        row("noise", {0, 30.000001, 29.999999, 60, 60.000002, 90.000001}, 30.00000033, 4);
        row("large numbers", rounded(5412345.5, 0.5, 4000, 1), 0.5, 4000);
    }
    void evenStepsAreFound()
    {
        QFETCH(QList<double>, values);
        QFETCH(double, step);
        QFETCH(int, count);
        std::sort(values.begin(), values.end());
        const auto steps =
            evenSteps(std::vector<double>(values.begin(), values.end()), 0.0);
        QVERIFY(steps);
        QCOMPARE(steps->count, count);
        QVERIFY2(std::fabs(steps->step - step) < 1e-6 * step,
                 qPrintable(QString::number(steps->step, 'g', 17)));
        for (const double value : values)
            QVERIFY(std::fabs(steps->first + double(steps->indexOf(value)) * steps->step -
                              value) < 0.01 * step);
    }

    void roundStepsAreExact()
    {
        QCOMPARE(evenSteps({0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7}, 0.0)->step, 0.1);
        QCOMPARE(evenSteps(rounded(440720, 60, 150, 3), 0.0)->step, 60.0);
        QCOMPARE(evenSteps(rounded(6.0, 0.000833333, 1000, 9), 0.0)->step, 0.000833333);
    }

    void unevenOnesHaveNone()
    {
        std::mt19937 random(7);
        std::vector<double> values;
        for (int i = 0; i < 1000; ++i)
            values.push_back(double(random()) / 1000.0 + 0.0001 * double(random() % 997));
        std::sort(values.begin(), values.end());
        const auto steps = evenSteps(values, 0.0);
        // Text has whole steps after all, but far more of them than values.
        QVERIFY(!steps || steps->count > 100 * 1000);
        QVERIFY(!evenSteps({0, 1, std::sqrt(2.0), 3.1, 4.4, 17.3}, 0.0));
        QVERIFY(!evenSteps({5}, 0.0));
        QVERIFY(!evenSteps({}, 0.0));
    }

    void differentValuesAreCollected()
    {
        AxisValues values;
        QVERIFY(values.isEmpty());
        for (int row = 0; row < 50; ++row)
            for (int i = 0; i < 5000; ++i)
                values.add(double(i % 2 == 0 ? i : 5000 - i) - 100.0);
        QCOMPARE(values.lowest(), -100.0);
        QCOMPARE(values.highest(), 4899.0);
        const std::vector<double> sorted = values.sorted();
        QCOMPARE(sorted.size(), std::size_t(5000));
        QCOMPARE(sorted.front(), -100.0);
        QCOMPARE(values.blur(), 0.0);
    }

    void tooManyValuesAreBlurred()
    {
        std::mt19937_64 random(3);
        AxisValues values;
        for (int i = 0; i < 3000000; ++i)
            values.add(double(random() % 1000) * 30.0 +
                       double(random() % 1000003) * 1e-9);
        QVERIFY(values.blur() > 0.0);
        QVERIFY(values.blur() < 0.001);
        const auto steps = evenSteps(values.sorted(), values.blur());
        QVERIFY(steps);
        QCOMPARE(steps->count, 1000);
        QVERIFY(std::fabs(steps->step - 30.0) < 1e-4);
    }
};

QTEST_GUILESS_MAIN(TestGridSteps)
#include "test_gridsteps.moc"
