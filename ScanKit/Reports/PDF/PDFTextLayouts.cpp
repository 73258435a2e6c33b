#include "ScanKit/Reports/PDF/PDFTextLayouts.h"

#include "ScanKit/Reports/PDF/PDFFontMap.h"
#include "ScanKit/Reports/PDF/PDFWholeWords.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>

#include <hb.h>
#include <pango/pangocairo.h>

namespace ScanKit {
namespace {

struct FreeDescription {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using FontDescriptionPointer = std::unique_ptr<PangoFontDescription, FreeDescription>;

int inPangoUnits(double points) {
    return static_cast<int>(std::min(points, 1'000'000.0) * PANGO_SCALE);
}

double inPoints(int pangoUnits) {
    return static_cast<double>(pangoUnits) / PANGO_SCALE;
}

/// The height of a line in terms of its font's own. The fonts of other scripts may have higher lines, which are as high
/// as these at the least, and no higher than the fonts themselves ask for.
constexpr double leading = 1.25;

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

/// The blank at which a line was broken is drawn without a width: readers that go by letters alone would take the words
/// around the break for one.
void drawFinalBlanks(PangoLayout* layout) {
    for (GSList* line = pango_layout_get_lines(layout); line != nullptr; line = line->next) {
        const GSList* const last = g_slist_last(static_cast<PangoLayoutLine*>(line->data)->runs);
        if (last == nullptr || line->next == nullptr) {
            continue;
        }
        const auto* run = static_cast<PangoGlyphItem*>(last->data);
        PangoGlyphInfo& glyph = run->glyphs->glyphs[run->glyphs->num_glyphs - 1];
        hb_codepoint_t blank = 0;
        if (glyph.glyph == PANGO_GLYPH_EMPTY &&
            hb_font_get_nominal_glyph(pango_font_get_hb_font(run->item->analysis.font), ' ', &blank) != 0) {
            glyph.glyph = blank;
        }
    }
}

/// The height of a line of this font alone, without any leading.
double ownHeight(PangoFont* font) {
    PangoRectangle logical{};
    pango_font_get_glyph_extents(font, 0, nullptr, &logical);
    return inPoints(logical.height);
}

/// Adds the attribute of each range to those that the layout has. Ranges beside each other stay apart.
template <class Attribute>
void addAttributes(PangoLayout* layout, const std::vector<PDFTextRange>& ranges, Attribute attributeOf) {
    if (ranges.empty()) {
        return;
    }
    PangoAttrList* attributes = pango_attr_list_copy(pango_layout_get_attributes(layout));
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        PangoAttribute* attribute = attributeOf(i);
        attribute->start_index = static_cast<guint>(ranges[i].begin);
        attribute->end_index = static_cast<guint>(ranges[i].end);
        pango_attr_list_insert(attributes, attribute);
    }
    pango_layout_set_attributes(layout, attributes);
    pango_attr_list_unref(attributes);
}

void appendLines(std::vector<PDFTextMeasure::TextLine>& lines, PangoLayout* layout, std::size_t begin) {
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

}  // namespace

void PDFTextLayouts::Unref::operator()(void* object) const {
    g_object_unref(object);
}

/// Metrics as the fonts have them: no hinting, no rounding, one unit a point, whatever the screen or the
/// user's language.
PDFTextLayouts::PDFTextLayouts()
    : fonts_(newFontMap()), context_(pango_font_map_create_context(fonts_.get())) {
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fonts_.get()), 72);
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
    pango_context_set_base_dir(context_.get(), PANGO_DIRECTION_LTR);
    pango_context_set_language(context_.get(), pango_language_from_string("en-us"));
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_.get(), options);
    cairo_font_options_destroy(options);
    const std::unique_ptr<PangoFont, Unref> font(
        pango_font_map_load_font(fonts_.get(), context_.get(), describe({}).get()));
    hasFonts_ = font != nullptr;
}

