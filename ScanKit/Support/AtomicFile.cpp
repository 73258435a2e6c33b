#include "ScanKit/Support/AtomicFile.h"

#include "ScanKit/Support/FileSystem.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ScanKit {
namespace {

using Path = std::filesystem::path;

/// A name has nothing of the file's own, which may already be as long as names can be.
constexpr std::string_view namePrefix = ".quorvane-";
constexpr mode_t usualMode = 0644;  // less what the process masks

/// The names that exist at this moment and shall not outlive the process. A signal handler may neither wait nor
/// allocate, so that the places are fixed. Few files are saved at a time; of one that finds no place, the next run removes
/// what is left.
struct UnfinishedName {
    std::atomic_flag isTaken;
    std::atomic<bool> isSet = false;
    std::array<char, PATH_MAX> path{};
};
std::array<UnfinishedName, 4> unfinishedNames;

void removeUnfinished(int signal) {
    // What it interrupts may run on for a moment, and asks why its own call failed.
    const int reason = errno;
    for (const UnfinishedName& name : unfinishedNames) {
        if (name.isSet) {
            unlink(name.path.data());
        }
    }
    // The handler is gone by now, so that this one ends the process.
    raise(signal);
    errno = reason;
}

/// Keeps a name in the list above for as long as it lives.
class Registration {
public:
    explicit Registration(const Path& path) {
        if (path.native().size() >= PATH_MAX) {
            return;
        }
        for (UnfinishedName& name : unfinishedNames) {
            if (!name.isTaken.test_and_set()) {
                std::memcpy(name.path.data(), path.c_str(), path.native().size() + 1);
                name.isSet = true;
                name_ = &name;
                return;
            }
        }
    }
    ~Registration() {
        if (name_ != nullptr) {
            name_->isSet = false;
            name_->isTaken.clear();
        }
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

private:
    UnfinishedName* name_ = nullptr;
};

/// A name beside a file, removed when it was not moved away. No two processes and no two threads have the same.
class NameAside {
public:
    explicit NameAside(const Path& folder)
        : path_(folder /
                (std::string(namePrefix) + std::to_string(getpid()) + "-" + std::to_string(counter()++))),
          registration_(path_) {}
    ~NameAside() {
        if (exists_) {
            unlink(path_.c_str());
        }
    }
    NameAside(const NameAside&) = delete;
    NameAside& operator=(const NameAside&) = delete;

    const Path& path() const { return path_; }
    void setExists(bool exists) { exists_ = exists; }

private:
    static std::atomic<unsigned>& counter() {
        static std::atomic<unsigned> next = 0;
        return next;
    }

    Path path_;
    Registration registration_;
    bool exists_ = false;
};

class WrittenFile {
public:
    explicit WrittenFile(int descriptor) : descriptor_(descriptor) {
        if (isOpen()) {
            // Tells other processes that somebody still writes here, also those that do not see this one's number.
            flock(descriptor_, LOCK_EX | LOCK_NB);
        }
    }
    ~WrittenFile() {
        if (isOpen()) {
            close(descriptor_);
        }
    }
    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }

    /// Some file systems tell only with the flush that the disk is full.
    bool writeAndFlush(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) {
                return false;
            }
            bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
        return fsync(descriptor_) == 0;
    }

