#include "ScanKit/Support/YAML.h"

#include "ScanKit/Support/PlainYAML.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include <libfyaml.h>

namespace ScanKit {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

struct ParserRelease {
    void operator()(fy_parser* parser) const { fy_parser_destroy(parser); }
};
struct DiagnosticsRelease {
    void operator()(fy_diag* diagnostics) const { fy_diag_unref(diagnostics); }
};
using Diagnostics = std::unique_ptr<fy_diag, DiagnosticsRelease>;
using Parser = std::unique_ptr<fy_parser, ParserRelease>;

/// A fault in a project's file is ours to report: the library would write to standard error.
Diagnostics silence() {
    fy_diag_cfg settings;
    fy_diag_cfg_default(&settings);
    settings.fp = nullptr;
    settings.output_fn = [](fy_diag*, void*, const char*, std::size_t) {};
    return Diagnostics(fy_diag_create(&settings));
}

/// The parser looks at all tag directives again for each: some 100,000 would keep it busy for half a minute.
bool holdsDirective(std::string_view text) {
    return text.starts_with('%') || text.find("\n%") != std::string_view::npos ||
           text.find("\r%") != std::string_view::npos;
}

/// A list or table that is not closed yet.
struct Open {
    bool isTable = false;
    std::vector<DataValue> elements;
    std::vector<DataValue::Member> members;
    std::optional<std::string> key;  ///< of a table: read, its value not yet
};

/// Puts documents together from the parser's events.
class Builder {
public:
    /// False when the event is one that no lockfile has.
    bool take(const fy_event& event) {
        switch (event.type) {
            case FYET_NONE:
            case FYET_STREAM_START:
            case FYET_STREAM_END:
            case FYET_DOCUMENT_START:
                return true;
            case FYET_DOCUMENT_END:
                documents_.push_back(std::move(top_));
                top_ = {};
                return true;
            case FYET_MAPPING_START:
                return open(true);
            case FYET_SEQUENCE_START:
                return open(false);
            case FYET_MAPPING_END:
            case FYET_SEQUENCE_END:
                close();
                return true;
            case FYET_SCALAR:
                return takeScalar(event.scalar.value, event.scalar.tag != nullptr);
            case FYET_ALIAS:
                return false;
        }
        return false;
    }
    std::vector<DataValue> documents() && { return std::move(documents_); }

private:
    bool open(bool isTable) {
        if (open_.size() == YAMLLimits::levels || ++values_ > YAMLLimits::values || expectsKey()) {
            return false;
        }
        open_.push_back({.isTable = isTable});
        return true;
    }
    void close() {
        Open closed = std::move(open_.back());
        open_.pop_back();
        if (closed.isTable) {
            keepLastOfEqualKeys(closed.members);
            put(DataValue(std::move(closed.members)));
        } else {
            put(DataValue(std::move(closed.elements)));
        }
    }
    bool takeScalar(fy_token* token, bool hasTag) {
        if (++values_ > YAMLLimits::values) {
            return false;
        }
        std::size_t length = 0;
        const char* const start = token != nullptr ? fy_token_get_text(token, &length) : nullptr;
        std::string text(start != nullptr ? start : "", start != nullptr ? length : 0);
        const bool isPlain = token == nullptr || fy_token_scalar_style(token) == FYSS_PLAIN;
        if (expectsKey()) {
            const bool isMerge = isPlain && text == "<<";
            open_.back().key = std::move(text);
            return !isMerge;
        }
        put(isPlain && !hasTag ? plainScalar(std::move(text)) : DataValue(std::move(text)));
        return true;
    }
    bool expectsKey() const { return !open_.empty() && open_.back().isTable && !open_.back().key; }
    void put(DataValue value) {
        if (open_.empty()) {
            top_ = std::move(value);
        } else if (Open& parent = open_.back(); parent.isTable) {
            parent.members.emplace_back(std::move(*parent.key), std::move(value));
            parent.key.reset();
        } else {
            parent.elements.push_back(std::move(value));
        }
    }

    std::vector<DataValue> documents_;
    DataValue top_;
    std::vector<Open> open_;
    std::size_t values_ = 0;
};

}  // namespace

std::optional<std::vector<DataValue>> readYAMLDocuments(std::string_view text) {
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    if (text.size() > YAMLLimits::bytes || text.find('\0') != std::string_view::npos ||
        holdsDirective(text) || !Text::isValidUtf8(text)) {
        return std::nullopt;
    }
    std::optional<std::vector<DataValue>> plain = readPlainYAML(text);
    return plain ? std::move(plain) : readAnyYAML(text);
}

std::optional<std::vector<DataValue>> readAnyYAML(std::string_view text) {
    // The parser keeps its state in a list, not on the stack, so that the depth is ours to limit.
    const Diagnostics diagnostics = silence();
    fy_parse_cfg settings{};
    settings.diag = diagnostics.get();
    settings.flags = static_cast<fy_parse_cfg_flags>(FYPCF_QUIET | FYPCF_DISABLE_DEPTH_LIMIT);
    const Parser parser(fy_parser_create(&settings));
    if (!parser || fy_parser_set_string(parser.get(), text.data(), text.size()) != 0) {
        return std::nullopt;
    }
    Builder builder;
    for (bool atEnd = false; !atEnd;) {
        fy_event* const event = fy_parser_parse(parser.get());
        if (event == nullptr) {
            return std::nullopt;
        }
        atEnd = event->type == FYET_STREAM_END;
        const bool isTaken = builder.take(*event);
        fy_parser_event_free(parser.get(), event);
        if (!isTaken) {
            return std::nullopt;
        }
    }
    if (fy_parser_get_stream_error(parser.get())) {
        return std::nullopt;
    }
    return std::move(builder).documents();
}

std::optional<DataValue> readYAML(std::string_view text) {
    std::optional<std::vector<DataValue>> documents = readYAMLDocuments(text);
    if (!documents || documents->size() > 1) {
        return std::nullopt;
    }
    return documents->empty() ? DataValue() : std::move(documents->front());
}

}  // namespace ScanKit
