#pragma once

#include "ScanKit/Identification/KnownLicense.h"
#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/TextReading.h"
#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Model/ScanOptions.h"
#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Readers/PythonParser.h"
#include "ScanKit/Readers/SwiftPMParser.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Regex.h"

#include <concepts>
#include <ostream>
#include <string_view>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

/// Says in a failing test what a record holds, field by field in declared order, where Google Test would print its
/// bytes. A test program that compares records includes this; what it does not print, it need not link.
namespace Printers {

template <typename... Field>
void print(std::ostream* out, const Field&... fields) {
    std::string_view separator = "{";
    ((*out << std::exchange(separator, ", "), testing::internal::UniversalPrint(fields, out)), ...);
    *out << "}";
}

}  // namespace Printers

template <>
class testing::internal::UniversalPrinter<ScanKit::Date> {
public:
    static void Print(const ScanKit::Date& date, std::ostream* out) { *out << ScanKit::Dates::iso8601(date); }
};

namespace ScanKit {

template <typename Value>
concept HasRawValue = requires(const Value& value) {
    { rawValue(value) } -> std::same_as<std::string_view>;
};

template <HasRawValue Value>
void PrintTo(const Value& value, std::ostream* out) {
    *out << rawValue(value);
}
template <HasFields Record>
void PrintTo(const Record& record, std::ostream* out) {
    std::apply([&](const auto&... fields) { Printers::print(out, fields...); }, record.fields());
}

inline void PrintTo(const LicenseExpression& expression, std::ostream* out) {
    *out << expression.description();
}
inline void PrintTo(const KnownLicense& row, std::ostream* out) {
    Printers::print(out, row.id, row.name, row.category, row.text, row.isSPDX);
}
inline void PrintTo(const TextMatch& match, std::ostream* out) {
    Printers::print(out, match.id, match.score, match.byNotice);
}
inline void PrintTo(const TextReading::Match& match, std::ostream* out) {
    Printers::print(out, match.id, match.byNotice, match.score, match.region);
}
inline void PrintTo(const LicenseFiles& files, std::ostream* out) {
    Printers::print(out, files.licenses, files.notices);
}
inline void PrintTo(const FolderEntry& entry, std::ostream* out) {
    constexpr std::string_view kinds[]{"file", "folder", "other"};
    *out << entry.name << (entry.isLink ? " -> " : " ") << kinds[static_cast<std::size_t>(entry.kind)];
}

inline void PrintTo(const Regex::Match& match, std::ostream* out) {
    Printers::print(out, match.begin, match.end);
}

namespace LicenseMatcher {
inline void PrintTo(const Candidate& one, std::ostream* out) {
    Printers::print(out, one.id, one.score, one.wordCount, one.start, one.end);
}
}  // namespace LicenseMatcher

namespace SwiftPMParser {
inline void PrintTo(const Pin& pin, std::ostream* out) {
    Printers::print(out, pin.identity, pin.name, pin.location, pin.version, pin.branch, pin.revision);
}
}  // namespace SwiftPMParser

namespace PythonParser {
inline void PrintTo(const Requirement& requirement, std::ostream* out) {
    Printers::print(out, requirement.name, requirement.version, requirement.isDev);
}
inline void PrintTo(const Installed& one, std::ostream* out) {
    Printers::print(out, one.name, one.version, one.license, one.licenseExpression, one.classifiers,
                    one.homepage, one.folder, one.licenseFiles);
}
}  // namespace PythonParser

}  // namespace ScanKit
