#include "ScanKit/Readers/NPM/BunLock.h"

#include "ScanKit/Readers/NPM/PackageStore.h"
#include "ScanKit/Readers/NPM/PnpmModules.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/JSONWithComments.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <unordered_set>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesName = "node_modules";
constexpr std::string_view workspaceMark = "workspace:";
constexpr double newestFormat = 2;
/// Trees of real packages have a dozen levels; the limit keeps the search for what a hostile key needs short.
constexpr std::size_t mostNames = 50;
/// Ten times what a lockfile of 10,000 packages holds, and more. They keep a hostile file from filling the memory: each name of a
/// key may be a place of its own.
constexpr std::size_t largestText = std::size_t{32} << 20;
constexpr std::size_t mostPlaces = 250'000;

/// The names in a key: a scope belongs to the name behind it. Empty for a key that names no place.
std::vector<std::string_view> namesIn(std::string_view key) {
    std::vector<std::string_view> names;
    while (!key.empty()) {
        std::size_t end = key.find('/');
        if (key.starts_with('@') && end != std::string_view::npos) {
            end = key.find('/', end + 1);
        }
        names.push_back(key.substr(0, end));
        if (names.back().empty() || names.size() > mostNames || end == key.size() - 1) {
            return {};
        }
        key.remove_prefix(std::min(end, key.size() - 1) + 1);
    }
    return names;
}

LockedEntry entryOf(std::string_view key, const JSONValue& value) {
    LockedEntry entry{.key = std::string(key)};
    const std::vector<std::string_view> names = namesIn(key);
    const std::vector<JSONValue> parts = value.elements();
    const std::string_view identity = parts.empty() ? "" : parts.front().string().value_or("");
    const std::size_t at = identity.find('@', 1);
    if (names.empty() || at == std::string_view::npos || at + 1 == identity.size()) {
        entry.name = names.empty() ? key : names.back();
        entry.isUnreadable = true;
        return entry;
    }
    entry.name = identity.substr(0, at);
    const std::string_view version = identity.substr(at + 1);
    static constexpr std::array<std::string_view, 4> own{workspaceMark, "link:", "file:", "root:"};
    entry.isOwn = std::ranges::any_of(own, [&](std::string_view mark) { return version.starts_with(mark); });
    if (version.front() >= '0' && version.front() <= '9') {
        entry.version = version;
        const auto address = parts.size() > 1 ? parts[1].string() : std::nullopt;
        if (address && !address->empty()) {
            entry.source = *address;
        }
    } else {
        entry.source = version;
    }
    return entry;
}

/// The tree that the keys describe. Its root is the project.
class Tree {
public:
    static constexpr std::size_t root = 0;

    std::size_t add(const std::vector<std::string_view>& names, std::size_t entry) {
        std::size_t node = root;
        for (const std::string_view name : names) {
            const auto [place, isNew] = children_.try_emplace({node, std::string(name)}, nodes_.size());
            if (isNew) {
                nodes_.push_back({.parent = node});
            }
            node = place->second;
        }
        nodes_[node].entry = entry;
        return node;
    }
    /// The entry that a package finds under a name: in its own folder, or in the nearest above.
    std::optional<std::size_t> find(std::size_t from, std::string_view name) const {
        for (std::size_t node = from;; node = nodes_[node].parent) {
            const auto child = children_.find(std::pair(node, std::string(name)));
            if (child != children_.end() && nodes_[child->second].entry) {
                return nodes_[child->second].entry;
            }
            if (node == root) {
                return std::nullopt;
            }
        }
    }
    std::size_t size() const { return nodes_.size(); }
    std::size_t childOfRoot(std::string_view name) const {
        const auto child = children_.find(std::pair(root, std::string(name)));
        return child != children_.end() ? child->second : root;
    }

private:
    struct Node {
        std::size_t parent = root;
        std::optional<std::size_t> entry = {};
    };
    std::vector<Node> nodes_{Node{}};
    std::map<std::pair<std::size_t, std::string>, std::size_t> children_;
};

/// What a package or a member of the workspace needs.
class Needs {
public:
    Needs(Lockfile& lockfile, const Tree& tree) : lockfile_(lockfile), tree_(tree) {}

    /// False when a member of this name is no table of names.
    bool read(const JSONValue& source, std::string_view member, std::size_t from, bool mustBeThere,
              std::vector<std::size_t>& places) {
        const std::optional<JSONValue> needs = source.member(member);
        if (needs && !needs->isObject()) {
            return false;
        }
        for (const auto& [name, range] : needs ? needs->members() : std::vector<JSONValue::Member>{}) {
            if (const auto place = tree_.find(from, name)) {
                places.push_back(*place);
            } else if (mustBeThere) {
                places.push_back(missing(name));
            }
        }
        return true;
    }
    /// Peers are taken as needed, unless they are among the optional ones.
    bool readPeers(const JSONValue& source, std::size_t from, std::vector<std::size_t>& needed,
                   std::vector<std::size_t>& ifPresent) {
        std::unordered_set<std::string_view> optional;
        if (const auto names = source.member("optionalPeers")) {
            for (const JSONValue& name : names->elements()) {
                optional.insert(name.string().value_or(""));
            }
        }
        const std::optional<JSONValue> peers = source.member("peerDependencies");
        for (const auto& [name, range] : peers ? peers->members() : std::vector<JSONValue::Member>{}) {
            if (const auto place = tree_.find(from, name)) {
                (optional.contains(name) ? ifPresent : needed).push_back(*place);
            }
        }
        return !peers || peers->isObject();
    }

private:
    /// Past the limit the last entry stands for all that is missing: the text is refused in the end.
    std::size_t missing(std::string_view name) {
        if (lockfile_.entries.size() > mostPlaces) {
            return mostPlaces;
        }
        const auto [place, isNew] = missing_.try_emplace(std::string(name), lockfile_.entries.size());
        if (isNew) {
            lockfile_.entries.push_back(
                {.key = std::string(name), .name = std::string(name), .isUnreadable = true});
        }
        return place->second;
    }

