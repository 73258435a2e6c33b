#include "ScanKit/Model/Coding.h"

#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/JSONWriter.h"

#include <array>

namespace ScanKit {
namespace {

struct StateRow {
    std::string_view name;
    std::size_t EntryStates::*count;
};
constexpr auto stateRows = std::to_array<StateRow>({
    {"listed", &EntryStates::listed},
    {"listedAlready", &EntryStates::listedAlready},
    {"notInstalled", &EntryStates::notInstalled},
    {"own", &EntryStates::own},
    {"unreadable", &EntryStates::unreadable},
});

void write(JSONWriter& json, const ScanSource& source) {
    json.beginObject();
    json.key("ecosystem");
    json.string(rawValue(source.ecosystem));
    json.key("path");
    json.string(source.path);
    json.key("kind");
    json.string(source.kind);
    if (source.entries) {
        json.key("entries");
        json.beginObject();
        for (const StateRow& row : stateRows) {
            json.key(row.name);
            json.number(static_cast<double>(*source.entries.*row.count));
        }
        json.endObject();
    }
    json.endObject();
}

void write(JSONWriter& json, const ScanWarning& warning) {
    json.beginObject();
    json.key("kind");
    json.string(rawValue(warning.kind));
    json.key("sentence");
    json.string(warning.sentence);
    json.endObject();
}

/// An optional or shared text.
template <typename Text>
void writeText(JSONWriter& json, std::string_view key, const Text& text) {
    if (text) {
        json.key(key);
        json.string(*text);
    }
}

void writeTexts(JSONWriter& json, std::string_view key, const std::vector<std::string>& texts) {
    json.key(key);
    json.beginArray();
    for (const std::string& text : texts) {
        json.string(text);
    }
    json.endArray();
}

void write(JSONWriter& json, const Dependency& dependency) {
    json.beginObject();
    json.key("ecosystem");
    json.string(rawValue(dependency.ecosystem));
    json.key("name");
    json.string(dependency.name);
    json.key("version");
    json.string(dependency.version);
    writeText(json, "source", dependency.source);
    json.key("isDev");
    json.boolean(dependency.isDev);
    writeText(json, "declared", dependency.declared);
    writeText(json, "license", dependency.license);
    json.key("category");
    json.string(rawValue(dependency.category));
    json.key("basis");
    json.string(rawValue(dependency.basis));
    if (dependency.matchScore) {
        json.key("matchScore");
        json.number(*dependency.matchScore);
    }
    writeTexts(json, "licenseFileNames", dependency.licenseFileNames);
    writeText(json, "licenseText", dependency.licenseText);
    writeText(json, "noticeText", dependency.noticeText);
    json.key("flags");
    json.beginArray();
    for (const Flag flag : dependency.flags) {
        json.string(rawValue(flag));
    }
    json.endArray();
    writeTexts(json, "notes", dependency.notes);
    if (!dependency.way.empty()) {
        writeTexts(json, "way", dependency.way);
    }
    json.endObject();
}

template <typename Record>
void writeRecords(JSONWriter& json, std::string_view key, const std::vector<Record>& records) {
    json.key(key);
    json.beginArray();
    for (const Record& record : records) {
        write(json, record);
    }
    json.endArray();
}

/// Reads the members of one record and remembers whether any was not what it must be.
class RecordReader {
public:
    explicit RecordReader(JSONValue record) : record_(record), isComplete_(record.isObject()) {}

    bool isComplete() const { return isComplete_; }

    std::string text(std::string_view key) {
        return std::string(required(record_.stringMember(key)).value_or(""));
    }

    std::optional<std::string> optionalText(std::string_view key) {
        return isAbsent(key) ? std::nullopt : std::optional(text(key));
    }

    bool boolean(std::string_view key) { return required(record_.booleanMember(key)).value_or(false); }

    std::optional<double> optionalNumber(std::string_view key) {
        return isAbsent(key) ? std::nullopt : required(record_.member(key)->number());
    }

    /// The value whose raw name the member holds.
    template <typename Value>
    Value named(std::string_view key, std::optional<Value> (*fromRawValue)(std::string_view),
                Value fallback) {
        const std::optional<std::string_view> name = required(record_.stringMember(key));
        return required(name ? fromRawValue(*name) : std::nullopt).value_or(fallback);
    }

    /// Each element of the member, which must be an array, turned into a value by `read`.
    template <typename Value, typename Read>
    std::vector<Value> list(std::string_view key, Read read) {
        std::vector<Value> values;
        const std::optional<JSONValue> array = required(record_.member(key));
        if (!array || !array->isArray()) {
            // A list that is missing is not an empty list: something else wrote this.
            isComplete_ = false;
            return values;
        }
        for (const JSONValue& element : array->elements()) {
            if (const std::optional<Value> value = required(read(element))) {
                values.push_back(*value);
            }
        }
        return values;
    }

    std::vector<std::string> texts(std::string_view key) {
        return list<std::string>(key, [](const JSONValue& element) -> std::optional<std::string> {
            const auto text = element.string();
            return text ? std::optional<std::string>(*text) : std::nullopt;
        });
    }

