#include "QuorvaneApp/Updates/ReleaseNotes.h"

#include "QuorvaneApp/Updates/UpdateFeed.h"

#include <QStringList>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextList>

namespace {

/// In characters. Each level of nested HTML takes some of the stack, and a feed has room for 100,000 levels.
constexpr qsizetype longestNotes = 32 * 1024;

bool isHTML(const FeedItem& item) {
    return item.descriptionFormat != QLatin1StringView("plain-text") &&
           item.descriptionFormat != QLatin1StringView("markdown");
}

/// Paragraphs with a blank line between them, the items of a list below each other. (The fragment is read on its
/// own: a whole document would load style sheets, even from the disk.)
QString withoutMarkup(const QString& html) {
    QTextDocument document;
    QTextCursor(&document).insertFragment(QTextDocumentFragment::fromHtml(html));
    QStringList lines;
    bool wasInList = false;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QString text = block.text();
        text.replace(QChar::LineSeparator, u'\n');
        text.remove(QChar::ObjectReplacementCharacter);  // stands for an image
        if (text.trimmed().isEmpty()) {
            continue;
        }
        const bool isInList = block.textList() != nullptr;
        if (!lines.isEmpty() && !(isInList && wasInList)) {
            lines.push_back({});
        }
        lines.push_back(isInList ? QStringLiteral("• ") + text : text);
        wasInList = isInList;
    }
    return lines.join(u'\n');
}

}  // namespace

QString plainReleaseNotes(const FeedItem& item) {
    const QString whole = item.description.value_or(QString());
    const QString read = whole.left(longestNotes);
    const QString notes = isHTML(item) ? withoutMarkup(read) : read;
    return whole.size() > longestNotes ? notes + QStringLiteral("\n…") : notes;
}
