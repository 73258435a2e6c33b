#include "ScanKit/Identification/KnownLicense.h"

#include "ScanKit/Licenses/LicenseTextNames.h"
#include "ScanKit/Licenses/LicenseTexts.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

using enum LicenseCategory;
constexpr std::nullopt_t noText = std::nullopt;

// clang-format off
constexpr auto rows = std::to_array<KnownLicense>({
    {"MIT", "MIT License", permissive, "MIT", true},
    {"MIT-0", "MIT No Attribution", permissive, "MIT-0", true},
    {"ISC", "ISC License", permissive, "ISC", true},
    {"0BSD", "BSD Zero Clause License", permissive, "0BSD", true},
    {"BSD", "BSD-style (clause count not stated)", permissive, noText, false},
    {"BSD-1-Clause", "BSD 1-Clause License", permissive, noText, true},
    {"BSD-2-Clause", "BSD 2-Clause \"Simplified\" License", permissive, "BSD-2-Clause", true},
    {"BSD-3-Clause", "BSD 3-Clause \"New\" or \"Revised\" License", permissive, "BSD-3-Clause", true},
    {"BSD-3-Clause-Clear", "BSD 3-Clause Clear License", permissive, noText, true},
    {"BSD-4-Clause", "BSD 4-Clause \"Original\" License", permissive, noText, true},
    {"Apache-1.1", "Apache License 1.1", permissive, noText, true},
    {"Apache-2.0", "Apache License 2.0", permissive, "Apache-2.0", true},
    {"Zlib", "zlib License", permissive, "Zlib", true},
    {"BSL-1.0", "Boost Software License 1.0", permissive, noText, true},
    {"BlueOak-1.0.0", "Blue Oak Model License 1.0.0", permissive, "BlueOak-1.0.0", true},
    {"Python-2.0", "Python License 2.0", permissive, noText, true},
    {"PSF-2.0", "Python Software Foundation License 2.0", permissive, noText, true},
    {"Artistic-2.0", "Artistic License 2.0", permissive, noText, true},
    {"X11", "X11 License", permissive, noText, true},
    {"HPND", "Historical Permission Notice and Disclaimer", permissive, noText, true},
    {"Unicode-DFS-2016", "Unicode License Agreement (2016)", permissive, noText, true},
    {"Unicode-3.0", "Unicode License v3", permissive, noText, true},
    {"OpenSSL", "OpenSSL License", permissive, noText, true},
    {"curl", "curl License", permissive, noText, true},
    {"OFL-1.1", "SIL Open Font License 1.1", permissive, noText, true},
    {"CC-BY-3.0", "Creative Commons Attribution 3.0", permissive, noText, true},
    {"CC-BY-4.0", "Creative Commons Attribution 4.0", permissive, noText, true},
    {"WTFPL", "Do What The F*ck You Want To Public License", permissive, noText, true},
    {"Unlicense", "The Unlicense", publicDomain, "Unlicense", true},
    {"CC0-1.0", "Creative Commons Zero v1.0 Universal", publicDomain, "CC0-1.0", true},
    {"PublicDomain", "Public domain (no license)", publicDomain, noText, false},
    {"MPL-1.1", "Mozilla Public License 1.1", weakCopyleft, noText, true},
    {"MPL-2.0", "Mozilla Public License 2.0", weakCopyleft, "MPL-2.0", true},
    {"MPL-2.0-no-copyleft-exception", "Mozilla Public License 2.0 (no copyleft exception)", weakCopyleft, "MPL-2.0", true},
    {"EPL-1.0", "Eclipse Public License 1.0", weakCopyleft, noText, true},
    {"EPL-2.0", "Eclipse Public License 2.0", weakCopyleft, noText, true},
    {"CDDL-1.0", "Common Development and Distribution License 1.0", weakCopyleft, noText, true},
    {"CDDL-1.1", "Common Development and Distribution License 1.1", weakCopyleft, noText, true},
    {"LGPL-2.0", "GNU Library General Public License v2", weakCopyleft, noText, true},
    {"LGPL-2.0-only", "GNU Library General Public License v2 only", weakCopyleft, noText, true},
    {"LGPL-2.0-or-later", "GNU Library General Public License v2 or later", weakCopyleft, noText, true},
    {"LGPL-2.1", "GNU Lesser General Public License v2.1", weakCopyleft, "LGPL-2.1", true},
    {"LGPL-2.1-only", "GNU Lesser General Public License v2.1 only", weakCopyleft, "LGPL-2.1", true},
    {"LGPL-2.1-or-later", "GNU Lesser General Public License v2.1 or later", weakCopyleft, "LGPL-2.1", true},
    {"LGPL-3.0", "GNU Lesser General Public License v3.0", weakCopyleft, "LGPL-3.0", true},
    {"LGPL-3.0-only", "GNU Lesser General Public License v3.0 only", weakCopyleft, "LGPL-3.0", true},
    {"LGPL-3.0-or-later", "GNU Lesser General Public License v3.0 or later", weakCopyleft, "LGPL-3.0", true},
    {"LGPL", "GNU LGPL (version not stated)", weakCopyleft, noText, false},
    {"GPL-2.0", "GNU General Public License v2.0", strongCopyleft, "GPL-2.0", true},
    {"GPL-2.0-only", "GNU General Public License v2.0 only", strongCopyleft, "GPL-2.0", true},
    {"GPL-2.0-or-later", "GNU General Public License v2.0 or later", strongCopyleft, "GPL-2.0", true},
    {"GPL-3.0", "GNU General Public License v3.0", strongCopyleft, "GPL-3.0", true},
    {"GPL-3.0-only", "GNU General Public License v3.0 only", strongCopyleft, "GPL-3.0", true},
    {"GPL-3.0-or-later", "GNU General Public License v3.0 or later", strongCopyleft, "GPL-3.0", true},
    {"GPL", "GNU GPL (version not stated)", strongCopyleft, noText, false},
    {"EUPL-1.2", "European Union Public License 1.2", strongCopyleft, noText, true},
    {"AGPL-3.0", "GNU Affero General Public License v3.0", networkCopyleft, noText, true},
    {"AGPL-3.0-only", "GNU Affero General Public License v3.0 only", networkCopyleft, noText, true},
    {"AGPL-3.0-or-later", "GNU Affero General Public License v3.0 or later", networkCopyleft, noText, true},
    {"SSPL-1.0", "Server Side Public License v1", networkCopyleft, noText, true},
    {"BUSL-1.1", "Business Source License 1.1", proprietary, noText, true},
    {"UNLICENSED", "Not licensed for use (UNLICENSED)", proprietary, noText, false},
});
// clang-format on

