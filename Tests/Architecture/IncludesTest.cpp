#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const std::filesystem::path root = QUORVANE_SOURCE_DIR;

using Folders = std::set<std::string>;
using Layers = std::map<std::string, Folders>;  ///< folder: what its files may include
using IncludeGraph =
    std::map<std::string, std::vector<std::string>>;  ///< file: the files of ours it includes

/// Libraries whose headers stay in one place, by how the included names begin.
const std::map<std::string, std::string> homes{
    {"unicode/", "ScanKit/Support/"},
    {"simdjson", "ScanKit/Support/"},
    {"toml", "ScanKit/Support/TOML."},
    {"oneapi/", "ScanKit/Support/"},
    {"tbb/", "ScanKit/Support/"},
    {"minizip/", "ScanKit/Support/ZipArchive."},
    {"pango/", "ScanKit/Reports/PDF/"},
    {"fontconfig/", "ScanKit/Reports/PDF/PDFFontMap"},
    {"cairo", "ScanKit/Reports/PDF/"},
    {"qpdf/", "ScanKit/Reports/PDF/PDFStructure."},
    {"CLI/", "QuorvaneCLI/CommandOptions."},
};

std::string trimmed(std::string text) {
    text.erase(0, text.find_first_not_of(" `"));
    text.erase(text.find_last_not_of(" `") + 1);
    return text;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(trimmed(part));
    }
    return parts;
}

/// The folder that a short name means: the one of that name beside the folder, or beside a folder around it.
std::string resolved(const std::string& name, std::filesystem::path folder, const Layers& layers) {
    while (folder.has_relative_path()) {
        folder = folder.parent_path();
        if (const std::string candidate = (folder / name).generic_string(); layers.contains(candidate)) {
            return candidate;
        }
    }
    return name;
}

/// The table of docs/ARCHITECTURE.md: | `folder` | what is in it | may include |.
Layers documentedLayers() {
    Layers layers;
    std::ifstream page(root / "docs/ARCHITECTURE.md");
    for (std::string line; std::getline(page, line);) {
        const std::vector<std::string> cells = split(line, '|');
        if (!line.starts_with("| `") || cells.size() != 4 || cells[1].find(',') != std::string::npos ||
            !std::filesystem::is_directory(root / cells[1]) || cells[1] == "Tests") {
            continue;
        }
        Folders allowed;
        for (const std::string& name : split(cells[3], ',')) {
            if (name == "all of the above") {
                std::ranges::transform(layers, std::inserter(allowed, allowed.end()),
                                       [](const auto& layer) { return layer.first; });
            } else if (name != "–") {
                allowed.insert(resolved(name, cells[1], layers));
            }
        }
        layers[cells[1]] = allowed;
    }
    return layers;
}

bool liesIn(const std::string& path, const std::string& folder) {
    return path.starts_with(folder + "/");
}

/// The folder of the table that a file lies in: the innermost; empty for a file of none.
std::string layerOf(const std::string& path, const Layers& layers) {
    std::string innermost;
    for (const auto& [folder, allowed] : layers) {
        if (liesIn(path, folder) && folder.size() > innermost.size()) {
            innermost = folder;
        }
    }
    return innermost;
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

void checkLibrary(const std::string& file, const std::string& header) {
    EXPECT_FALSE(file.starts_with("ScanKit/") && header.starts_with("Q")) << file << " must not know Qt";
    for (const auto& [library, home] : homes) {
        if (header.starts_with(library)) {
            EXPECT_TRUE(file.starts_with(home) && !file.ends_with(".h"))
                << file << " must not show " << header;
        }
    }
}

/// Reads every file of the folders, and checks what they include of other libraries on the way.
IncludeGraph readIncludes(const Layers& layers) {
    IncludeGraph graph;
    for (const auto& [layer, allowed] : layers) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / layer)) {
            const std::string extension = entry.path().extension();
            const std::string file = std::filesystem::relative(entry.path(), root).generic_string();
            if ((extension != ".h" && extension != ".cpp" && extension != ".mm") || graph.contains(file)) {
                continue;
            }
            std::ifstream stream(entry.path());
            std::vector<std::string>& included = graph[file];
            for (std::string line; std::getline(stream, line);) {
                if (const auto include = includeOf(line); include && include->isOurs) {
                    included.push_back(include->name);
                } else if (include) {
                    checkLibrary(file, include->name);
                }
            }
        }
    }
    return graph;
}

TEST(Includes, FollowTheTableOfTheArchitecturePage) {
    const Layers layers = documentedLayers();
    ASSERT_GT(layers.size(), 10U) << "docs/ARCHITECTURE.md has no table of folders";
    std::map<std::string, Folders> unused = layers;
    for (const auto& [file, included] : readIncludes(layers)) {
        const std::string layer = layerOf(file, layers);
        for (const std::string& header : included) {
            bool isAllowed = layerOf(header, layers) == layer;
            for (const std::string& folder : layers.at(layer)) {
                if (liesIn(header, folder)) {
                    isAllowed = true;
                    unused[layer].erase(folder);
                }
            }
            EXPECT_TRUE(isAllowed) << file << " must not include " << header;
        }
    }
    for (const auto& [layer, folders] : unused) {
        const bool joinsAll = layers.at(layer).size() > 4;
        EXPECT_TRUE(joinsAll || folders.empty())
            << layer << " may include " << *folders.begin() << ", and never does: take it out of the table";
    }
}

/// Walks what a file includes; a file that is met again on the way to itself closes a circle.
void walk(const std::string& file, const IncludeGraph& graph, std::vector<std::string>& way,
          std::set<std::string>& done) {
    ASSERT_EQ(std::ranges::find(way, file), way.end()) << file << " includes itself by way of " << way.back();
    if (const auto found = graph.find(file); found != graph.end() && done.insert(file).second) {
        way.push_back(file);
        for (const std::string& header : found->second) {
            walk(header, graph, way, done);
        }
        way.pop_back();
    }
}

TEST(Includes, CloseNoCircle) {
    const IncludeGraph graph = readIncludes(documentedLayers());
    std::vector<std::string> way;
    std::set<std::string> done;
    for (const auto& [file, included] : graph) {
        walk(file, graph, way, done);
    }
}

}  // namespace
