#include "raster/libraries.h"

#include <QCoreApplication>

#include <libdeflate.h>
#include <zlib.h>

QList<LibraryNote> pictureLibraries()
{
    const auto text = [](const char *source) {
        return QCoreApplication::translate("Libraries", source);
    };
    return {{QStringLiteral("libdeflate"), QStringLiteral(LIBDEFLATE_VERSION_STRING),
             QStringLiteral("MIT"), text("Packs the pixels of PNG files.")},
            {QStringLiteral("zlib"), QString::fromLatin1(zlibVersion()),
             QStringLiteral("Zlib"), text("Joins the parts of large PNG files.")}};
}
