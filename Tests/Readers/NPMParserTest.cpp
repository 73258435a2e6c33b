#include "ScanKit/Readers/NPM/NPMParser.h"

#include "ScanKit/Readers/NPM/InstalledPackage.h"
#include "ScanKit/Readers/NPM/NodeModules.h"
#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <atomic>

#include <sys/stat.h>

namespace ScanKit::NPMParser {
namespace {

using Names = std::vector<std::string>;
using Paths = std::vector<std::filesystem::path>;

Names identities(const std::vector<RawDependency>& dependencies) {
    Names names;
    for (const RawDependency& dependency : dependencies) {
        names.push_back(dependency.name + "@" + dependency.version);
    }
    return names;
}

/// A project folder in which packages are installed.
const RawDependency notALockfile{.name = "none"};

class NPMProject : public TemporaryFolder {
public:
    /// Installs a package below node_modules, such as "a/node_modules/b", under the last part of that path.
    std::filesystem::path install(const std::string& below, const std::string& version = "1") const {
        const std::size_t name =
            below.rfind("node_modules/") == std::string::npos ? 0 : below.rfind("node_modules/") + 13;
        return describe(below, R"({"name": ")" + below.substr(name) + R"(", "version": ")" + version + "\"}");
    }
    std::filesystem::path describe(const std::string& below, const std::string& manifest) const {
        return write("node_modules/" + below + "/package.json", manifest).parent_path();
    }
    std::vector<RawDependency> walk(const ReadControl& control = {}) const {
        Seen seen;
        std::vector<RawDependency> result;
        NPMParser::walk(path() / "node_modules", 0, seen, result, control);
        return result;
    }
    std::vector<RawDependency> locked(std::string_view lockfile, const ReadControl& control = {}) const {
        return dependencies(lockfile, path(), control).value_or(std::vector{notALockfile});
    }
    Names lockedNames(std::string_view lockfile) const { return identities(locked(lockfile)); }
};

RawDependency package(const std::string& name, const std::string& version) {
    return {.ecosystem = Ecosystem::npm, .name = name, .version = version};
}

TEST(NPMLockfile, ReadsBothShapesInTheOrderOfInstallPaths) {
    const NPMProject project;
    const Names expected{"@s/c@3", "a@1", "b@2"};
    EXPECT_EQ(project.lockedNames(R"({"packages": {
        "": {"name": "root", "version": "9"}, "packages/app": {"version": "9"},
        "node_modules/a": {"version": "1"}, "node_modules/a/node_modules/b": {"version": "2"},
        "node_modules/@s/c": {"version": "3"}}, "dependencies": {"old": {"version": "1"}}})"),
              expected);
    EXPECT_EQ(project.lockedNames(R"({"dependencies": {"no": 1, "@s/c": {"version": "3"},
        "a": {"version": "1", "dependencies": {"b": {"version": "2", "dependencies": 5}}}}})"),
              expected);
    // "packages" that holds anything but objects does not count.
    EXPECT_EQ(project.lockedNames(R"({"packages": {"node_modules/x": {}, "node_modules/y": 1},
        "dependencies": {"a": {}}})"),
              Names{"a@"});
    std::string deep = "{}";
    for (int i = 0; i < 450; ++i) {
        deep = R"({"dependencies": {"a-name-of-some-length": )" + deep + "}}";
    }
    EXPECT_EQ(project.lockedNames(deep), Names{"a-name-of-some-length@"});
    for (const std::string_view text :
         {"", "[]", "\"x\"", R"({"packages": []})", R"({"dependencies": [{}]})"}) {
        EXPECT_EQ(project.locked(text), std::vector{notALockfile}) << text;
    }
    EXPECT_EQ(project.locked(R"({"dependencies": {"a": )" + std::string(5000, '[')),
              std::vector{notALockfile});
    for (const std::string_view empty : {"{}", R"({"packages": {}})", R"({"dependencies": {}})"}) {
        EXPECT_EQ(project.locked(empty), std::vector<RawDependency>{}) << empty;
    }
}

