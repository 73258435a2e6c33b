#pragma once

#include "ScanKit/Model/Flag.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// When colours are used; in the order in which the option's choices are listed.
enum class ColourUse { automatic, always, never };

/// How the text for a person is laid out.
struct TextStyle {
    std::optional<std::size_t> columns;  ///< text wraps at this width; it never wraps when absent
    bool colour = false;                 ///< headings are bold, flags are coloured by severity

    /// For what a file descriptor leads to. By itself a terminal gets colours, unless it knows none or NO_COLOR is set.
    static TextStyle of(int descriptor, ColourUse use);

    std::string bold(std::string_view text) const;
    /// The label of a flag. What needs no review has no colour.
    std::string flag(ScanKit::Flag flag) const;
    /// The text between words, its first line after `first` and the others after `next`, which are of ASCII. Each
    /// line ends in a line feed.
    std::string paragraph(std::string_view text, std::string_view first, std::string_view next) const;
    /// The items, parted by commas, each whole in its line where it fits into one.
    std::string list(const std::vector<std::string>& items, std::string_view indent) const;
    /// "Warning: " and the sentence as a paragraph.
    std::string warning(std::string_view sentence) const;
};
