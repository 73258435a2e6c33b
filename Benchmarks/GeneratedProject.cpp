#include "Benchmarks/GeneratedProject.h"

#include "ScanKit/Licenses/LicenseTexts.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include <fmt/format.h>

namespace GeneratedProject {
namespace {

/// Of a hundred packages, how many carry which license.
struct ShareRow {
    std::string_view license;
    std::size_t share;
};
constexpr std::array<ShareRow, 9> shares{{
    {"MIT", 76},
    {"ISC", 9},
    {"Apache-2.0", 5},
    {"BSD-3-Clause", 3},
    {"BSD-2-Clause", 3},
    {"0BSD", 1},
    {"CC0-1.0", 1},
    {"MPL-2.0", 1},
    {"GPL-3.0", 1},
}};

std::string_view licenseOf(std::size_t package) {
    // 37 has no factor in common with 100, so neighbours differ and every hundred has its shares.
    std::size_t place = package * 37 % 100;
    for (const ShareRow& row : shares) {
        if (place < row.share) {
            return row.license;
        }
        place -= row.share;
    }
    return shares.front().license;
}

std::string nameOf(std::size_t package) {
    return package % 5 == 0 ? fmt::format("@scope-{}/package-{:05}", package % 40, package)
                            : fmt::format("package-{:05}", package);
}

std::string manifestOf(std::size_t package) {
    return fmt::format(R"({{
  "name": "{0}",
  "version": "{1}.{2}.0",
  "description": "One of many packages that a large project installs, with a manifest of the usual length",
  "main": "index.js",
  "repository": {{ "type": "git", "url": "git+https://example.com/owner-{3}/{0}.git" }},
  "scripts": {{ "test": "node test.js", "lint": "lint .", "build": "node build.js" }},
  "keywords": ["generated", "package", "of", "usual", "length"],
  "author": "Owner {3}",
  "license": "{4}",
  "dependencies": {{ "package-00001": "^1.0.0", "package-00002": "^1.0.0", "package-00003": "~1.2.0" }},
  "devDependencies": {{ "package-00004": "^1.0.0", "package-00005": "^1.0.0" }},
  "engines": {{ "node": ">=18" }},
  "files": ["index.js", "lib"]
}}
)",
                       nameOf(package), 1 + package % 7, package % 23, package % 400, licenseOf(package));
}

void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

}  // namespace

std::string lockfile(std::size_t count) {
    std::string text =
        "{\n  \"name\": \"generated\",\n  \"lockfileVersion\": 3,\n  \"packages\": {\n    \"\": {}";
    for (std::size_t i = 0; i < count; ++i) {
        text += fmt::format(R"(,
    "node_modules/{0}": {{
      "version": "{1}.{2}.0",
      "resolved": "https://example.com/{0}/-/package-{1}.{2}.0.tgz",
      "integrity": "sha512-{3:086}==",
      "license": "{4}",
      "dependencies": {{ "package-00001": "^1.0.0", "package-00002": "^1.0.0" }}
    }})",
                            nameOf(i), 1 + i % 7, i % 23, i, licenseOf(i));
    }
    return text + "\n  }\n}\n";
}

void write(const std::filesystem::path& folder, std::size_t count) {
    writeFile(folder / "package.json", "{ \"name\": \"generated\", \"version\": \"1.0.0\" }\n");
    writeFile(folder / "package-lock.json", lockfile(count));
    // A multiple of a hundred, after which the licenses come round again: an owner always uses the same one, and
    // about a quarter of the license files differ.
    const std::size_t owners = std::max<std::size_t>(count / 400, 1) * 100;
    for (std::size_t i = 0; i < count; ++i) {
        const std::filesystem::path package = folder / "node_modules" / nameOf(i);
        writeFile(package / "package.json", manifestOf(i));
        writeFile(package / "index.js", "module.exports = {};\n");
        writeFile(package / "README.md", "# " + nameOf(i) + "\n");
        writeFile(package / "LICENSE", fmt::format("Copyright (c) 2020 Owner {}\n\n{}", i % owners,
                                                   ScanKit::standardText(licenseOf(i)).value()));
    }
}

}  // namespace GeneratedProject
