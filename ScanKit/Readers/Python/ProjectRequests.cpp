#include "ScanKit/Readers/Python/ProjectRequests.h"

#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/TOML.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

/// The value below these tables, or null.
const DataValue* below(const DataValue* value, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        value = value == nullptr ? nullptr : value->member(name);
    }
    return value;
}

const std::vector<DataValue::Member>& membersOf(const DataValue* value) {
    static const std::vector<DataValue::Member> none;
    return value == nullptr ? none : value->members();
}

void appendRequests(const DataValue* texts, std::vector<PackageRequest>& requests) {
    std::ranges::move(requestsOfTexts(texts), std::back_inserter(requests));
}

/// Lists of requests by the name of a group. A group that takes in another adds nothing: each is read for itself.
void readDevelopmentGroups(const DataValue* groups, ProjectRequests& project) {
    for (const auto& [name, requests] : membersOf(groups)) {
        project.developmentGroups.insert(normalizedName(name));
        appendRequests(&requests, project.development);
    }
}

/// Beside the standard's tables Poetry's own add where a package comes from, not that it is needed.
void readPoetryDependencies(const DataValue* dependencies, ProjectRequests& project) {
    std::set<std::string> known{"python"};
    for (const auto* requests : {&project.shipped, &project.shippedIfPresent}) {
        std::ranges::transform(*requests, std::inserter(known, known.end()), &PackageRequest::name);
    }
    for (const auto& [name, value] : membersOf(dependencies)) {
        PoetryDependency dependency = poetryDependency(name, value);
        if (!known.contains(normalizedName(name))) {
            std::ranges::move(
                dependency.requests,
                std::back_inserter(dependency.isOptional ? project.shippedIfPresent : project.shipped));
        }
    }
}

void readPoetryGroup(std::string_view group, const DataValue* dependencies, ProjectRequests& project) {
    project.developmentGroups.insert(normalizedName(group));
    for (const auto& [name, value] : membersOf(dependencies)) {
        std::ranges::move(poetryDependency(name, value).requests, std::back_inserter(project.development));
    }
}

PackageRequest poetryRequest(std::string_view name, const DataValue& value) {
    PackageRequest request{.name = normalizedName(name)};
    for (const std::string_view extra : textsOf(value.member("extras"))) {
        request.extras.push_back(normalizedName(extra));
    }
    const auto version = value.isTable() ? value.textMember("version") : value.text();
    // "1.2.3" and "==1.2.3" ask for one version; other words are ranges.
    if (version && !version->empty() && version->find_first_of("<>^~*,|! ") == std::string_view::npos) {
        request.version =
            std::string(version->substr(std::min(version->find_first_not_of('='), version->size())));
    }
    for (const std::string_view condition : {"markers", "python", "platform"}) {
        request.isConditional = request.isConditional || value.member(condition) != nullptr;
    }
    return request;
}

}  // namespace

const std::vector<DataValue>& elementsOf(const DataValue* list) {
    static const std::vector<DataValue> none;
    return list == nullptr ? none : list->elements();
}

std::vector<std::string_view> textsOf(const DataValue* list) {
    std::vector<std::string_view> texts;
    for (const DataValue& element : elementsOf(list)) {
        if (const auto text = element.text()) {
            texts.push_back(*text);
        }
    }
    return texts;
}

std::vector<PackageRequest> requestsOfTexts(const DataValue* list) {
    std::vector<PackageRequest> requests;
    for (const std::string_view text : textsOf(list)) {
        if (std::optional<PackageRequest> request = packageRequest(text)) {
            requests.push_back(std::move(*request));
        }
    }
    return withAlternativesNeeded(std::move(requests));
}

PoetryDependency poetryDependency(std::string_view name, const DataValue& value) {
    PoetryDependency dependency;
    if (!value.isList()) {
        dependency.requests.push_back(poetryRequest(name, value));
        dependency.isOptional = value.isTrue("optional");
        return dependency;
    }
    for (const DataValue& one : value.elements()) {
        dependency.requests.push_back(poetryRequest(name, one));
        dependency.isOptional = dependency.isOptional || one.isTrue("optional");
    }
    dependency.requests = withAlternativesNeeded(std::move(dependency.requests));
    return dependency;
}

std::optional<ProjectRequests> projectRequests(const std::optional<std::string>& pyproject) {
    const std::optional<DataValue> top = pyproject ? readTOML(*pyproject) : std::nullopt;
    if (!top) {
        return std::nullopt;
    }
    const DataValue* const standard = top->member("project");
    const DataValue* const poetry = below(&*top, {"tool", "poetry"});
    const std::vector<std::string_view> elsewhere = textsOf(below(standard, {"dynamic"}));
    const bool leavesToOthers =
        standard == nullptr || std::ranges::find(elsewhere, "dependencies") != elsewhere.end();
    if (leavesToOthers && below(poetry, {"dependencies"}) == nullptr) {
        return std::nullopt;
    }
    ProjectRequests project;
    appendRequests(below(standard, {"dependencies"}), project.shipped);
    for (const auto& [extra, requests] : membersOf(below(standard, {"optional-dependencies"}))) {
        appendRequests(&requests, project.shippedIfPresent);
    }
    readDevelopmentGroups(top->member("dependency-groups"), project);
    readDevelopmentGroups(below(&*top, {"tool", "pdm", "dev-dependencies"}), project);
    readPoetryDependencies(below(poetry, {"dependencies"}), project);
    if (const DataValue* const dependencies = below(poetry, {"dev-dependencies"})) {
        readPoetryGroup("dev", dependencies, project);
    }
    for (const auto& [group, value] : membersOf(below(poetry, {"group"}))) {
        readPoetryGroup(group, value.member("dependencies"), project);
    }
    return project;
}

}  // namespace ScanKit::PythonParser
