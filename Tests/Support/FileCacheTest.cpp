#include "ScanKit/Support/FileCache.h"

#include "ScanKit/Support/FileSystem.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using namespace std::chrono_literals;

/// A text that is the content of a file, from the cache if it is known there.
std::shared_ptr<const std::string> contentIn(FileCache::Round& round, const std::filesystem::path& file) {
    if (auto known = round.find<std::string>(file.native())) {
        return known;
    }
    SeenFiles seen;
    const auto read = readFile(file, 100, PathKind::unknown, &seen);
    auto content = std::make_shared<const std::string>(read.value_or("none"));
    round.keep(file.native(), std::move(seen), content);
    return content;
}

TEST(FileCache, KeepsWhatTheLatestCompleteRoundUsed) {
    const TemporaryFolder folder{{"a", "1"}, {"b", "2"}, {"large", std::string(101, 'x')}};
    std::this_thread::sleep_for(20ms);
    FileCache cache(10ms);
    const auto round = [&](std::initializer_list<const char*> files, bool isComplete) {
        FileCache::Round one(cache);
        for (const char* file : files) {
            contentIn(one, folder / file);
        }
        if (isComplete) {
            one.complete();
        }
        return std::pair(cache.statistics().reused, cache.statistics().made);
    };
    using Counts = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(round({"a", "b"}, true), Counts(0, 2));
    EXPECT_EQ(round({"a", "b", "a"}, true), Counts(2, 0));
    EXPECT_EQ(round({"a"}, false), Counts(2, 0)) << "half a round drops nothing and counts nothing";
    EXPECT_EQ(round({"b"}, true), Counts(1, 0));
    EXPECT_EQ(round({"a", "b"}, true), Counts(1, 1)) << "the round before had no use for the first";
    EXPECT_EQ(round({"large", "gone"}, true), Counts(0, 2));
    EXPECT_EQ(round({"large", "gone"}, true), Counts(0, 2)) << "what could not be read is never known";
}

TEST(FileCache, KnowsNothingOfAFileThatJustChanged) {
    const TemporaryFolder folder{{"a", "1"}};
    const std::filesystem::path file = folder / "a";
    // Whoever writes a file may say when that was; the system notes for itself when it saw the change.
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - 24h);
    FileCache cache(10s);
    for (int i = 0; i < 2; ++i) {
        FileCache::Round round(cache);
        contentIn(round, file);
        round.complete();
        EXPECT_EQ(cache.statistics().made, 1U);
    }
    FileCache bold(-1s);
    FileCache::Round first(bold);
    contentIn(first, file);
    EXPECT_NE(FileCache::Round(bold).find<std::string>(file.native()), nullptr);
    EXPECT_EQ(FileCache::Round(bold).find<int>(file.native()), nullptr) << "of another type";
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() + 24h);
    EXPECT_EQ(FileCache::Round(bold).find<std::string>(file.native()), nullptr);
}

}  // namespace
}  // namespace ScanKit
