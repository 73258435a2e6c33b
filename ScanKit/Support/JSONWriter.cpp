#include "ScanKit/Support/JSONWriter.h"

#include "ScanKit/Support/Text.h"

#include <fmt/format.h>

namespace ScanKit {
namespace {

/// The escape of a character that JSON does not take as it is; empty for every other.
std::string_view shortEscape(char c) {
    switch (c) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\b':
            return "\\b";
        case '\t':
            return "\\t";
        case '\n':
            return "\\n";
        case '\f':
            return "\\f";
        case '\r':
            return "\\r";
        default:
            return {};
    }
}

/// Printable ASCII without anything to escape, as nearly all texts are.
bool isPlain(std::string_view text) {
    unsigned isOther = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        isOther |= static_cast<unsigned>(byte < 0x20 || byte >= 0x80 || byte == '"' || byte == '\\');
    }
    return isOther == 0;
}

void appendQuoted(std::string& output, std::string_view text) {
    if (isPlain(text)) {
        output += '"';
        output += text;
        output += '"';
        return;
    }
    if (!Text::isValidUtf8(text)) {
        appendQuoted(output, Text::validUtf8(std::string(text)));
        return;
    }
    output += '"';
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        // Runs without anything to escape are copied whole; they are nearly everything.
        if (static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\') {
            continue;
        }
        output += text.substr(begin, i - begin);
        begin = i + 1;
        if (const std::string_view escape = shortEscape(c); !escape.empty()) {
            output += escape;
        } else {
            fmt::format_to(std::back_inserter(output), "\\u{:04x}", static_cast<unsigned>(c));
        }
    }
    output += text.substr(begin);
    output += '"';
}

}  // namespace

void JSONWriter::newLine() {
    text_ += '\n';
    text_.append(static_cast<std::size_t>(level_) * 2, ' ');
}

void JSONWriter::beginValue() {
    // A value behind its key goes on with the line.
    if (keyPending_) {
        keyPending_ = false;
        return;
    }
    if (level_ == 0) {
        return;
    }
    if (!groupIsEmpty_) {
        text_ += ',';
    }
    groupIsEmpty_ = false;
    newLine();
}

void JSONWriter::beginGroup(char bracket) {
    beginValue();
    text_ += bracket;
    ++level_;
    groupIsEmpty_ = true;
}

void JSONWriter::endGroup(char bracket) {
    --level_;
    // An empty list stays on its line: [].
    if (!groupIsEmpty_) {
        newLine();
    }
    text_ += bracket;
    groupIsEmpty_ = false;
}

void JSONWriter::beginObject() {
    beginGroup('{');
}

void JSONWriter::endObject() {
    endGroup('}');
}

void JSONWriter::beginArray() {
    beginGroup('[');
}

void JSONWriter::endArray() {
    endGroup(']');
}

void JSONWriter::key(std::string_view name) {
    beginValue();
    appendQuoted(text_, name);
    text_ += " : ";
    keyPending_ = true;
}

void JSONWriter::string(std::string_view text) {
    beginValue();
    appendQuoted(text_, text);
}

void JSONWriter::number(double value) {
    beginValue();
    fmt::format_to(std::back_inserter(text_), "{}", value);
}

void JSONWriter::integer(std::int64_t value) {
    beginValue();
    fmt::format_to(std::back_inserter(text_), "{}", value);
}

void JSONWriter::boolean(bool value) {
    beginValue();
    text_ += value ? "true" : "false";
}

}  // namespace ScanKit
