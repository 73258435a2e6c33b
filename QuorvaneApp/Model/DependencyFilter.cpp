#include "QuorvaneApp/Model/DependencyFilter.h"

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
            return dependency.isUnknownOrMissing();
        case Kind::devOnly:
            return dependency.isDev;
    }
    return false;
}
