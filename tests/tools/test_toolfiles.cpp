// The tools from their files: what cannot be read is named, what is stopped gives
// nothing, and sizes that are asked for stay within those of a picture.
#include "support/patience.h"
#include "support/textfile.h"
#include "tools/images.h"
#include "tools/toolfiles.h"

#include <QDir>
#include <QLocale>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <functional>

namespace {

// A tool on its first file, and on its second one where it has two; what became of it.
using Work = std::function<Result<QImage>(const QString &first, const QString &second,
                                          Progress &progress)>;

template <class Outcome, class Take>
Result<QImage> pictureOf(Outcome &&outcome, const Take &take)
{
    if (!outcome)
        return tl::unexpected(outcome.error());
    return take(*outcome);
}

struct Tool {
    const char *name;
    bool hasTwo;
    Work work;
};

const QList<Tool> &tools()
{
    static const QList<Tool> all{
        {"blue 0", false,
         [](const QString &a, const QString &, Progress &p) {
             return changeBlue0File(a, p);
         }},
        {"convolution", true,
         [](const QString &a, const QString &b, Progress &p) {
             return convolveFile(a, b, p);
         }},
        {"mask", true,
         [](const QString &a, const QString &b, Progress &p) {
             return maskFile(a, b, p);
         }},
        {"merge", true,
         [](const QString &a, const QString &b, Progress &p) {
             return mergeFiles(a, b, {}, p);
         }},
        {"rectify", false,
         [](const QString &a, const QString &, Progress &p) {
             return rectifyFile(a, {}, p);
         }},
        {"resample", false,
         [](const QString &a, const QString &, Progress &p) {
             return pictureOf(resampleFile(a, {}, 1.0, p),
                              [](const QImage &image) { return image; });
         }},
        {"gray", false,
         [](const QString &a, const QString &, Progress &p) {
             return pictureOf(elevationFileToGray(a, 1.0, p),
                              [](const GrayPicture &gray) { return gray.picture; });
         }},
        {"elevations", false,
         [](const QString &a, const QString &, Progress &p) {
             return pictureOf(
                 grayFileToElevation(a, p),
                 [](const SummedElevations &sums) { return QImage(sums.image); });
         }},
        {"colours", false,
         [](const QString &a, const QString &, Progress &p) {
             return elevationFileToColor(a, images::row({0xFF000000u, 0xFFFFFFFFu}), {},
                                         p);
         }},
    };
    return all;
}

} // namespace

class TestToolFiles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void filesThatCannotBeReadAreNamed_data();
    void filesThatCannotBeReadAreNamed();
    void stoppedToolsGiveNothing_data() { toolRows(); }
    void stoppedToolsGiveNothing();
    void inputsStayAsTheyWere_data() { toolRows(); }
    void inputsStayAsTheyWere();
    void kernelsThatAreTooLargeAreRefused();
    void sizesKeepTheRatioOrGoByTheirWish();
    void everySizeIsOneThatAPictureMayHave();
    void endsOfAPaletteAreThoseOfTheFileWhereNobodySays();
    void sentencesAreTheSameInEveryLocale();

private:
    static void toolRows()
    {
        QTest::addColumn<int>("tool");
        for (int i = 0; i < tools().size(); ++i)
            QTest::newRow(tools()[i].name) << i;
    }
    [[nodiscard]] QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestToolFiles::initTestCase()
{
    QVERIFY(images::noise(20, 12).save(path("good.png")));
    QVERIFY(images::plain(3, 3, 0xFF818181u).save(path("small.png")));
    QVERIFY(images::plain(200, 100, 0xFF818181u).save(path("large.png")));
    QVERIFY(writeBytes(path("junk.png"), "no picture at all"));
    QVERIFY(writeBytes(path("empty.png"), {}));
    const QByteArray whole = bytesIn(path("good.png"));
    QVERIFY(writeBytes(path("head.png"), whole.left(20))); // its size is missing
    QVERIFY(QDir(m_dir.path()).mkdir("folder.png"));
}

void TestToolFiles::filesThatCannotBeReadAreNamed_data()
{
    QTest::addColumn<int>("tool");
    QTest::addColumn<QString>("bad");
    QTest::addColumn<bool>("isSecond");
    for (int i = 0; i < tools().size(); ++i)
        for (const char *bad :
             {"none.png", "junk.png", "empty.png", "head.png", "folder.png"}) {
            QTest::addRow("%s, %s", tools()[i].name, bad) << i << QString(bad) << false;
            if (tools()[i].hasTwo)
                QTest::addRow("%s, second %s", tools()[i].name, bad)
                    << i << QString(bad) << true;
        }
}
void TestToolFiles::filesThatCannotBeReadAreNamed()
{
    QFETCH(int, tool);
    QFETCH(QString, bad);
    QFETCH(bool, isSecond);
    NoProgress unwatched;
    const auto done = isSecond
                          ? tools()[tool].work(path("good.png"), path(bad), unwatched)
                          : tools()[tool].work(path(bad), path("small.png"), unwatched);
    QVERIFY(!done);
    QVERIFY(!done.error().stopped);
    QVERIFY2(done.error().text.contains('"' + path(bad) + '"'),
             qPrintable(done.error().text));
}

void TestToolFiles::stoppedToolsGiveNothing()
{
    QFETCH(int, tool);
    for (const int steps : {0, 5}) {
        Patience patience(steps);
        const auto done =
            tools()[tool].work(path("good.png"), path("small.png"), patience);
        QVERIFY(!done && done.error().stopped);
        QCOMPARE(done.error().text, QString()); // that is no fault
    }
}

