#include "ScanKit/Readers/NPM/PackageJSON.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

/// The link as written, unless nothing of it would be left as a web link ("git+").
std::optional<std::string> unlessEmptyLink(std::optional<std::string_view> link) {
    return link && !Text::isBlank(webLink(*link)) ? std::optional<std::string>(*link) : std::nullopt;
}

std::optional<std::string> typeOrText(const JSONValue& license) {
    const auto text = license.isObject() ? license.stringMember("type") : license.string();
    return text && !Text::isBlank(*text) ? std::optional<std::string>(*text) : std::nullopt;
}

void applyManifest(RawDependency& dependency, const JSONValue& manifest) {
    if (std::optional<std::string> license = declaredLicense(manifest)) {
        dependency.declared = std::move(license);
    }
    if (const auto version = manifest.stringMember("version"); version && !version->empty()) {
        dependency.version = *version;
    }
    if (const auto name = manifest.stringMember("name"); name && !name->empty()) {
        dependency.name = *name;
    }
    if (const std::optional<std::string> repository = repositoryLink(manifest)) {
        dependency.source = webLink(*repository);
    }
}

}  // namespace

void applyManifest(RawDependency& dependency, std::string_view bytes) {
    thread_local JSONReader reader;  // keeps its buffers from package to package
    if (const std::optional<JSONValue> manifest = reader.read(bytes)) {
        applyManifest(dependency, *manifest);
    }
}

std::optional<std::string> declaredLicense(const JSONValue& package) {
    if (const std::optional<JSONValue> license = package.member("license")) {
        if (std::optional<std::string> declared = typeOrText(*license)) {
            return declared;
        }
    }
    const std::optional<JSONValue> legacy = package.member("licenses");
    std::vector<std::string> choices;
    for (const JSONValue& license : legacy ? legacy->elements() : std::vector<JSONValue>{}) {
        if (std::optional<std::string> choice = typeOrText(license)) {
            choices.push_back(std::move(*choice));
        }
    }
    // The old form offered its licenses for the user to choose from.
    if (choices.size() > 1) {
        return "(" + Text::joined(choices, " OR ") + ")";
    }
    return choices.empty() ? std::nullopt : std::optional(choices.front());
}

std::optional<std::string_view> licenseFileReference(std::string_view declared) {
    constexpr std::string_view pointer = "SEE LICENSE IN ";
    const std::string_view start = Text::prefix(declared, pointer.size());
    if (Text::uppercased(start) != pointer) {
        return std::nullopt;
    }
    return Text::trimmed(declared.substr(start.size()));
}

std::optional<std::string> repositoryLink(const JSONValue& package) {
    if (const std::optional<JSONValue> repository = package.member("repository")) {
        const auto link = repository->isObject() ? repository->stringMember("url") : repository->string();
        if (std::optional<std::string> written = unlessEmptyLink(link)) {
            return written;
        }
    }
    return unlessEmptyLink(package.stringMember("homepage"));
}

std::string webLink(std::string_view repository) {
    constexpr std::string_view codeHost = "https://github.com/";
    std::string link(repository);
    const auto replacePrefix = [&link](std::string_view prefix, std::string_view replacement) {
        if (link.starts_with(prefix)) {
            link.replace(0, prefix.size(), replacement);
        }
    };
    // Each step works on what the one before left, so "git+github:owner/name" takes the first two.
    replacePrefix("git+", "");
    replacePrefix("github:", codeHost);
    if (link.find(':') == std::string::npos) {
        std::vector<std::string_view> pieces = Text::split(link, "/");
        std::erase(pieces, "");
        if (pieces.size() == 2) {
            link.insert(0, codeHost);
        }
    }
    replacePrefix("git://", "https://");
    replacePrefix("ssh://git@", "https://");
    if (link.ends_with(".git")) {
        link.erase(link.size() - 4);
    }
    return link;
}

}  // namespace ScanKit::NPMParser
