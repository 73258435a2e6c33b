#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace ScanKit {

/// One value of a JSON document that was read. A light handle: it and every text it gives live until the
/// reader that made it reads again or ends. A value of another type than asked for reads as absent; there are
/// no conversions (the number 1 is not true).
class JSONValue {
public:
    bool isObject() const;
    bool isArray() const;
    bool isNull() const;
    std::optional<std::string_view> string() const;
    std::optional<bool> boolean() const;
    std::optional<double> number() const;

    /// The member of this name, the last of several; absent when there is none or this is not an object.
    std::optional<JSONValue> member(std::string_view name) const;
    /// The member, when it holds a string.
    std::optional<std::string_view> stringMember(std::string_view name) const;
    /// The member, when it holds a boolean.
    std::optional<bool> booleanMember(std::string_view name) const;

    using Member = std::pair<std::string_view, JSONValue>;
    /// Each name once, with the last value that it was given, in the order of that last value. Empty when this
    /// is not an object.
    std::vector<Member> members() const;
    /// Empty when this is not an array.
    std::vector<JSONValue> elements() const;

private:
    friend class JSONReader;
    JSONValue(const void* document, std::size_t position) : document_(document), position_(position) {}

    const void* document_;
    std::size_t position_;
};

/// Reads JSON documents one after the other into buffers that are kept; for one thread at a time.
class JSONReader {
public:
    JSONReader();
    ~JSONReader();
    JSONReader(const JSONReader&) = delete;
    JSONReader& operator=(const JSONReader&) = delete;

    /// The document's top value. Absent when the text is not one whole JSON document; when it holds invalid
    /// UTF-8 or a lone surrogate; when it nests more than 1,000 levels; or when a number fits neither a 64-bit
    /// integer nor a finite double. A byte-order mark is skipped. Values of the document before become invalid.
    std::optional<JSONValue> read(std::string_view text);

private:
    struct Buffers;
    std::unique_ptr<Buffers> buffers_;
};

}  // namespace ScanKit
