#include "template/templateimport.h"

#include "importers/blankelevation.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QtEndian>

#include <array>
#include <vector>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TemplateImportDialog", text);
}

bool readAll(QIODevice &in, void *to, qint64 bytes)
{
    return in.read(static_cast<char *>(to), bytes) == bytes;
}

} // namespace

Result<ElevationImage> importTemplate(QIODevice &in, const TemplateImportOptions &options,
                                      const QString &fileName, Progress &progress)
{
    std::array<quint16, 2> size{}; // columns, rows
    if (!readAll(in, size.data(), sizeof(size)))
        return failed(tr("The file \"%1\" has no size.").arg(fileName));
    const int columns = qFromLittleEndian(size[0]);
    const int rows = qFromLittleEndian(size[1]);
    if (columns == 0 || rows == 0)
        return failed(tr("The file \"%1\" has no columns or no rows.").arg(fileName));
    ElevationImage image = blankElevation(columns, rows);
    if (image.isNull())
        return failed(tr("There is no memory for \"%1\".").arg(fileName));
    std::vector<qint16> samples(static_cast<std::size_t>(columns)); // of one row
    for (int row = 0; row < rows; ++row) {
        if (!progress.step(row, rows))
            return stopped();
        if (!readAll(in, samples.data(), columns * qint64(sizeof(qint16))))
            return failed(tr("The file \"%1\" ends in row %2.").arg(fileName).arg(row));
        for (int column = 0; column < columns; ++column) {
            const int value =
                qFromLittleEndian(samples[static_cast<std::size_t>(column)]);
            image.setElevation(column, row, value == options.voidValue ? 0 : value);
        }
    }
    return image;
}
