#pragma once

#include <QString>

struct FeedItem;

/// The item's release notes as plain text: HTML without its markup, other formats as they are written. Empty when
/// it has none. Nothing that HTML refers to is loaded. Only the first 32 Ki characters are read, and what follows
/// is told by an ellipsis: markup that nests ever deeper takes Qt 0.7 seconds at that length, four times as long at
/// twice the length, and in the end the stack.
QString plainReleaseNotes(const FeedItem& item);
