#include "ScanKit/Readers/Python/LockedPackages.h"

#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <functional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

constexpr std::size_t mostWays = 1'000'000;

using Places = std::vector<std::size_t>;

/// Who asks, by place or by what the project asks for.
enum class Root { shipped, shippedIfPresent, development };
struct Asker {
    std::optional<std::size_t> entry;
    Root root = Root::shipped;
};

/// That one asks for an entry; where that is by way of an extra, of which other.
struct Way {
    Asker from;
    std::optional<std::size_t> through;
    std::size_t to = 0;
    bool isConditional = false;
};

/// Each place once, the first time, and not those that stand among `others`.
void keepFirst(Places& places, const Places& others) {
    std::unordered_set<std::size_t> seen(others.begin(), others.end());
    std::erase_if(places, [&](std::size_t place) { return !seen.insert(place).second; });
}

void addWay(Lockfile& lockfile, const Asker& from, const Way& way) {
    if (from.entry) {
        LockedEntry& entry = lockfile.entries[*from.entry];
        if (*from.entry != way.to) {
            (way.isConditional ? entry.needsIfPresent : entry.needs).push_back(way.to);
        }
    } else if (from.root == Root::development) {
        lockfile.development.push_back(way.to);
    } else {
        const bool mayBeMissing = way.isConditional || from.root == Root::shippedIfPresent;
        (mayBeMissing ? lockfile.shippedIfPresent : lockfile.shipped).push_back(way.to);
    }
}

/// True when the roles stay as they are where `to` is reached by way of `through`: not everybody who asks for the one
/// asks for the extra too.
bool keepsRoles(const LockedRole& through, const LockedRole& to) {
    const bool ships = through.isReached && !through.isDev;
    const bool isRequired = through.isReached && !through.isOptional;
    return to.isReached && (!ships || !to.isDev) && (!isRequired || !to.isOptional);
}

class Joiner {
public:
    explicit Joiner(std::vector<LockedPackage> packages) : packages_(std::move(packages)) {
        for (std::size_t i = 0; i < packages_.size(); ++i) {
            if (!packages_[i].entry.isUnreadable) {
                byName_[normalizedName(packages_[i].entry.name)].push_back(i);
            }
        }
    }

    std::optional<Lockfile> joined(const std::optional<ProjectRequests>& project) {
        setKeys();
        if (project) {
            for (std::size_t i = 0; i < packages_.size(); ++i) {
                findWays(packages_[i].requests, {.entry = i});
            }
            findWays(project->shipped, {.root = Root::shipped});
            findWays(project->shippedIfPresent, {.root = Root::shippedIfPresent});
            findWays(project->development, {.root = Root::development});
        }
        if (count_ > mostWays) {
            return std::nullopt;
        }
        const Lockfile direct = lockfileWith([](const Way& way) { return way.from; }, project.has_value());
        const bool hasExtras =
            std::ranges::any_of(ways_, [](const Way& way) { return way.through.has_value(); });
        if (!hasExtras) {
            return direct;
        }
        const std::vector<LockedRole> roles = lockedRoles(direct);
        return lockfileWith(
            [&](const Way& way) {
                const bool stands = way.through && keepsRoles(roles[*way.through], roles[way.to]);
                return stands ? Asker{.entry = way.through} : way.from;
            },
            true);
    }

private:
    Lockfile lockfileWith(const std::function<Asker(const Way&)>& askerOf, bool knowsWays) const {
        Lockfile lockfile{.knowsWays = knowsWays};
        for (const LockedPackage& package : packages_) {
            lockfile.entries.push_back(package.entry);
        }
        for (const Way& way : ways_) {
            addWay(lockfile, askerOf(way), way);
        }
        followWord(lockfile);
        for (LockedEntry& entry : lockfile.entries) {
            keepFirst(entry.needs, {});
            keepFirst(entry.needsIfPresent, entry.needs);
        }
        keepFirst(lockfile.shipped, {});
        keepFirst(lockfile.shippedIfPresent, lockfile.shipped);
        keepFirst(lockfile.development, {});
        return lockfile;
    }

    void setKeys() {
        std::unordered_map<std::string, std::size_t> seen;
        for (LockedPackage& package : packages_) {
            std::string& key = package.entry.key;
            if (const std::size_t before = seen[key]++; before > 0) {
                key += " #" + std::to_string(before + 1);
            }
        }
    }

    /// The entries that a request may mean: of several versions the one that it names, of an entry for each combination
    /// of extras those that it names.
    Places meant(const PackageRequest& request) {
        const auto found = byName_.find(request.name);
        if (found == byName_.end()) {
            return {};
        }
        count_ += found->second.size();
        Places all = found->second;
        if (all.size() > 1) {
            Places ofVersion = all;
            std::erase_if(ofVersion, [&](std::size_t i) {
                return request.version && packages_[i].entry.version != *request.version;
            });
            all = ofVersion.empty() ? all : ofVersion;
            std::erase_if(all, [&](std::size_t i) {
                const std::vector<std::string>& extras = packages_[i].extras;
                return !std::ranges::all_of(extras, [&](const std::string& extra) {
                    return std::ranges::find(request.extras, extra) != request.extras.end();
                });
            });
        }
        return all;
    }

