#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"
#include "ScanKit/Reports/PDF/PDFTextMeasure.h"

#include <memory>
#include <string>
#include <vector>

namespace ScanKit {

class PDFTextLayouts;

/// Measures text and draws pages with the system's fonts. Making one loads the list of fonts; nothing does so
/// before. For one thread at a time; several may be in use on several threads. Letters that no installed font has are
/// drawn in the built-in family, and as boxes when that has none for them either.
class PDFCanvas : public PDFTextMeasure {
public:
    PDFCanvas();
    ~PDFCanvas() override;
    PDFCanvas(const PDFCanvas&) = delete;
    PDFCanvas& operator=(const PDFCanvas&) = delete;

    std::vector<TextLine> lines(const PDFPages::AttributedString& string, double width) override;
    double width(const PDFPages::AttributedString& string) override;

    /// The characters of the text, each once, that no font has a picture of.
    std::u32string undrawable(const std::string& text) const;

    /// The document as bytes. The same pages give the same bytes wherever the same fonts are.
    std::string draw(const PDFPages& document);

private:
    std::unique_ptr<PDFTextLayouts> layouts_;
};

}  // namespace ScanKit