    Lockfile& lockfile_;
    const Tree& tree_;
    std::map<std::string, std::size_t> missing_;
};

/// Of a package's tuple the one table; its place depends on where the package comes from.
std::optional<JSONValue> descriptionIn(const JSONValue& tuple) {
    for (const JSONValue& part : tuple.elements()) {
        if (part.isObject()) {
            return part;
        }
    }
    return std::nullopt;
}

bool readWorkspace(const JSONValue& workspace, std::size_t from, Needs& needs, Lockfile& lockfile) {
    return workspace.isObject() && needs.read(workspace, "dependencies", from, true, lockfile.shipped) &&
           needs.read(workspace, "optionalDependencies", from, false, lockfile.shippedIfPresent) &&
           needs.read(workspace, "devDependencies", from, true, lockfile.development) &&
           needs.readPeers(workspace, from, lockfile.shipped, lockfile.shippedIfPresent);
}

void readPackage(const JSONValue& tuple, std::size_t place, std::size_t from, Needs& needs,
                 Lockfile& lockfile) {
    const std::optional<JSONValue> description = descriptionIn(tuple);
    if (!description) {
        return;
    }
    // Entries for what is missing may be appended meanwhile.
    std::vector<std::size_t> needed;
    std::vector<std::size_t> ifPresent;
    if (!needs.read(*description, "dependencies", from, true, needed) ||
        !needs.read(*description, "optionalDependencies", from, false, ifPresent) ||
        !needs.readPeers(*description, from, needed, ifPresent)) {
        lockfile.entries[place].isUnreadable = true;
    }
    lockfile.entries[place].needs = std::move(needed);
    lockfile.entries[place].needsIfPresent = std::move(ifPresent);
}

/// The folder that a key names, when it is there; absent for one that no installer writes.
std::optional<std::filesystem::path> folderOf(const LockedEntry& entry,
                                              const std::map<std::string_view, std::string_view>& members,
                                              const std::filesystem::path& projectFolder) {
    std::string below;
    const std::vector<std::string_view> names = namesIn(entry.key);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto member = i == 0 && names.size() > 1 ? members.find(names[i]) : members.end();
        if (member != members.end()) {
            below = member->second;
        } else {
            below += below.empty() ? "" : "/";
            below.append(modulesName).append("/").append(names[i]);
        }
    }
    const auto folder = names.empty() ? std::nullopt : folderBelow(projectFolder, below);
    return folder && isFolder(*folder) ? folder : std::nullopt;
}

}  // namespace

std::optional<Lockfile> bunLock(std::string_view text) {
    if (text.size() > largestText) {
        return std::nullopt;
    }
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(plainJSON(text));
    const std::optional<JSONValue> format = top ? top->member("lockfileVersion") : std::nullopt;
    const std::optional<JSONValue> workspaces = top ? top->member("workspaces") : std::nullopt;
    const std::optional<JSONValue> packages = top ? top->member("packages") : std::nullopt;
    if (!format || !workspaces || !packages || !workspaces->isObject() || !packages->isObject() ||
        !(format->number() >= 0 && format->number() <= newestFormat)) {
        return std::nullopt;
    }
    Lockfile lockfile;
    Tree tree;
    std::vector<std::size_t> nodes;
    const std::vector<JSONValue::Member> tuples = packages->members();
    for (const auto& [key, tuple] : tuples) {
        nodes.push_back(tree.add(namesIn(key), lockfile.entries.size()));
        lockfile.entries.push_back(entryOf(key, tuple));
        if (tree.size() > mostPlaces) {
            return std::nullopt;
        }
    }
    Needs needs(lockfile, tree);
    for (const auto& [folder, workspace] : workspaces->members()) {
        const std::string_view name = workspace.stringMember("name").value_or("");
        const std::size_t from = folder.empty() ? Tree::root : tree.childOfRoot(name);
        if (!readWorkspace(workspace, from, needs, lockfile)) {
            return std::nullopt;
        }
        if (!folder.empty()) {
            lockfile.members.emplace_back(folder);
        }
    }
    for (std::size_t i = 0; i < tuples.size(); ++i) {
        readPackage(tuples[i].second, i, nodes[i], needs, lockfile);
    }
    return lockfile.entries.size() > mostPlaces ? std::nullopt : std::optional(std::move(lockfile));
}

std::vector<std::optional<std::filesystem::path>> bunFolders(const Lockfile& lockfile,
                                                             const std::filesystem::path& projectFolder,
                                                             const ReadControl& control) {
    const std::filesystem::path store = projectFolder / modulesName / ".bun";
    if (isFolder(store)) {
        return storedFolders(lockfile, projectFolder, PackageStore(store, control), control);
    }
    std::map<std::string_view, std::string_view> members;  // name, folder
    for (const LockedEntry& entry : lockfile.entries) {
        if (entry.isOwn && entry.source && entry.source->starts_with(workspaceMark)) {
            members.emplace(entry.name, std::string_view(*entry.source).substr(workspaceMark.size()));
        }
    }
    std::vector<std::optional<std::filesystem::path>> folders(lockfile.entries.size());
    const auto find = [&](std::size_t i) {
        const LockedEntry& entry = lockfile.entries[i];
        if (!entry.isOwn && !entry.isUnreadable) {
            folders[i] = folderOf(entry, members, projectFolder);
        }
    };
    forEachIndex(folders.size(), find, control.stop, control.threadLimit);
    return folders;
}

}  // namespace ScanKit::NPMParser
