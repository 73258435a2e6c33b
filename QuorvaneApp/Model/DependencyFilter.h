#pragma once

#include "ScanKit/Model/Dependency.h"
#include "ScanKit/Model/Ecosystem.h"

#include <optional>

/// Which dependencies the table shows.
class DependencyFilter {
public:
    enum class Kind { ecosystem, all, needsReview, copyleft, unknown, devOnly };

    static DependencyFilter ecosystem(ScanKit::Ecosystem ecosystem) { return {Kind::ecosystem, ecosystem}; }
    static DependencyFilter all() { return {Kind::all, {}}; }
    static DependencyFilter needsReview() { return {Kind::needsReview, {}}; }
    static DependencyFilter copyleft() { return {Kind::copyleft, {}}; }
    /// Without a license, or flagged as unknown or missing.
    static DependencyFilter unknown() { return {Kind::unknown, {}}; }

    /// Only needed for development.
    static DependencyFilter devOnly() { return {Kind::devOnly, {}}; }

    Kind kind() const { return kind_; }
    /// The ecosystem of an ecosystem filter; absent for the others.
    std::optional<ScanKit::Ecosystem> ecosystem() const { return ecosystem_; }
    bool passes(const ScanKit::Dependency& dependency) const;

    bool operator==(const DependencyFilter&) const = default;

private:
    DependencyFilter(Kind kind, std::optional<ScanKit::Ecosystem> ecosystem)
        : kind_(kind), ecosystem_(ecosystem) {}

    Kind kind_;
    std::optional<ScanKit::Ecosystem> ecosystem_;
};