PDFTextLayouts::Layout PDFTextLayouts::layoutOf(const PDFPages::AttributedString& string,
                                                std::string_view part, double width, bool right) const {
    Layout layout(pango_layout_new(context_.get()));
    pango_layout_set_font_description(layout.get(), describe(string.font).get());

    // A hyphen at a break would be copied along with a name or an address.
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(FALSE));
    pango_attr_list_insert(attributes, pango_attr_line_height_new(leading));
    // Letters that join into one glyph are two for whoever searches, copies or listens.
    pango_attr_list_insert(attributes, pango_attr_font_features_new("liga=0, clig=0"));
    if (string.letterSpacing > 0) {
        pango_attr_list_insert(attributes, pango_attr_letter_spacing_new(inPangoUnits(string.letterSpacing)));
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

PDFTextLayouts::Layout PDFTextLayouts::wellSet(const PDFPages::AttributedString& string,
                                               std::string_view part, double width, bool right) {
    Layout layout = layoutOf(string, part, width, right);
    if (part.size() == string.text.size() && plainLine(string, width)) {
        return layout;  // One line has no ends to choose, and its font is the one that all others are measured by.
    }
    const PlainWidths& plain = plainWidths(string.font);
    if (string.letterSpacing == 0) {
        const std::vector<PDFTextRange> words = wholeWords(part, width, plain.of);
        addAttributes(layout.get(), words, [](std::size_t) { return pango_attr_allow_breaks_new(FALSE); });
    }
    std::vector<PDFTextRange> tallRuns;
    std::vector<double> heights;
    for (GSList* line = pango_layout_get_lines_readonly(layout.get()); line != nullptr; line = line->next) {
        for (GSList* run = static_cast<PangoLayoutLine*>(line->data)->runs; run != nullptr; run = run->next) {
            const PangoItem& item = *static_cast<PangoGlyphItem*>(run->data)->item;
            const double own = ownHeight(item.analysis.font);
            if (own * leading > plain.height * 1.01) {
                const auto begin = static_cast<std::size_t>(item.offset);
                tallRuns.push_back({begin, begin + static_cast<std::size_t>(item.length)});
                heights.push_back(std::max(1.0, plain.height / own));
            }
        }
    }
    addAttributes(layout.get(), tallRuns,
                  [&](std::size_t i) { return pango_attr_line_height_new(heights[i]); });
    return layout;
}

const PDFTextLayouts::LaidOut& PDFTextLayouts::laidOut(const PDFPages::AttributedString& string, double width,
                                                       bool right) {
    Key key{.text = string.text,
            .font = string.font,
            .letterSpacing = string.letterSpacing,
            .width = width,
            .right = right};
    if (const auto found = kept_.find(key); found != kept_.end()) {
        return found->second;
    }
    if (kept_.size() >= mostKept) {
        kept_.clear();
    }
    LaidOut made{.layout = wellSet(string, string.text, width, right)};
    if (string.letterSpacing > 0) {
        joinLetters(made.layout.get());
    }
    drawFinalBlanks(made.layout.get());
    PangoRectangle ink{}, logical{};
    pango_layout_get_extents(made.layout.get(), &ink, &logical);
    const int lean = inPangoUnits(overhang);
    made.inkRunsOut = ink.x < -lean || ink.y < -lean || ink.x + ink.width > inPangoUnits(width) + lean ||
                      ink.y + ink.height > logical.height + lean;
    return kept_.emplace(std::move(key), std::move(made)).first->second;
}

const PDFTextLayouts::PlainWidths& PDFTextLayouts::plainWidths(const PDFPages::Font& font) {
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
    const Layout layout = layoutOf(all, all.text, 1'000'000, false);
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

std::optional<PDFTextMeasure::TextLine> PDFTextLayouts::plainLine(const PDFPages::AttributedString& string,
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
    return PDFTextMeasure::TextLine{
        .end = string.text.size(), .height = widths.height, .baseline = widths.baseline};
}

std::vector<PDFTextLayouts::TextLine> PDFTextLayouts::lines(const PDFPages::AttributedString& string,
                                                            double width) {
    if (!hasFonts_) {
        return {{.end = string.text.size(), .height = string.font.size, .baseline = string.font.size}};
    }
    if (const std::optional<TextLine> line = plainLine(string, width)) {
        return {*line};
    }
    std::vector<TextLine> lines;
    if (string.text.size() <= partSize) {
        appendLines(lines, laidOut(string, width, false).layout.get(), 0);
        return lines;
    }
    for (std::size_t begin = 0; begin < string.text.size(); begin = lines.back().end) {
        const std::size_t end = partEnd(string.text, begin);
        const std::size_t before = lines.size();
        const auto part = std::string_view(string.text).substr(begin, end - begin);
        appendLines(lines, wellSet(string, part, width, false).get(), begin);
        // The last line of a part would have gone on: it begins the next part.
        if (end < string.text.size() && lines.size() > before + 1) {
            lines.pop_back();
        }
    }
    return lines;
}

double PDFTextLayouts::width(const PDFPages::AttributedString& string) {
    if (!hasFonts_) {
        return 0;
    }
    const auto layout = layoutOf(string, string.text, 1'000'000, false);
    PangoRectangle logical{};
    pango_layout_get_extents(layout.get(), nullptr, &logical);
    return inPoints(logical.width);
}

std::u32string PDFTextLayouts::undrawable(const std::string& text) const {
    const PDFPages::AttributedString string{.text = text};
    const auto layout = layoutOf(string, text, 1'000'000, false);
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

PDFPages::Rectangle PDFTextLayouts::extentOf(const Layout& layout, const PDFPages::Rectangle& place) {
    PangoRectangle logical{};
    pango_layout_get_extents(layout.get(), nullptr, &logical);
    return {place.x + inPoints(logical.x), place.y + inPoints(logical.y), inPoints(logical.width),
            inPoints(logical.height)};
}

std::vector<PDFTextLayouts::Baseline> PDFTextLayouts::baselinesOf(const Layout& layout,
                                                                  const PDFPages::Rectangle& place) {
    std::vector<Baseline> baselines;
    PangoLayoutIter* iterator = pango_layout_get_iter(layout.get());
    do {
        PangoRectangle logical{};
        pango_layout_iter_get_line_extents(iterator, nullptr, &logical);
        baselines.push_back({.x = place.x + inPoints(logical.x),
                             .y = place.y + inPoints(pango_layout_iter_get_baseline(iterator)),
                             .width = inPoints(logical.width)});
    } while (pango_layout_iter_next_line(iterator));
    pango_layout_iter_free(iterator);
    return baselines;
}

}  // namespace ScanKit
