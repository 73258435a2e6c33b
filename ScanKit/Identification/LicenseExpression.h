#pragma once

#include "ScanKit/Model/LicenseCategory.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

/// A license expression over known licenses: one license, perhaps with an exception; several that all apply;
/// or a choice. A value: copied, compared by structure.
class LicenseExpression {
public:
    enum class Kind { license, allOf, anyOf };

    static LicenseExpression license(std::string id, std::optional<std::string> exception = {});
    static LicenseExpression allOf(std::vector<LicenseExpression> members);
    static LicenseExpression anyOf(std::vector<LicenseExpression> members);

    /// Reads an SPDX license expression, keywords in any letter case. None unless the whole text is one
    /// expression over known identifiers. Groups of one collapse to their member. Nested deeper than 1,000
    /// parentheses it is not an expression.
    static std::optional<LicenseExpression> parse(std::string_view text);
    /// Reads "MIT/Apache-2.0", "MIT, BSD" or "MIT | ISC" as a choice, each part as a free-text name. None with
    /// fewer than two parts, or when a part names no known license.
    static std::optional<LicenseExpression> fromSeparatedNames(std::string_view text);

    Kind kind() const { return kind_; }
    /// The identifier of a single license; empty for a group.
    const std::string& id() const { return id_; }
    /// The exception of a single license, as written.
    const std::optional<std::string>& exception() const { return exception_; }
    /// The members of a group; empty for a single license.
    const std::vector<LicenseExpression>& members() const { return members_; }

    /// The canonical text: "MIT OR (Apache-2.0 AND Zlib)". Parsing it gives the same expression again.
    std::string description() const;
    /// The most restrictive member of an `allOf`, the least restrictive of an `anyOf`. A strong-copyleft license
    /// with an exception counts as weak copyleft. An empty group is `unknown`.
    LicenseCategory category() const;
    /// For a choice, the first member of the least restrictive category; otherwise the expression itself.
    const LicenseExpression& chosenOption() const;
    /// Every identifier, left to right, repetitions kept.
    std::vector<std::string> licenseIDs() const;
    /// Every single license of the expression, left to right.
    std::vector<const LicenseExpression*> leaves() const;

    bool operator==(const LicenseExpression&) const = default;

private:
    Kind kind_ = Kind::license;
    std::string id_;
    std::optional<std::string> exception_;
    std::vector<LicenseExpression> members_;
};

}  // namespace ScanKit
