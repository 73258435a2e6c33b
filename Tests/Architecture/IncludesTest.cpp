#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using Layers = std::set<std::string>;

/// Each folder and what its files may include beside their own folder. A linker cannot see a header that is all
/// tables, so this looks at the include lines themselves.
const std::map<std::string, Layers> mayInclude{
    {"ScanKit/Support", {}},
    {"ScanKit/Model", {"ScanKit/Support"}},
    {"ScanKit/Licenses", {}},
    {"ScanKit/LicenseFiles", {"ScanKit/Model", "ScanKit/Support"}},
    {"ScanKit/Readers", {"ScanKit/Model", "ScanKit/Support", "ScanKit/LicenseFiles"}},
    {"ScanKit/Identification",
     {"ScanKit/Model", "ScanKit/Support", "ScanKit/LicenseFiles", "ScanKit/Licenses"}},
    {"ScanKit/Scan",
     {"ScanKit/Model", "ScanKit/Support", "ScanKit/LicenseFiles", "ScanKit/Readers",
      "ScanKit/Identification"}},
    {"ScanKit/Reports", {"ScanKit/Model", "ScanKit/Support", "ScanKit/Identification"}},
    {"QuorvaneCLI", {"ScanKit"}},
    {"MenuKit", {}},
    {"QuorvaneApp", {"ScanKit", "MenuKit"}},
};

/// Libraries whose types and headers stay in one place.
const std::map<std::string, std::string> homes{
    {"unicode/", "ScanKit/Support"}, {"simdjson", "ScanKit/Support"}, {"oneapi/", "ScanKit/Support"},
    {"tbb/", "ScanKit/Support"},     {"pango/", "ScanKit/Reports"},   {"cairo", "ScanKit/Reports"},
    {"CLI/", "QuorvaneCLI"},
};

const std::filesystem::path root = QUORVANE_SOURCE_DIR;

/// The folder of the table that a path lies in; empty for a path of no folder there.
std::string layerOf(const std::string& path) {
    std::string longest;
    for (const auto& [layer, allowed] : mayInclude) {
        if (path.starts_with(layer + "/") && layer.size() > longest.size()) {
            longest = layer;
        }
    }
    return longest;
}

bool isAllowed(const std::string& from, const std::string& included) {
    const std::string layer = layerOf(from);
    if (layerOf(included) == layer) {
        return true;
    }
    for (const std::string& allowed : mayInclude.at(layer)) {
        if (included.starts_with(allowed + "/")) {
            return true;
        }
    }
    return false;
}

void checkIncludes(const std::filesystem::path& file, std::size_t& checked) {
    static const std::regex includeLine(R"re(^\s*#\s*(?:include|import)\s*([<"])([^">]+)[">])re");
    const std::string path = std::filesystem::relative(file, root).generic_string();
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        std::smatch match;
        if (!std::regex_search(line, match, includeLine)) {
            continue;
        }
        const std::string included = match[2];
        ++checked;
        if (match[1] == "\"" && included.find('/') != std::string::npos) {
            EXPECT_TRUE(isAllowed(path, included)) << path << " must not include " << included;
        }
        if (path.starts_with("ScanKit/")) {
            EXPECT_FALSE(included.starts_with("Q") && match[1] == "<")
                << path << " must not know Qt: " << included;
        }
        for (const auto& [library, home] : homes) {
            if (included.starts_with(library)) {
                EXPECT_TRUE(path.starts_with(home) && !path.ends_with(".h"))
                    << path << " must not show " << included;
            }
        }
    }
}

TEST(Includes, FollowTheLayers) {
    std::size_t checked = 0;
    for (const auto& [layer, allowed] : mayInclude) {
        if (!std::filesystem::exists(root / layer)) {
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / layer)) {
            const std::string extension = entry.path().extension();
            if (extension == ".h" || extension == ".cpp" || extension == ".mm") {
                checkIncludes(entry.path(), checked);
            }
        }
    }
    EXPECT_GT(checked, 300U) << "the include lines were not found";
}

TEST(Includes, AreToldApartByTheRules) {
    EXPECT_TRUE(isAllowed("ScanKit/Scan/Scanner.cpp", "ScanKit/Readers/NPMParser.h"));
    EXPECT_FALSE(isAllowed("ScanKit/Readers/NPMParser.cpp", "ScanKit/Identification/SPDX.h"));
    EXPECT_FALSE(isAllowed("ScanKit/Reports/Exports.cpp", "ScanKit/Scan/Scanner.h"));
    EXPECT_FALSE(isAllowed("MenuKit/CloseGuard.cpp", "QuorvaneApp/AppModel.h"));
    EXPECT_TRUE(isAllowed("QuorvaneCLI/main.cpp", "ScanKit/Scan/Scanner.h"));
}

}  // namespace
