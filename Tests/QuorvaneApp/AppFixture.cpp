#include "Tests/QuorvaneApp/AppFixture.h"

#include <array>
#include <chrono>
#include <fstream>
#include <utility>

#include <QCoreApplication>
#include <QSettings>

using ScanKit::Dependency;
using ScanKit::Ecosystem;

namespace {

/// A test that fails before it releases a scan must still come to its end.
constexpr std::chrono::seconds longestHold{10};

}  // namespace

ScanFindings HeldScans::run(const ScanRequest& request, const ScanKit::ScanControl& control) {
    std::unique_lock guard(lock_);
    const std::size_t index = begun_.size();
    begun_.push_back(request);
    if (control.progress) {
        control.progress({.done = 3, .total = 7, .name = "left-pad"});
    }
    changed_.wait_for(guard, longestHold, [&] { return released_.contains(index); });
    stopped_[index] = control.stop.stop_requested();
    return released_[index];
}

Dependency package(const std::string& name, Ecosystem ecosystem) {
    return {.ecosystem = ecosystem,
            .name = name,
            .version = "1.0.0",
            .license = "MIT",
            .category = ScanKit::LicenseCategory::permissive,
            .basis = ScanKit::LicenseBasis::metadata};
}

Dependency flagged(const std::string& name, std::vector<ScanKit::Flag> flags,
                   ScanKit::LicenseCategory category, std::optional<std::string> license) {
    Dependency dependency = package(name);
    dependency.flags = std::move(flags);
    dependency.category = category;
    dependency.license = std::move(license);
    return dependency;
}

ScanFindings findings(std::vector<Dependency> dependencies, std::vector<ScanKit::ScanWarning> warnings) {
    ScanFindings found;
    const std::array lists{&found.detection.resolvedFiles, &found.detection.npmLockfiles,
                           &found.detection.poetryLocks};
    for (const Dependency& dependency : dependencies) {
        *lists[static_cast<std::size_t>(dependency.ecosystem)] = {"one"};
    }
    found.result.dependencies = std::move(dependencies);
    found.result.warnings = std::move(warnings);
    return found;
}

ScanFunction alwaysFinding(ScanFindings found) {
    return [found = std::move(found)](const ScanRequest&, const ScanKit::ScanControl&) { return found; };
}

TemporarySettings::TemporarySettings() {
    QCoreApplication::setOrganizationName(u"Quorvane"_s);
    QCoreApplication::setApplicationName(u"Quorvane"_s);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, directory_.path());
}

std::filesystem::path ProjectFolder::folder(const std::string& name) const {
    std::filesystem::create_directories(path() / name);
    return path() / name;
}

std::filesystem::path ProjectFolder::write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((path() / name).parent_path());
    std::ofstream(path() / name, std::ios::binary) << content;
    return path() / name;
}

ModelFixture::ModelFixture(ScanFunction scan, AppModel::SaveFunction save, bool persist)
    : model(persist, {.folderChooser = chooser,
                      .fileRevealer = revealer,
                      .scan = std::move(scan),
                      .save = std::move(save)}) {}

QString ModelFixture::shown() const {
    QStringList names;
    for (const int row : model.rows()) {
        names.push_back(
            QString::fromStdString(model.project()->dependencies()[static_cast<std::size_t>(row)].name));
    }
    return names.join(u' ');
}

QDebug ScanKit::operator<<(QDebug debug, const ReportOptions& options) {
    for (const std::string& text :
         {options.projectName, options.preparedFor, options.preparedBy, options.appName}) {
        debug << QString::fromStdString(text);
    }
    return debug << (options.includeDev ? "with dev-only packages" : "without dev-only packages");
}
