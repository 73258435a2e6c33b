#include "QuorvaneApp/MainWindow.h"

#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "QuorvaneApp/Views/Results/Sidebar.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
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

QString textOf(QWidget& widget) {
    QStringList texts;
    for (const QLabel* const label : widget.findChildren<QLabel*>()) {
        if (label->isVisible()) {
            texts.push_back(label->text());
        }
    }
    return texts.join(QLatin1Char('|'));
}

QStringList rowsOf(const DependencyTable& table) {
    QStringList names;
    for (int row = 0; row < table.model()->rowCount(); ++row) {
        names.push_back(table.model()->index(row, 0).data().toString());
    }
    return names;
}

}  // namespace

/// The real window, used with keys, mouse and drops.
class MainWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void beginsWithTheWelcomeAndOpensWhatIsChosen();
    void takesOneDroppedFolderAndRefusesTheRestWithASentence();
    void sidebarFiltersAndCounts();
    void searchingKeepsTheSelectionAndThePlace();
    void searchFieldIsLeftAndClearedWithTheKeys();
    void headersSortAndGoBackToTheResultsOrder();
    void copiesTheSelectedRowsAsShown();
    void detailsArePlainTextAndLinksWaitForAClick();
    void endlessTextsDoNotHoldUpTheWindow();
    void warningsOfferWhatTheProgramCanDo();
    void manyWarningsAreFolded();
    void aRunningScanShowsProgressKeepsTheRowsAndCanBeCancelled();
    void emptyStatesSayWhatIsGoingOn();
    void messagesStayUntilDismissed();
    void everyShortcutDoesItsCommand();
    void commandsAreEnabledAsTheModelAllows();
    void closingWaitsForASave_data();
    void closingWaitsForASave();
    void closingEndsAScan();
    void narrowWindowsPutTheDetailsBelow();
};

void MainWindowTest::beginsWithTheWelcomeAndOpensWhatIsChosen() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.find<QWidget>("welcome")->isVisible());
    QVERIFY(!fixture.find<QWidget>("header")->isVisible());
    QVERIFY(textOf(*fixture.find<QWidget>("welcome")).contains(QStringLiteral("Drop a project folder here")));
    auto* const choose = fixture.find<QPushButton>("chooseFolderButton");
    QCOMPARE(choose->text(), QStringLiteral("Choose Folder…"));
    choose->click();
    QCOMPARE(fixture.chooser.questions.size(), std::size_t{1});
    QVERIFY(fixture.find<QWidget>("welcome")->isVisible());
    fixture.chooser.answer = fixture.project.folder("Harbor Notes");
    choose->click();
    QTRY_VERIFY(!fixture.model.scanning());
    QVERIFY(!fixture.find<QWidget>("welcome")->isVisible());
    QCOMPARE(fixture.window.windowTitle(), QStringLiteral("Harbor Notes — Quorvane"));
    QCOMPARE(rowsOf(*fixture.find<DependencyTable>("dependencyTable")).size(), 5);
    QVERIFY(fixture.find<DependencyTable>("dependencyTable")->hasFocus());
    QVERIFY(textOf(*fixture.find<QWidget>("summary"))
                .contains(QStringLiteral("5|packages|2|need review|1|copyleft|1|unknown")));
}

void MainWindowTest::takesOneDroppedFolderAndRefusesTheRestWithASentence() {
    WindowFixture fixture(alwaysFinding(sample()));
    const auto drop = [&fixture](const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window, &enter);
        QDropEvent event({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window, &event);
        return enter.isAccepted();
    };
    const auto url = [](const std::filesystem::path& path) {
        return QUrl::fromLocalFile(QString::fromStdString(path.string()));
    };
    const auto folder = fixture.project.folder("dropped");
    const auto file = fixture.project.write("notes.txt", "x");
    QVERIFY(drop({url(folder), url(file)}));
    QVERIFY(textOf(*fixture.find<QWidget>("problem")).contains(QStringLiteral("Drop one project folder.")));
    QVERIFY(drop({url(file)}));
    QTRY_VERIFY(
        textOf(*fixture.find<QWidget>("problem")).contains(QStringLiteral("“notes.txt” is not a folder.")));
    QVERIFY(!fixture.model.folder());
    QVERIFY(drop({url(folder)}));
    QTRY_VERIFY(fixture.model.folder().has_value());
    QCOMPARE(*fixture.model.folder(), folder);
    QVERIFY(!fixture.find<QWidget>("problem")->isVisible());
}