void TestToolFiles::inputsStayAsTheyWere()
{
    QFETCH(int, tool);
    const QByteArray before = bytesIn(path("good.png"));
    NoProgress unwatched;
    const auto done = tools()[tool].work(path("good.png"), path("small.png"), unwatched);
    QVERIFY(done);
    QCOMPARE(done->size(), QSize(20, 12));
    QCOMPARE(bytesIn(path("good.png")), before);
    // Work that is repeated gives the same.
    const auto again = tools()[tool].work(path("good.png"), path("small.png"), unwatched);
    QVERIFY(again && *again == *done);
}

void TestToolFiles::kernelsThatAreTooLargeAreRefused()
{
    const auto kernel = openKernel(path("large.png"));
    QVERIFY(!kernel);
    QVERIFY(kernel.error().text.contains("16384"));
    QVERIFY(openKernel(path("small.png")));
}

void TestToolFiles::sizesKeepTheRatioOrGoByTheirWish()
{
    const QSize source(400, 300);
    const auto sized = [&source](ResampleRequest request) {
        return resampledSize(source, request);
    };
    QCOMPARE(sized({}), source);
    QCOMPARE(sized({.pixelX = 200}), QSize(200, 150));
    QCOMPARE(sized({.pixelY = 600}), QSize(800, 600));
    QCOMPARE(sized({.pixelX = 7, .pixelY = 9}), QSize(7, 9));
    QCOMPARE(sized({.percentX = 50.0}), QSize(200, 150));
    QCOMPARE(sized({.percentX = 50.0, .percentY = 200.0}), QSize(200, 600));
    QCOMPARE(sized({.pixelX = 100, .percentY = 100.0}), QSize(100, 300));
}

void TestToolFiles::everySizeIsOneThatAPictureMayHave()
{
    QRandomGenerator random(15);
    const auto side = [&random] {
        return 1 + int(std::pow(random.generateDouble(), 4) * 40000);
    };
    for (int round = 0; round < 20000; ++round) {
        ResampleRequest request;
        if (random.bounded(2) == 1)
            request.pixelX = 1 + random.bounded(ResampleRequest::MostPixels);
        if (random.bounded(2) == 1)
            request.pixelY = 1 + random.bounded(ResampleRequest::MostPixels);
        if (!request.pixelX && random.bounded(2) == 1)
            request.percentX = random.generateDouble() * ResampleRequest::MostPercent;
        if (!request.pixelY && random.bounded(2) == 1)
            request.percentY = random.generateDouble() * ResampleRequest::MostPercent;
        const QSize source(side(), side());
        const QSize size = resampledSize(source, request);
        const QString what =
            QStringLiteral("of %1 x %2").arg(source.width()).arg(source.height());
        QVERIFY2(size.width() >= 0 && size.width() <= ResampleRequest::MostPixels,
                 qPrintable(what));
        QVERIFY2(size.height() >= 0 && size.height() <= ResampleRequest::MostPixels,
                 qPrintable(what));
        if (request.pixelX)
            QCOMPARE(size.width(), *request.pixelX);
        if (request.pixelY)
            QCOMPARE(size.height(), *request.pixelY);
    }
}

void TestToolFiles::endsOfAPaletteAreThoseOfTheFileWhereNobodySays()
{
    ElevationImage heights(3, 1, QImage::Format_RGB32);
    heights.setElevation(0, 0, 0);
    heights.setElevation(1, 0, 5);
    heights.setElevation(2, 0, 20);
    QVERIFY(heights.save(path("heights.png")));
    const QImage palette = images::row({0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu});
    NoProgress unwatched;
    const auto colours = [&](const PaletteRange &range) {
        const auto done =
            elevationFileToColor(path("heights.png"), palette, range, unwatched);
        QList<QRgb> found;
        for (int x = 0; done && x < done->width(); ++x)
            found << done->pixel(x, 0);
        return found;
    };
    const QList<QRgb> ends{0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu};
    QCOMPARE(colours({}), ends);
    QCOMPARE(colours({.lower = 0}), ends);
    QCOMPARE(colours({.upper = 20}), ends);
    // Told to be above all, the lower end colours everything.
    QCOMPARE(colours({.lower = 20, .upper = 40}), QList<QRgb>(3, 0xFFFF0000u));
    // Zeros that count for nothing lie below the lowest.
    QCOMPARE(colours({.ignoreZeros = true}),
             (QList<QRgb>{0xFFFF0000u, 0xFFFF0000u, 0xFF0000FFu}));
}

void TestToolFiles::sentencesAreTheSameInEveryLocale()
{
    GrayConversion found;
    found.belowCount = 1234567;
    found.aboveCount = 89;
    found.minValue = 0.0;
    found.maxValue = 102.0;
    const QString question = normalizationQuestion(found);
    QVERIFY(question.contains("1234567 pixels below 0") && question.contains("of 2.50."));
    const QString sums = summedElevationsText({-1234.9, 765000.5});
    QVERIFY(sums.contains("between -1234 and 765000"));
    QLocale::setDefault(QLocale(QLocale::German));
    const QStringList there{normalizationQuestion(found),
                            summedElevationsText({-1234.9, 765000.5})};
    QLocale::setDefault(QLocale::c());
    QCOMPARE(there, (QStringList{question, sums}));
}

QTEST_GUILESS_MAIN(TestToolFiles)
#include "test_toolfiles.moc"
