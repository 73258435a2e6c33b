#include "ScanKit/Readers/Python/PyLock.h"

#include "ScanKit/Readers/Python/LockedPackages.h"
#include "ScanKit/Readers/Python/Marker.h"
#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/TOML.h"

#include <set>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

void readPlace(const DataValue& value, LockedEntry& entry) {
    entry.isOwn = value.member("directory") != nullptr;
    for (const std::string_view kind : {"vcs", "archive"}) {
        const DataValue* const place = value.member(kind);
        if (place == nullptr) {
            continue;
        }
        if (const auto url = place->textMember("url")) {
            entry.isOwn = isLocalPath(*url);
            entry.source = entry.isOwn ? std::nullopt : std::optional<std::string>(*url);
        } else {
            entry.isOwn = entry.isOwn || place->member("path") != nullptr;
        }
    }
}

/// Ships: installed with the default groups and any extras. Surely: with them and no extra, wherever.
void readRole(std::string_view marker, const std::set<std::string>& defaultGroups, LockedPackage& package) {
    const auto withDefaultGroups = [&](bool hasExtras) {
        return markerVerdict(
            marker, [&defaultGroups, hasExtras](std::string_view set, std::string_view name) {
                return set == "extras" ? hasExtras : defaultGroups.contains(normalizedName(name));
            });
    };
    package.ships = withDefaultGroups(true).mayHold || withDefaultGroups(false).mayHold;
    package.mayBeMissing = withDefaultGroups(false).mayFail;
}

}  // namespace

std::optional<Lockfile> pyLock(std::string_view text) {
    const std::optional<DataValue> top = readTOML(text);
    const DataValue* const list = top ? top->member("packages") : nullptr;
    if (!top || !top->textMember("lock-version").value_or("").starts_with("1.") || list == nullptr ||
        !list->isList()) {
        return std::nullopt;
    }
    std::set<std::string> defaultGroups;
    for (const std::string_view group : textsOf(top->member("default-groups"))) {
        defaultGroups.insert(normalizedName(group));
    }
    std::vector<LockedPackage> packages;
    for (const DataValue& value : list->elements()) {
        LockedPackage& package = packages.emplace_back(lockedPackage(value));
        readPlace(value, package.entry);
        if (const auto marker = value.textMember("marker")) {
            readRole(*marker, defaultGroups, package);
        }
    }
    return joinedLockfile(std::move(packages), std::nullopt);
}

}  // namespace ScanKit::PythonParser
