#include "ScanKit/Identification/PackageTexts.h"

#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ScanKit {
namespace {

constexpr std::string_view cutMark =
    "[The rest of this file is left out: only its first 400,000 bytes are reproduced here.]\n";

std::string endingWithLineFeed(const std::string& text) {
    return text.ends_with('\n') ? text : text + '\n';
}

/// Leaves out what a reader of the report gains nothing from.
void dropBlankAndRepeated(std::vector<PackageText>& texts) {
    std::vector<PackageText> kept;
    for (PackageText& one : texts) {
        // Packages ship the same text as LICENSE and LICENSE.txt; once is enough.
        const bool isRepeated =
            std::ranges::any_of(kept, [&](const PackageText& earlier) { return earlier.text == one.text; });
        if (!isRepeated && !Text::isBlank(*one.text)) {
            kept.push_back(std::move(one));
        }
    }
    texts = std::move(kept);
}

/// Adds what the bytes of a file say, unless they are no text: a NUL means that, whatever the name says.
void addText(std::string name, std::string bytes, std::vector<PackageText>& texts) {
    const bool isCut = bytes.size() > mostBytesOfAText;
    bytes.resize(std::min(bytes.size(), mostBytesOfAText));
    std::string text = decodedText(std::move(bytes));
    if (text.find('\0') == std::string::npos) {
        texts.push_back({std::move(name), std::move(text), isCut});
    }
}

}  // namespace

std::vector<PackageText> readPackageTexts(const std::vector<std::filesystem::path>& files, SeenFiles* seen) {
    std::vector<PackageText> texts;
    for (const std::filesystem::path& file : files) {
        // One byte more tells whether the file goes on.
        std::optional<std::string> bytes =
            readFileStart(file, mostBytesOfAText + 1, PathKind::regularFile, seen);
        if (bytes) {
            addText(displayName(file), std::move(*bytes), texts);
        }
    }
    return texts;
}

std::vector<PackageText> packedTexts(const std::vector<PackedFile>& files) {
    std::vector<PackageText> texts;
    for (const PackedFile& file : files) {
        addText(Text::oneLine(file.name), file.bytes, texts);
    }
    return texts;
}

bool holdText(const std::vector<PackageText>& texts) {
    return std::ranges::any_of(texts, [](const PackageText& one) { return !Text::isBlank(*one.text); });
}

SharedText reproduced(std::vector<PackageText> texts) {
    dropBlankAndRepeated(texts);
    for (PackageText& one : texts) {
        if (one.isCut) {
            one.text = endingWithLineFeed(*one.text) + std::string(cutMark);
        }
    }
    if (texts.empty()) {
        return {};
    }
    if (texts.size() == 1) {
        return texts.front().text;
    }
    std::string joined;
    for (const PackageText& one : texts) {
        if (!joined.empty()) {
            joined += '\n';
        }
        joined += "--- " + one.name + " ---\n\n" + endingWithLineFeed(*one.text);
    }
    return joined;
}

}  // namespace ScanKit
