#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <sys/stat.h>

#include <gmock/gmock.h>

namespace ScanKit {
namespace {

using Names = std::vector<std::string>;
using Paths = std::vector<std::filesystem::path>;

Names namesOf(const Paths& files) {
    Names names;
    for (const auto& file : files) {
        names.push_back(file.filename().string());
    }
    return names;
}

LicenseFiles foundAmong(const Names& names) {
    const TemporaryFolder package;
    for (const std::string& name : names) {
        package.write(name, "");
    }
    return findLicenseFiles(package.path());
}

TEST(LicenseFiles, TellsLicensesAndNoticesByTheirNames) {
    const Names licenses{"LICENSE",         "LICENCE.rst",      "mit-license.txt",   "our-licence",
                         "LICENSE.apache2", "LICENSE.abcdefgh", "LICENSE.ÄBCDEFGH",  "Copying.LESSER",
                         "UNLICENSE",       ".license",         "license-notice.txt"};
    const Names notices{"NOTICE", "notices.md", "NOTICE.something-long", "ThirdPartyNotices-more.txt",
                        "THIRD_PARTY_NOTICES"};
    const Names neither{"LICENSE.abcdefghi", "not-copying",   "license.js", "LICENSE.JSON",
                        "license.d",         "License.swift", "license.h",  "license.pyc",
                        "photo.license",     "._LICENSE",     "notice.py",  "notice-file.txt"};
    EXPECT_THAT(namesOf(foundAmong(licenses).licenses), testing::UnorderedElementsAreArray(licenses));
    EXPECT_EQ(foundAmong(licenses).notices, Paths{});
    EXPECT_THAT(namesOf(foundAmong(notices).notices), testing::UnorderedElementsAreArray(notices));
    EXPECT_EQ(foundAmong(notices).licenses, Paths{});
    EXPECT_EQ(foundAmong(neither), LicenseFiles{});
}

TEST(LicenseFiles, ReadsLicenseBeforeCopyingBeforeTheRest) {
    EXPECT_EQ(namesOf(foundAmong({"UNLICENSE", "COPYING", "license.txt", "LICENSE.md", "LICENSE",
                                  "LICENSE-APACHE", "copying.lesser", "a-license", "licence"})
                          .licenses),
              (Names{"LICENSE", "LICENSE-APACHE", "LICENSE.md", "licence", "license.txt", "COPYING",
                     "copying.lesser", "UNLICENSE", "a-license"}));
    EXPECT_EQ(namesOf(foundAmong({"NOTICES", "NOTICE", "notice"}).notices),
              (Names{"NOTICE", "NOTICES", "notice"}));
}

TEST(LicenseFiles, TakesOnlyRegularFilesInsideThePackage) {
    const TemporaryFolder folder{
        {"private/NOTICE", ""}, {"package/text", ""}, {"package/LICENSES/MIT.txt", ""}};
    folder.link("package/LICENSE", "text");
    folder.link("package/LICENSE-OUT", folder / "private/NOTICE");
    folder.link("package/LICENSE-LOST", "gone");
    folder.link("package/LICENSE-FOLDER", "LICENSES");
    folder.link("package/NOTICE", "../private/NOTICE");
    ASSERT_EQ(mkfifo((folder / "package/LICENSE-PIPE").c_str(), 0600), 0);
    folder.link("alias", "package");
    for (const char* package : {"package", "alias"}) {
        const LicenseFiles found = findLicenseFiles(folder / package);
        EXPECT_EQ(namesOf(found.licenses), Names{"LICENSE"}) << package;
        EXPECT_TRUE(found.notices.empty()) << package;
    }
    EXPECT_EQ(findLicenseFiles(folder / "gone"), LicenseFiles{});
}

TEST(LicenseFiles, ASubfoldersFilesMustLieInsideThePackageToo) {
    const TemporaryFolder folder{{"private/LICENSE", ""}, {"package/terms", ""}, {"package/own/LICENSE", ""}};
    folder.link("package/out", "../private");
    folder.link("package/own/LICENSE-UP", "../terms");
    const auto below = [&](const char* name) {
        return namesOf(
            findLicenseFiles(folder / "package", listPackageFolder(folder / "package" / name), name)
                .licenses);
    };
    EXPECT_EQ(below("own"), (Names{"LICENSE", "LICENSE-UP"}));
    EXPECT_EQ(below("out"), Names{});
}

TEST(FileNamedByMetadata, NamesAFileInsideThePackageOrNothing) {
    const TemporaryFolder folder{{"secret", ""},
                                 {"package/LICENSE", ""},
                                 {"package/docs/TERMS", ""},
                                 {"package/inner/out", ""},
                                 {"package/inner/deep/file", ""}};
    folder.link("package/out", "../secret");
    folder.link("package/sub", "inner/deep");
    const std::filesystem::path package = folder / "package";
    EXPECT_EQ(fileNamedByMetadata(package, "LICENSE"), package / "LICENSE");
    EXPECT_EQ(fileNamedByMetadata(package, "./docs/../LICENSE"), package / "LICENSE");
    EXPECT_EQ(fileNamedByMetadata(package, "/docs/TERMS"), package / "docs/TERMS");
    for (const std::string_view name :
         {"", " ", ".", "docs", "gone", "../secret", "docs/../../secret", "out", "/etc/passwd",
          // The system takes this for inner/out, which is no link.
          "sub/../out"}) {
        EXPECT_EQ(fileNamedByMetadata(package, name), std::nullopt) << name;
    }
    EXPECT_EQ(fileNamedByMetadata(package, std::string("LICENSE") + '\0' + "x"), std::nullopt);
    EXPECT_EQ(fileNamedByMetadata(package, (folder / "secret").string()), std::nullopt);
}

}  // namespace
}  // namespace ScanKit
