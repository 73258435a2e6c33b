#include "ScanKit/Licenses/LicenseTexts.h"
#include "ScanKit/Scan/Scanner.h"
#include "ScanKit/Support/FileCache.h"
#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <chrono>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ScanKit {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

/// Longer than the step of a system's clock, and short enough to wait for.
constexpr std::chrono::nanoseconds settlingTime = 20ms;

void settle() {
    std::this_thread::sleep_for(2 * settlingTime);
}

ScanResult scanned(const TemporaryFolder& project, FileCache* cache, const StopToken& stop = {}) {
    return Scanner::scan(project / "project", {.ecosystems = {allEcosystems.begin(), allEcosystems.end()}},
                         {}, {.stop = stop, .cache = cache});
}

constexpr std::string_view lockfile = R"({"packages": {
    "": {"dependencies": {"a": "1", "@s/b": "1", "named": "1", "linked": "1"}},
    "node_modules/a": {"version": "1.0.0", "dependencies": {"deep": "1"}},
    "node_modules/a/node_modules/deep": {"version": "1.0.0", "dev": true},
    "node_modules/@s/b": {"version": "1.0.0", "license": "MIT"},
    "node_modules/deep": {"version": "1.0.0"},
    "node_modules/named": {"version": "1.0.0"},
    "node_modules/linked": {"version": "1.0.0"},
    "node_modules/absent": {"version": "1.0.0", "optional": true}}})";

constexpr std::string_view pnpmLockfile = R"(lockfileVersion: '9.0'
importers:
  .:
    dependencies:
      p: {specifier: ^1.0.0, version: 1.0.0}
packages:
  p@1.0.0: {resolution: {integrity: x}}
snapshots:
  p@1.0.0: {}
)";

const std::string_view mit = standardText("MIT").value();
const std::string_view isc = standardText("ISC").value();

