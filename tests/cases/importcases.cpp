#include "cases/importcases.h"

#include "cases/casefile.h"
#include "importers/asciiirregular.h"
#include "importers/asciiregular.h"
#include "importers/bindemconversion.h"
#include "importers/bindemheader.h"
#include "importers/japandem.h"
#include "importers/plaindelaunay.h"
#include "importers/scantriangles.h"
#include "importers/sdtsconversion.h"
#include "importers/triangulate.h"
#include "importers/usgsdemimport.h"
#include "support/standardoutput.h"

#include <QBuffer>
#include <QDir>
#include <QMap>
#include <QTemporaryDir>

#include <iostream>
#include <sstream>

namespace {

// An open device with the bytes of a section.
class Input : public QBuffer {
public:
    Input(const CaseFile &file, const QString &section, OpenMode mode = ReadOnly)
    {
        setData(file.bytes(section));
        open(mode);
    }
};

QString asciiRegularCase(const CaseFile &file)
{
    AsciiRegularOptions options;
    options.width = file.integer("width");
    options.height = file.integer("height");
    options.skip = file.integer("skip");
    options.zScale = file.number("z-scale", 1.0);
    Input in(file, "input");
    NoProgress unwatched;
    (void)scanTextMesh(in, options.skip, options.boundaries, unwatched);
    in.seek(0);
    const Result<AsciiRegularMesh> mesh = convertAsciiRegular(in, options, unwatched);
    return mesh->hasPoints ? file.differenceOfElevations(mesh->image)
                           : mesh->rows.join(' ');
}

QString asciiIrregularCase(const CaseFile &file)
{
    AsciiIrregularOptions options;
    options.width = file.integer("width");
    options.height = file.integer("height");
    options.zScale = file.number("z-scale", 1.0);
    options.nodalPointEstimate = file.integer("points");
    Input in(file, "input");
    NoProgress unwatched;
    (void)scanTextMesh(in, options.skip, options.boundaries, unwatched);
    in.seek(0);
    Result<ScatteredMesh> mesh = readScatteredPoints(in, options, unwatched);
    if (!mesh || mesh->scattered.count == 0)
        return mesh ? mesh->rows.join(' ') : mesh.error().text;
    restartGenerator();
    DelaunayResult<ElevationImage> image;
    standardOutputOf(
        [&] { image = fillScatteredPoints(mesh->scattered, options, unwatched); });
    return image ? file.differenceOfElevations(*image)
                 : "code " + QString::number(image.error().code);
}

QString scanTrianglesCase(const CaseFile &file)
{
    ElevationImage image(file.integer("width"), file.integer("height"),
                         QImage::Format_RGB888);
    image.clear(0xFF000000u);
    const QList<double> c = file.numbers("triangles");
    const QByteArray lines = standardOutputOf([&] {
        for (qsizetype i = 0; i + 8 < c.size(); i += 9)
            scanOneTriangle(c[i], c[i + 1], c[i + 2], c[i + 3], c[i + 4], c[i + 5],
                            c[i + 6], c[i + 7], c[i + 8], &image);
    });
    if (file.has("output") && lines != file.bytes("output"))
        return "other lines:\n" + QString::fromLatin1(lines);
    return file.differenceOfElevations(image);
}

QString delaunayCase(const CaseFile &file)
{
    Cloud<2> cloud;
    const QList<double> numbers = file.numbers("points");
    for (qsizetype i = 0; i + 1 < numbers.size(); i += 2)
        cloud.push_back({numbers[i], numbers[i + 1]});
    restartGenerator();
    const auto triangles = triangulate<2>(cloud).triangles;
    restartGenerator();
    PlainDelaunay<2> plain(cloud);
    if (plain.run() != 0 || plain.triangles != triangles)
        return "not what the plain walk gives";
    QByteArray list;
    for (const auto &[a, b, c] : triangles)
        list += QByteArray::number(a) + ' ' + QByteArray::number(b) + ' ' +
                QByteArray::number(c) + '\n';
    return list == file.bytes("expected") ? QString() : "list:\n" + QString(list);
}

QString japanDemCase(const CaseFile &file)
{
    Input in(file, "input", QIODevice::ReadOnly | QIODevice::Text);
    NoProgress unwatched;
    const auto dem = convertJapanDem(in, file.integer("void"), "input", unwatched);
    return dem ? file.differenceOfElevations(dem->image) : dem.error().text;
}

QString binaryDemCase(const CaseFile &file)
{
    class NoQuestions : public BinDemQuestions {
        bool proceedWithoutKeyword() override { return false; }
    };
    BinDemHeader header;
    Input headerText(file, "header");
    header.readEntries(headerText);
    BinDemOptions options;
    options.upperLeftX = header.upperLeftX;
    options.upperLeftY = header.upperLeftY;
    options.extentX = file.number("extent-x");
    options.extentY = file.number("extent-y");
    options.zScale = file.number("z-scale", 1.0);
    Input data(file, "data");
    NoQuestions questions;
    NoProgress unwatched;
    const auto dem = convertBinDem(data, header, options, questions, unwatched);
    return dem ? file.differenceOfElevations(dem->image)
               : "not converted: " + header.faults();
}

// Writes sections into a folder, each as a file of its name.
bool writeFiles(const CaseFile &file, const QTemporaryDir &folder,
                const QStringList &sections)
{
    for (const QString &section : sections) {
        QFile out(folder.filePath(section));
        if (!file.has(section) || !out.open(QIODevice::WriteOnly) ||
            out.write(file.bytes(section)) < 0)
            return false;
    }
    return true;
}

QString sdtsCase(const CaseFile &file)
{
    const QTemporaryDir folder;
    if (!writeFiles(file, folder, {"catd", "ddsh", "ddom", "cel0"}))
        return "modules are missing";
    std::ostringstream walked;
    std::streambuf *const former = std::cout.rdbuf(walked.rdbuf());
    SdtsConversion conversion;
    conversion.readCATDFile(folder.filePath("catd"));
    NoProgress unwatched;
    const Result<ElevationImage> image =
        conversion.readCells(file.number("factor", 1.0), unwatched);
    std::cout.rdbuf(former);
    return image ? file.differenceOfElevations(*image) : image.error().text;
}

QString usgsDemCase(const CaseFile &file)
{
    class Agrees : public UsgsDemQuestions {
        bool confirmHeader(UsgsDemData &) override { return true; }
        bool continueChecking(const SuspiciousElevation &) override { return true; }
    };
    const QTemporaryDir folder;
    QStringList sections;
    for (const char *const name : {"west", "east"})
        if (file.has(name))
            sections.append(name);
    if (sections.isEmpty() || !writeFiles(file, folder, sections))
        return "files are missing";
    QStringList names;
    for (const QString &section : sections)
        names.append(folder.filePath(section));
    Agrees agrees;
    NoProgress unwatched;
    const Result<ElevationImage> image =
        UsgsDemImport(file.integer("void", -9999), agrees).run(names, unwatched);
    return image ? file.differenceOfElevations(*image) : "the import ended";
}

} // namespace

QString (*importCase(const QString &tool))(const CaseFile &)
{
    static const QMap<QString, QString (*)(const CaseFile &)> tools = {
        {"ascii-regular", asciiRegularCase},
        {"ascii-irregular", asciiIrregularCase},
        {"scan-triangles", scanTrianglesCase},
        {"delaunay", delaunayCase},
        {"japan-dem", japanDemCase},
        {"binary-dem", binaryDemCase},
        {"sdts", sdtsCase},
        {"usgs-dem", usgsDemCase},
    };
    return tools.value(tool);
}
