#include "ScanKit/Readers/Python/PoetryLock.h"

#include "ScanKit/Readers/Python/LockedPackages.h"
#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/TOML.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

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

/// Where a package comes from, unless it is an index of packages.
void readSource(const DataValue& source, LockedEntry& entry) {
    const std::string_view type = source.textMember("type").value_or("");
    entry.isOwn = type == "directory" || type == "file";
    if (const auto url = source.textMember("url"); url && (type == "git" || type == "url")) {
        entry.isOwn = isLocalPath(*url);
        entry.source = entry.isOwn ? std::nullopt : std::optional<std::string>(*url);
    }
}

void readRole(const DataValue& value, LockedPackage& package) {
    if (const DataValue* const groups = value.member("groups"); groups != nullptr && groups->isList()) {
        const std::vector<std::string_view> names = textsOf(groups);
        package.ships = names.empty() || std::ranges::find(names, "main") != names.end();
    } else if (const auto category = value.textMember("category")) {
        package.ships = *category == "main";
    }
    package.mayBeMissing = value.isTrue("optional") || value.member("markers") != nullptr;
}

LockedPackage poetryPackage(const DataValue& value) {
    LockedPackage package = lockedPackage(value);
    if (const DataValue* const source = value.member("source")) {
        readSource(*source, package.entry);
    }
    readRole(value, package);
    if (const DataValue* const dependencies = value.member("dependencies")) {
        for (const auto& [name, dependency] : dependencies->members()) {
            PoetryDependency read = poetryDependency(name, dependency);
            // An optional one stands under its extra once more.
            if (!read.isOptional) {
                std::ranges::move(read.requests, std::back_inserter(package.requests));
            }
        }
    }
    if (const DataValue* const extras = value.member("extras")) {
        for (const auto& [extra, requests] : extras->members()) {
            package.requestsOfExtras[normalizedName(extra)] = requestsOfTexts(&requests);
        }
    }
    return package;
}

}  // namespace

std::vector<Requirement> requirementsFromPoetryLock(std::string_view text) {
    std::vector<Requirement> packages;
    bool readsKeys = false;
    for (std::string_view line : Text::nonEmptyLines(text)) {
        line = Text::trimmed(line);
        if (line == "[[package]]") {
            packages.emplace_back();
            readsKeys = true;
            // Below a package stand tables of its own dependencies, whose keys look the same.
        } else if (line.starts_with('[')) {
            readsKeys = false;
        } else if (readsKeys) {
            readLockLine(packages.back(), line);
        }
    }
    std::erase_if(packages, [](const Requirement& package) { return package.name.empty(); });
    return packages;
}

std::optional<Lockfile> poetryLock(std::string_view text, const std::optional<std::string>& pyproject) {
    const std::optional<DataValue> top = readTOML(text);
    const DataValue* const metadata = top ? top->member("metadata") : nullptr;
    const DataValue* const list = top ? top->member("package") : nullptr;
    // A project without packages has the metadata alone.
    const bool isLock = list != nullptr ? list->isList() : metadata != nullptr && metadata->isTable();
    if (!isLock) {
        return std::nullopt;
    }
    std::vector<LockedPackage> packages;
    std::ranges::transform(elementsOf(list), std::back_inserter(packages), poetryPackage);
    return joinedLockfile(std::move(packages), projectRequests(pyproject));
}

}  // namespace ScanKit::PythonParser
