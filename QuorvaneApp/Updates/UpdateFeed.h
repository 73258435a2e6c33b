#pragma once

#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>

/// One published version, as the feed writes it.
struct FeedItem {
    QString version;                              ///< what versions are ordered by
    std::optional<QString> shortVersion;          ///< what people call it
    std::optional<QString> system;                ///< the operating system's mark; absent means macOS
    std::optional<QString> minimumSystemVersion;  ///< of the operating system
    std::optional<QString> maximumSystemVersion;
    std::optional<QString> channel;  ///< absent for releases; a beta, say, names its own
    std::optional<QString> link;
    std::optional<QString> description;  ///< the release notes
    /// How the notes are written: "plain-text", "markdown", otherwise HTML.
    std::optional<QString> descriptionFormat;

    bool operator==(const FeedItem&) const = default;
};

/// Reads the update framework's feed: RSS with the framework's own elements, of which it takes those above.
/// Items without a version are passed over. Absent when the feed is malformed, is no RSS, or has a document
/// type, and with it entities of its own.
std::optional<std::vector<FeedItem>> readUpdateFeed(const QByteArray& feed);
