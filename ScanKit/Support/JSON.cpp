#include "ScanKit/Support/JSON.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <string>
#include <type_traits>
#include <unordered_set>

#include <simdjson.h>

namespace ScanKit {
namespace {

using simdjson::dom::element;

constexpr std::size_t mostLevels = 1000;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

struct Handle {
    const void* document;
    std::size_t position;
};
static_assert(sizeof(Handle) == sizeof(element) && std::is_trivially_copyable_v<element>,
              "a JSONValue carries the library's element, which is a document and a position in it");

element elementOf(const void* document, std::size_t position) {
    return std::bit_cast<element>(Handle{document, position});
}

/// The text with "e0" behind every integer of 19 digits or more, which makes the library read it as a double:
/// it refuses integers beyond 64 bits, while we accept whatever a double can hold.
std::string withLongIntegersAsDoubles(std::string_view text) {
    std::string result;
    result.reserve(text.size() + 64);
    bool inString = false;
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (inString && c == '\\') {
            result += text.substr(i, 2);
            i += 2;
            continue;
        }
        if (c == '"') {
            inString = !inString;
        }
        if (inString || !(c >= '0' && c <= '9')) {
            result += c;
            ++i;
            continue;
        }
        std::size_t end = text.find_first_not_of("0123456789", i);
        end = std::min(end, text.size());
        result += text.substr(i, end - i);
        const bool isInteger =
            end == text.size() || std::string_view(".eE").find(text[end]) == std::string_view::npos;
        const bool isWhole = i == 0 || std::string_view(".eE+").find(text[i - 1]) == std::string_view::npos;
        if (isInteger && isWhole && end - i >= 19 &&
            !(i > 1 && std::string_view("eE").find(text[i - 2]) != std::string_view::npos)) {
            result += "e0";
        }
        i = end;
    }
    return result;
}

}  // namespace

bool JSONValue::isObject() const {
    return elementOf(document_, position_).is_object();
}

bool JSONValue::isArray() const {
    return elementOf(document_, position_).is_array();
}

bool JSONValue::isNull() const {
    return elementOf(document_, position_).is_null();
}

std::optional<std::string_view> JSONValue::string() const {
    std::string_view text;
    if (elementOf(document_, position_).get(text) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return text;
}

std::optional<bool> JSONValue::boolean() const {
    bool value = false;
    if (elementOf(document_, position_).get(value) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> JSONValue::number() const {
    double value = 0;
    if (elementOf(document_, position_).get(value) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return value;
}

/// A walk instead of the library's own look-up, which gives the first of two equal names: the last counts, as in the
/// programs that wrote the file.
std::optional<JSONValue> JSONValue::member(std::string_view name) const {
    simdjson::dom::object object;
    if (elementOf(document_, position_).get(object) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    std::optional<JSONValue> last;
    for (const auto field : object) {
        if (field.key == name) {
            const auto handle = std::bit_cast<Handle>(field.value);
            last = JSONValue(handle.document, handle.position);
        }
    }
    return last;
}

std::optional<std::string_view> JSONValue::stringMember(std::string_view name) const {
    const std::optional<JSONValue> value = member(name);
    return value ? value->string() : std::nullopt;
}

std::optional<bool> JSONValue::booleanMember(std::string_view name) const {
    const std::optional<JSONValue> value = member(name);
    return value ? value->boolean() : std::nullopt;
}

std::vector<JSONValue::Member> JSONValue::members() const {
    std::vector<Member> result;
    simdjson::dom::object object;
    if (elementOf(document_, position_).get(object) != simdjson::SUCCESS) {
        return result;
    }
    for (const auto field : object) {
        const auto handle = std::bit_cast<Handle>(field.value);
        result.emplace_back(field.key, JSONValue(handle.document, handle.position));
    }
    // Of equal names the last value counts: read backwards, drop what was seen, and turn round.
    std::unordered_set<std::string_view> seen;
    std::ranges::reverse(result);
    std::erase_if(result, [&](const Member& one) { return !seen.insert(one.first).second; });
    std::ranges::reverse(result);
    return result;
}

std::vector<JSONValue> JSONValue::elements() const {
    std::vector<JSONValue> result;
    simdjson::dom::array array;
    if (elementOf(document_, position_).get(array) != simdjson::SUCCESS) {
        return result;
    }
    for (const element value : array) {
        const auto handle = std::bit_cast<Handle>(value);
        result.push_back(JSONValue(handle.document, handle.position));
    }
    return result;
}

struct JSONReader::Buffers {
    simdjson::dom::parser parser;
    std::string text;

    simdjson::error_code parse(std::string_view document, element& top) {
        text.reserve(document.size() + simdjson::SIMDJSON_PADDING);
        text.assign(document);
        if (parser.capacity() < text.size() || parser.max_depth() != mostLevels) {
            // The library keeps its depth from the first allocation, and refuses deeper documents.
            if (const auto error =
                    parser.allocate(std::max<std::size_t>(text.size(), 64 << 10), mostLevels)) {
                return error;
            }
        }
        return parser.parse(text.data(), text.size(), false).get(top);
    }
};

JSONReader::JSONReader() : buffers_(std::make_unique<Buffers>()) {}

JSONReader::~JSONReader() = default;

std::optional<JSONValue> JSONReader::read(std::string_view text) {
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    element top;
    simdjson::error_code error = buffers_->parse(text, top);
    // Rare, so that only documents with such a number pay for the second reading.
    if (error == simdjson::NUMBER_ERROR) {
        error = buffers_->parse(withLongIntegersAsDoubles(text), top);
    }
    if (error != simdjson::SUCCESS) {
        return std::nullopt;
    }
    const auto handle = std::bit_cast<Handle>(top);
    return JSONValue(handle.document, handle.position);
}

}  // namespace ScanKit
