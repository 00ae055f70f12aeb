#include "terrainbatch/terrainfixture.h"

#include "raster/elevationimage.h"
#include "raster/imagefile.h"
#include "tools/images.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>

#include <csignal>

namespace {

QJsonObject objectOf(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

} // namespace

/// The program as its user sees it: what it says where, and what it ends with.
class TestZephrantTerrain : public QObject, private TerrainFixture {
    Q_OBJECT

private slots:
    void init()
    {
        QSettings("Kolvenar", "Zephrant").clear();
        makeFiles();
    }

    void helpAndVersionAreAnswered()
    {
        const TerrainRun version = terrain({"--version"});
        QCOMPARE(version.status, 0);
        QVERIFY(QRegularExpression("^zephrant-terrain \\d[\\d.]*\n$")
                    .match(version.out)
                    .hasMatch());
        QCOMPARE(terrain({"mask", "--version"}).out, version.out);
        const TerrainRun help = terrain({"--help"});
        QCOMPARE(help.status, 0);
        QVERIFY(help.out.contains("\nExamples:\n") && help.err.isEmpty());
        const QStringList commands{"usgs-dem",
                                   "binary-dem",
                                   "ascii-regular",
                                   "ascii-irregular",
                                   "sdts",
                                   "japan-dem",
                                   "elevation-to-color",
                                   "elevation-to-gray",
                                   "gray-to-elevation",
                                   "change-blue-0",
                                   "convolution",
                                   "mask",
                                   "resample",
                                   "rectify",
                                   "merge"};
        for (const QString &command : commands) {
            QVERIFY2(help.out.contains("\n  " + command + "\n"), qPrintable(command));
            const TerrainRun one = terrain({command, "--help"});
            QCOMPARE(one.status, 0);
            QVERIFY2(one.out.contains("\nExamples:\n"), qPrintable(command));
        }
        const QString fields = terrain({"ascii-regular", "--help"}).out;
        QVERIFY(fields.contains("default: found in the file"));
        QVERIFY(fields.contains("a whole number from 0 to 99."));
    }

    void wrongUsageIsNamedAndWritesNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        const auto row = [](const char *name, const QStringList &arguments,
                            const QString &named) {
            QTest::newRow(name) << arguments << named;
        };
        row("no command", {}, "No command");
        row("no such command", {"paint"}, "paint");
        row("an option for a command", {"--quiet"}, "--quiet");
        row("no TO", {"mask", "--mask-file", "mask.png", "dem.png"}, "TO");
        row("no mask", {"mask", "dem.png", "to.png"}, "--mask-file");
        row("unknown option", {"merge", "--fast", "a", "b", "to.png"}, "--fast");
        row("decimal comma",
            {"elevation-to-gray", "--z-scale", "1,5", "dem.png", "to.png"}, "--z-scale");
        row("decimals", {"elevation-to-gray", "--z-scale=1.555", "dem.png", "to.png"},
            "--z-scale");
        row("range", {"ascii-regular", "--skip", "100", "grid.txt", "to.png"}, "--skip");
        row("exclusive",
            {"merge", "--add", "--multiply", "dem.png", "photo.png", "to.png"},
            "--multiply");
        row("two kinds for an axis",
            {"resample", "--pixel-x", "9", "--percent-x", "50", "dem.png", "to.png"},
            "--pixel-x");
        row("unit", {"sdts", "--output-units", "ells", "TR01CATD.DDF", "to.png"},
            "--output-units");
        row("corner", {"rectify", "--corner2", "1,2,3", "photo.png", "to.png"},
            "--corner2");
    }
    void wrongUsageIsNamedAndWritesNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        for (const char *locale : {"LC_ALL=C.UTF-8", "LC_ALL=de_DE.UTF-8"}) {
            const TerrainRun run = terrain(arguments, {locale});
            QCOMPARE(run.status, 2);
            QVERIFY2(run.err.contains(named), qPrintable(run.err));
            QVERIFY(run.out.isEmpty());
        }
        QVERIFY(!files().contains("to.png"));
    }

    void noInputIsOverwritten_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("kept");
        QTest::newRow("FROM") << QStringList{"change-blue-0", "dem.png", "dem.png"}
                              << "dem.png";
        QTest::newRow("the mask")
            << QStringList{"mask", "--mask-file", "mask.png", "photo.png", "./mask.png"}
            << "mask.png";
        QTest::newRow("the second of two")
            << QStringList{"merge", "photo.png", "dem.png", "dem.png"} << "dem.png";
        QTest::newRow("a header") << QStringList{"binary-dem", "--header-file",
                                                 "raster.hdr", "raster.bil", "raster.hdr"}
                                  << "raster.hdr";
    }
    void noInputIsOverwritten()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, kept);
        const QByteArray before = bytesOf(kept);
        QCOMPARE(terrain(arguments).status, 2);
        QVERIFY(bytesOf(kept) == before);
    }

    void failuresKeepAnOlderFile_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("told");
        const auto row = [](const char *name, const QStringList &arguments,
                            const QString &told) {
            QTest::newRow(name) << arguments << told;
        };
        row("no FROM", {"mask", "--mask-file", "mask.png", "none.png"},
            "Could not open file \"none.png\".");
        row("no mask", {"mask", "--mask-file", "none.png", "photo.png"},
            "Could not open file \"none.png\".");
        row("second of two", {"merge", "photo.png", "none.png"},
            "Could not load image file \"none.png\".");
        row("one of several", {"usgs-dem", "west.dem", "none.dem", "east.dem"},
            "Could not open file \"none.dem\".");
        row("junk", {"resample", "grid.txt"}, "Could not load image file \"grid.txt\".");
        row("no header", {"binary-dem", "--header-file", "none.hdr", "raster.bil"},
            "Could not open file \"none.hdr\".");
        row("faults of a header",
            {"binary-dem", "--header-file", "grid.txt", "raster.bil"},
            "ROWS - Number of rows missing or invalid. Valid: 16 to 32768.\n");
        row("projected header", {"binary-dem", "--header-file", "utm.hdr", "raster.bil"},
            "The header \"utm.hdr\" gives 400000 for --upper-left-corner-x, which lies "
            "outside of -360 to 360.");
        row("data that cannot be located",
            {"binary-dem", "--header-file", "raster.hdr", "tiff.bil"},
            "Proceed anyway?\nNo; --proceed-anyway answers Yes.\n");
        row("no points", {"ascii-regular", "empty.txt"},
            "Not a single valid line encountered.\nNo output file was written.\n");
        row("no points at all", {"ascii-irregular", "empty.txt"},
            "Not a single valid line encountered.\n");
        row("no catalog", {"sdts", "none.ddf"}, "Could not open file \"none.ddf\".");
        row("junk for a catalog", {"sdts", "grid.txt"}, "Could not create output image.");
        row("junk for a sheet", {"japan-dem", "empty.txt"},
            "Could not read the first 6 bytes of \"empty.txt\".");
        row("too large a kernel",
            {"convolution", "--kernel-file", "large.png", "dem.png"},
            "The kernel file \"large.png\" is too large.");
        row("a size of nothing", {"resample", "--pixel-x", "0", "dem.png"},
            "Could not create output file.");
    }
    void failuresKeepAnOlderFile()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, told);
        write("empty.txt", {});
        write("tiff.bil", QByteArray("II*\0", 4) + QByteArray(100, 'x'));
        write("utm.hdr", "nrows 4\nncols 5\nnbits 8\nulxmap 400000\nulymap 2\nxdim 0.5\n"
                         "ydim 0.5\n");
        QVERIFY(saveImageFile(images::noise(129, 128), path("large.png")));
        write("to.png", "older");
        const QStringList before = files();
        const TerrainRun run = terrain(arguments << "to.png");
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.contains(told), qPrintable(run.err));
        QVERIFY2(run.out.isEmpty(), qPrintable(run.out));
        QCOMPARE(bytesOf("to.png"), "older");
        QCOMPARE(files(), before);
    }

    void whatCannotBeSavedIsTold()
    {
        for (const char *to : {"no/folder.png", "to.xyz"}) {
            const TerrainRun run = terrain({"change-blue-0", "dem.png", to});
            QCOMPARE(run.status, 1);
            QVERIFY(run.err.startsWith(QString("Could not save file \"%1\".\n").arg(to)));
        }
    }

    void questionsAreAnsweredByOptions()
    {
        const TerrainRun no = terrain({"elevation-to-gray", "dem.png", "no.png"});
        QCOMPARE(no.status, 0);
        QVERIFY(no.err.contains("Normalize?\nNo; --normalize answers Yes.\n"));
        const TerrainRun yes =
            terrain({"elevation-to-gray", "--normalize", "dem.png", "yes.png"});
        QCOMPARE(yes.status, 0);
        QVERIFY(yes.err.contains("Normalize?\nYes.\n"));
        QVERIFY(bytesOf("no.png") != bytesOf("yes.png"));
        write("tiff.bil", QByteArray("II*\0", 4) + QByteArray(100, 'x'));
        const TerrainRun on = terrain({"binary-dem", "--proceed-anyway", "--header-file",
                                       "raster.hdr", "tiff.bil", "on.png"});
        QCOMPARE(on.status, 0);
        QVERIFY(files().contains("on.png"));
        const QRegularExpression jump("Suspicious elevation value");
        QCOMPARE(terrain({"usgs-dem", "jumps.dem", "a.png"}).err.count(jump), 1);
        QCOMPARE(terrain({"usgs-dem", "--continue-checking", "jumps.dem", "a.png"})
                     .err.count(jump),
                 4);
    }

    void messagesAndRowsGoToStandardError()
    {
        QCOMPARE(terrain({"japan-dem", "sheet.mem", "to.png"}).err,
                 "16 non-zero elevations found.\n");
        QVERIFY(terrain({"gray-to-elevation", "photo.png", "to.png"})
                    .err.startsWith("Conversion finished.\nElevation values between "));
        QVERIFY(
            terrain({"binary-dem", "--header-file", "raster.hdr", "raster.bil", "to.png"})
                .err.startsWith("Range of elevations written to the output file:\n"));
        // The row of the scan, then that of the conversion.
        write("rows.txt", "0 0 0\n1 1 5\n2 2 6\nx y\n");
        QCOMPARE(terrain({"ascii-regular", "rows.txt", "to.png"}).err,
                 "All-zero triple detected at the beginning of the file.\n"
                 "  Check the number of lines to skip, you specified:\n"
                 "  \"Skip First 0 Line(s)\".\n"
                 "Line 3: only two items found.\n");
    }

    void quietTellsErrorsOnly()
    {
        write("rows.txt", "0 0 0\n1 1 5\n2 2 6\nx y\n");
        const TerrainRun good =
            terrain({"ascii-irregular", "--quiet", "rows.txt", "to.png"});
        QCOMPARE(good.status, 0);
        QCOMPARE(good.out + good.err, "");
        const TerrainRun bad =
            terrain({"mask", "--quiet", "--mask-file", "mask.png", "none.png", "to.png"});
        QCOMPARE(bad.status, 1);
        QCOMPARE(bad.err, "Could not open file \"none.png\".\n");
    }

    void standardOutputHoldsTheReportAlone_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QSize>("size");
        const auto row = [](const char *name, const QStringList &arguments, QSize size) {
            QTest::newRow(name) << arguments << size;
        };
        row("irregular", {"ascii-irregular", "points.txt"}, {512, 512});
        row("header", {"binary-dem", "--header-file", "raster.hdr", "raster.bil"},
            {4, 3});
        row("transfer", {"sdts", "TR01CATD.DDF"}, {5, 4});
        row("tool", {"resample", "dem.png"}, {23, 17});
    }
    void standardOutputHoldsTheReportAlone()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QSize, size);
        const TerrainRun run = terrain(arguments + QStringList{"--json", "to.png"});
        QCOMPARE(run.status, 0);
        QJsonParseError fault;
        QVERIFY(QJsonDocument::fromJson(run.out.toUtf8(), &fault).isObject());
        QCOMPARE(fault.error, QJsonParseError::NoError);
        const QJsonObject report = objectOf(run.out);
        QCOMPARE(report["file"].toString(), "to.png");
        QCOMPARE(QSize(report["columns"].toInt(), report["rows"].toInt()), size);
        const auto [lowest, highest] = ElevationImage(path("to.png")).elevationRange();
        QCOMPARE(report["minimum"].toDouble(), lowest);
        QCOMPARE(report["maximum"].toDouble(), highest);
        QVERIFY(terrain(arguments << "to.png").out.startsWith("file: to.png\ncolumns: "));
    }

    void pointsAndCutsAreReported()
    {
        const QJsonObject points =
            objectOf(terrain({"ascii-irregular", "--json", "--nodal-point-estimate", "20",
                              "points.txt", "to.png"})
                         .out);
        QCOMPARE(points["pointsRead"].toInt(), 20);
        QCOMPARE(points["pointsUsed"].toInt(), 20);
        const QJsonObject gray =
            objectOf(terrain({"elevation-to-gray", "--json", "dem.png", "to.png"}).out);
        int cut = 0;
        for (int y = 0; y < 17; ++y)
            for (int x = 0; x < 23; ++x) {
                const int e = 17 * x - 5 * y - 20;
                cut += e < 0 || e > 255 ? 1 : 0;
            }
        QCOMPARE(gray["cut"].toInt(), cut);
    }

    void theUnitOfTheUserCountsAndSettingsStay()
    {
        QSettings settings("Kolvenar", "Zephrant");
        settings.setValue("userDefinedUnitName", "Fathoms");
        settings.setValue("userDefinedUnitScale", 1828.8);
        settings.sync();
        const auto stored = [&settings] {
            QFile file(settings.fileName());
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray before = stored();
        QVERIFY(before.contains("Fathoms"));
        const TerrainRun run = terrain(
            {"sdts", "--json", "--output-units", "Fathoms", "TR01CATD.DDF", "to.png"});
        QCOMPARE(run.status, 0);
        QCOMPARE(objectOf(run.out)["maximum"].toDouble(), 221.0); // 404 m
        QCOMPARE(
            terrain({"rectify", "--corner1", "1,2,3,4", "photo.png", "r.png"}).status, 0);
        QCOMPARE(stored(), before);
    }

    void aStoppedRunLeavesWhatWasThere_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
    }
    void aStoppedRunLeavesWhatWasThere()
    {
        QFETCH(int, signal);
        QVERIFY(saveImageFile(images::noise(1600, 1600), path("wide.png")));
        QVERIFY(saveImageFile(images::noise(48, 48), path("heavy.png")));
        write("to.png", "older");
        const QStringList before = files();
        QProcess program;
        program.setWorkingDirectory(path("."));
        program.setReadChannel(QProcess::StandardError);
        program.start(TERRAIN_PROGRAM, {"convolution", "--kernel-file", "heavy.png",
                                        "wide.png", "to.png"});
        QString told;
        while (!told.contains("10 %\n") && program.waitForReadyRead(60000))
            told += QString::fromLocal8Bit(program.readAllStandardError());
        QVERIFY2(told.startsWith("10 %\n"), qPrintable(told)); // the tenths as they pass
        QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
        QVERIFY(program.waitForFinished(30000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 130);
        told += QString::fromLocal8Bit(program.readAllStandardError());
        QVERIFY(told.endsWith("Stopped.\n"));
        QCOMPARE(program.readAllStandardOutput(), "");
        QCOMPARE(bytesOf("to.png"), "older");
        QCOMPARE(files(), before);
    }
};

QTEST_GUILESS_MAIN(TestZephrantTerrain)
#include "test_zephrant_terrain.moc"
