#include "ScanKit/Identification/SPDX.h"
#include "QuorvaneApp/MainWindow.h"

#include "QuorvaneApp/Views/Controls/Strip.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "QuorvaneApp/Views/Results/Sidebar.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>

using ScanKit::Ecosystem;
using ScanKit::Flag;
using ScanKit::LicenseCategory;

namespace {

ScanFindings sample() {
    auto named = package("<b>bold</b>", Ecosystem::python);
    named.source = "https://example.org/bold";
    named.licenseText = "Permission is <i>granted</i>";
    return findings({package("anchor", Ecosystem::swiftpm),
                     flagged("granite", {Flag::strongCopyleft}, LicenseCategory::strongCopyleft, "GPL-3.0"),
                     flagged("lost", {Flag::missing}, LicenseCategory::unknown, {}), package("pad"), named});
}

}  // namespace

/// The real window, used with keys, mouse and drops.
class MainWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beginsWithTheWelcomeAndOpensWhatIsChosen() {
        ResultsFixture fixture(alwaysFinding(sample()));
        QWidget& welcome = *fixture.find("welcome");
        QVERIFY(welcome.isVisible() && !fixture.find("header")->isVisible());
        QVERIFY(textOf(welcome).contains(u"Drop a project folder here"_s));
        auto* const choose = fixture.find<QPushButton>("chooseFolderButton");
        QCOMPARE(choose->text(), u"Choose Folder…"_s);
        choose->click();
        QCOMPARE(fixture.chooser.questions.size(), std::size_t{1});
        QVERIFY(welcome.isVisible());
        fixture.chooser.answer = fixture.project.folder("Harbor Notes");
        choose->click();
        QVERIFY(fixture.waitForScan());
        QVERIFY(!welcome.isVisible());
        QCOMPARE(fixture.window.windowTitle(), u"Harbor Notes — Quorvane"_s);
        QCOMPARE(fixture.rows(), u"anchor granite lost pad <b>bold</b>"_s);
        QVERIFY(fixture.table.hasFocus());
        QCOMPARE(textOf(*fixture.find("summary")),
                 u"Reports hold|5|packages|2|need review|1|copyleft|1|unknown"_s);
    }

    void takesOneDroppedFolderAndRefusesTheRestWithASentence() {
        WindowFixture fixture(alwaysFinding(sample()));
        const auto drop = [&fixture](const std::vector<std::filesystem::path>& paths) {
            QMimeData data;
            QList<QUrl> urls;
            for (const auto& path : paths) {
                urls.push_back(QUrl::fromLocalFile(QString::fromStdString(path.string())));
            }
            data.setUrls(urls);
            QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&fixture.window, &enter);
            QDropEvent event({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&fixture.window, &event);
            return enter.isAccepted();
        };
        const auto folder = fixture.project.folder("dropped");
        const auto file = fixture.project.write("notes.txt", "x");
        QWidget& problem = *fixture.find("problem");
        QVERIFY(drop({folder, file}));
        QCOMPARE(textOf(problem), u"Only one folder at a time can be scanned. Drop one project folder."_s);
        QVERIFY(drop({file}));
        QTRY_COMPARE(textOf(problem), u"“notes.txt” is not a folder. Quorvane scans one project folder."_s);
        QVERIFY(!fixture.model.folder());
        problem.findChild<QAbstractButton*>(u"dismissButton"_s)->click();
        QVERIFY(!problem.isVisible() && !fixture.model.problem());
        QVERIFY(drop({file}));
        QTRY_VERIFY(problem.isVisible());
        QVERIFY(drop({folder}));
        QTRY_COMPARE(fixture.model.folder().value_or(""), folder);
        QVERIFY(!problem.isVisible());
    }

    void sidebarFiltersAndCounts() {
        ResultsFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.open());
        auto* const sidebar = fixture.find<Sidebar>("sidebar");
        QStringList entries;
        for (int row = 0; row < sidebar->count(); ++row) {
            if (sidebar->item(row)->flags().testFlag(Qt::ItemIsSelectable)) {
                entries.push_back(sidebar->item(row)->data(Qt::AccessibleTextRole).toString());
            }
        }
        QCOMPARE(
            entries.join(u'|'),
            u"All, 5 packages|Needs review, 2 packages|Copyleft, 1 package|Unknown, 1 package|Dev-only, 0 packages|Swift packages, 1 package|npm, 3 packages|Python, 1 package"_s);
        sidebar->setFocus();
        QTest::keyClick(sidebar, Qt::Key_Down);
        QCOMPARE(fixture.rows(), u"granite lost"_s);
        QTest::keyClick(sidebar, Qt::Key_End);
        QCOMPARE(fixture.rows(), u"<b>bold</b>"_s);
        fixture.model.setFilter(DependencyFilter::copyleft());
        QCOMPARE(sidebar->currentItem()->text(), u"Copyleft"_s);
    }

    void searchingKeepsTheSelectionAndThePlace() {
        std::vector<ScanKit::Dependency> many;
        for (int i = 0; i < 400; ++i) {
            many.push_back(package((i % 2 == 0 ? "even-" : "odd-") + std::to_string(i)));
        }
        ResultsFixture fixture(alwaysFinding(findings(many)));
        QVERIFY(fixture.open());
        DependencyTable& table = fixture.table;
        table.selectOnly(200);
        QCOMPARE(fixture.model.selection().value_or(""), "npm:even-200@1.0.0");
        fixture.search.setText(u"even"_s);
        QCOMPARE(table.currentIndex().row(), 100);
        QVERIFY(fixture.isSelected(100));
        QVERIFY(table.visualRect(table.currentIndex()).intersects(table.viewport()->rect()));
        fixture.search.setText(u"odd"_s);
        QVERIFY(!table.selectionModel()->hasSelection());
        QCOMPARE(fixture.model.selection().value_or(""), "npm:even-200@1.0.0");
        fixture.search.clear();
        QVERIFY(fixture.isSelected(200));
        table.scrollTo(table.model()->index(300, 0), QAbstractItemView::PositionAtTop);
        fixture.search.setText(u"even"_s);
        QCOMPARE(table.rowAt(0), 150);
    }

    void theKeysLeadFromTheSearchToCopiedRowsAndBack() {
        ResultsFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        QCOMPARE(fixture.search.placeholderText(), u"Package or license"_s);
        fixture.press(Qt::Key_F);
        QVERIFY(fixture.search.hasFocus());
        QTest::keyClicks(&fixture.search, u"an"_s);
        QTest::keyClick(&fixture.search, Qt::Key_Down);
        QVERIFY(fixture.table.hasFocus());
        QCOMPARE(fixture.model.selectedDependency()->name, "anchor");
        fixture.press(Qt::Key_A);
        fixture.press(Qt::Key_C);
        QCOMPARE(QApplication::clipboard()->text().split(u'\n'),
                 (QStringList{u"anchor\t1.0.0\tSwift packages\tMIT\tMetadata\t"_s,
                              u"granite\t1.0.0\tnpm\tGPL-3.0\tMetadata\tCopyleft (GPL)"_s}));
        fixture.press(Qt::Key_F);
        QTest::keyClick(&fixture.search, Qt::Key_Escape);
        QCOMPARE(fixture.rows(), u"anchor granite lost pad <b>bold</b>"_s);
    }

    void headersSortAndGoBackToTheResultsOrder() {
        ResultsFixture fixture(alwaysFinding(findings({package("b"), package("c"), package("a")})));
        QVERIFY(fixture.open());
        const auto rowsAfterClick = [&fixture] {
            QHeaderView* const header = fixture.table.horizontalHeader();
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              {header->sectionPosition(0) + 20, header->height() / 2});
            return fixture.rows();
        };
        fixture.table.selectOnly(1);
        QCOMPARE(rowsAfterClick(), u"a b c"_s);
        QVERIFY(fixture.isSelected(2));
        QCOMPARE(rowsAfterClick(), u"c b a"_s);
        QCOMPARE(rowsAfterClick(), u"b c a"_s);
        QCOMPARE(rowsAfterClick(), u"a b c"_s);
        fixture.press(Qt::Key_0);
        QCOMPARE(fixture.rows(), u"b c a"_s);
    }

    void detailsArePlainTextAndLinksWaitForAClick() {
        ResultsFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.open());
        QWidget& details = *fixture.find("detailPane");
        QVERIFY(textOf(details).contains(u"Select a package"_s));
        fixture.table.selectOnly(4);
        QVERIFY(textOf(details).contains(u"<b>bold</b>"_s));
        for (const QLabel* const label : details.findChildren<QLabel*>()) {
            QVERIFY2(label->textFormat() == Qt::PlainText, qPrintable(label->text()));
        }
        QCOMPARE(fixture.find<QPlainTextEdit>("licenseText")->toPlainText(),
                 u"Permission is <i>granted</i>"_s);
        QVERIFY(fixture.openedLinks.isEmpty());
        fixture.find<QAbstractButton>("sourceLink")->click();
        QCOMPARE(fixture.openedLinks, QStringList{u"https://example.org/bold"_s});
        auto* const tabs = details.findChild<QTabWidget*>();
        const auto titles = [tabs] {
            QStringList list;
            for (int tab = 0; tab < tabs->count(); ++tab) {
                list.push_back(tabs->tabText(tab));
            }
            return list.join(u'|');
        };
        QCOMPARE(titles(), u"Details|License text|Project"_s);
        tabs->setCurrentIndex(1);
        fixture.table.selectOnly(1);
        QCOMPARE(titles(), u"Details|Project"_s);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), u"Details"_s);
        QVERIFY(textOf(details).contains(u"GNU General Public License"_s));
        QVERIFY(fixture.find<QAbstractButton>("sourceLink") == nullptr);
        // What was being read is read on, in the next package that has it.
        fixture.table.selectOnly(4);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), u"License text"_s);
    }

    void whatIsFilteredOutIsNotDetailed() {
        ResultsFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.open());
        QWidget& details = *fixture.find("detailPane");
        fixture.table.selectOnly(1);
        QVERIFY(textOf(details).contains(u"granite"_s));
        fixture.model.setFilter(DependencyFilter::unknown());
        QVERIFY2(!textOf(details).contains(u"granite"_s), qPrintable(textOf(details)));
        fixture.model.setFilter(DependencyFilter::all());
        QVERIFY(textOf(details).contains(u"granite"_s));
    }

    void withoutASelectionTheDetailsSayWhatWasRead() {
        ScanFindings found = findings({package("one")});
        found.result.sources = {
            {Ecosystem::npm, "web/yarn.lock", "Yarn lockfile", ScanKit::EntryStates{.listed = 1, .own = 2}}};
        ResultsFixture fixture(alwaysFinding(found));
        QVERIFY(fixture.open());
        const QString text = textOf(*fixture.find("sources"));
        QVERIFY2(text.contains(u"web/yarn.lock"_s) &&
                     text.contains(u"Yarn lockfile; 3 entries: 1 listed, 2 the project's own"_s),
                 qPrintable(text));
    }

    void licenseTextsMarkWhatStandsInNoLicense() {
        auto added = package("added");
        added.licenseText = std::string(ScanKit::SPDX::builtInText("MIT").value()) +
                            "\r\nÄnderung 1: This file must not be read aloud in a boat on a lake.\r\n";
        auto plain = package("plain");
        plain.licenseText = ScanKit::SPDX::builtInText("MIT").value();
        ResultsFixture fixture(alwaysFinding(findings({added, plain})));
        QVERIFY(fixture.open());
        fixture.table.selectOnly(0);
        auto* const text = fixture.find<QPlainTextEdit>("licenseText");
        QCOMPARE(text->extraSelections().size(), 1);
        QCOMPARE(text->extraSelections().front().cursor.selectedText(),
                 u"Änderung 1: This file must not be read aloud in a boat on a lake"_s);
        QVERIFY(text->accessibleDescription().startsWith(u"Marked"_s));
        const auto* const legend = fixture.find<QLabel>("readAs");
        QCOMPARE(legend->text(), u"Reads as MIT. Marked: what stands in no standard license text."_s);
        fixture.table.selectOnly(1);
        QVERIFY(text->extraSelections().isEmpty());
        QCOMPARE(legend->text(), u"Reads as MIT."_s);
        QVERIFY(text->accessibleDescription().isEmpty());
    }

    void endlessTextsDoNotHoldUpTheWindow() {
        auto endless = package(std::string(300000, 'n'));
        endless.license = std::string(300000, 'l');
        endless.licenseText = std::string(400000, 't') + "\nend";
        endless.source = "https://example.org/" + std::string(300000, 's');
        ResultsFixture fixture(alwaysFinding(findings({endless})));
        QVERIFY(fixture.open());
        QElapsedTimer timer;
        timer.start();
        fixture.table.selectOnly(0);
        fixture.window.grab();
        fixture.find("detailPane")->findChild<QTabWidget*>()->setCurrentIndex(1);
        fixture.window.grab();
        QVERIFY2(timer.elapsed() < 15000, qPrintable(QString::number(timer.elapsed())));
        const QString shown = fixture.find<QPlainTextEdit>("licenseText")->toPlainText();
        QCOMPARE(shown.count(u't'), 400000);
        for (const QString& line : shown.split(u'\n')) {
            QVERIFY2(line.size() <= 2000, "a line that takes half a minute to lay out");
        }
        QVERIFY(shown.endsWith(u"\nend"_s));
    }

    void warningsOfferWhatTheProgramCanDoAndManyAreFolded() {
        using Kind = ScanKit::ScanWarning::Kind;
        WindowFixture fixture(alwaysFinding(findings(
            {}, {{Kind::swiftPackagesNotCheckedOut, "Choose the environment."},  // words decide nothing
                 {Kind::pythonEnvironmentMissing, "Add the checkouts folder."},
                 {Kind::npmModulesMissing, "third"},
                 {Kind::npmPackagesNotListed, "fourth"}})));
        QVERIFY(fixture.open());
        QWidget& warnings = *fixture.find("warnings");
        const auto click = [&warnings](const char* button) {
            auto* const found = warnings.findChild<QPushButton*>(QLatin1StringView(button));
            QVERIFY2(found != nullptr, button);
            found->click();
        };
        QCOMPARE(textOf(warnings), u"Choose the environment.|Add the checkouts folder."_s);
        click("addCheckoutsButton");
        QCOMPARE(fixture.chooser.questions.back().prompt, u"Add"_s);
        click("choosePythonEnvironmentButton");
        QCOMPARE(fixture.chooser.questions.back().prompt, u"Use"_s);
        QCOMPARE(warnings.findChild<QPushButton*>(u"warningsToggle"_s)->text(), u"Show 2 more warnings"_s);
        click("warningsToggle");
        QTRY_COMPARE(textOf(warnings), u"Choose the environment.|Add the checkouts folder.|third|fourth"_s);
        QCOMPARE(warnings.findChildren<QPushButton*>(u"rescanButton"_s).size(), 2);
        click("warningsToggle");
        QTRY_COMPARE(textOf(warnings), u"Choose the environment.|Add the checkouts folder."_s);
        fixture.model.openFolder(fixture.project.folder("next"));
        QVERIFY(!warnings.isVisible());
    }

    void aRunningScanShowsProgressKeepsTheRowsAndCanBeCancelled() {
        HeldScans scans;
        ResultsFixture fixture(scans.function());
        scans.release(0, sample());
        QVERIFY(fixture.open());
        QWidget& progress = *fixture.find("progress");
        QVERIFY(!progress.isVisible());
        fixture.press(Qt::Key_R);
        QVERIFY(progress.isVisible());
        const auto* const bar = progress.findChild<QProgressBar*>();
        QTRY_COMPARE(bar->maximum(), 7);
        QCOMPARE(bar->value(), 3);
        QCOMPARE(progress.findChild<QLabel*>()->accessibleName(), u"3 of 7 packages: left-pad"_s);
        fixture.table.selectOnly(1);
        fixture.search.setText(u"gran"_s);
        QCOMPARE(fixture.rows(), u"granite"_s);
        progress.findChild<QPushButton*>(u"cancelScanButton"_s)->click();
        QVERIFY(!progress.isVisible());
        QCOMPARE(fixture.model.selectedDependency()->name, "granite");
        scans.release(1, findings({}));
        QTRY_VERIFY(scans.wasStopped(1));
        QCOMPARE(fixture.model.result()->dependencies.size(), std::size_t{5});
    }

    void emptyStatesSayWhatIsGoingOn() {
        HeldScans scans;
        ResultsFixture fixture(scans.function());
        QWidget& empty = *fixture.find("emptyState");
        const auto heading = [&empty] { return textOf(empty).section(u'|', 0, 0); };
        const auto click = [&empty](const QString& button) {
            empty.findChild<QPushButton*>(button)->click();
        };
        fixture.model.openFolder(fixture.project.path());
        QCOMPARE(heading(), u"Scanning…"_s);
        QTRY_COMPARE(scans.begun().size(), std::size_t{1});
        fixture.model.cancelScan();
        QCOMPARE(heading(), u"Not scanned yet"_s);
        scans.release(0, {});
        scans.release(1, findings({}));
        click(u"rescanButton"_s);
        QTRY_COMPARE(heading(), u"No dependencies found"_s);
        scans.release(2, sample());
        fixture.model.scan();
        QVERIFY(fixture.waitForScan());
        QCOMPARE(heading(), QString());
        // That there is none of a kind must not read as if a search had failed.
        for (const auto& [filter, words] : {std::pair{DependencyFilter::devOnly(), u"No dev-only packages"_s},
                                            {DependencyFilter::ecosystem(Ecosystem::swiftpm), QString()}}) {
            fixture.model.setFilter(filter);
            QCOMPARE(heading(), words);
        }
        fixture.model.setFilter(DependencyFilter::copyleft());
        fixture.model.setSearch(u"pad"_s);
        QCOMPARE(heading(), u"No matching packages"_s);
        click(u"showAllButton"_s);
        QCOMPARE(fixture.rows(), u"anchor granite lost pad <b>bold</b>"_s);
        QCOMPARE(fixture.search.text(), QString());
        fixture.model.openFolder(fixture.project.path() / "gone");
        QTRY_COMPARE(heading(), u"The folder could not be scanned"_s);
        QVERIFY(textOf(empty).contains(u"“gone” can’t be read."_s));
    }

    void everyShortcutDoesItsCommand() {
        WindowFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.isActive && fixture.open());
        for (const QAction* command : fixture.commands.findChildren<QAction*>()) {
            const auto isMenu = [](const QObject* one) { return qobject_cast<const QMenu*>(one) != nullptr; };
            QVERIFY2(std::ranges::any_of(command->associatedObjects(), isMenu),
                     qPrintable(command->objectName()));
        }
        fixture.press(Qt::Key_O);
        QCOMPARE(fixture.chooser.questions.back().prompt, u"Scan"_s);
        fixture.press(Qt::Key_R);
        QVERIFY(fixture.model.scanning());
        fixture.press(Qt::Key_Period);
        QVERIFY(!fixture.model.scanning());
        for (const auto& [key, shown] : {std::pair{Qt::Key_2, u"granite lost"_s},
                                         {Qt::Key_3, u"granite"_s},
                                         {Qt::Key_4, u"lost"_s},
                                         {Qt::Key_1, u"anchor granite lost pad <b>bold</b>"_s}}) {
            fixture.press(key);
            QCOMPARE(fixture.shown(), shown);
        }
        for (const auto& [name, modifiers] :
             {std::pair{"sidebar", Qt::NoModifier}, {"detailPane", Qt::ShiftModifier}}) {
            fixture.press(Qt::Key_F9, modifiers);
            QVERIFY2(!fixture.find(name)->isVisible(), name);
            fixture.press(Qt::Key_F9, modifiers);
            QVERIFY2(fixture.find(name)->isVisible(), name);
        }
        fixture.press(Qt::Key_F11, Qt::NoModifier);
        QVERIFY(fixture.window.isFullScreen());
        fixture.press(Qt::Key_F11, Qt::NoModifier);
        QVERIFY(!fixture.window.isFullScreen());
        fixture.press(Qt::Key_W);
        QVERIFY(!fixture.window.isVisible());
    }

    void commandsAreEnabledAsTheModelAllows() {
        HeldScans scans;
        WindowFixture fixture(scans.function());
        int checks = 0;
        const AppCommands withUpdates(fixture.model, [&checks] { ++checks; });
        const auto enabled = [](const AppCommands& commands) {
            QStringList names;
            for (const Command command : {Command::openFolder, Command::rescan, Command::cancelScan,
                                          Command::exportReport, Command::find, Command::checkForUpdates}) {
                if (commands.action(command)->isEnabled()) {
                    names.push_back(commands.action(command)->objectName());
                }
            }
            return names.join(u' ');
        };
        QCOMPARE(enabled(fixture.commands), u"openFolder"_s);
        QCOMPARE(enabled(withUpdates), u"openFolder checkForUpdates"_s);
        fixture.model.openFolder(fixture.project.path());
        QCOMPARE(enabled(fixture.commands), u"openFolder rescan cancelScan"_s);
        scans.release(0, sample());
        QTRY_COMPARE(enabled(fixture.commands), u"openFolder rescan exportReport find"_s);
        QCOMPARE(withUpdates.action(Command::checkForUpdates)->text(), u"Check for Updates…"_s);
        withUpdates.action(Command::checkForUpdates)->trigger();
        QCOMPARE(checks, 1);
    }

    void closingWaitsForASave() {
        for (const bool fails : {false, true}) {
            std::atomic<bool> mayEnd = false;
            WindowFixture fixture(alwaysFinding(sample()), [&](const auto&, const auto&, auto, const auto&) {
                while (!mayEnd) {
                    QThread::msleep(1);
                }
                return fails ? ScanKit::SavedReports{.failure = "Disk full", .failedFile = "/out/NOTICE.txt"}
                             : ScanKit::SavedReports{};
            });
            QVERIFY(fixture.open());
            fixture.chooser.answer = fixture.project.path();
            fixture.model.exportReports(ScanKit::ReportFormats::json);
            const bool closedAtOnce = fixture.window.close();
            QWidget& saving = *fixture.find("saving");
            QTRY_VERIFY2(
                saving.isVisible() &&
                    saving.findChild<QLabel*>()->accessibleName() ==
                        u"The window closes when the reports are saved. Saving Harbor Dependencies.json…",
                qPrintable(saving.findChild<QLabel*>()->accessibleName()));
            mayEnd = true;
            QVERIFY(!closedAtOnce);
            QTRY_VERIFY(!fixture.model.exporting());
            QVERIFY2(fixture.window.isVisible() == fails,
                     fails ? "closed without its reports" : "still open");
            if (fails) {
                QWidget& message = *fixture.find("exportMessage");
                QVERIFY2(fixture.find<Strip>("exportMessage")->severity() == Flag::Severity::high,
                         "a failure in a calm colour");
                QCOMPARE(textOf(message), u"Couldn't save NOTICE.txt: Disk full"_s);
                message.findChild<QAbstractButton*>(u"dismissButton"_s)->click();
                QVERIFY(!message.isVisible() && !fixture.model.exportMessage());
                QVERIFY(fixture.window.close());
            }
        }
    }

    void closingEndsAScan() {
        HeldScans scans;
        WindowFixture fixture(scans.function());
        fixture.model.openFolder(fixture.project.path());
        QTRY_COMPARE(scans.begun().size(), std::size_t{1});
        fixture.window.close();
        QVERIFY(!fixture.model.scanning());
        scans.release(0, {});
        QTRY_VERIFY(scans.wasStopped(0));
    }

    void narrowWindowsPutTheDetailsBelow() {
        WindowFixture fixture(alwaysFinding(sample()));
        QVERIFY(fixture.open());
        const auto detailsBelowFilters = [&fixture] {
            return fixture.find("detailPane")->mapTo(&fixture.window, QPoint()).y() -
                   fixture.find("sidebar")->mapTo(&fixture.window, QPoint()).y();
        };
        fixture.window.resize(1800, 900);
        QTRY_COMPARE(detailsBelowFilters(), 0);
        fixture.window.resize(900, 600);
        QTRY_VERIFY(detailsBelowFilters() > 100);
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
