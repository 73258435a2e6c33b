#include "ScanKit/Readers/NPM/YarnCache.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/ZipArchive.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view archiveExtension = ".zip";
constexpr std::string_view modulesPrefix = "node_modules/";
constexpr std::string_view manifestName = "package.json";

/// "a-npm-1.0.0" of "a-npm-1.0.0-HASH-CHECKSUM.zip"; empty for another name.
std::string_view packagePart(std::string_view fileName) {
    if (!fileName.ends_with(archiveExtension)) {
        return {};
    }
    std::string_view part = fileName.substr(0, fileName.size() - archiveExtension.size());
    for (int i = 0; i < 2; ++i) {
        const std::size_t dash = part.rfind('-');
        if (dash == std::string_view::npos) {
            return {};
        }
        part = part.substr(0, dash);
    }
    return part;
}

std::string registryPart(const LockedEntry& entry) {
    std::string name = entry.name;
    std::ranges::replace(name, '/', '-');
    return name + "-npm-" + entry.version;
}

/// The folder of the package in its archive, "node_modules/@scope/name/": the first that holds a package.json. Empty for none.
std::string packageFolder(const ZipArchive& archive) {
    for (const ZipArchive::Entry& entry : archive.entries()) {
        const std::string_view name = entry.name;
        if (!name.starts_with(modulesPrefix) || !name.ends_with(manifestName)) {
            continue;
        }
        const std::string_view folder = name.substr(0, name.size() - manifestName.size());
        const bool isScoped = folder.substr(modulesPrefix.size()).starts_with('@');
        if (std::ranges::count(folder, '/') == (isScoped ? 3 : 2)) {
            return std::string(folder);
        }
    }
    return {};
}

std::optional<std::string> readManifestOf(const ZipArchive& archive, const std::string& folder) {
    const ZipArchive::Entry* const manifest = archive.entryNamed(folder + std::string(manifestName));
    return manifest != nullptr ? archive.read(*manifest, largestPackageDescription) : std::nullopt;
}

/// Name and version of the package in an archive; empty when it holds none.
std::string identityOf(const std::filesystem::path& file) {
    const std::optional<ZipArchive> archive = ZipArchive::open(file);
    const std::string folder = archive ? packageFolder(*archive) : std::string();
    const auto manifest = folder.empty() ? std::nullopt : readManifestOf(*archive, folder);
    JSONReader reader;
    const std::optional<JSONValue> value = manifest ? reader.read(*manifest) : std::nullopt;
    if (!value) {
        return {};
    }
    const std::string name = folder.substr(modulesPrefix.size(), folder.size() - modulesPrefix.size() - 1);
    return name + "@" + std::string(value->stringMember("version").value_or(""));
}

/// The package's own files as a listing, to be searched like that of a folder.
std::vector<FolderEntry> listingOf(const ZipArchive& archive, const std::string& folder) {
    std::vector<FolderEntry> listing;
    for (const ZipArchive::Entry& entry : archive.entries()) {
        const std::string_view name =
            std::string_view(entry.name)
                .substr(entry.name.starts_with(folder) ? folder.size() : entry.name.size());
        if (!name.empty() && name.find('/') == std::string_view::npos && !name.starts_with("._")) {
            listing.push_back({.name = std::string(name), .kind = EntryKind::file});
        }
    }
    return listing;
}

/// Reads the texts of one package until there are too many.
class TextReader {
public:
    TextReader(const ZipArchive& archive, const std::string& folder) : archive_(archive), folder_(folder) {}

    void add(const std::filesystem::path& below, std::vector<PackedPackage::File>& texts) {
        const ZipArchive::Entry* const entry = archive_.entryNamed(folder_ + below.generic_string());
        auto bytes = entry != nullptr ? archive_.readStart(*entry, mostPackedTextBytes) : std::nullopt;
        if (bytes && bytes->size() <= left_) {
            left_ -= bytes->size();
            texts.emplace_back(displayName(below), std::move(*bytes));
        }
    }

private:
    const ZipArchive& archive_;
    const std::string& folder_;
    std::size_t left_ = mostPackedBytes;
};

/// The file that the package.json names as its license.
std::optional<std::filesystem::path> namedLicense(const std::string& manifest) {
    JSONReader reader;
    const std::optional<JSONValue> value = reader.read(manifest);
    const auto declared = value ? declaredLicense(*value) : std::nullopt;
    const auto reference = declared ? licenseFileReference(*declared) : std::nullopt;
    return reference ? std::optional(standardized(std::filesystem::path(*reference).relative_path()))
                     : std::nullopt;
}

}  // namespace

std::vector<std::optional<std::filesystem::path>> cachedArchives(const Lockfile& lockfile,
                                                                 const std::filesystem::path& cacheFolder,
                                                                 const ReadControl& control) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : listPackageFolder(cacheFolder)) {
        if (entry.kind == EntryKind::file && !entry.isLink && !packagePart(entry.name).empty()) {
            names.push_back(entry.name);
        }
    }
    std::unordered_map<std::string_view, std::size_t> byName;
    for (std::size_t i = 0; i < names.size(); ++i) {
        byName.emplace(packagePart(names[i]), i);
    }
    std::vector<std::optional<std::filesystem::path>> archives(lockfile.entries.size());
    std::vector<bool> isTaken(names.size());
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < archives.size(); ++i) {
        const LockedEntry& entry = lockfile.entries[i];
        if (entry.isOwn || entry.isUnreadable) {
            continue;
        }
        if (const auto found = byName.find(registryPart(entry)); found != byName.end()) {
            archives[i] = cacheFolder / names[found->second];
            isTaken[found->second] = true;
        } else {
            open.push_back(i);
        }
    }
    if (open.empty()) {
        return archives;
    }
    std::vector<std::string> identities(names.size());
    const auto identify = [&](std::size_t i) {
        identities[i] = isTaken[i] ? std::string() : identityOf(cacheFolder / names[i]);
    };
    forEachIndex(names.size(), identify, control.stop, control.threadLimit);
    std::unordered_map<std::string, std::size_t> byIdentity;
    for (std::size_t i = 0; i < names.size(); ++i) {
        byIdentity.emplace(identities[i], i);
    }
    for (const std::size_t i : open) {
        const LockedEntry& entry = lockfile.entries[i];
        if (const auto found = byIdentity.find(entry.name + "@" + entry.version); found != byIdentity.end()) {
            archives[i] = cacheFolder / names[found->second];
        }
    }
    return archives;
}

std::optional<PackedPackage> readPackedPackage(const std::filesystem::path& file) {
    const std::optional<ZipArchive> archive = ZipArchive::open(file);
    const std::string folder = archive ? packageFolder(*archive) : std::string();
    std::optional<std::string> manifest = folder.empty() ? std::nullopt : readManifestOf(*archive, folder);
    if (!manifest) {
        return std::nullopt;
    }
    PackedPackage package{.archive = displayName(file), .manifest = std::move(*manifest)};
    LicenseFiles files = findLicenseFiles({}, listingOf(*archive, folder));
    TextReader reader(*archive, folder);
    if (const auto named = namedLicense(package.manifest)) {
        std::erase(files.licenses, *named);
        reader.add(*named, package.licenseTexts);
    }
    for (const std::filesystem::path& license : files.licenses) {
        reader.add(license, package.licenseTexts);
    }
    for (const std::filesystem::path& notice : files.notices) {
        reader.add(notice, package.noticeTexts);
    }
    return package;
}

}  // namespace ScanKit::NPMParser
