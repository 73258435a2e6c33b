#include "QuorvaneCLI/ResultText.h"
#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/ReportFormats.h"
#include "ScanKit/Reports/PDF/PDFReport.h"
#include "ScanKit/Scan/Scanner.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::HasSubstr;
using namespace std::string_literals;

/// What a package may write to tear a row, forge an entry, start a formula, steer a terminal or turn the text around.
const std::vector<std::string>& hostileTexts() {
    static const std::string forged = "\n" + std::string(78, '=') + "\nforged 1.0\nLicense: MIT\n";
    static const std::vector<std::string> texts{
        "1.0",
        "cr\r=forged()",
        "lf" + forged,
        "crlf\r\n=cmd|' /C calc'!A0",
        "vt\x0B=forged() ff\x0C=forged()",
        "nel\u0085License: forged",
        "separators\u2028License: forged\u2029License: forged",
        "bidi\u202Egpj.exe\u202C \u2066one\u2069 \u200Etwo\u200F \u061Cthree \u202A\u202B\u202D\u2067\u2068",
        "nul\0License: forged"s,
        "=cmd|' /C calc'!A0",
        "@SUM(A1)",
        "+1+1",
        "-2+3",
        "\t=1",
        "\r\n=1",
        "esc\x1B[2J\x1B]0;title\a \u009B31m \x7F\b\b\b",
        "quote\",\"\r\n\"=1\",'<script>alert(1)</script>&amp;]]>-->",
        std::string(3'000, 'W'),
    };
    return texts;
}

/// The text as JSON, YAML and TOML quote it; all three read these escapes.
std::string escaped(std::string_view text) {
    std::string result = "\"";
    for (std::size_t i = 0; i < text.size();) {
        const char32_t scalar = Text::nextScalar(text, i);
        const bool isPlain = scalar >= ' ' && scalar <= '~' && scalar != '"' && scalar != '\\';
        result += isPlain ? std::string(1, static_cast<char>(scalar))
                          : fmt::format("\\u{:04x}", static_cast<unsigned>(scalar));
    }
    return result + '"';
}

struct ReaderRow {
    std::string_view name;  ///< the package's begins with the hostile text, and ends with this
    std::string_view file;
    /// {0} is the package's name, {1} the text as a version, {2} as a source, {3} name and version, {4} as a license;
    /// all quoted.
    std::string_view content;
};
constexpr ReaderRow readers[]{
    {"npm", "npm/package-lock.json",
     R"({{"packages": {{"node_modules/a": {{"name": {0}, "version": {1}, "resolved": {2}, "license": {4}}}}}}})"},
    {"tree", "tree/node_modules/a/package.json",
     R"({{"name": {0}, "version": {1}, "repository": {2}, "license": {4}}})"},
    {"pointed", "pointed/node_modules/a/package.json",
     R"({{"name": {0}, "version": {1}, "homepage": {2}, "licenses": [{{"type": {4}}}]}})"},
    {"pnpm", "pnpm/pnpm-lock.yaml",
     "lockfileVersion: '9.0'\npackages:\n  {3}:\n    resolution: {{tarball: {2}}}\nsnapshots:\n  {3}: {{}}\n"},
    {"yarn", "yarn/yarn.lock", "# yarn lockfile v1\n\n{3}:\n  version {1}\n  resolved {2}\n"},
    {"berry", "berry/yarn.lock",
     "__metadata:\n  version: 8\n\n{3}:\n  version: {1}\n  resolution: {3}\n  linkType: hard\n"},
    {"bun", "bun/bun.lock",
     R"({{"lockfileVersion": 1, "workspaces": {{"": {{}}}}, "packages": {{{0}: [{3}, {2}, {{}}]}}}})"},
    {"swift", "swift/Package.resolved",
     R"({{"pins": [{{"identity": {0}, "location": {2}, "state": {{"branch": {1}, "revision": {1}}}}}], "version": 2}})"},
    {"poetry", "poetry/poetry.lock", "[[package]]\nname = {0}\nversion = {1}\n"},
    {"uv", "uv/uv.lock", "version = 1\n[[package]]\nname = {0}\nversion = {1}\nsource = {{ git = {2} }}\n"},
    {"pdm", "pdm/pdm.lock", "[metadata]\nlock_version = \"4.5\"\n[[package]]\nname = {0}\nversion = {1}\n"},
    {"pipenv", "pipenv/Pipfile.lock",
     R"({{"_meta": {{"pipfile-spec": 6}}, "default": {{{0}: {{"version": {1}}}}}}})"},
    {"pylock", "pylock/pylock.toml",
     "lock-version = \"1.0\"\ncreated-by = \"hand\"\n[[packages]]\nname = {0}\nversion = {1}\n"},
};

/// The text as a file's name can hold it, without what would be its extension.
std::string inFileName(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '/' || c == '.' || c == '\0'; }, '_');
    return text.substr(0, 80);
}

