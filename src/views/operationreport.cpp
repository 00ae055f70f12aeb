#include "views/operationreport.h"

#include "raster/elevationfacts.h"
#include "raster/heightkinds.h"
#include "raster/imagefile.h"
#include "raster/shadedrelief.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

namespace {

constexpr QSize LargestThumbnail(240, 180);

QString text(const char *source)
{
    return QCoreApplication::translate("OperationReport", source);
}

QImage thumbnailOf(const QImage &picture, bool isElevation, Progress &progress)
{
    const QSize size = picture.size()
                           .scaled(LargestThumbnail, Qt::KeepAspectRatio)
                           .expandedTo({1, 1})
                           .boundedTo(picture.size());
    // Heights must not be mixed as if their bytes were colours.
    if (isElevation)
        return shadedRelief(picture.scaled(size).convertToFormat(QImage::Format_RGB32),
                            progress)
            .value_or(QImage());
    const QImage some = picture.scaled((size * 3).boundedTo(picture.size()));
    return some.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool holdsHeights(OperationOutcome::Holds holds, const QImage &picture)
{
    return holds == OperationOutcome::Holds::Unknown
               ? looksLikeElevations(picture)
               : holds == OperationOutcome::Holds::Heights;
}

} // namespace

QString OperationReport::line() const
{
    QStringList parts;
    for (const OperationOutcome::Fact &fact : outcome.facts)
        if (fact.name != text("File"))
            parts << QStringLiteral("%1 %2").arg(fact.name.toLower(), fact.value);
    return QStringLiteral("%1: %2").arg(QFileInfo(outcome.file).fileName(),
                                        parts.join(QStringLiteral(", ")));
}

OperationReport makeReport(OperationOutcome outcome, Progress &progress)
{
    using Fact = OperationOutcome::Fact;
    QImage picture = std::exchange(outcome.picture, QImage());
    if (picture.isNull())
        picture = loadImageFile(outcome.file);
    OperationReport report;
    report.isElevation = holdsHeights(outcome.holds, picture);
    QList<Fact> seen{{text("File"), outcome.file},
                     {text("Rows"), QString::number(picture.height())},
                     {text("Columns"), QString::number(picture.width())}};
    if (report.isElevation) {
        const Result<ElevationFacts> facts = elevationFacts(picture, {}, progress);
        if (!facts)
            return {};
        seen << Fact{text("Minimum"), QString::number(facts->lowest)}
             << Fact{text("Maximum"), QString::number(facts->highest)};
    }
    outcome.facts = seen + outcome.facts;
    report.thumbnail = thumbnailOf(picture, report.isElevation, progress);
    report.outcome = std::move(outcome);
    return report;
}
