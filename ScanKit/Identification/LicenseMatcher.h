#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace ScanKit {

struct LicenseText;

/// One license recognized in a text.
struct TextMatch {
    std::string id;         ///< of a known license
    double score = 0;       ///< 0 to 1: share of the standard text that was found; 0.7 for a notice
    bool byNotice = false;  ///< recognized from a short notice, not from the full text

    bool operator==(const TextMatch&) const = default;
};

/// Says which standard licenses a text contains. Runs of three words are compared, so that reformatting,
/// copyright lines and small edits do not matter, and several licenses in one file are found. All operations
/// are pure and may be called from any thread; the templates are built on first use and then only read.
namespace LicenseMatcher {

/// One standard text, prepared for comparing.
struct Template {
    std::string id;
    std::unordered_set<std::uint64_t> shingles;  ///< of its license words, three in a row
    std::size_t wordCount = 0;                   ///< of its license words

    bool operator==(const Template&) const = default;
};

/// One template scored against one text. Positions count license words from the start of the text.
struct Candidate {
    std::string id;
    double score = 0;           ///< share of the template's shingles that the text holds, 0 to 1
    std::size_t wordCount = 0;  ///< of the template
    std::size_t start = 0;      ///< where a tenth of the found shingles lie behind; 0 when none was found
    std::size_t end = 0;        ///< where nine tenths lie behind

    bool operator==(const Candidate&) const = default;
};

/// A text with a candidate that scores at least this holds the license.
inline constexpr double acceptedScore = 0.75;
/// The score of every notice.
inline constexpr double noticeScore = 0.7;

/// One for each standard text, in the order of the known licenses, in which candidates are compared.
const std::vector<Template>& templates();

/// The words of the text in lower case, without copyright lines and short lines that grant nothing.
std::vector<std::string> licenseWords(std::string_view text);
/// The hashes of every run of `length` words; of the single words when there are fewer. For those who compare texts
/// on their own, and for the tests: identification goes over a text's words once, without making sets of them.
std::unordered_set<std::uint64_t> shingles(const std::vector<std::string>& words, std::size_t length);

/// One candidate a template, the best first; candidates within 0.005 of each other by length, the longer
/// template first. Empty for a text of fewer than three license words.
std::vector<Candidate> candidates(std::string_view text);
std::vector<Candidate> candidates(const LicenseText& text);
/// The candidates that the text really holds, by position: of two that share a region, the better one, or the
/// clearly longer one that matches nearly as well. `candidates` is in the order of `candidates()`.
std::vector<Candidate> accepted(const std::vector<Candidate>& candidates);
/// True when the regions of two candidates share more than half of the shorter one.
bool overlap(const Candidate& a, const Candidate& b);

/// The licenses of the text, by position; the license that a notice names when no full text is found; or none.
std::vector<TextMatch> matches(std::string_view text);
/// The first of `matches`.
std::optional<TextMatch> bestMatch(std::string_view text);
/// The license that a short notice names ("Licensed under the Apache License, Version 2.0"), or none.
std::optional<TextMatch> noticeMatch(std::string_view text);
std::optional<TextMatch> noticeMatch(const LicenseText& text);
/// Every license that a notice names, in the order in which `noticeMatch` looks for them.
std::vector<TextMatch> noticeMatches(const LicenseText& text);

}  // namespace LicenseMatcher
}  // namespace ScanKit