/// One project with a dependency file for each reader, a file of each kind that is not read, and a folder's name that says
/// the same.
void writeProject(const TemporaryFolder& folder, const std::string& root, const std::string& text) {
    for (const char* project : {"npm", "tree", "pointed", "pnpm", "yarn", "berry", "bun"}) {
        folder.write(root + "/" + project + "/package.json", R"({"dependencies": {"a": "*"}})");
    }
    for (const ReaderRow& row : readers) {
        const std::string name = text + "-" + std::string(row.name);
        folder.write(root + "/" + std::string(row.file),
                     fmt::format(fmt::runtime(row.content), escaped(name), escaped(text),
                                 escaped("https://example.com/" + name), escaped(name + "@" + text),
                                 escaped(row.name == "pointed" ? "SEE LICENSE IN " + text : text)));
    }
    const std::string named = inFileName(text);
    folder.write(root + "/tree/node_modules/a/LICENSE-" + named, "One text.");
    folder.write(root + "/tree/node_modules/a/LICENSE-" + named + "-2", "Another text.");
    folder.write(root + "/requirements.txt", "same-requirement==1.0" + text + "\n");
    folder.write(root + "/env/pyvenv.cfg", "");
    folder.write(root + "/env/lib/python3.11/site-packages/a.dist-info/METADATA",
                 "Name: " + text + "-metadata\nVersion: " + text + "\nHome-page: " + text +
                     "\nLicense: " + text + "\n");
}

/// Every character but those that tear, steer or turn. `allowed` are the controls that the format itself uses.
testing::AssertionResult isPlain(std::string_view text, std::string_view allowed) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        const char32_t scalar = Text::nextScalar(text, i);
        const bool isHarmful =
            Text::isControl(scalar) || Text::isLineBreak(scalar) || Text::turnsDirection(scalar);
        if (isHarmful && allowed.find(static_cast<char>(scalar)) == std::string_view::npos) {
            return testing::AssertionFailure()
                   << fmt::format("U+{:04X} in “{}”", static_cast<unsigned>(scalar),
                                  text.substr(begin - std::min<std::size_t>(begin, 30), 60));
        }
    }
    return testing::AssertionSuccess();
}

/// The rows of a CSV file as a spreadsheet reads them: fields may be quoted, and then hold commas and line feeds.
std::vector<std::vector<std::string>> rowsOf(std::string_view csv) {
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> row(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < csv.size(); ++i) {
        const bool isDoubled = isQuoted && csv[i] == '"' && csv.substr(i + 1).starts_with('"');
        if (isDoubled || (isQuoted && csv[i] != '"')) {
            row.back() += csv[i];
            i += isDoubled ? 1 : 0;
        } else if (csv[i] == '"') {
            isQuoted = !isQuoted;
        } else if (csv[i] == ',') {
            row.emplace_back();
        } else if (csv[i] == '\r' || csv[i] == '\n') {
            i += csv.substr(i).starts_with("\r\n") ? 1 : 0;
            rows.push_back(std::exchange(row, std::vector<std::string>(1)));
        } else {
            row.back() += csv[i];
        }
    }
    return rows;
}

bool startsFormula(std::string_view cell) {
    return !cell.empty() && "=+-@\t\r"s.find(cell.front()) != std::string::npos;
}

std::size_t linesThatBegin(std::string_view text, std::string_view beginning) {
    const auto lines = Text::nonEmptyLines(text);
    return static_cast<std::size_t>(
        std::ranges::count_if(lines, [&](std::string_view line) { return line.starts_with(beginning); }));
}

/// The names of all elements of a page.
std::set<std::string> tagsOf(std::string_view html) {
    std::set<std::string> names;
    for (std::size_t place = html.find('<'); place != std::string_view::npos;
         place = html.find('<', place + 1)) {
        const std::string_view tag = html.substr(place + (html[place + 1] == '/' ? 2 : 1));
        names.emplace(tag.substr(0, tag.find_first_of(" >\n")));
    }
    return names;
}

