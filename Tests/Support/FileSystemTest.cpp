#include "ScanKit/Support/FileSystem.h"

#include "ScanKit/Support/Paths.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(FolderListing, SortsByBytesAndSeesThroughLinks) {
    const TemporaryFolder folder{{"b", ""},         {"B", ""},       {"._b", ""},
                                 {".DS_Store", ""}, {".hidden", ""}, {"sub/x", ""}};
    folder.link("to-file", "b");
    folder.link("to-folder", "sub");
    folder.link("to-nowhere", "gone");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(listPackageFolder(folder.path()), (std::vector<FolderEntry>{
                                                    {".hidden", EntryKind::file, false},
                                                    {"B", EntryKind::file, false},
                                                    {"b", EntryKind::file, false},
                                                    {"pipe", EntryKind::other, false},
                                                    {"sub", EntryKind::folder, false},
                                                    {"to-file", EntryKind::file, true},
                                                    {"to-folder", EntryKind::folder, true},
                                                    {"to-nowhere", EntryKind::other, true},
                                                }));
    EXPECT_TRUE(listPackageFolder(folder / "b").empty());
    EXPECT_TRUE(listPackageFolder(folder / "gone").empty());
}

TEST(ReadFile, ReadsOnlyRegularFilesUpToItsLimit) {
    const TemporaryFolder folder{{"ten", "0123456789"}, {"empty", ""}};
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    folder.link("loop", "loop");
    EXPECT_EQ(readFile(folder / "ten", 10), "0123456789");
    EXPECT_EQ(readFile(folder / "ten", 9), std::nullopt);
    EXPECT_EQ(readFile(folder / "empty", 10), "");
    EXPECT_EQ(readFileStart(folder / "ten", 4), "0123");
    EXPECT_EQ(readFileStart(folder / "ten", 400), "0123456789");
    for (const char* name : {"pipe", "loop", "gone", "."}) {
        EXPECT_EQ(readFile(folder / name, 10), std::nullopt) << name;
        EXPECT_EQ(readFileStart(folder / name, 10), std::nullopt) << name;
    }
    EXPECT_EQ(readFile("/dev/zero", 10), std::nullopt);
}

TEST(ReadFile, ReadsOnPastASizeThatTheSystemDoesNotTell) {
    // Files below /proc say that they are empty.
    const auto text = readFileStart("/proc/self/status", 100'000);
    ASSERT_TRUE(text);
    EXPECT_NE(text->find("Name:"), std::string::npos);
}

TEST(ReadTextFile, SkipsAByteOrderMarkAndMendsInvalidParts) {
    const TemporaryFolder folder{{"text", "\xEF\xBB\xBFna\xEFve"}};
    EXPECT_EQ(readTextFile(folder / "text"), "na\uFFFDve");
}

TEST(IsRegularFileInside, ResolvesLinksOfBothPaths) {
    const TemporaryFolder folder{{"package/LICENSE", "x"}, {"secret", "x"}, {"package2/LICENSE", "x"}};
    folder.link("package/inside", "LICENSE");
    folder.link("package/outside", "../secret");
    folder.link("package/sibling", "../package2/LICENSE");
    folder.link("alias", "package");
    folder.write("package/sub/LICENSE", "x");
    folder.link("package/sub-alias", "sub");
    folder.link("package/above", "..");
    const auto package = folder / "package";
    EXPECT_TRUE(isRegularFileInside(package / "LICENSE", package));
    EXPECT_TRUE(isRegularFileInside(package / "inside", package));
    EXPECT_TRUE(isRegularFileInside(folder / "alias/LICENSE", package));
    EXPECT_TRUE(isRegularFileInside(package / "LICENSE", folder / "alias"));
    EXPECT_TRUE(isRegularFileInside(package / "sub/LICENSE", package));
    EXPECT_TRUE(isRegularFileInside(package / "sub-alias/LICENSE", package));
    EXPECT_TRUE(isRegularFileInside(package / "sub/../LICENSE", package));
    EXPECT_FALSE(isRegularFileInside(package / "above/secret", package));
    EXPECT_FALSE(isRegularFileInside(package / "LICENSE/x", package));
    EXPECT_FALSE(isRegularFileInside(package / "sub", package));
    EXPECT_FALSE(isRegularFileInside(package / "outside", package));
    EXPECT_FALSE(isRegularFileInside(package / "sibling", package));
    EXPECT_FALSE(isRegularFileInside(package / "../secret", package));
    EXPECT_FALSE(isRegularFileInside(package, package));
}

TEST(Paths, ShowsPathsRelativeToTheRootOrTheHome) {
    const EnvironmentVariable home("HOME", "/home/ada");
    EXPECT_EQ(displayPath("/srv/app/web/x", "/srv/app/"), "web/x");
    EXPECT_EQ(displayPath("/srv/app/./web/..", "/srv/app"), ".");
    EXPECT_EQ(displayPath("/srv/apple", "/srv/app"), "/srv/apple");
    EXPECT_EQ(displayPath("/home/ada/venv", "/srv/app"), "~/venv");
    EXPECT_EQ(displayPath("/home/ada", "/srv/app"), "~");
    EXPECT_EQ(displayPath("/home/adam", "/srv/app"), "/home/adam");
    EXPECT_EQ(displayPath("/etc/x", "/"), "etc/x");
    EXPECT_EQ(displayPath("/srv/app/\xFF", "/srv/app"), "\uFFFD");
    EXPECT_EQ(displayName("/srv/app"), "app");
    EXPECT_EQ(displayName("/"), "/");
}

}  // namespace
}  // namespace ScanKit
