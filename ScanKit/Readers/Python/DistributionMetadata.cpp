#include "ScanKit/Readers/Python/DistributionMetadata.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

constexpr std::string_view licensesFolder = "licenses";

struct Header {
    std::string key;  ///< in lower case: keys are compared without regard to it
    std::string value;
};
using Headers = std::vector<Header>;

std::string_view withoutReturn(std::string_view line) {
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

/// The bytes before the first empty line; the description after it is long and tells nothing here.
std::string_view headerPart(std::string_view metadata) {
    for (std::size_t begin = 0; begin < metadata.size();) {
        const std::size_t end = std::min(metadata.find('\n', begin), metadata.size());
        if (withoutReturn(metadata.substr(begin, end - begin)).empty()) {
            return metadata.substr(0, begin);
        }
        begin = end + 1;
    }
    return metadata;
}

void appendContinuation(std::string& value, std::string_view line) {
    line = Text::trimmed(line);
    // Some builders mark the lines of a pasted license so.
    if (line.starts_with('|')) {
        line.remove_prefix(1);
    }
    value += '\n';
    value += line;
}

Headers headersOf(std::string_view metadata) {
    const std::string text = decodedText(std::string(headerPart(metadata)));
    Headers headers;
    for (std::string_view line : Text::split(text, "\n")) {
        line = withoutReturn(line);
        if (line.starts_with(' ') || line.starts_with('\t')) {
            if (!headers.empty()) {
                appendContinuation(headers.back().value, line);
            }
        } else if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
            headers.push_back({Text::lowercased(line.substr(0, colon)),
                               std::string(Text::trimmed(line.substr(colon + 1)))});
        }
    }
    return headers;
}

std::vector<std::string> allValues(const Headers& headers, std::string_view key) {
    std::vector<std::string> values;
    for (const Header& header : headers) {
        if (header.key == key) {
            values.emplace_back(Text::trimmed(header.value));
        }
    }
    return values;
}

/// The first value; absent when it is blank.
std::optional<std::string> firstValue(const Headers& headers, std::string_view key) {
    const auto found = std::ranges::find(headers, key, &Header::key);
    if (found == headers.end() || Text::isBlank(found->value)) {
        return std::nullopt;
    }
    return std::string(Text::trimmed(found->value));
}

/// The first value; absent when it is blank, or the word that builders write when nothing was given.
std::optional<std::string> statedValue(const Headers& headers, std::string_view key) {
    std::optional<std::string> value = firstValue(headers, key);
    return value && Text::lowercased(*value) == "unknown" ? std::nullopt : value;
}

std::optional<std::string> statedLicense(const Headers& headers) {
    std::optional<std::string> license = statedValue(headers, "license");
    return license && Text::lowercased(*license) == "none" ? std::nullopt : license;
}

/// The link of a "label, link" that leads to a project's source or home; absent for any other.
std::optional<std::string> sourceLink(std::string_view projectUrl) {
    const std::size_t comma = projectUrl.find(',');
    if (comma == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string label = Text::lowercased(projectUrl.substr(0, comma));
    const std::string_view link = Text::trimmed(projectUrl.substr(comma + 1));
    const bool leadsHome =
        label.starts_with("source") || label.starts_with("repository") || label.starts_with("homepage");
    return leadsHome && !link.empty() ? std::optional<std::string>(link) : std::nullopt;
}

std::optional<std::string> homepageOf(const Headers& headers) {
    if (std::optional<std::string> homepage = statedValue(headers, "home-page")) {
        return homepage;
    }
    for (const std::string& projectUrl : allValues(headers, "project-url")) {
        if (std::optional<std::string> link = sourceLink(projectUrl)) {
            return link;
        }
    }
    return std::nullopt;
}

/// A bare name most likely lies among the licenses, a path where it says; newer metadata has both in there.
std::optional<std::filesystem::path> licenseFileNamed(const std::filesystem::path& folder,
                                                      const std::string& name) {
    std::array<std::string, 2> places{std::string(licensesFolder) + "/" + name, name};
    if (name.find('/') != std::string::npos) {
        std::swap(places[0], places[1]);
    }
    for (const std::string& place : places) {
        if (std::optional<std::filesystem::path> file = fileNamedByMetadata(folder, place)) {
            return file;
        }
    }
    return std::nullopt;
}

/// What lies in the metadata folder and among its licenses under the name of a license.
std::vector<std::filesystem::path> licenseFilesFound(const std::filesystem::path& folder) {
    const std::vector<FolderEntry> entries = listPackageFolder(folder);
    std::vector<std::filesystem::path> files = findLicenseFiles(folder, entries).licenses;
    if (const FolderEntry* licenses = entryNamed(entries, licensesFolder);
        licenses != nullptr && licenses->kind == EntryKind::folder) {
        const auto below =
            findLicenseFiles(folder, listPackageFolder(folder / licensesFolder), licensesFolder);
        files.insert(files.end(), below.licenses.begin(), below.licenses.end());
    }
    return files;
}

std::vector<std::filesystem::path> licenseFilesOf(const std::filesystem::path& folder,
                                                  const Headers& headers) {
    std::vector<std::filesystem::path> files;
    for (const std::string& name : allValues(headers, "license-file")) {
        const std::optional<std::filesystem::path> file = licenseFileNamed(folder, name);
        if (file && std::ranges::find(files, *file) == files.end()) {
            files.push_back(*file);
        }
    }
    // Metadata that names files knows best, unless none of them is there.
    return files.empty() ? licenseFilesFound(folder) : files;
}

}  // namespace

std::optional<Installed> distribution(const std::filesystem::path& metadataFolder) {
    const std::filesystem::path folder = standardized(metadataFolder);
    const char* metadataName = folder.extension() == ".dist-info" ? "METADATA" : "PKG-INFO";
    const auto metadata = readFile(folder / metadataName, largestPackageDescription);
    if (!metadata) {
        return std::nullopt;
    }
    const Headers headers = headersOf(*metadata);
    const std::vector<std::string> names = allValues(headers, "name");
    const std::vector<std::string> versions = allValues(headers, "version");
    if (names.empty() || names.front().empty() || versions.empty()) {
        return std::nullopt;
    }
    return Installed{.name = names.front(),
                     .version = versions.front(),
                     .license = statedLicense(headers),
                     .licenseExpression = firstValue(headers, "license-expression"),
                     .classifiers = allValues(headers, "classifier"),
                     .homepage = homepageOf(headers),
                     .folder = folder,
                     .licenseFiles = licenseFilesOf(folder, headers)};
}

}  // namespace ScanKit::PythonParser
