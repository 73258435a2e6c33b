#pragma once

#include "ScanKit/Model/LicenseCategory.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace ScanKit {

/// One license that the system knows. Everywhere a license is named by the `id` of such a row.
struct KnownLicense {
    std::string_view id;    ///< normally the SPDX short identifier
    std::string_view name;  ///< display name
    LicenseCategory category = LicenseCategory::unknown;
    std::optional<std::string_view>
        text;             ///< name of the built-in standard text; absent when none is built in
    bool isSPDX = false;  ///< false for umbrella rows of our own: "BSD", "GPL", "LGPL" …

    bool operator==(const KnownLicense&) const = default;
};

/// The family of an id: "GPL-2.0" of "GPL-2.0-or-later". One text serves all of a family.
constexpr std::string_view familyOf(std::string_view id) {
    for (const std::string_view suffix : {"-only", "-or-later", "-no-copyleft-exception"}) {
        if (id.ends_with(suffix)) {
            id.remove_suffix(suffix.size());
        }
    }
    return id;
}

/// The known licenses, in the order in which they are displayed. All views live as long as the program.
std::span<const KnownLicense> knownLicenses();

}  // namespace ScanKit

template <>
struct std::hash<ScanKit::KnownLicense> {
    /// Rows that are equal share their id, and no two rows do otherwise.
    std::size_t operator()(const ScanKit::KnownLicense& license) const {
        return std::hash<std::string_view>{}(license.id);
    }
};
