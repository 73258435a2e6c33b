#pragma once

#include "ScanKit/Model/Flag.h"
#include "ScanKit/Reports/PDF/PDFPages.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

class PDFTextMeasure;

/// How text of one kind looks. Greys and one dark blue, so that everything reads in black and white.
struct PDFStyle {
    PDFPages::Font font;
    PDFPages::Colour colour;
    double letterSpacing = 0;

    PDFPages::AttributedString operator()(std::string_view text) const;
};

namespace PDFColours {
inline constexpr PDFPages::Colour ink{0.10, 0.10, 0.11};
inline constexpr PDFPages::Colour quiet{0.38, 0.38, 0.40};
inline constexpr PDFPages::Colour link{0.05, 0.22, 0.45};
inline constexpr PDFPages::Colour rule{0.84, 0.84, 0.85};
inline constexpr PDFPages::Colour strongRule{0.45, 0.45, 0.47};
}  // namespace PDFColours

/// The text as a page shows it: valid UTF-8, line breaks and control characters as blanks, without the
/// characters that turn the direction of what follows them.
std::string displayText(std::string_view text);
/// A name for the middle of a sentence: one that is read from right to left keeps its punctuation on its own side.
std::string keepingDirection(std::string_view name);
/// The same for what a sentence has between “ and ”.
std::string keepingQuotedDirection(std::string_view sentence);
/// A path or an address, its folders from left to right, whatever each of them is written in.
std::string keepingPathDirection(std::string_view path);
/// Where a package comes from, for a reader on paper: the address without its scheme, and without what begins with the
/// package's name, which stands beside it: "github.com/acme", "registry.example.com".
std::string shownSource(std::string_view source, std::string_view packageName);
/// The address with every byte escaped that does not belong into one; absent unless it is http or https.
std::optional<std::string> linkAddress(std::string_view address);

/// One paragraph of a block or table cell.
struct PDFParagraph {
    PDFPages::AttributedString string;
    double gapAbove = 0;
    bool right = false;
    std::optional<Flag::Severity> meter;  ///< drawn before the first line
    PDFPages::Role role = PDFPages::Role::paragraph;
    bool staysWithNext = false;          ///< on one page with the beginning of the next paragraph
    std::optional<std::size_t> element;  ///< what its text belongs to; absent for what only repeats
};

/// Paragraphs set below each other in a width. Their lines are handed out to one page after the other.
class PDFTextBlock {
public:
    PDFTextBlock(std::vector<PDFParagraph> paragraphs, double width, PDFTextMeasure& measure);

    /// Of all lines that are not placed yet.
    double height() const { return height_; }
    /// How far below the block's top its next line stands; 0 when all are placed.
    double baseline() const { return isPlaced() ? 0 : lines_[next_].gapAbove + lines_[next_].baseline; }
    bool isPlaced() const { return next_ == lines_.size(); }
    /// The height of the next line, with the gap above it; 0 when all are placed.
    double nextHeight() const { return isPlaced() ? 0 : lines_[next_].gapAbove + lines_[next_].height; }
    /// Places as many lines as fit into `room`, but at least one, with the top left corner at this point.
    /// Returns the height that they take.
    double place(PDFPages::Page& page, PDFPages::Point corner, double room);

private:
    struct Line {
        std::size_t paragraph = 0;
        std::size_t begin = 0, end = 0;  ///< byte offsets into its text
        double gapAbove = 0, height = 0, baseline = 0;
    };
    std::size_t endOfFitting(double room) const;
    /// An end that parts no paragraph behind its first line nor before its last, where that can be helped.
    std::size_t withoutLonelyLine(std::size_t end) const;
    double placeParagraph(PDFPages::Page& page, PDFPages::Point corner, std::size_t end);

    std::vector<PDFParagraph> paragraphs_;
    std::vector<Line> lines_;
    std::size_t next_ = 0;
    double width_;
    double height_ = 0;
};

}  // namespace ScanKit
