#include "ScanKit/Readers/Python/RequirementFiles.h"

#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Readers/Python/Requirements.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/Containment.h"
#include "ScanKit/Support/Credentials.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

constexpr std::size_t mostIncluded = 1000;

bool isForDevelopment(const std::filesystem::path& file) {
    const std::string name = Text::lowercased(displayName(file));
    return name.find("dev") != std::string::npos || name.find("test") != std::string::npos;
}

/// A file in the making.
struct Node {
    std::filesystem::path path;
    bool isRead = false;
    bool isRequired = false;  ///< detected, or included by such a file: not a constraint alone
    bool ships = false;
    std::vector<Requirement> requirements;
    std::vector<std::size_t> includes;
    std::vector<std::size_t> constraints;
};

class Reading {
public:
    Reading(const std::vector<std::filesystem::path>& detected, const std::filesystem::path& root)
        : root_(root) {
        for (const std::filesystem::path& file : detected) {
            add(file, resolved(file));
        }
        detectedCount_ = nodes_.size();
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            read(i);
        }
    }

    std::vector<RequirementFile> files() {
        for (std::size_t i = 0; i < detectedCount_; ++i) {
            const bool ships = !isForDevelopment(nodes_[i].path);
            for (const std::size_t place : reached({i}, Through::includes)) {
                nodes_[place].isRequired = true;
                nodes_[place].ships = nodes_[place].ships || ships;
            }
        }
        for (std::size_t i = 0; i < detectedCount_; ++i) {
            pinVersions(i);
        }
        std::vector<RequirementFile> files;
        for (Node& node : nodes_) {
            for (Requirement& requirement : node.requirements) {
                requirement.isDev = !node.ships;
            }
            if (!node.isRequired) {
                node.requirements.clear();
            }
            files.push_back({.path = std::move(node.path),
                             .isRead = node.isRead,
                             .requirements = std::move(node.requirements)});
        }
        return files;
    }

private:
    using Places = std::vector<std::size_t>;

    static std::filesystem::path resolved(const std::filesystem::path& file) {
        std::error_code error;
        std::filesystem::path real = std::filesystem::weakly_canonical(file, error);
        return error ? standardized(file) : real;
    }

    std::size_t add(const std::filesystem::path& path, const std::filesystem::path& identity) {
        byIdentity_.try_emplace(identity, nodes_.size());
        nodes_.push_back({.path = path});
        return nodes_.size() - 1;
    }

    void read(std::size_t place) {
        const std::filesystem::path path = nodes_[place].path;
        const bool isDetected = place < detectedCount_;
        if (!isDetected && (place >= detectedCount_ + mostIncluded || !isRegularFileInside(path, root_))) {
            return;
        }
        const std::optional<std::string> text = readTextFile(path, largestLockfile);
        if (!text) {
            return;
        }
        nodes_[place].isRead = true;
        nodes_[place].requirements = requirementsFromText(*text, false);
        for (const RequirementInclude& include : includesOfText(*text)) {
            if (const std::optional<std::size_t> found = included(include.file, path.parent_path())) {
                Node& node = nodes_[place];
                (include.isConstraint ? node.constraints : node.includes).push_back(*found);
            }
        }
    }

    /// The place of an included file; absent once there are too many. The first beyond is kept as one that is not read.
    std::optional<std::size_t> included(const std::string& file, const std::filesystem::path& folder) {
        const bool isAddress = file.find("://") != std::string::npos;
        const std::filesystem::path path =
            isAddress ? std::filesystem::path(withoutCredentials(file)) : standardized(folder / file);
        const std::filesystem::path identity = isAddress ? path : resolved(path);
        if (const auto known = byIdentity_.find(identity); known != byIdentity_.end()) {
            return known->second;
        }
        if (nodes_.size() > detectedCount_ + mostIncluded) {
            return std::nullopt;
        }
        return add(path, identity);
    }

    enum class Through { includes, both };

    /// All files that these name, themselves included.
    Places reached(Places open, Through through) const {
        std::vector<bool> met(nodes_.size());
        Places result;
        while (!open.empty()) {
            const std::size_t place = open.back();
            open.pop_back();
            if (!met[place]) {
                met[place] = true;
                result.push_back(place);
                const Node& node = nodes_[place];
                open.insert(open.end(), node.includes.begin(), node.includes.end());
                if (through == Through::both) {
                    open.insert(open.end(), node.constraints.begin(), node.constraints.end());
                }
            }
        }
        return result;
    }

    /// What is installed with one detected file shares its constraints.
    void pinVersions(std::size_t detected) {
        const Places together = reached({detected}, Through::includes);
        Places open;
        for (const std::size_t place : together) {
            open.insert(open.end(), nodes_[place].constraints.begin(), nodes_[place].constraints.end());
        }
        if (open.empty()) {
            return;
        }
        std::map<std::string, std::string> pins;
        for (const std::size_t place : reached(std::move(open), Through::both)) {
            for (const Requirement& requirement : nodes_[place].requirements) {
                if (requirement.version) {
                    pins.try_emplace(normalizedName(requirement.name), *requirement.version);
                }
            }
        }
        for (const std::size_t place : together) {
            for (Requirement& requirement : nodes_[place].requirements) {
                const auto pin = pins.find(normalizedName(requirement.name));
                if (!requirement.version && pin != pins.end()) {
                    requirement.version = pin->second;
                }
            }
        }
    }

    std::filesystem::path root_;
    std::vector<Node> nodes_;
    std::map<std::filesystem::path, std::size_t> byIdentity_;
    std::size_t detectedCount_ = 0;
};

}  // namespace

std::vector<RequirementFile> readRequirementFiles(const std::vector<std::filesystem::path>& detected,
                                                  const std::filesystem::path& root) {
    return Reading(detected, root).files();
}

}  // namespace ScanKit::PythonParser
