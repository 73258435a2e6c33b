#include "ScanKit/Reports/PDF/PDFCanvas.h"

#include "ScanKit/Reports/PDF/PDFStructure.h"
#include "ScanKit/Reports/PDF/PDFTextLayouts.h"

#include <algorithm>
#include <utility>

#include <cairo-pdf.h>
#include <fmt/format.h>
#include <pango/pangocairo.h>

namespace ScanKit {
namespace {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct DestroyContext {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, DestroySurface>;
using ContextPointer = std::unique_ptr<cairo_t, DestroyContext>;

cairo_status_t appendBytes(void* output, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(output)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

/// Draws operations onto the current page.
class Pen {
public:
    Pen(cairo_t* context, PDFTextLayouts& layouts) : context_(context), layouts_(layouts) {
        cairo_set_line_width(context, PDFPages::lineWidth);
    }

    /// Each text that belongs to the document becomes one numbered piece of the page: its place among them is its
    /// number. All else is one piece behind them, for no two operations overlap.
    void draw(const PDFPages::Page& page) {
        for (const PDFPages::Op& op : page) {
            if (isPart(op)) {
                cairo_tag_begin(context_, partTag, nullptr);
                std::visit(*this, op);
                cairo_tag_end(context_, partTag);
            }
        }
        cairo_tag_begin(context_, artifactTag, nullptr);
        for (const PDFPages::Op& op : page) {
            if (!isPart(op)) {
                std::visit(*this, op);
            }
        }
        strokeLines();
        cairo_tag_end(context_, artifactTag);
    }
    /// The places of all texts that were drawn and lead somewhere.
    std::vector<PDFPages::Rectangle> takeLinks() { return std::move(links_); }

    void operator()(const PDFPages::Text& text) {
        const PDFPages::Rectangle& place = text.rectangle;
        if (!layouts_.hasFonts()) {
            if (text.string.link && text.element) {
                links_.push_back(place);
            }
            return;
        }
        const PDFTextLayouts::LaidOut& laidOut = layouts_.laidOut(text.string, place.width, text.right);
        if (laidOut.inkRunsOut) {
            cairo_save(context_);
            cairo_rectangle(context_, place.x - PDFTextLayouts::overhang, place.y - PDFTextLayouts::overhang,
                            place.width + 2 * PDFTextLayouts::overhang,
                            place.height + 2 * PDFTextLayouts::overhang);
            cairo_clip(context_);
        }
        setColour(text.string.colour);
        cairo_move_to(context_, place.x, place.y);
        pango_cairo_show_layout(context_, laidOut.layout.get());
        if (text.string.link) {
            underline(text, laidOut.layout);
        }
        if (text.string.link && text.element) {
            links_.push_back(PDFTextLayouts::extentOf(laidOut.layout, place));
        }
        if (laidOut.inkRunsOut) {
            cairo_restore(context_);
        }
    }
    void operator()(const PDFPages::Fill& fill) {
        setColour(fill.colour);
        cairo_rectangle(context_, fill.rectangle.x, fill.rectangle.y, fill.rectangle.width,
                        fill.rectangle.height);
        cairo_fill(context_);
    }
    void operator()(const PDFPages::Stroke& stroke) {
        constexpr double inset = PDFPages::lineWidth / 2;
        setColour(stroke.colour);
        cairo_rectangle(context_, stroke.rectangle.x + inset, stroke.rectangle.y + inset,
                        stroke.rectangle.width - 2 * inset, stroke.rectangle.height - 2 * inset);
        cairo_stroke(context_);
    }
    void operator()(const PDFPages::Line& line) { addLine(line, PDFPages::lineWidth); }

private:
    static bool isPart(const PDFPages::Op& op) {
        const auto* text = std::get_if<PDFPages::Text>(&op);
        return text != nullptr && text->element;
    }

    /// Colour alone is lost on paper, and on many readers.
    void underline(const PDFPages::Text& text, const PDFTextLayouts::Layout& layout) {
        const double gap = 0.13 * text.string.font.size, width = 0.06 * text.string.font.size;
        for (const PDFTextLayouts::Baseline& line : PDFTextLayouts::baselinesOf(layout, text.rectangle)) {
            const double y = line.y + gap;
            addLine({{line.x, y}, {line.x + line.width, y}, text.string.colour}, width);
        }
    }
    void addLine(const PDFPages::Line& line, double width) {
        const auto isAlike = [&](const Lines& lines) {
            return lines.colour == line.colour && lines.width == width;
        };
        auto alike = std::ranges::find_if(lines_, isAlike);
        if (alike == lines_.end()) {
            alike = lines_.insert(lines_.end(), {.colour = line.colour, .width = width});
        }
        alike->lines.push_back(line);
    }
    /// All lines of one look at once: a page has one for each row and each link.
    void strokeLines() {
        for (const Lines& alike : lines_) {
            setColour(alike.colour);
            cairo_set_line_width(context_, alike.width);
            for (const PDFPages::Line& line : alike.lines) {
                cairo_move_to(context_, line.from.x, line.from.y);
                cairo_line_to(context_, line.to.x, line.to.y);
            }
            cairo_stroke(context_);
        }
        lines_.clear();
        cairo_set_line_width(context_, PDFPages::lineWidth);
    }

    void setColour(const PDFPages::Colour& colour) {
        cairo_set_source_rgb(context_, colour.red, colour.green, colour.blue);
    }

    cairo_t* context_;
    PDFTextLayouts& layouts_;
    struct Lines {
        PDFPages::Colour colour;
        double width = 0;
        std::vector<PDFPages::Line> lines;
    };
    std::vector<Lines> lines_;  ///< of the page, yet to be drawn
    std::vector<PDFPages::Rectangle> links_;
};

void setProperty(cairo_surface_t* surface, cairo_pdf_metadata_t which, const std::string& text) {
    if (!text.empty()) {
        cairo_pdf_surface_set_metadata(surface, which, text.c_str());
    }
}

/// The dates are given when the structure is.
void setProperties(cairo_surface_t* surface, const PDFPages::Properties& properties) {
    setProperty(surface, CAIRO_PDF_METADATA_TITLE, properties.title);
    setProperty(surface, CAIRO_PDF_METADATA_AUTHOR, properties.author);
    setProperty(surface, CAIRO_PDF_METADATA_CREATOR, properties.creator);
}

void addOutline(cairo_surface_t* surface, const std::vector<PDFPages::Bookmark>& outline) {
    for (const PDFPages::Bookmark& bookmark : outline) {
        const std::string place =
            fmt::format("page={} pos=[{} {}]", bookmark.page + 1, PDFPages::margin, bookmark.y);
        cairo_pdf_surface_add_outline(surface, CAIRO_PDF_OUTLINE_ROOT, bookmark.title.c_str(), place.c_str(),
                                      static_cast<cairo_pdf_outline_flags_t>(0));
    }
}

/// The tag around all pages makes one tree of theirs, which `withStructure` replaces.
void drawPages(cairo_t* context, Pen& pen, const std::vector<PDFPages::Page>& pages) {
    cairo_tag_begin(context, "Document", nullptr);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        pen.draw(pages[i]);
        if (i + 1 == pages.size()) {
            cairo_tag_end(context, "Document");
        }
        cairo_show_page(context);
    }
}

}  // namespace

PDFCanvas::PDFCanvas() : layouts_(std::make_unique<PDFTextLayouts>()) {}
PDFCanvas::~PDFCanvas() = default;

std::vector<PDFCanvas::TextLine> PDFCanvas::lines(const PDFPages::AttributedString& string, double width) {
    return layouts_->lines(string, width);
}

double PDFCanvas::width(const PDFPages::AttributedString& string) {
    return layouts_->width(string);
}

std::u32string PDFCanvas::undrawable(const std::string& text) const {
    return layouts_->undrawable(text);
}

std::string PDFCanvas::draw(const PDFPages& document) {
    std::string bytes;
    const SurfacePointer surface(cairo_pdf_surface_create_for_stream(
        &appendBytes, &bytes, document.sheet.width, document.sheet.height));
    setProperties(surface.get(), document.properties);
    const ContextPointer context(cairo_create(surface.get()));
    Pen pen(context.get(), *layouts_);
    drawPages(context.get(), pen, document.pages);
    addOutline(surface.get(), document.outline);
    cairo_surface_finish(surface.get());
    return withStructure(std::move(bytes), document, pen.takeLinks());
}

}  // namespace ScanKit
