#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"

#include <string>
#include <vector>

namespace ScanKit {

/// The names under which pieces of a page are drawn: each text that belongs to a part of the document, numbered from 0,
/// and all that decorates or repeats.
inline constexpr const char* partTag = "P";
inline constexpr const char* artifactTag = "Private";

/// Gives a document that was drawn from these pages what those who do not see it need: which text is a heading, a
/// paragraph, a table's cell, a link; the order of reading; the language and the title; what to leave out. The pages
/// look the same as before. docs/PDF.md says what the result keeps to. The same document gives the same bytes.
/// `links` has the places of all texts that lead somewhere, in their order. What is no PDF comes back as it is.
std::string withStructure(std::string drawn, const PDFPages& document,
                          const std::vector<PDFPages::Rectangle>& links);

}  // namespace ScanKit
