#include "ScanKit/Reports/PDF/PDFCanvas.h"

#include "ScanKit/Reports/PDF/PDFFontMap.h"
#include "ScanKit/Reports/PDF/PDFStructure.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <cairo-pdf.h>
#include <fmt/format.h>
#include <pango/pangocairo.h>

namespace ScanKit {
namespace {

/// Releases what a library counts references of.
template <auto release>
struct Released {
    template <typename Object>
    void operator()(Object* object) const {
        release(object);
    }
};
template <typename Object>
using GObjectPointer = std::unique_ptr<Object, Released<g_object_unref>>;
using SurfacePointer = std::unique_ptr<cairo_surface_t, Released<cairo_surface_destroy>>;
using FontDescriptionPointer = std::unique_ptr<PangoFontDescription, Released<pango_font_description_free>>;
using ContextPointer = std::unique_ptr<cairo_t, Released<cairo_destroy>>;

int inPangoUnits(double points) {
    return static_cast<int>(std::min(points, 1'000'000.0) * PANGO_SCALE);
}

double inPoints(int pangoUnits) {
    return static_cast<double>(pangoUnits) / PANGO_SCALE;
}

/// One text broken into lines, ready to be drawn.
struct LaidOut {
    GObjectPointer<PangoLayout> layout;
    bool inkRunsOut = false;  ///< some glyph reaches far beyond the lines and the width
};

/// How far in points a glyph may lean out of its text, as many letters do a little.
constexpr double overhang = 1.5;

/// The height of a line in terms of its font's own.
constexpr double leading = 1.25;

/// The first printable characters of a font in one line, and the width of each.
struct PlainWidths {
    double height = 0, baseline = 0;
    std::array<double, 128> of{};
};

/// Makes one unit of each run of letters: spaced letters taken one by one would be read as words of one
/// letter each when the text is searched or copied.
void joinLetters(PangoLayout* layout) {
    for (GSList* line = pango_layout_get_lines(layout); line != nullptr; line = line->next) {
        for (GSList* run = static_cast<PangoLayoutLine*>(line->data)->runs; run != nullptr; run = run->next) {
            PangoGlyphString* glyphs = static_cast<PangoGlyphItem*>(run->data)->glyphs;
            std::fill_n(glyphs->log_clusters, glyphs->num_glyphs, 0);
        }
    }
}

FontDescriptionPointer describe(const PDFPages::Font& font) {
    FontDescriptionPointer description(pango_font_description_new());
    pango_font_description_set_family_static(description.get(), "Helvetica");
    pango_font_description_set_weight(description.get(), font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(description.get(), font.size * PANGO_SCALE);
    return description;
}

/// The fonts, and the texts that were laid out with them.
class Layouts {
public:
    Layouts();

    /// False where there are none, and no file can be made of the built-in ones. Nothing may be laid out then: the measures would be arbitrary.
    bool hasFonts() const { return hasFonts_; }
    /// The text laid out; kept for when it comes again, until too many are kept.
    const LaidOut& laidOut(const PDFPages::AttributedString& string, double width, bool right);
    /// Laid out from the text's given part alone, and not kept.
    GObjectPointer<PangoLayout> layoutOf(const PDFPages::AttributedString& string, std::string_view part,
                                         double width, bool right) const;
    /// The text as one line of the font itself, when it is sure to be one; absent when it has to be laid out
    /// to know.
    std::optional<PDFCanvas::TextLine> plainLine(const PDFPages::AttributedString& string, double width);

private:
    const PlainWidths& plainWidths(const PDFPages::Font& font);

    struct Key {
        std::string text;
        PDFPages::Font font;
        double letterSpacing = 0, width = 0;
        bool right = false, leads = false;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            const double look = key.font.size * 1'000 + key.width + (key.right ? 0.5 : 0);
            return std::hash<std::string>{}(key.text) ^ std::hash<double>{}(look);
        }
    };
    /// Bounds the memory; the few texts that really repeat are soon laid out again.
    static constexpr std::size_t mostKept = 4'096;

    GObjectPointer<PangoFontMap> fonts_;
    GObjectPointer<PangoContext> context_;
    bool hasFonts_ = false;
    std::unordered_map<Key, LaidOut, KeyHash> kept_;
    std::vector<std::pair<PDFPages::Font, PlainWidths>> plainWidths_;
};

/// Metrics as the fonts have them: no hinting, no rounding, one unit a point, whatever the screen or the
/// user's language. Text runs from left to right; what is written otherwise is so inside it.
Layouts::Layouts() : fonts_(newFontMap()), context_(pango_font_map_create_context(fonts_.get())) {
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fonts_.get()), 72);
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
    pango_context_set_base_dir(context_.get(), PANGO_DIRECTION_LTR);
    pango_context_set_language(context_.get(), pango_language_from_string("en-us"));
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_.get(), options);
    cairo_font_options_destroy(options);
    const GObjectPointer<PangoFont> font(
        pango_font_map_load_font(fonts_.get(), context_.get(), describe({}).get()));
    hasFonts_ = font != nullptr;
}

