#include "ScanKit/Readers/Python/LockedPackages.h"
#include "ScanKit/Readers/Python/Marker.h"
#include "ScanKit/Readers/Python/PdmLock.h"
#include "ScanKit/Readers/Python/PipfileLock.h"
#include "ScanKit/Readers/Python/PoetryLock.h"
#include "ScanKit/Readers/Python/PyLock.h"
#include "ScanKit/Readers/Python/UvLock.h"

#include <gmock/gmock.h>

#include <functional>

namespace ScanKit::PythonParser {
namespace {

using testing::ElementsAre;

/// The entries, one a line: key, role (s ships, d development, capital when it may be missing, - reached by nobody), "own" or
/// "unreadable", and what it needs, with "?" behind what may be missing.
std::string told(const std::optional<Lockfile>& lockfile) {
    if (!lockfile) {
        return "absent";
    }
    const std::vector<LockedRole> roles = lockedRoles(*lockfile);
    std::string text = "\n";
    for (std::size_t i = 0; i < roles.size(); ++i) {
        const LockedEntry& entry = lockfile->entries[i];
        const char role = !roles[i].isReached ? '-' : roles[i].isDev ? 'd' : 's';
        text += entry.key + " " + (roles[i].isOptional ? static_cast<char>(role - 'a' + 'A') : role);
        text += entry.isOwn ? " own" : "";
        text += entry.isUnreadable ? " unreadable" : "";
        for (const std::size_t need : entry.needs) {
            text += " " + lockfile->entries[need].key;
        }
        for (const std::size_t need : entry.needsIfPresent) {
            text += " " + lockfile->entries[need].key + "?";
        }
        text += "\n";
    }
    return text;
}

/// Entries of a TOML lockfile, one a part between "|": "name version", then lines of their own.
std::string packages(std::string_view table, const std::vector<std::string>& list) {
    std::string text;
    for (const std::string& entry : list) {
        const std::size_t blank = entry.find(' ');
        const std::size_t end = entry.find('\n');
        text += "[[" + std::string(table) + "]]\nname = \"" + entry.substr(0, blank) + "\"\nversion = \"" +
                entry.substr(blank + 1, end - blank - 1) + "\"\n";
        text += end == std::string::npos ? "" : entry.substr(end + 1) + "\n";
    }
    return text;
}

const std::string poetryEnd = "[metadata]\nlock-version = \"2.0\"\ncontent-hash = \"0\"\n";

/// A project that ships a (with an extra) and, under an extra of its own, w; develops with t; documents with D.ocs.
const std::string poetryProject = R"([tool.poetry.dependencies]
python = "^3.11"
A = {version = "*", extras = ["Fast"]}
w = {version = "*", optional = true}
[tool.poetry.dev-dependencies]
t = "*"
[tool.poetry.group.docs.dependencies]
"D.ocs" = [{version = "1", python = "<3.9"}, {version = "2", python = ">=3.9"}]
)";

/// The same project's packages, with `marks` of the format's version for what ships and for what does not.
std::string poetryText(const std::string& main, const std::string& dev) {
    return packages(
               "package",
               {"a 1\n" + main + "\n[package.dependencies]\nb = \">=1\"\n" +
                    "c = {version = \"*\", optional = true}\nwin = {version = \"*\", markers = \"x\"}\n" +
                    "[package.extras]\nfast = [\"c (>=1)\"]",
                "b 1\n" + main, "c 1\noptional = true\n" + main, "d-ocs 1\n" + dev,
                "d-ocs 2\n" + dev + "\n[package.dependencies]\nb = \"*\"",
                "t 1\n" + dev + "\n[package.dependencies]\nu = \"1.0\"", "u 1.0\n" + dev, "u 2.0\n" + dev,
                "w 1\noptional = true\n" + main + "\n[package.dependencies]\nb = \"*\"", "win 1\n" + main}) +
           poetryEnd;
}

constexpr const char* poetryTold = R"(
a==1 s b==1 c==1 win==1?
b==1 s
c==1 s
d-ocs==1 d
d-ocs==2 d b==1
t==1 d u==1.0
u==1.0 d
u==2.0 -
w==1 S b==1
win==1 S
)";

