#include "ScanKit/Identification/Markup.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

constexpr std::size_t mostBytesBeforeTheRoot = 1000;

/// Elements that stand in a line of text; all others end it.
constexpr auto inlineElements =
    std::to_array<std::string_view>({"a", "abbr", "b", "cite", "code", "em", "font", "i", "o:p", "q", "small",
                                     "span", "strong", "sub", "sup", "tt", "u"});
/// Elements whose content is no text.
constexpr auto hiddenElements = std::to_array<std::string_view>({"head", "script", "style"});

struct Reference {
    std::string_view written, character;
};
constexpr auto references = std::to_array<Reference>({
    {"&nbsp;", " "},
    {"&quot;", "\""},
    {"&apos;", "'"},
    {"&#39;", "'"},
    {"&ldquo;", "“"},
    {"&rdquo;", "”"},
    {"&lsquo;", "‘"},
    {"&rsquo;", "’"},
    {"&copy;", "©"},
    {"&lt;", "<"},
    {"&gt;", ">"},
    {"&amp;", "&"},  // the last: what it stands for begins no further reference
});

/// The element that a tag, without its brackets, begins or ends.
std::string elementOf(std::string_view tag) {
    if (tag.starts_with('/')) {
        tag.remove_prefix(1);
    }
    return Text::lowercased(tag.substr(0, tag.find_first_of(" \t\r\n/")));
}

}  // namespace

bool isMarkup(std::string_view text) {
    const std::string_view start = Text::trimmed(text.substr(0, mostBytesBeforeTheRoot));
    if (!start.starts_with('<')) {
        return false;
    }
    const std::string lowered = Text::lowercased(start);
    return lowered.starts_with("<!doctype html") || lowered.find("<html") != std::string::npos;
}

std::string withoutMarkup(std::string_view page) {
    std::string text;
    for (std::size_t at = 0; at < page.size();) {
        if (page[at] != '<') {
            const std::size_t end = std::min(page.find('<', at), page.size());
            text += page.substr(at, end - at);
            at = end;
            continue;
        }
        const bool isComment = page.substr(at).starts_with("<!--");
        const std::string_view close = isComment ? "-->" : ">";
        const std::size_t end = page.find(close, at);
        if (end == std::string_view::npos) {
            break;
        }
        const std::string_view tag = page.substr(at + 1, end - at - 1);
        const std::string element = isComment ? std::string() : elementOf(tag);
        at = end + close.size();
        if (isComment) {
            continue;
        }
        if (std::ranges::find(hiddenElements, element) != hiddenElements.end() && !tag.starts_with('/')) {
            at = std::min(page.find("</" + element, at), page.size());
        } else if (std::ranges::find(inlineElements, element) == inlineElements.end()) {
            text += element == "br" ? "\n" : "\n\n";
        }
    }
    for (const Reference& reference : references) {
        text = Text::replacingAll(text, reference.written, reference.character);
    }
    return text;
}

}  // namespace ScanKit
