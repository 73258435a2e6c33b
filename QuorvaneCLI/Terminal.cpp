#include "QuorvaneCLI/Terminal.h"

#include "ScanKit/Support/Text.h"

#include <cstdlib>
#include <utility>

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Terminal {
namespace {

constexpr std::size_t usualColumns = 80;

/// The picture that Unicode has for a control character: U+2400 and on.
std::string picture(char32_t scalar) {
    if (scalar < 0x20) {
        return {'\xE2', '\x90', static_cast<char>(0x80 + scalar)};
    }
    return scalar == 0x7F ? "\u2421" : fmt::format("\\u{{{:X}}}", static_cast<unsigned>(scalar));
}

/// The signs in names and versions after which a line may end.
constexpr std::string_view breakingSigns = "-/._@:;,+";

/// The longest beginning of a long word that fits, up to a sign in its second half or between two characters. A wide
/// character is taken even where it does not fit.
std::string_view brokenOff(std::string_view word, std::size_t columns) {
    std::size_t end = 0, afterSign = 0, used = 0;
    bool isFull = false;
    // One more than can fit, for a word may be very long.
    ScanKit::Text::forEachCharacter(
        ScanKit::Text::prefix(word, columns + 1), [&](std::string_view character) {
            used += width(character);
            isFull = isFull || (end > 0 && used > columns);
            if (!isFull) {
                end += character.size();
                afterSign = breakingSigns.find(character) != std::string_view::npos && used * 2 >= columns
                                ? end
                                : afterSign;
            }
        });
    return word.substr(0, afterSign > 0 ? afterSign : end);
}

}  // namespace

std::string safe(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t at = i;
        const char32_t scalar = ScanKit::Text::nextScalar(text, i);
        if (ScanKit::Text::isControl(scalar) || ScanKit::Text::turnsDirection(scalar) ||
            ScanKit::Text::isLineBreak(scalar)) {
            result += picture(scalar);
        } else if (scalar == 0xFFFD) {
            result += "\uFFFD";
        } else {
            result += text.substr(at, i - at);
        }
    }
    return result;
}

std::size_t width(std::string_view text) {
    std::size_t total = 0;
    for (std::size_t i = 0; i < text.size();) {
        total += ScanKit::Text::columnWidth(ScanKit::Text::nextScalar(text, i));
    }
    return total;
}

std::string fitted(std::string_view text, std::size_t columns) {
    if (width(text) <= columns) {
        return std::string(text);
    }
    // There is no room even for the sign that something was cut.
    if (columns == 0) {
        return {};
    }
    std::string kept;
    std::size_t used = 0;
    bool isFull = false;
    ScanKit::Text::forEachCharacter(text, [&](std::string_view character) {
        const std::size_t taken = width(character);
        isFull = isFull || used + taken > columns - 1;
        if (!isFull) {
            kept += character;
            used += taken;
        }
    });
    return kept + "…";
}

std::vector<std::string> wrapped(std::string_view text, std::size_t columns, LongWords longWords) {
    std::vector<std::string> lines;
    std::string line;
    std::size_t used = 0;
    const auto endLine = [&] {
        lines.push_back(std::exchange(line, {}));
        used = 0;
    };
    for (std::string_view word : ScanKit::Text::split(text, " ")) {
        std::size_t taken = width(word);
        if (used > 0 && used + 1 + taken > columns) {
            endLine();
        }
        while (longWords == LongWords::broken && taken > columns) {
            const std::string_view part = brokenOff(word, columns);
            line = part;
            endLine();
            word.remove_prefix(part.size());
            taken -= width(part);
        }
        line += used > 0 ? " " : "";
        used += taken + (used > 0 ? 1 : 0);
        line += word;
    }
    if (used > 0 || lines.empty()) {
        endLine();
    }
    return lines;
}

std::optional<std::size_t> columns(int descriptor) {
    if (isatty(descriptor) == 0) {
        return std::nullopt;
    }
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        return size.ws_col;
    }
    return usualColumns;
}

bool takesColour(int descriptor) {
    const char* noColour = std::getenv("NO_COLOR");
    const char* kind = std::getenv("TERM");
    // NO_COLOR is what people set who want none, in any program; an empty one counts as not set.
    return isatty(descriptor) != 0 && (noColour == nullptr || *noColour == '\0') &&
           (kind == nullptr || std::string_view(kind) != "dumb");
}

}  // namespace Terminal
