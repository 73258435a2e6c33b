#include "ScanKit/Reports/PDF/PDFSections.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <filesystem>

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

/// The warnings of the scan, under their heading; nothing without one.
void addUnreadParts(Paragraphs& paragraphs, const std::vector<ScanWarning>& warnings) {
    if (!warnings.empty()) {
        addLabel(paragraphs, "What this scan could not read");
    }
    for (const ScanWarning& warning : warnings) {
        paragraphs.push_back({.string = bodyStyle(warning.sentence), .gapAbove = 2});
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
            paragraphs.push_back({.string = bodyStyle(source.path + entries),
                                  .gapAbove = 1,
                                  .role = PDFPages::Role::listItem});
        }
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
    paragraphs.push_back({.string = bodyStyle(withHomeAsTilde(contents.result.rootPath)), .gapAbove = 2});
    addFilesRead(paragraphs, contents.result.sources);
    addDisclaimer(paragraphs, contents.date);
    return paragraphs;
}

}  // namespace ScanKit
