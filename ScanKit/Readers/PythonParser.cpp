#include "ScanKit/Readers/PythonParser.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Links.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Regex.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

constexpr std::string_view licensesFolder = "licenses";
constexpr std::string_view licenseClassifier = "License ::";

/// What installs packages and is itself installed in every environment.
constexpr std::array<std::string_view, 5> toolingNames{"pip", "setuptools", "wheel", "distribute",
                                                       "pkg-resources"};

bool isTool(std::string_view normalizedName) {
    return std::ranges::find(toolingNames, normalizedName) != toolingNames.end();
}

// Requirements

std::string_view withoutComment(std::string_view line) {
    static const Regex commentStart(R"((^|\s)#)");
    const std::optional<Regex::Match> comment = commentStart.firstMatch(line);
    return Text::trimmed(line.substr(0, comment ? comment->begin : line.size()));
}

/// True of an option, an address or a local path.
bool namesNoPackage(std::string_view line) {
    return line.empty() || line.find_first_of("-./") == 0 || line.find("://") != std::string_view::npos;
}

/// The version of "==1.0" or "===1.0"; a range is none.
std::optional<std::string> exactVersion(std::string_view requirement) {
    static const Regex exactPin(R"(===?\s*[^\s,;]+)");
    const std::optional<Regex::Match> pin = exactPin.firstMatch(requirement);
    if (!pin) {
        return std::nullopt;
    }
    std::string version(requirement.substr(pin->begin, pin->end - pin->begin));
    std::erase(version, '=');
    return std::string(Text::trimmed(version));
}

std::optional<Requirement> requirementOf(std::string_view line, bool isDev) {
    static const Regex nameAtStart("^[A-Za-z0-9][A-Za-z0-9._-]*");
    std::string_view requirement = withoutComment(line);
    if (namesNoPackage(requirement)) {
        return std::nullopt;
    }
    // What follows the semicolon says in which environments the requirement holds.
    requirement = Text::trimmed(requirement.substr(0, requirement.find(';')));
    const std::optional<Regex::Match> name = nameAtStart.firstMatch(requirement);
    if (!name) {
        return std::nullopt;
    }
    return Requirement{.name = std::string(requirement.substr(0, name->end)),
                       .version = exactVersion(requirement),
                       .isDev = isDev};
}

bool isKey(std::string_view line, std::string_view key) {
    const std::string_view rest = line.starts_with(key) ? line.substr(key.size()) : std::string_view{};
    return rest.starts_with(' ') || rest.starts_with('=');
}

/// What stands behind the equals sign, without its quotes.
std::string lockValue(std::string_view line) {
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos) {
        return {};
    }
    return std::string(Text::trimmedOf(Text::trimmed(line.substr(sign + 1)), "\"'"));
}

void readLockLine(Requirement& package, std::string_view line) {
    if (isKey(line, "name")) {
        package.name = lockValue(line);
    } else if (isKey(line, "version")) {
        package.version = lockValue(line);
    } else if (line.starts_with("category")) {
        package.isDev = lockValue(line) == "dev";
    }
}

// Metadata of one distribution

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
    return files.empty() ? licenseFilesFound(folder) : files;
}

std::vector<std::filesystem::path> metadataFolders(const std::vector<std::filesystem::path>& sitePackages) {
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path& site : sitePackages) {
        for (const FolderEntry& entry : listPackageFolder(site)) {
            const std::filesystem::path extension = std::filesystem::path(entry.name).extension();
            if (entry.kind == EntryKind::folder && (extension == ".dist-info" || extension == ".egg-info")) {
                folders.push_back(site / entry.name);
            }
        }
    }
    return folders;
}

// The join

using Declared = std::map<std::string, Requirement>;  ///< by normalized name

Declared declaredByName(const std::vector<Requirement>& requirements) {
    Declared declared;
    for (const Requirement& requirement : requirements) {
        const auto [place, isNew] = declared.try_emplace(normalizedName(requirement.name), requirement);
        if (!isNew && (requirement.version || !place->second.version)) {
            place->second = requirement;
        }
    }
    return declared;
}

RawDependency installedDependency(const Installed& distribution, bool isDev) {
    RawDependency dependency{
        .ecosystem = Ecosystem::python,
        .name = distribution.name,
        .version = distribution.version,
        .isDev = isDev,
        .declared = distribution.licenseExpression ? distribution.licenseExpression : distribution.license,
        .folder = distribution.folder,
        .licenseFiles = distribution.licenseFiles,
    };
    if (distribution.homepage) {
        dependency.source = withoutCredentials(*distribution.homepage);
    }
    for (const std::string& classifier : distribution.classifiers) {
        if (classifier.starts_with(licenseClassifier)) {
            dependency.classifiers.push_back(classifier);
        }
    }
    return dependency;
}

}  // namespace

