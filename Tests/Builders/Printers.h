#pragma once

#include "ScanKit/Identification/KnownLicense.h"
#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/TextReading.h"
#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Model/ScanOptions.h"
#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Readers/Python/PythonParser.h"
#include "ScanKit/Readers/SwiftPM/SwiftPMParser.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Regex.h"

#include <array>
#include <ostream>
#include <string_view>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

/// Says in a failing test what a record holds, field by field in declared order, where Google Test would print its
/// bytes. A test program that compares records includes this; what it does not print, it need not link.
namespace ScanKit {

struct Printed {
    static std::string_view of(Flag flag) { return rawValue(flag); }
    static std::string_view of(Flag::Severity value) {
        return std::array{"low", "medium", "high"}[static_cast<std::size_t>(value)];
    }
    static std::string_view of(Ecosystem value) { return rawValue(value); }
    static std::string_view of(LicenseBasis value) { return rawValue(value); }
    static std::string_view of(LicenseCategory value) { return rawValue(value); }
    static std::string_view of(ScanWarning::Kind value) { return rawValue(value); }
    static std::string of(const LicenseExpression& one) { return one.description(); }
    static auto of(const HasFields auto& record) { return record.fields(); }
    static auto of(const KnownLicense& one) {
        return std::tie(one.id, one.name, one.category, one.text, one.isSPDX);
    }
    static auto of(const TextMatch& one) { return std::tie(one.id, one.score, one.byNotice); }
    static auto of(const LicenseMatcher::Candidate& one) {
        return std::tie(one.id, one.score, one.wordCount, one.start, one.end);
    }
    static auto of(const TextReading::Match& one) {
        return std::tie(one.id, one.byNotice, one.isLookAlike, one.score, one.region);
    }
    static auto of(const Regex::Match& one) { return std::tie(one.begin, one.end); }
    static auto of(const LicenseFiles& one) { return std::tie(one.licenses, one.notices); }
    static auto of(const FolderEntry& one) {
        constexpr std::string_view kinds[]{"file", "folder", "other"};
        return std::tuple(one.name, kinds[static_cast<std::size_t>(one.kind)], one.isLink);
    }
    static auto of(const SwiftPMParser::Pin& one) {
        return std::tie(one.identity, one.name, one.location, one.version, one.branch, one.revision);
    }
    static auto of(const PythonParser::Requirement& one) {
        return std::tie(one.name, one.version, one.isDev);
    }
    static auto of(const PythonParser::Installed& one) {
        return std::tie(one.name, one.version, one.license, one.licenseExpression, one.classifiers,
                        one.homepage, one.folder, one.licenseFiles);
    }
};

template <typename Value>
requires requires(const Value& value) {
    Printed::of(value);
}
void PrintTo(const Value& value, std::ostream* out) {
    if constexpr (requires { *out << Printed::of(value); }) {
        *out << Printed::of(value);
    } else {
        const auto print = [&](const auto&... fields) {
            const char* before = "{";
            ((*out << std::exchange(before, ", "), testing::internal::UniversalPrint(fields, out)), ...);
        };
        std::apply(print, Printed::of(value));
        *out << "}";
    }
}

namespace LicenseMatcher {
using ScanKit::PrintTo;
}
namespace SwiftPMParser {
using ScanKit::PrintTo;
}
namespace PythonParser {
using ScanKit::PrintTo;
}

}  // namespace ScanKit

/// A date prints like this inside any other value, too.
template <>
class testing::internal::UniversalPrinter<ScanKit::Date> {
public:
    static void Print(const ScanKit::Date& date, std::ostream* out) { *out << ScanKit::Dates::iso8601(date); }
};