TEST(PoetryLock, FollowsTheGroupsOfTheProjectWhereTheFileHasNone) {
    EXPECT_EQ(told(poetryLock(poetryText("", ""), poetryProject)), poetryTold);
    const std::string standard = R"~([project]
name = "own"
dependencies = ["a[fast] (>=1,<2)"]
[project.optional-dependencies]
all = ["w", "own[fast]"]
[dependency-groups]
test = ["t; python_version > '3'", {include-group = "docs"}]
docs = ["D_ocs"]
[tool.poetry.dependencies]
python = "*"
w = {source = "private"}
)~";
    EXPECT_EQ(told(poetryLock(poetryText("", ""), standard)), poetryTold);
    for (const char* pyproject : {"[tool.black]", "<<<<<<<", "[project]\ndynamic = ['dependencies']"}) {
        const std::optional<Lockfile> lockfile = poetryLock(poetryText("", ""), pyproject);
        EXPECT_FALSE(lockfile.value().knowsWays) << pyproject;
        EXPECT_EQ(told(lockfile),
                  "\na==1 s\nb==1 s\nc==1 S\nd-ocs==1 s\nd-ocs==2 s\nt==1 s\nu==1.0 s\nu==2.0 s\n"
                  "w==1 S\nwin==1 s\n");
    }
}

TEST(PoetryLock, TakesTheFilesOwnWordOfWhatShips) {
    std::string marked = poetryTold;
    marked.replace(marked.find("u==2.0 -"), 8, "u==2.0 d");
    for (const auto& [main, dev] : {std::pair("category = \"main\"", "category = \"dev\""),
                                    std::pair("groups = [\"main\", \"dev\"]", "groups = [\"dev\"]")}) {
        EXPECT_EQ(told(poetryLock(poetryText(main, dev), poetryProject)), marked) << main;
        EXPECT_EQ(
            told(poetryLock(poetryText(main, dev), {})),
            "\na==1 s\nb==1 s\nc==1 S\nd-ocs==1 d\nd-ocs==2 d\nt==1 d\nu==1.0 d\nu==2.0 d\nw==1 S\nwin==1 s\n");
    }
    const std::string stale = "[tool.poetry.dependencies]\nt = \"*\"\n";
    EXPECT_EQ(
        told(poetryLock(packages("package", {"a 1\ngroups = [\"main\"]\n[package.dependencies]\nt = \"1\"",
                                             "t 1\ngroups = [\"dev\"]"}) +
                            poetryEnd,
                        stale)),
        "\na==1 s\nt==1 d\n");
}

TEST(PoetryLock, KnowsWhereAPackageComesFrom) {
    const auto lockfile =
        poetryLock(packages("package", {"a 1\n[package.source]\ntype = \"git\"\nurl = \"https://host/a.git\"",
                                        "b 1\n[package.source]\ntype = \"legacy\"\nurl = \"https://index\"",
                                        "c 1\n[package.source]\ntype = \"directory\"\nurl = \"../c\"",
                                        "d 1\n[package.source]\ntype = \"file\"\nurl = \"d.whl\""}) +
                       poetryEnd,
                   {});
    EXPECT_EQ(told(lockfile), "\na==1 s\nb==1 s\nc==1 s own\nd==1 s own\n");
    EXPECT_EQ(lockfile->entries[0].source, "https://host/a.git");
    EXPECT_EQ(lockfile->entries[1].source, std::nullopt);
}

const std::string registry = "source = { registry = \"https://index/simple\" }\n";

