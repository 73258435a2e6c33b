#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ScanKit {

struct ReportOptions;
struct ScanResult;

/// The report formats as bits of a set, in the order in which they are written.
enum class ReportFormats : unsigned { none = 0, pdf = 1, notice = 2, csv = 4, json = 8, html = 16 };

constexpr ReportFormats operator|(ReportFormats a, ReportFormats b) {
    return static_cast<ReportFormats>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr bool contains(ReportFormats set, ReportFormats one) {
    return (static_cast<unsigned>(set) & static_cast<unsigned>(one)) != 0;
}

/// All that is said of a report in one place: the writer, the command's options and the export sheet read it here.
struct ReportFormat {
    ReportFormats bit;
    std::string_view rawValue;  ///< the name for a command line: "notice"
    std::string_view title;     ///< what people read: "NOTICE.txt (every package with its license text)"
    std::string_view fileName;  ///< begins with a blank when the project's name stands before it
    /// The finished file. Throws std::runtime_error when it cannot be made: in a program that loads what draws a PDF, for example.
    std::string (&bytes)(const ScanResult&, const ReportOptions&);
    /// What the file cannot show of the result, as a sentence for whoever saves it; no function for one that shows all.
    std::optional<std::string> (*warning)(const ScanResult&, const ReportOptions&) = nullptr;
    bool isUsual = true;  ///< written when nobody chooses
};

/// The reports, in the order in which they are written.
std::span<const ReportFormat> reportFormats();
/// The set of all of them.
ReportFormats allReportFormats();
/// The set of those that are written when nobody chooses.
ReportFormats usualReportFormats();

/// The name of a report's file, on one line. In the project's name "/" and ":" become "-".
std::string fileName(const ReportFormat& format, std::string_view projectName);

}  // namespace ScanKit
