#pragma once

#include "ScanKit/Support/FileStamp.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace ScanKit {

/// What was made of files, for whoever comes to make the same again: each value is given back as long as all that it was made of
/// is there unchanged. Holds what the latest complete round used or made, and nothing else. Any number of rounds
/// may use it at the same time, each from any thread.
class FileCache {
public:
    /// How long before a round a file must have been changed last for what is made of it to be kept: more than the step of
    /// the clocks of file systems, the coarsest of which count in two seconds.
    static constexpr std::chrono::nanoseconds defaultSettlingTime = std::chrono::seconds(3);

    explicit FileCache(std::chrono::nanoseconds settlingTime = defaultSettlingTime)
        : settlingTime_(settlingTime) {}

    /// Of the latest complete round.
    struct Statistics {
        std::size_t reused = 0;  ///< values that were there and still good
        std::size_t made = 0;    ///< values that had to be made
    };
    Statistics statistics() const;

    class Round;

private:
    struct Entry {
        SeenFiles seen;
        std::shared_ptr<const void> value;
        std::atomic<std::uint64_t> usedIn;  ///< the number of the latest round
    };
    /// Found by a view of a name, since a scan asks for thousands.
    struct HashOfName : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Entries = std::unordered_map<std::string, std::shared_ptr<Entry>, HashOfName, std::equal_to<>>;

    const std::chrono::nanoseconds settlingTime_;
    mutable std::mutex lock_;  ///< of all that follows
    std::unordered_map<std::type_index, Entries> entries_;
    Statistics statistics_;
    std::uint64_t rounds_ = 0;
};

/// One use of a cache, such as a scan.
class FileCache::Round {
public:
    explicit Round(FileCache& cache);

    /// The value of this type and name, when nothing that it was made of has changed; else null.
    template <typename Value>
    std::shared_ptr<const Value> find(std::string_view name) {
        return std::static_pointer_cast<const Value>(found(typeid(Value), name));
    }
    /// Keeps a value for later rounds, unless what it was made of has changed too shortly ago to tell.
    template <typename Value>
    void keep(std::string name, SeenFiles seen, std::shared_ptr<const Value> value) {
        keep(std::type_index(typeid(Value)), std::move(name), std::move(seen), std::move(value));
    }

    /// Drops what this round neither used nor made. Not to be called after half of one.
    void complete();

private:
    std::shared_ptr<const void> found(std::type_index type, std::string_view name);
    void keep(std::type_index type, std::string name, SeenFiles seen, std::shared_ptr<const void> value);

    FileCache& cache_;
    const SeenFiles::Time settledBy_;
    std::uint64_t number_ = 0;
    std::atomic<std::size_t> reused_ = 0;
    std::atomic<std::size_t> made_ = 0;
    std::atomic<std::size_t> used_ = 0;  ///< entries of this round
};

}  // namespace ScanKit
