#include "QuorvaneApp/Model/RecentProjects.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

#include <QByteArray>
#include <QSettings>
#include <QVariant>

namespace {

constexpr std::size_t mostProjects = 10;
const QString key = QStringLiteral("window/recentProjects");

}  // namespace

RecentProjects::RecentProjects(bool persist) : persist_(persist) {
    if (!persist_) {
        return;
    }
    // The path's own bytes: a folder's name need not be valid text.
    for (const QVariant& folder : QSettings().value(key).toList()) {
        list_.push_back({.folder = folder.toByteArray().toStdString()});
    }
}

void RecentProjects::add(const std::filesystem::path& folder) {
    std::erase_if(list_, [&](const RecentProject& project) { return project.folder == folder; });
    list_.insert(list_.begin(), {.folder = folder});
    list_.resize(std::min(list_.size(), mostProjects));
    save();
}

void RecentProjects::clear() {
    list_.clear();
    save();
}

bool RecentProjects::mark(const std::vector<RecentProject>& looked) {
    bool isChanged = false;
    for (RecentProject& project : list_) {
        const auto same = std::ranges::find(looked, project.folder, &RecentProject::folder);
        if (same != looked.end() && same->isMissing != project.isMissing) {
            project.isMissing = same->isMissing;
            isChanged = true;
        }
    }
    return isChanged;
}

void RecentProjects::save() const {
    if (!persist_) {
        return;
    }
    QVariantList folders;
    for (const RecentProject& project : list_) {
        folders.push_back(QByteArray::fromStdString(project.folder.native()));
    }
    QSettings().setValue(key, folders);
}

std::vector<RecentProject> lookedUp(std::vector<RecentProject> projects) {
    for (RecentProject& project : projects) {
        std::error_code error;
        project.isMissing = !std::filesystem::is_directory(project.folder, error);
    }
    return projects;
}
