#pragma once

#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Flag.h"
#include "ScanKit/Model/Hashing.h"
#include "ScanKit/Model/LicenseBasis.h"
#include "ScanKit/Model/LicenseCategory.h"
#include "ScanKit/Support/SharedText.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace ScanKit {

/// One finished row of a scan: a package, its license, how that was decided, and what needs attention.
struct Dependency {
    Ecosystem ecosystem = Ecosystem::swiftpm;
    std::string name;
    std::string version;
    std::optional<std::string> source;
    bool isDev = false;
    std::optional<std::string> declared;  ///< what the metadata states, shortened when very long
    std::optional<std::string> license;   ///< expression over known licenses; absent when undecided
    LicenseCategory category = LicenseCategory::unknown;
    LicenseBasis basis = LicenseBasis::none;
    std::optional<double> matchScore;           ///< 0 to 1; absent when no license text was matched
    std::vector<std::string> licenseFileNames;  ///< last path components, in the order in which they are read
    SharedText licenseText;                     ///< what the NOTICE file reproduces
    SharedText noticeText;                      ///< the package's own NOTICE
    std::vector<Flag> flags;                    ///< in `Flag` order, each once
    std::vector<std::string> notes;             ///< plain sentences for the reader
    /// How the project comes to it: "express@4.18.2", "cookie@0.5.0", itself last. Empty where no file says who needs it.
    std::vector<std::string> way;
    /// The package's folder, to show it to whoever wants to look; no report holds it. Absent when it is not on disk.
    std::optional<std::filesystem::path> folder;

    /// "npm:left-pad@1.3.0". Two rows with the same id are the same dependency for selection.
    std::string id() const;
    /// True when any flag but `noLicenseFile` is raised: a missing license file alone calls for no review.
    bool needsReview() const;
    bool has(Flag flag) const;
    /// Nothing is known of its license: none was decided, or it is flagged `unknown` or `missing`.
    bool isUnknownOrMissing() const;
    /// The labels of its flags in their order, such as "Copyleft (GPL); No license file".
    std::string flagLabels(std::string_view separator) const;
    /// What a license column shows: the license; else "Unrecognized: " and the first line of the declared
    /// text, at most 40 characters of it; else "None found".
    std::string licenseDisplay() const;

    bool operator==(const Dependency&) const = default;
    auto fields() const {
        return std::tie(ecosystem, name, version, source, isDev, declared, license, category, basis,
                        matchScore, licenseFileNames, licenseText, noticeText, flags, notes, way, folder);
    }
};

}  // namespace ScanKit
