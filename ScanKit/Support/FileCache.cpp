#include "ScanKit/Support/FileCache.h"

namespace ScanKit {

FileCache::Statistics FileCache::statistics() const {
    const std::lock_guard guard(lock_);
    return statistics_;
}

FileCache::Round::Round(FileCache& cache)
    : cache_(cache), settledBy_(std::chrono::system_clock::now() - cache.settlingTime_) {
    const std::lock_guard guard(cache_.lock_);
    number_ = ++cache_.rounds_;
}

std::shared_ptr<const void> FileCache::Round::found(std::type_index type, std::string_view name) {
    std::shared_ptr<Entry> entry;
    {
        const std::lock_guard guard(cache_.lock_);
        const Entries& entries = cache_.entries_[type];
        if (const auto place = entries.find(name); place != entries.end()) {
            entry = place->second;
        }
    }
    // Asked without the lock, since it is nearly all that this takes.
    if (!entry || !entry->seen.areUnchanged()) {
        return nullptr;
    }
    // Counted once, however often it is asked for.
    if (entry->usedIn.exchange(number_) != number_) {
        ++reused_;
        ++used_;
    }
    return entry->value;
}

void FileCache::Round::keep(std::type_index type, std::string name, SeenFiles seen,
                            std::shared_ptr<const void> value) {
    ++made_;
    if (seen.wereSettledBy(settledBy_)) {
        auto entry = std::make_shared<Entry>(std::move(seen), std::move(value), number_);
        const std::lock_guard guard(cache_.lock_);
        std::shared_ptr<Entry>& place = cache_.entries_[type][std::move(name)];
        used_ += place && place->usedIn == number_ ? 0 : 1;
        place = std::move(entry);
    }
}

void FileCache::Round::complete() {
    const std::lock_guard guard(cache_.lock_);
    std::size_t count = 0;
    for (const auto& [type, entries] : cache_.entries_) {
        count += entries.size();
    }
    // Mostly nothing is left behind, and looking at each to find that out takes as long as a twentieth of a scan.
    for (auto& [type, entries] : cache_.entries_) {
        if (count != used_) {
            std::erase_if(entries, [this](const auto& entry) { return entry.second->usedIn < number_; });
        }
    }
    cache_.statistics_ = {.reused = reused_, .made = made_};
}

}  // namespace ScanKit
