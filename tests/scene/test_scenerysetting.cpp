// Settings of the command line: strict where a file is lenient, and the same otherwise.
#include "scene/fieldlimits.h"
#include "scene/sceneryfiles.h"
#include "scene/scenerykeys.h"
#include "scene/scenerysetting.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

namespace {

// The key whose field this is.
template <class Field> QString nameOf(Field field)
{
    for (const SceneryKey &key : sceneryKeys()) {
        const bool isIt = std::visit(
            [field](auto kind) {
                if constexpr (std::is_same_v<decltype(kind.field), Field>)
                    return kind.field == field;
                else
                    return false;
            },
            key.field);
        if (isIt)
            return key.name;
    }
    return {};
}

// As short as gives back the same number.
QString exactly(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

// A value for which strict and lenient reading cannot differ.
QString randomValue(QRandomGenerator &random, const SceneryKey &key)
{
    const QString name = key.name;
    const auto digits = [&random](int lowest, int highest) {
        return QString::number(random.bounded(lowest, highest + 1));
    };
    if (std::holds_alternative<keykind::Text>(key.field))
        return QStringLiteral(" a=%1, b\t.png").arg(random.generate());
    if (std::holds_alternative<keykind::Colour>(key.field))
        return QStringLiteral("%1").arg(random.bounded(1 << 24), 6, 16, QChar('0'));
    if (std::holds_alternative<keykind::Whole>(key.field))
        return name == "GenauRechnen" ? digits(0, 2) : digits(8, 30000);
    if (std::holds_alternative<keykind::Real>(key.field))
        return name.startsWith("Nebel")    ? digits(1, 999999)
               : name.startsWith("HDatei") ? exactly(random.generateDouble() * 99.0)
                                           : exactly(random.generateDouble());
    return digits(0, 1);
}

} // namespace

class TestScenerySetting : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(QLocale(QLocale::German)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void textIsSplitAtItsFirstEqualsSign_data();
    void textIsSplitAtItsFirstEqualsSign();
    void everyKeyTakesWhatAFileWouldHold();
    void bothEndsOfARangeAreTakenAndNothingBeyond();
    void wrongValuesAreRefusedAndChangeNothing_data();
    void wrongValuesAreRefusedAndChangeNothing();
    void whatWasSetIsStillThereWhenTheFileIsReadBack_data();
    void whatWasSetIsStillThereWhenTheFileIsReadBack();
    void pointsThatAreThereAreChanged_data();
    void pointsThatAreThereAreChanged();
    void pointsThatAreNotThereAreToldByName();
    void onlyKeysOfPointsAreKeysOfPoints_data();
    void onlyKeysOfPointsAreKeysOfPoints();
};

void TestScenerySetting::textIsSplitAtItsFirstEqualsSign_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << "BeobXA=5"
                           << "BeobXA"
                           << "5";
    QTest::newRow("value with one") << "TDateiname=a=b"
                                    << "TDateiname"
                                    << "a=b";
    QTest::newRow("empty value") << "SunTime="
                                 << "SunTime"
                                 << "";
    QTest::newRow("no sign") << "BeobXA"
                             << ""
                             << "";
    QTest::newRow("no key") << "=5"
                            << ""
                            << "";
    QTest::newRow("nothing") << ""
                             << ""
                             << "";
}
void TestScenerySetting::textIsSplitAtItsFirstEqualsSign()
{
    QFETCH(QString, text);
    QFETCH(QString, key);
    QFETCH(QString, value);
    const auto setting = settingOf(text);
    QCOMPARE(bool(setting), !key.isEmpty());
    if (setting) {
        QCOMPARE(setting->key, key);
        QCOMPARE(setting->value, value);
    } else {
        QVERIFY(setting.error().text.startsWith('"' + text + '"'));
    }
}

void TestScenerySetting::everyKeyTakesWhatAFileWouldHold()
{
    QRandomGenerator random(15);
    for (int round = 0; round < 10; ++round)
        for (const SceneryKey &key : sceneryKeys()) {
            const QString value = randomValue(random, key);
            SceneryDocument set;
            set.parameters.AusgabePNG = false; // as in a file that does not name it
            const auto done = applySetting(set, {key.name, value});
            QVERIFY2(done, qPrintable(key.name + '=' + value));
            const auto read = readText((key.name + '=' + value).toUtf8() + '\n');
            QVERIFY(read && read->complaint.isEmpty());
            QVERIFY2(read->document == set, qPrintable(key.name + '=' + value));
        }
}

