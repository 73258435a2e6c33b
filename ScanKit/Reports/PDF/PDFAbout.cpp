#include "ScanKit/Reports/PDF/PDFSections.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string_view>

#include <fmt/format.h>

namespace ScanKit {
namespace {

constexpr PDFStyle bodyStyle{.font = {.size = 9}, .colour = PDFColours::ink};
constexpr PDFStyle labelStyle{.font = {.size = 9, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle groupStyle{.font = {.size = 9}, .colour = PDFColours::quiet};
constexpr PDFStyle disclaimerStyle{.font = {.size = 8.5}, .colour = PDFColours::quiet};

using Paragraphs = std::vector<PDFParagraph>;

void addLabel(Paragraphs& paragraphs, std::string_view title) {
    paragraphs.push_back({.string = labelStyle(title),
                          .gapAbove = paragraphs.empty() ? 0.0 : 8.0,
                          .role = PDFPages::Role::heading3,
                          .staysWithNext = true});
}

/// A sentence that may begin with the path of a file or folder: it reads from left to right all the same.
std::string keepingFirstPath(std::string_view sentence) {
    const std::size_t slash = sentence.rfind('/');
    const std::size_t end = slash == std::string_view::npos ? 0 : slash + 1;
    const std::string_view rest = sentence.substr(end);
    return keepingPathDirection(sentence.substr(0, end)) + (Text::isRightToLeft(rest) ? "\u200E" : "") +
           std::string(rest);
}

/// What both sentences say of their subjects, from a blank on; empty when it is too little to be said apart.
std::string_view sharedEnd(std::string_view a, std::string_view b) {
    constexpr std::size_t least = 40;
    const auto [differing, other] = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend());
    const std::size_t blank = a.find(' ', static_cast<std::size_t>(a.rend() - differing));
    return blank == std::string_view::npos || a.size() - blank < least ? "" : a.substr(blank);
}

/// The warnings that say the same as the first of them, though of other folders or files.
struct AlikeWarnings {
    std::string_view end;                      ///< what all of them say
    std::vector<const ScanWarning*> warnings;  ///< in their order
};

/// Those that say the most of what three or more have in common; the first one alone when there are not so many.
AlikeWarnings alikeWarnings(const std::vector<const ScanWarning*>& left) {
    constexpr std::size_t many = 3;
    const ScanWarning& first = *left.front();
    const auto isLonger = [](std::string_view a, std::string_view b) { return a.size() > b.size(); };
    std::set<std::string_view, decltype(isLonger)> ends(isLonger);
    for (const ScanWarning* other : left) {
        if (other != &first && other->kind == first.kind) {
            ends.insert(sharedEnd(first.sentence, other->sentence));
        }
    }
    ends.erase("");
    for (const std::string_view end : ends) {
        AlikeWarnings alike{.end = end};
        std::ranges::copy_if(left, std::back_inserter(alike.warnings), [&](const ScanWarning* other) {
            return other->kind == first.kind && other->sentence.ends_with(end);
        });
        if (alike.warnings.size() >= many) {
            return alike;
        }
    }
    return {.warnings = {&first}};
}

/// The warnings of the scan, under their heading; nothing without one. What is said of many folders is said once.
void addUnreadParts(Paragraphs& paragraphs, const std::vector<ScanWarning>& warnings) {
    if (!warnings.empty()) {
        addLabel(paragraphs, "What this scan could not read");
    }
    std::vector<const ScanWarning*> left;
    for (const ScanWarning& warning : warnings) {
        left.push_back(&warning);
    }
    while (!left.empty()) {
        const auto [end, alike] = alikeWarnings(left);
        std::erase_if(left, [&alike = alike](const ScanWarning* warning) {
            return std::ranges::find(alike, warning) != alike.end();
        });
        if (alike.size() == 1) {
            paragraphs.push_back(
                {.string = bodyStyle(keepingFirstPath(alike.front()->sentence)), .gapAbove = 2});
            continue;
        }
        std::string subjects;
        for (const ScanWarning* warning : alike) {
            const std::string_view each = warning->sentence;
            appendItem(subjects, ", ", keepingFirstPath(each.substr(0, each.size() - end.size())));
        }
        paragraphs.push_back({.string = bodyStyle(fmt::format("…{}", end)), .gapAbove = 2});
        paragraphs.push_back(
            {.string = groupStyle(fmt::format("This holds for {}: {}", alike.size(), subjects)),
             .gapAbove = 1});
    }
}

/// The name of the user's account is nothing for a client.
std::string withHomeAsTilde(const std::filesystem::path& folder) {
    return displayPath(folder, folder / "below");
}

/// The files read, one a line, below the names of their ecosystems.
void addFilesRead(Paragraphs& paragraphs, const std::vector<ScanSource>& sources) {
    if (!sources.empty()) {
        addLabel(paragraphs, "Files read");
    }
    for (const Ecosystem ecosystem : allEcosystems) {
        bool isFirst = true;
        for (const ScanSource& source : sources) {
            if (source.ecosystem != ecosystem) {
                continue;
            }
            if (isFirst) {
                paragraphs.push_back(
                    {.string = groupStyle(shortLabel(ecosystem)), .gapAbove = 4, .staysWithNext = true});
            }
            isFirst = false;
            const std::string entries = source.entries ? fmt::format(" ({})", inWords(*source.entries)) : "";
            paragraphs.push_back({.string = bodyStyle(keepingPathDirection(source.path) + entries),
                                  .gapAbove = 1,
                                  .role = PDFPages::Role::listItem});
        }
    }
}

/// The entries of lockfiles are counted as they are, so what the report leaves out is told beside them.
void addLeftOut(Paragraphs& paragraphs, const PDFContents& contents) {
    const std::size_t leftOut = contents.result.dependencies.size() - contents.dependencies.size();
    if (leftOut > 0 && !contents.result.sources.empty()) {
        const std::string_view words = leftOut == 1 ? "dev-only package that these files name is"
                                                    : "dev-only packages that these files name are";
        paragraphs.push_back(
            {.string = groupStyle(fmt::format("{} {} left out of this report.", leftOut, words)),
             .gapAbove = 4});
    }
}

void addDisclaimer(Paragraphs& paragraphs, const std::string& date) {
    paragraphs.push_back(
        {.string = disclaimerStyle(fmt::format(
             "This report lists the open-source licenses found in the project's dependency files and the packages' own license files on {}. Packages sometimes misstate their licenses, and what a license requires depends on how you use and ship the package. Have anything marked below reviewed before you rely on it.",
             date)),
         .gapAbove = sectionGap});
}

}  // namespace

std::vector<PDFParagraph> aboutThisScan(const PDFContents& contents) {
    // First what the reader of the list must know: which packages may be missing in it.
    Paragraphs paragraphs;
    addUnreadParts(paragraphs, contents.result.warnings);
    addLabel(paragraphs, "Found in");
    paragraphs.push_back(
        {.string = bodyStyle(keepingPathDirection(withHomeAsTilde(contents.result.rootPath))),
         .gapAbove = 2});
    addFilesRead(paragraphs, contents.result.sources);
    addLeftOut(paragraphs, contents);
    addDisclaimer(paragraphs, contents.date);
    return paragraphs;
}

}  // namespace ScanKit