void MainWindowTest::sidebarFiltersAndCounts() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.open());
    auto* const sidebar = fixture.find<Sidebar>("sidebar");
    auto* const table = fixture.find<DependencyTable>("dependencyTable");
    QStringList entries;
    for (int row = 0; row < sidebar->count(); ++row) {
        if (sidebar->item(row)->flags().testFlag(Qt::ItemIsSelectable)) {
            entries.push_back(sidebar->item(row)->data(Qt::AccessibleTextRole).toString());
        }
    }
    QCOMPARE(
        entries.join(QLatin1Char('|')),
        QStringLiteral(
            "All, 5 packages|Needs review, 2 packages|Copyleft, 1 package|Unknown, 1 package|Swift packages, 1 package|npm, 3 packages|Python, 1 package"));
    sidebar->setFocus();
    QTest::keyClick(sidebar, Qt::Key_Down);
    QVERIFY(fixture.model.filter() == DependencyFilter::needsReview());
    QCOMPARE(rowsOf(*table), (QStringList{QStringLiteral("granite"), QStringLiteral("lost")}));
    QTest::keyClick(sidebar, Qt::Key_End);
    QCOMPARE(rowsOf(*table), QStringList{QStringLiteral("<b>bold</b>")});
    fixture.model.setFilter(DependencyFilter::copyleft());
    QCOMPARE(sidebar->currentItem()->text(), QStringLiteral("Copyleft"));
}

void MainWindowTest::searchingKeepsTheSelectionAndThePlace() {
    std::vector<ScanKit::Dependency> many;
    for (int i = 0; i < 400; ++i) {
        many.push_back(package((i % 2 == 0 ? "even-" : "odd-") + std::to_string(i)));
    }
    WindowFixture fixture(alwaysFinding(findings(many)));
    QVERIFY(fixture.open());
    auto* const table = fixture.find<DependencyTable>("dependencyTable");
    table->selectRow(200);
    QCOMPARE(*fixture.model.selection(), std::string("npm:even-200@1.0.0"));
    auto* const search = fixture.find<QLineEdit>("search");
    search->setText(QStringLiteral("even"));
    QCOMPARE(table->currentIndex().row(), 100);
    QVERIFY(table->selectionModel()->isRowSelected(100));
    QVERIFY(table->visualRect(table->currentIndex()).intersects(table->viewport()->rect()));
    search->setText(QStringLiteral("odd"));
    QVERIFY(!table->selectionModel()->hasSelection());
    QCOMPARE(*fixture.model.selection(), std::string("npm:even-200@1.0.0"));
    search->clear();
    QVERIFY(table->selectionModel()->isRowSelected(200));
    table->scrollTo(table->model()->index(300, 0), QAbstractItemView::PositionAtTop);
    search->setText(QStringLiteral("even"));
    QCOMPARE(table->rowAt(0), 150);
}

void MainWindowTest::searchFieldIsLeftAndClearedWithTheKeys() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.isActive && fixture.open());
    auto* const table = fixture.find<DependencyTable>("dependencyTable");
    auto* const search = fixture.find<QLineEdit>("search");
    QCOMPARE(search->placeholderText(), QStringLiteral("Package or license"));
    fixture.press(Qt::Key_F);
    QVERIFY(search->hasFocus());
    QTest::keyClicks(search, QStringLiteral("p"));
    QTest::keyClicks(search, QStringLiteral("ad"));
    QCOMPARE(rowsOf(*table), QStringList{QStringLiteral("pad")});
    QTest::keyClick(search, Qt::Key_Down);
    QVERIFY(table->hasFocus());
    QCOMPARE(fixture.model.selectedDependency()->name, std::string("pad"));
    fixture.press(Qt::Key_F);
    QTest::keyClick(search, Qt::Key_Escape);
    QCOMPARE(rowsOf(*table).size(), 5);
}

void MainWindowTest::headersSortAndGoBackToTheResultsOrder() {
    WindowFixture fixture(alwaysFinding(findings({package("b"), package("c"), package("a")})));
    QVERIFY(fixture.open());
    auto* const table = fixture.find<DependencyTable>("dependencyTable");
    QHeaderView* const header = table->horizontalHeader();
    const auto click = [header] {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionPosition(0) + 20, header->height() / 2});
    };
    const auto names = [table] { return rowsOf(*table).join(QString()); };
    table->selectRow(1);
    click();
    QCOMPARE(names(), QStringLiteral("abc"));
    QVERIFY(table->selectionModel()->isRowSelected(2));
    click();
    QCOMPARE(names(), QStringLiteral("cba"));
    click();
    QCOMPARE(names(), QStringLiteral("bca"));
    click();
    fixture.press(Qt::Key_0);
    QCOMPARE(names(), QStringLiteral("bca"));
}

