#pragma once

#include "base/progress.h"

#include <QString>
#include <QStringList>

#include <gdal.h>

#include <memory>

/// Makes GDAL's drivers known, once a process. Everything below calls it by itself.
void startGdal();

/// GDAL's name, version and licence, for "Libraries": a line each.
[[nodiscard]] QStringList aboutGdal();

/// Keeps what GDAL says on this thread while the object lives, instead of letting it go
/// to standard error.
class GdalMessages {
public:
    GdalMessages();
    ~GdalMessages();
    GdalMessages(const GdalMessages &) = delete;
    GdalMessages &operator=(const GdalMessages &) = delete;

    /// The last error, as a clause without a full stop; `fallback` where there was none.
    [[nodiscard]] QString reason(const QString &fallback) const;
    [[nodiscard]] const QStringList &warnings() const { return m_warnings; }

private:
    static void take(CPLErr level, CPLErrorNum number, const char *text);

    QString m_error;
    QStringList m_warnings;
};

struct DatasetCloser {
    void operator()(GDALDatasetH dataset) const { GDALReleaseDataset(dataset); }
};
/// A dataset that is closed when it goes, unless a virtual one still reads from it.
using Dataset = std::unique_ptr<void, DatasetCloser>;

/// GDAL's own progress as a share of some Progress: its 0 to 1 become steps from `first`
/// to `last` of `of`. Remembers that it was asked to stop.
class GdalProgress {
public:
    GdalProgress(Progress &progress, qint64 first, qint64 last, qint64 of)
        : m_progress(progress), m_first(first), m_last(last), m_of(of)
    {
    }
    /// To be handed to GDAL with the object as its data.
    static int step(double share, const char *text, void *self);
    [[nodiscard]] bool stopped() const { return m_stopped; }

private:
    Progress &m_progress;
    qint64 m_first;
    qint64 m_last;
    qint64 m_of;
    bool m_stopped = false;
};
