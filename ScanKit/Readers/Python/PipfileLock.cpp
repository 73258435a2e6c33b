#include "ScanKit/Readers/Python/PipfileLock.h"

#include "ScanKit/Readers/Python/LockedPackages.h"
#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <set>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

/// Nearly every entry has a condition on Python's version, which the project's own version meets.
bool dependsOnPlatform(std::string_view marker) {
    return marker.find("platform") != std::string_view::npos ||
           marker.find("os_name") != std::string_view::npos;
}

LockedEntry pipfileEntry(std::string_view section, std::string_view name, const JSONValue& value) {
    LockedEntry entry{.key = std::string(section) + "/" + std::string(name), .name = std::string(name)};
    const auto version = value.stringMember("version");
    entry.isUnreadable =
        !value.isObject() || Text::isBlank(name) || (value.member("version").has_value() && !version);
    if (version) {
        entry.version = std::string(Text::trimmed(version->substr(version->starts_with("==") ? 2 : 0)));
    }
    entry.isOwn = value.member("path").has_value() || value.booleanMember("editable") == true;
    for (const std::string_view place : {"git", "hg", "svn", "bzr", "file"}) {
        if (const auto url = value.stringMember(place)) {
            entry.isOwn = isLocalPath(*url);
            entry.source = entry.isOwn ? std::nullopt : std::optional<std::string>(*url);
        }
    }
    return entry;
}

}  // namespace

std::optional<Lockfile> pipfileLock(std::string_view text) {
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(text);
    const auto isObject = [&](std::string_view name) {
        const std::optional<JSONValue> member = top->member(name);
        return member && member->isObject();
    };
    if (!top || !isObject("_meta")) {
        return std::nullopt;
    }
    Lockfile lockfile{.knowsWays = false};
    std::set<std::string> shippedNames;
    std::vector<std::size_t> development;
    for (const auto& [section, packages] : top->members()) {
        if (section == "_meta") {
            continue;
        }
        if (!packages.isObject()) {
            return std::nullopt;
        }
        for (const auto& [name, value] : packages.members()) {
            const std::size_t place = lockfile.entries.size();
            lockfile.entries.push_back(pipfileEntry(section, name, value));
            if (section == "develop") {
                development.push_back(place);
            } else {
                const bool mayBeMissing = dependsOnPlatform(value.stringMember("markers").value_or(""));
                (mayBeMissing ? lockfile.shippedIfPresent : lockfile.shipped).push_back(place);
                shippedNames.insert(normalizedName(name));
            }
        }
    }
    for (const std::size_t place : development) {
        // What stands in both is one package, and ships.
        const bool alsoShips = shippedNames.contains(normalizedName(lockfile.entries[place].name));
        (alsoShips ? lockfile.shipped : lockfile.development).push_back(place);
    }
    return lockfile;
}

}  // namespace ScanKit::PythonParser
