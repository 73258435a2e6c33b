#include "ScanKit/Readers/SwiftPMParser.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Json.h"
#include "ScanKit/Support/Links.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace ScanKit::SwiftPMParser {
namespace {

constexpr std::size_t shortRevisionLength = 7;

using FolderIndex = std::unordered_map<std::string, std::filesystem::path>;  ///< by lower-case folder name

std::optional<std::string> owned(std::optional<std::string_view> text) {
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

/// The "pins" of this object; absent unless they are a list of nothing but objects.
std::optional<std::vector<JsonValue>> pinList(const JsonValue& object) {
    const std::optional<JsonValue> list = object.member("pins");
    if (!list || !list->isArray()) {
        return std::nullopt;
    }
    std::vector<JsonValue> elements = list->elements();
    if (!std::ranges::all_of(elements, &JsonValue::isObject)) {
        return std::nullopt;
    }
    return elements;
}

/// Format version 1 keeps the list one level deeper than the later ones. The version number is not asked.
std::vector<JsonValue> pinObjects(const JsonValue& top) {
    if (const std::optional<JsonValue> object = top.member("object")) {
        if (std::optional<std::vector<JsonValue>> list = pinList(*object)) {
            return std::move(*list);
        }
    }
    return pinList(top).value_or(std::vector<JsonValue>{});
}

bool isLocal(const JsonValue& pin) {
    const std::optional<std::string_view> kind = pin.stringMember("kind");
    return kind == "fileSystem" || kind == "localSourceControl";
}

std::string identityOf(const JsonValue& pin, std::string_view nameInLocation) {
    if (const auto identity = pin.stringMember("identity")) {
        return std::string(*identity);
    }
    return Text::lowercased(pin.stringMember("package").value_or(nameInLocation));
}

std::string nameOf(const JsonValue& pin, const std::string& nameInLocation, const std::string& identity) {
    if (const auto package = pin.stringMember("package")) {
        return std::string(*package);
    }
    return nameInLocation.empty() ? identity : nameInLocation;
}

std::optional<Pin> pinOf(const JsonValue& object) {
    Pin pin;
    std::optional<std::string_view> location = object.stringMember("location");
    if (!location) {
        location = object.stringMember("repositoryURL");
    }
    pin.location = location.value_or("");
    const std::string nameInLocation = packageName(pin.location);
    pin.identity = identityOf(object, nameInLocation);
    if (pin.identity.empty() || isLocal(object)) {
        return std::nullopt;
    }
    pin.name = nameOf(object, nameInLocation, pin.identity);
    if (const std::optional<JsonValue> state = object.member("state")) {
        pin.version = owned(state->stringMember("version"));
        pin.branch = owned(state->stringMember("branch"));
        pin.revision = owned(state->stringMember("revision"));
    }
    return pin;
}

FolderIndex indexOf(const std::vector<std::filesystem::path>& checkoutFolders) {
    FolderIndex index;
    for (const std::filesystem::path& folder : checkoutFolders) {
        for (const FolderEntry& entry : listPackageFolder(folder)) {
            if (entry.kind == EntryKind::folder) {
                index.try_emplace(Text::lowercased(entry.name), folder / entry.name);
            }
        }
    }
    return index;
}

std::optional<std::filesystem::path> folderOf(const Pin& pin, const FolderIndex& index) {
    for (const std::string& key :
         {pin.identity, Text::lowercased(packageName(pin.location)), Text::lowercased(pin.name)}) {
        if (const auto found = index.find(key); found != index.end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

RawDependency dependencyOf(const Pin& pin, const FolderIndex& index) {
    RawDependency dependency{.ecosystem = Ecosystem::swiftpm,
                             .name = pin.name,
                             .version = pin.displayVersion(),
                             .folder = folderOf(pin, index)};
    if (!Text::isBlank(pin.location)) {
        dependency.source = withoutCredentials(pin.location);
    }
    return dependency;
}

}  // namespace

std::string Pin::displayVersion() const {
    if (version) {
        return *version;
    }
    if (revision) {
        const std::string shortRevision(Text::prefix(*revision, shortRevisionLength));
        return branch ? *branch + " @ " + shortRevision : shortRevision;
    }
    return branch.value_or("unversioned");
}

std::vector<Pin> pins(std::string_view resolvedFile) {
    JsonReader reader;
    std::vector<Pin> result;
    const std::optional<JsonValue> top = reader.read(resolvedFile);
    if (!top) {
        return result;
    }
    for (const JsonValue& object : pinObjects(*top)) {
        if (std::optional<Pin> pin = pinOf(object)) {
            result.push_back(std::move(*pin));
        }
    }
    return result;
}

std::string packageName(std::string_view location) {
    const std::size_t end = location.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return {};
    }
    location = location.substr(0, end + 1);
    std::string_view name = location.substr(location.rfind('/') + 1);
    if (name.ends_with(".git")) {
        name.remove_suffix(4);
    }
    return std::string(name.substr(name.rfind(':') + 1));
}

std::vector<RawDependency> dependencies(const std::vector<Pin>& pins,
                                        const std::vector<std::filesystem::path>& checkoutFolders,
                                        const ReadControl& control) {
    const FolderIndex index = indexOf(checkoutFolders);
    std::unordered_set<std::string_view> identities;
    std::vector<RawDependency> result;
    for (const Pin& pin : pins) {
        if (identities.insert(pin.identity).second) {
            result.push_back(dependencyOf(pin, index));
        }
    }
    forEachPackage(result.size(), control, [&](std::size_t i) {
        RawDependency& dependency = result[i];
        if (dependency.folder) {
            LicenseFiles files = findLicenseFiles(*dependency.folder);
            dependency.licenseFiles = std::move(files.licenses);
            dependency.noticeFiles = std::move(files.notices);
        }
        return dependency.name;
    });
    return result;
}

}  // namespace ScanKit::SwiftPMParser
