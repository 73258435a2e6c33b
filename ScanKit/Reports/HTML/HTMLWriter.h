#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace ScanKit::Exports {

/// Builds a page: markup is written as it stands, text only escaped, so that nothing that a package wrote can become markup.
class HTMLWriter {
public:
    explicit HTMLWriter(std::size_t expectedSize) { page_.reserve(expectedSize); }

    /// What the program itself wrote. A literal, so that text cannot end here by mistake.
    template <std::size_t size>
    void markup(const char (&literal)[size]) {
        page_.append(literal, size - 1);
    }
    void number(std::size_t number) { page_ += std::to_string(number); }
    /// Text in an element or a quoted attribute. What HTML does not allow, such as a control character, is U+FFFD; line
    /// breaks and tabs stay.
    void text(std::string_view text);
    /// Text of a direction of its own, such as a name: it cannot turn the words around it.
    void isolated(std::string_view text);
    /// The text as it stands, in lines.
    void preformatted(std::string_view text);
    /// A link where the text is an address of the web, else the text alone.
    void address(std::string_view text);

    std::string take() { return std::move(page_); }

private:
    std::string page_;
};

}  // namespace ScanKit::Exports