TEST(UvLock, StartsFromTheProjectAndTheMembersOfItsWorkspace) {
    const std::string text =
        "version = 1\nrevision = 3\n[manifest]\nmembers = [\"app\", \"Lib.x\"]\n[manifest.dependency-groups]\n"
        "lint = [{ name = \"r\" }]\n" +
        packages(
            "package",
            {"app 0.1\nsource = { virtual = \".\" }\ndependencies = [{ name = \"lib-x\" }, { name = \"m\", extra = "
             "[\"py\"] }, { name = \"w\", marker = \"sys_platform == 'win32'\" }]\n"
             "[package.dev-dependencies]\ndev = [{ name = \"t\" }, { name = \"n\", extra = [\"fast\"] }]",
             "lib-x 0.2\nsource = { editable = \"libs/x\" }\ndependencies = [{ name = \"n\", version = \"1\", marker = "
             "\"python_version < '3.11'\" }, { name = \"n\", version = \"2\", marker = \"python_version >= '3.11'\" }]\n"
             "[package.optional-dependencies]\nplot = [{ name = \"p\" }]",
             "tool 0.3\nsource = { directory = \"tool\" }\ndependencies = [{ name = \"p\" }]",
             "m 1\n" + registry + "[package.optional-dependencies]\npy = [{ name = \"q\" }]",
             "n 1\n" + registry,
             "n 2\n" + registry + "[package.optional-dependencies]\nfast = [{ name = \"f\" }]",
             "f 1\n" + registry, "p 1\n" + registry, "q 1\nsource = { git = \"https://host/q?rev=1#2\" }",
             "r 1\n" + registry, "t 1\n" + registry + "dependencies = [{ name = \"tool\" }]",
             "w 1\n" + registry});
    const std::optional<Lockfile> lockfile = uvLock(text);
    EXPECT_EQ(told(lockfile), R"(
app==0.1 - own lib-x==0.2 m==1 w==1?
lib-x==0.2 s own n==1 n==2
tool==0.3 d own p==1
m==1 s q==1
n==1 s
n==2 s
f==1 d
p==1 s
q==1 s
r==1 d
t==1 d tool==0.3
w==1 S
)");
    EXPECT_EQ(lockfile->entries[8].source, "https://host/q?rev=1#2");
    EXPECT_THAT(LockedWays(*lockfile).to(8), ElementsAre(3, 8)) << "by way of the package whose extra it is";
    EXPECT_THAT(LockedWays(*lockfile).to(6), ElementsAre(6))
        << "not by way of a package that ships without the extra";
}

TEST(UvLock, ReadsAScriptsRequirements) {
    EXPECT_EQ(told(uvLock("version = 1\n[manifest]\nrequirements = [{ name = \"A\", specifier = \">1\" }]\n" +
                          packages("package", {"a 2\n" + registry, "b 1\n" + registry}))),
              "\na==2 s\nb==1 -\n");
    EXPECT_EQ(told(uvLock("version = 1\n")), "\n");
}

const std::string pdmStart =
    "[metadata]\ngroups = [\"default\", \"dev\", \"plot\"]\nlock_version = \"4.5.0\"\n";
const std::string pdmProject = R"([project]
dependencies = ["a[fast]>=1", "w; sys_platform == 'win32'", "n==1; python_version<'3'", "n==2; python_version>='3'"]
[project.optional-dependencies]
plot = ["p"]
[tool.pdm.dev-dependencies]
dev = ["t", "-e file:///${PROJECT_ROOT}/x"]
)";

TEST(PdmLock, TakesAPackageWithExtrasForAnEntryOfItsOwn) {
    const std::string text =
        pdmStart +
        packages("package", {"a 1", "a 1\nextras = [\"fast\"]\ndependencies = [\"a==1\", \"f>=2\"]",
                             "a 1\nextras = [\"slow\"]\ndependencies = [\"a==1\", \"s\"]", "f 2", "n 1",
                             "n 2", "p 1\ngit = \"https://host/p.git\"", "s 1",
                             "t 1\ndependencies = [\"a[slow]; python_version>'3'\", \"x\"]", "w 1",
                             "x 1\npath = \"./x\"\neditable = true"});
    const std::optional<Lockfile> lockfile = pdmLock(text, pdmProject);
    EXPECT_EQ(told(lockfile), R"(
a==1 s
a[fast]==1 s a==1 f==2
a[slow]==1 D a==1 s==1
f==2 s
n==1 s
n==2 s
p==1 S
s==1 D
t==1 d x==1 a==1? a[slow]==1?
w==1 S
x==1 d own
)");
    EXPECT_EQ(lockfile->entries[6].source, "https://host/p.git");
    EXPECT_FALSE(pdmLock(text, {}).value().knowsWays);
}

TEST(PdmLock, TakesTheGroupsOfTheFileWhereItNamesThem) {
    const std::string text =
        pdmStart + packages("package", {"a 1\ngroups = [\"default\"]", "p 1\ngroups = [\"plot\", \"dev\"]",
                                        "t 1\ngroups = [\"dev\"]\nmarker = \"x\"",
                                        "w 1\ngroups = [\"default\"]\nmarker = \"x\""});
    EXPECT_EQ(told(pdmLock(text, pdmProject)), "\na==1 s\np==1 S\nt==1 d\nw==1 S\n");
    EXPECT_EQ(told(pdmLock(text, {})), "\na==1 s\np==1 d\nt==1 d\nw==1 S\n")
        << "only \"default\" is known to ship";
}

