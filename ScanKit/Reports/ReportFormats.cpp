#include "ScanKit/Reports/ReportFormats.h"

#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/PDF/PDFReport.h"
#include "ScanKit/Model/EnumerationTable.h"
#include "ScanKit/Support/Text.h"

#include <array>
#include <cstddef>
#include <utility>

namespace ScanKit {
namespace {

constexpr auto rows = std::to_array<ReportFormat>({
    {ReportFormats::pdf, "pdf", "PDF license report (summary, flags, every dependency)",
     " License Report.pdf", PDFReport::document, PDFReport::warning},
    {ReportFormats::notice, "notice", "NOTICE.txt (every package with its license text)", "NOTICE.txt",
     Exports::notice},
    {ReportFormats::csv, "csv", "CSV (one row per package)", " Dependencies.csv", Exports::csv},
    {ReportFormats::json, "json", "JSON", " Dependencies.json", Exports::json},
    {.bit = ReportFormats::html,
     .rawValue = "html",
     .title = "NOTICE.html (the notices as a page, for an app's own screen)",
     .fileName = "NOTICE.html",
     .bytes = Exports::html,
     .isUsual = false},
});

consteval bool rowsAreComplete() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ReportFormat& row = rows[i];
        if (row.bit != static_cast<ReportFormats>(1U << i) || row.rawValue.empty() || row.title.empty() ||
            row.fileName.empty()) {
            return false;
        }
    }
    return true;
}

/// The bits that have a name, wherever they stand.
template <std::size_t... bit>
consteval std::size_t namedBits(std::index_sequence<bit...>) {
    return (std::size_t{isEnumerator<static_cast<ReportFormats>(1U << bit)>()} + ...);
}
static_assert(rowsAreComplete() && namedBits(std::make_index_sequence<32>()) == rows.size(),
              "each bit of ReportFormats needs its row, in the order of the bits");

}  // namespace

std::span<const ReportFormat> reportFormats() {
    return rows;
}

ReportFormats allReportFormats() {
    ReportFormats all = ReportFormats::none;
    for (const ReportFormat& row : rows) {
        all = all | row.bit;
    }
    return all;
}

ReportFormats usualReportFormats() {
    ReportFormats usual = ReportFormats::none;
    for (const ReportFormat& row : rows) {
        usual = row.isUsual ? usual | row.bit : usual;
    }
    return usual;
}

std::string fileName(const ReportFormat& format, std::string_view projectName) {
    if (!format.fileName.starts_with(' ')) {
        return std::string(format.fileName);
    }
    std::string name = Text::oneLine(std::string(projectName));
    // One separates folders here, the other did on older systems and still reads as one in file managers.
    for (char& c : name) {
        c = c == '/' || c == ':' ? '-' : c;
    }
    return name + std::string(format.fileName);
}

}  // namespace ScanKit
