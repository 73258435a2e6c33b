#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
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
    {"QuorvaneApp", {"ScanKit", "MenuKit", "QuorvaneApp"}},
    {"QuorvaneApp/Updates", {}},
    {"QuorvaneApp/Platform", {"QuorvaneApp/Updates"}},
    {"QuorvaneApp/Model", {"ScanKit", "QuorvaneApp/Platform"}},
    {"QuorvaneApp/Commands", {"ScanKit", "MenuKit", "QuorvaneApp/Model"}},
    {"QuorvaneApp/Views/Controls", {"ScanKit", "QuorvaneApp/Model"}},
    {"QuorvaneApp/Views/Welcome", {"QuorvaneApp/Model", "QuorvaneApp/Views/Controls"}},
    {"QuorvaneApp/Views/Results",
     {"ScanKit", "QuorvaneApp/Model", "QuorvaneApp/Commands", "QuorvaneApp/Views/Controls"}},
    {"QuorvaneApp/Views/Dialogs",
     {"ScanKit", "QuorvaneApp/Model", "QuorvaneApp/Updates", "QuorvaneApp/Views/Controls"}},
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

struct IncludeLine {
    std::string name;
    bool isOurs = false;  ///< between quotes, by its path from the root
};

/// What a line of code includes, if it does.
std::optional<IncludeLine> includeOf(const std::string& line) {
    const std::size_t hash = line.find_first_not_of(' ');
    const std::size_t open = line.find_first_of("\"<");
    if (hash == std::string::npos || line[hash] != '#' || open == std::string::npos ||
        (line.find("include", hash) > open && line.find("import", hash) > open)) {
        return std::nullopt;
    }
    const bool isQuoted = line[open] == '"';
    const std::string name = line.substr(open + 1, line.find(isQuoted ? '"' : '>', open + 1) - open - 1);
    return IncludeLine{name, isQuoted && name.find('/') != std::string::npos};
}

void checkIncludes(const std::filesystem::path& file, std::size_t& checked) {
    const std::string path = std::filesystem::relative(file, root).generic_string();
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        const std::optional<IncludeLine> include = includeOf(line);
        if (!include) {
            continue;
        }
        ++checked;
        EXPECT_TRUE(!include->isOurs || isAllowed(path, include->name))
            << path << " must not include " << include->name;
        EXPECT_FALSE(path.starts_with("ScanKit/") && include->name.starts_with("Q") && !include->isOurs)
            << path << " must not know Qt: " << include->name;
        for (const auto& [library, home] : homes) {
            if (include->name.starts_with(library)) {
                EXPECT_TRUE(path.starts_with(home) && !path.ends_with(".h"))
                    << path << " must not show " << include->name;
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
