#include "MenuKit/CloseGuard.h"
#include "MenuKit/CloseWindowAction.h"
#include "MenuKit/EditActions.h"
#include "MenuKit/MenuBaseline.h"
#include "MenuKit/WindowReader.h"
#include "MenuKit/WindowUndoManagerReader.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

/// Menus and windows as any program has them.
class MenuKitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void closeWindowClosesTheFrontWindowAndTheLastOneEndsTheProgram();
    void aGuardKeepsItsWindowOpen();
    void theMainGuardIsTheFirstThatLives();
    void theHelpItemNamesTheProgram();
    void editActionsReachTheFocusedField();
    void editActionsAreEnabledAsTheFocusAllows();
    void undoBelongsToTheWindowOfTheWidget();

private:
    static void show(QWidget& window) {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
};

void MenuKitTest::closeWindowClosesTheFrontWindowAndTheLastOneEndsTheProgram() {
    QWidget first;
    QWidget second;
    show(first);
    show(second);
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

void MenuKitTest::aGuardKeepsItsWindowOpen() {
    QWidget window;
    bool mayClose = false;
    const auto* const guard = new CloseGuard(window, [&mayClose] { return mayClose; });
    show(window);
    QVERIFY(!guard->shouldClose());
    QVERIFY(!window.close());
    CloseWindowAction{}.run();
    QVERIFY(window.isVisible());
    mayClose = true;
    CloseWindowAction{}.run();
    QVERIFY(!window.isVisible());
}

void MenuKitTest::theMainGuardIsTheFirstThatLives() {
    QVERIFY(CloseGuard::main() == nullptr);
    QWidget later;
    {
        QWidget window;
        const auto* const guard = new CloseGuard(window, [] { return true; });
        const auto* const other = new CloseGuard(later, [] { return true; });
        QCOMPARE(CloseGuard::main(), guard);
        QVERIFY(CloseGuard::main() != other);
    }
    QVERIFY(CloseGuard::main() == nullptr);
}

void MenuKitTest::theHelpItemNamesTheProgram() {
    int asked = 0;
    QAction further;
    const MenuBaseline baseline{.help = {.appName = QStringLiteral("Example"),
                                         .shortcut = QKeySequence(Qt::Key_F1),
                                         .action = [&asked] { ++asked; }},
                                .helpItems = {&further}};
    QMenu menu;
    QAction* const help = baseline.addHelpTo(menu);
    QCOMPARE(help->text(), QStringLiteral("Example Help"));
    QCOMPARE(help->shortcut(), QKeySequence(Qt::Key_F1));
    help->trigger();
    QCOMPARE(asked, 1);
    QVERIFY(menu.actions().contains(&further));
    QAction* const close = baseline.addCloseTo(menu);
    QCOMPARE(close->text(), QStringLiteral("Close Window"));
    QCOMPARE(close->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_W));
}

void MenuKitTest::editActionsReachTheFocusedField() {
    QWidget window;
    EditActions edit(&window);
    QMenu menu;
    edit.addTo(menu);
    auto* const layout = new QVBoxLayout(&window);
    auto* const first = new QLineEdit(QStringLiteral("one"));
    auto* const second = new QLineEdit(QStringLiteral("two"));
    layout->addWidget(first);
    layout->addWidget(second);
    show(window);
    second->setFocus();
    edit.action("selectAll")->trigger();
    QCOMPARE(second->selectedText(), QStringLiteral("two"));
    QVERIFY(!first->hasSelectedText());
    edit.action("cut")->trigger();
    QCOMPARE(second->text(), QString());
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("two"));
    first->setFocus();
    first->end(false);
    edit.action("paste")->trigger();
    QCOMPARE(first->text(), QStringLiteral("onetwo"));
    Q_EMIT menu.aboutToShow();
    edit.action("undo")->trigger();
    QCOMPARE(first->text(), QStringLiteral("one"));
    Q_EMIT menu.aboutToShow();
    edit.action("redo")->trigger();
    QCOMPARE(first->text(), QStringLiteral("onetwo"));
}

void MenuKitTest::editActionsAreEnabledAsTheFocusAllows() {
    QWidget window;
    EditActions edit(&window);
    QMenu menu;
    edit.addTo(menu);
    auto* const layout = new QVBoxLayout(&window);
    auto* const readOnly = new QPlainTextEdit(QStringLiteral("text"));
    readOnly->setReadOnly(true);
    auto* const field = new QLineEdit;
    auto* const plain = new QWidget;
    plain->setFocusPolicy(Qt::StrongFocus);
    for (QWidget* const widget : {static_cast<QWidget*>(readOnly), static_cast<QWidget*>(field), plain}) {
        layout->addWidget(widget);
    }
    show(window);
    const auto enabled = [&](QWidget* focused) {
        focused->setFocus();
        Q_EMIT menu.aboutToShow();
        QStringList names;
        for (const char* name : {"undo", "redo", "cut", "copy", "paste", "selectAll"}) {
            if (edit.action(name)->isEnabled()) {
                names.push_back(QLatin1StringView(name));
            }
        }
        return names.join(QLatin1Char(' '));
    };
    QCOMPARE(enabled(readOnly), QStringLiteral("copy selectAll"));
    QCOMPARE(enabled(plain), QString());
    QCOMPARE(enabled(field), QStringLiteral("cut copy paste selectAll"));
    QTest::keyClicks(field, QStringLiteral("a"));
    QCOMPARE(enabled(field), QStringLiteral("undo cut copy paste selectAll"));
}

void MenuKitTest::undoBelongsToTheWindowOfTheWidget() {
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const text = new QPlainTextEdit;
    auto* const beside = new QWidget;
    layout->addWidget(text);
    layout->addWidget(beside);
    show(window);
    text->setFocus();
    QTest::keyClicks(text, QStringLiteral("words"));
    const UndoManager manager = WindowUndoManagerReader::undoManagerOf(beside);
    QVERIFY(manager.canUndo() && !manager.canRedo());
    manager.undo();
    QCOMPARE(text->toPlainText(), QString());
    manager.redo();
    QCOMPARE(text->toPlainText(), QStringLiteral("words"));
    delete text;
    QVERIFY(!manager.canUndo());
    manager.undo();
    QVERIFY(!WindowUndoManagerReader::undoManagerOf(nullptr).canUndo());
}

QTEST_MAIN(MenuKitTest)
#include "MenuKitTest.moc"
