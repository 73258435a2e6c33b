#include "QuorvaneCLI/FailOn.h"

#include <algorithm>

bool FailOn::add(std::string_view name) {
    const auto category = ScanKit::licenseCategoryFromRawValue(name);
    const auto flag = ScanKit::flagFromRawValue(name);
    if (category) {
        categories_.insert(*category);
    }
    if (flag) {
        flags_.insert(*flag);
    }
    review_ = review_ || name == "review";
    return category || flag || name == "review";
}

bool FailOn::isMetBy(const ScanKit::Dependency& dependency) const {
    return categories_.contains(dependency.category) || (review_ && dependency.needsReview()) ||
           std::ranges::any_of(dependency.flags, [&](ScanKit::Flag flag) { return flags_.contains(flag); });
}
