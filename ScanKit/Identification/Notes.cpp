#include "ScanKit/Identification/Notes.h"

#include "ScanKit/Identification/ReproducedTexts.h"
#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Model/EnumerationTable.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace ScanKit {
namespace {

/// Below this a full text is worth a look.
constexpr double closeScore = 0.82;

struct NotOnDiskRow {
    Ecosystem value;
    std::string_view note;
};
constexpr auto notOnDiskNotes = std::to_array<NotOnDiskRow>({
    {Ecosystem::swiftpm,
     "The package isn't checked out on this Mac, so its license file couldn't be read. Build the project once (or add its checkouts folder) and scan again."},
    {Ecosystem::npm,
     "The package isn't in node_modules, so its license file couldn't be read. Run npm install and scan again."},
    {Ecosystem::python,
     "The package isn't installed in the chosen environment, so its license couldn't be read. Choose the virtual environment it's installed in."},
});
static_assert(hasRowForEachEnumerator(notOnDiskNotes), "each enumerator needs its row here");

/// A note that a license calls for by how its identifier begins.
struct WeakCopyleftRow {
    std::array<std::string_view, 2> beginnings;
    std::string_view note;
};
constexpr auto weakCopyleftNotes = std::to_array<WeakCopyleftRow>({
    {{"MPL", "MPL"},
     "MPL: changes to this package's own files must be shared under the MPL; your own code can stay closed. Include the license and say where its source is available."},
    {{"LGPL", "LGPL"},
     "LGPL: usually fine as a separate library people could replace (dynamic linking). Changes to the library must be shared, and static linking (common in iOS apps) has extra conditions."},
    {{"EPL", "CDDL"},
     "File-level copyleft: changes to this package's files must be shared under the same license; your own code can stay closed."},
});

constexpr std::string_view unlistedNote =
    "This license isn't in Quorvane's list. Read its text and record it by hand.";
constexpr std::string_view networkCopyleftNote =
    "AGPL-style license: like the GPL, and it also applies when people use the software over a network (a web app or API). Usually a blocker for closed-source products; get it reviewed.";
constexpr std::string_view unversionedGplNote =
    "GPL, version not stated: if you ship an app that includes this package, the GPL can require you to release your app's source code under the GPL. Get it reviewed before you ship.";
constexpr std::string_view gplNote =
    "GPL: if you ship an app that includes or links this package, the GPL can require you to release your app's source code under the GPL. Fine for internal tools and build-time use; get it reviewed before you ship.";
constexpr std::string_view publicDomainNote =
    "Says “public domain” without a license; that isn't recognized in every country. Fine for most uses; note it.";
constexpr std::string_view bareBsdNote =
    "BSD-style license without a clause count; keep the copyright notice and license text with your app.";
constexpr std::string_view noticeOnlyNote =
    "Identified from a short license notice, not the full license text.";
constexpr std::string_view standardTextNote =
    "No license file in the package. The NOTICE file uses the standard license text, without the author's copyright line.";
constexpr std::string_view noStandardTextNote =
    "No license file in the package, and no standard text is bundled for this license. Add the text from the project's website.";
constexpr std::string_view unmatchedFileNote =
    "The license file doesn't match a license Quorvane knows. Read it and record the license by hand.";
constexpr std::string_view missingNote =
    "No license was found. Without one, the default is “all rights reserved”: ask the author, check the project's website, or replace the package.";

/// Writes the notes of one dependency, in the order in which a reader should meet them.
class NoteWriter {
public:
    NoteWriter(const NoteFacts& facts, Dependency& dependency) : facts_(facts), dependency_(dependency) {}

    void write() {
        noteDisagreement();
        noteWhatTheFileSettled();
        noteExtraLicenses();
        noteRemainder();
        if (!facts_.decision.chosen) {
            noteUndecided();
            return;
        }
        noteChoice();
        noteCategory();
        noteCloseToStandard();
        noteNoticeOnly();
        noteMissingText();
    }

private:
    void raise(Flag flag) { dependency_.flags.push_back(flag); }
    void note(std::string_view text) { dependency_.notes.emplace_back(text); }
    const LicenseExpression& chosen() const { return *facts_.decision.chosen; }

    bool names(std::string_view id) const {
        const std::vector<std::string> ids = chosen().licenseIDs();
        return std::ranges::find(ids, id) != ids.end();
    }

    void noteDisagreement() {
        if (facts_.decision.isMismatch) {
            raise(Flag::mismatch);
            note("The package metadata says " + facts_.decision.declared->description() +
                 ", but its license file reads as " + facts_.decision.fromText->description() +
                 ". Check which one applies.");
        }
    }

    void noteWhatTheFileSettled() {
        const std::optional<std::string> name = declaredName(facts_.package);
        // A custom declaration has a note of its own, which must not sound as if it were a spelling mistake.
        if (name && !facts_.isCustom && !facts_.decision.declared && facts_.decision.fromText) {
            note("The metadata says “" + *name +
                 "”, which isn't a standard license ID; the license file was used instead.");
        }
    }

    void noteExtraLicenses() {
        const LicenseDecision& decision = facts_.decision;
        // What could not be placed is worth a word only beside something that could.
        if (decision.extraLicenses.empty()) {
            return;
        }
        std::string text = "The license file also contains " + Text::joined(decision.extraLicenses, ", ") +
                           " text, usually for code bundled inside the package.";
        if (!decision.unplacedParts.empty()) {
            text += " Check what the " + Text::joined(decision.unplacedParts, ", ") + " part covers.";
        }
        note(text);
    }

