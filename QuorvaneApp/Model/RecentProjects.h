#pragma once

#include <filesystem>
#include <vector>

/// A project that was scanned before.
struct RecentProject {
    std::filesystem::path folder;
    bool isMissing = false;  ///< as far as was looked: moved, renamed, deleted or on a disk that is away
    bool operator==(const RecentProject&) const = default;
};

/// The projects scanned last, the newest first; ten at most. Kept in the user defaults when `persist` is on.
class RecentProjects {
public:
    explicit RecentProjects(bool persist);

    const std::vector<RecentProject>& list() const { return list_; }
    /// Puts the folder at the top; it stands in the list once.
    void add(const std::filesystem::path& folder);
    void clear();
    /// Takes over which are missing, for those that are still in the list. True when that changed anything.
    bool mark(const std::vector<RecentProject>& looked);

private:
    void save() const;

    bool persist_;
    std::vector<RecentProject> list_;
};

/// Looks on the disk which are missing. May wait for a server, so it is not for the user-interface thread.
std::vector<RecentProject> lookedUp(std::vector<RecentProject> projects);
