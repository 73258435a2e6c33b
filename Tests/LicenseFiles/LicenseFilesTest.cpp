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
    const TemporaryFolder folder{{"private/LICENSE", ""}, {"package/own/LICENSE", ""}, {"package/text", ""}};
    const std::pair<const char*, const char*> links[]{
        {"package/LICENSE", "text"},           {"package/LICENSE-OUT", "../private/LICENSE"},
        {"package/LICENSE-LOST", "gone"},      {"package/LICENSE-FOLDER", "own"},
        {"package/own/LICENSE-UP", "../text"}, {"package/NOTICE", "../private/LICENSE"},
        {"package/out", "../private"},         {"alias", "package"}};
    for (const auto& [name, target] : links) {
        folder.link(name, target);
    }
    ASSERT_EQ(mkfifo((folder / "package/LICENSE-PIPE").c_str(), 0600), 0);
    for (const auto& package : {folder / "package", folder / "alias"}) {
        EXPECT_EQ(findLicenseFiles(package), (LicenseFiles{{package / "LICENSE"}, {}}));
        const auto below = [&](const char* name) {
            return namesOf(findLicenseFiles(package, listPackageFolder(package / name), name).licenses);
        };
        EXPECT_EQ(below("own"), (Names{"LICENSE", "LICENSE-UP"}));
        EXPECT_EQ(below("out"), Names{});
    }
    EXPECT_EQ(findLicenseFiles(folder / "gone"), LicenseFiles{});
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
    using namespace std::string_literals;
    // The system takes the last one for inner/out, which is no link.
    for (const std::string& name :
         {""s, " "s, "."s, "docs"s, "gone"s, "../secret"s, "docs/../../secret"s, "out"s, "/etc/passwd"s,
          "LICENSE\0x"s, (folder / "secret").string(), "sub/../out"s}) {
        EXPECT_EQ(fileNamedByMetadata(package, name), std::nullopt) << name;
    }
}

}  // namespace
}  // namespace ScanKit
