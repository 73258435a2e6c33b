#include "ScanKit/Readers/NPM/YarnLock.h"

#include <gmock/gmock.h>

namespace ScanKit::NPMParser {
namespace {

using testing::ElementsAre;

/// Each entry in one line: what it is, its role, and whom it needs ("?" before those that may be missing).
std::vector<std::string> rows(const std::optional<Lockfile>& lockfile) {
    if (!lockfile) {
        return {"unreadable file"};
    }
    const std::vector<LockedRole> roles = lockedRoles(*lockfile);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < roles.size(); ++i) {
        const LockedEntry& entry = lockfile->entries[i];
        std::string line = entry.name + "@" + entry.version + " ";
        line += entry.isUnreadable ? "unreadable" : entry.isOwn ? "own" : roles[i].isDev ? "dev" : "ships";
        line += roles[i].isReached ? roles[i].isOptional ? " optional" : "" : " unasked";
        for (const auto& [mark, needs] :
             {std::pair(" ", entry.needs), std::pair(" ?", entry.needsIfPresent)}) {
            for (const std::size_t need : needs) {
                line += mark + lockfile->entries.at(need).name + "@" + lockfile->entries[need].version;
            }
        }
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> rows(std::string_view text, const std::vector<Manifest>& manifests) {
    return rows(yarnLock(text, manifests));
}

Manifest manifest(std::string_view text, std::string below = ".") {
    return readManifest(text, std::move(below)).value_or(Manifest{.name = "unreadable"});
}

constexpr std::string_view classic = R"(# yarn lockfile v1


"@s/a@^1.0.0", "@s/a@>=1.1.0 <2":
  version "1.2.0"
  resolved "https://host/@s/a/-/a-1.2.0.tgz#0123456789012345678901234567890123456789"
  integrity sha512-x
  dependencies:
    b "^2.0.0"
    other-b "npm:b@1.0.0"
  optionalDependencies:
    c "*"

b@^2.0.0:
  version "2.0.0"

c@*:
  version "3.0.0"
  dependencies:
    "@s/a" ">=1.1.0 <2"

"d@git+https://host/d.git":
  version "4.0.0"
  resolved "git+https://host/d.git#abcdef"

"local@file:./local":
  version "0.1.0"
  dependencies:
    e "1"

"linked@link:../linked":
  version "0.0.0"
  uid ""

e@1, e@1.x:
  version "1.0.0"

"other-b@npm:b@1.0.0":
  version "1.0.0"

"@s/aliased@npm:@t/real@^5":
  version "5.0.0"

stale@^7:
  version "7.0.0"
)";

TEST(YarnLock, ReadsVersionOneWithWhatTheManifestsAskFor) {
    const std::vector manifests{
        manifest(
            R"({"name": "app", "dependencies": {"@s/a": "^1.0.0", "local": "file:./local", "member": "1"},
                     "devDependencies": {"e": "1.x", "b": "^2.0.0", "@s/aliased": "npm:@t/real@^5"}})"),
        manifest(R"({"name": "member", "dependencies": {"linked": "link:../linked"},
                     "devDependencies": {"d": "git+https://host/d.git"}})",
                 "packages/member")};
    const std::vector<std::string> expected{"@s/a@1.2.0 ships b@2.0.0 b@1.0.0 ?c@3.0.0",
                                            "b@2.0.0 ships",
                                            "c@3.0.0 ships optional @s/a@1.2.0",
                                            "d@4.0.0 dev",
                                            "local@0.1.0 own e@1.0.0",
                                            "linked@0.0.0 own",
                                            "e@1.0.0 ships",
                                            "b@1.0.0 ships",
                                            "@t/real@5.0.0 dev",
                                            "stale@7.0.0 ships unasked"};
    EXPECT_EQ(rows(classic, manifests), expected);
    std::string windows = "\xEF\xBB\xBF";
    for (const char c : classic) {
        windows += c == '\n' ? "\r\n" : std::string(1, c);
    }
    EXPECT_EQ(rows(windows, manifests), expected);

    const Lockfile lockfile = yarnLock(classic, {}).value();
    EXPECT_FALSE(lockfile.knowsWays) << "without a manifest nobody knows what is for development";
    EXPECT_EQ(lockfile.entries[0].key, "@s/a@^1.0.0, @s/a@>=1.1.0 <2");
    EXPECT_EQ(lockfile.entries[0].source, "https://host/@s/a/-/a-1.2.0.tgz");
    EXPECT_EQ(lockfile.entries[1].source, std::nullopt);
    EXPECT_EQ(lockfile.entries[3].source, "git+https://host/d.git#abcdef");
}

