#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"
#include "ScanKit/Reports/PDF/PDFTextMeasure.h"

#include <memory>
#include <string>
#include <vector>

namespace ScanKit {

/// Measures text and draws pages with the system's fonts. Making one loads the list of fonts; nothing does so
/// before. For one thread at a time; several may be in use on several threads. On a machine without any font
/// texts take room but are not drawn, and the document is still valid.
class PDFCanvas : public PDFTextMeasure {
public:
    PDFCanvas();
    ~PDFCanvas() override;
    PDFCanvas(const PDFCanvas&) = delete;
    PDFCanvas& operator=(const PDFCanvas&) = delete;

    std::vector<TextLine> lines(const PDFPages::AttributedString& string, double width) override;
    double width(const PDFPages::AttributedString& string) override;

    /// The document as bytes. The same pages give the same bytes wherever the same fonts are.
    std::string draw(const PDFPages& document);

private:
    struct Fonts;
    std::unique_ptr<Fonts> fonts_;
};

}  // namespace ScanKit