void MainWindowTest::copiesTheSelectedRowsAsShown() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.isActive && fixture.open());
    auto* const table = fixture.find<DependencyTable>("dependencyTable");
    fixture.model.setSearch(QStringLiteral("an"));
    table->setFocus();
    fixture.press(Qt::Key_A);
    fixture.press(Qt::Key_C);
    QCOMPARE(QApplication::clipboard()->text(),
             QStringLiteral("anchor\t1.0.0\tSwift packages\tMIT\tMetadata\t\n"
                            "granite\t1.0.0\tnpm\tGPL-3.0\tMetadata\tCopyleft (GPL)"));
}

void MainWindowTest::detailsArePlainTextAndLinksWaitForAClick() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.open());
    auto* const details = fixture.find<QWidget>("detailPane");
    QVERIFY(textOf(*details).contains(QStringLiteral("Select a package")));
    fixture.find<DependencyTable>("dependencyTable")->selectRow(4);
    QVERIFY(textOf(*details).contains(QStringLiteral("<b>bold</b>")));
    for (const QLabel* const label : details->findChildren<QLabel*>()) {
        QVERIFY2(label->textFormat() == Qt::PlainText, qPrintable(label->text()));
    }
    QCOMPARE(fixture.find<QPlainTextEdit>("licenseText")->toPlainText(),
             QStringLiteral("Permission is <i>granted</i>"));
    QVERIFY(fixture.openedLinks.isEmpty());
    fixture.find<QAbstractButton>("sourceLink")->click();
    QCOMPARE(fixture.openedLinks, QStringList{QStringLiteral("https://example.org/bold")});
    auto* const tabs = details->findChild<QTabWidget*>();
    QCOMPARE(tabs->count(), 2);
    fixture.find<DependencyTable>("dependencyTable")->selectRow(1);
    QCOMPARE(tabs->count(), 1);
    QVERIFY(textOf(*details).contains(QStringLiteral("GNU General Public License")));
    QVERIFY(fixture.find<QAbstractButton>("sourceLink") == nullptr);
}

void MainWindowTest::endlessTextsDoNotHoldUpTheWindow() {
    auto endless = package(std::string(300000, 'n'));
    endless.license = std::string(300000, 'l');
    endless.licenseText = std::string(400000, 't') + "\nend";
    endless.source = "https://example.org/" + std::string(300000, 's');
    WindowFixture fixture(alwaysFinding(findings({endless})));
    QVERIFY(fixture.open());
    QElapsedTimer timer;
    timer.start();
    fixture.find<DependencyTable>("dependencyTable")->selectRow(0);
    fixture.window.grab();
    auto* const tabs = fixture.find<QWidget>("detailPane")->findChild<QTabWidget*>();
    tabs->setCurrentIndex(1);
    fixture.window.grab();
    QVERIFY2(timer.elapsed() < 15000, qPrintable(QString::number(timer.elapsed())));
    const QString shown = fixture.find<QPlainTextEdit>("licenseText")->toPlainText();
    QCOMPARE(shown.count(QLatin1Char('t')), 400000);
    QVERIFY(shown.endsWith(QStringLiteral("\nend")));
}

void MainWindowTest::warningsOfferWhatTheProgramCanDo() {
    WindowFixture fixture(alwaysFinding(findings({}, {"Build it, or add the checkouts folder and scan again.",
                                                      "Choose the environment and scan again."})));
    QVERIFY(fixture.open());
    auto* const warnings = fixture.find<QWidget>("warnings");
    QVERIFY(warnings->isVisible());
    QVERIFY(textOf(*warnings).contains(QStringLiteral("Choose the environment and scan again.")));
    warnings->findChild<QPushButton*>(QStringLiteral("addCheckoutsButton"))->click();
    QCOMPARE(fixture.chooser.questions.back().prompt, QStringLiteral("Add"));
    warnings->findChild<QPushButton*>(QStringLiteral("choosePythonEnvironmentButton"))->click();
    QCOMPARE(fixture.chooser.questions.back().prompt, QStringLiteral("Use"));
    fixture.model.openFolder(fixture.project.folder("next"));
    QVERIFY(!warnings->isVisible());
}