TEST(NPMLockfile, TellsWhatAnEntryStatesButLinksLocalPackagesAndRepeats) {
    RawDependency real = package("real", "1"), b = package("b", ""), twice = package("twice", "1");
    real.source = "https://host/real.tgz";
    real.isDev = b.isDev = true;
    real.declared = twice.declared = "MIT";
    EXPECT_EQ(NPMProject().locked(R"({"packages": {
        "node_modules/alias": {"name": "real", "version": "1", "license": "MIT", "dev": true,
                               "resolved": "https://host/real.tgz"},
        "node_modules/b": {"version": 2, "dev": 1, "devOptional": true, "resolved": "  ", "license": " "},
        "node_modules/c": {"version": "3", "dev": false, "devOptional": false, "name": ""},
        "node_modules/link": {"link": true}, "node_modules/notlink": {"link": "true", "version": "1"},
        "node_modules/f": {"version": "file:../lib"}, "node_modules/l": {"version": "link:../lib"},
        "node_modules/z/node_modules/twice": {"version": "1", "license": "later"},
        "node_modules/o/node_modules/twice": {"version": "1", "license": "MIT", "dev": true}}})"),
              (std::vector{real, b, package("c", "3"), package("notlink", "1"), twice}));
}

TEST(NPMLockfile, LeavesOutAMissingOptionalPackageOnlyWhereOthersAreInstalled) {
    constexpr std::string_view lockfile = R"({"packages": {
        "node_modules/blank": {"version": "1", "license": "0BSD"}, "node_modules/here": {"version": "1", "license": "MIT"},
        "node_modules/optional": {"version": "1", "optional": true},
        "node_modules/gone": {"version": "1", "license": "ISC"}}})";
    const NPMProject project;
    EXPECT_EQ(project.lockedNames(lockfile), (Names{"blank@1", "gone@1", "here@1", "optional@1"}));
    RawDependency blank = package("blank", "1"), gone = package("gone", "1"), here = package("here", "1.1");
    blank.folder = project.describe("blank", R"({"name": "", "version": "", "license": "Zlib"})");
    blank.declared = "Zlib";
    gone.declared = "ISC";
    here.folder = project.describe(
        "here", R"({"version": "1.1", "license": "", "repository": "https://host/o/n.git"})");
    here.source = "https://host/o/n";
    here.declared = "MIT";
    here.licenseFiles = {project.write("node_modules/here/LICENSE", "")};
    here.noticeFiles = {project.write("node_modules/here/NOTICE", "")};
    EXPECT_EQ(project.locked(lockfile), (std::vector{blank, gone, here}));
}

TEST(NPMLockfile, OpensNothingOutsideTheProject) {
    const NPMProject project;
    project.install("a");
    const TemporaryFolder outside{{"node_modules/x/package.json", R"({"license": "private"})"}};
    for (const std::string& key :
         {outside.path().string() + "/node_modules/x",
          "../" + outside.path().filename().string() + "/node_modules/x",
          std::string("node_modules/../node_modules/a"), std::string(R"(node_modules/a\u0000)")}) {
        const auto found = project.locked(R"({"packages": {")" + key + R"(": {"version": "1"}}})");
        ASSERT_EQ(found.size(), 1U) << key;
        EXPECT_EQ(found[0], package(found[0].name, "1")) << key;
    }
}

TEST(NPMWalk, FindsPackagesInTheOrderOfTheTreeSevenLevelsDown) {
    const NPMProject project;
    for (const char* below : {"b", "a", "a/node_modules/z", "a/node_modules/@s/y", "@types/node", ".bin"}) {
        project.install(below);
    }
    project.install("a/node_modules/z/node_modules/b", "2");
    project.install("c/node_modules/z");  // c itself is no package: what is below it is passed over
    project.write("node_modules/.package-lock.json", "{}");
    project.write("node_modules/@types/README", "");
    EXPECT_EQ(identities(project.walk()), (Names{"@types/node@1", "a@1", "@s/y@1", "z@1", "b@2", "b@1"}));

    const NPMProject deep;
    std::string below = "p0";
    for (int level = 1; level < 10; ++level) {
        deep.install(below);
        below += "/node_modules/p" + std::to_string(level);
    }
    EXPECT_EQ(identities(deep.walk()),
              (Names{"p0@1", "p1@1", "p2@1", "p3@1", "p4@1", "p5@1", "p6@1", "p7@1"}));
    Seen seen;
    std::vector<RawDependency> found;
    NPMParser::walk(deep / "node_modules", 8, seen, found);
    EXPECT_EQ(identities(found), Names{});
    visit(deep / "node_modules/p0/", 6, seen, found);
    EXPECT_EQ(identities(found), (Names{"p0@1", "p1@1"}));
}