    void noteRemainder() {
        const LicenseDecision& decision = facts_.decision;
        // What is not open source has terms of its own, and a note that says what to do.
        if (decision.chosen && decision.chosen->category() == LicenseCategory::proprietary) {
            return;
        }
        if (decision.remainder) {
            note("The license file says more than the standard text: “" + *decision.remainder +
                 "…”. Read it.");
        }
        // Without a license the package is flagged already, by a note that says why.
        if (decision.holdsUnreadTerms && decision.chosen) {
            raise(Flag::unknown);
        }
    }

    void noteChoice() {
        // Nearly every package is under a single license.
        if (chosen().kind() == LicenseExpression::Kind::license) {
            return;
        }
        if (const std::optional<std::string> taken = reproducedTexts(chosen()).takenOption) {
            note("Offered under a choice of licenses (" + chosen().description() + "). This report assumes " +
                 *taken + ".");
        }
    }

    void noteCategory() {
        switch (dependency_.category) {
            case LicenseCategory::unknown:
                raise(Flag::unknown);
                note(unlistedNote);
                return;
            case LicenseCategory::proprietary:
                raise(Flag::proprietary);
                note("Marked as not open source (" + chosen().description() +
                     "). You need permission from its owner to ship it.");
                return;
            case LicenseCategory::networkCopyleft:
                raise(Flag::networkCopyleft);
                note(networkCopyleftNote);
                return;
            case LicenseCategory::strongCopyleft:
                raise(Flag::strongCopyleft);
                note(names("GPL") ? unversionedGplNote : gplNote);
                return;
            case LicenseCategory::weakCopyleft:
                raise(Flag::weakCopyleft);
                noteWeakCopyleft();
                return;
            case LicenseCategory::publicDomain:
                if (names("PublicDomain")) {
                    note(publicDomainNote);
                }
                return;
            case LicenseCategory::permissive:
                if (names("BSD")) {
                    note(bareBsdNote);
                }
                return;
        }
    }

    void noteWeakCopyleft() {
        const std::vector<std::string> ids = chosen().licenseIDs();
        for (const WeakCopyleftRow& row : weakCopyleftNotes) {
            const bool isPresent = std::ranges::any_of(ids, [&](const std::string& id) {
                return id.starts_with(row.beginnings[0]) || id.starts_with(row.beginnings[1]);
            });
            if (isPresent) {
                note(row.note);
            }
        }
        for (const LicenseExpression* license : chosen().leaves()) {
            const KnownLicense* row = SPDX::lookup(license->id());
            if (license->exception() && row != nullptr && row->category == LicenseCategory::strongCopyleft) {
                note("Copyleft with an exception (" + license->description() +
                     "): usually fine to link from your own code, but check the exception's wording.");
            }
        }
    }

    void noteCloseToStandard() {
        const std::optional<double> score = facts_.decision.fullTextScore;
        if (score && (*score < closeScore || facts_.decision.isAltered)) {
            const LicenseExpression& named = facts_.decision.fromText ? *facts_.decision.fromText : chosen();
            note("The license file is close to the standard " + named.description() +
                 " text but not identical (" + std::to_string(std::lround(*score * 100)) +
                 "% match). Read it once.");
        }
    }

    void noteNoticeOnly() {
        if (dependency_.basis == LicenseBasis::notice) {
            note(noticeOnlyNote);
        }
    }

    void noteMissingText() {
        const bool needsNoText = dependency_.category == LicenseCategory::publicDomain ||
                                 dependency_.category == LicenseCategory::proprietary;
        // Public domain asks for no text, and what is not open source needs a permission, not a text.
        if (facts_.textWasRead || needsNoText) {
            return;
        }
        if (!facts_.package.folder) {
            noteNotOnDisk();
            return;
        }
        raise(Flag::noLicenseFile);
        const ReproducedTexts reproduced = reproducedTexts(chosen());
        note(reproduced.hasEveryLicense() ? standardTextNote : noStandardTextNote);
        const std::vector<std::string> others = reproduced.identifiers(false);
        if (reproduced.hasAny() && !others.empty()) {
            note("The NOTICE file has the standard text of " +
                 Text::joined(reproduced.identifiers(true), " and ") + ", but not that of " +
                 Text::joined(others, " or ") + ". Add it from the project's website.");
        }
    }

    void noteNotOnDisk() {
        raise(Flag::notOnDisk);
        note(rowOf(notOnDiskNotes, facts_.package.ecosystem).note);
    }

    void noteUndecided() {
        const std::optional<std::string>& declared = facts_.package.declared;
        const bool isDeclared = declared && !Text::isBlank(*declared);
        // Terms of the package's own come before "not recognized": they are not open source until somebody read them.
        if (facts_.isCustom) {
            dependency_.category = LicenseCategory::proprietary;
            raise(Flag::proprietary);
            note("The metadata points to a custom license (“" + declared.value_or("") +
                 "”) that isn't a standard open-source license. Read it and get permission if needed.");
        } else if (isDeclared || !facts_.package.licenseFiles.empty()) {
            raise(Flag::unknown);
            const std::optional<std::string> name = declaredName(facts_.package);
            note(name ? "Declared as “" + *name +
                            "”, which Quorvane doesn't recognize. Read the license and record it by hand."
                      : std::string(unmatchedFileNote));
        } else {
            // Installing the package may be all that it takes, so that note stands first.
            if (!facts_.package.folder) {
                noteNotOnDisk();
            }
            raise(Flag::missing);
            note(missingNote);
        }
    }

    const NoteFacts& facts_;
    Dependency& dependency_;
};

}  // namespace

void raiseFlagsAndNotes(const NoteFacts& facts, Dependency& dependency) {
    NoteWriter(facts, dependency).write();
    std::ranges::sort(dependency.flags);
    const auto repeated = std::ranges::unique(dependency.flags);
    dependency.flags.erase(repeated.begin(), repeated.end());
}

}  // namespace ScanKit
