#include "ScanKit/Reports/Exports.h"

#include "ScanKit/Reports/NoticeParts.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Dates.h"
#include "ScanKit/Support/Text.h"

#include <iterator>
#include <vector>

#include <fmt/format.h>

namespace ScanKit::Exports {
namespace {

constexpr std::string_view separator =
    "==============================================================================";
static_assert(separator.size() == 78);

void appendPart(std::string& output, const NoticePart& part) {
    output += part.isNotice ? "--- NOTICE ---\n" : "";
    for (const std::string& remark : part.remarks) {
        fmt::format_to(std::back_inserter(output), "[{}]\n", remark);
    }
    if (part.text) {
        const bool isIntroduced = part.isNotice || !part.remarks.empty();
        fmt::format_to(std::back_inserter(output), "{}{}\n", isIntroduced ? "\n" : "", *part.text);
    }
}

void appendBlock(std::string& output, const Dependency& dependency) {
    fmt::format_to(std::back_inserter(output), "\n{}\n{} {}\nLicense: {}\n", separator, dependency.name,
                   dependency.version, dependency.license.value_or("Unknown – see the package"));
    if (dependency.source) {
        fmt::format_to(std::back_inserter(output), "Source: {}\n", *dependency.source);
    }
    fmt::format_to(std::back_inserter(output), "{}\n", separator);
    for (const NoticePart& part : noticeParts(dependency)) {
        output += '\n';
        appendPart(output, part);
    }
}

/// About what the file will hold, so that its text is not copied over and over while it grows.
std::size_t expectedSize(const std::vector<const Dependency*>& dependencies) {
    std::size_t size = 1'000;
    for (const Dependency* dependency : dependencies) {
        size += 500 + dependency->name.size() * 2;
        size += dependency->licenseText ? dependency->licenseText->size() : 0;
        size += dependency->noticeText ? dependency->noticeText->size() : 0;
    }
    return size;
}

}  // namespace

std::string notice(const ScanResult& result, const ReportOptions& options) {
    const std::vector<const Dependency*> dependencies = reportedDependencies(result, options);
    const std::string project = Text::oneLine(options.projectName);
    std::string output;
    output.reserve(expectedSize(dependencies));
    fmt::format_to(
        std::back_inserter(output),
        "THIRD-PARTY SOFTWARE NOTICES\n{0}\n\n"
        "{0} uses the open-source software listed below. Each package's license and copyright notices follow.\n"
        "Generated {1} with {2}. {3}\n\nPackages ({4}):\n",
        project, Dates::longDate(result.scannedAt), Text::oneLine(options.appName), disclaimer,
        dependencies.size());
    for (const Dependency* dependency : dependencies) {
        fmt::format_to(std::back_inserter(output), "  - {} {} ({})\n", dependency->name, dependency->version,
                       dependency->license.value_or("license unknown"));
    }
    for (const Dependency* dependency : dependencies) {
        appendBlock(output, *dependency);
    }
    return output;
}

}  // namespace ScanKit::Exports