TEST(PipfileLock, ReadsBothSectionsAndShipsWhatStandsInBoth) {
    const std::optional<Lockfile> lockfile = pipfileLock(
        "\xEF\xBB\xBF"
        R"({
    "_meta": {"hash": {}}, "default": {
        "a": {"version": "==1.0", "markers": "python_version >= '3.8'"}, "B.x": {"git": "https://host/b.git", "ref": "1"},
        "c": {"path": ".", "editable": true}, "h": {"git": "git@host:o/h.git"}, "i": {"git": "../i"}, "d": {"file": "https://host/d.whl"}, "e": {"file": "file:///e.whl"},
        "w": {"version": "==1", "markers": "sys_platform == 'win32'"}, "f": {"version": 1}, "g": "*"},
    "develop": {"b-x": {"version": "==2"}, "t": {"version": "==3"}}, "docs": {"s": {"version": "==4"}}})");
    EXPECT_EQ(told(lockfile), R"(
default/a s
default/B.x s
default/c s own
default/h s
default/i s own
default/d s
default/e s own
default/w S
default/f s unreadable
default/g s unreadable
develop/b-x s
develop/t d
docs/s s
)");
    EXPECT_FALSE(lockfile->knowsWays);
    EXPECT_EQ(lockfile->entries[0].version, "1.0");
    EXPECT_EQ(lockfile->entries[1].source, "https://host/b.git");
    EXPECT_EQ(lockfile->entries[5].source, "https://host/d.whl");
}

TEST(PyLock, AsksTheMarkersForGroupsAndExtras) {
    const std::string text =
        "lock-version = \"1.0\"\nextras = [\"plot\"]\ndependency-groups = [\"main\", \"dev\"]\ndefault-groups = [\"main\"]\n" +
        packages(
            "packages",
            {"a 1", "b 1\nmarker = \"'main' in dependency_groups\"",
             "c 1\nmarker = \"'dev' in dependency_groups\"", "d 1\nmarker = \"'plot' in extras\"",
             "e 1\nmarker = \"os_name == 'nt' and 'dev' in dependency_groups\"",
             "f 1\nmarker = \"('main' in dependency_groups or 'dev' in dependency_groups) and os_name == 'nt'\"",
             "g 1\nmarker = \"'plot' not in extras\"", "h 1\nmarker = \"((\"",
             "i 1\ndirectory = { path = \".\" }", "j 1\nvcs = { type = \"git\", url = \"https://host/j\" }",
             "k 1\narchive = { path = \"k.zip\" }"});
    const std::optional<Lockfile> lockfile = pyLock(text);
    EXPECT_EQ(told(lockfile),
              "\na==1 s\nb==1 s\nc==1 d\nd==1 S\ne==1 d\nf==1 S\ng==1 s\nh==1 S\ni==1 s own\nj==1 s\n"
              "k==1 s own\n");
    EXPECT_FALSE(lockfile->knowsWays);
    EXPECT_EQ(lockfile->entries[9].source, "https://host/j");
    EXPECT_EQ(told(pyLock("lock-version = \"2.0\"\npackages = []")), "absent");
    EXPECT_EQ(told(pyLock("lock-version = \"1.0\"\npackages = {}")), "absent");
}

