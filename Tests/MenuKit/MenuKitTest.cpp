#include "MenuKit/CloseGuard.h"
#include "MenuKit/CloseWindowAction.h"
#include "MenuKit/EditActions.h"
#include "MenuKit/MenuBaseline.h"
#include "MenuKit/Mnemonics.h"
#include "MenuKit/ShortcutPriority.h"
#include "MenuKit/WindowReader.h"
#include "MenuKit/WindowUndoManagerReader.h"
#include "Tests/QuorvaneApp/Words.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

namespace {

bool show(QWidget& window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

/// A window with fields of several kinds, and the edit actions in a menu.
struct FieldsFixture {
    FieldsFixture() {
        edit.addTo(menu);
        readOnly->setReadOnly(true);
        plain->setFocusPolicy(Qt::StrongFocus);
        auto* const layout = new QVBoxLayout(&window);
        for (QWidget* const widget : std::initializer_list<QWidget*>{first, second, text, readOnly, plain}) {
            layout->addWidget(widget);
        }
        isActive = show(window);
    }
    void trigger(const char* operation) {
        Q_EMIT menu.aboutToShow();
        edit.action(operation)->trigger();
    }
    /// The names of the actions that can be chosen while the widget has the focus.
    QString enabledIn(QWidget* focused) {
        focused->setFocus();
        Q_EMIT menu.aboutToShow();
        QStringList names;
        for (const QAction* const action : menu.actions()) {
            if (action->isEnabled() && !action->isSeparator()) {
                names.push_back(action->objectName());
            }
        }
        return names.join(u' ');
    }

    QWidget window;
    QMenu menu;
    EditActions edit{&window};
    QLineEdit* first = new QLineEdit(u"one"_s);
    QLineEdit* second = new QLineEdit(u"two"_s);
    QPlainTextEdit* text = new QPlainTextEdit;
    QPlainTextEdit* readOnly = new QPlainTextEdit(u"text"_s);
    QWidget* plain = new QWidget;
    bool isActive = false;
};

}  // namespace

/// Menus and windows as any program has them.
class MenuKitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void closeWindowClosesTheFrontWindowAndTheLastOneEndsTheProgram() {
        QWidget first;
        QWidget second;
        QVERIFY(show(first) && show(second));
        QCOMPARE(WindowReader::frontWindow(), &second);
        QTimer::singleShot(0, &first, [&] {
            CloseWindowAction{}.run();
            QVERIFY(!second.isVisible());
            QVERIFY(first.isVisible());
            QTRY_COMPARE(WindowReader::frontWindow(), &first);
            CloseWindowAction{}.run();
        });
        QTimer::singleShot(4000, &first, [] { QCoreApplication::exit(1); });
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(WindowReader::frontWindow() == nullptr);
        CloseWindowAction{}.run();
    }

    void aGuardKeepsItsWindowOpenAndTheFirstThatLivesIsTheMainOne() {
        QVERIFY(CloseGuard::main() == nullptr);
        QWidget later;
        {
            QWidget window;
            bool mayClose = false;
            const auto* const guard = new CloseGuard(window, [&mayClose] { return mayClose; });
            new CloseGuard(later, [] { return true; });
            QCOMPARE(CloseGuard::main(), guard);
            QVERIFY(show(window) && !guard->shouldClose());
            QVERIFY(!window.close());
            CloseWindowAction{}.run();
            QVERIFY(window.isVisible());
            mayClose = true;
            CloseWindowAction{}.run();
            QVERIFY(!window.isVisible());
        }
        QVERIFY(CloseGuard::main() == nullptr);
    }

