#pragma once

#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Model/ScanOptions.h"
#include "ScanKit/Model/ScanSource.h"
#include "ScanKit/Model/ScanWarning.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace ScanKit {

/// The reading of one project: what to read, and what was found so far. The readers of the ecosystems add to it, one after the
/// other.
struct Reading {
    const std::filesystem::path& root;
    const ScanOptions& options;
    const Detection& detection;
    const ReadControl& control;

    std::vector<std::shared_ptr<const RawDependency>> packages;
    std::vector<ScanSource> sources;
    std::vector<ScanWarning> warnings;

    /// The way of readers' packages into the result: what they say is made fit for reports.
    void append(std::vector<RawDependency> found);
    /// The same of packages that are so already.
    void append(std::vector<std::shared_ptr<const RawDependency>> found);
    void addSource(Ecosystem ecosystem, const std::filesystem::path& path, std::string_view kind);
    /// A source with what became of its entries; warns of those that could not be read.
    void addLockfile(Ecosystem ecosystem, const std::filesystem::path& path, std::string_view kind,
                     const EntryStates& states);
    void warn(ScanWarning warning);
};

void readSwiftPackages(Reading& reading);
void readNPMPackages(Reading& reading);
void readPythonPackages(Reading& reading);

}  // namespace ScanKit