TEST(Marker, HoldsAsFarAsIsKnown) {
    const std::tuple<std::string, bool, bool> cases[] = {
        {"\"yes\" in extras", true, false},
        {"\"no\" in extras", false, true},
        {"'no' not in extras and ('yes' in extras)", true, false},
        {"'no' in extras or os_name == \"a in extras\"", true, true},
        {"'no' in extras and os_name == 'nt' or 'yes' in extras", true, false},
        {"'yes' in extras or 'no' in extras and 'no' in extras", true, false},
        {"'yes' in os_name", true, true},
        {"'no' in extras 'no' in extras", true, true},
        {"'no' in extras or", true, true},
        {"('no' in extras", true, true},
        {"'no", true, true},
        {"", true, true},
        {std::string(100'000, '('), true, true},
    };
    for (const auto& [text, mayHold, mayFail] : cases) {
        const auto isChosen = [](std::string_view, std::string_view name) { return name == "yes"; };
        EXPECT_EQ(markerVerdict(text, isChosen), (MarkerVerdict{mayHold, mayFail})) << text.substr(0, 100);
    }
}

TEST(PackageRequest, ReadsTheStandardsNotation) {
    const std::pair<const char*, PackageRequest> cases[] = {
        {"Zope.Interface", {"zope-interface"}},
        {" a [ x , Y_z ] (==1.0) ; ", {"a", {"x", "y-z"}, "1.0"}},
        {"a==1.*;x", {.name = "a", .isConditional = true}},
        {"a ===1", {"a", {}, "1"}},
        {"a>=1,==2", {"a"}},
        {"a==", {"a"}},
        {"a[x @ https://host/a.zip", {"a"}},
    };
    for (const auto& [text, request] : cases) {
        EXPECT_EQ(packageRequest(text), request) << text;
    }
    for (const char* text : {"", "-e .", "./a", "[x]", "==1"}) {
        EXPECT_EQ(packageRequest(text), std::nullopt) << text;
    }
}

using Reader = std::function<std::optional<Lockfile>(std::string_view)>;

/// The readers of the TOML formats, and what stands before their packages.
const std::vector<std::tuple<std::string, std::string, Reader>> readers{
    {"package", poetryEnd, [](std::string_view text) { return poetryLock(text, poetryProject); }},
    {"package", "version = 1\n", uvLock},
    {"package", pdmStart, [](std::string_view text) { return pdmLock(text, pdmProject); }},
    {"packages", "lock-version = \"1.0\"\n", pyLock},
};

TEST(PythonLocks, AccountForEveryEntryAndDropNone) {
    for (const auto& [table, start, read] : readers) {
        const std::string odd =
            start + "[[" + table + "]]\nversion = \"1\"\n[[" + table + "]]\nname = \" \"\n[[" + table +
            "]]\nname = 1\nversion = {}\n[[" + table + "]]\nname = \"a\"\nversion = [1]\n[[" + table +
            "]]\nname = \"A\"\ndependencies = 3\ngroups = {}\nsource = [\"x\"]\nextras = \"x\"\n" +
            packages(table, {"b 1", "b 1"});
        std::string text = told(read(odd));
        std::erase_if(text, [](char c) { return c == 's' || c == '-' || c == 'S'; });
        EXPECT_EQ(text,
                  "\n==1  unreadable\n   unreadable\n1  unreadable\na  unreadable\nA \nb==1 \nb==1 #2 \n")
            << start;
        std::string windows = "\xEF\xBB\xBF";
        for (const char c : odd) {
            windows += c == '\n' ? "\r\n" : std::string(1, c);
        }
        EXPECT_EQ(read(windows), read(odd)) << start;
    }
}

TEST(PythonLocks, AreAbsentWhenTheTextIsNoSuchFile) {
    for (const auto& [table, start, read] : readers) {
        const std::string good = start + packages(table, {"a 1"});
        ASSERT_TRUE(read(good)) << start;
        for (const std::string& bad :
             {std::string(), std::string("{}"), good.substr(0, good.size() - 3), "<<<<<<< HEAD\n" + good,
              "x = 1\nx = 2\n" + good, table + " = \"x\"\n" + start,
              good + "x = " + std::string(50'000, '[')}) {
            EXPECT_FALSE(read(bad)) << start << bad.substr(0, 200);
        }
    }
    for (const char* bad :
         {"", "[]", "{}", R"({"_meta": 1, "default": {}})", R"({"_meta": {}, "default": []})",
          R"({"_meta": {}, "default": {"a": {)", "<<<<<<< HEAD\n{\"_meta\": {}}"}) {
        EXPECT_FALSE(pipfileLock(bad)) << bad;
    }
}

TEST(PythonLocks, RefuseRequestsThatMultiply) {
    std::vector<std::string> list(2000, "a 1\ndependencies = [{ name = \"a\" }]");
    EXPECT_EQ(told(uvLock("version = 1\n" + packages("package", list))), "absent");
    // Extras that ask for each other end.
    const std::string loop =
        "[package.optional-dependencies]\nx = [{ name = \"a\", extra = [\"y\"] }]\n"
        "y = [{ name = \"a\", extra = [\"x\"] }, { name = \"b\" }]";
    EXPECT_EQ(told(uvLock("version = 1\n[manifest]\nrequirements = [{ name = \"a\", extra = [\"x\"] }]\n" +
                          packages("package", {"a 1\n" + loop, "b 1"}))),
              "\na==1 s b==1\nb==1 s\n");
}

}  // namespace
}  // namespace ScanKit::PythonParser
