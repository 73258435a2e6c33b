#include "ScanKit/Identification/Identification.h"

#include "ScanKit/Support/Text.h"
#include "Tests/Builders/Printers.h"
#include "Tests/Identification/InstalledPackage.h"

#include <gmock/gmock.h>

namespace ScanKit {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Notes that begin like these, parted by "|", in this order, and no further one.
auto startingWith(std::string_view starts) {
    std::vector<testing::Matcher<std::string>> each;
    for (const std::string_view start : Text::split(starts, "|")) {
        each.push_back(StartsWith(std::string(start)));
    }
    each.resize(starts.empty() ? 0 : each.size());
    return testing::ElementsAreArray(each);
}

/// The start of a standard text: enough to score below what counts as close.
std::string startOf(std::string_view name, double share) {
    const std::string text = standard(name);
    return text.substr(0, static_cast<std::size_t>(static_cast<double>(text.size()) * share));
}

TEST(Identify, WeighsMetadataAgainstTheFiles) {
    struct Case {
        const char* declared;
        std::vector<std::string> files;
        const char* outcome;
    };
    std::string prose;
    for (int i = 0; i < 100; ++i) {
        prose += "These are the terms of our own license and they go on and on.\n";
    }
    const std::string apacheNotice = "Licensed under the Apache License, Version 2.0";
    const std::string mentionsGpl =
        prose + "It may be combined with works under the GNU General Public License.\n";
    const Case cases[]{
        {"MIT", {standard("MIT")}, "MIT by metadataAndText"},
        {"MIT", {}, "MIT by metadata, noLicenseFile"},
        {"MIT", {" \n\t"}, "MIT by metadata, noLicenseFile"},
        {"MIT", {std::string("MI\0T", 4)}, "MIT by metadata, noLicenseFile"},
        {"MIT", {" \n\t", "Read the web site."}, "MIT by metadata"},
        {"MIT", {standard("Apache-2.0")}, "MIT by metadata, mismatch"},
        {"MIT", {prose + standard("MIT")}, "MIT by metadataAndText"},
        {"GPL", {standard("GPL-3.0")}, "GPL by metadataAndText, strongCopyleft"},
        {"LGPL", {standard("LGPL-2.1")}, "LGPL by metadataAndText, weakCopyleft"},
        {"BSD", {standard("BSD-3-Clause")}, "BSD by metadataAndText"},
        {"BSD-3-Clause",
         {standard("BSD-2-Clause")},
         "BSD-3-Clause by metadataAndText"},  // holds three quarters
        {"GPL-2.0-or-later", {standard("GPL-2.0")}, "GPL-2.0-or-later by metadataAndText, strongCopyleft"},
        {"MIT OR Apache-2.0", {standard("Apache-2.0")}, "MIT OR Apache-2.0 by metadataAndText"},
        {"MIT AND Apache-2.0", {standard("Apache-2.0")}, "MIT AND Apache-2.0 by metadata, mismatch"},
        {"MIT AND Apache-2.0",
         {standard("Apache-2.0") + standard("MIT")},
         "MIT AND Apache-2.0 by metadataAndText"},
        {"See the file", {standard("ISC")}, "ISC by text"},
        {"See the file", {apacheNotice}, "Apache-2.0 by notice"},
        {"UNLICENSED", {standard("MIT")}, "UNLICENSED by metadata, proprietary, mismatch"},
        {"unlicensed", {}, "UNLICENSED by metadata, proprietary"},
        {"SEE LICENSE IN terms.txt", {standard("MIT")}, "MIT by text"},
        // Terms of its own, and at their end the license of something bundled: only where nothing is declared is that
        // the best there is.
        {"SEE LICENSE IN terms.txt", {prose + standard("MIT")}, "nothing by none, proprietary"},
        {"Custom-1.0", {prose + standard("MIT")}, "nothing by none, unknown"},
        {"", {prose + standard("MIT")}, "MIT by text, unknown"},
        {"see license in terms.txt", {"Our own terms."}, "nothing by none, proprietary"},
        {"Custom", {"Our own terms."}, "nothing by none, unknown"},
        {"Public Domain", {}, "PublicDomain by metadata"},
        {"", {}, "nothing by none, missing"},
        {"", {"Our own terms."}, "nothing by none, unknown"},
        {"", {standard("MIT"), standard("Apache-2.0")}, "MIT AND Apache-2.0 by text"},
        {"", {standard("MIT"), apacheNotice}, "MIT AND Apache-2.0 by text"},
        {"", {standard("MIT"), standard("MIT")}, "MIT by text"},
        {"", {standard("GPL-3.0"), standard("LGPL-3.0")}, "LGPL-3.0 by text, weakCopyleft"},
        {"", {standard("LGPL-3.0"), standard("GPL-3.0")}, "LGPL-3.0 by text, weakCopyleft"},
        {"", {standard("LGPL-2.1"), standard("GPL-3.0")}, "LGPL-2.1 AND GPL-3.0 by text, strongCopyleft"},
        // A long text that merely mentions a license contradicts no metadata; deciding alone, it wants to be read.
        {"EPL-1.0", {mentionsGpl}, "EPL-1.0 by metadata, weakCopyleft"},
        {"", {mentionsGpl}, "GPL by notice, strongCopyleft, unknown"},
    };
    for (const Case& one : cases) {
        InstalledPackage package(one.declared);
        for (const std::string& text : one.files) {
            package.license("LICENSE" + std::to_string(package.raw.licenseFiles.size()), text);
        }
        EXPECT_EQ(outcome(package.identified()), one.outcome)
            << one.declared << " / " << (one.files.empty() ? "" : one.files.front().substr(0, 60));
    }
}

TEST(Identify, NamesFurtherLicensesOnlyWhereMetadataAndFilesAgree) {
    const auto notes = [](const char* declared, const std::string& text, const std::string& second = "") {
        return InstalledPackage(declared)
            .license("LICENSE", text)
            .license("OTHER", second)
            .identified()
            .notes;
    };
    const std::string bundle = standard("MIT") + "\n" + standard("Apache-2.0") + "\n" + standard("Zlib");
    EXPECT_THAT(notes("MIT", bundle), ElementsAre("The license file also contains Apache-2.0, Zlib text, "
                                                  "usually for code bundled inside the package."));
    EXPECT_THAT(notes("MIT AND Zlib AND Apache-2.0", bundle), IsEmpty());
    // About two thirds of another license, and half of one, can neither be placed nor passed over.
    const std::string parts = "\n" + startOf("CC0-1.0", 0.54) + "\n" + startOf("MPL-2.0", 0.65);
    EXPECT_THAT(
        notes("MIT", standard("MIT") + "\n" + standard("Zlib") + parts, standard("MIT") + parts),
        startingWith("The license file also contains Zlib text, usually for code bundled inside the "
                     "package. Check what the CC0-1.0, MPL-2.0 part covers.|The license file says more"));
    // A text that holds most of another one may stand in for it, and is then nothing further.
    EXPECT_THAT(notes("MIT-0", standard("MIT")), testing::Each(testing::Not(HasSubstr("also contains"))));
    EXPECT_THAT(notes("MIT-0", standard("MIT") + "\n" + standard("Zlib")),
                testing::Contains(HasSubstr("contains Zlib text")));
    EXPECT_THAT(notes("GPL", standard("GPL-3.0")), startingWith("GPL, version not stated"));
    // The LGPL 2.1 resembles the GPL 2.0, by too little to be it or to leave a part of its own.
    EXPECT_THAT(notes("MIT", standard("MIT") + "\n" + standard("LGPL-2.1")),
                ElementsAre(testing::AllOf(HasSubstr("contains LGPL-2.1 text"),
                                           testing::EndsWith("inside the package."))));
    EXPECT_THAT(notes("GPL-2.0-only", standard("LGPL-2.1"), standard("GPL-2.0")),
                startingWith("The license file also contains LGPL-2.1 text|GPL: "));
}

TEST(Identify, ExplainsEachCategory) {
    struct Case {
        const char* declared;
        LicenseCategory category;
        const char* noteStarts;
    };
    using enum LicenseCategory;
    const Case cases[]{
        {"MIT", permissive, ""},
        {"MIT OR GPL-2.0-only", permissive,
         "Offered under a choice of licenses (MIT OR GPL-2.0-only). This report assumes MIT."},
        {"MIT/Apache-2.0", permissive,
         "Offered under a choice of licenses (MIT OR Apache-2.0). This report assumes MIT."},
        {"BSD", permissive, "BSD-style license without a clause count"},
        {"Unlicense", publicDomain, ""},
        {"PublicDomain", publicDomain, "Says “public domain” without a license"},
        {"MPL-2.0", weakCopyleft, "MPL: changes"},
        {"CDDL-1.0 AND LGPL-3.0-only AND MPL-1.1", weakCopyleft, "MPL: |LGPL: usually|File-level copyleft"},
        {"LGPL-3.0-only WITH anything", weakCopyleft, "LGPL: usually"},
        {"GPL-2.0-only WITH Classpath-exception-2.0", weakCopyleft,
         "Copyleft with an exception (GPL-2.0-only WITH Classpath-exception-2.0): usually fine"},
        {"GPL", strongCopyleft, "GPL, version not stated: "},
        {"GPL-3.0-only", strongCopyleft, "GPL: if you ship"},
        {"AGPL-3.0-or-later", networkCopyleft, "AGPL-style license: "},
        {"UNLICENSED", proprietary, "Marked as not open source (UNLICENSED). You need"},
        {"See license in x", proprietary, "The metadata points to a custom license (“See license in x”)"},
        {"Our own", unknown, "Declared as “Our own”, which Quorvane doesn't recognize."},
        {"Our\nown", unknown, "The license file doesn't match a license Quorvane knows."},
    };
    for (const Case& one : cases) {
        const Dependency found =
            InstalledPackage(one.declared).license("LICENSE", "Some words.").identified();
        EXPECT_EQ(found.category, one.category) << one.declared;
        EXPECT_THAT(found.notes, startingWith(one.noteStarts)) << one.declared;
    }
}

TEST(Identify, WritesNotesInTheOrderInWhichTheyMatter) {
    const std::string mostOfMpl = startOf("MPL-2.0", 0.80);
    const Dependency agreeing =
        InstalledPackage(
            "MPL-2.0 OR (GPL-2.0-only WITH Classpath-exception-2.0 AND EPL-2.0 AND LGPL-2.1-only)")
            .license("LICENSE", mostOfMpl + "\n" + standard("Zlib"))
            .identified();
    ASSERT_GT(agreeing.matchScore.value(), 0.75);
    ASSERT_LT(agreeing.matchScore.value(), 0.82);
    EXPECT_THAT(
        agreeing.notes,
        startingWith(
            "The license file also contains Zlib text|Offered under a choice of licenses (MPL-2.0 OR|MPL: |"
            "LGPL: |File-level copyleft|Copyleft with an exception (GPL-2.0-only WITH|The license file "
            "is close to the standard MPL-2.0 AND Zlib text but not identical (" +
            std::to_string(std::lround(*agreeing.matchScore * 100)) + "% match). Read it once."));

    const Dependency differing =
        InstalledPackage("ISC OR MIT").license("LICENSE", standard("Zlib") + "\n" + mostOfMpl).identified();
    EXPECT_EQ(differing.matchScore, agreeing.matchScore) << "the lowest of all";
    EXPECT_THAT(
        differing.notes,
        startingWith(
            "The package metadata says ISC OR MIT, but its license file reads as Zlib AND MPL-2.0. Check "
            "which one applies.|Offered under a choice|The license file is close to the standard Zlib AND"));

    const Dependency undeclared =
        InstalledPackage("Ours").license("LICENSE", "GNU General Public License, version 3").identified();
    EXPECT_EQ(undeclared.matchScore, 0.7);
    EXPECT_THAT(undeclared.notes,
                startingWith("The metadata says “Ours”, which isn't a standard license ID|GPL: if you "
                             "ship|Identified from a short license notice"));
    EXPECT_THAT(
        InstalledPackage("SEE LICENSE IN LICENSE").license("LICENSE", standard("MIT")).identified().notes,
        IsEmpty());
    EXPECT_THAT(InstalledPackage().license("LICENSE", startOf("MPL-2.0", 0.84)).identified().notes,
                startingWith("MPL: "))
        << "close enough to need no reading";
}

TEST(Identify, TellsWhatIsMissing) {
    const auto notes = [](const char* declared) { return InstalledPackage(declared).identified().notes; };
    EXPECT_THAT(notes("MIT"), ElementsAre(HasSubstr("uses the standard license text")));
    EXPECT_THAT(notes("BSL-1.0"), ElementsAre(HasSubstr("no standard text is bundled")));
    EXPECT_THAT(notes("MIT OR BSL-1.0"),
                ElementsAre(StartsWith("Offered"), HasSubstr("uses the standard license text")));
    const auto gives = [](const std::string& with, const std::string& without) {
        return "The NOTICE file has the standard text of " + with + ", but not that of " + without +
               ". Add it from the project's website.";
    };
    EXPECT_THAT(notes("MIT AND BSL-1.0 AND ISC"),
                ElementsAre(HasSubstr("no standard text is bundled"), gives("MIT and ISC", "BSL-1.0")));
    EXPECT_THAT(notes("BSL-1.0 AND WTFPL"), ElementsAre(HasSubstr("no standard text is bundled")));
    EXPECT_THAT(
        notes("GPL-2.0-only WITH Classpath-exception-2.0"),
        ElementsAre(StartsWith("Copyleft with an exception"), HasSubstr("uses the standard license text"),
                    gives("GPL-2.0-only", "Classpath-exception-2.0")));
    EXPECT_THAT(
        notes("MIT AND (GPL-3.0-only OR ISC)").front(),
        "Offered under a choice of licenses (MIT AND (GPL-3.0-only OR ISC)). This report assumes MIT AND ISC.");

    using enum Ecosystem;
    struct Case {
        Ecosystem ecosystem;
        std::optional<std::string> declared;
        const char *outcome, *noteStarts;
    };
    const Case absent[]{
        {swiftpm,
         {},
         "nothing by none, missing, notOnDisk",
         "The package isn't checked out|No license was found."},
        {swiftpm, "Ours", "nothing by none, unknown", "Declared as “Ours”"},
        {npm, "GPL", "GPL by metadata, strongCopyleft, notOnDisk",
         "GPL, version|The package isn't in node_modules"},
        {python, "MIT", "MIT by metadata, notOnDisk",
         "The package isn't installed in the chosen environment"},
        {npm, "Unlicense", "Unlicense by metadata", ""},  // public domain asks for no text
    };
    for (const Case& one : absent) {
        const Dependency found =
            identify({.ecosystem = one.ecosystem, .name = "absent", .declared = one.declared});
        EXPECT_EQ(outcome(found), one.outcome);
        EXPECT_THAT(found.notes, startingWith(one.noteStarts)) << one.outcome;
    }
}

TEST(Identify, ReadsADeclarationOnlyWhenItIsShortAndOnOneLine) {
    struct Case {
        std::string declared;
        std::optional<std::string> license;
        std::optional<std::string> carried;
    };
    const std::string long150 = "MIT" + std::string(147, ' ');
    const Case cases[]{
        {long150, "MIT", long150},
        {long150 + " ", std::nullopt, long150.substr(0, 147) + "…"},
        {"MIT\n", std::nullopt, "MIT\n"},
        {"MIT\r\n", std::nullopt, "MIT\r\n"},
        {"\nMIT", std::nullopt, "\nMIT"},
        {" \t", std::nullopt, std::nullopt},
        {"UNLICENSED" + std::string(150, ' '), std::nullopt, "UNLICENSED" + std::string(137, ' ') + "…"},
    };
    for (const Case& one : cases) {
        const Dependency dependency = InstalledPackage(one.declared).identified();
        EXPECT_EQ(dependency.license, one.license) << one.declared;
        EXPECT_EQ(dependency.declared, one.carried);
        EXPECT_EQ(dependency.flags.front(), one.license   ? Flag::noLicenseFile
                                            : one.carried ? Flag::unknown
                                                          : Flag::missing);
    }
}

TEST(Identify, TurnsToClassifiersWhereNothingIsDeclared) {
    InstalledPackage package("See the web site");
    package.raw.ecosystem = Ecosystem::python;
    package.raw.classifiers = {"License :: OSI Approved :: MIT License",
                               "License :: OSI Approved :: BSD License"};
    EXPECT_EQ(outcome(package.identified()), "MIT OR BSD by classifier, noLicenseFile");
    package.raw.declared = "ISC";
    EXPECT_EQ(outcome(package.identified()), "ISC by metadata, noLicenseFile");
}

TEST(Identify, CarriesOverWhatIsKnownAndTheTextsOfSeveralFiles) {
    const std::string mit = standard("MIT");
    InstalledPackage package("MIT");
    package.license("LICENSE", mit)
        .license("LICENSE.txt", mit)
        .license("COPYING", "more")
        .license("EMPTY", " \n");
    package.notice("NOTICE", "\xEF\xBB\xBFThanks\xFF").notice("NOTICES", "\n");
    package.raw.source = "https://host/package";
    package.raw.isDev = true;
    const Dependency dependency = package.identified();
    EXPECT_EQ(dependency.id(), "npm:package@1.0.0");
    EXPECT_EQ(dependency.source, "https://host/package");
    EXPECT_TRUE(dependency.isDev);
    EXPECT_THAT(dependency.licenseFileNames, ElementsAre("LICENSE", "LICENSE.txt", "COPYING", "EMPTY"));
    EXPECT_EQ(dependency.licenseText, "--- LICENSE ---\n\n" + mit + "\n--- COPYING ---\n\nmore\n");
    EXPECT_EQ(dependency.noticeText, "Thanks\uFFFD");
}

TEST(Identify, ReadsTheFirst400000BytesAndSaysSo) {
    const std::string mit = standard("MIT");
    const std::string huge = mit + std::string(400'000 - mit.size(), 'x') + standard("GPL-3.0");
    const Dependency dependency = InstalledPackage().license("LICENSE", huge).identified();
    EXPECT_EQ(dependency.license, "MIT");
    EXPECT_EQ(
        *dependency.licenseText,
        huge.substr(0, 400'000) +
            "\n[The rest of this file is left out: only its first 400,000 bytes are reproduced here.]\n");
    const std::string whole(400'000, 'x');
    EXPECT_EQ(InstalledPackage().license("LICENSE", whole).identified().licenseText, whole);
}

}  // namespace
}  // namespace ScanKit