    void theBaselineNamesTheProgramAndItsShortcuts() {
        int asked = 0;
        QAction further;
        const MenuBaseline baseline{.help = {.appName = u"Example"_s,
                                             .shortcut = QKeySequence(Qt::Key_F1),
                                             .action = [&asked] { ++asked; }},
                                    .helpItems = {&further}};
        QMenu menu;
        QAction* const help = baseline.addHelpTo(menu);
        QCOMPARE(help->text(), u"Example Help"_s);
        QCOMPARE(help->shortcut(), QKeySequence(Qt::Key_F1));
        help->trigger();
        QCOMPARE(asked, 1);
        QVERIFY(menu.actions().contains(&further));
        const QAction* const close = baseline.addCloseTo(menu);
        QCOMPARE(close->text(), u"Close Window"_s);
        QCOMPARE(close->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_W));
    }

    void editActionsReachTheFocusedField() {
        FieldsFixture fixture;
        QVERIFY(fixture.isActive);
        fixture.second->setFocus();
        fixture.trigger("selectAll");
        QCOMPARE(fixture.second->selectedText(), u"two"_s);
        QVERIFY(!fixture.first->hasSelectedText());
        fixture.trigger("cut");
        QCOMPARE(fixture.second->text(), QString());
        QCOMPARE(QApplication::clipboard()->text(), u"two"_s);
        fixture.first->setFocus();
        fixture.first->end(false);
        for (const auto& [operation, text] :
             {std::pair{"paste", u"onetwo"_s}, {"undo", u"one"_s}, {"redo", u"onetwo"_s}}) {
            fixture.trigger(operation);
            QCOMPARE(fixture.first->text(), text);
        }
    }

    void editActionsAreEnabledAsTheFocusAllows() {
        FieldsFixture fixture;
        QVERIFY(fixture.isActive);
        QCOMPARE(fixture.enabledIn(fixture.readOnly), u"copy selectAll"_s);
        QCOMPARE(fixture.enabledIn(fixture.plain), QString());
        QCOMPARE(fixture.enabledIn(fixture.first), u"cut copy paste selectAll"_s);
        QTest::keyClicks(fixture.first, u"a"_s);
        QCOMPARE(fixture.enabledIn(fixture.first), u"undo cut copy paste selectAll"_s);
    }

    void undoBelongsToTheWindowOfTheWidget() {
        FieldsFixture fixture;
        QVERIFY(fixture.isActive);
        fixture.text->setFocus();
        QTest::keyClicks(fixture.text, u"words"_s);
        const UndoManager manager = WindowUndoManagerReader::undoManagerOf(fixture.plain);
        QVERIFY(manager.canUndo() && !manager.canRedo());
        manager.undo();
        QCOMPARE(fixture.text->toPlainText(), QString());
        manager.redo();
        QCOMPARE(fixture.text->toPlainText(), u"words"_s);
        delete fixture.text;
        QVERIFY(!manager.canUndo());
        manager.undo();
        QVERIFY(!WindowUndoManagerReader::undoManagerOf(nullptr).canUndo());
    }

    void eachEntryOfAMenuHasALetterOfItsOwn() {
        QMenuBar bar;
        QMenu& menu = *bar.addMenu(u"&File"_s);
        for (const char* const text : {"Open", "Open Recent", "&Rescan", "…", "Save && Close", "A", "a"}) {
            menu.addAction(QString::fromUtf8(text));
        }
        menu.addSeparator();
        menu.addMenu(u"Sort By"_s)->addAction(u"Name"_s);
        Mnemonics::give(bar);
        QStringList texts;
        for (const QAction* const action : menu.actions()) {
            texts.push_back(action->text());
        }
        // "R" is taken by an entry that brought its own; the second "a" finds nothing free.
        QCOMPARE(texts.join(u'|'), u"&Open|O&pen Recent|&Rescan|…|&Save && Close|&A|a||Sort &By"_s);
        QCOMPARE(menu.actions().back()->menu()->actions().front()->text(), u"&Name"_s);
    }

    void aShortcutComesBeforeTheFieldsOwnKeyAndOnlyInItsWindow() {
        // Every desktop's fields take these keys for themselves, to go to the word before.
        const QKeySequence keys(Qt::CTRL | Qt::Key_Left);
        QWidget window;
        QLineEdit elsewhere(u"words"_s);
        auto* const field = new QLineEdit(u"words"_s, &window);
        QAction action;
        action.setShortcut(keys);
        window.addAction(&action);
        int triggered = 0;
        connect(&action, &QAction::triggered, &action, [&] { ++triggered; });
        QVERIFY(show(window));
        field->setFocus();
        new ShortcutPriority(window, {&action});
        QTest::keyClick(field, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(triggered, 1);
        QCOMPARE(field->cursorPosition(), 5);
        // A command that cannot be carried out leaves the field its key, and so does one of another window.
        action.setEnabled(false);
        QTest::keyClick(field, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(field->cursorPosition(), 0);
        action.setEnabled(true);
        QVERIFY(show(elsewhere));
        QTest::keyClick(&elsewhere, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(elsewhere.cursorPosition(), 0);
        QCOMPARE(triggered, 1);
    }
};

QTEST_MAIN(MenuKitTest)
#include "MenuKitTest.moc"