GObjectPointer<PangoLayout> Layouts::layoutOf(const PDFPages::AttributedString& string, std::string_view part,
                                              double width, bool right) const {
    GObjectPointer<PangoLayout> layout(pango_layout_new(context_.get()));
    pango_layout_set_font_description(layout.get(), describe(string.font).get());

    // A hyphen at a break would be copied along with a name or an address.
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(FALSE));
    pango_attr_list_insert(attributes, pango_attr_line_height_new(leading));
    if (string.letterSpacing > 0) {
        pango_attr_list_insert(attributes, pango_attr_letter_spacing_new(inPangoUnits(string.letterSpacing)));
    }
    if (string.link) {
        // Colour alone is lost on paper, and on many readers.
        pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
    }
    pango_layout_set_attributes(layout.get(), attributes);
    pango_attr_list_unref(attributes);

    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    // A text in Arabic or Hebrew has its punctuation as those have it, and stands on the same side as all others:
    // in such a text, left means the side that it begins on.
    const bool turns = Text::isRightToLeft(part);
    pango_layout_set_auto_dir(layout.get(), turns);
    pango_layout_set_alignment(layout.get(), right != turns ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT);
    pango_layout_set_width(layout.get(), inPangoUnits(width));
    pango_layout_set_text(layout.get(), part.data(), static_cast<int>(part.size()));
    return layout;
}

const LaidOut& Layouts::laidOut(const PDFPages::AttributedString& string, double width, bool right) {
    Key key{.text = string.text,
            .font = string.font,
            .letterSpacing = string.letterSpacing,
            .width = width,
            .right = right,
            .leads = string.link.has_value()};
    if (const auto found = kept_.find(key); found != kept_.end()) {
        return found->second;
    }
    if (kept_.size() >= mostKept) {
        kept_.clear();
    }
    LaidOut made{.layout = layoutOf(string, string.text, width, right)};
    if (string.letterSpacing > 0) {
        joinLetters(made.layout.get());
    }
    PangoRectangle ink{}, logical{};
    pango_layout_get_extents(made.layout.get(), &ink, &logical);
    const int lean = inPangoUnits(overhang);
    made.inkRunsOut = ink.x < -lean || ink.y < -lean || ink.x + ink.width > inPangoUnits(width) + lean ||
                      ink.y + ink.height > logical.height + lean;
    return kept_.emplace(std::move(key), std::move(made)).first->second;
}

