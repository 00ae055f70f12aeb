// Heads of NetCDF files, which tell how long the files have to be.

#include "geodata/netcdfhead.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray head(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto length = lengthOfNetCdf(head);
    if (length && *length < 0)
        __builtin_trap();
    return 0;
}
