#pragma once

#include "ScanKit/Support/Dates.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ScanKit {

/// A document's pages before they are drawn: operations with their places, as plain values that can be looked at.
/// The layout makes them, the canvas draws them, and neither knows the other. Lengths are points; a place
/// is measured from the top left corner of its page.
struct PDFPages {
    struct Point {
        double x = 0, y = 0;
        bool operator==(const Point&) const = default;
    };
    struct Rectangle {
        double x = 0, y = 0, width = 0, height = 0;
        bool operator==(const Rectangle&) const = default;
    };
    /// Each part from 0 to 1.
    struct Colour {
        double red = 0, green = 0, blue = 0;
        bool operator==(const Colour&) const = default;
    };
    /// Always of the family Helvetica, or of the face that the system has for it.
    struct Font {
        double size = 9;
        bool bold = false;
        bool operator==(const Font&) const = default;
    };
    /// Text with one look. Valid UTF-8 without control characters.
    struct AttributedString {
        std::string text;
        Font font;
        Colour colour;
        double letterSpacing = 0;         ///< between letters, in points
        std::optional<std::string> link;  ///< an escaped http or https address; absent when it leads nowhere
        bool operator==(const AttributedString&) const = default;
    };

    /// What a part of the document is, for whoever listens to it or has it turned into another form.
    enum class Role {
        document,
        heading1,
        heading2,
        heading3,
        paragraph,
        list,
        listItem,
        listBody,
        table,
        row,
        columnHeader,
        rowHeader,
        cell,
        link,
    };
    /// A part of the document, inside another one.
    struct Element {
        Role role = Role::document;
        std::size_t parent = 0;  ///< a place in `structure`, before its own; the document is its own
        bool operator==(const Element&) const = default;
    };

    /// Breaks into lines at the rectangle's width, inside a word when it must.
    struct Text {
        AttributedString string;
        Rectangle rectangle;
        bool right = false;  ///< aligned to the right
        /// The part of the document that it belongs to, a place in `structure`; absent when it only repeats what is
        /// said elsewhere, as page numbers do.
        std::optional<std::size_t> element;
        bool operator==(const Text&) const = default;
    };
    struct Fill {
        Rectangle rectangle;
        Colour colour;
        bool operator==(const Fill&) const = default;
    };
    /// The line falls inside the rectangle.
    struct Stroke {
        Rectangle rectangle;
        Colour colour;
        bool operator==(const Stroke&) const = default;
    };
    struct Line {
        Point from, to;
        Colour colour;
        bool operator==(const Line&) const = default;
    };
    using Op = std::variant<Text, Fill, Stroke, Line>;
    using Page = std::vector<Op>;  ///< in the order of reading

    /// One column of a table.
    struct Column {
        std::string_view title;
        double width = 0;       ///< as a fraction of the content width
        bool right = false;     ///< aligned to the right
        bool namesRow = false;  ///< its cells say what their rows are about
    };
    /// An entry of the document's outline.
    struct Bookmark {
        std::string title;
        std::size_t page = 0;  ///< counted from 0
        double y = 0;
        bool operator==(const Bookmark&) const = default;
    };
    /// What the document says about itself. An empty text is left out.
    struct Properties {
        std::string title, author, creator;
        Date created{};
        bool operator==(const Properties&) const = default;
    };

    static constexpr double margin = 50;       ///< left, right and above
    static constexpr double lineWidth = 0.75;  ///< of lines and strokes
    /// A sheet of paper, US Letter unless said otherwise, and what of it is for what.
    struct Sheet {
        double width = 612, height = 792;

        constexpr double contentWidth() const { return width - 2 * margin; }
        constexpr double footerRule() const { return height - 66; }
        /// No text of the body reaches below.
        constexpr double contentEnd() const { return footerRule() - 12; }
        /// The height that an empty page has for the body.
        constexpr double contentHeight() const { return contentEnd() - margin; }
        bool operator==(const Sheet&) const = default;
    };

    Sheet sheet;
    std::vector<Page> pages;
    std::vector<Element> structure{{}};  ///< the document first, then in the order of reading
    std::vector<Bookmark> outline;
    Properties properties;
};

}  // namespace ScanKit
