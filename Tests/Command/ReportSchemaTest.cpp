#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Scan/ProjectDetection.h"
#include "ScanKit/Scan/Scanner.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

namespace ScanKit {
namespace {

using nlohmann::json;

/// The schema as it is shipped, and a validator that says why a report is none.
class ReportSchema {
public:
    ReportSchema() : document_(json::parse(contentOf(QUORVANE_REPORT_SCHEMA))) {
        valijson::SchemaParser().populateSchema(valijson::adapters::NlohmannJsonAdapter(document_), schema_);
    }

    const json& document() const { return document_; }

    testing::AssertionResult accepts(const json& report) const {
        valijson::Validator validator;
        valijson::ValidationResults results;
        if (validator.validate(schema_, valijson::adapters::NlohmannJsonAdapter(report), &results)) {
            return testing::AssertionSuccess();
        }
        testing::AssertionResult failure = testing::AssertionFailure();
        for (valijson::ValidationResults::Error error; results.popError(error);) {
            for (const std::string& step : error.context) {
                failure << step;
            }
            failure << ": " << error.description << "\n";
        }
        return failure;
    }

private:
    json document_;
    valijson::Schema schema_;
};

json reportOf(const std::filesystem::path& folder, bool includeDev) {
    const Detection found = detect(folder);
    const ScanResult result = Scanner::scan(
        folder, {.ecosystems = found.ecosystemsToRead({}), .useXcodeDerivedData = false}, found);
    return json::parse(Exports::json(result, {.projectName = "sample", .includeDev = includeDev}));
}

/// A package with every member, and one for each value that a member can have.
ScanResult resultOfEveryKind() {
    std::vector<Dependency> dependencies{{.name = "full",
                                          .version = "1",
                                          .source = "https://example.com/",
                                          .declared = "MIT",
                                          .license = "MIT",
                                          .matchScore = 0.5,
                                          .licenseFileNames = {"LICENSE"},
                                          .notes = {"A note."}}};
    for (const Ecosystem ecosystem : allEcosystems) {
        dependencies.push_back({.ecosystem = ecosystem});
    }
    for (const LicenseCategory category : allLicenseCategories) {
        dependencies.push_back({.category = category});
    }
    for (const LicenseBasis basis : allLicenseBases) {
        dependencies.push_back({.basis = basis});
    }
    dependencies.push_back({.flags = {allFlags.begin(), allFlags.end()}});
    ScanResult result = resultOf(std::move(dependencies));
    result.sources = {{Ecosystem::npm, "package-lock.json", "npm lockfile"}};
    result.warnings = {{.sentence = "A warning."}};
    return result;
}

TEST(ReportSchema, AcceptsEveryReport) {
    const ReportSchema schema;
    for (const char* golden : {"sample.json", "empty.json", "sample-project.json"}) {
        EXPECT_TRUE(
            schema.accepts(json::parse(contentOf(std::filesystem::path(QUORVANE_GOLDEN_FOLDER) / golden))))
            << golden;
    }
    for (const char* sample : {QUORVANE_SAMPLE_PROJECT, QUORVANE_WORKSPACE_SAMPLE}) {
        for (const bool includeDev : {false, true}) {
            EXPECT_TRUE(schema.accepts(reportOf(sample, includeDev))) << sample;
        }
    }
    for (const ScanResult& result : {resultOfEveryKind(), hostileResult()}) {
        EXPECT_TRUE(schema.accepts(json::parse(Exports::json(result, {}))));
    }
}

/// The places of all values in a document.
void addPlaces(const json& value, const json::json_pointer& place, std::vector<json::json_pointer>& places) {
    places.push_back(place);
    if (value.is_object()) {
        for (const auto& [key, member] : value.items()) {
            addPlaces(member, place / key, places);
        }
    } else if (value.is_array()) {
        for (std::size_t i = 0; i < value.size(); ++i) {
            addPlaces(value[i], place / i, places);
        }
    }
}

TEST(ReportSchema, RefusesWhatNoReportHolds) {
    const ReportSchema schema;
    ScanResult result = resultOfEveryKind();
    result.dependencies.resize(1);
    result.dependencies[0].flags = {Flag::missing};
    const json report = json::parse(Exports::json(result, {}));
    ASSERT_TRUE(schema.accepts(report));
    std::vector<json::json_pointer> places;
    addPlaces(report, json::json_pointer(), places);
    std::set<std::string> mayBeAbsent;
    for (const json::json_pointer& place : places) {
        json changed = report;
        changed[place] = nullptr;
        EXPECT_FALSE(schema.accepts(changed)) << "null for " << place;
        const json& value = report[place];
        if (value.is_object()) {
            changed = report;
            changed[place]["another"] = "member";
            EXPECT_FALSE(schema.accepts(changed)) << "another member of " << place;
        }
        if (!place.empty() && report[place.parent_pointer()].is_object()) {
            changed = report;
            changed[place.parent_pointer()].erase(place.back());
            if (schema.accepts(changed)) {
                mayBeAbsent.insert(place.back());
            }
        }
    }
    EXPECT_EQ(mayBeAbsent, (std::set<std::string>{"declared", "license", "matchScore", "source"}));

    const std::pair<const char*, json> wrong[]{
        {"/generated", "2026-01-05"},
        {"/dependencies/0/category", "permissive"},
        {"/dependencies/0/ecosystem", "SwiftPM"},
        {"/dependencies/0/matchScore", 1.5},
        {"/dependencies/0/flags/0", "gone"},
        {"/summary/copyleft", -1},
        {"/summary/dependencies", 1.5},
        {"/dependencies/0/flags", {"missing", "missing"}},
    };
    for (const auto& [place, value] : wrong) {
        json changed = report;
        changed[json::json_pointer(place)] = value;
        EXPECT_FALSE(schema.accepts(changed)) << value << " for " << place;
    }
}

TEST(ReportSchema, KnowsNoValueThatNoReportHas) {
    const json definitions = ReportSchema().document()["definitions"];
    const json& members = definitions["dependency"]["properties"];
    EXPECT_EQ(definitions["ecosystem"]["enum"].size(), allEcosystems.size());
    EXPECT_EQ(members["category"]["enum"].size(), allLicenseCategories.size());
    EXPECT_EQ(members["basis"]["enum"].size(), allLicenseBases.size());
    EXPECT_EQ(members["flags"]["items"]["enum"].size(), allFlags.size());
}

}  // namespace
}  // namespace ScanKit
