// What a scenery without a form holds its values to is what the form does with them.

#include "scene/fieldlimits.h"

#include "document/scenerydelegate.h"
#include "document/scenerymdichild.h"
#include "scene/scenerykeys.h"

#include <QDoubleSpinBox>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

double randomReal(QRandomGenerator &random)
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double Odd[]{0.0,  -0.0,     1e308,      -1e308,    1e-308, 0.005,
                           0.01, -0.0001,  720.005,    Infinity,  100.0,  0.0000005,
                           -1.0, -1e-300,  1000000.0,  -Infinity, 0.125,  999999.995,
                           1.0,  0.000001, 99.9999995, NoNumber,  0.015};
    if (random.bounded(4) == 0)
        return Odd[random.bounded(int(std::size(Odd)))];
    const double size = std::pow(10.0, random.bounded(14) - 7);
    return (random.generateDouble() - 0.4) * size;
}

QString randomText(QRandomGenerator &random)
{
    QString text(random.bounded(20) ? random.bounded(30) : MaxFieldText + 5, 'a');
    for (QChar &c : text)
        c = QChar(random.bounded(1, 0x300));
    return text;
}

SceneryData randomData(QRandomGenerator &random)
{
    const auto flag = [&random] { return random.bounded(2) == 1; };
    SceneryData data;
    for (const SceneryKey &key : sceneryKeys())
        std::visit(
            [&](auto kind) {
                using Value = typename decltype(kind)::Value;
                Value &value = data.*(kind.field);
                if constexpr (std::is_same_v<Value, double>)
                    value = randomReal(random);
                else if constexpr (std::is_same_v<Value, QString>)
                    value = randomText(random);
                else if constexpr (std::is_same_v<Value, bool>)
                    value = flag();
                else
                    value = Value(flag() ? random.bounded(-3, 40000)
                                         : int(random.generate()));
            },
            key.field);
    return data;
}

// Told apart to the bit, and what is no number is like itself.
bool isSame(const SceneryData &a, const SceneryData &b, const SceneryKey &key)
{
    return std::visit(
        [&](auto kind) {
            const auto x = a.*(kind.field);
            const auto y = b.*(kind.field);
            if constexpr (std::is_same_v<decltype(x), const double>)
                return std::memcmp(&x, &y, sizeof x) == 0;
            else
                return x == y;
        },
        key.field);
}

} // namespace

class TestFieldLimits : public QObject {
    Q_OBJECT

private slots:
    void formGivesBackWhatTheLimitsSay()
    {
        SceneryMdiChild view(nullptr, nullptr, nullptr, nullptr, nullptr);
        SceneryDelegate &delegate = view.delegate();
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            const SceneryData data = randomData(random);
            delegate.sceneryData() = data;
            delegate.dataToView();
            delegate.viewToData();
            const SceneryData shown = asShown(data);
            for (const SceneryKey &key : sceneryKeys())
                QVERIFY2(isSame(shown, delegate.sceneryData(), key),
                         qPrintable(
                             QStringLiteral("%1 in round %2").arg(key.name).arg(round)));
        }
    }

    void shownValuesStayAsTheyAre()
    {
        QRandomGenerator random(8);
        for (int round = 0; round < 200; ++round) {
            const SceneryData shown = asShown(randomData(random));
            const SceneryData again = asShown(shown);
            for (const RealLimits &limits : realLimits())
                QVERIFY(again.*limits.field == shown.*limits.field);
            for (const WholeLimits &limits : wholeLimits())
                QCOMPARE(again.*limits.field, shown.*limits.field);
        }
    }

    void everyNumberOfTheFormHasLimits()
    {
        SceneryMdiChild view(nullptr, nullptr, nullptr, nullptr, nullptr);
        QCOMPARE(view.findChildren<QDoubleSpinBox *>().size(),
                 qsizetype(realLimits().size()));
        QCOMPARE(view.findChildren<QSpinBox *>().size(), qsizetype(wholeLimits().size()));
    }
};

QTEST_MAIN(TestFieldLimits)
#include "test_fieldlimits.moc"
