#include "QuorvaneApp/Updates/UpdateFeed.h"

#include <array>
#include <utility>

#include <QXmlStreamReader>

namespace {

using Text = std::optional<QString>;

const QString frameworkNamespace = QStringLiteral("http://www.andymatuschak.org/xml-namespaces/sparkle");

struct TextRow {
    bool isFrameworks;  ///< in the framework's namespace, otherwise in none
    const char* name;
    Text FeedItem::*field;
};

constexpr std::array<TextRow, 6> elementRows{{
    {false, "link", &FeedItem::link},
    {false, "description", &FeedItem::description},
    {true, "shortVersionString", &FeedItem::shortVersion},
    {true, "minimumSystemVersion", &FeedItem::minimumSystemVersion},
    {true, "maximumSystemVersion", &FeedItem::maximumSystemVersion},
    {true, "channel", &FeedItem::channel},
}};

/// What stands in the download's attributes, the operating system there alone: the framework looks for it nowhere
/// else, and would take an item that names its system elsewhere for one of macOS.
constexpr std::array<TextRow, 2> enclosureRows{{
    {true, "shortVersionString", &FeedItem::shortVersion},
    {true, "os", &FeedItem::system},
}};

bool isAt(const QXmlStreamReader& reader, bool isFrameworks, const char* name) {
    return reader.name() == QLatin1StringView(name) &&
           (isFrameworks ? reader.namespaceUri() == frameworkNamespace : reader.namespaceUri().isEmpty());
}

/// The first of two counts, and an empty one does not.
void keep(Text& field, const QString& text) {
    if (!field && !text.isEmpty()) {
        field = text;
    }
}

void readEnclosure(QXmlStreamReader& reader, FeedItem& item, Text& version) {
    const QXmlStreamAttributes attributes = reader.attributes();
    const auto valueOf = [&attributes](const char* name) {
        return attributes.value(frameworkNamespace, QLatin1StringView(name)).toString().trimmed();
    };
    keep(version, valueOf("version"));
    for (const TextRow& row : enclosureRows) {
        keep(item.*row.field, valueOf(row.name));
    }
    reader.skipCurrentElement();
}

/// The element's text, elements inside it left out. (Taking their text along would call itself once a level,
/// as deep as the feed likes.)
QString readText(QXmlStreamReader& reader) {
    return reader.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
}

void readElement(QXmlStreamReader& reader, FeedItem& item, Text& version) {
    if (isAt(reader, false, "enclosure")) {
        readEnclosure(reader, item, version);
        return;
    }
    if (isAt(reader, true, "version")) {
        keep(version, readText(reader));
        return;
    }
    if (isAt(reader, false, "description") && !item.description) {
        keep(item.descriptionFormat,
             reader.attributes().value(frameworkNamespace, QLatin1StringView("format")).toString());
    }
    for (const TextRow& row : elementRows) {
        if (isAt(reader, row.isFrameworks, row.name)) {
            keep(item.*row.field, readText(reader));
            return;
        }
    }
    reader.skipCurrentElement();
}

/// Absent when the item has no version.
std::optional<FeedItem> readItem(QXmlStreamReader& reader) {
    FeedItem item;
    Text version;
    while (reader.readNextStartElement()) {
        readElement(reader, item, version);
    }
    if (!version) {
        return std::nullopt;
    }
    item.version = *std::move(version);
    return item;
}

/// Goes to the document's element; false when a document type comes first, or nothing.
bool enterDocument(QXmlStreamReader& reader) {
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isDTD()) {
            return false;
        }
        if (reader.isStartElement()) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<std::vector<FeedItem>> readUpdateFeed(const QByteArray& feed) {
    QXmlStreamReader reader(feed);
    if (!enterDocument(reader) || !isAt(reader, false, "rss")) {
        return std::nullopt;
    }
    std::vector<FeedItem> items;
    while (reader.readNextStartElement()) {
        if (!isAt(reader, false, "channel")) {
            reader.skipCurrentElement();
            continue;
        }
        while (reader.readNextStartElement()) {
            if (!isAt(reader, false, "item")) {
                reader.skipCurrentElement();
            } else if (std::optional<FeedItem> item = readItem(reader)) {
                items.push_back(*std::move(item));
            }
        }
    }
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return reader.hasError() ? std::nullopt : std::optional(std::move(items));
}
