#include "Tests/Reports/SampleResult.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

constexpr Date scanDate = std::chrono::sys_days{std::chrono::year{2026} / 1 / 5} + std::chrono::hours{14} +
                          std::chrono::minutes{3} + std::chrono::seconds{22};

std::vector<Dependency> sampleDependencies() {
    using enum Ecosystem;
    return {{.ecosystem = swiftpm,
             .name = "collections-kit",
             .version = "1.1.0",
             .source = "https://example.com/acme/collections-kit",
             .license = "Apache-2.0",
             .category = LicenseCategory::permissive,
             .basis = LicenseBasis::text,
             .matchScore = 1.0,
             .licenseFileNames = {"LICENSE.txt"},
             .licenseText = "Apache License\nVersion 2.0, January 2004\n",
             .noticeText = "Collections Kit\nCopyright 2021 Acme\n"},
            {.name = "local-tools", .version = "local", .flags = {Flag::missing, Flag::notOnDisk}},
            {.ecosystem = npm,
             .name = "@acme/übersicht",
             .version = "2.0.0-beta.1",
             .source = "https://example.com/a/b?c=\"d\"&e=f",
             .declared = "(MIT OR GPL-3.0-only)",
             .license = "GPL-3.0-only OR MIT",
             .category = LicenseCategory::permissive,
             .basis = LicenseBasis::metadata,
             .flags = {Flag::noLicenseFile},
             .notes = {"No license file, \"MIT\" is taken.", "The standard text is reproduced."}},
            {.ecosystem = npm,
             .name = "agpl-server",
             .version = "3.1.4",
             .source = "https://example.com/agpl-server",
             .declared = "AGPL-3.0",
             .license = "AGPL-3.0",
             .category = LicenseCategory::networkCopyleft,
             .basis = LicenseBasis::metadataAndText,
             .matchScore = 0.996,
             .licenseFileNames = {"LICENSE", "COPYING"},
             .licenseText = "\n GNU AFFERO GENERAL PUBLIC LICENSE\n\n(text)\n\n",
             .flags = {Flag::networkCopyleft, Flag::mismatch},
             .notes = {"=HYPERLINK(\"https://example.com\")", "\tindented\x01"}},
            {.ecosystem = npm, .name = "test-runner", .version = "9.9.9", .isDev = true, .license = "MIT"},
            {.ecosystem = python,
             .name = "weak-binding",
             .version = "-1",
             .declared = "EPLv2\r\nor later",
             .license = "EPL-2.0",
             .category = LicenseCategory::weakCopyleft,
             .basis = LicenseBasis::classifier,
             .flags = {Flag::weakCopyleft, Flag::noLicenseFile}},
            {.ecosystem = python,
             .name = "名前-кит",
             .declared = "Custom terms, see website",
             .license = "Custom",
             .matchScore = 0.125}};
}

}  // namespace

ScanResult resultOf(std::vector<Dependency> dependencies) {
    return {.projectName = "demo",
            .rootPath = "/projects/demo",
            .scannedAt = scanDate,
            .dependencies = std::move(dependencies)};
}

ScanResult sampleResult() {
    ScanResult result = resultOf(sampleDependencies());
    result.sources = {{Ecosystem::swiftpm, "Package.resolved", "Package.resolved"},
                      {Ecosystem::npm, "web/package-lock.json", "npm lockfile"},
                      {Ecosystem::npm, "web/node_modules", "Installed packages"},
                      {Ecosystem::python, "~/envs/\\odd\"name", "Virtual environment"}};
    result.warnings = {
        {.sentence = "2 packages are not on this Mac: their licenses come from the lockfile alone."}};
    return result;
}

ScanResult hostileResult() {
    ScanResult result =
        resultOf({{.name = std::string(10'000, 'W'),
                   .version = "עברית mixed עם English",
                   .source = "https://example.com/" + std::string(3'000, '\''),
                   .license = std::string(700, 'L'),
                   .flags = {Flag::unknown},
                   .notes = {std::string(200, '\x01') + std::string(4'000, 'n'), "\xF0\x9F"}}});
    result.sources.assign(2'000, {Ecosystem::npm, "a/package-lock.json", "npm lockfile"});
    return result;
}

ReportOptions sampleOptions() {
    return {.projectName = "Démo: A/B", .preparedFor = "Client & Co.", .preparedBy = "Studio Nord"};
}

void expectGolden(const std::string& name, const std::string& written) {
    const std::filesystem::path file = std::filesystem::path(QUORVANE_GOLDEN_FOLDER) / name;
    if (std::getenv("QUORVANE_REWRITE_GOLDEN") != nullptr) {
        std::ofstream(file, std::ios::binary) << written;
    }
    EXPECT_EQ(contentOf(file), written) << name;
}

}  // namespace ScanKit
