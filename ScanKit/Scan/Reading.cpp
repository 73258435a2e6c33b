#include "ScanKit/Scan/Reading.h"

#include "ScanKit/Readers/ReportableText.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace ScanKit {

void Reading::append(std::vector<RawDependency> found) {
    for (RawDependency& package : found) {
        makeReportable(package);
        packages.push_back(std::make_shared<const RawDependency>(std::move(package)));
    }
}

void Reading::append(std::vector<std::shared_ptr<const RawDependency>> found) {
    std::ranges::move(found, std::back_inserter(packages));
}

void Reading::addSource(Ecosystem ecosystem, const std::filesystem::path& path, std::string_view kind) {
    sources.push_back({ecosystem, displayPath(path, root), std::string(kind), std::nullopt});
}

void Reading::addLockfile(Ecosystem ecosystem, const std::filesystem::path& path, std::string_view kind,
                          const EntryStates& states) {
    sources.push_back({ecosystem, displayPath(path, root), std::string(kind), states});
    if (states.unreadable > 0) {
        warn(Warnings::entriesUnreadable(path, states.unreadable, root));
    }
}

void Reading::warn(ScanWarning warning) {
    warnings.push_back(std::move(warning));
}

}  // namespace ScanKit