void MainWindowTest::manyWarningsAreFolded() {
    WindowFixture fixture(alwaysFinding(findings({}, {"first", "second", "third", "fourth"})));
    QVERIFY(fixture.open());
    auto* const warnings = fixture.find<QWidget>("warnings");
    const auto toggle = [warnings] {
        return warnings->findChild<QPushButton*>(QStringLiteral("warningsToggle"));
    };
    QVERIFY(!textOf(*warnings).contains(QStringLiteral("third")));
    QCOMPARE(toggle()->text(), QStringLiteral("Show 2 more warnings"));
    toggle()->click();
    QTRY_VERIFY(textOf(*warnings).contains(QStringLiteral("fourth")));
    toggle()->click();
    QTRY_VERIFY(!textOf(*warnings).contains(QStringLiteral("fourth")));
}

void MainWindowTest::aRunningScanShowsProgressKeepsTheRowsAndCanBeCancelled() {
    HeldScans scans;
    WindowFixture fixture(scans.function());
    scans.release(0, sample());
    QVERIFY(fixture.open());
    auto* const progress = fixture.find<QWidget>("progress");
    auto* const table = fixture.find<DependencyTable>("dependencyTable");
    QVERIFY(!progress->isVisible());
    fixture.press(Qt::Key_R);
    QVERIFY(progress->isVisible());
    QTRY_COMPARE(progress->findChild<QProgressBar*>()->maximum(), 7);
    QCOMPARE(progress->findChild<QProgressBar*>()->value(), 3);
    QTRY_COMPARE(progress->findChild<QLabel*>()->accessibleName(),
                 QStringLiteral("3 of 7 packages: left-pad"));
    table->selectRow(1);
    fixture.find<QLineEdit>("search")->setText(QStringLiteral("gran"));
    QCOMPARE(rowsOf(*table), QStringList{QStringLiteral("granite")});
    progress->findChild<QPushButton*>(QStringLiteral("cancelScanButton"))->click();
    QVERIFY(!progress->isVisible());
    QCOMPARE(fixture.model.selectedDependency()->name, std::string("granite"));
    scans.release(1, findings({}));
    QTRY_VERIFY(scans.wasStopped(1));
    QCOMPARE(fixture.model.result()->dependencies.size(), std::size_t{5});
}

void MainWindowTest::emptyStatesSayWhatIsGoingOn() {
    HeldScans scans;
    WindowFixture fixture(scans.function());
    auto* const empty = fixture.find<QWidget>("emptyState");
    const auto says = [empty](const char* words) {
        return empty->isVisible() && textOf(*empty).contains(QString::fromUtf8(words));
    };
    fixture.model.openFolder(fixture.project.path());
    QVERIFY(says("Scanning…"));
    QTRY_COMPARE(scans.begun().size(), std::size_t{1});
    fixture.model.cancelScan();
    QVERIFY(says("The scan was cancelled."));
    scans.release(0, {});
    scans.release(1, findings({}));
    empty->findChild<QPushButton*>(QStringLiteral("rescanButton"))->click();
    QTRY_VERIFY(says("No dependencies found"));
    scans.release(2, sample());
    fixture.model.scan();
    QTRY_VERIFY(!fixture.model.scanning());
    QVERIFY(!empty->isVisible());
    fixture.model.setFilter(DependencyFilter::copyleft());
    fixture.model.setSearch(QStringLiteral("pad"));
    QVERIFY(says("No matching packages"));
    empty->findChild<QPushButton*>(QStringLiteral("showAllButton"))->click();
    QCOMPARE(fixture.model.rows().size(), std::size_t{5});
    QCOMPARE(fixture.find<QLineEdit>("search")->text(), QString());
    fixture.model.openFolder(fixture.project.path() / "gone");
    QTRY_VERIFY(says("“gone” can’t be read."));
}

void MainWindowTest::messagesStayUntilDismissed() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.open());
    fixture.model.setExportMessage(QStringLiteral("Saved <b>it</b>."));
    fixture.model.setProblem(QStringLiteral("It went wrong."));
    for (const char* name : {"exportMessage", "problem"}) {
        auto* const strip = fixture.find<QWidget>(name);
        QVERIFY(strip->isVisible());
        strip->findChild<QAbstractButton*>(QStringLiteral("dismissButton"))->click();
        QVERIFY(!strip->isVisible());
    }
    QVERIFY(!fixture.model.exportMessage() && !fixture.model.problem());
}

