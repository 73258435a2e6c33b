#include "ScanKit/Readers/NPM/BunLock.h"

#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Readers/LockfileText.h"

#include <gmock/gmock.h>

namespace ScanKit::NPMParser {
namespace {

using testing::ElementsAre;

constexpr std::string_view sample = R"({
  // A workspace of the project and one member.
  "lockfileVersion": 1,
  "workspaces": {
    "": {
      "name": "root",
      "dependencies": { "a": "^1", "alias": "npm:@s/real@3", "one": "workspace:*", "dir": "file:./dir", },
      "optionalDependencies": { "maybe": "^1", "unresolved": "*" },
      "devDependencies": { "tool": "^1" },
    },
    "packages/one": {
      "name": "one",
      "devDependencies": { "b": "^2" },
      "peerDependencies": { "c": "*", "nowhere": "*" },
      "optionalPeers": ["c"],
    },
  },
  "packages": {
    "@s/deep": ["@s/deep@1.0.0", "", { "dependencies": { "b": "^1" } }, "sha512-x=="],

    "a": ["a@1.10.0", "https://host.example/a.tgz", { "dependencies": { "@s/deep": "1" }, "optionalDependencies": { "maybe": "1", "gone": "1" } }, "sha512-x=="],
    "alias": ["@s/real@3.0.0", "", { "peerDependencies": { "a": "*", "c": "*" }, "optionalPeers": ["c"] }, "sha512-x=="],
    "b": ["b@1.0.0", "", {}, "sha512-x=="],
    "c": ["c@1.0.0", "", {}, "sha512-x=="],
    "dir": ["dir@file:dir", { "dependencies": { "b": "1" } }],
    "linked": ["linked@link:../linked", {}],
    "maybe": ["maybe@1.0.0", "", { "os": "none" }, "sha512-x=="],
    "one": ["one@workspace:packages/one"],
    "tool": ["tool@git+ssh://git@host.example/o/tool#0123", { "dependencies": { "@s/deep": "2" } }, "0123"],
    "one/b": ["b@2.0.0", "", {}, "sha512-x=="],
    "tool/@s/deep": ["@s/deep@2.0.0", "", { "dependencies": { "c": "1", "b": "3" } }, "sha512-x=="],
    "tool/@s/deep/b": ["b@3.0.0", "", {}, "sha512-x=="], /* the last */
  },
})";

TEST(BunLock, FindsWhatEachNeedsInTheNearestFolder) {
    const auto lockfile = bunLock(sample);
    EXPECT_EQ(told(lockfile),
              "shipped @s/deep@1.0.0 b@1.0.0\n"
              "shipped a@1.10.0 @s/deep@1.0.0 ?maybe@1.0.0\n"
              "shipped @s/real@3.0.0 a@1.10.0 ?c@1.0.0\n"
              "shipped b@1.0.0\n"
              "shipped c@1.0.0\n"
              "own dir@ b@1.0.0\n"
              "own linked@\n"
              "optional maybe@1.0.0\n"
              "own one@\n"
              "development tool@ @s/deep@2.0.0\n"
              "development b@2.0.0\n"
              "development @s/deep@2.0.0 c@1.0.0 b@3.0.0\n"
              "development b@3.0.0\n");
    ASSERT_TRUE(lockfile);
    EXPECT_EQ(lockfile->entries[1].source, "https://host.example/a.tgz");
    EXPECT_EQ(lockfile->entries[9].source, "git+ssh://git@host.example/o/tool#0123");
    EXPECT_THAT(lockfile->members, ElementsAre("packages/one"));
}

