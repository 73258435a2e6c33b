#include "ScanKit/Readers/NPM/PnpmLock.h"

#include "ScanKit/Readers/NPM/PnpmModules.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Readers/LockfileText.h"

#include <gmock/gmock.h>

namespace ScanKit::NPMParser {
namespace {

using testing::ElementsAre;

/// The same project in three formats: an alias, peers, a scope, an optional package, a tarball, folders of its own, and a
/// member of the workspace that develops with what the project ships.
constexpr std::string_view format9 = R"(lockfileVersion: '9.0'
settings: {autoInstallPeers: true}
catalogs: {default: {a: {specifier: ^1, version: 1.10.0}}}
importers:
  .:
    dependencies:
      a: {specifier: 'catalog:', version: 1.10.0(@s/peer@2.0.0(x@1.0.0))}
      alias: {specifier: 'npm:@s/real@3', version: '@s/real@3.0.0'}
      dir: {specifier: 'file:./dir', version: file:dir(x@1.0.0)}
      linked: {specifier: 'link:../linked', version: link:../linked}
    optionalDependencies:
      maybe: {specifier: ^1, version: 1.0.0}
    devDependencies:
      tool: {specifier: ^1, version: 1.0.0(patch_hash=abc)}
  packages/one:
    dependencies:
      two: {specifier: 'workspace:*', version: link:../two}
    devDependencies:
      a: {specifier: 'catalog:', version: 1.10.0(@s/peer@2.0.0(x@1.0.0))}
      tar: {specifier: 'https://host.example/tar.tgz', version: https://host.example/tar.tgz}
packages:
  '@s/peer@2.0.0': {resolution: {integrity: sha512-x==}}
  '@s/real@3.0.0': {resolution: {integrity: sha512-x==}}
  a@1.10.0: {resolution: {integrity: sha512-x==}, peerDependencies: {'@s/peer': '*'}}
  dir@file:dir: {resolution: {directory: dir, type: directory}}
  maybe@1.0.0: {resolution: {integrity: sha512-x==}, os: [other]}
  tar@https://host.example/tar.tgz: {resolution: {tarball: https://host.example/tar.tgz}, version: 4.0.0}
  tool@1.0.0: {resolution: {integrity: sha512-x==}}
  x@1.0.0: {resolution: {integrity: sha512-x==}}
snapshots:
  '@s/peer@2.0.0(x@1.0.0)': {dependencies: {x: 1.0.0}}
  '@s/real@3.0.0': {}
  a@1.10.0(@s/peer@2.0.0(x@1.0.0)): {dependencies: {'@s/peer': 2.0.0(x@1.0.0)}, optionalDependencies: {maybe: 1.0.0}}
  dir@file:dir(x@1.0.0): {dependencies: {x: 1.0.0}}
  maybe@1.0.0: {optional: true}
  tar@https://host.example/tar.tgz: {}
  tool@1.0.0(patch_hash=abc): {dependencies: {renamed: tar@https://host.example/tar.tgz}}
  x@1.0.0: {}
)";
constexpr std::string_view format6 = R"(lockfileVersion: '6.0'
importers:
  .:
    dependencies:
      a: {specifier: ^1, version: 1.10.0(@s/peer@2.0.0)(x@1.0.0)}
      alias: {specifier: 'npm:@s/real@3', version: /@s/real@3.0.0}
      dir: {specifier: 'file:./dir', version: file:dir(x@1.0.0)}
      linked: {specifier: 'link:../linked', version: link:../linked}
    optionalDependencies:
      maybe: {specifier: ^1, version: 1.0.0}
    devDependencies:
      tool: {specifier: ^1, version: 1.0.0(patch_hash=abc)}
  packages/one:
    devDependencies:
      a: {specifier: ^1, version: 1.10.0(@s/peer@2.0.0)(x@1.0.0)}
      tar: {specifier: 'https://host.example/tar.tgz', version: '@host.example/tar.tgz'}
packages:
  /@s/peer@2.0.0(x@1.0.0): {dependencies: {x: 1.0.0}}
  /@s/real@3.0.0: {}
  /a@1.10.0(@s/peer@2.0.0)(x@1.0.0):
    dependencies: {'@s/peer': 2.0.0(x@1.0.0)}
    optionalDependencies: {maybe: 1.0.0}
  file:dir(x@1.0.0): {resolution: {directory: dir, type: directory}, name: dir, dependencies: {x: 1.0.0}}
  /maybe@1.0.0: {optional: true}
  '@host.example/tar.tgz': {resolution: {tarball: https://host.example/tar.tgz}, name: tar, version: 4.0.0}
  /tool@1.0.0(patch_hash=abc): {dependencies: {renamed: '@host.example/tar.tgz'}, dev: true}
  /x@1.0.0: {}
)";
constexpr std::string_view format5 = R"(lockfileVersion: 5.4
importers:
  .:
    specifiers: {a: ^1}
    dependencies: {a: 1.10.0_abcdef, alias: /@s/real/3.0.0, dir: file:dir_x@1.0.0, linked: link:../linked}
    optionalDependencies: {maybe: 1.0.0}
    devDependencies: {tool: 1.0.0_hash}
  packages/one:
    specifiers: {a: ^1}
    devDependencies: {a: 1.10.0_abcdef, tar: '@host.example/tar.tgz'}
packages:
  /@s/peer/2.0.0_x@1.0.0: {dependencies: {x: 1.0.0}}
  /@s/real/3.0.0: {}
  /a/1.10.0_abcdef: {dependencies: {'@s/peer': 2.0.0_x@1.0.0}, optionalDependencies: {maybe: 1.0.0}}
  file:dir_x@1.0.0: {resolution: {directory: dir, type: directory}, name: dir, dependencies: {x: 1.0.0}}
  /maybe/1.0.0: {optional: true}
  '@host.example/tar.tgz': {resolution: {tarball: https://host.example/tar.tgz}, name: tar, version: 4.0.0}
  /tool/1.0.0_hash: {dependencies: {renamed: '@host.example/tar.tgz'}, dev: true}
  /x/1.0.0: {}
)";

TEST(PnpmLock, SaysTheSameInEveryFormat) {
    for (const std::string_view text : {format9, format6, format5}) {
        const auto lockfile = pnpmLock(text);
        EXPECT_EQ(told(lockfile),
                  "shipped @s/peer@2.0.0 x@1.0.0\n"
                  "shipped @s/real@3.0.0\n"
                  "shipped a@1.10.0 @s/peer@2.0.0 ?maybe@1.0.0\n"
                  "own dir@ x@1.0.0\n"
                  "optional maybe@1.0.0\n"
                  "development tar@4.0.0\n"
                  "development tool@1.0.0 tar@4.0.0\n"
                  "shipped x@1.0.0\n");
        ASSERT_TRUE(lockfile);
        EXPECT_EQ(lockfile->entries[5].source, "https://host.example/tar.tgz");
        EXPECT_THAT(lockfile->members, ElementsAre("packages/one"));
    }
    std::string lineEnds = "\xEF\xBB\xBF";
    for (const char c : format9) {
        lineEnds += c == '\n' ? "\r\n" : std::string(1, c);
    }
    EXPECT_EQ(told(pnpmLock(lineEnds)), told(pnpmLock(format9)));
}

TEST(PnpmLock, ReadsKeysOfEveryKind) {
    struct Case {
        std::string_view format, key, told;
    };
    for (const auto& [format, key, expected] : {
             Case{"5.3", "/a/1.0.0-rc.1+b.2_c@1.0.0", "lost a@1.0.0-rc.1+b.2"},
             Case{"5.4", "registry.example/@s/a/1.0.0", "lost @s/a@1.0.0"},
             Case{"5.4", "file:a.tgz", "own @"},
             Case{"6.1", "registry.example/a@1.0.0(b@2.0.0)", "lost a@1.0.0"},
             Case{"6.0", "host.example/o/a/0123", "unreadable @"},
             Case{"9.0", "a@1.0.0(b@file:x(y))(c@2.0.0)", "lost a@1.0.0"},
             Case{"9.0", "a@file:../x(y)z", "own a@"},
             Case{"9.0", "a@git+ssh://git@host.example/o/a#0123", "lost a@"},
             Case{"9.0", "'@s'", "unreadable @"},
             Case{"9.0", "a@", "unreadable @"},
             Case{"9.0", "''", "unreadable @"},
             Case{"5.4", "/", "unreadable @"},
             Case{"6.0", "/@s/a", "unreadable @"},
         }) {
        const std::string table = (format == "9.0" ? "packages: {}\nsnapshots:\n  " : "packages:\n  ") +
                                  std::string(key) + ": {}\n";
        EXPECT_EQ(told(pnpmLock("lockfileVersion: " + std::string(format) + "\nimporters: {}\n" + table)),
                  std::string(expected) + "\n")
            << key;
    }
}

TEST(PnpmLock, LosesNoEntry) {
    EXPECT_EQ(
        told(pnpmLock(
            "lockfileVersion: '6.0'\n"
            "dependencies: {a: {version: 1.0.0}, gone: {version: 2.0.0(x@1.0.0)}, own: file:own}\n"
            "packages: {/a@1.0.0: {dependencies: [b]}, /b@1.0.0: 1, /c@1.0.0: {dependencies: {gone: 2}}}")),
        "unreadable a@1.0.0\nunreadable @\nlost c@1.0.0 gone@2\nunreadable gone@2.0.0\nunreadable gone@2\n")
        << "of the wrong type, and asked for but not there";
    EXPECT_EQ(told(pnpmLock("lockfileVersion: '9.0'\nimporters: {}\n"
                            "packages: {a@1.0.0: {}, b@1.0.0: {}}\nsnapshots: {a@1.0.0: x}")),
              "unreadable a@1.0.0\nlost b@1.0.0\n");
    const std::string ofPnpm =
        "---\nlockfileVersion: '9.0'\nimporters: {.: {packageManagerDependencies: {pm: {version: 1.0.0}}}}\n"
        "packages: {pm@1.0.0: {}}\nsnapshots: {pm@1.0.0: {}}\n---\n";
    EXPECT_EQ(pnpmLock(ofPnpm + std::string(format9)), pnpmLock(format9));
    EXPECT_EQ(told(pnpmLock(ofPnpm)), "no lockfile") << "the project's part is missing";
    EXPECT_EQ(told(pnpmLock(std::string(format9) + "---\n" + std::string(format9))), "no lockfile");
    EXPECT_FALSE(pnpmLock("lockfileVersion: 5.4\npackages: {/a/1.0.0: {}}")->knowsWays);
    EXPECT_EQ(told(pnpmLock("lockfileVersion: '9.0'\nimporters: {.: {}}")), "");
}

TEST(PnpmLock, KnowsWhatShipsForTheSakeOfAPeer) {
    constexpr std::string_view text = R"(lockfileVersion: '9.0'
importers: {.: {dependencies: {a: 1.0.0(tool@1.0.0)}, devDependencies: {tool: 1.0.0, needed: 1.0.0}}}
packages:
  a@1.0.0: {peerDependenciesMeta: {tool: {optional: true}, other: {optional: true}}}
  tool@1.0.0: {}
  needed@1.0.0: {}
  other@1.0.0: {}
snapshots:
  a@1.0.0(tool@1.0.0):
    dependencies: {needed: 1.0.0}
    optionalDependencies: {tool: 1.0.0, other: 1.0.0}
  tool@1.0.0: {}
  needed@1.0.0: {}
  other@1.0.0: {}
)";
    const auto isDev = [](std::string_view lock, std::optional<int> pnpm, std::string_view name) {
        const Lockfile lockfile = pnpmLock(lock, pnpm).value();
        const auto entry = std::ranges::find(lockfile.entries, name, &LockedEntry::name);
        return lockedRoles(lockfile)[static_cast<std::size_t>(entry - lockfile.entries.begin())].isDev;
    };
    EXPECT_TRUE(isDev(text, 11, "tool")) << "the project lists it for its development";
    EXPECT_FALSE(isDev(text, 10, "tool"));
    EXPECT_FALSE(isDev(text, {}, "tool")) << "what may ship counts as shipped";
    EXPECT_FALSE(isDev(text, 12, "needed")) << "no optional peer";
    EXPECT_FALSE(isDev(text, 12, "other")) << "nobody asks for it for development";

    // A second member that ships the same package may be the one that brings the peer along.
    const auto isDevBeside = [&](const std::string& member) {
        std::string workspace(text);
        workspace.insert(workspace.find('{') + 1, "b: {" + member + "}, ");
        return isDev(workspace, 12, "tool");
    };
    EXPECT_FALSE(isDevBeside("dependencies: {a: 1.0.0(tool@1.0.0)}"));
    EXPECT_TRUE(isDevBeside("dependencies: {a: 1.0.0(tool@1.0.0)}, devDependencies: {tool: 1.0.0}"));
    EXPECT_TRUE(isDevBeside("devDependencies: {needed: 1.0.0}")) << "ships nothing";
    EXPECT_TRUE(isDevBeside("dependencies: {other: 1.0.0}")) << "ships nothing that may use it";
}

TEST(PnpmLock, RefusesWhatIsNoWholeLockfile) {
    const std::string start = "lockfileVersion: '9.0'\n";
    for (const std::string& text :
         {std::string(), std::string("[]"), std::string("lockfileVersion: 8.0"),
          std::string("lockfileVersion: '10.0'"), std::string("lockfileVersion: [9]"),
          std::string("importers: {}"), start + "importers: [a]", start + "importers: {.: x}",
          start + "packages: x", start + "snapshots:", start + "packages:\n",
          start + "importers: {.: {dependencies: [a]}}", start + "importers: {.: {dependencies: {a: [1]}}}",
          start + "packages: {a@1.0.0: {}}", start + "importers:\n  .: &a\n    dependencies: {}\n  b: *a",
          start + "importers:\n\t.: {}",
          start + "importers:\n<<<<<<< ours\n  .: {}\n=======\n  a: {}\n>>>>>>> theirs\n",
          std::string(format9.substr(0, format9.find("snapshots:"))), std::string(format9.substr(0, 300))}) {
        EXPECT_EQ(told(pnpmLock(text)), "no lockfile") << text;
    }
}

/// A folder with packages, each with a package.json.
class PnpmTree : public TemporaryFolder {
public:
    void install(const std::string& folder, const std::string& name, const std::string& version) const {
        write(folder + "/package.json", R"({"name": ")" + name + R"(", "version": ")" + version + "\"}");
    }
    /// Where each entry is, below this folder.
    std::vector<std::string> folders(const std::optional<Lockfile>& lockfile) const {
        std::vector<std::string> found;
        for (const auto& folder : pnpmFolders(lockfile.value(), path())) {
            found.push_back(folder ? folder->lexically_relative(path()).string() : "");
        }
        return found;
    }
};

TEST(PnpmModules, FindsPackagesInTheStore) {
    const PnpmTree project;
    const std::string store = "node_modules/.pnpm/";
    project.install(store + "@s+peer@2.0.0_x@1.0.0/node_modules/@s/peer", "@s/peer", "2.0.0");
    project.link(store + "@s+peer@2.0.0_x@1.0.0/node_modules/x", "../../x@1.0.0/node_modules/x");
    project.install(store + "@s+real@3.0.0/node_modules/@s/real", "@s/real", "3.0.0");
    project.install(store + "a@1.10.0_cut_0123456789abcdef/node_modules/a", "a", "1.10.0");
    project.install(store + "dir@file+dir/node_modules/dir", "dir", "1.0.0");
    project.install(store + "tar@https+++host.example+tar.tgz/node_modules/tar", "tar", "4.0.0");
    project.install(store + "a-name-cut-short_0123456789abcdef/node_modules/tool", "tool", "1.0.0");
    project.makeFolder(store + "maybe@1.0.0/node_modules");
    project.install(store + "x@1.0.0/node_modules/x", "x", "1.0.0");
    project.install(store + "x@1.0.0/node_modules/x/node_modules/bundled", "bundled", "5.0.0");
    project.install(store + "y@1.0.0_x@1.0.0/node_modules/y", "y", "1.0.0");
    project.install(store + "y@1.0.0_x@2.0.0/node_modules/y", "y", "1.0.0");
    const std::string real = store + "@s+real@3.0.0/node_modules/@s/real";
    project.link("node_modules/alias", project / real);
    EXPECT_THAT(project.folders(pnpmLock(format9)),
                ElementsAre(store + "@s+peer@2.0.0_x@1.0.0/node_modules/@s/peer", real,
                            store + "a@1.10.0_cut_0123456789abcdef/node_modules/a", "", "",
                            store + "tar@https+++host.example+tar.tgz/node_modules/tar",
                            store + "a-name-cut-short_0123456789abcdef/node_modules/tool",
                            store + "x@1.0.0/node_modules/x"));
    // Without the lockfile each package counts once, the project's own folders not at all.
    Seen seen;
    std::vector<RawDependency> walked;
    walkPnpmStore(project / "node_modules", seen, walked);
    std::string names;
    for (const RawDependency& dependency : walked) {
        names += dependency.name + "@" + dependency.version + " ";
    }
    EXPECT_EQ(names,
              "@s/peer@2.0.0 @s/real@3.0.0 tool@1.0.0 a@1.10.0 tar@4.0.0 x@1.0.0 bundled@5.0.0 y@1.0.0 ");
}

TEST(PnpmModules, KnowsThePnpmThatInstalled) {
    struct Case {
        std::string_view state;
        std::optional<int> major;
    };
    for (const auto& [state, major] : {
             Case{"{\n  \"layoutVersion\": 5,\n  \"packageManager\": \"pnpm@12.21.0\",\n}", 12},
             Case{"layoutVersion: 5\npackageManager: pnpm@8.15.9\n", 8},
             Case{"packageManager: other@1\nhoisted: pnpm@9\n", std::nullopt},
             Case{"packageManager: pnpm@next\n", std::nullopt},
             Case{"hoisted: pnpm@9\n", std::nullopt},
         }) {
        const PnpmTree project;
        project.write("node_modules/.modules.yaml", state);
        EXPECT_EQ(installingPnpm(project.path()), major) << state;
    }
    EXPECT_EQ(installingPnpm(PnpmTree().path()), std::nullopt);
}

TEST(PnpmModules, FollowsLinksToPackagesOfTheLockfileAlone) {
    const PnpmTree shared;
    const PnpmTree project;
    shared.install("links/a/node_modules/a", "a", "1.0.0");
    shared.install("links/b/node_modules/@s/b", "@s/b", "2.0.0");
    shared.link("links/a/node_modules/@s/b", "../../../b/node_modules/@s/b");
    shared.install("private/node_modules/other", "other", "1.0.0");
    shared.install("private/node_modules/c", "c", "3.0.0");
    project.link("node_modules/other", shared / "private/node_modules/other");
    project.link("packages/one/node_modules/a", shared / "links/a/node_modules/a");
    project.install("node_modules/d", "d", "4.0.0");
    project.install("node_modules/d/node_modules/e", "e", "5.0.0");
    const auto lockfile = pnpmLock(
        "lockfileVersion: '9.0'\nimporters:\n  ../out: {}\n  packages/one: {dependencies: {a: 1.0.0}}\n"
        "snapshots: {a@1.0.0: {}, '@s/b@2.0.0': {}, c@3.0.0: {}, d@4.0.0: {}, e@5.0.0: {}}");
    const auto folders = pnpmFolders(lockfile.value(), project.path());
    ASSERT_EQ(folders.size(), 5U);
    EXPECT_EQ(folders[0], project / "packages/one/node_modules/a");
    EXPECT_EQ(folders[1], shared / "links/a/node_modules/@s/b");
    EXPECT_EQ(folders[2], std::nullopt) << "beside a package that the lockfile does not name";
    EXPECT_EQ(folders[3], project / "node_modules/d");
    EXPECT_EQ(folders[4], project / "node_modules/d/node_modules/e");
}

}  // namespace
}  // namespace ScanKit::NPMParser
