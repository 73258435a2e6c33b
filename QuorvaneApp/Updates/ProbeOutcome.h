#pragma once

#include <optional>

/// What the first look at the feed's server says.
enum class ProbeOutcome {
    reachable,  ///< there is a feed to check
    upToDate,   ///< no feed is published, so no update can be either
    failed,
};

/// The class of an HTTP status; absent after a transport error or an answer that is not HTTP.
ProbeOutcome classify(std::optional<int> status);