constexpr std::string_view modern = R"(# This file is generated.

__metadata:
  version: 8
  cacheKey: 10c0

"@s/a@npm:^1.0.0, @s/a@npm:~1.2.0":
  version: 1.2.0
  resolution: "@s/a@npm:1.2.0"
  dependencies:
    b: "npm:^2.0.0"
    c: "npm:*"
    tool: "npm:^3.0.0"
  dependenciesMeta:
    c:
      optional: true
  peerDependencies:
    d: "*"
  checksum: 10c0/00
  languageName: node
  linkType: hard

"app@workspace:.":
  version: 0.0.0-use.local
  resolution: "app@workspace:."
  dependencies:
    "@s/a": "npm:^1.0.0"
    local: "file:./local"
    tool: "npm:^3.0.0"
    member: "workspace:^"
    patched: "patch:d@npm%3A4.0.0#./d.patch"
    x: "npm:y@5"
  dependenciesMeta:
    x:
      optional: true
  linkType: soft

"b@npm:^2.0.0":
  version: 2.0.0
  resolution: "b@npm:2.0.0::__archiveUrl=https%3A%2F%2Fhost%2Fb.tgz"

"c@npm:*":
  version: 3.0.0
  resolution: "c@npm:3.0.0"
  conditions: os=darwin

"d@https://host/d.git":
  version: 4.1.0
  resolution: "d@https://host/d.git#commit=abc"

"d@npm:4.0.0":
  version: 4.0.0
  resolution: "d@npm:4.0.0"

"local@file:./local::locator=app%40workspace%3A.":
  version: 0.1.0
  resolution: "local@file:./local#./local::hash=0&locator=app%40workspace%3A."
  dependencies:
    b: ^2.0.0

"member@workspace:^, member@workspace:packages/member":
  version: 0.0.0-use.local
  resolution: "member@workspace:packages/member"
  dependencies:
    "@s/a": "npm:~1.2.0"
    d: "https://host/d.git"
    ported: "portal:../ported"
  linkType: soft

"patched@patch:d@npm%3A4.0.0#./d.patch::locator=app%40workspace%3A.":
  version: 4.0.0
  resolution: "d@patch:d@npm%3A4.0.0#./d.patch::version=4.0.0&hash=1&locator=app%40workspace%3A."

"ported@portal:../ported::locator=member%40workspace%3Apackages%2Fmember":
  version: 0.0.0-use.local
  resolution: "ported@portal:../ported::locator=member%40workspace%3Apackages%2Fmember"
  linkType: soft

"tool@npm:^3.0.0":
  version: 3.0.0
  resolution: "tool@npm:3.0.0"

"tool@patch:tool@npm%3A^3.0.0#optional!builtin<compat/tool>":
  version: 3.0.0
  resolution: "tool@patch:tool@npm%3A3.0.0#optional!builtin<compat/tool>::version=3.0.0&hash=2"

"x@npm:y@5":
  version: 5.0.0
  resolution: "y@npm:5.0.0"
)";

TEST(YarnLock, ReadsLaterVersionsWithTheirWorkspaces) {
    const std::vector manifests{manifest(R"({"dependencies": {"member": "workspace:^", "tool": "^3.0.0"},
                     "optionalDependencies": {"x": "npm:y@5"}, "devDependencies": {"@s/a": "^1.0.0",
                     "local": "file:./local", "tool": "^3.0.0", "patched": "patch:d@npm%3A4.0.0#./d.patch"}})"),
                                manifest(R"({"dependencies": {"d": "https://host/d.git"},
                     "devDependencies": {"@s/a": "~1.2.0"}})",
                                         "packages/member")};
    EXPECT_THAT(
        rows(modern, manifests),
        ElementsAre("@s/a@1.2.0 dev b@2.0.0 tool@3.0.0 tool@3.0.0 ?c@3.0.0",  // the tool and its patch
                    "app@0.0.0-use.local own unasked", "b@2.0.0 dev", "c@3.0.0 dev optional", "d@4.1.0 ships",
                    "d@4.0.0 dev", "local@0.1.0 own b@2.0.0", "member@0.0.0-use.local own",
                    "d@4.0.0 dev d@4.0.0", "ported@0.0.0-use.local own", "tool@3.0.0 ships",
                    "tool@3.0.0 ships tool@3.0.0", "y@5.0.0 ships optional"));
    const Lockfile lockfile = yarnLock(modern, {}).value();
    EXPECT_EQ(lockfile.entries[2].source, "https://host/b.tgz");
    EXPECT_EQ(lockfile.entries[4].source, "https://host/d.git#commit=abc");
    EXPECT_EQ(lockfile.entries[5].source, std::nullopt);
    EXPECT_TRUE(lockfile.development.empty()) << "without a manifest all that the file asks for ships";
    EXPECT_TRUE(lockfile.knowsWays);
}

