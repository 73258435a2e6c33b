#include "ScanKit/Support/Containment.h"
#include "ScanKit/Support/OpenFolder.h"
#include "ScanKit/Support/Paths.h"
#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <sys/stat.h>

namespace ScanKit {
namespace {

TEST(FolderListing, SortsByBytesAndSeesThroughLinks) {
    const TemporaryFolder folder{{"b", ""},         {"B", ""},       {"._b", ""},  {"_b", ""},
                                 {".DS_Store", ""}, {".hidden", ""}, {"sub/x", ""}};
    folder.link("to-file", "b");
    folder.link("to-folder", "sub");
    folder.link("to-nowhere", "gone");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    constexpr auto file = EntryKind::file;
    constexpr auto other = EntryKind::other;
    EXPECT_EQ(listPackageFolder(folder.path()),
              (std::vector<FolderEntry>{{".hidden", file},
                                        {"B", file},
                                        {"_b", file},
                                        {"b", file},
                                        {"pipe", other},
                                        {"sub", EntryKind::folder},
                                        {"to-file", file, true},
                                        {"to-folder", EntryKind::folder, true},
                                        {"to-nowhere", other, true}}));
    EXPECT_EQ(listPackageFolder(folder / "b"), std::vector<FolderEntry>{});
    EXPECT_EQ(listPackageFolder(folder / "gone"), std::vector<FolderEntry>{});
}

TEST(ReadFile, ReadsOnlyRegularFilesUpToItsLimit) {
    const TemporaryFolder folder{{"ten", "0123456789"}, {"empty", ""}, {"text", "\xEF\xBB\xBFna\xEFve"}};
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    folder.link("loop", "loop");
    EXPECT_EQ(readFile(folder / "ten", 10), "0123456789");
    EXPECT_EQ(readFile(folder / "ten", 9), std::nullopt);
    EXPECT_EQ(readFile(folder / "empty", 10), "");
    EXPECT_EQ(readFileStart(folder / "ten", 4), "0123");
    EXPECT_EQ(readFileStart(folder / "ten", 400), "0123456789");
    EXPECT_EQ(readTextFile(folder / "text", 10), "na\uFFFDve");
    for (const char* name : {"pipe", "loop", "gone", ".", "/dev/zero"}) {
        EXPECT_EQ(readFile(folder / name, 10), std::nullopt) << name;
        EXPECT_EQ(readFileStart(folder / name, 10), std::nullopt) << name;
    }
    // Files below /proc say that they are empty.
    EXPECT_EQ(readFileStart("/proc/self/status", 5), "Name:");
    EXPECT_EQ(readFile("/proc/self/status", 5), std::nullopt);
}

TEST(OpenFolder, ReadsWhatItListedAndNothingThatHasTakenItsPlace) {
    const TemporaryFolder folder{{"a/stays", "0123456789"}, {"a/link", ""}, {"a/pipe", ""},
                                 {"a/folder", ""},          {"a/gone", ""}, {"secret", "x"}};
    folder.link("a/known-link", "../secret");
    std::filesystem::create_directories(folder / "a/sub/below");
    const OpenFolder opened(folder / "a");
    for (const char* name : {"link", "pipe", "folder", "gone"}) {
        std::filesystem::remove(folder / "a" / name);
    }
    folder.link("a/link", "../secret");
    ASSERT_EQ(mkfifo((folder / "a/pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "a/folder");
    folder.write("a/new", "x");

    EXPECT_EQ(opened.readFile("stays", 10), "0123456789");
    EXPECT_EQ(opened.readFile("stays", 9), std::nullopt);
    EXPECT_EQ(opened.readFile("known-link", 10), "x") << "the listing has seen where it leads";
    for (const char* name : {"link", "pipe", "folder", "gone", "new", "sub", "../secret"}) {
        EXPECT_EQ(opened.readFile(name, 10), std::nullopt) << name;
    }
    EXPECT_TRUE(opened.leadsToFolder("sub/below"));
    EXPECT_FALSE(opened.leadsToFolder("stays"));
    const OpenFolder missing(folder / "b");
    EXPECT_TRUE(missing.entries().empty());
    EXPECT_FALSE(missing.leadsToFolder("."));
}

TEST(IsRegularFileInside, ResolvesLinksOfBothPaths) {
    const TemporaryFolder folder{
        {"package/LICENSE", "x"}, {"package/sub/LICENSE", "x"}, {"secret", "x"}, {"package2/LICENSE", "x"}};
    const std::pair<const char*, const char*> links[]{{"alias", "package"},
                                                      {"package/inside", "LICENSE"},
                                                      {"package/outside", "../secret"},
                                                      {"package/sub-alias", "sub"},
                                                      {"package/above", ".."},
                                                      {"package/sibling", "../package2/LICENSE"}};
    for (const auto& [name, target] : links) {
        folder.link(name, target);
    }
    const auto package = folder / "package";
    for (const char* inside : {"package/LICENSE", "package/inside", "alias/LICENSE", "package/sub/LICENSE",
                               "package/sub-alias/LICENSE", "package/sub/../LICENSE"}) {
        EXPECT_TRUE(isRegularFileInside(folder / inside, package)) << inside;
        EXPECT_TRUE(isRegularFileInside(folder / inside, folder / "alias/")) << inside;
    }
    for (const char* outside : {"package/above/secret", "package/LICENSE/x", "package/sub", "package/outside",
                                "package/sibling", "package/../secret", "package", "package2/LICENSE"}) {
        EXPECT_FALSE(isRegularFileInside(folder / outside, package)) << outside;
    }
}

TEST(Paths, KeepsWhatALockfileNamesBelowTheProject) {
    struct Case {
        const char *project, *named;
        std::optional<std::filesystem::path> folder;
    };
    const Case cases[]{
        {"/srv/app", "node_modules/a", "/srv/app/node_modules/a"},
        {"/srv/app", "node_modules/./a//b/", "/srv/app/node_modules/a/b"},
        {"/srv/app", "/etc", "/srv/app/etc"},
        {"/srv/app/", "a", "/srv/app/a"},
        {"/srv/./app", "a", "/srv/app/a"},
        {"app", "a/..b", "app/a/..b"},
        {".", "a", "a"},
        {"/", "a", "/a"},
        {"/srv/app", "", "/srv/app"},
        {"/srv/app", "a/../../b", std::nullopt},
        {"/srv/app", "..", std::nullopt},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(folderBelow(one.project, one.named), one.folder) << one.project << " " << one.named;
    }
    EXPECT_EQ(folderBelow("/srv/app", std::string("a\0b", 3)), std::nullopt);
}

TEST(Paths, ShowsPathsRelativeToTheRootOrTheHome) {
    struct Case {
        const char *home, *path, *root, *shown;
    };
    constexpr Case cases[]{
        {"/home/ada", "/srv/app/web/x", "/srv/app/", "web/x"},
        {"/home/ada", "/srv/app/./web/..", "/srv/app", "."},
        {"/home/ada", "/srv/apple", "/srv/app", "/srv/apple"},
        {"/home/ada", "/home/ada/venv", "/srv/app", "~/venv"},
        {"/home/ada", "/home/ada", "/srv/app", "~"},
        {"/home/ada", "/home/adam", "/srv/app", "/home/adam"},
        {"/home/ada", "/etc/x", "/", "etc/x"},
        {"/home/ada", "/srv/app/\xFF", "/srv/app", "\uFFFD"},
        {"/", "/etc/x", "/srv/app", "/etc/x"},  // the home of some services
    };
    for (const Case& one : cases) {
        const EnvironmentVariable home("HOME", one.home);
        EXPECT_EQ(displayPath(one.path, one.root), one.shown) << one.path;
    }
    EXPECT_EQ(displayName("/srv/app"), "app");
    EXPECT_EQ(displayName("/"), "/");
    const EnvironmentVariable noHome("HOME", "");
    EXPECT_TRUE(homeFolder().is_absolute()) << "the account's own when HOME says nothing";
}

}  // namespace
}  // namespace ScanKit
