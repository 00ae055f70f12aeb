#include "terrain/points.h"

#include "base/memorybudget.h"
#include "terrain/abandonable.h"
#include "terrain/meshraster.h"
#include "terrain/pointsurvey.h"
#include "terrain/progressshare.h"

#include <QDir>
#include <QFile>
#include <QObject>

#include <cmath>

namespace {

// In quotation marks, without the prefix of files in archives.
QString nameOf(const QString &file)
{
    const qsizetype prefix =
        file.startsWith(QLatin1String("/vsi")) ? file.indexOf(u'/', 1) + 1 : 0;
    return QLatin1Char('"') + QDir::toNativeSeparators(file.mid(prefix)) +
           QLatin1Char('"');
}

// A file of points that is read twice: for their steps, and for their heights.
class PointFile {
public:
    PointFile(const QString &file, const OpenText &open) : m_file(file), m_open(open) {}

    [[nodiscard]] Result<void> preview(const PointOptions &options)
    {
        const auto preview = previewPointFile(m_file, options, m_open);
        if (!preview)
            return tl::unexpected(preview.error());
        m_format = preview->format;
        return {};
    }
    // Hands all points to `take`.
    template <typename Take>
    [[nodiscard]] Result<void> read(Progress &progress, Take take);

    [[nodiscard]] const QString &file() const { return m_file; }
    [[nodiscard]] const PointFormat &format() const { return m_format; }
    [[nodiscard]] const QString &complaint() const { return m_complaint; }

private:
    QString m_file;
    const OpenText &m_open;
    PointFormat m_format;
    QString m_complaint;
};

template <typename Take> Result<void> PointFile::read(Progress &progress, Take take)
{
    const auto device = m_open(m_file);
    if (!device)
        return tl::unexpected(device.error());
    const qint64 size = (*device)->isSequential() ? 0 : (*device)->size();
    PointReader reader(**device, nameOf(m_file), m_format);
    std::vector<GroundPoint> batch;
    do {
        Result<void> read = reader.next(batch);
        if (!read)
            return read;
        take(batch);
        if (!progress.step(std::min(reader.bytesRead(), size), size))
            return stopped();
    } while (!batch.empty());
    m_complaint = reader.complaint();
    return {};
}

// What came of a file: a grid, or the wish to have its points triangulated.
struct Outcome {
    PointSheet sheet;
    bool isScattered = false;
};

Result<void> claim(const QString &file, const QString &what, qint64 bytes)
{
    if (fitsMemory(bytes))
        return {};
    return failed(
        QObject::tr("%1 of %2 would take %3 of memory; the budget is %4.")
            .arg(what, nameOf(file), memoryText(bytes), memoryText(memoryBudget())));
}

// A sheet with what one look at all points tells.
PointSheet sheetOf(const PointFile &file, const PointSurvey &survey)
{
    PointSheet sheet;
    sheet.files = QStringList{file.file()};
    sheet.pointsRead = survey.points();
    sheet.isGeographic = file.format().isGeographic || survey.looksGeographic();
    if (!file.complaint().isEmpty())
        sheet.notes << file.complaint();
    if (sheet.isGeographic)
        sheet.notes << QObject::tr("The coordinates of %1 are taken as longitudes and "
                                   "latitudes (WGS 84).")
                           .arg(nameOf(file.file()));
    const qint64 voids = survey.points() - survey.heights();
    if (voids > 0)
        sheet.notes << QObject::tr("%1 points of %2 have no height.")
                           .arg(QString::number(voids), nameOf(file.file()));
    return sheet;
}

QString notGridText(const QString &file)
{
    return QObject::tr("The points of %1 do not lie on a grid.").arg(nameOf(file));
}

using GridSteps = std::optional<std::pair<AxisSteps, AxisSteps>>;

// To sort a million coordinates takes longer than a user waits for a stop.
Result<GridSteps> stepsOf(const std::shared_ptr<PointSurvey> &survey, Progress &progress)
{
    return runAbandonable<GridSteps>(
        [survey](AbandonableState &) { return std::optional(survey->steps()); }, 1,
        progress);
}

// So does the system to hand out the memory of a large grid.
Result<std::unique_ptr<PointGrid>> emptyGrid(const GridSteps &steps, Progress &progress)
{
    return runAbandonable<std::unique_ptr<PointGrid>>(
        [steps](AbandonableState &) {
            return std::optional(
                std::make_unique<PointGrid>(steps->first, steps->second));
        },
        1, progress);
}

// The points of a file on their steps; nothing where they are no grid after all.
Result<std::unique_ptr<PointGrid>> filledGrid(PointFile &file, const GridSteps &steps,
                                              Progress &progress)
{
    const auto claimed = claim(file.file(), QObject::tr("The grid"),
                               PointGrid::memory(steps->first, steps->second));
    if (!claimed)
        return tl::unexpected(claimed.error());
    auto grid = emptyGrid(steps, progress);
    if (!grid)
        return grid;
    const Result<void> filled =
        file.read(progress, [&](const auto &batch) { (*grid)->add(batch); });
    if (!filled)
        return tl::unexpected(filled.error());
    return grid;
}

// Makes a sheet that of a grid.
void take(PointGrid &grid, qint64 heights, PointSheet &sheet)
{
    sheet.isGrid = true;
    sheet.transform = grid.transform();
    sheet.pointsUsed = heights - grid.doubles();
    if (grid.doubles() > 0)
        sheet.notes << QObject::tr("%1 points of %2 lie on a cell that another has.")
                           .arg(grid.doubles())
                           .arg(nameOf(sheet.files.value(0)));
    sheet.heights = grid.takeHeights();
}

Result<Outcome> gridOf(PointFile &file, const PointOptions &options, Progress &progress)
{
    ProgressShare first(progress, 0, 50, 100);
    const auto survey = std::make_shared<PointSurvey>();
    const Result<void> looked =
        file.read(first, [&](const auto &batch) { survey->add(batch); });
    if (!looked)
        return tl::unexpected(looked.error());
    Outcome outcome{sheetOf(file, *survey), true};
    if (options.surface == PointSurface::Triangles)
        return outcome;
    ProgressShare second(progress, 50, 100, 100);
    const auto steps = stepsOf(survey, second);
    if (!steps)
        return tl::unexpected(steps.error());
    const bool mustBeGrid = options.surface == PointSurface::Grid;
    if (!*steps)
        return mustBeGrid ? Result<Outcome>(failed(notGridText(file.file()))) : outcome;
    const auto grid = filledGrid(file, *steps, second);
    if (!grid)
        return tl::unexpected(grid.error());
    outcome.isScattered = !mustBeGrid && !(*grid)->isDense();
    if (!outcome.isScattered)
        take(**grid, survey->heights(), outcome.sheet);
    return outcome;
}

// Adds the points of a file to those of others.
Result<void> collect(PointFile &file, std::vector<GroundPoint> &points, qint64 more,
                     Progress &progress)
{
    const qint64 count = qint64(points.size()) + more;
    auto claimed = claim(file.file(),
                         QObject::tr("The triangles between %1 scattered points")
                             .arg(QString::number(count)),
                         meshMemory(count));
    if (!claimed)
        return claimed;
    points.reserve(std::size_t(count));
    return file.read(progress, [&](const std::vector<GroundPoint> &batch) {
        points.insert(points.end(), batch.begin(), batch.end());
    });
}

// Joins what is known of two files of scattered points.
void join(PointSheet &all, const PointSheet &one)
{
    all.files << one.files;
    all.pointsRead += one.pointsRead;
    all.isGeographic |= one.isGeographic;
    all.notes << one.notes;
}

} // namespace

