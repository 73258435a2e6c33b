#include "ScanKit/Readers/Python/PythonParser.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Scan/Reading.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ScanKit {
namespace {

std::vector<PythonParser::Requirement> readRequirements(Reading& reading) {
    std::vector<PythonParser::Requirement> requirements;
    const auto read = [&](const std::filesystem::path& file, std::string_view kind, const auto& parse) {
        const std::optional<std::string> text = readTextFile(file, largestLockfile);
        if (!text) {
            reading.warn(Warnings::dependencyFileUnreadable(file, reading.root));
            return;
        }
        std::ranges::move(parse(*text), std::back_inserter(requirements));
        reading.addSource(Ecosystem::python, file, kind);
    };
    for (const std::filesystem::path& file : reading.detection.requirementFiles) {
        const std::string name = Text::lowercased(displayName(file));
        const bool isDev = name.find("dev") != std::string::npos || name.find("test") != std::string::npos;
        read(file, "requirements",
             [&](std::string_view text) { return PythonParser::requirementsFromText(text, isDev); });
    }
    for (const std::filesystem::path& file : reading.detection.poetryLocks) {
        read(file, "Poetry lockfile", PythonParser::requirementsFromPoetryLock);
    }
    return requirements;
}

}  // namespace

void readPythonPackages(Reading& reading) {
    const std::vector<PythonParser::Requirement> requirements = readRequirements(reading);
    const std::vector<std::filesystem::path>& environments = reading.options.pythonEnvironments.empty()
                                                                 ? reading.detection.virtualEnvs
                                                                 : reading.options.pythonEnvironments;
    std::vector<std::filesystem::path> sitePackages;
    for (const std::filesystem::path& environment : environments) {
        for (std::filesystem::path& folder : PythonParser::sitePackages(environment)) {
            reading.addSource(Ecosystem::python, folder, "Installed packages");
            sitePackages.push_back(std::move(folder));
        }
    }
    const PythonParser::InstalledPackages installed = PythonParser::installed(sitePackages, reading.control);
    reading.append(PythonParser::dependencies(requirements, installed));
    // With something installed, a requirement that is not has a note of its own.
    if (installed.empty() && !requirements.empty()) {
        reading.warn(Warnings::pythonEnvironmentMissing());
    }
}

}  // namespace ScanKit
