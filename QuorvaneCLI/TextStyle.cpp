#include "QuorvaneCLI/TextStyle.h"

#include "QuorvaneCLI/Terminal.h"

#include <algorithm>

#include <fmt/format.h>

namespace {

constexpr std::string_view red = "\x1b[31m", yellow = "\x1b[33m";

std::string_view colourOf(ScanKit::Flag flag) {
    switch (severity(flag)) {
        case ScanKit::Flag::Severity::high:
            return red;
        case ScanKit::Flag::Severity::medium:
            return yellow;
        case ScanKit::Flag::Severity::low:
            return "";
    }
    return "";
}

std::string within(std::string_view escape, std::string_view text) {
    return fmt::format("{}{}\x1b[0m", escape, text);
}

}  // namespace

TextStyle TextStyle::of(int descriptor, ColourUse use) {
    const bool colour =
        use == ColourUse::always || (use == ColourUse::automatic && Terminal::takesColour(descriptor));
    return {Terminal::columns(descriptor), colour};
}

std::string TextStyle::bold(std::string_view text) const {
    return colour ? within("\x1b[1m", text) : std::string(text);
}

std::string TextStyle::flag(ScanKit::Flag flag) const {
    const std::string_view escape = colourOf(flag);
    return colour && !escape.empty() ? within(escape, label(flag)) : std::string(label(flag));
}

std::string TextStyle::paragraph(std::string_view text, std::string_view first, std::string_view next) const {
    const std::size_t indent = std::max(first.size(), next.size());
    std::string written;
    // So narrow a terminal breaks the lines itself.
    const bool fits = columns && *columns > indent;
    for (const std::string& line :
         Terminal::wrapped(text, fits ? *columns - indent : std::string::npos, Terminal::LongWords::runOn)) {
        written += fmt::format("{}{}\n", written.empty() ? first : next, line);
    }
    return written;
}

std::string TextStyle::list(const std::vector<std::string>& items, std::string_view indent) const {
    std::string text, line;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::string item = items[i] + (i + 1 < items.size() ? "," : "");
        const std::size_t needed =
            indent.size() + Terminal::width(line) + Terminal::width(item) + (line.empty() ? 0 : 1);
        if (!line.empty() && columns && needed > *columns) {
            text += paragraph(line, indent, indent);
            line.clear();
        }
        line += (line.empty() ? "" : " ") + item;
    }
    return text + paragraph(line, indent, indent);
}

std::string TextStyle::warning(std::string_view sentence) const {
    constexpr std::string_view word = "Warning: ";
    std::string text = paragraph(sentence, word, "  ");
    if (colour) {
        text.replace(0, word.size(), within(yellow, word));
    }
    return text;
}
