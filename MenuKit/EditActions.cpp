#include "MenuKit/EditActions.h"

#include "MenuKit/WindowUndoManagerReader.h"

#include <array>
#include <cstring>
#include <string_view>

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>

namespace {

struct EditRow {
    const char* operation;  ///< the slot's name, and the action's object name
    const char* text;
    QKeySequence::StandardKey key;
    bool endsGroup;
};

constexpr std::array<EditRow, 6> editRows{{
    {"undo", "Undo", QKeySequence::Undo, false},
    {"redo", "Redo", QKeySequence::Redo, true},
    {"cut", "Cut", QKeySequence::Cut, false},
    {"copy", "Copy", QKeySequence::Copy, false},
    {"paste", "Paste", QKeySequence::Paste, false},
    {"selectAll", "Select All", QKeySequence::SelectAll, true},
}};

/// By name and not by class, so that a table that can copy its rows takes part.
bool hasOperation(const QWidget& widget, const char* operation) {
    const QByteArray signature = QByteArray(operation) + "()";
    return widget.metaObject()->indexOfSlot(signature.constData()) >= 0;
}

/// The kinds of text fields have no common class, but all have this property.
bool isReadOnly(const QWidget& widget) {
    return widget.property("readOnly").toBool();
}

}  // namespace

EditActions::EditActions(QObject* parent) : QObject(parent) {
    for (const EditRow& row : editRows) {
        auto* const action = new QAction(QString::fromUtf8(row.text), this);
        action->setObjectName(QLatin1StringView(row.operation));
        action->setShortcut(row.key);
        connect(action, &QAction::triggered, this, [this, &row] { run(row.operation); });
        actions_.push_back(action);
    }
    remember(QApplication::focusWidget());
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { remember(now); });
}

void EditActions::addTo(QMenu& menu) {
    for (std::size_t i = 0; i < editRows.size(); ++i) {
        menu.addAction(actions_[i]);
        if (editRows[i].endsGroup) {
            menu.addSeparator();
        }
    }
    connect(&menu, &QMenu::aboutToShow, this, &EditActions::refresh);
}

QAction* EditActions::action(const char* operation) const {
    for (QAction* const action : actions_) {
        if (action->objectName() == QLatin1StringView(operation)) {
            return action;
        }
    }
    return nullptr;
}

/// A menu bar that is walked through with the keys takes the focus: what was in it before still counts.
void EditActions::remember(QWidget* focused) {
    if (focused == nullptr || qobject_cast<QMenuBar*>(focused) || qobject_cast<QMenu*>(focused)) {
        return;
    }
    focused_ = focused;
    refresh();
}

void EditActions::refresh() {
    for (std::size_t i = 0; i < editRows.size(); ++i) {
        actions_[i]->setEnabled(isAvailable(editRows[i].operation));
    }
}

bool EditActions::isAvailable(const char* operation) const {
    if (focused_.isNull() || !hasOperation(*focused_, operation)) {
        return false;
    }
    const std::string_view name = operation;
    if (name == "undo") {
        return WindowUndoManagerReader::undoManagerOf(focused_).canUndo();
    }
    if (name == "redo") {
        return WindowUndoManagerReader::undoManagerOf(focused_).canRedo();
    }
    return !isReadOnly(*focused_) || name == "copy" || name == "selectAll";
}

void EditActions::run(const char* operation) const {
    if (!focused_.isNull() && hasOperation(*focused_, operation)) {
        QMetaObject::invokeMethod(focused_.data(), operation);
    }
}
