#include "Tests/Reports/SampleResult.h"

namespace ScanKit {
namespace {

constexpr Date scanDate = std::chrono::sys_days{std::chrono::year{2026} / 1 / 5} + std::chrono::hours{14} +
                          std::chrono::minutes{3} + std::chrono::seconds{22};

std::vector<Dependency> swiftPackages() {
    return {{.name = "collections-kit",
             .version = "1.1.0",
             .source = "https://example.com/acme/collections-kit",
             .license = "Apache-2.0",
             .category = LicenseCategory::permissive,
             .basis = LicenseBasis::text,
             .matchScore = 1.0,
             .licenseFileNames = {"LICENSE.txt"},
             .licenseText = "Apache License\nVersion 2.0, January 2004\n",
             .noticeText = "Collections Kit\nCopyright 2021 Acme\n"},
            {.name = "local-tools", .version = "local", .flags = {Flag::missing, Flag::notOnDisk}}};
}

std::vector<Dependency> npmPackages() {
    return {{.ecosystem = Ecosystem::npm,
             .name = "@acme/übersicht",
             .version = "2.0.0-beta.1",
             .source = "https://example.com/a/b?c=\"d\"&e=f",
             .declared = "(MIT OR GPL-3.0-only)",
             .license = "GPL-3.0-only OR MIT",
             .category = LicenseCategory::permissive,
             .basis = LicenseBasis::metadata,
             .flags = {Flag::noLicenseFile},
             .notes = {"No license file, \"MIT\" is taken.", "The standard text is reproduced."}},
            {.ecosystem = Ecosystem::npm,
             .name = "agpl-server",
             .version = "3.1.4",
             .source = "https://example.com/agpl-server",
             .declared = "AGPL-3.0",
             .license = "AGPL-3.0",
             .category = LicenseCategory::networkCopyleft,
             .basis = LicenseBasis::metadataAndText,
             .matchScore = 0.996,
             .licenseFileNames = {"LICENSE", "COPYING"},
             .licenseText = "GNU AFFERO GENERAL PUBLIC LICENSE\n\n(text)\n\n",
             .flags = {Flag::networkCopyleft, Flag::mismatch},
             .notes = {"=HYPERLINK(\"https://example.com\")", "\tindented\x01"}},
            {.ecosystem = Ecosystem::npm,
             .name = "test-runner",
             .version = "9.9.9",
             .isDev = true,
             .license = "MIT",
             .category = LicenseCategory::permissive,
             .basis = LicenseBasis::metadata}};
}

std::vector<Dependency> pythonPackages() {
    return {{.ecosystem = Ecosystem::python,
             .name = "weak-binding",
             .version = "-1",
             .declared = "EPLv2\r\nor later",
             .license = "EPL-2.0",
             .category = LicenseCategory::weakCopyleft,
             .basis = LicenseBasis::classifier,
             .flags = {Flag::weakCopyleft, Flag::noLicenseFile}},
            {.ecosystem = Ecosystem::python,
             .name = "名前-кит",
             .version = "",
             .declared = "Custom terms, see website",
             .license = "Custom",
             .matchScore = 0.125}};
}

void append(std::vector<Dependency>& all, std::vector<Dependency> more) {
    all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

ScanResult resultOf(std::vector<Dependency> dependencies) {
    return {.projectName = "demo",
            .rootPath = "/projects/demo",
            .scannedAt = scanDate,
            .dependencies = std::move(dependencies)};
}

ScanResult sampleResult() {
    ScanResult result = resultOf(swiftPackages());
    append(result.dependencies, npmPackages());
    append(result.dependencies, pythonPackages());
    result.sources = {{Ecosystem::swiftpm, "Package.resolved", "Package.resolved"},
                      {Ecosystem::npm, "web/package-lock.json", "npm lockfile"},
                      {Ecosystem::python, "~/envs/\\odd\"name", "Virtual environment"}};
    result.warnings = {"2 packages are not on this Mac: their licenses come from the lockfile alone."};
    return result;
}

ReportOptions sampleOptions() {
    return {.projectName = "Démo: A/B", .preparedFor = "Client & Co.", .preparedBy = "Studio Nord"};
}

}  // namespace ScanKit
