#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"
#include "ScanKit/Reports/PDF/PDFTextMeasure.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

struct _PangoContext;
struct _PangoFontMap;
struct _PangoLayout;

namespace ScanKit {

/// The fonts, and the texts that were laid out with them: what measuring and drawing share.
class PDFTextLayouts : public PDFTextMeasure {
public:
    /// Gives back what the layout library counts references of.
    struct Unref {
        void operator()(void* object) const;
    };
    using Layout = std::unique_ptr<_PangoLayout, Unref>;
    /// One text broken into lines, ready to be drawn.
    struct LaidOut {
        Layout layout;
        bool inkRunsOut = false;  ///< some glyph reaches far beyond the lines and the width
    };
    /// A line of a text on its page: what it stands on.
    struct Baseline {
        double x = 0, y = 0, width = 0;
    };
    /// How far in points a glyph may lean out of its text, as many letters do a little.
    static constexpr double overhang = 1.5;

    PDFTextLayouts();

    /// False where there are none, and no file can be made of the built-in ones. Nothing may be laid out then: the
    /// measures would be arbitrary.
    bool hasFonts() const { return hasFonts_; }
    /// The text laid out; kept for when it comes again, until too many are kept.
    const LaidOut& laidOut(const PDFPages::AttributedString& string, double width, bool right);
    /// What a layout takes of the place that it is drawn at.
    static PDFPages::Rectangle extentOf(const Layout& layout, const PDFPages::Rectangle& place);
    /// The lines of what is drawn there.
    static std::vector<Baseline> baselinesOf(const Layout& layout, const PDFPages::Rectangle& place);

    std::vector<TextLine> lines(const PDFPages::AttributedString& string, double width) override;
    double width(const PDFPages::AttributedString& string) override;
    /// The characters of the text, each once, that no font has a picture of.
    std::u32string undrawable(const std::string& text) const;

private:
    /// The first printable characters of a font in one line, and the width of each.
    struct PlainWidths {
        double height = 0, baseline = 0;
        std::array<double, 128> of{};
    };
    struct Key {
        std::string text;
        PDFPages::Font font;
        double letterSpacing = 0, width = 0;
        bool right = false;
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

    /// Laid out from the text's given part alone, and not kept.
    Layout layoutOf(const PDFPages::AttributedString& string, std::string_view part, double width,
                    bool right) const;
    /// The same, with its words whole and its lines no further apart than they need to be.
    Layout wellSet(const PDFPages::AttributedString& string, std::string_view part, double width, bool right);
    /// The text as one line of the font itself, when it is sure to be one; absent when it has to be laid out to know.
    std::optional<TextLine> plainLine(const PDFPages::AttributedString& string, double width);
    const PlainWidths& plainWidths(const PDFPages::Font& font);

    std::unique_ptr<_PangoFontMap, Unref> fonts_;
    std::unique_ptr<_PangoContext, Unref> context_;
    bool hasFonts_ = false;
    std::unordered_map<Key, LaidOut, KeyHash> kept_;
    std::vector<std::pair<PDFPages::Font, PlainWidths>> plainWidths_;
};

}  // namespace ScanKit
