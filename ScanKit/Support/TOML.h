#pragma once

#include "ScanKit/Support/DataValue.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace ScanKit {

/// The longest text that is read, in bytes. A value takes some 300 bytes while it is read, however short it is written: the
/// text and the number of its values are both limited, so that no document takes more than about half a gigabyte.
inline constexpr std::size_t largestTOML = std::size_t{64} << 20;

/// The top table of a document, the members of each table in the order of the text. A number stands in its shortest decimal
/// form, a date or time as RFC 3339 writes it. A byte-order mark is skipped. Absent when the text is no whole TOML document
/// (a key that is set twice included), is not UTF-8, or goes beyond a limit: `largestTOML` bytes, a million values, 32
/// levels of lists and tables within one value, 16 parts in one key.
std::optional<DataValue> readTOML(std::string_view text);

}  // namespace ScanKit
