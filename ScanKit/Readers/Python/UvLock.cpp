#include "ScanKit/Readers/Python/UvLock.h"

#include "ScanKit/Readers/Python/LockedPackages.h"
#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/TOML.h"

#include <algorithm>
#include <set>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

/// A list of { name, extra, version, marker }.
std::vector<PackageRequest> requestsOf(const DataValue* list) {
    std::vector<PackageRequest> requests;
    for (const DataValue& value : elementsOf(list)) {
        const auto name = value.textMember("name");
        if (!name) {
            continue;
        }
        PackageRequest request{.name = normalizedName(*name),
                               .isConditional = value.member("marker") != nullptr};
        for (const std::string_view extra : textsOf(value.member("extra"))) {
            request.extras.push_back(normalizedName(extra));
        }
        if (const auto version = value.textMember("version")) {
            request.version = std::string(*version);
        }
        requests.push_back(std::move(request));
    }
    return withAlternativesNeeded(std::move(requests));
}

/// Lists of requests by group or extra.
std::map<std::string, std::vector<PackageRequest>> requestsByName(const DataValue* table) {
    std::map<std::string, std::vector<PackageRequest>> result;
    if (table != nullptr) {
        for (const auto& [name, list] : table->members()) {
            result[normalizedName(name)] = requestsOf(&list);
        }
    }
    return result;
}

void readSource(const DataValue& source, LockedEntry& entry) {
    for (const std::string_view own : {"editable", "virtual", "directory", "path"}) {
        entry.isOwn = entry.isOwn || source.member(own) != nullptr;
    }
    for (const std::string_view place : {"git", "url"}) {
        if (const auto url = source.textMember(place)) {
            entry.source = std::string(*url);
        }
    }
}

LockedPackage uvPackage(const DataValue& value) {
    LockedPackage package = lockedPackage(value);
    if (const DataValue* const source = value.member("source")) {
        readSource(*source, package.entry);
    }
    package.requests = requestsOf(value.member("dependencies"));
    package.requestsOfExtras = requestsByName(value.member("optional-dependencies"));
    return package;
}

void append(const std::vector<PackageRequest>& more, std::vector<PackageRequest>& requests) {
    requests.insert(requests.end(), more.begin(), more.end());
}

/// Which packages are the project's: those that the manifest lists, else the one at the lockfile's place.
class Members {
public:
    explicit Members(const DataValue* manifest) {
        if (manifest != nullptr) {
            for (const std::string_view name : textsOf(manifest->member("members"))) {
                names_.insert(normalizedName(name));
            }
        }
    }
    bool contains(const DataValue& package) const {
        const DataValue* const source = package.member("source");
        if (source == nullptr) {
            return false;
        }
        const auto isHere = [&](std::string_view kind) { return source->textMember(kind) == "."; };
        return isHere("editable") || isHere("virtual") || isHere("directory") ||
               names_.contains(normalizedName(package.textMember("name").value_or("")));
    }

private:
    std::set<std::string> names_;
};

}  // namespace

std::optional<Lockfile> uvLock(std::string_view text) {
    const std::optional<DataValue> top = readTOML(text);
    const DataValue* const list = top ? top->member("package") : nullptr;
    if (!top || !top->textMember("version") || (list != nullptr && !list->isList())) {
        return std::nullopt;
    }
    const DataValue* const manifest = top->member("manifest");
    const Members members(manifest);
    ProjectRequests project;
    // A script with its dependencies in itself, or a workspace whose root is no package.
    if (manifest != nullptr) {
        project.shipped = requestsOf(manifest->member("requirements"));
        for (const auto& [group, requests] : requestsByName(manifest->member("dependency-groups"))) {
            append(requests, project.development);
        }
    }
    std::vector<LockedPackage> packages;
    for (const DataValue& value : elementsOf(list)) {
        packages.push_back(uvPackage(value));
        const LockedPackage& package = packages.back();
        if (!members.contains(value)) {
            continue;
        }
        packages.back().entry.isOwn = true;
        append(package.requests, project.shipped);
        for (const auto& [extra, requests] : package.requestsOfExtras) {
            append(requests, project.shippedIfPresent);
        }
        for (const auto& [group, requests] : requestsByName(value.member("dev-dependencies"))) {
            append(requests, project.development);
        }
    }
    return joinedLockfile(std::move(packages), project);
}

}  // namespace ScanKit::PythonParser
