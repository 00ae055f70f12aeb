#include "raster/deflatepieces.h"

#include <libdeflate.h>
#include <zlib.h>

#include <new>

namespace {

constexpr int RawWindow = -MAX_WBITS; // neither head nor checksum around the blocks

struct FreeCompressor {
    void operator()(libdeflate_compressor *compressor) const
    {
        libdeflate_free_compressor(compressor);
    }
};

// A place in a stream of bits; bits fill each byte from its lowest one.
struct BitPlace {
    std::size_t byte = 0;
    unsigned int bit = 0;
};

BitPlace placeOf(const z_stream &stream, const unsigned char *begin)
{
    const auto used = static_cast<std::size_t>(stream.next_in - begin);
    const auto unused = static_cast<unsigned int>(stream.data_type) & 7u;
    return unused == 0 ? BitPlace{used, 0} : BitPlace{used - 1, 8 - unused};
}

} // namespace

struct DeflatePieces::Parts {
    std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor;
    z_stream stream = {};
    bool streamIsOpen = false;
};

DeflatePieces::DeflatePieces(int level) : m_parts(std::make_unique<Parts>())
{
    m_parts->compressor.reset(libdeflate_alloc_compressor(level));
    if (!m_parts->compressor)
        throw std::bad_alloc();
}

DeflatePieces::~DeflatePieces()
{
    if (m_parts->streamIsOpen)
        inflateEnd(&m_parts->stream);
}

bool DeflatePieces::pack(const unsigned char *data, std::size_t size, bool last,
                         std::vector<unsigned char> &packed)
{
    constexpr std::size_t EmptyBlock = 5; // bytes, at most
    libdeflate_compressor *const compressor = m_parts->compressor.get();
    const std::size_t begin = packed.size();
    const std::size_t most = libdeflate_deflate_compress_bound(compressor, size);
    packed.resize(begin + most + EmptyBlock);
    const std::size_t count =
        libdeflate_deflate_compress(compressor, data, size, packed.data() + begin, most);
    packed.resize(begin + count);
    return count != 0 && (last || openEnd(begin, size, packed));
}

bool DeflatePieces::openEnd(std::size_t begin, std::size_t size,
                            std::vector<unsigned char> &packed)
{
    constexpr int BlockEnds = 128;
    z_stream &stream = m_parts->stream;
    if (!m_parts->streamIsOpen && inflateInit2(&stream, RawWindow) != Z_OK)
        return false;
    m_parts->streamIsOpen = true;
    m_unpacked.resize(size + 1); // never full, which would stop it within a block
    inflateReset(&stream);
    stream.next_in = packed.data() + begin;
    stream.avail_in = static_cast<uInt>(packed.size() - begin);
    stream.next_out = m_unpacked.data();
    stream.avail_out = static_cast<uInt>(m_unpacked.size());
    // The library stops behind each block; the first bit of a block marks the last one.
    BitPlace block;
    while (true) {
        const bool isLast = (packed[begin + block.byte] >> block.bit & 1u) != 0;
        do {
            const int result = inflate(&stream, Z_BLOCK);
            if (result != Z_OK)
                return false;
        } while ((stream.data_type & BlockEnds) == 0);
        const BitPlace end = placeOf(stream, packed.data() + begin);
        if (isLast) {
            packed[begin + block.byte] &= static_cast<unsigned char>(~(1u << block.bit));
            // An empty block: three bits, the rest of the byte, its length twice.
            packed.resize(begin + end.byte + (end.bit == 0 ? 0 : 1));
            if (end.bit == 0 || end.bit > 5)
                packed.push_back(0);
            packed.insert(packed.end(), {0x00, 0x00, 0xFF, 0xFF});
            return stream.total_out == size;
        }
        block = end;
    }
}