/// Below "project" a package of every ecosystem and of every way of finding it; beside it what nothing in it may lead to.
struct Project : TemporaryFolder {
    Project()
        : TemporaryFolder{
              {"project/package.json", "{}"},
              {"project/package-lock.json", lockfile},
              {"project/node_modules/a/package.json",
               R"({"name": "a", "version": "1.0.0", "license": "MIT"})"},
              {"project/node_modules/a/LICENSE", mit},
              {"project/node_modules/a/node_modules/deep/package.json",
               R"({"name": "deep", "version": "1.0.0"})"},
              {"project/node_modules/@s/b/package.json", R"({"name": "@s/b", "version": "1.0.0"})"},
              {"project/node_modules/@s/b/COPYING", mit},
              {"project/node_modules/deep/package.json", R"({"name": "deep", "version": "1.0.0"})"},
              {"project/node_modules/named/package.json",
               R"({"name": "named", "version": "1.0.0", "license": "SEE LICENSE IN docs/Terms"})"},
              {"project/node_modules/named/docs/Terms", mit},
              {"project/node_modules/linked/package.json", R"({"name": "linked", "version": "1.0.0"})"},
              {"project/node_modules/linked/docs/text", mit},
              {"project/web/package.json", "{}"},
              {"project/web/node_modules/w/package.json",
               R"({"name": "w", "version": "1.0.0", "license": "MIT"})"},
              {"project/pnpm/package.json", "{}"},
              {"project/pnpm/pnpm-lock.yaml", pnpmLockfile},
              {"project/pnpm/node_modules/.pnpm/p@1.0.0/node_modules/p/package.json",
               R"({"name": "p", "version": "1.0.0", "license": "MIT"})"},
              {"project/.venv/pyvenv.cfg", ""},
              {"project/.venv/lib/python3.12/site-packages/six-1.16.dist-info/METADATA",
               "Name: six\nVersion: 1.16\nLicense: MIT\n"},
              {"project/.venv/lib/python3.12/site-packages/six-1.16.dist-info/LICENSE", mit},
              {"project/Package.resolved",
               R"({"pins": [{"identity": "z", "location": "https://example.com/o/z", "state": {"version": "2.0"}}]})"},
              {"project/.build/checkouts/z/LICENSE", mit},
              {"elsewhere/a/package.json", R"({"name": "a", "version": "1.0.0", "license": "ISC"})"},
              {"elsewhere/a/LICENSE", isc},
              {"elsewhere/secret", "The key of the house"},
          } {
        link("project/node_modules/linked/LICENSE", "docs/text");
    }
};

/// In the file that is there, as an editor may write.
void overwrite(const fs::path& file, const std::string& from, const std::string& to) {
    std::string text = contentOf(file);
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << file;
    text.replace(at, from.size(), to);
    const int opened = open(file.c_str(), O_WRONLY | O_TRUNC);
    ASSERT_EQ(write(opened, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    close(opened);
}

void putInPlace(const fs::path& path, const std::function<void()>& put) {
    fs::remove_all(path);
    put();
}

struct Change {
    const char* what;
    std::function<void(const TemporaryFolder&)> make;
    bool isSeen = true;  ///< another scan finds something else
};

const Change changes[]{
    {"nothing", [](const TemporaryFolder&) {}, false},
    {"a package.json of the same size",
     [](const auto& folder) { overwrite(folder / "project/node_modules/a/package.json", "MIT", "ISC"); }},
    {"a license text of the same size, its time put back",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/a/LICENSE";
         const auto time = fs::last_write_time(file);
         overwrite(file, "without restriction", "with a restriction.");
         fs::last_write_time(file, time);
     }},
    {"a file that another was renamed to",
     [](const auto& folder) {
         fs::rename(folder / "elsewhere/a/LICENSE", folder / "project/node_modules/a/LICENSE");
     }},
    {"a folder that another was renamed to",
     [](const auto& folder) {
         fs::remove_all(folder / "project/node_modules/a");
         fs::rename(folder / "elsewhere/a", folder / "project/node_modules/a");
     }},
    {"a touched file",
     [](const auto& folder) {
         fs::last_write_time(folder / "project/node_modules/a/LICENSE", fs::file_time_type::clock::now());
     },
     false},
    {"a license file less",
     [](const auto& folder) { fs::remove(folder / "project/node_modules/a/LICENSE"); }},
    {"a license file more",
     [](const auto& folder) { folder.write("project/node_modules/a/node_modules/deep/LICENSE", isc); }},
    {"a notice more", [](const auto& folder) { folder.write("project/node_modules/a/NOTICE", "Of note"); }},
    {"a package less", [](const auto& folder) { fs::remove_all(folder / "project/node_modules/@s"); }},
    {"an optional package more",
     [](const auto& folder) {
         folder.write("project/node_modules/absent/package.json", R"({"license": "ISC"})");
     }},
    {"nothing installed", [](const auto& folder) { fs::remove_all(folder / "project/node_modules"); }},
    {"a lockfile that says otherwise",
     [](const auto& folder) {
         overwrite(folder / "project/package-lock.json", "@s/b\": \"1", "@s/b\": \"2");
     },
     false},
    {"a lockfile by which another way leads there",
     [](const auto& folder) {
         overwrite(folder / "project/package-lock.json", R"("deep": "1")", R"("@s/b": "1")");
     }},
    {"a lockfile with a conflict",
     [](const auto& folder) { overwrite(folder / "project/package-lock.json", "{", "<<<<<<< HEAD"); }},
    {"a license file that is a link to another package's",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/a/LICENSE";
         putInPlace(file, [&] { fs::create_symlink("../@s/b/COPYING", file); });
     }},
    {"a license file that is a link out of the project",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/a/LICENSE";
         putInPlace(file, [&] { fs::create_symlink(folder / "elsewhere/secret", file); });
     }},
    {"a link to a license file that now leads out",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/linked/docs/text";
         putInPlace(file, [&] { fs::create_symlink(folder / "elsewhere/secret", file); });
     }},
    {"another text behind a link",
     [](const auto& folder) { folder.write("project/node_modules/linked/docs/text", isc); }},
    {"a FIFO in place of a license file",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/a/LICENSE";
         putInPlace(file, [&] { mkfifo(file.c_str(), 0600); });
     }},
    {"a FIFO in place of a package.json",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/@s/b/package.json";
         putInPlace(file, [&] { mkfifo(file.c_str(), 0600); });
     }},
    {"a package.json that is a link, and then what it leads to",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/a/package.json";
         putInPlace(file, [&] { fs::create_symlink(folder / "elsewhere/a/package.json", file); });
     }},
    {"a package folder that is a link to another",
     [](const auto& folder) {
         const fs::path package = folder / "project/node_modules/a";
         putInPlace(package, [&] { fs::create_symlink(folder / "elsewhere/a", package); });
     }},
    {"a folder of packages that is a link to another",
     [](const auto& folder) {
         const fs::path modules = folder / "project/node_modules";
         putInPlace(modules, [&] { fs::create_symlink(folder / "elsewhere", modules); });
     }},
    {"another text in a file that the metadata names",
     [](const auto& folder) {
         folder.write("project/node_modules/named/docs/Terms", "No rights are granted.");
     }},
    {"such a file less",
     [](const auto& folder) { fs::remove(folder / "project/node_modules/named/docs/Terms"); }},
    {"such a file that is a link out of the project",
     [](const auto& folder) {
         const fs::path file = folder / "project/node_modules/named/docs/Terms";
         putInPlace(file, [&] { fs::create_symlink(folder / "elsewhere/secret", file); });
     }},
    {"a folder on the way to such a file that is a link",
     [](const auto& folder) {
         const fs::path docs = folder / "project/node_modules/named/docs";
         fs::rename(docs, folder / "elsewhere/docs");
         fs::create_symlink(folder / "elsewhere/docs", docs);
     }},
    {"a package without a lockfile",
     [](const auto& folder) { overwrite(folder / "project/web/node_modules/w/package.json", "MIT", "ISC"); }},
    {"a nested package more",
     [](const auto& folder) {
         folder.write("project/web/node_modules/w/node_modules/v/package.json", R"({"version": "1"})");
     }},
    {"a package in a store",
     [](const auto& folder) {
         overwrite(folder / "project/pnpm/node_modules/.pnpm/p@1.0.0/node_modules/p/package.json", "MIT",
                   "ISC");
     }},
    {"a pnpm lockfile that says otherwise",
     [](const auto& folder) {
         overwrite(folder / "project/pnpm/pnpm-lock.yaml", "dependencies", "devDependencies");
     }},
    {"the metadata of a Python package",
     [](const auto& folder) {
         overwrite(folder / "project/.venv/lib/python3.12/site-packages/six-1.16.dist-info/METADATA", "MIT",
                   "ISC");
     }},
    {"the license text of a Python package",
     [](const auto& folder) {
         folder.write("project/.venv/lib/python3.12/site-packages/six-1.16.dist-info/LICENSE", "Ask us.");
     }},
    {"the license text of a Swift package",
     [](const auto& folder) { folder.write("project/.build/checkouts/z/LICENSE", "Ask us."); }},
};

