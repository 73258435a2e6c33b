#include "ScanKit/Identification/Identification.h"

#include "ScanKit/Licenses/StandardTexts.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string standard(std::string_view name) {
    return std::string(standardText(name).value());
}

/// The start of a standard text: enough to score below what counts as close.
std::string startOf(std::string_view name, double share) {
    const std::string text = standard(name);
    return text.substr(0, static_cast<std::size_t>(static_cast<double>(text.size()) * share));
}

/// A package as a reader would hand it over, installed in a folder of its own.
class InstalledPackage {
public:
    explicit InstalledPackage(std::optional<std::string> declared = {}) {
        raw = {.ecosystem = Ecosystem::npm,
               .name = "package",
               .version = "1.0.0",
               .declared = std::move(declared),
               .folder = folder_.path()};
    }
    InstalledPackage& license(std::string_view name, std::string_view text) {
        raw.licenseFiles.push_back(folder_.write(name, text));
        return *this;
    }
    InstalledPackage& notice(std::string_view name, std::string_view text) {
        raw.noticeFiles.push_back(folder_.write(name, text));
        return *this;
    }
    Dependency identified() const { return identify(raw); }

    RawDependency raw;

private:
    TemporaryFolder folder_;
};

TEST(Identify, WeighsMetadataAgainstTheFile) {
    struct Case {
        const char* declared;
        std::string file;
        std::optional<std::string> license;
        LicenseBasis basis;
        std::vector<Flag> flags;
    };
    using enum LicenseBasis;
    const Case cases[]{
        {"MIT", standard("MIT"), "MIT", metadataAndText, {}},
        {"MIT", "", "MIT", metadata, {Flag::noLicenseFile}},
        {"MIT", "Read the web site.", "MIT", metadata, {}},
        {"MIT", standard("Apache-2.0"), "MIT", metadata, {Flag::mismatch}},
        {"GPL", standard("GPL-3.0"), "GPL", metadataAndText, {Flag::strongCopyleft}},
        {"LGPL", standard("LGPL-2.1"), "LGPL", metadataAndText, {Flag::weakCopyleft}},
        {"BSD", standard("BSD-3-Clause"), "BSD", metadataAndText, {}},
        {"BSD-3-Clause",
         standard("BSD-2-Clause"),
         "BSD-3-Clause",
         metadataAndText,
         {}},  // holds three quarters
        {"GPL-2.0-or-later",
         standard("GPL-2.0"),
         "GPL-2.0-or-later",
         metadataAndText,
         {Flag::strongCopyleft}},
        {"MIT OR Apache-2.0", standard("Apache-2.0"), "MIT OR Apache-2.0", metadataAndText, {}},
        {"MIT AND Apache-2.0", standard("Apache-2.0"), "MIT AND Apache-2.0", metadata, {Flag::mismatch}},
        {"MIT AND Apache-2.0",
         standard("Apache-2.0") + standard("MIT"),
         "MIT AND Apache-2.0",
         metadataAndText,
         {}},
        {"See the file", standard("ISC"), "ISC", text, {}},
        {"See the file", "Licensed under the Apache License, Version 2.0", "Apache-2.0", notice, {}},
        {"UNLICENSED", standard("MIT"), "UNLICENSED", metadata, {Flag::proprietary, Flag::mismatch}},
        {"unlicensed", "", "UNLICENSED", metadata, {Flag::proprietary}},
        {"SEE LICENSE IN terms.txt", standard("MIT"), "MIT", text, {}},
        {"see license in terms.txt", "Our own terms.", std::nullopt, none, {Flag::proprietary}},
        {"Custom", "Our own terms.", std::nullopt, none, {Flag::unknown}},
        {"Public Domain", "", "PublicDomain", metadata, {}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(std::string(one.declared) + " / " + one.file.substr(0, 60));
        InstalledPackage package(one.declared);
        if (!one.file.empty()) {
            package.license("LICENSE", one.file);
        }
        const Dependency dependency = package.identified();
        EXPECT_EQ(dependency.license, one.license);
        EXPECT_EQ(dependency.basis, one.basis);
        EXPECT_EQ(dependency.flags, one.flags);
    }
}

TEST(Identify, SaysWhatDisagrees) {
    const Dependency dependency =
        InstalledPackage("MIT").license("LICENSE", standard("Apache-2.0") + standard("Zlib")).identified();
    EXPECT_THAT(
        dependency.notes,
        ElementsAre("The package metadata says MIT, but its license file reads as Apache-2.0 AND Zlib. Check "
                    "which one applies."));
    EXPECT_EQ(dependency.matchScore, 1.0);
}

TEST(Identify, LetsALongTextThatMerelyMentionsALicenseStand) {
    std::string terms;
    for (int i = 0; i < 100; ++i) {
        terms += "These are the terms of our own license and they go on and on.\n";
    }
    terms += "It may be combined with works under the GNU General Public License.\n";
    const Dependency declared = InstalledPackage("EPL-1.0").license("LICENSE", terms).identified();
    EXPECT_EQ(declared.basis, LicenseBasis::metadata);
    EXPECT_THAT(declared.flags, ElementsAre(Flag::weakCopyleft));
    EXPECT_FALSE(declared.matchScore);
    EXPECT_EQ(InstalledPackage().license("LICENSE", terms).identified().license, "GPL")
        << "without metadata it decides as always";
}

TEST(Identify, CombinesTheFilesOfAPackage) {
    struct Case {
        std::vector<const char*> files;
        const char* license;
    };
    const Case cases[]{
        {{"MIT", "Apache-2.0"}, "MIT AND Apache-2.0"},
        {{"GPL-3.0", "LGPL-3.0"}, "LGPL-3.0"},
        {{"LGPL-3.0", "GPL-3.0"}, "LGPL-3.0"},
        {{"LGPL-2.1", "GPL-3.0"}, "LGPL-2.1 AND GPL-3.0"},
        {{"MIT", "MIT"}, "MIT"},
    };
    for (const Case& one : cases) {
        InstalledPackage package;
        for (std::size_t i = 0; i < one.files.size(); ++i) {
            package.license("LICENSE" + std::to_string(i), standard(one.files[i]));
        }
        EXPECT_EQ(package.identified().license, one.license);
        EXPECT_EQ(package.identified().basis, LicenseBasis::text);
    }
}

TEST(Identify, NamesFurtherLicensesOnlyWhereMetadataAndFilesAgree) {
    const auto notes = [](const char* declared, const std::string& text) {
        return InstalledPackage(declared).license("LICENSE", text).identified().notes;
    };
    const std::string bundle = standard("MIT") + "\n" + standard("Apache-2.0") + "\n" + standard("Zlib");
    EXPECT_THAT(notes("MIT", bundle), ElementsAre("The license file also contains Apache-2.0, Zlib text, "
                                                  "usually for code bundled inside the package."));
    EXPECT_THAT(notes("MIT AND Zlib AND Apache-2.0", bundle), IsEmpty());
    // About two thirds of another license can neither be placed nor passed over.
    EXPECT_THAT(notes("MIT", standard("MIT") + "\n" + standard("Zlib") + "\n" + startOf("MPL-2.0", 0.65)),
                ElementsAre("The license file also contains Zlib text, usually for code bundled inside the "
                            "package. Check what the MPL-2.0 "
                            "part covers."));
    // The text of the one holds most of the other and stands in for it: it is nothing further.
    EXPECT_THAT(notes("MIT-0", standard("MIT")), testing::Each(testing::Not(HasSubstr("also contains"))));
}

TEST(Identify, ExplainsEachCategory) {
    struct Case {
        const char* declared;
        LicenseCategory category;
        std::vector<const char*> noteStarts;
    };
    using enum LicenseCategory;
    const Case cases[]{
        {"MIT OR GPL-2.0-only",
         permissive,
         {"Offered under a choice of licenses (MIT OR GPL-2.0-only). This report assumes MIT."}},
        {"MIT/Apache-2.0",
         permissive,
         {"Offered under a choice of licenses (MIT OR Apache-2.0). This report assumes MIT."}},
        {"BSD", permissive, {"BSD-style license without a clause count"}},
        {"PublicDomain", publicDomain, {"Says “public domain” without a license"}},
        {"MPL-2.0", weakCopyleft, {"MPL: changes"}},
        {"LGPL-3.0-only AND CDDL-1.0 AND MPL-1.1",
         weakCopyleft,
         {"MPL: changes", "LGPL: usually", "File-level copyleft"}},
        {"GPL-2.0-only WITH Classpath-exception-2.0",
         weakCopyleft,
         {"Copyleft with an exception (GPL-2.0-only WITH Classpath-exception-2.0): usually fine"}},
        {"GPL", strongCopyleft, {"GPL, version not stated: "}},
        {"GPL-3.0-only", strongCopyleft, {"GPL: if you ship"}},
        {"AGPL-3.0-or-later", networkCopyleft, {"AGPL-style license: "}},
        {"UNLICENSED", proprietary, {"Marked as not open source (UNLICENSED). You need"}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.declared);
        const Dependency dependency =
            InstalledPackage(one.declared).license("LICENSE", "Some words.").identified();
        EXPECT_EQ(dependency.category, one.category);
        ASSERT_EQ(dependency.notes.size(), one.noteStarts.size());
        for (std::size_t i = 0; i < one.noteStarts.size(); ++i) {
            EXPECT_THAT(dependency.notes[i], StartsWith(one.noteStarts[i]));
        }
    }
}

TEST(Identify, NotesAFullTextThatIsOnlyClose) {
    const Dependency close = InstalledPackage().license("LICENSE", startOf("MPL-2.0", 0.80)).identified();
    ASSERT_TRUE(close.matchScore);
    ASSERT_LT(*close.matchScore, 0.82);
    EXPECT_THAT(
        close.notes,
        testing::Contains("The license file is close to the standard MPL-2.0 text but not identical (" +
                          std::to_string(std::lround(*close.matchScore * 100)) + "% match). Read it once."));
    const Dependency notice =
        InstalledPackage().license("LICENSE", "Licensed under the Apache License, Version 2.0").identified();
    EXPECT_EQ(notice.matchScore, 0.7);
    EXPECT_THAT(notice.notes,
                ElementsAre("Identified from a short license notice, not the full license text."));
    EXPECT_THAT(InstalledPackage().license("LICENSE", startOf("MPL-2.0", 0.88)).identified().notes,
                ElementsAre(StartsWith("MPL: ")));
}

TEST(Identify, TellsWhichLicenseFilesAreMissing) {
    const auto notes = [](const char* declared) { return InstalledPackage(declared).identified().notes; };
    EXPECT_THAT(notes("MIT"), ElementsAre(HasSubstr("uses the standard license text")));
    EXPECT_THAT(notes("BSL-1.0"), ElementsAre(HasSubstr("no standard text is bundled")));
    EXPECT_THAT(notes("MIT OR BSL-1.0"),
                ElementsAre(StartsWith("Offered"), HasSubstr("uses the standard license text")));
    EXPECT_THAT(notes("MIT AND BSL-1.0"), ElementsAre(HasSubstr("no standard text is bundled")));
    EXPECT_THAT(InstalledPackage("MIT").license("LICENSE", " \n\t").identified().flags,
                ElementsAre(Flag::noLicenseFile))
        << "a blank file says nothing";
    EXPECT_THAT(InstalledPackage("MIT").license("LICENSE", std::string_view("MI\0T", 4)).identified().flags,
                ElementsAre(Flag::noLicenseFile));
}

TEST(Identify, TellsWhatIsNotOnDisk) {
    const auto absent = [](Ecosystem ecosystem, std::optional<std::string> declared) {
        return identify({.ecosystem = ecosystem, .name = "absent", .declared = std::move(declared)});
    };
    const Dependency swift = absent(Ecosystem::swiftpm, std::nullopt);
    EXPECT_THAT(swift.flags, ElementsAre(Flag::missing, Flag::notOnDisk));
    EXPECT_THAT(swift.notes, ElementsAre(StartsWith("The package isn't checked out"),
                                         StartsWith("No license was found.")));
    EXPECT_THAT(absent(Ecosystem::npm, "MIT").notes,
                ElementsAre(StartsWith("The package isn't in node_modules")));
    EXPECT_THAT(absent(Ecosystem::python, "MIT").notes,
                ElementsAre(StartsWith("The package isn't installed in the chosen environment")));
    EXPECT_THAT(absent(Ecosystem::npm, "Unlicense").flags, IsEmpty()) << "public domain asks for no text";
    EXPECT_THAT(InstalledPackage().identified().flags, ElementsAre(Flag::missing));
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
        {" \t", std::nullopt, std::nullopt},
        {"UNLICENSED" + std::string(150, ' '), std::nullopt, "UNLICENSED" + std::string(137, ' ') + "…"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.declared);
        const Dependency dependency = InstalledPackage(one.declared).identified();
        EXPECT_EQ(dependency.license, one.license);
        EXPECT_EQ(dependency.declared, one.carried);
        if (!one.license) {
            EXPECT_THAT(dependency.flags, ElementsAre(one.carried ? Flag::unknown : Flag::missing));
        }
    }
}

