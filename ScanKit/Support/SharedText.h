#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ScanKit {

/// A text, or none, that never changes, so that its copies are one text in memory: thousands of packages ship the same license,
/// and results of scans are copied. Used like an optional string; equal when the texts are.
class SharedText {
public:
    SharedText() = default;
    SharedText(std::string text) : text_(std::make_shared<const std::string>(std::move(text))) {}
    SharedText(std::string_view text) : SharedText(std::string(text)) {}
    SharedText(const char* text) : SharedText(std::string(text)) {}
    SharedText(std::optional<std::string> text)
        : text_(text ? std::make_shared<const std::string>(std::move(*text)) : nullptr) {}

    explicit operator bool() const { return text_ != nullptr; }
    /// To be asked only when there is one.
    const std::string& operator*() const { return *text_; }
    const std::string* operator->() const { return text_.get(); }
    std::string_view value_or(std::string_view other) const { return text_ ? *text_ : other; }

    friend bool operator==(const SharedText& a, const SharedText& b) {
        return a.text_ == b.text_ || (a.text_ && b.text_ && *a.text_ == *b.text_);
    }

private:
    std::shared_ptr<const std::string> text_;
};

}  // namespace ScanKit

template <>
struct std::hash<ScanKit::SharedText> {
    std::size_t operator()(const ScanKit::SharedText& text) const {
        return text ? std::hash<std::string>{}(*text) : 0;
    }
};
