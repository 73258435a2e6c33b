#include "MenuKit/Mnemonics.h"

#include <optional>

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

namespace Mnemonics {
namespace {

/// The place of a letter that is not taken: the beginning of a word before any other.
std::optional<qsizetype> freePlace(const QString& text, const QSet<QChar>& taken) {
    for (const bool beginsWord : {true, false}) {
        for (qsizetype i = 0; i < text.size(); ++i) {
            const bool isBeginning = i == 0 || text[i - 1] == QLatin1Char(' ');
            if (isBeginning == beginsWord && text[i].isLetter() && !taken.contains(text[i].toLower())) {
                return i;
            }
        }
    }
    return std::nullopt;
}

/// The letter that stands behind the text's "&".
std::optional<QChar> letterOf(const QString& text) {
    const QKeySequence keys = QKeySequence::mnemonic(text);
    return keys.isEmpty() ? std::nullopt
                          : std::optional(QChar(static_cast<char16_t>(keys[0].key())).toLower());
}

}  // namespace

void give(const QMenuBar& bar) {
    for (const QAction* const entry : bar.actions()) {
        if (entry->menu() != nullptr) {
            give(*entry->menu());
        }
    }
}

void give(const QMenu& menu) {
    QSet<QChar> taken;
    for (const QAction* const entry : menu.actions()) {
        if (const auto letter = letterOf(entry->text())) {
            taken.insert(*letter);
        }
    }
    for (QAction* const entry : menu.actions()) {
        if (entry->menu() != nullptr) {
            give(*entry->menu());
        }
        if (letterOf(entry->text())) {
            continue;
        }
        if (const auto place = freePlace(entry->text(), taken)) {
            taken.insert(entry->text()[*place].toLower());
            entry->setText(QString(entry->text()).insert(*place, QLatin1Char('&')));
        }
    }
}

}  // namespace Mnemonics