    /// Empty when it is missing.
    std::vector<std::string> optionalTexts(std::string_view key) {
        return isAbsent(key) ? std::vector<std::string>() : texts(key);
    }

    template <typename Value>
    std::optional<Value> required(std::optional<Value> value) {
        isComplete_ = isComplete_ && value.has_value();
        return value;
    }

private:
    /// Other programs write null for what is absent.
    bool isAbsent(std::string_view key) const {
        const std::optional<JSONValue> value = record_.member(key);
        return !value || value->isNull();
    }

    JSONValue record_;
    bool isComplete_;
};

std::optional<EntryStates> readStates(const JSONValue& value) {
    EntryStates states;
    for (const StateRow& row : stateRows) {
        const std::optional<JSONValue> member = value.member(row.name);
        const std::optional<double> count = member ? member->number() : std::nullopt;
        if (!count || *count < 0) {
            return std::nullopt;
        }
        states.*row.count = static_cast<std::size_t>(*count);
    }
    return states;
}

std::optional<ScanSource> readSource(const JSONValue& value) {
    RecordReader record(value);
    ScanSource source{
        .ecosystem = record.named("ecosystem", ecosystemFromRawValue, Ecosystem::swiftpm),
        .path = record.text("path"),
        .kind = record.text("kind"),
    };
    if (const std::optional<JSONValue> entries = value.member("entries"); entries && !entries->isNull()) {
        source.entries = record.required(readStates(*entries));
    }
    return record.isComplete() ? std::optional(std::move(source)) : std::nullopt;
}

std::optional<ScanWarning> readWarning(const JSONValue& value) {
    RecordReader record(value);
    ScanWarning warning{
        .kind = record.named("kind", warningKindFromRawValue, ScanWarning::Kind{}),
        .sentence = record.text("sentence"),
    };
    return record.isComplete() ? std::optional(std::move(warning)) : std::nullopt;
}

std::optional<Flag> readFlag(const JSONValue& value) {
    const auto name = value.string();
    return name ? flagFromRawValue(*name) : std::nullopt;
}

std::optional<Dependency> readDependency(const JSONValue& value) {
    RecordReader record(value);
    Dependency dependency{
        .ecosystem = record.named("ecosystem", ecosystemFromRawValue, Ecosystem::swiftpm),
        .name = record.text("name"),
        .version = record.text("version"),
        .source = record.optionalText("source"),
        .isDev = record.boolean("isDev"),
        .declared = record.optionalText("declared"),
        .license = record.optionalText("license"),
        .category = record.named("category", licenseCategoryFromRawValue, LicenseCategory::unknown),
        .basis = record.named("basis", licenseBasisFromRawValue, LicenseBasis::none),
        .matchScore = record.optionalNumber("matchScore"),
        .licenseFileNames = record.texts("licenseFileNames"),
        .licenseText = record.optionalText("licenseText"),
        .noticeText = record.optionalText("noticeText"),
        .flags = record.list<Flag>("flags", readFlag),
        .notes = record.texts("notes"),
        .way = record.optionalTexts("way"),
    };
    return record.isComplete() ? std::optional(std::move(dependency)) : std::nullopt;
}

std::optional<ScanResult> readResult(const JSONValue& value) {
    RecordReader record(value);
    ScanResult result{
        .projectName = record.text("projectName"),
        .rootPath = record.text("rootPath"),
        .scannedAt = record.required(Dates::fromIso8601(record.text("scannedAt"))).value_or(Date{}),
        .sources = record.list<ScanSource>("sources", readSource),
        .dependencies = record.list<Dependency>("dependencies", readDependency),
        .warnings = record.list<ScanWarning>("warnings", readWarning),
    };
    return record.isComplete() ? std::optional(std::move(result)) : std::nullopt;
}

template <typename Record>
std::string encodedRecord(const Record& record) {
    JSONWriter json;
    write(json, record);
    return json.take();
}

template <typename Record>
std::optional<Record> decodedRecord(std::string_view json, std::optional<Record> (*read)(const JSONValue&)) {
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(json);
    return top ? read(*top) : std::nullopt;
}

}  // namespace

std::string encoded(const ScanSource& source) {
    return encodedRecord(source);
}

std::string encoded(const Dependency& dependency) {
    return encodedRecord(dependency);
}

std::string encoded(const ScanResult& result) {
    JSONWriter json;
    json.beginObject();
    json.key("projectName");
    json.string(result.projectName);
    json.key("rootPath");
    json.string(result.rootPath);
    json.key("scannedAt");
    json.string(Dates::iso8601(result.scannedAt));
    writeRecords(json, "sources", result.sources);
    writeRecords(json, "dependencies", result.dependencies);
    writeRecords(json, "warnings", result.warnings);
    json.endObject();
    return json.take();
}

std::optional<ScanSource> decodedScanSource(std::string_view json) {
    return decodedRecord(json, readSource);
}

std::optional<Dependency> decodedDependency(std::string_view json) {
    return decodedRecord(json, readDependency);
}

std::optional<ScanResult> decodedScanResult(std::string_view json) {
    return decodedRecord(json, readResult);
}

}  // namespace ScanKit
