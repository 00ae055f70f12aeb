#include "geodata/warp.h"

#include <cpl_string.h>
#include <gdal_utils.h>

namespace {

class Arguments {
public:
    explicit Arguments(const QStringList &list)
    {
        for (const QString &argument : list)
            m_list.AddString(argument.toUtf8().constData());
    }
    [[nodiscard]] char **get() { return m_list.List(); }

private:
    CPLStringList m_list;
};

} // namespace

Dataset warped(const std::vector<GDALDatasetH> &sources, const QStringList &arguments,
               GdalProgress *progress)
{
    Arguments list(arguments);
    GDALWarpAppOptions *const options = GDALWarpAppOptionsNew(list.get(), nullptr);
    if (!options)
        return nullptr;
    if (progress)
        GDALWarpAppOptionsSetProgress(options, GdalProgress::step, progress);
    std::vector<GDALDatasetH> all = sources;
    int wrong = 0;
    Dataset made(
        GDALWarp("", nullptr, static_cast<int>(all.size()), all.data(), options, &wrong));
    GDALWarpAppOptionsFree(options);
    return made;
}

Dataset translated(GDALDatasetH source, const QStringList &arguments)
{
    Arguments list(arguments);
    GDALTranslateOptions *const options = GDALTranslateOptionsNew(list.get(), nullptr);
    if (!options)
        return nullptr;
    int wrong = 0;
    Dataset made(GDALTranslate("", source, options, &wrong));
    GDALTranslateOptionsFree(options);
    return made;
}

Dataset windowOf(GDALDatasetH source, const QRect &cells)
{
    return translated(source, {"-of", "VRT", "-srcwin", QString::number(cells.x()),
                               QString::number(cells.y()), QString::number(cells.width()),
                               QString::number(cells.height())});
}
