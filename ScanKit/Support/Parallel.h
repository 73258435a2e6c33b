#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace ScanKit {

/// How long work is told to end early. One name for it, since not every standard library has it in place.
using StopToken = std::stop_token;

/// Calls `body(i)` for every i below `count`, on as many threads as the machine has cores, or on at most
/// `threadLimit` (at least one; never more than 256). The order is not defined: body i writes to slot i alone, and the
/// caller puts the result together in input order. Once a stop is requested no further body begins. A body must not
/// throw.
void forEachIndex(std::size_t count, const std::function<void(std::size_t)>& body, const StopToken& stop = {},
                  std::optional<unsigned> threadLimit = {});

/// Work that goes on while the caller does something else, on a core that has nothing to do. Whoever limits the threads has it
/// done at once, by the caller. It has ended when the object has. It must not throw.
class BackgroundWork {
public:
    explicit BackgroundWork(std::function<void()> work, std::optional<unsigned> threadLimit = {});
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;
    ~BackgroundWork();

private:
    struct Running;
    std::unique_ptr<Running> running_;
};

}  // namespace ScanKit