TEST(YarnLock, FollowsResolutionsToTheVersionThatIsTaken) {
    const auto needsOfA = [](std::string_view resolutions, std::string_view locked) {
        std::string text = "a@1:\n  version \"1\"\n  dependencies:\n    b \"^2\"\n";
        for (const std::string_view pattern :
             {locked.substr(0, locked.find(' ')), locked.substr(locked.find(' ') + 1)}) {
            text += "\"b@" + std::string(pattern) + "\":\n  version \"" + std::string(pattern) + "\"\n";
        }
        return rows(text, {manifest(R"({"dependencies": {"a": "1"}, "resolutions": {)" +
                                    std::string(resolutions) + "}}")})
            .at(0);
    };
    const std::tuple<std::string_view, std::string_view, std::string_view> cases[]{
        {"", "^2 3", "a@1 ships b@^2"},
        {"", "4 5", "a@1 ships"},  // either could be meant
        {R"("b": "3")", "3 4", "a@1 ships b@3"},
        {R"("b": "3")", "^2 npm:3", "a@1 ships b@npm:3"},
        {R"("b": "9")", "^2 3", "a@1 ships b@^2"},
        {R"("**/b": "3")", "^2 3", "a@1 ships b@3"},
        {R"("a/b": "3", "b": "4")", "3 4", "a@1 ships b@3"},
        {R"("c/b": "3")", "^2 3", "a@1 ships b@^2"},
        {R"("b@^2": "3")", "^2 3", "a@1 ships b@3"},
        {R"("b@^1": "3")", "^2 3", "a@1 ships b@^2"},
        {R"("x/a/b": "3")", "^2 3", "a@1 ships b@^2"},
    };
    for (const auto& [resolutions, locked, expected] : cases) {
        EXPECT_EQ(needsOfA(resolutions, locked), expected) << resolutions << " with " << locked;
    }
    const auto only = manifest(R"({"dependencies": {"a": "latest"}, "resolutions": {"@s/x/@s/b@1/2": "3"}})");
    EXPECT_THAT(rows("a@^1:\n  version \"1\"\n", {only}), ElementsAre("a@1 ships"));
    const std::string scoped =
        "\"@s/x@1\":\n  version \"1\"\n  dependencies:\n    \"@s/b\" \"1\"\n"
        "\"@s/b@1\":\n  version \"1\"\n\"@s/b@3\":\n  version \"3\"\n";
    EXPECT_EQ(rows(scoped, {manifest(R"({"resolutions": {"@s/x/@s/b": "3"}})")}).at(0),
              "@s/x@1 ships unasked @s/b@3");
}

TEST(YarnLock, LooksCatalogsUpInTheSettings) {
    std::string text =
        "__metadata:\n  version: 8\n\"app@workspace:.\":\n  resolution: \"app@workspace:.\"\n"
        "  dependencies:\n    a: \"catalog:\"\n    b: \"catalog:old\"\n";
    for (const std::string name : {"a", "b"}) {
        for (const std::string version : {"1", "2"}) {
            text += "\"" + name + "@npm:^" + version + "\":\n  version: " + version + "\n  resolution: \"" +
                    name + "@npm:" + version + "\"\n";
        }
    }
    const std::vector manifests{manifest(R"({"devDependencies": {"a": "catalog:", "b": "catalog:old"}})")};
    const std::string_view settings = "catalog:\n  a: ^2\ncatalogs:\n  old:\n    b: npm:^1\n";
    EXPECT_THAT(
        rows(yarnLock(text, manifests, settings)),
        ElementsAre("app@ own unasked", "a@1 ships unasked", "a@2 dev", "b@1 dev", "b@2 ships unasked"));
    for (const std::string_view bad :
         {"", "catalog: [", "catalog: [a]\ncatalogs:\n  old: b\n", "catalogs: 1"}) {
        EXPECT_EQ(rows(yarnLock(text, manifests, bad)).at(2), "a@2 ships unasked") << bad;
    }
}

