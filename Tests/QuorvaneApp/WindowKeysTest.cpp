#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>

namespace {

ScanFindings sample() {
    auto first = package("anchor");
    first.source = "https://example.org/anchor";
    first.licenseText = "One line\n    and a line that begins further right\nOne line more\n";
    first.folder = "/somewhere/anchor";
    return findings({first, package("beacon"), package("cable")}, {{.sentence = "Look."}});
}

struct KeysFixture : ResultsFixture {
    using ResultsFixture::ResultsFixture;

    /// A key as the keyboard sends it: to whatever has the focus.
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(), key, modifiers);
    }
    /// The named controls that Tab leads through, beginning at this one.
    QStringList tabOrder(QWidget& from) {
        from.setFocus();
        QStringList names;
        const QWidget* at = &from;
        do {
            if (!at->objectName().startsWith(u"qt_"_s) && !at->objectName().isEmpty()) {
                names.push_back(at->objectName());
            }
            type(Qt::Key_Tab);
            at = window.focusWidget();
        } while (at != &from && names.size() < 50);
        return names;
    }
};

}  // namespace

/// The window without a mouse.
class WindowKeysTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theCommandsKeysWorkFromEveryControl() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        fixture.table.selectOnly(0);
        fixture.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        struct Row {
            Command command;
            Qt::Key key;
        };
        for (const char* const name : {"search", "rescanButton", "sidebar", "tableHeader", "dependencyTable",
                                       "licenseText", "findInText"}) {
            for (const Row& row : {Row{Command::openFolder, Qt::Key_O}, Row{Command::exportReport, Qt::Key_E},
                                   Row{Command::rescan, Qt::Key_R}}) {
                // The window has several "Rescan": the first is hidden on a page that is not shown.
                QWidget* control = fixture.find(name);
                control = control->isVisible()
                              ? control
                              : fixture.find("header")->findChild<QWidget*>(QLatin1StringView(name));
                QVERIFY2(control != nullptr, name);
                control->setFocus();
                int triggered = 0;
                QObject context;
                QAction* const action = fixture.commands.action(row.command);
                connect(action, &QAction::triggered, &context, [&] { ++triggered; });
                QTest::keyClick(control, row.key, Qt::ControlModifier);
                QVERIFY2(triggered == 1, qPrintable(at(name, action->objectName())));
                fixture.model.setShowExport(false);
                for (QWidget* const top : QApplication::topLevelWidgets()) {
                    if (top->objectName() == u"exportSheet"_s) {
                        delete top;
                    }
                }
                QVERIFY(fixture.waitForScan());
                // Without a window manager nobody gives the keys back when a sheet is gone.
                fixture.window.activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(&fixture.window));
            }
        }
        // Which keys a field takes for itself differs between desktops; these it takes on each.
        fixture.commands.action(Command::rescan)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Left));
        fixture.search.setFocus();
        QTest::keyClick(&fixture.search, Qt::Key_Left, Qt::ControlModifier);
        QVERIFY(fixture.model.scanning());
        QVERIFY(fixture.waitForScan());
        QTest::keyClick(&fixture.search, Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!fixture.window.isVisible());
    }

    void whoeverTypesWhenTheRowsArriveGoesOnTyping() {
        HeldScans scans;
        KeysFixture fixture(scans.function());
        QVERIFY(fixture.isActive);
        fixture.model.openFolder(fixture.project.path());
        fixture.search.setFocus();
        QTest::keyClicks(&fixture.search, u"be"_s);
        scans.release(0, sample());
        QVERIFY(fixture.waitForScan());
        QVERIFY(fixture.search.hasFocus());
        QTest::keyClicks(fixture.window.focusWidget(), u"a"_s);
        QCOMPARE(fixture.rows(), u"beacon"_s);
    }

    void theRowsHaveTheKeysThoughTheyCameBehindAnotherWindow() {
        HeldScans scans;
        KeysFixture fixture(scans.function());
        fixture.model.openFolder(fixture.project.folder("Harbor"));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        scans.release(0, sample());
        QVERIFY(fixture.waitForScan());
        QCOMPARE(fixture.window.focusWidget(), &fixture.table);
    }

    void aFolderDroppedOnTheSearchIsOpened() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.open());
        const auto folder = fixture.project.folder("dropped");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder.string()))});
        data.setText(QString::fromStdString(folder.string()));  // as file managers do besides
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.search, &enter);
        QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.search, &drop);
        QTRY_COMPARE(fixture.model.folder().value_or(""), folder);
        QCOMPARE(fixture.search.text(), QString());
    }

    void theFirstStepDownSelectsTheFirstRow() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        QVERIFY(fixture.table.hasFocus());
        fixture.type(Qt::Key_Down);
        QCOMPARE(fixture.model.selectedDependency()->name, "anchor");
        fixture.type(Qt::Key_Down);
        QCOMPARE(fixture.model.selectedDependency()->name, "beacon");
    }

    void tabLeadsFromTheSearchToTheDetails() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        fixture.table.selectOnly(0);
        QCOMPARE(
            fixture.tabOrder(fixture.search).join(u' '),
            u"search rescanButton exportReportButton rescanButton dismissButton sidebar tableHeader dependencyTable facts sourceLink"_s);
    }

    void theHeadingsSortAndResizeByKeys() {
        KeysFixture fixture(alwaysFinding(findings({package("b"), package("a"), package("c")})));
        QVERIFY(fixture.isActive && fixture.open());
        QWidget& header = *fixture.find("tableHeader");
        header.setFocus();
        for (const char* const names : {"a b c", "c b a", "b a c"}) {
            QTest::keyClick(&header, Qt::Key_Space);
            QCOMPARE(fixture.rows(), QString::fromLatin1(names));
        }
        QTest::keyClick(&header, Qt::Key_Right);
        const int before = fixture.table.columnWidth(1);
        QTest::keyClick(&header, Qt::Key_Right, Qt::ShiftModifier);
        QVERIFY(fixture.table.columnWidth(1) > before);
        QTest::keyClick(&header, Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(fixture.table.columnWidth(1), before);
    }

    void theMenuSortsAndMarksTheOrder() {
        KeysFixture fixture(alwaysFinding(findings({package("b"), package("a"), package("c")})));
        QVERIFY(fixture.open());
        QAction& byName = *fixture.commands.action(Command::sortByPackage);
        const QAction& original = *fixture.commands.action(Command::sortByResultOrder);
        QVERIFY(original.isChecked() && !byName.isChecked());
        byName.trigger();
        QCOMPARE(fixture.rows(), u"a b c"_s);
        QVERIFY(byName.isChecked() && !original.isChecked());
        byName.trigger();
        QCOMPARE(fixture.rows(), u"c b a"_s);
        QVERIFY(byName.isChecked());
        fixture.press(Qt::Key_0);
        QCOMPARE(fixture.rows(), u"b a c"_s);
        QVERIFY(original.isChecked() && !byName.isChecked());
    }

    void selectedDetailsCanBeCopiedFromTheMenu() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        fixture.table.selectOnly(0);
        QLabel* license = nullptr;
        for (QLabel* const label : fixture.find("facts")->findChildren<QLabel*>()) {
            license = label->text() == u"MIT"_s ? label : license;
        }
        QVERIFY(license != nullptr);
        QTest::mouseClick(license, Qt::LeftButton);
        license->setSelection(0, 2);
        auto* const copy = fixture.find<QAction>("copy");
        QVERIFY(copy != nullptr && copy->isEnabled());
        copy->trigger();
        QCOMPARE(QApplication::clipboard()->text(), u"MI"_s);
    }

    void aRowsMenuCopiesOpensAndShows() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        fixture.table.selectOnly(0);
        const auto choose = [&](const QString& name) {
            QTimer::singleShot(0, &fixture.window, [name] {
                auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                QVERIFY(menu != nullptr);
                for (QAction* const action : menu->actions()) {
                    if (action->objectName() == name) {
                        action->trigger();
                    }
                }
                menu->close();
            });
            QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5},
                                    fixture.table.mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(&fixture.table, &event);
        };
        choose(u"copyRows"_s);
        QVERIFY(QApplication::clipboard()->text().startsWith(u"anchor\t1.0.0"_s));
        choose(u"openSource"_s);
        QCOMPARE(fixture.openedLinks, QStringList{u"https://example.org/anchor"_s});
        choose(u"revealPackage"_s);
        QCOMPARE(fixture.revealer.revealed.size(), std::size_t{1});
        QCOMPARE(fixture.revealer.revealed.back().front(), std::filesystem::path("/somewhere/anchor"));
        fixture.table.selectOnly(1);
        QVERIFY(!fixture.commands.action(Command::openSource)->isEnabled());
        QVERIFY(!fixture.commands.action(Command::revealPackage)->isEnabled());
    }

    void wordsAreFoundInALicenseTextWhoseLinesStay() {
        KeysFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        fixture.table.selectOnly(0);
        fixture.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        auto* const field = fixture.find<QLineEdit>("findInText");
        auto* const text = fixture.find<QPlainTextEdit>("licenseText");
        QVERIFY(field->hasFocus() && text->isVisible());
        QCOMPARE(text->lineWrapMode(), QPlainTextEdit::NoWrap);
        const QFontMetrics metrics(text->font());
        QCOMPARE(metrics.horizontalAdvance(u"iiii"_s), metrics.horizontalAdvance(u"MMMM"_s));
        QTest::keyClicks(field, u"LINE"_s);
        QCOMPARE(fixture.find<QLabel>("foundInText")->text(), u"3 places"_s);
        QList<int> places;
        for (int i = 0; i < 4; ++i) {
            places.push_back(text->textCursor().selectionStart());
            QTest::keyClick(field, Qt::Key_Return);
        }
        QCOMPARE(places, (QList<int>{4, 19, 54, 4}));
        QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(text->textCursor().selectionStart(), 4);
        QTest::keyClicks(field, u"x"_s);
        QCOMPARE(fixture.find<QLabel>("foundInText")->text(), u"Not found"_s);
    }

    void theCountAnswersSearchFilterAndSelection() {
        std::vector<ScanKit::Dependency> many(1234, package("rope"));
        many.front().name = "anchor";
        many.back().isDev = true;
        KeysFixture fixture(alwaysFinding(findings(many)));
        QVERIFY(fixture.open());
        const auto* const count = fixture.find<QLabel>("rowCount");
        QCOMPARE(count->text(), u"%1 packages"_s.arg(QLocale().toString(1234)));
        fixture.search.setText(u"anch"_s);
        QCOMPARE(count->text(), u"1 of %1 packages"_s.arg(QLocale().toString(1234)));
        fixture.search.clear();
        fixture.press(Qt::Key_5);
        QCOMPARE(count->text(), u"1 of %1 packages"_s.arg(QLocale().toString(1234)));
        fixture.press(Qt::Key_1);
        fixture.table.selectAll();
        QCOMPARE(count->text(), u"%1 packages, %1 selected"_s.arg(QLocale().toString(1234)));
    }
};

QTEST_MAIN(WindowKeysTest)
#include "WindowKeysTest.moc"