TEST(NPMWalk, ReadsEachRealFolderOnceAndEndsInALoop) {
    const NPMProject project;
    project.install("a");
    project.install("b");
    // A store beside the packages, as some package managers keep it.
    const TemporaryFolder store{{"x/package.json", R"({"name": "x", "version": "1"})"},
                                {"x/node_modules/y/package.json", R"({"name": "y", "version": "1"})"}};
    const std::pair<const char*, std::filesystem::path> links[]{
        {"a/node_modules", ".."},
        {"b/node_modules/self", ".."},
        {"b/node_modules/@s", "../../../node_modules"},
        {"lost", "gone"},
        {"x", store / "x"},
        {"x-again", store / "x"}};
    for (const auto& [name, target] : links) {
        project.link(std::string("node_modules/") + name, target);
    }
    std::atomic<int> reads = 0;
    const auto found = project.walk({.packageRead = [&](std::string_view) { ++reads; }});
    EXPECT_EQ(identities(found), (Names{"a@1", "b@1", "x@1", "y@1"}));
    EXPECT_EQ(reads, 4);
    EXPECT_EQ(found.back().folder, project / "node_modules/x/node_modules/y");
}

/// A node_modules that is itself a link, full of links: what lies behind each is listed, and read once.
TEST(NPMWalk, ListsEveryLinkOfALinkedFolder) {
    const NPMProject project;
    const std::pair<const char*, const char*> links[]{{"node_modules", "shared"},
                                                      {"shared/one", "../store/one"},
                                                      {"shared/two", "../store/two"},
                                                      {"shared/three", "../store/three"},
                                                      {"shared/@s/three", "../../store/three"},
                                                      {"shared/@s/back", "../own"}};
    for (const auto& [name, target] : links) {
        project.link(name, target);
    }
    for (const char* folder : {"store/one", "store/two", "store/three", "shared/own"}) {
        project.write(std::string(folder) + "/package.json", R"({"version": "1"})");
    }
    Names reads;
    const auto found = project.walk(
        {.threadLimit = 1, .packageRead = [&](std::string_view name) { reads.emplace_back(name); }});
    EXPECT_EQ(identities(found), (Names{"back@1", "three@1", "one@1", "two@1"}));
    EXPECT_EQ(reads, (Names{"back", "three", "one", "two"}));
    EXPECT_EQ(found.at(1).folder, project / "node_modules/@s/three");
}

TEST(NPMWalk, ALongWayOfLinksHidesNothing) {
    // Packages of one workspace that depend on each other in a chain, the last one with a package of its own.
    const NPMProject project;
    Names expected;
    for (int i = 0; i < 10; ++i) {
        const std::string name = "w" + std::to_string(i), next = "w" + std::to_string(i + 1);
        project.install(name);
        project.link("node_modules/" + name + "/node_modules/" + next, "../../" + next);
        expected.push_back(name + "@1");
    }
    project.install("w9/node_modules/x");
    expected.emplace_back("x@1");
    EXPECT_EQ(identities(project.walk()), expected);
}

TEST(NPMWalk, EndsSoonOnceStopped) {
    const NPMProject project;
    project.install("a");
    std::stop_source source;
    source.request_stop();
    const ReadControl stopped{.stop = source.get_token()};
    EXPECT_EQ(identities(project.walk(stopped)), Names{});
    EXPECT_EQ(identities(project.locked(R"({"packages": {"node_modules/a": {}}})", stopped)), Names{});
}

TEST(NPMWalk, PassesOverWhatIsNoPackageDescription) {
    const NPMProject project;
    ASSERT_EQ(mkfifo((project.makeFolder("node_modules/pipe") / "package.json").c_str(), 0600), 0);
    project.makeFolder("node_modules/folder/package.json");
    RawDependency broken = package("broken", ""), list = package("list", ""), deep = package("deep", ""),
                  wrong = package("wrong", ""), marked = package("marked", ""), odd = package("\uFFFD", "");
    broken.folder = project.describe("broken", "{");
    broken.licenseFiles = {project.write("node_modules/broken/LICENSE", "")};
    list.folder = project.describe("list", "[]");
    deep.folder = project.describe("deep", std::string(5000, '[') + std::string(5000, ']'));
    wrong.folder = project.describe(
        "wrong", R"({"name": 1, "version": {}, "license": 7, "licenses": "x", "repository": []})");
    marked.folder = project.describe("marked", "\xEF\xBB\xBF{\"license\": \"MIT\"}");
    marked.declared = "MIT";
    odd.folder = project.describe("\xFF", "{}");
    EXPECT_EQ(project.walk(), (std::vector{broken, deep, list, marked, wrong, odd}));
}

