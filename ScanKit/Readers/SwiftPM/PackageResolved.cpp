#include "ScanKit/Readers/SwiftPM/PackageResolved.h"

#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit::SwiftPMParser {
namespace {

constexpr std::size_t shortRevisionLength = 7;

std::optional<std::string> owned(std::optional<std::string_view> text) {
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

/// The "pins" of this object; absent unless they are a list of nothing but objects.
std::optional<std::vector<JSONValue>> pinList(const JSONValue& object) {
    const std::optional<JSONValue> list = object.member("pins");
    if (!list || !list->isArray()) {
        return std::nullopt;
    }
    std::vector<JSONValue> elements = list->elements();
    // One element of another kind means that this is not the list that it looks like.
    if (!std::ranges::all_of(elements, &JSONValue::isObject)) {
        return std::nullopt;
    }
    return elements;
}

/// Format version 1 keeps the list one level deeper than the later ones. The version number is not asked.
std::optional<std::vector<JSONValue>> pinObjects(const JSONValue& top) {
    if (const std::optional<JSONValue> object = top.member("object")) {
        if (std::optional<std::vector<JSONValue>> list = pinList(*object)) {
            return list;
        }
    }
    return pinList(top);
}

bool isLocal(const JSONValue& pin) {
    const std::optional<std::string_view> kind = pin.stringMember("kind");
    return kind == "fileSystem" || kind == "localSourceControl";
}

std::string identityOf(const JSONValue& pin, std::string_view nameInLocation) {
    if (const auto identity = pin.stringMember("identity")) {
        return std::string(*identity);
    }
    return Text::lowercased(pin.stringMember("package").value_or(nameInLocation));
}

std::string nameOf(const JSONValue& pin, const std::string& nameInLocation, const std::string& identity) {
    if (const auto package = pin.stringMember("package")) {
        return std::string(*package);
    }
    return nameInLocation.empty() ? identity : nameInLocation;
}

std::optional<Pin> pinOf(const JSONValue& object) {
    Pin pin;
    // Format version 1 has other names for the same things.
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
    if (const std::optional<JSONValue> state = object.member("state")) {
        pin.version = owned(state->stringMember("version"));
        pin.branch = owned(state->stringMember("branch"));
        pin.revision = owned(state->stringMember("revision"));
    }
    return pin;
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

std::optional<ResolvedFile> resolvedFile(std::string_view bytes) {
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(bytes);
    const auto objects = top ? pinObjects(*top) : std::nullopt;
    if (!objects) {
        return std::nullopt;
    }
    ResolvedFile file;
    for (const JSONValue& object : *objects) {
        if (std::optional<Pin> pin = pinOf(object)) {
            file.pins.push_back(std::move(*pin));
        } else {
            ++(isLocal(object) ? file.own : file.unreadable);
        }
    }
    return file;
}

std::optional<std::vector<Pin>> pins(std::string_view resolvedFileBytes) {
    std::optional<ResolvedFile> file = resolvedFile(resolvedFileBytes);
    return file ? std::optional(std::move(file->pins)) : std::nullopt;
}

std::string packageName(std::string_view location) {
    const std::size_t end = location.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return {};
    }
    location = location.substr(0, end + 1);
    std::string_view name = location.substr(location.rfind('/') + 1);
    // The ending is compared as written: the tools that make these names do so, too.
    if (name.ends_with(".git")) {
        name.remove_suffix(4);
    }
    return std::string(name.substr(name.rfind(':') + 1));
}

}  // namespace ScanKit::SwiftPMParser