/// A row whose text is not there would match nothing, without a word, and so would a text that no row names. A row with
/// the text of another family would put a wrong license into a NOTICE. A license without any text could only be read
/// as another one.
consteval bool rowsAndTextsBelongTogether() {
    const auto isAmong = [](std::string_view name, const auto& names) {
        return std::ranges::find(names, name) != names.end();
    };
    const auto namesItsText = [&](const KnownLicense& row) {
        const std::string_view family = familyOf(row.id);
        const bool isStandard = isAmong(family, standardTextNames);
        const bool isReference =
            std::ranges::find(referenceTextNames, family, licenseOfText) != referenceTextNames.end();
        return row.text == (isStandard ? std::optional(family) : std::nullopt) &&
               (row.isSPDX ? isStandard != isReference : !isStandard && !isReference);
    };
    const auto hasRow = [](std::string_view name) {
        return std::ranges::find(rows, licenseOfText(name), &KnownLicense::id) != rows.end();
    };
    return std::ranges::all_of(rows, namesItsText) && std::ranges::all_of(standardTextNames, hasRow) &&
           std::ranges::all_of(referenceTextNames, hasRow);
}
static_assert(rowsAndTextsBelongTogether(),
              "each SPDX row needs the text of its family, in ScanKit/Licenses when it names it, else in "
              "ScanKit/Licenses/Reference; each text needs a row of its name");

}  // namespace

std::span<const KnownLicense> knownLicenses() {
    return rows;
}

}  // namespace ScanKit
