#pragma once

#include "ScanKit/Identification/LicenseMatcher.h"
#include "ScanKit/Identification/Remainder.h"
#include "ScanKit/Support/SharedText.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ScanKit {

/// What one license text says: everything that identification asks of it, so that a text is read once.
struct TextReading {
    struct Match {
        std::string id;
        bool byNotice = false;
        /// Reads as another license than the template or notice that matched; that one's score says nothing then.
        bool isLookAlike = false;
        std::optional<double> score;  ///< absent for a look-alike
        /// The full-text candidate behind the match; absent for a notice.
        std::optional<LicenseMatcher::Candidate> region;
        std::optional<std::string> exception;  ///< that the text adds to this license
        bool isPart = false;                   ///< a part of this license's text, told from a notice in it
        bool isAltered = false;  ///< the text lacks the sentence in which this license grants its rights

        bool operator==(const Match&) const = default;
    };

    std::vector<Match> matches;  ///< by position
    /// The candidates that score at least 0.5, in the order of their regions' starts.
    std::vector<LicenseMatcher::Candidate> candidates;
    Remainder remainder;  ///< what the text says beyond its matches; all of it where nothing matches
    std::string remainderBeginning;  ///< in a few words, for a note
    /// The families named at each place where the text offers its licenses as a choice.
    std::vector<std::vector<std::string>> choices;
    /// The families that the text calls by a name people use, with or without their text; empty where it says nothing beyond
    /// its matches.
    std::vector<std::string> namedLicenses;
    std::size_t wordCount = 0;         ///< all words
    std::size_t licenseWordCount = 0;  ///< without copyright lines and the like

    /// True when the text holds the standard text of this template, even where another matched better. Never
    /// asked of a text that only looks like a standard one.
    bool holdsStandardText(std::string_view templateId) const;
    /// True when the matches account for the text, so that they can contradict the metadata: it is short, or
    /// full texts cover half of it.
    bool isUsable() const;
    /// True when more than half of the text, and enough to matter, stands in none of its licenses.
    bool isMostlyRemainder() const;

    bool operator==(const TextReading&) const = default;
};

TextReading readLicenseText(std::string_view text);

/// The parts of a license text that stand in none of the licenses it reads as, in order; views of `text`. For showing
/// them to whoever reads the text.
std::vector<std::string_view> partsBeyondLicenses(std::string_view text);

/// The readings of one scan: packages share license texts, and each text is read once. May be asked from any
/// thread.
class TextReadings {
public:
    /// `text` must be there, and is afterwards one in memory with those equal to it.
    std::shared_ptr<const TextReading> of(SharedText& text);

private:
    struct Known {
        SharedText text;
        std::shared_ptr<const TextReading> reading;
    };
    std::mutex mutex_;
    std::unordered_map<std::string_view, Known> readings_;  ///< by their own texts
};

}  // namespace ScanKit