const PlainWidths& Layouts::plainWidths(const PDFPages::Font& font) {
    for (const auto& [known, widths] : plainWidths_) {
        if (known == font) {
            return widths;
        }
    }
    // In the order of their codes no two of them join into one glyph.
    PDFPages::AttributedString all{.font = font};
    for (char c = ' '; c <= '~'; ++c) {
        all.text += c;
    }
    const GObjectPointer<PangoLayout> layout = layoutOf(all, all.text, 1'000'000, false);
    PlainWidths widths;
    for (int i = 0; i < static_cast<int>(all.text.size()); ++i) {
        PangoRectangle place{};
        pango_layout_index_to_pos(layout.get(), i, &place);
        widths.of[static_cast<std::size_t>(' ' + i)] = inPoints(place.width);
    }
    PangoRectangle logical{};
    pango_layout_get_extents(layout.get(), nullptr, &logical);
    widths.height = inPoints(logical.height);
    widths.baseline = inPoints(pango_layout_get_baseline(layout.get()));
    return plainWidths_.emplace_back(font, widths).second;
}

std::optional<PDFCanvas::TextLine> Layouts::plainLine(const PDFPages::AttributedString& string,
                                                      double width) {
    const PlainWidths& widths = plainWidths(string.font);
    double sum = 0;
    for (const char c : string.text) {
        if (c < ' ' || c > '~') {
            return std::nullopt;
        }
        sum += widths.of[static_cast<std::size_t>(c)] + string.letterSpacing;
        // Pairs of letters may stand somewhat wider than the letters alone.
        if (sum * 1.1 > width) {
            return std::nullopt;
        }
    }
    return PDFCanvas::TextLine{
        .end = string.text.size(), .height = widths.height, .baseline = widths.baseline};
}

void appendLines(std::vector<PDFCanvas::TextLine>& lines, PangoLayout* layout, std::size_t begin) {
    PangoLayoutIter* iterator = pango_layout_get_iter(layout);
    do {
        const PangoLayoutLine* line = pango_layout_iter_get_line_readonly(iterator);
        int top = 0, bottom = 0;
        pango_layout_iter_get_line_yrange(iterator, &top, &bottom);
        lines.push_back({.end = begin + static_cast<std::size_t>(line->start_index + line->length),
                         .height = inPoints(bottom - top),
                         .baseline = inPoints(pango_layout_iter_get_baseline(iterator) - top)});
    } while (pango_layout_iter_next_line(iterator));
    pango_layout_iter_free(iterator);
}

/// Laying out a text takes more than its share of time when the text is long, so it is cut into parts of
/// about this many bytes.
constexpr std::size_t partSize = 4'096;

/// The end of the part that begins here: never inside a character's bytes.
std::size_t partEnd(std::string_view text, std::size_t begin) {
    std::size_t end = std::min(text.size(), begin + partSize);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return end;
}

