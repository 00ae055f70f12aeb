#include "commands/report.h"

#include <QJsonDocument>
#include <QTest>

class TestReport : public QObject {
    Q_OBJECT

private:
    static Report sample()
    {
        Report report;
        report.add("file", "a.png");
        report.add("columns", 1000000);
        report.add("minimum", 0.1);
        report.add("crs", QJsonValue::Null);
        report.add("approximate", true);
        report.add("gaps", QJsonArray{1, QJsonObject{{"x", 2}}});
        return report;
    }

private slots:
    void linesKeepTheOrderAndLeaveOutWhatHasNoValue()
    {
        QCOMPARE(sample().asText(), "file: a.png\ncolumns: 1000000\nminimum: 0.1\n"
                                    "approximate: yes\ngaps: 1, x 2\n");
    }

    void jsonIsOneObjectInOneLine()
    {
        const QString json = sample().asJson();
        QCOMPARE(json.count('\n'), 1);
        const QJsonObject object = QJsonDocument::fromJson(json.toUtf8()).object();
        QCOMPARE(object, sample().asObject());
        QCOMPARE(object.value("minimum").toDouble(), 0.1);
        QVERIFY(object.value("crs").isNull());
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "test_report.moc"
