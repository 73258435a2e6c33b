#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

namespace ScanKit {

/// For those who use the library and want records in unordered containers; no program of ours needs it.
/// A record that names its fields, in declared order, through `fields()`. Such a record hashes over all of
/// them, so that equal records hash equal.
template <typename Record>
concept HasFields = requires(const Record& record) {
    record.fields();
};

namespace Hashing {

constexpr std::size_t combine(std::size_t seed, std::size_t value) {
    return seed ^ (value + std::size_t{0x9e3779b97f4a7c15} + (seed << 6) + (seed >> 2));
}

template <typename Value>
std::size_t hashOf(const Value& value) {
    return std::hash<Value>{}(value);
}
template <typename Clock, typename Duration>
std::size_t hashOf(const std::chrono::time_point<Clock, Duration>& date) {
    return std::hash<typename Duration::rep>{}(date.time_since_epoch().count());
}
inline std::size_t hashOf(const std::filesystem::path& path) {
    return std::filesystem::hash_value(path);
}
template <typename Value>
std::size_t hashOf(const std::optional<Value>& value) {
    return value ? combine(1, hashOf(*value)) : 0;
}
template <typename Range>
std::size_t hashOfRange(const Range& range) {
    std::size_t seed = range.size();
    for (const auto& value : range) {
        seed = combine(seed, hashOf(value));
    }
    return seed;
}
template <typename Value>
std::size_t hashOf(const std::vector<Value>& values) {
    return hashOfRange(values);
}
template <typename Value>
std::size_t hashOf(const std::set<Value>& values) {
    return hashOfRange(values);
}

}  // namespace Hashing
}  // namespace ScanKit

template <ScanKit::HasFields Record>
struct std::hash<Record> {
    std::size_t operator()(const Record& record) const {
        return std::apply(
            [](const auto&... field) {
                std::size_t seed = 0;
                ((seed = ScanKit::Hashing::combine(seed, ScanKit::Hashing::hashOf(field))), ...);
                return seed;
            },
            record.fields());
    }
};
