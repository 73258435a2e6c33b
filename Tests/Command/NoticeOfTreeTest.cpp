#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

namespace fs = std::filesystem;
namespace Text = ScanKit::Text;

constexpr std::size_t mostBytes = 400'000;

/// The texts of one package, read without the library, so that a fault of its search shows.
struct Shipped {
    std::map<std::string, std::string> texts;  ///< by the files' names
    bool hasLicense = false;
};

/// "name version", as the notices write it.
using Packages = std::multimap<std::string, Shipped>;

bool startsWithAny(const std::string& name, std::initializer_list<const char*> beginnings) {
    return std::ranges::any_of(beginnings, [&](const char* one) { return name.starts_with(one); });
}

bool isCode(const std::string& extension) {
    static const std::set<std::string> code{".js", ".cjs", ".mjs", ".ts", ".json", ".h",
                                            ".c",  ".m",   ".d",   ".py", ".pyc",  ".swift"};
    return code.contains(extension) || extension.size() > 9;
}

Shipped shippedBy(const fs::path& folder, const fs::path& named) {
    Shipped shipped;
    for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        const fs::path name = Text::lowercased(file.path().filename().string());
        const std::string stem = name.stem();
        const bool isLicense = file.path().filename() == named || stem.find("licen") != std::string::npos ||
                               startsWithAny(stem, {"copying"});
        const bool isNotice = stem == "notice" || stem == "notices" ||
                              startsWithAny(stem, {"third_party_notices", "thirdpartynotices"});
        if (!file.is_regular_file() || file.is_symlink() || isCode(name.extension()) ||
            !(isLicense || isNotice)) {
            continue;
        }
        std::string text = contentOf(file.path());
        text.resize(std::min(text.size(), mostBytes));
        text.erase(0, text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
        // What is no text, or says nothing, is not reproduced.
        if (!Text::isBlank(text) && text.find('\0') == std::string::npos) {
            shipped.hasLicense = shipped.hasLicense || isLicense;
            shipped.texts[file.path().filename()] = Text::validUtf8(text);
        }
    }
    return shipped;
}

/// The file that "SEE LICENSE IN" points to; empty without such a pointer.
std::string fileNamedBy(const nlohmann::json& manifest) {
    const std::string pointer = "SEE LICENSE IN ";
    const nlohmann::json license = manifest.value("license", nlohmann::json(""));
    const std::string text = license.is_string() ? license.get<std::string>() : "";
    return text.starts_with(pointer) ? text.substr(pointer.size()) : "";
}

/// The packages in this folder of them, and in their own. What else a package holds, such as a test's, is not installed.
void addPackages(const fs::path& modules, Packages& packages) {
    if (!fs::is_directory(modules)) {
        return;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(modules)) {
        if (entry.path().filename().string().starts_with('@')) {
            addPackages(entry.path(), packages);
        } else if (fs::exists(entry.path() / "package.json")) {
            const auto manifest = nlohmann::json::parse(contentOf(entry.path() / "package.json"));
            packages.emplace(
                manifest["name"].get<std::string>() + " " + manifest["version"].get<std::string>(),
                shippedBy(entry.path(), fileNamedBy(manifest)));
            addPackages(entry.path() / "node_modules", packages);
        }
    }
}

/// What the NOTICE says below each package's name; all of it, where a name stands several times.
std::map<std::string, std::string> blocksOf(const std::string& notice) {
    const std::string rule = "\n" + std::string(78, '=') + "\n";
    std::map<std::string, std::string> blocks;
    for (std::size_t begin = notice.find(rule); begin != std::string::npos;) {
        const std::size_t title = begin + rule.size();
        const std::size_t body = notice.find(rule, title - 1);
        const std::size_t next = notice.find(rule, body + 1);
        blocks[notice.substr(title, notice.find('\n', title) - title)] += notice.substr(body, next - body);
        begin = next;
    }
    return blocks;
}

std::string unescaped(std::string html) {
    for (const auto& [escape, character] :
         {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}}) {
        html = Text::replacingAll(html, escape, character);
    }
    return html;
}

/// Holds the notices of a tree against its files; how many of what there were is printed for who measures.
void expectComplete(const fs::path& tree) {
    const TemporaryFolder output;
    const std::string command = "'" QUORVANE_COMMAND
                                "' --quiet --include-dev --ecosystem npm --formats notice,html -o '" +
                                output.path().string() + "' '" + tree.string() + "' >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const auto blocks = blocksOf(contentOf(output / "NOTICE.txt"));
    const std::string page = unescaped(contentOf(output / "NOTICE.html"));
    Packages packages;
    addPackages(tree / "node_modules", packages);
    ASSERT_FALSE(packages.empty());
    std::size_t texts = 0, bytes = 0, without = 0;
    for (const auto& [title, shipped] : packages) {
        const auto block = blocks.find(title);
        if (block == blocks.end()) {
            ADD_FAILURE() << title << " is installed, and not listed";
            continue;
        }
        for (const auto& [name, text] : shipped.texts) {
            EXPECT_TRUE(block->second.find(text) != std::string::npos)
                << name << " of " << title << " in NOTICE.txt";
            EXPECT_TRUE(page.find(text) != std::string::npos) << name << " of " << title << " in NOTICE.html";
            ++texts;
            bytes += text.size();
        }
        const bool isSaid = block->second.find("\n[No license ") != std::string::npos;
        EXPECT_EQ(isSaid, !shipped.hasLicense) << title << " ships " << shipped.texts.size() << " texts";
        without += shipped.hasLicense ? 0 : 1;
    }
    std::cout << tree.filename().string() << ": " << packages.size() << " package folders, " << texts
              << " texts of " << bytes << " bytes in both, " << without << " folders said to have none\n";
}

/// Trees of one's own can be named in the environment, parted by colons.
TEST(NoticeOfTree, HoldsEveryTextOnDiskAndNamesEveryPackageWithout) {
    expectComplete(fs::path(QUORVANE_SAMPLE_PROJECT));
    const char* const given = std::getenv("QUORVANE_TREES");
    for (const std::string_view tree : Text::split(given == nullptr ? "" : given, ":")) {
        if (!tree.empty()) {
            expectComplete(tree);
        }
    }
}

}  // namespace
