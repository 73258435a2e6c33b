#pragma once

#include "ScanKit/Support/DataValue.h"

#include <optional>
#include <string_view>
#include <vector>

namespace ScanKit {

/// Reads the YAML that package managers write: tables by indentation, lists of texts, and on one line texts, tables in braces
/// and lists in brackets. One pass without events, which takes a third of the time that a whole YAML parser does.
///
/// Absent for whatever else the text holds, in doubt too: that says nothing about the text, and a whole parser has to read it.
/// What is read is what such a parser would read, without the limits of `YAMLLimits` but for the number of values and levels.
/// The text is valid UTF-8 without a byte-order mark.
std::optional<std::vector<DataValue>> readPlainYAML(std::string_view text);

/// Of equal keys the last counts; its place is that of the last, too.
void keepLastOfEqualKeys(std::vector<DataValue::Member>& members);
/// What a text without quotation marks stands for: "true" and "false" are booleans, "null", "~" and nothing are null.
DataValue plainScalar(std::string text);

}  // namespace ScanKit