/// Whatever happened to a project since, what is known of it from an earlier scan leads to what reading all of it does.
TEST(Rescan, FindsWhatAFirstScanFinds) {
    const EnvironmentVariable date("SOURCE_DATE_EPOCH", "1767621802");
    for (const Change& change : changes) {
        SCOPED_TRACE(change.what);
        const Project folder;
        settle();
        FileCache cache(settlingTime);
        const ScanResult before = scanned(folder, &cache);
        EXPECT_EQ(before, scanned(folder, nullptr));
        const std::size_t made = cache.statistics().made;
        EXPECT_EQ(scanned(folder, &cache), before);
        EXPECT_GT(cache.statistics().reused, 0U);
        EXPECT_LT(2 * cache.statistics().made, made);
        change.make(folder);
        const ScanResult fresh = scanned(folder, nullptr);
        EXPECT_EQ(fresh != before, change.isSeen);
        // Once with what was known before the change, and once with what was learned of it.
        EXPECT_EQ(scanned(folder, &cache), fresh);
        EXPECT_EQ(scanned(folder, &cache), fresh);
    }
}

TEST(Rescan, TakesNothingFromAScanThatWasEnded) {
    const EnvironmentVariable date("SOURCE_DATE_EPOCH", "1767621802");
    const Project folder;
    settle();
    const ScanResult fresh = scanned(folder, nullptr);
    FileCache cache(settlingTime);
    std::stop_source stop;
    stop.request_stop();
    scanned(folder, &cache, stop.get_token());
    EXPECT_EQ(scanned(folder, &cache), fresh);
    scanned(folder, &cache, stop.get_token());
    EXPECT_EQ(scanned(folder, &cache), fresh);
    EXPECT_GT(cache.statistics().reused, cache.statistics().made) << "the ended one dropped nothing either";
}

TEST(Rescan, SharesItsCacheWithScansAtTheSameTime) {
    const EnvironmentVariable date("SOURCE_DATE_EPOCH", "1767621802");
    const Project folder;
    settle();
    const ScanResult fresh = scanned(folder, nullptr);
    FileCache cache(settlingTime);
    for (int round = 0; round < 4; ++round) {
        ScanResult other;
        std::jthread thread([&] { other = scanned(folder, &cache); });
        EXPECT_EQ(scanned(folder, &cache), fresh);
        thread.join();
        EXPECT_EQ(other, fresh);
    }
}

}  // namespace
}  // namespace ScanKit
