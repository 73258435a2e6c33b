#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace ScanKit {

/// Writes one JSON document: two blanks of indentation, `"key" : value`, an empty list as `[]`, slashes not
/// escaped, non-ASCII text as it is, numbers as the shortest text that reads back equal. The caller names the
/// keys in the order in which they shall stand. Each invalid part of a text is written as U+FFFD, so that what was
/// written can be read.
class JSONWriter {
public:
    /// `expectedSize` in bytes spares a large document from being moved as it grows.
    explicit JSONWriter(std::size_t expectedSize = 0) { text_.reserve(expectedSize); }

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(std::string_view name);
    void string(std::string_view text);
    void number(double value);
    void integer(std::int64_t value);
    void boolean(bool value);

    /// The finished document, without a line feed at its end.
    std::string take() { return std::move(text_); }

private:
    void beginValue();
    void beginGroup(char bracket);
    void endGroup(char bracket);
    void newLine();

    std::string text_;
    int level_ = 0;
    bool groupIsEmpty_ = true;
    bool keyPending_ = false;
};

}  // namespace ScanKit
