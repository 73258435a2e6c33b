#include "ScanKit/Reports/PDF/PDFMissingScripts.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <fmt/format.h>

namespace ScanKit {
namespace {

struct ScriptRow {
    std::string_view script, shown, package;
};
/// The scripts that have another name in plain words, or are not in the package that has most.
constexpr auto scriptRows = std::to_array<ScriptRow>({
    {"Han", "Chinese", "fonts-noto-cjk"},
    {"Bopomofo", "Chinese", "fonts-noto-cjk"},
    {"Hiragana", "Japanese", "fonts-noto-cjk"},
    {"Katakana", "Japanese", "fonts-noto-cjk"},
    {"Hangul", "Korean", "fonts-noto-cjk"},
    {"Emoji", "emoji", "fonts-noto-color-emoji"},
    {"Common", "symbols", "fonts-noto-core"},
    {"Inherited", "symbols", "fonts-noto-core"},
});
constexpr std::string_view packageOfMost = "fonts-noto-core";
/// Of characters that Unicode knows nothing about.
constexpr std::string_view noScript = "Unknown";

void addOnce(std::vector<std::string>& list, std::string_view item) {
    if (std::ranges::find(list, item) == list.end()) {
        list.emplace_back(item);
    }
}

/// "a, b and c".
std::string enumerated(std::vector<std::string> items) {
    std::ranges::sort(items);
    const std::string last = items.back();
    items.pop_back();
    return items.empty() ? last : Text::joined(items, ", ") + " and " + last;
}

}  // namespace

std::optional<std::string> missingScriptsSentence(const std::u32string& characters) {
    std::vector<std::string> scripts, packages;
    for (const char32_t character : characters) {
        std::string name(Text::scriptName(character));
        std::ranges::replace(name, '_', ' ');
        const auto* const row = std::ranges::find(scriptRows, name, &ScriptRow::script);
        if (name == noScript) {
            addOnce(scripts, "characters of no script");
        } else if (row != scriptRows.end()) {
            addOnce(scripts, row->shown);
            addOnce(packages, row->package);
        } else {
            addOnce(scripts, name);
            addOnce(packages, packageOfMost);
        }
    }
    if (scripts.empty()) {
        return std::nullopt;
    }
    std::string sentence = fmt::format(
        "The PDF report shows empty boxes for letters that no installed font has: {}.", enumerated(scripts));
    if (!packages.empty()) {
        sentence += fmt::format(" Install a font for them (on Debian: {}) and save the report again.",
                                enumerated(packages));
    }
    return sentence;
}

}  // namespace ScanKit