cairo_status_t appendBytes(void* output, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(output)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

/// Draws operations onto the current page.
class Pen {
public:
    Pen(cairo_t* context, Layouts& layouts) : context_(context), layouts_(layouts) {
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
        const LaidOut& laidOut = layouts_.laidOut(text.string, place.width, text.right);
        if (laidOut.inkRunsOut) {
            cairo_save(context_);
            cairo_rectangle(context_, place.x - overhang, place.y - overhang, place.width + 2 * overhang,
                            place.height + 2 * overhang);
            cairo_clip(context_);
        }
        setColour(text.string.colour);
        cairo_move_to(context_, place.x, place.y);
        pango_cairo_show_layout(context_, laidOut.layout.get());
        if (text.string.link && text.element) {
            links_.push_back(extentOf(laidOut.layout.get(), place));
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
    void operator()(const PDFPages::Line& line) {
        setColour(line.colour);
        cairo_move_to(context_, line.from.x, line.from.y);
        cairo_line_to(context_, line.to.x, line.to.y);
        cairo_stroke(context_);
    }

private:
    static bool isPart(const PDFPages::Op& op) {
        const auto* text = std::get_if<PDFPages::Text>(&op);
        return text != nullptr && text->element;
    }

    void setColour(const PDFPages::Colour& colour) {
        cairo_set_source_rgb(context_, colour.red, colour.green, colour.blue);
    }

    /// What the text takes of its place.
    static PDFPages::Rectangle extentOf(PangoLayout* layout, const PDFPages::Rectangle& place) {
        PangoRectangle logical{};
        pango_layout_get_extents(layout, nullptr, &logical);
        return {place.x + inPoints(logical.x), place.y + inPoints(logical.y), inPoints(logical.width),
                inPoints(logical.height)};
    }

    cairo_t* context_;
    Layouts& layouts_;
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

struct PDFCanvas::Fonts {
    Layouts layouts;
};

PDFCanvas::PDFCanvas() : fonts_(std::make_unique<Fonts>()) {}
PDFCanvas::~PDFCanvas() = default;

std::vector<PDFCanvas::TextLine> PDFCanvas::lines(const PDFPages::AttributedString& string, double width) {
    Layouts& layouts = fonts_->layouts;
    if (!layouts.hasFonts()) {
        return {{.end = string.text.size(), .height = string.font.size, .baseline = string.font.size}};
    }
    if (const std::optional<TextLine> line = layouts.plainLine(string, width)) {
        return {*line};
    }
    std::vector<TextLine> lines;
    if (string.text.size() <= partSize) {
        appendLines(lines, layouts.laidOut(string, width, false).layout.get(), 0);
        return lines;
    }
    for (std::size_t begin = 0; begin < string.text.size(); begin = lines.back().end) {
        const std::size_t end = partEnd(string.text, begin);
        const std::size_t before = lines.size();
        const auto part = std::string_view(string.text).substr(begin, end - begin);
        appendLines(lines, layouts.layoutOf(string, part, width, false).get(), begin);
        // The last line of a part would have gone on: it begins the next part.
        if (end < string.text.size() && lines.size() > before + 1) {
            lines.pop_back();
        }
    }
    return lines;
}

double PDFCanvas::width(const PDFPages::AttributedString& string) {
    if (!fonts_->layouts.hasFonts()) {
        return 0;
    }
    const auto layout = fonts_->layouts.layoutOf(string, string.text, 1'000'000, false);
    PangoRectangle logical{};
    pango_layout_get_extents(layout.get(), nullptr, &logical);
    return inPoints(logical.width);
}

std::u32string PDFCanvas::undrawable(const std::string& text) {
    const PDFPages::AttributedString string{.text = text};
    const auto layout = fonts_->layouts.layoutOf(string, text, 1'000'000, false);
    std::u32string missing;
    for (GSList* line = pango_layout_get_lines_readonly(layout.get()); line != nullptr; line = line->next) {
        for (GSList* run = static_cast<PangoLayoutLine*>(line->data)->runs; run != nullptr; run = run->next) {
            const PangoGlyphString* glyphs = static_cast<PangoGlyphItem*>(run->data)->glyphs;
            for (int i = 0; i < glyphs->num_glyphs; ++i) {
                const PangoGlyph glyph = glyphs->glyphs[i].glyph;
                const auto character = static_cast<char32_t>(glyph & ~PANGO_GLYPH_UNKNOWN_FLAG);
                if ((glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0 && glyph != PANGO_GLYPH_EMPTY &&
                    missing.find(character) == std::u32string::npos) {
                    missing += character;
                }
            }
        }
    }
    return missing;
}

std::string PDFCanvas::draw(const PDFPages& document) {
    std::string bytes;
    const SurfacePointer surface(cairo_pdf_surface_create_for_stream(
        &appendBytes, &bytes, document.sheet.width, document.sheet.height));
    setProperties(surface.get(), document.properties);
    const ContextPointer context(cairo_create(surface.get()));
    Pen pen(context.get(), fonts_->layouts);
    drawPages(context.get(), pen, document.pages);
    addOutline(surface.get(), document.outline);
    cairo_surface_finish(surface.get());
    return withStructure(std::move(bytes), document, pen.takeLinks());
}

}  // namespace ScanKit