Result<std::unique_ptr<QIODevice>> openTextFile(const QString &name)
{
    auto file = std::make_unique<QFile>(name);
    if (!file->open(QIODevice::ReadOnly))
        return failed(QObject::tr("Could not open file %1: %2.")
                          .arg(nameOf(name), file->errorString()));
    return std::unique_ptr<QIODevice>(std::move(file));
}

bool holdsPoints(const QString &file, const OpenText &open)
{
    return previewPointFile(file, {}, open).has_value();
}

Result<PointPreview> lookAtPointFile(const QString &file, const PointOptions &options,
                                     const OpenText &open)
{
    const auto device = open(file);
    if (!device)
        return tl::unexpected(device.error());
    return lookAtPoints(**device, nameOf(file), options);
}

Result<PointPreview> previewPointFile(const QString &file, const PointOptions &options,
                                      const OpenText &open)
{
    return lookAtPointFile(file, options, open).and_then(orFault);
}

Result<PointSheet> surfaceOf(std::vector<GroundPoint> points, PointSheet sheet,
                             double longestEdge, Progress &progress)
{
    PlaneScale scale;
    if (sheet.isGeographic && !points.empty()) {
        const auto [south, north] = std::minmax_element(
            points.begin(), points.end(),
            [](const GroundPoint &a, const GroundPoint &b) { return a.y < b.y; });
        scale = metresOfDegrees((south->y + north->y) / 2);
    }
    ProgressShare first(progress, 0, 80, 100);
    const auto mesh =
        triangulated(std::move(points), scale, nameOf(sheet.files.value(0)), first);
    if (!mesh)
        return tl::unexpected(mesh.error());
    const SurfaceGrid grid = proposedGrid(*mesh, MostProposedCells);
    ProgressShare second(progress, 80, 100, 100);
    auto heights = rasterized(*mesh, grid, longestEdge, second);
    if (!heights)
        return tl::unexpected(heights.error());
    sheet.heights = std::move(*heights);
    sheet.transform = grid.transform;
    sheet.pointsUsed = qint64(mesh->points.size());
    return sheet;
}

Result<std::vector<PointSheet>> readPointFiles(const QStringList &files,
                                               const PointOptions &options,
                                               Progress &progress, const OpenText &open)
{
    std::vector<PointSheet> sheets;
    std::vector<GroundPoint> scattered;
    PointSheet ofScattered;
    // Of the progress: two parts for each file, and one for the triangles.
    constexpr qint64 Part = 1000;
    const qint64 all = 3 * Part * files.size();
    for (qsizetype i = 0; i < files.size(); ++i) {
        PointFile file(files.at(i), open);
        if (const auto looked = file.preview(options); !looked)
            return tl::unexpected(looked.error());
        ProgressShare share(progress, 2 * i * Part, (2 * i + 1) * Part, all);
        auto outcome = gridOf(file, options, share);
        if (!outcome)
            return tl::unexpected(outcome.error());
        if (!outcome->isScattered) {
            sheets.push_back(std::move(outcome->sheet));
            continue;
        }
        ProgressShare next(progress, (2 * i + 1) * Part, (2 * i + 2) * Part, all);
        if (const auto collected =
                collect(file, scattered, outcome->sheet.pointsRead, next);
            !collected)
            return tl::unexpected(collected.error());
        join(ofScattered, outcome->sheet);
    }
    if (!ofScattered.files.isEmpty()) {
        ProgressShare share(progress, 2 * files.size() * Part, all, all);
        auto sheet = surfaceOf(std::move(scattered), std::move(ofScattered),
                               options.longestEdge, share);
        if (!sheet)
            return tl::unexpected(sheet.error());
        sheets.push_back(std::move(*sheet));
    }
    return sheets;
}
