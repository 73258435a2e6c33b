#pragma once

#include "ScanKit/Model/Dependency.h"

#include <optional>
#include <set>
#include <string_view>
#include <vector>

/// What makes a scan fail for a script: categories, flags, or whatever needs review.
class FailOn {
public:
    /// Adds a raw name of a category or a flag ("weakCopyleft", "missing" …), or "review". False when it is none
    /// of them; a name of both stands for both.
    bool add(std::string_view name);
    bool isMetBy(const ScanKit::Dependency& dependency) const;
    bool isEmpty() const { return categories_.empty() && flags_.empty() && !review_; }

private:
    std::set<ScanKit::LicenseCategory> categories_;
    std::set<ScanKit::Flag> flags_;
    bool review_ = false;
};
