#include "geodata/gdalruntime.h"

#include <QRegularExpression>

#include <cpl_conv.h>
#include <cpl_error.h>
#include <ogr_srs_api.h>

#include <array>
#include <cmath>
#include <mutex>

namespace {

// Blocks of files that are read once only. GDAL's own measure is a share of the memory.
constexpr qint64 CacheBytes = qint64(128) << 20;

void passOver(CPLErr, CPLErrorNum, const char *) {}

// Drivers that ask other machines, or run programs that a file names. Their files are
// none of ours; a file from strangers must reach no network.
constexpr std::array Unwanted{
    "AMIGOCLOUD", "CARTO",    "CSW",      "DAAS",          "EEDA",       "EEDAI",
    "ELASTIC",    "GPSBABEL", "HTTP",     "JP2LURA",       "MONGODBV3",  "MSSQLSPATIAL",
    "MYSQL",      "NGW",      "OAPIF",    "OCI",           "ODBC",       "OGCAPI",
    "PGEO",       "PLMOSAIC", "PLSCENES", "POSTGISRASTER", "POSTGRESQL", "RDA",
    "STACIT",     "STACTA",   "WCS",      "WFS",           "WMS",        "WMTS"};

void keepToThisMachine()
{
    for (const char *name : Unwanted) {
        if (GDALDriverH driver = GDALGetDriverByName(name)) {
            GDALDeregisterDriver(driver);
            GDALDestroyDriver(driver); // nobody else knows it any more
        }
    }
    // The only file that may be had by a URL is one of this name.
    CPLSetConfigOption("CPL_VSIL_CURL_ALLOWED_FILENAME", "none");
    CPLSetConfigOption("GDAL_VRT_ENABLE_PYTHON", "NO");
    OSRSetPROJEnableNetwork(0);
}

} // namespace

void startGdal()
{
    static std::once_flag once;
    std::call_once(once, [] {
        GDALAllRegister();
        keepToThisMachine();
        GDALSetCacheMax64(CacheBytes);
        // What its own threads say has no object below to go to.
        CPLSetErrorHandler(passOver);
        // Surfaces of points are handed over in memory.
        CPLSetConfigOption("GDAL_MEM_ENABLE_OPEN", "YES");
    });
}

QStringList aboutGdal()
{
    return {QStringLiteral("GDAL"), QString::fromUtf8(GDALVersionInfo("RELEASE_NAME")),
            QStringLiteral("MIT")};
}

GdalMessages::GdalMessages()
{
    startGdal();
    CPLPushErrorHandlerEx(take, this);
    CPLErrorReset();
}

GdalMessages::~GdalMessages() { CPLPopErrorHandler(); }

void GdalMessages::take(CPLErr level, CPLErrorNum, const char *text)
{
    auto *const self = static_cast<GdalMessages *>(CPLGetErrorHandlerUserData());
    const QString said = QString::fromUtf8(text).simplified();
    if (level == CE_Warning && !self->m_warnings.contains(said))
        self->m_warnings.append(said);
    if (level == CE_Failure || level == CE_Fatal)
        self->m_error = said;
}

QString GdalMessages::reason(const QString &fallback) const
{
    // "FILE, band 1: why": who tells the reason names the file.
    static const QRegularExpression place(QStringLiteral("^.*, band \\d+: "));
    QString text = m_error.isEmpty() ? fallback : m_error;
    text.remove(place);
    while (text.endsWith(u'.'))
        text.chop(1);
    return text;
}

int GdalProgress::step(double share, const char *, void *self)
{
    auto &progress = *static_cast<GdalProgress *>(self);
    const double done = static_cast<double>(progress.m_last - progress.m_first) * share;
    const qint64 at = progress.m_first + static_cast<qint64>(std::floor(done));
    if (!progress.m_stopped && !progress.m_progress.step(at, progress.m_of))
        progress.m_stopped = true;
    return progress.m_stopped ? FALSE : TRUE;
}
