#pragma once

#include "ScanKit/Readers/ReadControl.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ScanKit::NPMParser {

/// What the package.json of a folder is for: both empty when there is none that can be read.
struct PackageIdentity {
    std::string name;
    std::string version;
};
PackageIdentity packageIdentity(const std::filesystem::path& folder);

/// The store that some package managers keep inside node_modules: a folder for each package and set of peers, in which a
/// node_modules holds the package itself and links to those that it needs. pnpm's is ".pnpm", Bun's ".bun":
/// ".pnpm/@scope+name@1.0.0_peer@2.0.0/node_modules/@scope/name".
class PackageStore {
public:
    /// Lists the store once. A folder that is not there is an empty store.
    explicit PackageStore(const std::filesystem::path& store, const ReadControl& control = {});

    bool isEmpty() const { return folders_.empty(); }
    /// Where this package lies, going by the names of the store's folders; of several sets of peers the first that is there.
    /// The folders given here count as used.
    std::optional<std::filesystem::path> find(const std::string& name, const std::string& version);
    /// The packages in the folders that `find` did not use: their names say no version (what came from an address), or
    /// were shortened. The project's own local folders are left out.
    std::vector<std::filesystem::path> unused(const ReadControl& control) const;
    /// Every package in the order of the store's folders, the project's own local folders left out.
    std::vector<std::filesystem::path> packages(const ReadControl& control) const;

private:
    struct Folder {
        std::string name;     ///< of the store's folder
        std::string package;  ///< the name of the package; empty when the folder's name does not say it
        std::string version;
        bool isThere = false;  ///< the package is where the folder's name says
        bool isUsed = false;
    };
    std::vector<std::filesystem::path> packagesIn(const std::vector<const Folder*>& folders,
                                                  const ReadControl& control) const;

    std::filesystem::path store_;
    std::vector<Folder> folders_;
    std::unordered_map<std::string, std::vector<std::size_t>> places_;  ///< by name, "@", version
};

}  // namespace ScanKit::NPMParser