TEST(NPMEnrich, PutsTheFileThatThePackageNamesFirst) {
    const NPMProject project;
    project.write("secret", "");
    const auto folder = project.install("a");
    for (const char* file : {"LICENSE", "LICENSE.txt", "docs/Terms"}) {
        project.write(std::string("node_modules/a/") + file, "");
    }
    project.link("node_modules/a/out", "../../secret");
    const Paths found{folder / "LICENSE", folder / "LICENSE.txt"};
    const std::pair<const char*, Paths> cases[]{
        {"see License in  docs/Terms ", {folder / "docs/Terms", folder / "LICENSE", folder / "LICENSE.txt"}},
        {"SEE LICENSE IN ./LICENSE.txt", {folder / "LICENSE.txt", folder / "LICENSE"}},
        {"SEE LICENSE IN out", found},
        {"SEE LICENSE IN ../../secret", found},
        {"SEE LICENSE IN ", found},
        {"SEE LICENSE IN gone", found},
        {"SEE LICENSE INdocs/Terms", found},
        {"docs/Terms", found},
    };
    for (const auto& [declared, files] : cases) {
        RawDependency dependency{.declared = declared};
        enrich(dependency, installedPackage(folder));
        EXPECT_EQ(dependency.declared, declared);
        EXPECT_EQ(dependency.licenseFiles, files) << declared;
    }
}

TEST(NPMDescription, ReadsLicenseAndRepositoryInEveryForm) {
    using Read = std::optional<std::string> (*)(const JSONValue&);
    struct Case {
        Read read;
        const char* text;
        std::optional<std::string> found;
    };
    const Case cases[]{
        {declaredLicense, R"({"license": "MIT", "licenses": ["ISC"]})", "MIT"},
        {declaredLicense, R"({"license": {"type": "MIT", "url": "x"}})", "MIT"},
        {declaredLicense, R"({"license": {"name": "MIT"}})", {}},
        {declaredLicense, R"({"licenses": [{"type": "MIT"}, {"type": "Apache-2.0"}]})",
         "(MIT OR Apache-2.0)"},
        {declaredLicense, R"({"licenses": [3, {"type": "MIT"}, {"type": 1}, ""]})", "MIT"},
        {declaredLicense, R"({"license": " \t", "licenses": ["MIT", "ISC"]})", "(MIT OR ISC)"},
        {declaredLicense, R"({"licenses": "MIT"})", {}},
        {declaredLicense, R"({"license": ["MIT"]})", {}},
        {declaredLicense, "[]", {}},
        {repositoryLink, R"({"repository": "o/n", "homepage": "h"})", "o/n"},
        {repositoryLink, R"({"repository": {"type": "git", "url": "u"}, "homepage": "h"})", "u"},
        {repositoryLink, R"({"repository": {"url": ""}, "homepage": "h"})", "h"},
        {repositoryLink, R"({"repository": 1, "homepage": "h"})", "h"},
        {repositoryLink, R"({"repository": "git+", "homepage": "h"})", "h"},
        {repositoryLink, R"({"homepage": "git+"})", {}},
        {repositoryLink, R"({"homepage": " "})", {}},
        {repositoryLink, "{}", {}},
    };
    for (const Case& one : cases) {
        JSONReader reader;
        EXPECT_EQ(one.read(reader.read(one.text).value()), one.found) << one.text;
    }
}

TEST(NPMDescription, TurnsEverySpellingOfARepositoryIntoAWebLink) {
    constexpr std::pair<const char*, const char*> cases[]{
        {"owner/name", "https://github.com/owner/name"},
        {"owner/name.git", "https://github.com/owner/name"},
        {"owner/name/", "https://github.com/owner/name/"},
        {"github:owner/name", "https://github.com/owner/name"},
        {"git+github:owner/name", "https://github.com/owner/name"},
        {"a/b/c", "a/b/c"},
        {"name", "name"},
        {"gist:123", "gist:123"},
        {"git+https://host/owner/name.git", "https://host/owner/name"},
        {"git://host/owner/name.git", "https://host/owner/name"},
        {"git+ssh://git@host/owner/name.git", "https://host/owner/name"},
        {"ssh://ada@host/owner/name", "ssh://ada@host/owner/name"},
        {"git@host:owner/name.git", "git@host:owner/name"},
        {"GIT+https://host/x", "GIT+https://host/x"},
    };
    for (const auto& [written, link] : cases) {
        EXPECT_EQ(webLink(written), link) << written;
    }
}

}  // namespace
}  // namespace ScanKit::NPMParser
