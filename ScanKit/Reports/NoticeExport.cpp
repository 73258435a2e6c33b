#include "ScanKit/Reports/Exports.h"

#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/ReproducedTexts.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Dates.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <optional>
#include <vector>

#include <fmt/format.h>

namespace ScanKit::Exports {
namespace {

constexpr std::string_view separator =
    "==============================================================================";
static_assert(separator.size() == 78);

/// The built-in texts that the license calls for; none when there is not a single one.
std::vector<ReproducedText> standardTextsOf(const std::string& license) {
    const std::optional<LicenseExpression> expression = LicenseExpression::parse(license);
    if (!expression) {
        return {};
    }
    std::vector<ReproducedText> texts = reproducedTexts(*expression);
    const bool hasAny =
        std::ranges::any_of(texts, [](const ReproducedText& one) { return one.text.has_value(); });
    return hasAny ? texts : std::vector<ReproducedText>();
}

void appendLicenseText(std::string& output, const Dependency& dependency) {
    if (dependency.licenseText) {
        output += *dependency.licenseText;
        output += '\n';
        return;
    }
    // The author's own text, copyright line included, is always better than the standard one.
    const auto texts =
        dependency.license ? standardTextsOf(*dependency.license) : std::vector<ReproducedText>();
    if (texts.empty()) {
        output += "[No license text was found for this package. See its source for license terms.]\n";
        return;
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        output += i == 0 ? "" : "\n";
        if (texts[i].text) {
            fmt::format_to(
                std::back_inserter(output),
                "[No license file was included with this package. The standard {} text follows.]\n\n{}\n",
                texts[i].identifier, *texts[i].text);
        } else {
            fmt::format_to(std::back_inserter(output),
                           "[The text of {} is not included. See the package's source for it.]\n",
                           texts[i].identifier);
        }
    }
}

void appendBlock(std::string& output, const Dependency& dependency) {
    fmt::format_to(std::back_inserter(output), "\n{}\n{} {}\nLicense: {}\n", separator, dependency.name,
                   dependency.version, dependency.license.value_or("Unknown – see the package"));
    if (dependency.source) {
        fmt::format_to(std::back_inserter(output), "Source: {}\n", *dependency.source);
    }
    fmt::format_to(std::back_inserter(output), "{}\n\n", separator);
    appendLicenseText(output, dependency);
    if (dependency.noticeText) {
        fmt::format_to(std::back_inserter(output), "\n--- NOTICE ---\n\n{}\n", *dependency.noticeText);
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
