#include "ScanKit/Readers/Python/PdmLock.h"

#include "ScanKit/Readers/Python/LockedPackages.h"
#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/TOML.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

bool isDevelopmentGroup(std::string_view group, const std::optional<ProjectRequests>& project) {
    return project ? project->developmentGroups.contains(normalizedName(group)) : group != "default";
}

LockedPackage pdmPackage(const DataValue& value, const std::optional<ProjectRequests>& project) {
    LockedPackage package = lockedPackage(value);
    LockedEntry& entry = package.entry;
    std::vector<std::string> names;
    for (const std::string_view extra : textsOf(value.member("extras"))) {
        names.emplace_back(extra);
        package.extras.push_back(normalizedName(extra));
    }
    if (!names.empty()) {
        entry.key.insert(entry.name.size(), std::string("[").append(Text::joined(names, ",")).append("]"));
    }
    entry.isOwn = value.member("path") != nullptr;
    for (const std::string_view place : {"git", "hg", "svn", "bzr", "url"}) {
        if (const auto url = value.textMember(place)) {
            entry.isOwn = entry.isOwn || isLocalPath(*url);
            entry.source = entry.isOwn ? std::nullopt : std::optional<std::string>(*url);
        }
    }
    package.requests = requestsOfTexts(value.member("dependencies"));
    const std::vector<std::string_view> groups = textsOf(value.member("groups"));
    if (!groups.empty()) {
        package.ships = !std::ranges::all_of(
            groups, [&](std::string_view group) { return isDevelopmentGroup(group, project); });
        package.mayBeMissing = std::ranges::find(groups, "default") == groups.end();
    }
    package.mayBeMissing = package.mayBeMissing || value.member("marker") != nullptr;
    return package;
}

}  // namespace

std::optional<Lockfile> pdmLock(std::string_view text, const std::optional<std::string>& pyproject) {
    const std::optional<DataValue> top = readTOML(text);
    const DataValue* const metadata = top ? top->member("metadata") : nullptr;
    const DataValue* const list = top ? top->member("package") : nullptr;
    if (metadata == nullptr || !metadata->isTable() || (list != nullptr && !list->isList())) {
        return std::nullopt;
    }
    const std::optional<ProjectRequests> project = projectRequests(pyproject);
    std::vector<LockedPackage> packages;
    for (const DataValue& value : elementsOf(list)) {
        packages.push_back(pdmPackage(value, project));
    }
    return joinedLockfile(std::move(packages), project);
}

}  // namespace ScanKit::PythonParser