void TestScenerySetting::bothEndsOfARangeAreTakenAndNothingBeyond()
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    for (const RealLimits &limits : realLimits()) {
        const QString name = nameOf(limits.field);
        const auto takes = [&name](double value) {
            SceneryDocument scenery;
            return bool(applySetting(scenery, {name, exactly(value)}));
        };
        const double lowest = parameterValue(limits, limits.lowest);
        const double highest = parameterValue(limits, limits.highest);
        QVERIFY2(takes(lowest) && takes(highest), qPrintable(name));
        QVERIFY2(!takes(std::nextafter(lowest, -Infinity)), qPrintable(name));
        QVERIFY2(!takes(std::nextafter(highest, Infinity)), qPrintable(name));
    }
    for (const WholeLimits &limits : wholeLimits()) {
        const QString name = nameOf(limits.field);
        const auto takes = [&name](qint64 value) {
            SceneryDocument scenery;
            return bool(applySetting(scenery, {name, QString::number(value)}));
        };
        QVERIFY2(takes(limits.lowest) && takes(limits.highest), qPrintable(name));
        QVERIFY2(!takes(qint64(limits.lowest) - 1), qPrintable(name));
        QVERIFY2(!takes(qint64(limits.highest) + 1), qPrintable(name));
        QVERIFY2(!takes((qint64(1) << 32) + limits.lowest), qPrintable(name));
    }
}

void TestScenerySetting::wrongValuesAreRefusedAndChangeNothing_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("allowed");
    const auto row = [](const char *key, const QString &value, const char *allowed) {
        QTest::addRow("%s=%s", key, qPrintable(value.left(20)))
            << key << value << allowed;
    };
    for (const char *value : {"", "x", "1,5", "nan", "inf", "0x10", "1.5.2", "1 2"})
        row("BeobXA", value, "a number from -1e+06 to 1e+06");
    for (const char *value : {"", "8.5", "7", "32769", "640x480", "1e40"})
        row("AusBreite", value, "a whole number from 8 to 32768");
    row("GenauRechnen", "3", "a whole number from 0 to 2");
    row("GenauRechnen", "-1", "a whole number from 0 to 2");
    for (const char *value : {"", "2", "yes", "01", " 1"}) {
        row("TDateiVerwenden", value, "0 or 1");
        row("Rundflug", value, "0 or 1");
        row("AusgabePNG", value, "0 or 1");
    }
    for (const char *value : {"", "fff", "0000000", "gg0000", "+12345", "#00000", "-1"})
        row("Hintergrund", value, "a colour as bbggrr");
    row("TDateiname", QString(MaxFieldText + 1, 'a'), "at most 32767 characters");
    row("NebelA", "0", "a number from 1e-06 to 1e+06");
    row("SkyLight", "1.5", "a number from 0 to 1");
    row("SkyZenith", "", "a colour as rrggbb");
    row("Sun", "Time", "one of told, angles, time");
    row("Punkt00", "1", "2 whole numbers");
    row("Punkt00", "1,2,3", "2 whole numbers");
    row("Punkt00", "1,", "2 whole numbers");
    row("Punkt00_z", "1.5", "a whole number");
    row("Punkt00_a", "", "a number");
    row("Punkt00_p", "nan", "a number");
    row("cPunkt00", "1,2", "3 whole numbers");
    row("cPunkt00", "1,2,99999999999", "3 whole numbers");
}
void TestScenerySetting::wrongValuesAreRefusedAndChangeNothing()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, allowed);
    SceneryDocument scenery;
    scenery.waypoints = {Waypoint(1, 2, 3, 0.5, 0.25)};
    scenery.controlPoints = {ControlPoint(1, 2, 3, 0.0)};
    const SceneryDocument before = scenery;
    const auto done = applySetting(scenery, {key, value});
    QVERIFY(!done);
    QCOMPARE(
        done.error().text,
        QStringLiteral("%1 takes %2, not \"%3\".").arg(key, allowed, value.left(200)));
    QVERIFY(scenery == before);
}

