#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace iso8211 {

/// Reading of the numbers and texts that lie in a file as characters.
namespace sio_Utils {

/// The whole number in buf[start] to buf[start + length - 1], as strtol to base 10
/// reads it: leading blanks are skipped, what is no number gives 0, what does not
/// fit 32 bits the nearest number that does.
[[nodiscard]] std::int32_t getLong(const char *buf, std::int32_t start,
                                   std::int32_t length);

/// The same bytes as a text, which a first zero byte ends.
[[nodiscard]] std::string getString(const char *buf, std::int32_t start,
                                    std::int32_t length);

/// The whole number at the start of a text, by the rules of getLong().
[[nodiscard]] std::int32_t longOf(std::string_view text);

/// The number at the start of a text, as a stream of the classic locale extracts
/// it: 0 where there is none or where its exponent lacks digits.
[[nodiscard]] double doubleOf(std::string_view text);

/// Goes to a position, and leaves the stream's buffer alone where it stands there.
void seekTo(std::istream &stream, std::int64_t position);

} // namespace sio_Utils

} // namespace iso8211

// The established names of the library.
namespace sio_Utils = iso8211::sio_Utils;