    /// A request, and whose extra asks for it.
    struct Open {
        PackageRequest request;
        std::optional<std::size_t> through = {};
    };

    /// What is asked for, and what these packages ask for under the extras that are asked for.
    void findWays(const std::vector<PackageRequest>& requests, const Asker& from) {
        std::set<std::pair<std::size_t, std::string>> met;
        std::vector<Open> open;
        for (const PackageRequest& request : requests) {
            open.push_back({.request = request});
        }
        for (std::size_t i = 0; i < open.size() && count_ <= mostWays; ++i) {
            const Open one = open[i];
            for (const std::size_t place : meant(one.request)) {
                ways_.push_back({.from = from,
                                 .through = one.through,
                                 .to = place,
                                 .isConditional = one.request.isConditional});
                for (const std::string& extra : one.request.extras) {
                    if (met.emplace(place, extra).second) {
                        openExtra(place, extra, one.request.isConditional, open);
                    }
                }
            }
        }
    }

    void openExtra(std::size_t place, const std::string& extra, bool isConditional, std::vector<Open>& open) {
        const auto found = packages_[place].requestsOfExtras.find(extra);
        if (found == packages_[place].requestsOfExtras.end()) {
            return;
        }
        count_ += found->second.size();
        for (PackageRequest request : found->second) {
            request.isConditional = request.isConditional || isConditional;
            open.push_back({.request = std::move(request), .through = place});
        }
    }

    bool isForDevelopment(std::size_t place) const { return packages_[place].ships == false; }

    /// Where the file says what ships, the roles that follow from the ways are to be the same: a way from what ships to
    /// what does not is none, and what no way leads to is asked for by the project.
    void followWord(Lockfile& lockfile) const {
        const auto dropDevelopment = [&](Places& places) {
            std::erase_if(places, [&](std::size_t place) { return isForDevelopment(place); });
        };
        dropDevelopment(lockfile.shipped);
        dropDevelopment(lockfile.shippedIfPresent);
        for (std::size_t i = 0; i < packages_.size(); ++i) {
            if (!isForDevelopment(i)) {
                dropDevelopment(lockfile.entries[i].needs);
                dropDevelopment(lockfile.entries[i].needsIfPresent);
            }
        }
        std::vector<bool> ships(packages_.size());
        reach(lockfile, lockfile.shipped, ships);
        reach(lockfile, lockfile.shippedIfPresent, ships);
        for (std::size_t i = 0; i < packages_.size(); ++i) {
            const bool isLost = lockfile.knowsWays ? packages_[i].ships == true : !isForDevelopment(i);
            if (isLost && !ships[i]) {
                (packages_[i].mayBeMissing ? lockfile.shippedIfPresent : lockfile.shipped).push_back(i);
                reach(lockfile, {i}, ships);
            }
        }
        std::vector<bool> develops(packages_.size());
        reach(lockfile, lockfile.development, develops);
        for (std::size_t i = 0; i < packages_.size(); ++i) {
            if (isForDevelopment(i) && !develops[i]) {
                lockfile.development.push_back(i);
                reach(lockfile, {i}, develops);
            }
        }
    }

    static void reach(const Lockfile& lockfile, Places open, std::vector<bool>& reached) {
        while (!open.empty()) {
            const std::size_t place = open.back();
            open.pop_back();
            if (reached[place]) {
                continue;
            }
            reached[place] = true;
            const LockedEntry& entry = lockfile.entries[place];
            open.insert(open.end(), entry.needs.begin(), entry.needs.end());
            open.insert(open.end(), entry.needsIfPresent.begin(), entry.needsIfPresent.end());
        }
    }

    std::vector<LockedPackage> packages_;
    std::unordered_map<std::string, Places> byName_;
    std::vector<Way> ways_;
    std::size_t count_ = 0;
};

}  // namespace

LockedPackage lockedPackage(const DataValue& value) {
    LockedPackage package;
    LockedEntry& entry = package.entry;
    entry.name = value.textMember("name").value_or("");
    entry.version = value.textMember("version").value_or("");
    const bool hasOddVersion = value.member("version") != nullptr && !value.textMember("version");
    entry.isUnreadable = Text::isBlank(entry.name) || hasOddVersion;
    entry.key = entry.version.empty() ? entry.name : entry.name + "==" + entry.version;
    return package;
}

bool isLocalPath(std::string_view place) {
    // "git@host:owner/name.git" is an address too.
    return place.find("file://") != std::string_view::npos ||
           (!place.empty() && place.find(':') == std::string_view::npos);
}

std::optional<Lockfile> joinedLockfile(std::vector<LockedPackage> packages,
                                       const std::optional<ProjectRequests>& project) {
    return Joiner(std::move(packages)).joined(project);
}

}  // namespace ScanKit::PythonParser
