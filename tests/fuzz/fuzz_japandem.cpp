#include "importers/japandem.h"
#include "raster/elevationimage.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QBuffer in;
    in.setData(reinterpret_cast<const char *>(data), int(size));
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    NoProgress unwatched;
    const auto dem = convertJapanDem(in, -9999, "a.mem", unwatched);
    if (!dem && dem.error().text.isEmpty())
        std::abort(); // a failure without a text is a fault too
    return 0;
}