void TestScenerySetting::whatWasSetIsStillThereWhenTheFileIsReadBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "  a b  ";
    QTest::newRow("equals signs") << "=a==b=";
    QTest::newRow("letters of many scripts")
        << QString::fromUtf8("\u00e4\u4e2d\U0001F3D4");
    QTest::newRow("like a section") << "[Extras]";
    QTest::newRow("longest") << QString(MaxFieldText, 'a');
    // No file can hold these; taken, they would end the value or the whole scenery.
    QTest::newRow("line end") << "a\nBeobXA=5";
    QTest::newRow("empty line") << "a\n\n[Extras]\nWater=1";
    QTest::newRow("carriage return") << "a\r";
}
void TestScenerySetting::whatWasSetIsStillThereWhenTheFileIsReadBack()
{
    QFETCH(QString, name);
    for (const char *key :
         {"TDateiname", "HDateiname", "AusDateiname", "MaskenDateiName"}) {
        SceneryDocument scenery;
        const SceneryDocument before = scenery;
        const auto done = applySetting(scenery, {key, name});
        if (!done) {
            QVERIFY(name.contains('\n') || name.contains('\r'));
            QVERIFY2(done.error().text.startsWith(QLatin1String(key)),
                     qPrintable(done.error().text));
            QVERIFY(scenery == before);
            continue;
        }
        const auto read = readText(written(scenery).toUtf8());
        QVERIFY(read);
        QCOMPARE(read->complaint, QString());
        QVERIFY(read->document == scenery);
    }
}

void TestScenerySetting::pointsThatAreThereAreChanged_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line"); // of the file afterwards
    const auto row = [](const char *text, const char *line) {
        QTest::newRow(text) << text << line;
    };
    row("Punkt06=-7,8", "Punkt06=-7,8");
    row("Punkt00_z=-2147483648", "Punkt00_z=-2147483648");
    row("Punkt05_i=1e3", "Punkt05_i=1000");
    row("Punkt03_a=0.5", "Punkt03_a=0.5");
    row("Punkt03_p=-.25", "Punkt03_p=-0.25");
    row("cPunkt03=1,-2,3", "cPunkt03=1,-2,3");
}
void TestScenerySetting::pointsThatAreThereAreChanged()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    SceneryDocument scenery;
    scenery.waypoints = QList<Waypoint>(7);
    scenery.controlPoints = QList<ControlPoint>(4);
    const QStringList before = written(scenery).split('\n');
    QVERIFY(applySetting(scenery, settingOf(text).value()));
    const QStringList after = written(scenery).split('\n');
    QVERIFY(after.contains(line));
    int changed = 0;
    QCOMPARE(after.size(), before.size());
    for (qsizetype i = 0; i < after.size(); ++i)
        changed += after[i] != before[i];
    QCOMPARE(changed, 1);
}

void TestScenerySetting::pointsThatAreNotThereAreToldByName()
{
    SceneryDocument scenery;
    scenery.waypoints = QList<Waypoint>(7);
    const SceneryDocument before = scenery;
    for (const QString key : {"Punkt07", "Punkt65535_z", "Punkt99999", "cPunkt00"}) {
        const auto done = applySetting(scenery, {key, "1,2"});
        QVERIFY(!done);
        QCOMPARE(done.error().text, key + ": the scenery has no such point.");
    }
    for (const QString key : {"Punkt7", "Punkt07_x", "punkt07", "cPunkt00_z", "", "Nope",
                              "beobxa", "BeobXA ", "[Param]"}) {
        const auto done = applySetting(scenery, {key, "1"});
        QVERIFY(!done);
        QCOMPARE(done.error().text, QStringLiteral("There is no key %1.").arg(key));
    }
    QVERIFY(scenery == before);
}

void TestScenerySetting::onlyKeysOfPointsAreKeysOfPoints_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("is");
    for (const char *key : {"Punkt00", "Punkt00_z", "Punkt12345_p", "cPunkt99"})
        QTest::newRow(key) << key << true;
    for (const char *key : {"Punkt0", "Punkt00_", "Punkt00_zz", "cPunkt00_z", "aPunkt00",
                            "Punkt123456", "Punkt-1", "Punkt00 ", "Punkt00\n", "BeobXA"})
        QTest::newRow(key) << key << false;
}
void TestScenerySetting::onlyKeysOfPointsAreKeysOfPoints()
{
    QFETCH(QString, key);
    QFETCH(bool, is);
    QCOMPARE(isPointKey(key), is);
}

QTEST_APPLESS_MAIN(TestScenerySetting)
#include "test_scenerysetting.moc"