void expectOneLineEach(const ScanResult& result) {
    for (const Dependency& one : result.dependencies) {
        for (const std::string& field :
             {one.name, one.version, one.source.value_or(""), Text::joined(one.way, "")}) {
            EXPECT_TRUE(isPlain(field, ""));
        }
        EXPECT_TRUE(isPlain(one.declared.value_or(""), "\n\t"));
        EXPECT_TRUE(isPlain(Text::joined(one.notes, " "), "\n\t"));
        EXPECT_TRUE(isPlain(one.licenseDisplay(), "\t"));
        EXPECT_TRUE(isPlain(Text::joined(one.licenseFileNames, " "), ""));
    }
    for (const ScanSource& source : result.sources) {
        EXPECT_TRUE(isPlain(source.path, ""));
    }
    for (const ScanWarning& warning : result.warnings) {
        EXPECT_TRUE(isPlain(warning.sentence, ""));
    }
    EXPECT_TRUE(isPlain(result.projectName + result.rootPath, ""));
}

void expectWholeExports(const ScanResult& result, const ReportOptions& options) {
    const std::size_t count = result.dependencies.size();
    const std::string csv = Exports::csv(result, options);
    EXPECT_TRUE(isPlain(csv, "\r\n\t"));
    const auto rows = rowsOf(csv);
    EXPECT_EQ(rows.size(), count + 1);
    for (const auto& row : rows) {
        EXPECT_EQ(row.size(), 13U) << row.front();
        for (const std::string& cell : row) {
            EXPECT_FALSE(startsFormula(cell)) << cell;
        }
    }
    const std::string notice = Exports::notice(result, options);
    EXPECT_TRUE(isPlain(notice, "\n\f\t")) << "form feeds are the standard texts' own";
    EXPECT_EQ(linesThatBegin(notice, std::string(78, '=')), 2 * count);
    EXPECT_EQ(linesThatBegin(notice, "License: "), count);
    EXPECT_EQ(linesThatBegin(notice, "  - "), count);

    const std::string json = Exports::json(result, options);
    EXPECT_TRUE(isPlain(json, "\n"));
    EXPECT_EQ(linesThatBegin(json, "      \"devOnly\" : "), count);

    const std::string html = Exports::html(result, options);
    EXPECT_TRUE(isPlain(html, "\n\f\t"));
    EXPECT_THAT(tagsOf(html),
                ::testing::IsSubsetOf({"!DOCTYPE", "a",      "bdi",     "body", "h1",    "h2",    "h3",
                                       "head",     "header", "html",    "li",   "main",  "meta",  "nav",
                                       "p",        "pre",    "section", "span", "style", "title", "ul"}));

    for (const std::size_t columns : {80U, 5'000U}) {
        const std::string terminal = resultText(result, options, {.columns = columns});
        EXPECT_TRUE(isPlain(terminal, "\n"));
        EXPECT_EQ(linesThatBegin(terminal, "License: "), 0U);
    }
    for (const ReportFormat& format : reportFormats()) {
        EXPECT_TRUE(isPlain(fileName(format, options.projectName), ""));
    }
}

/// The document as its readers copy text from it, page by page.
std::string textOfPDF(const ScanResult& result, const ReportOptions& options) {
    const TemporaryFolder folder{{"report.pdf", PDFReport::document(result, options)}};
    const std::string command = QUORVANE_PDFTOTEXT " '" + (folder / "report.pdf").string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    const std::string text = contentOf(folder / "report.txt");
    EXPECT_THAT(text, HasSubstr("Prepared for"));
    return text;
}

TEST(HostileText, ReachesEveryReportAsTextThatTearsAndForgesNothing) {
    for (const std::string& text : hostileTexts()) {
        SCOPED_TRACE(escaped(text).substr(0, 60));
        const std::string root = "project " + inFileName(text);
        const TemporaryFolder folder;
        writeProject(folder, root, text);
        folder.write(root + "/" + root + "/Cargo.lock", "");
        folder.write(root + "/" + root + "/package-lock.json", "damaged");
        const EnvironmentVariable home("HOME", folder.path().string());
        const ScanResult result = Scanner::scan(
            folder / root, {.ecosystems = {Ecosystem::swiftpm, Ecosystem::npm, Ecosystem::python}});
        expectOneLineEach(result);
        expectWholeExports(result, {.projectName = text, .preparedFor = text, .preparedBy = text});

        EXPECT_TRUE(isPlain(textOfPDF(result, {.projectName = text, .preparedFor = text, .preparedBy = text}),
                            "\n\f"));

        std::set<std::string> read;
        for (const Dependency& one : result.dependencies) {
            read.insert(one.name.substr(one.name.rfind('-') + 1));
        }
        EXPECT_THAT(Exports::notice(result, {}), HasSubstr("-2 ---\n\nAnother text."));
        for (const ReaderRow& row : readers) {
            EXPECT_TRUE(text != "1.0" || read.contains(std::string(row.name))) << row.name << " is not read";
        }
        EXPECT_THAT(read, ::testing::SizeIs(::testing::Ge(6U)));
    }
}

}  // namespace
}  // namespace ScanKit
