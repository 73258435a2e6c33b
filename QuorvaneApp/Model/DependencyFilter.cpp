#include "QuorvaneApp/Model/DependencyFilter.h"

#include <algorithm>

namespace {

bool isUnknown(const ScanKit::Dependency& dependency) {
    return !dependency.license || std::ranges::any_of(dependency.flags, [](ScanKit::Flag flag) {
        return flag == ScanKit::Flag::unknown || flag == ScanKit::Flag::missing;
    });
}

}  // namespace

bool DependencyFilter::passes(const ScanKit::Dependency& dependency) const {
    switch (kind_) {
        case Kind::ecosystem:
            return dependency.ecosystem == ecosystem_;
        case Kind::all:
            return true;
        case Kind::needsReview:
            return dependency.needsReview();
        case Kind::copyleft:
            return ScanKit::isCopyleft(dependency.category);
        case Kind::unknown:
            return isUnknown(dependency);
    }
    return false;
}
