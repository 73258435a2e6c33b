#include "ScanKit/Readers/NPM/Manifest.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace ScanKit::NPMParser {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

TEST(Manifest, TakesWhatHasTheRightType) {
    const Manifest manifest =
        readManifest(R"({"name": "a", "version": 1, "dependencies": {"b": "1", "c": "2", "d": {}},
        "optionalDependencies": {"c": "3"}, "devDependencies": ["e"], "peerDependencies": {"f": "*"},
        "resolutions": {"**/g": "4"}, "workspaces": {"packages": ["x/*", 5]}})",
                     "below")
            .value();
    EXPECT_EQ(manifest, (Manifest{.below = "below",
                                  .name = "a",
                                  .dependencies = {{"b", "1"}},
                                  .optionalDependencies = {{"c", "3"}},
                                  .peerDependencies = {{"f", "*"}},
                                  .resolutions = {{"**/g", "4"}},
                                  .workspaces = {"x/*"}}));
    EXPECT_EQ(readManifest("[]", "."), std::nullopt);
    EXPECT_EQ(readManifest("{", "."), std::nullopt);
}

TEST(Manifest, FindsTheMembersThatPatternsName) {
    const TemporaryFolder project{{"package.json", "{}"},
                                  {"packages/a/package.json", "{}"},
                                  {"packages/b/package.json", "{}"},
                                  {"packages/b/deep/c/package.json", "{}"},
                                  {"packages/none/readme", ""},
                                  {"packages/.hidden/package.json", "{}"},
                                  {"packages/node_modules/x/package.json", "{}"},
                                  {"apps/web/package.json", "{}"}};
    const TemporaryFolder outside{{"package.json", "{}"}};
    project.link("packages/linked", outside.path());
    const std::pair<Names, Names> cases[]{
        {{"packages/*"}, {"packages/a", "packages/b"}},
        {{"./packages/*/", "packages/a"}, {"packages/a", "packages/b"}},
        {{"packages/**"}, {"packages/a", "packages/b", "packages/b/deep/c"}},
        {{"**"}, {"apps/web", "packages/a", "packages/b", "packages/b/deep/c"}},
        {{"**/c", "apps/w?b"}, {"apps/web", "packages/b/deep/c"}},
        {{"!packages/b", "packages/*"}, {"packages/a"}},
        {{"packages/**", "!**/deep/**"}, {"packages/a", "packages/b"}},
        {{"packages/.hidden", "packages/linked", "packages/node_modules/*", "packages/none", "nothing/*", ".",
          ""},
         {}},
        {{"..", "../*", "packages/../apps/*", outside.path().string()}, {}},
    };
    for (const auto& [patterns, expected] : cases) {
        EXPECT_EQ(workspaceFolders(project.path(), patterns), expected) << testing::PrintToString(patterns);
    }
}

TEST(Manifest, ReadsTheProjectBeforeItsMembers) {
    const TemporaryFolder project{{"package.json", R"({"name": "top", "workspaces": ["m/*"]})"},
                                  {"m/b/package.json", R"({"name": "first"})"},
                                  {"m/c/package.json", "{"},
                                  {"m/d/package.json", R"({"name": "last"})"}};
    Names names;
    for (const Manifest& manifest : projectManifests(project.path())) {
        names.push_back(manifest.below + " " + manifest.name);
    }
    EXPECT_THAT(names, ElementsAre(". top", "m/b first", "m/d last"));
    EXPECT_THAT(projectManifests(project / "m"), IsEmpty());
}

}  // namespace
}  // namespace ScanKit::NPMParser