TEST(YarnLock, KeepsEntriesThatItCannotUnderstand) {
    EXPECT_THAT(rows("a@1:\n  resolved \"x\"\n\nb@1:\n  version \"1\"\n\nb@1:\n  version \"2\"\n", {}),
                ElementsAre("a@ unreadable unasked", "b@1 ships unasked", "b@2 ships unasked"));
    EXPECT_THAT(
        rows("__metadata:\n  version: 8\na@npm:1: text\nb@npm:1:\n  version: [1]\n  resolution: b@npm:1\n"
             "c@npm:1:\n  version: 1\nd@npm:1:\n  version: 1\n  resolution: d@npm:1\n"
             "  dependencies: [d]\n",
             {}),
        ElementsAre("@ unreadable unasked", "b@ unreadable unasked", "@1 unreadable unasked",
                    "d@1 ships unasked"));
}

TEST(YarnLock, SaysWhatIsAskedForAndStandsNowhere) {
    const std::vector asking{
        manifest(
            R"({"name": "app", "dependencies": {"a": "1", "gone": "^2", "member": "1", "local": "link:x"},
                     "devDependencies": {"gone": "^2"}, "optionalDependencies": {"perhaps": "1"}})"),
        manifest(R"({"name": "member"})", "packages/member")};
    const auto lockfile = yarnLock("a@1:\n  version \"1\"\n  dependencies:\n    cut-off \"1\"\n", asking);
    EXPECT_THAT(rows(lockfile), ElementsAre("a@1 ships cut-off@", "cut-off@ unreadable", "gone@ unreadable"));
    EXPECT_EQ(lockfile->entries[2].key, "gone@^2");
    EXPECT_THAT(lockfile->members, ElementsAre("packages/member"));
    EXPECT_THAT(yarnLock(modern, {}).value().members, ElementsAre("packages/member"));
}

TEST(YarnLock, RefusesWhatIsNotALockfile) {
    const std::vector asking{manifest(R"({"devDependencies": {"a": "1"}})")};
    const std::vector asksMembersOnly{manifest(R"({"name": "app", "dependencies": {"member": "1"}})"),
                                      manifest(R"({"name": "member"})", "member")};
    EXPECT_EQ(rows("# yarn lockfile v1\n", asksMembersOnly), std::vector<std::string>{});
    EXPECT_EQ(rows("", {}), std::vector<std::string>{});
    std::string deep = "__metadata:\n";
    for (std::size_t level = 1; level < 2000; ++level) {
        deep += std::string(level, ' ') + "a:\n";
    }
    for (const std::string& text :
         std::initializer_list<std::string>{"",
                                            "# yarn lockfile v1\n",
                                            "{}",
                                            "a@1",
                                            "a@1:\n  version \"1",
                                            "a@1:\n  version\n",
                                            "a@1: b\n",
                                            "a@1:\n  version \"1\" \"2\"\n",
                                            "a@1:\n version \"1\"\n",
                                            "a@1:\n\tversion \"1\"\n",
                                            "  version \"1\"\n",
                                            "a@1:\n    b \"1\"\n",
                                            "a@1:\n  dependencies:\n    b\n",
                                            "a@1:\n  dependencies:\n    b \"1\"\n      c \"1\"\n",
                                            "a@1:\n  dependencies:\n    b \"1\"\nc@1:\n    d \"1\"\n",
                                            "a@1,:\n  version \"1\"\n",
                                            "\"\":\n  version \"1\"\n",
                                            "\"a\\n@1\":\n  version \"1\"\n",
                                            "a@1:\n  version \"\xFF\"\n",
                                            "<<<<<<< ours\na@1:\n  version \"1\"\n",
                                            "a@1:\n  version \"1\"\n=======\n",
                                            ">>>>>>> theirs:\n",
                                            "a@1:\n<<<<<<< HEAD:\n  version \"1\"\n",
                                            "__metadata:\n  version: 8\n<<<<<<< ours\na: {}\n",
                                            "__metadata: {",
                                            "__metadata:\n  a: &x 1\nb@npm:1: *x\n",
                                            deep}) {
        EXPECT_EQ(rows(text, asking), std::vector<std::string>{"unreadable file"}) << text.substr(0, 60);
    }
}

}  // namespace
}  // namespace ScanKit::NPMParser
