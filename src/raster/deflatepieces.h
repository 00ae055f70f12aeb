#pragma once

#include <cstddef>
#include <memory>
#include <vector>

/// Packs pieces of data so that, one behind the other, they are one deflate stream.
///
/// The fast library ends a stream with every call. The end is taken off again: the mark
/// of the last block is cleared, and an empty block fills up the last byte, so that the
/// next piece may begin. Where the last block is, only who unpacks the piece knows.
///
/// Each thread has one of its own. The same piece is packed to the same bytes always.
class DeflatePieces {
public:
    /// The higher the level, of 0 to 12, the more time for fewer bytes. Throws
    /// std::bad_alloc.
    explicit DeflatePieces(int level);
    ~DeflatePieces();
    DeflatePieces(const DeflatePieces &) = delete;
    DeflatePieces &operator=(const DeflatePieces &) = delete;

    /// Appends a piece to `packed`. Throws std::bad_alloc; false where a library could
    /// not do its part.
    [[nodiscard]] bool pack(const unsigned char *data, std::size_t size, bool last,
                            std::vector<unsigned char> &packed);

private:
    struct Parts;

    [[nodiscard]] bool openEnd(std::size_t begin, std::size_t size,
                               std::vector<unsigned char> &packed);

    std::unique_ptr<Parts> m_parts;
    std::vector<unsigned char> m_unpacked;
};
