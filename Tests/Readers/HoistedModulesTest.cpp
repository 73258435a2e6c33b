#include "ScanKit/Readers/NPM/HoistedModules.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace ScanKit::NPMParser {
namespace {

using Names = std::vector<std::string>;

class Project : public TemporaryFolder {
public:
    void install(const std::string& below, const std::string& name, const std::string& version) const {
        write(below + "/package.json", R"({"name": ")" + name + R"(", "version": ")" + version + "\"}");
    }
    /// The folders of packages that are given as "name@version", relative; "-" for those that are not there.
    Names folders(const Names& packages, const ReadControl& control = {}) const {
        Lockfile lockfile;
        for (const std::string& package : packages) {
            const std::size_t at = package.find('@', 1);
            lockfile.entries.push_back({.name = package.substr(0, at), .version = package.substr(at + 1)});
            lockfile.entries.back().isOwn = package.starts_with("own");
        }
        Names found;
        for (const auto& folder : hoistedFolders(lockfile, path(), {path() / "packages/m"}, control)) {
            found.push_back(folder ? folder->lexically_relative(path()).string() : "-");
        }
        return found;
    }
};

TEST(HoistedModules, FindsEachVersionWhereItIsInstalled) {
    const Project project;
    project.install("node_modules/a", "a", "1");
    project.install("node_modules/z/node_modules/a", "a", "2");
    project.install("node_modules/z", "z", "1");
    project.install("node_modules/z/node_modules/a/node_modules/z", "z", "1");  // deeper than the first
    project.install("node_modules/@s/b", "@s/b", "1");
    project.install("packages/m/node_modules/c", "c", "3");
    project.install("node_modules/b-alias", "b", "4");
    project.install("node_modules/renamed", "calls-itself-otherwise", "5");
    project.install("node_modules/.hidden/h", "h", "1");
    project.install("node_modules/own", "own", "1");
    project.write("node_modules/broken/package.json", "{");
    EXPECT_EQ(project.folders({"a@1", "a@2", "z@1", "@s/b@1", "c@3", "b@4", "renamed@5", "a@3", "h@1",
                               "own@1", "broken@", "broken@1"}),
              (Names{"node_modules/a", "node_modules/z/node_modules/a", "node_modules/z", "node_modules/@s/b",
                     "packages/m/node_modules/c", "node_modules/b-alias", "node_modules/renamed", "-", "-",
                     "-", "node_modules/broken", "-"}));
}

TEST(HoistedModules, TakesThePackageBeforeAnAliasOfItsName) {
    const Project project;
    project.install("node_modules/a", "other", "1");  // "a" is an alias for another package
    project.install("node_modules/x", "a", "1");
    EXPECT_EQ(project.folders({"a@1", "other@1"}), (Names{"node_modules/x", "node_modules/a"}));
    project.install("node_modules/y/node_modules/a", "a", "1");
    project.install("node_modules/y", "y", "1");
    EXPECT_EQ(project.folders({"a@1"}), Names{"node_modules/y/node_modules/a"});
}

TEST(HoistedModules, FollowsLinksIntoTheStoreAndNotToMembers) {
    const Project project;
    const Project elsewhere;
    project.install("packages/m", "m", "1");
    project.link("node_modules/m", "../packages/m");
    project.install("packages/m/node_modules/inner", "inner", "1");
    project.install("node_modules/.store/a-npm-1-0123456789/package", "a", "1");
    project.install("node_modules/.store/@s-b-virtual-0123456789/package", "@s/b", "1");
    project.link("node_modules/a", ".store/a-npm-1-0123456789/package");
    project.link("node_modules/loop", "..");
    elsewhere.install("global", "g", "1");
    project.link("node_modules/g", elsewhere / "global");
    project.link("node_modules/@s/dangling", "nowhere");
    EXPECT_EQ(project.folders({"m@1", "inner@1", "a@1", "@s/b@1", "g@1"}),
              (Names{"-", "packages/m/node_modules/inner", "node_modules/a",
                     "node_modules/.store/@s-b-virtual-0123456789/package", "node_modules/g"}));
    EXPECT_EQ(elsewhere.folders({"a@1"}), Names{"-"}) << "nothing is installed there";
}

TEST(HoistedModules, GivesTheSameForAnyNumberOfThreads) {
    const Project project;
    Names packages;
    for (int i = 0; i < 60; ++i) {
        const std::string name = "p" + std::to_string(i % 40);
        const std::string below = i < 40 ? "" : "p" + std::to_string(i - 40) + "/node_modules/";
        project.install("node_modules/" + below + name, name, "1");
        packages.push_back(name + "@1");
    }
    const Names expected = project.folders(packages, {.threadLimit = 1});
    EXPECT_EQ(expected[59], "node_modules/p19");
    EXPECT_EQ(project.folders(packages, {.threadLimit = 8}), expected);
}

}  // namespace
}  // namespace ScanKit::NPMParser
