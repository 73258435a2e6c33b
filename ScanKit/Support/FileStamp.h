#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct stat;

namespace ScanKit {

/// What tells one state of a file or folder from every other without reading it: a change of its content, its name or its
/// rights moves the last of these times, which no program can set.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< in nanoseconds, as the next
    std::int64_t changed = 0;

    bool operator==(const FileStamp&) const = default;

    static FileStamp of(const struct stat& status);
};

/// The files and folders that something was made of, each as it was then.
class SeenFiles {
public:
    using Time = std::chrono::sys_time<std::chrono::nanoseconds>;

    /// Without a stamp, for what could not be read or may change without a trace, the whole is worth nothing later.
    void add(std::string path, const std::optional<FileStamp>& stamp);

    /// Whether all have last been changed before this time. A change within the same step of a file system's clock as the
    /// reading leaves no trace, so what is younger than a reading by little is not to be relied on.
    bool wereSettledBy(Time time) const;
    /// Whether all are there as they were, links followed.
    bool areUnchanged() const;

private:
    struct Seen {
        std::string path;
        FileStamp stamp;
    };
    std::vector<Seen> files_;
    bool isComplete_ = true;
};

}  // namespace ScanKit