TEST(Identify, TurnsToClassifiersWhereNothingIsDeclared) {
    InstalledPackage package("See the web site");
    package.raw.ecosystem = Ecosystem::python;
    package.raw.classifiers = {"License :: OSI Approved :: MIT License",
                               "License :: OSI Approved :: BSD License"};
    const Dependency dependency = package.identified();
    EXPECT_EQ(dependency.license, "MIT OR BSD");
    EXPECT_EQ(dependency.basis, LicenseBasis::classifier);
    package.raw.declared = "ISC";
    EXPECT_EQ(package.identified().license, "ISC");
}

TEST(Identify, ReproducesTheTextsOfSeveralFiles) {
    const std::string mit = standard("MIT");
    InstalledPackage package("MIT");
    package.license("LICENSE", mit)
        .license("LICENSE.txt", mit)
        .license("COPYING", "more")
        .license("EMPTY", " \n");
    package.notice("NOTICE", "\xEF\xBB\xBFThanks\xFF").notice("NOTICES", "\n");
    const Dependency dependency = package.identified();
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

TEST(TextReadings, ReadEachTextOnce) {
    TextReadings readings;
    EXPECT_EQ(readings.of(standard("MIT")), readings.of(standard("MIT")));
    EXPECT_NE(readings.of(standard("MIT")), readings.of(standard("ISC")));
}

}  // namespace
}  // namespace ScanKit
