#include "ScanKit/Readers/Python/PythonParser.h"

#include "ScanKit/Readers/Python/PackageName.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

constexpr std::string_view licenseClassifier = "License ::";

/// What installs packages and is itself installed in every environment.
constexpr auto toolingNames =
    std::to_array<std::string_view>({"pip", "setuptools", "wheel", "distribute", "pkg-resources"});

bool isTool(std::string_view normalizedName) {
    return std::ranges::find(toolingNames, normalizedName) != toolingNames.end();
}

using Declared = std::map<std::string, Requirement>;  ///< by normalized name

/// The requirements of one kind. Of several for a package the last counts, but none without a version displaces one with.
Declared declaredByName(const std::vector<Requirement>& requirements, bool isDev) {
    Declared declared;
    for (const Requirement& requirement : requirements) {
        if (requirement.isDev != isDev) {
            continue;
        }
        const auto [place, isNew] = declared.try_emplace(normalizedName(requirement.name), requirement);
        if (!isNew && (requirement.version || !place->second.version)) {
            place->second = requirement;
        }
    }
    return declared;
}

/// What ships has the word: a package that is needed for development too is none of development alone. Only where what
/// ships is not pinned does the pin of development tell which version it is.
Declared declaredByName(const std::vector<Requirement>& requirements) {
    Declared declared = declaredByName(requirements, false);
    for (auto& [name, requirement] : declaredByName(requirements, true)) {
        const auto [place, isNew] = declared.try_emplace(name, requirement);
        if (!isNew && !place->second.version) {
            place->second.version = requirement.version;
        }
    }
    return declared;
}

RawDependency installedDependency(const Installed& distribution, bool isDev) {
    RawDependency dependency{
        .ecosystem = Ecosystem::python,
        .name = distribution.name,
        .version = distribution.version,
        .source = distribution.homepage,
        .isDev = isDev,
        .declared = distribution.licenseExpression ? distribution.licenseExpression : distribution.license,
        .folder = distribution.folder,
        .licenseFiles = distribution.licenseFiles,
    };
    // The others tell of topics, systems and ages.
    for (const std::string& classifier : distribution.classifiers) {
        if (classifier.starts_with(licenseClassifier)) {
            dependency.classifiers.push_back(classifier);
        }
    }
    return dependency;
}

}  // namespace

std::vector<RawDependency> dependencies(const std::vector<Requirement>& requirements,
                                        const InstalledPackages& installed) {
    const Declared declared = declaredByName(requirements);
    std::vector<RawDependency> result;
    for (const auto& [name, distribution] : installed) {
        const auto requirement = declared.find(name);
        const bool isDeclared = requirement != declared.end();
        // A project that asks for setuptools by name depends on it like on any other package.
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
