#include "ScanKit/Reports/PDF/PDFText.h"

#include "ScanKit/Reports/PDF/PDFTextMeasure.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

namespace ScanKit {
namespace {

/// Three squares beside a text, as many of them filled as the severity says.
constexpr double meterSquare = 4.5, meterGap = 1.5;
constexpr double meterWidth = 3 * meterSquare + 2 * meterGap + 5;

void drawMeter(PDFPages::Page& page, Flag::Severity severity, PDFPages::Point corner, double lineHeight) {
    const double top = corner.y + (lineHeight - meterSquare) / 2;
    for (int i = 0; i < 3; ++i) {
        const PDFPages::Rectangle square{corner.x + i * (meterSquare + meterGap), top, meterSquare,
                                         meterSquare};
        if (i <= static_cast<int>(severity)) {
            page.emplace_back(PDFPages::Fill{square, PDFColours::ink});
        } else {
            page.emplace_back(PDFPages::Stroke{square, PDFColours::strongRule});
        }
    }
}

bool isPlainText(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

/// Whether an address is over behind a name in it: ".git", "-1.0.tgz", a registry's "/-/", but neither "-js" nor "/other".
bool endsAddress(std::string_view rest) {
    const bool isVersion = rest.size() > 1 && rest[0] == '-' && rest[1] >= '0' && rest[1] <= '9';
    return rest.empty() || rest == "/" || rest[0] == '?' || rest[0] == '#' || isVersion ||
           rest.starts_with("/-/") || rest.starts_with(".git") || rest == ".tgz" || rest == ".tar.gz" ||
           rest == ".zip";
}

/// Embeddings, overrides and isolates: a name could show the text around it in another order.
bool embeds(char32_t scalar) {
    return (scalar >= 0x202A && scalar <= 0x202E) || (scalar >= 0x2066 && scalar <= 0x2069);
}

}  // namespace

PDFPages::AttributedString PDFStyle::operator()(std::string_view text) const {
    return {.text = displayText(text), .font = font, .colour = colour, .letterSpacing = letterSpacing};
}

std::string displayText(std::string_view text) {
    if (isPlainText(text)) {
        return std::string(text);
    }
    const std::string valid = Text::validUtf8(std::string(text));
    std::string shown;
    shown.reserve(valid.size());
    for (std::size_t end = 0; end < valid.size();) {
        const std::size_t begin = end;
        const char32_t scalar = Text::nextScalar(valid, end);
        if (Text::isControl(scalar) || Text::isLineBreak(scalar)) {
            shown += ' ';
            // Left out rather than shown: a mark in a name would only puzzle the reader of a report.
        } else if (!embeds(scalar)) {
            shown.append(valid, begin, end - begin);
        }
    }
    return shown;
}

std::string keepingDirection(std::string_view name) {
    // The mark before the others keeps the sentence itself from being taken for one that is read from the right.
    return Text::isRightToLeft(name) ? fmt::format("\u200E\u200F{}\u200F", name) : std::string(name);
}

std::string keepingQuotedDirection(std::string_view sentence) {
    static constexpr std::string_view open = "“", close = "”";
    std::string kept;
    std::size_t done = 0;
    for (std::size_t at = sentence.find(open); at != std::string_view::npos; at = sentence.find(open, done)) {
        const std::size_t begin = at + open.size(), end = sentence.find(close, begin);
        if (end == std::string_view::npos) {
            break;
        }
        kept += sentence.substr(done, begin - done);
        kept += keepingDirection(sentence.substr(begin, end - begin));
        done = end;
    }
    return kept.append(sentence.substr(done));
}

std::string keepingPathDirection(std::string_view path) {
    std::string kept;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string_view name = path.substr(begin, end - begin);
        // The mark behind a name keeps numbers and slashes that follow from being read from the right, too.
        kept += Text::isRightToLeft(name) ? keepingDirection(name) + "\u200E" : std::string(name);
        kept += path.substr(end, 1);
        begin = end + 1;
    }
    return kept;
}

std::string shownSource(std::string_view source, std::string_view packageName) {
    const std::size_t scheme = source.find("://");
    const std::string_view address = scheme == std::string_view::npos ? source : source.substr(scheme + 3);
    const std::string lowercased = Text::lowercased(address), name = "/" + Text::lowercased(packageName);
    std::size_t shown = address.size();
    for (std::size_t at = lowercased.find(name); at != std::string::npos;
         at = lowercased.find(name, at + 1)) {
        const std::string_view rest = std::string_view(lowercased).substr(at + name.size());
        if (at > 0 && !packageName.empty() && endsAddress(rest)) {
            shown = at;
        }
        // A registry has the name again behind this; else an owner may be called what the package is.
        if (shown == at && rest.starts_with("/-/")) {
            break;
        }
    }
    return std::string(address.substr(0, shown));
}

std::optional<std::string> linkAddress(std::string_view address) {
    const std::string scheme = Text::lowercased(address.substr(0, address.find(':')));
    // Whatever else a package calls its source, a report must not offer it for a click.
    if ((scheme != "http" && scheme != "https") || !address.substr(scheme.size()).starts_with("://")) {
        return std::nullopt;
    }
    std::string escaped;
    escaped.reserve(address.size());
    for (const char c : address) {
        if (c > ' ' && c < 0x7F && std::string_view("()\\'\"<>").find(c) == std::string_view::npos) {
            escaped += c;
        } else {
            fmt::format_to(std::back_inserter(escaped), "%{:02X}", static_cast<unsigned char>(c));
        }
    }
    return escaped;
}

PDFTextBlock::PDFTextBlock(std::vector<PDFParagraph> paragraphs, double width, PDFTextMeasure& measure)
    : paragraphs_(std::move(paragraphs)), width_(width) {
    for (std::size_t i = 0; i < paragraphs_.size(); ++i) {
        const PDFParagraph& paragraph = paragraphs_[i];
        double gapAbove = paragraph.gapAbove;
        std::size_t begin = 0;
        for (const auto& [end, height, baseline] :
             measure.lines(paragraph.string, width - (paragraph.meter ? meterWidth : 0))) {
            lines_.push_back({.paragraph = i,
                              .begin = begin,
                              .end = end,
                              .gapAbove = gapAbove,
                              .height = height,
                              .baseline = baseline});
            height_ += gapAbove + height;
            begin = end;
            gapAbove = 0;
        }
    }
}

std::size_t PDFTextBlock::endOfFitting(double room) const {
    // Sums of heights that are equal on paper may differ in their last bits.
    constexpr double tolerance = 0.01;
    std::size_t end = next_;
    for (double used = 0; end < lines_.size(); ++end) {
        used += lines_[end].gapAbove + lines_[end].height;
        if (used > room + tolerance && end > next_) {
            break;
        }
    }
    end = withoutLonelyLine(end);
    while (end > next_ + 1 && end < lines_.size() && paragraphs_[lines_[end - 1].paragraph].staysWithNext) {
        --end;
    }
    return end;
}

std::size_t PDFTextBlock::withoutLonelyLine(std::size_t end) const {
    if (end == lines_.size() || end == next_ || lines_[end].paragraph != lines_[end - 1].paragraph) {
        return end;
    }
    const auto isOther = [&](const Line& line) { return line.paragraph != lines_[end].paragraph; };
    const auto here = lines_.begin() + static_cast<std::ptrdiff_t>(end);
    const auto before = here - std::find_if(std::reverse_iterator(here), lines_.rend(), isOther).base();
    const auto after = std::find_if(here, lines_.end(), isOther) - here;
    // One more line goes along with a last one, unless that leaves a first one alone.
    const std::ptrdiff_t moved = before == 1 || (after == 1 && before == 2) ? before : after == 1 ? 1 : 0;
    const std::size_t wanted = end - static_cast<std::size_t>(moved);
    return wanted > next_ ? wanted : end;
}

double PDFTextBlock::place(PDFPages::Page& page, PDFPages::Point corner, double room) {
    const std::size_t end = endOfFitting(room);
    double y = corner.y;
    while (next_ < end) {
        y += lines_[next_].gapAbove;
        y += placeParagraph(page, {corner.x, y}, end);
    }
    height_ -= y - corner.y;
    return y - corner.y;
}

double PDFTextBlock::placeParagraph(PDFPages::Page& page, PDFPages::Point corner, std::size_t end) {
    const Line& first = lines_[next_];
    const PDFParagraph& paragraph = paragraphs_[first.paragraph];
    double height = 0;
    std::size_t last = next_;
    for (; next_ < end && lines_[next_].paragraph == first.paragraph; ++next_) {
        height += lines_[next_].height;
        last = next_;
    }
    if (paragraph.meter && first.begin == 0) {
        drawMeter(page, *paragraph.meter, corner, first.height);
    }
    const double inset = paragraph.meter ? meterWidth : 0;
    PDFPages::AttributedString string = paragraph.string;
    string.text = string.text.substr(first.begin, lines_[last].end - first.begin);
    if (!string.text.empty()) {
        page.emplace_back(PDFPages::Text{.string = std::move(string),
                                         .rectangle = {corner.x + inset, corner.y, width_ - inset, height},
                                         .right = paragraph.right,
                                         .element = paragraph.element});
    }
    return height;
}

}  // namespace ScanKit