    /// And some only here.
    bool closeNow() { return close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};

/// What saving in one way comes to: the system's number for why it failed, or one of these.
constexpr int saved = 0;
constexpr int notPossible = -1;

bool moveInto(NameAside& aside, const Path& file) {
    if (std::rename(aside.path().c_str(), file.c_str()) != 0) {
        return false;
    }
    aside.setExists(false);
    return true;
}

/// A name is met only by what an earlier process with this one's number left, or one that does not share its numbers.
constexpr int mostAttempts = 1'000;

int saveUnnamed([[maybe_unused]] const Path& file, [[maybe_unused]] const Path& folder,
                [[maybe_unused]] const std::string& bytes) {
#ifdef O_TMPFILE
    WrittenFile unnamed(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, usualMode));
    if (!unnamed.isOpen()) {
        return notPossible;
    }
    if (!unnamed.writeAndFlush(bytes)) {
        return errno;
    }
    const std::string self = "/proc/self/fd/" + std::to_string(unnamed.descriptor());
    const auto linkTo = [&](const Path& path) {
        return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
    };
    if (linkTo(file)) {
        return saved;
    }
    // A file that exists can only be replaced by another name: it has one for this moment.
    bool isTaken = errno == EEXIST;
    for (int attempt = 0; attempt < mostAttempts && isTaken; ++attempt) {
        NameAside aside(folder);
        if (linkTo(aside.path())) {
            aside.setExists(true);
            return moveInto(aside, file) ? saved : errno;
        }
        isTaken = errno == EEXIST;
    }
    // Some file systems know unnamed files and no way to name them, and some systems have no /proc.
    return notPossible;
#else
    return notPossible;
#endif
}

int saveNamed(const Path& file, const Path& folder, const std::string& bytes) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        NameAside aside(folder);
        WrittenFile named(open(aside.path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usualMode));
        if (!named.isOpen() && errno == EEXIST) {
            continue;
        }
        aside.setExists(named.isOpen());
        // The first that fails leaves the system's reason behind.
        const bool isSaved =
            named.isOpen() && named.writeAndFlush(bytes) && named.closeNow() && moveInto(aside, file);
        return isSaved ? saved : errno;
    }
    return EEXIST;
}

/// The process that a name aside belongs to; none when it is another kind of name.
std::optional<pid_t> ownerOf(std::string_view name) {
    if (!name.starts_with(namePrefix)) {
        return std::nullopt;
    }
    name.remove_prefix(namePrefix.size());
    pid_t owner = 0;
    const char* end = name.data() + name.size();
    const auto number = std::from_chars(name.data(), end, owner);
    const std::string_view rest(number.ptr, static_cast<std::size_t>(end - number.ptr));
    const bool isOurs = number.ec == std::errc() && owner > 0 && rest.size() > 1 && rest.front() == '-' &&
                        rest.find_first_not_of("0123456789", 1) == std::string_view::npos;
    return isOurs ? std::optional(owner) : std::nullopt;
}

/// Whether no process writes this file any more.
bool isAbandoned(const Path& path, pid_t owner) {
    if (kill(owner, 0) == 0 || errno != ESRCH) {
        return false;
    }
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    const bool isFree = descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    if (descriptor >= 0) {
        close(descriptor);
    }
    return isFree;
}

void removeLeftovers(const Path& folder) {
    for (const FolderEntry& entry : listPackageFolder(folder)) {
        const std::optional<pid_t> owner = ownerOf(entry.name);
        const bool isFile = entry.kind == EntryKind::file && !entry.isLink;
        if (owner && isFile && isAbandoned(folder / entry.name, *owner)) {
            unlink((folder / entry.name).c_str());
        }
    }
}

/// Makes a renaming last through a power failure. Where a folder cannot be flushed the file is still whole,
/// so that this failing is no failure to save.
void flushFolder(const Path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

}  // namespace

std::optional<std::string> saveFile(const Path& file, const std::string& bytes, UnfinishedFile kind) {
    const Path folder = file.has_parent_path() ? file.parent_path() : ".";
    removeLeftovers(folder);
    int outcome = kind == UnfinishedFile::unnamed ? saveUnnamed(file, folder, bytes) : notPossible;
    if (outcome == notPossible) {
        outcome = saveNamed(file, folder, bytes);
    }
    if (outcome != saved) {
        return std::generic_category().message(outcome);
    }
    flushFolder(folder);
    return std::nullopt;
}

void removeUnfinishedFilesOnSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
            action.sa_handler = removeUnfinished;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            sigemptyset(&action.sa_mask);
            sigaction(signal, &action, nullptr);
        }
    }
}

}  // namespace ScanKit