void MainWindowTest::everyShortcutDoesItsCommand() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.isActive && fixture.open());
    auto& asked = fixture.chooser.questions;
    fixture.press(Qt::Key_O);
    QCOMPARE(asked.back().prompt, QStringLiteral("Scan"));
    fixture.press(Qt::Key_R);
    QVERIFY(fixture.model.scanning());
    fixture.press(Qt::Key_Period);
    QVERIFY(!fixture.model.scanning());
    const std::vector<std::pair<Qt::Key, DependencyFilter>> filters{
        {Qt::Key_2, DependencyFilter::needsReview()},
        {Qt::Key_3, DependencyFilter::copyleft()},
        {Qt::Key_4, DependencyFilter::unknown()},
        {Qt::Key_1, DependencyFilter::all()}};
    for (const auto& [key, filter] : filters) {
        fixture.press(key);
        QVERIFY(fixture.model.filter() == filter);
    }
    for (const auto& [name, modifiers] :
         {std::pair{"sidebar", Qt::NoModifier}, {"detailPane", Qt::ShiftModifier}}) {
        fixture.press(Qt::Key_F9, modifiers);
        QVERIFY(!fixture.find<QWidget>(name)->isVisible());
        fixture.press(Qt::Key_F9, modifiers);
        QVERIFY(fixture.find<QWidget>(name)->isVisible());
    }
    fixture.press(Qt::Key_F11, Qt::NoModifier);
    QVERIFY(fixture.window.isFullScreen());
    fixture.press(Qt::Key_F11, Qt::NoModifier);
    QVERIFY(!fixture.window.isFullScreen());
    fixture.press(Qt::Key_W);
    QVERIFY(!fixture.window.isVisible());
}

void MainWindowTest::commandsAreEnabledAsTheModelAllows() {
    HeldScans scans;
    WindowFixture fixture(scans.function());
    const auto enabled = [&fixture] {
        QStringList names;
        for (const Command command : {Command::openFolder, Command::rescan, Command::cancelScan,
                                      Command::exportReport, Command::find, Command::checkForUpdates}) {
            if (fixture.commands.action(command)->isEnabled()) {
                names.push_back(fixture.commands.action(command)->objectName());
            }
        }
        return names.join(QLatin1Char(' '));
    };
    QCOMPARE(enabled(), QStringLiteral("openFolder"));
    fixture.model.openFolder(fixture.project.path());
    QCOMPARE(enabled(), QStringLiteral("openFolder rescan cancelScan"));
    scans.release(0, sample());
    QTRY_COMPARE(enabled(), QStringLiteral("openFolder rescan exportReport find"));
    int checks = 0;
    const AppCommands withUpdates(fixture.model, [&checks] { ++checks; });
    withUpdates.action(Command::checkForUpdates)->trigger();
    QCOMPARE(checks, 1);
}

void MainWindowTest::closingWaitsForASave_data() {
    QTest::addColumn<bool>("fails");
    QTest::newRow("saved") << false;
    QTest::newRow("not saved") << true;
}

void MainWindowTest::closingWaitsForASave() {
    QFETCH(bool, fails);
    std::atomic<bool> mayEnd = false;
    WindowFixture fixture(alwaysFinding(sample()), [&](const auto&, const auto&, auto, const auto&) {
        while (!mayEnd) {
            QThread::msleep(1);
        }
        return fails ? ScanKit::SavedReports{.failure = "Disk full"} : ScanKit::SavedReports{};
    });
    QVERIFY(fixture.open());
    fixture.chooser.answer = fixture.project.path();
    fixture.model.exportReports(ScanKit::ReportFormats::json);
    QVERIFY(!fixture.window.close());
    QVERIFY(fixture.window.isVisible());
    mayEnd = true;
    QTRY_VERIFY(!fixture.model.exporting());
    QCOMPARE(fixture.window.isVisible(), fails);
    if (fails) {
        QVERIFY(fixture.find<QWidget>("exportMessage")->isVisible());
        QVERIFY(fixture.window.close());
    }
}

void MainWindowTest::closingEndsAScan() {
    HeldScans scans;
    WindowFixture fixture(scans.function());
    fixture.model.openFolder(fixture.project.path());
    QTRY_COMPARE(scans.begun().size(), std::size_t{1});
    fixture.window.close();
    QVERIFY(!fixture.model.scanning());
    scans.release(0, {});
    QTRY_VERIFY(scans.wasStopped(0));
}

void MainWindowTest::narrowWindowsPutTheDetailsBelow() {
    WindowFixture fixture(alwaysFinding(sample()));
    QVERIFY(fixture.open());
    const auto detailsTop = [&fixture] {
        const QWidget* const pane = fixture.find<QWidget>("detailPane");
        return pane->mapTo(&fixture.window, QPoint()).y() -
               fixture.find<QWidget>("sidebar")->mapTo(&fixture.window, QPoint()).y();
    };
    fixture.window.resize(1800, 900);
    QTRY_COMPARE(detailsTop(), 0);
    fixture.window.resize(900, 600);
    QTRY_VERIFY(detailsTop() > 100);
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