std::string normalizedName(std::string_view name) {
    std::string normalized;
    for (const char c : Text::lowercased(name)) {
        const bool isSeparator = c == '-' || c == '_' || c == '.';
        if (!isSeparator) {
            normalized += c;
        } else if (!normalized.ends_with('-')) {
            normalized += '-';
        }
    }
    return normalized;
}

std::vector<Requirement> requirementsFromText(std::string_view text, bool isDev) {
    std::vector<Requirement> requirements;
    for (const std::string_view line : Text::nonEmptyLines(text)) {
        if (std::optional<Requirement> requirement = requirementOf(line, isDev)) {
            requirements.push_back(std::move(*requirement));
        }
    }
    return requirements;
}

std::vector<Requirement> requirementsFromPoetryLock(std::string_view text) {
    std::vector<Requirement> packages;
    bool readsKeys = false;
    for (std::string_view line : Text::nonEmptyLines(text)) {
        line = Text::trimmed(line);
        if (line == "[[package]]") {
            packages.emplace_back();
            readsKeys = true;
        } else if (line.starts_with('[')) {
            readsKeys = false;
        } else if (readsKeys) {
            readLockLine(packages.back(), line);
        }
    }
    std::erase_if(packages, [](const Requirement& package) { return package.name.empty(); });
    return packages;
}

std::vector<std::filesystem::path> sitePackages(const std::filesystem::path& environment) {
    const std::filesystem::path name = standardized(environment).filename();
    if (name == "site-packages" || name == "dist-packages") {
        return {environment};
    }
    std::vector<std::filesystem::path> found;
    std::set<FolderIdentity> identities;
    const auto add = [&](const std::filesystem::path& folder) {
        const std::optional<FolderIdentity> identity = folderIdentity(folder);
        if (identity && identities.insert(*identity).second) {
            found.push_back(folder);
        }
    };
    for (const char* below : {"lib", "Lib", "lib/python"}) {
        const std::filesystem::path base = environment / below;
        add(base / "site-packages");
        for (const FolderEntry& entry : listPackageFolder(base)) {
            if (entry.name.starts_with("python")) {
                add(base / entry.name / "site-packages");
            }
        }
    }
    return found;
}

InstalledPackages installed(const std::vector<std::filesystem::path>& sitePackages,
                            const ReadControl& control) {
    const std::vector<std::filesystem::path> folders = metadataFolders(sitePackages);
    std::vector<std::optional<Installed>> distributions(folders.size());
    forEachPackage(folders.size(), control, [&](std::size_t i) {
        distributions[i] = distribution(folders[i]);
        return distributions[i] ? distributions[i]->name : displayName(folders[i]);
    });
    InstalledPackages packages;
    for (std::optional<Installed>& one : distributions) {
        if (one) {
            packages.try_emplace(normalizedName(one->name), std::move(*one));
        }
    }
    return packages;
}

std::optional<Installed> distribution(const std::filesystem::path& metadataFolder) {
    const char* metadataName = metadataFolder.extension() == ".dist-info" ? "METADATA" : "PKG-INFO";
    const auto metadata = readFile(metadataFolder / metadataName, largestPackageDescription);
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
                     .folder = metadataFolder,
                     .licenseFiles = licenseFilesOf(metadataFolder, headers)};
}

std::vector<RawDependency> dependencies(const std::vector<Requirement>& requirements,
                                        const InstalledPackages& installed) {
    const Declared declared = declaredByName(requirements);
    std::vector<RawDependency> result;
    for (const auto& [name, distribution] : installed) {
        const auto requirement = declared.find(name);
        const bool isDeclared = requirement != declared.end();
        if (isDeclared || !isTool(name)) {
            result.push_back(installedDependency(distribution, isDeclared && requirement->second.isDev));
        }
    }
    for (const auto& [name, requirement] : declared) {
        if (!installed.contains(name)) {
            result.push_back({.ecosystem = Ecosystem::python,
                              .name = requirement.name,
                              .version = requirement.version.value_or("any"),
                              .isDev = requirement.isDev});
        }
    }
    return result;
}

}  // namespace ScanKit::PythonParser
