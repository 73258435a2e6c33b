#include "ScanKit/Reports/JSONReport.h"

#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Support/JSONWriter.h"
#include "ScanKit/Support/Text.h"

namespace ScanKit::Exports {
namespace {

/// The bytes that an item takes in the document, notes of the usual length included.
constexpr std::size_t usualItemSize = 600;

void write(JSONWriter& writer, std::string_view key, std::string_view text) {
    writer.key(key);
    writer.string(text);
}

void write(JSONWriter& writer, std::string_view key, const std::optional<std::string_view>& text) {
    // An absent field has no key; null would be one more case for every reader.
    if (text) {
        write(writer, key, *text);
    }
}

template <typename Texts>
void writeList(JSONWriter& writer, std::string_view key, const Texts& texts) {
    writer.key(key);
    writer.beginArray();
    for (const auto& text : texts) {
        writer.string(text);
    }
    writer.endArray();
}

void write(JSONWriter& writer, std::string_view key, std::size_t count) {
    writer.key(key);
    writer.integer(static_cast<std::int64_t>(count));
}

void write(JSONWriter& writer, const ScanSource& source) {
    writer.beginObject();
    write(writer, "ecosystem", rawValue(source.ecosystem));
    write(writer, "kind", std::string_view(source.kind));
    write(writer, "path", std::string_view(source.path));
    writer.endObject();
}

void write(JSONWriter& writer, const ReportSummary& summary) {
    writer.beginObject();
    write(writer, "copyleft", summary.copyleft);
    write(writer, "dependencies", summary.total);
    write(writer, "needsReview", summary.needsReview);
    write(writer, "unknownOrMissing", summary.unknownOrMissing);
    writer.endObject();
}

void write(JSONWriter& writer, const JSONReport::Item& item) {
    // Keys in ascending order: programs that compare two reports line by line rely on it.
    writer.beginObject();
    write(writer, "basis", item.basis);
    write(writer, "category", item.category);
    write(writer, "declared", item.declared);
    writer.key("devOnly");
    writer.boolean(item.devOnly);
    write(writer, "ecosystem", item.ecosystem);
    writeList(writer, "flags", item.flags);
    write(writer, "license", item.license);
    writeList(writer, "licenseFiles", item.licenseFiles);
    if (item.matchScore) {
        writer.key("matchScore");
        writer.number(*item.matchScore);
    }
    write(writer, "name", item.name);
    writeList(writer, "notes", item.notes);
    write(writer, "source", item.source);
    write(writer, "version", item.version);
    writer.endObject();
}

template <typename Records>
void writeObjects(JSONWriter& writer, std::string_view key, const Records& records) {
    writer.key(key);
    writer.beginArray();
    for (const auto& record : records) {
        write(writer, record);
    }
    writer.endArray();
}

}  // namespace

JSONReport::Item::Item(const Dependency& dependency)
    : ecosystem(rawValue(dependency.ecosystem)),
      name(dependency.name),
      version(dependency.version),
      license(dependency.license),
      category(label(dependency.category)),
      basis(rawValue(dependency.basis)),
      matchScore(dependency.matchScore),
      devOnly(dependency.isDev),
      declared(dependency.declared),
      licenseFiles(dependency.licenseFileNames),
      source(dependency.source),
      notes(dependency.notes) {
    flags.reserve(dependency.flags.size());
    for (const Flag flag : dependency.flags) {
        flags.push_back(rawValue(flag));
    }
}

JSONReport::JSONReport(const ScanResult& result, const ReportOptions& options)
    : project(Text::oneLine(options.projectName)),
      generated(result.scannedAt),
      generator(Text::oneLine(options.appName)),
      disclaimer(Exports::disclaimer),
      sources(result.sources) {
    for (const ScanWarning& warning : result.warnings) {
        warnings.emplace_back(warning.sentence);
    }
    const std::vector<const Dependency*> reported = reportedDependencies(result, options);
    summary = ReportSummary(reported);
    dependencies.reserve(reported.size());
    for (const Dependency* dependency : reported) {
        dependencies.emplace_back(*dependency);
    }
}

std::string JSONReport::encoded() const {
    JSONWriter writer(1024 + dependencies.size() * usualItemSize);
    writer.beginObject();
    writeObjects(writer, "dependencies", dependencies);
    write(writer, "disclaimer", disclaimer);
    write(writer, "generated", std::string_view(Dates::iso8601(generated)));
    write(writer, "generator", std::string_view(generator));
    write(writer, "project", std::string_view(project));
    writeObjects(writer, "sources", sources);
    writer.key("summary");
    write(writer, summary);
    writeList(writer, "warnings", warnings);
    writer.endObject();
    return writer.take();
}

std::string json(const ScanResult& result, const ReportOptions& options) {
    return JSONReport(result, options).encoded();
}

}  // namespace ScanKit::Exports