TEST(BunLock, LosesNoEntryAndRefusesOtherFiles) {
    EXPECT_EQ(
        told(bunLock(
            R"({"lockfileVersion": 0, "workspaces": {"": {"dependencies": {"gone": "1"}}}, "packages": {
                  "a": ["a@1.0.0", "", {"dependencies": 1}], "b": {}, "@s/c": [], "d": ["d"], "e": ["e@"], "f//g": ["g@1"],
                  "": ["h@1.0.0"], "i": ["i@1.0.0", "", {"dependencies": {"gone": "2"}}],
                  "i": ["i@1.0.1", "", {"dependencies": {"gone": "2"}}]}})")),
        "unreadable a@1.0.0\nunreadable b@\nunreadable @s/c@\nunreadable d@\nunreadable e@\nunreadable f//g@\n"
        "unreadable @\nlost i@1.0.1 gone@\nunreadable gone@\n");
    std::string deep = "a";
    for (int i = 0; i < 1000; ++i) {
        deep += "/a";
    }
    EXPECT_EQ(
        bunLock(R"({"lockfileVersion": 1, "workspaces": {}, "packages": {")" + deep + R"(": ["a@1.0.0"]}})")
            .value()
            .entries[0]
            .isUnreadable,
        true);
    for (
        const std::string_view text :
        {"", "[]", "{}", R"({"lockfileVersion": 1})",
         R"({"lockfileVersion": 9, "workspaces": {}, "packages": {}})",
         R"({"lockfileVersion": 1, "workspaces": {}, "packages": []})",
         R"({"lockfileVersion": 1, "workspaces": {"": 1}, "packages": {}})",
         R"({"lockfileVersion": 1, "workspaces": {"": {"dependencies": ["a"]}}, "packages": {}})",
         "{\"lockfileVersion\": 1, \"workspaces\": {},\n<<<<<<< ours\n\"packages\": {}\n=======\n\"packages\": {}\n"
         ">>>>>>> theirs\n}"}) {
        EXPECT_EQ(told(bunLock(text)), "no lockfile") << text;
    }
    std::string many = R"({"lockfileVersion": 1, "workspaces": {"": {"dependencies": {)";
    for (int i = 0; i <= 250'000; ++i) {
        many += "\"" + std::to_string(i) + "\":\"\",";
    }
    EXPECT_EQ(told(bunLock(many + "}}}, \"packages\": {}}")), "no lockfile");
    for (const std::size_t length : {200U, 900U, 1500U}) {
        EXPECT_EQ(told(bunLock(sample.substr(0, length))), "no lockfile");
    }
}

TEST(BunLock, FindsPackagesWhereTheKeysOrTheStorePutThem) {
    const auto lockfile = bunLock(sample).value();
    const auto foldersIn = [&](const TemporaryFolder& project) {
        std::string found;
        for (const auto& folder : bunFolders(lockfile, project.path())) {
            found += folder ? folder->lexically_relative(project.path()).string() + "\n" : "";
        }
        return found;
    };
    const TemporaryFolder tree{{"node_modules/alias/package.json", "{}"},
                               {"node_modules/dir/package.json", "{}"},
                               {"packages/one/node_modules/b/package.json", "{}"},
                               {"node_modules/tool/node_modules/@s/deep/node_modules/b/package.json", "{}"}};
    EXPECT_EQ(
        foldersIn(tree),
        "node_modules/alias\nnode_modules/tool\npackages/one/node_modules/b\n"
        "node_modules/tool/node_modules/@s/deep\nnode_modules/tool/node_modules/@s/deep/node_modules/b\n");
    const TemporaryFolder isolated{
        {"node_modules/.bun/a@1.10.0/node_modules/a/package.json", "{}"},
        {"node_modules/.bun/@s+real@3.0.0+0123456789abcdef/node_modules/@s/real/package.json", "{}"},
        {"node_modules/.bun/tool@git+ssh+host/node_modules/tool/package.json",
         R"({"name": "tool", "version": "7.0.0"})"}};
    EXPECT_EQ(foldersIn(isolated),
              "node_modules/.bun/a@1.10.0/node_modules/a\n"
              "node_modules/.bun/@s+real@3.0.0+0123456789abcdef/node_modules/@s/real\n"
              "node_modules/.bun/tool@git+ssh+host/node_modules/tool\n");
    tree.write("packages/node_modules/d/package.json", "{}");
    const auto hostile = bunLock(R"({"lockfileVersion": 1, "workspaces": {}, "packages": {
                                     "..": ["a@1.0.0"], "b/../..": ["b@1.0.0"], "nul\u0000": ["c@1.0.0"],
                                     "out": ["out@workspace:.."], "out/d": ["d@1.0.0"]}})")
                             .value();
    for (const auto& folder : bunFolders(hostile, tree / "packages/one")) {
        EXPECT_EQ(folder, std::nullopt);
    }
}

}  // namespace
}  // namespace ScanKit::NPMParser
