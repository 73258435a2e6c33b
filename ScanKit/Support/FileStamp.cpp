#include "ScanKit/Support/FileStamp.h"

#include <algorithm>
#include <utility>

#include <sys/stat.h>

namespace ScanKit {
namespace {

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

FileStamp FileStamp::of(const struct stat& status) {
#ifdef __APPLE__
    const timespec modified = status.st_mtimespec;
    const timespec changed = status.st_ctimespec;
#else
    const timespec modified = status.st_mtim;
    const timespec changed = status.st_ctim;
#endif
    return {.device = static_cast<std::uint64_t>(status.st_dev),
            .number = static_cast<std::uint64_t>(status.st_ino),
            .size = static_cast<std::uint64_t>(status.st_size),
            .modified = nanoseconds(modified),
            .changed = nanoseconds(changed)};
}

void SeenFiles::add(std::string path, const std::optional<FileStamp>& stamp) {
    if (stamp) {
        files_.push_back({std::move(path), *stamp});
    } else {
        isComplete_ = false;
    }
}

bool SeenFiles::wereSettledBy(Time time) const {
    const std::int64_t latest = time.time_since_epoch().count();
    return isComplete_ && std::ranges::all_of(files_, [&](const Seen& file) {
               return file.stamp.modified < latest && file.stamp.changed < latest;
           });
}

bool SeenFiles::areUnchanged() const {
    return isComplete_ && std::ranges::all_of(files_, [](const Seen& file) {
               struct stat status {};
               return stat(file.path.c_str(), &status) == 0 && FileStamp::of(status) == file.stamp;
           });
}

}  // namespace ScanKit
