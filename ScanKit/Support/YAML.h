#pragma once

#include "ScanKit/Support/DataValue.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace ScanKit {

/// What a YAML text may hold at most. Each lies far beyond any lockfile that a package manager writes (a lockfile of 10,000
/// packages has some 5 MB, 250,000 values and 6 levels), and together they keep what is read below a gigabyte.
struct YAMLLimits {
    static constexpr std::size_t bytes = std::size_t{64} << 20;
    static constexpr std::size_t values = 1'000'000;  ///< keys, texts, lists and tables together
    static constexpr std::size_t levels = 200;
};

/// The document of a YAML text. Scalars are the texts that are written, so that a version 1.10 stays "1.10"; without
/// quotation marks "true" and "false" are booleans, and "null", "~" and nothing are null. Of equal keys the last counts, and
/// stands alone. A byte-order mark is skipped.
///
/// Absent when the text is not one whole document in valid UTF-8; beyond the limits; and when it holds what no package manager
/// writes: an alias, which could repeat what it names without end, a merge key, a directive, or a key that is itself a list or table. An
/// empty text is a null.
std::optional<DataValue> readYAML(std::string_view text);

/// The same for a text of several documents, one after the other; the limits are for all of them together.
std::optional<std::vector<DataValue>> readYAMLDocuments(std::string_view text);

/// The same by the whole parser, for a text in valid UTF-8 without NUL, byte-order mark and directives. It reads whatever
/// `readPlainYAML` leaves to it; what both read is equal.
std::optional<std::vector<DataValue>> readAnyYAML(std::string_view text);

}  // namespace ScanKit
