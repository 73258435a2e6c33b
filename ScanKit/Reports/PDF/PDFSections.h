#pragma once

#include "ScanKit/Reports/PDF/PDFContents.h"
#include "ScanKit/Reports/PDF/PDFText.h"

#include <vector>

namespace ScanKit {

class PDFLayout;

/// How many packages are under which license.
void addLicenses(PDFLayout& layout, const PDFContents& contents);
/// What needs a decision: each package with its flags and what is particular to it.
void addAttention(PDFLayout& layout, const PDFContents& contents);
/// The notes that several packages refer to; nothing without one.
void addSharedNotes(PDFLayout& layout, const PDFContents& contents);
/// Every package. The end of the list stays on one page with what follows, which is this high.
void addDependencies(PDFLayout& layout, const PDFContents& contents, double heightOfWhatFollows);

/// What the scan read and could not read, and what the report does not promise.
std::vector<PDFParagraph> aboutThisScan(const PDFContents& contents);

}  // namespace ScanKit
