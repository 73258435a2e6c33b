#include "ScanKit/Model/Detection.h"

namespace ScanKit {

std::vector<Ecosystem> Detection::ecosystems() const {
    std::vector<Ecosystem> found;
    if (!resolvedFiles.empty()) {
        found.push_back(Ecosystem::swiftpm);
    }
    if (!npmLockfiles.empty() || !npmModulesWithoutLock.empty() || !npmManifestsOnly.empty()) {
        found.push_back(Ecosystem::npm);
    }
    if (!requirementFiles.empty() || !poetryLocks.empty() || !virtualEnvs.empty()) {
        found.push_back(Ecosystem::python);
    }
    return found;
}

}  // namespace ScanKit
