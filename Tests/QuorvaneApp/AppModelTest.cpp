#include "QuorvaneApp/Model/AppModel.h"

#include "QuorvaneApp/Model/WarningRemedy.h"
#include "Tests/QuorvaneApp/AppFixture.h"

#include <algorithm>

#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

using ScanKit::Ecosystem;
using ScanKit::Flag;
using ScanKit::LicenseCategory;
using Names = std::vector<std::string>;

/// The model without a window: opening, scanning, choosing, filtering, selecting, and what survives a
/// restart.
class AppModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void openingAFolderForgetsTheProjectBefore();
    void panelsAskTheirQuestionsAndActOnlyWhenConfirmed();
    void chosenFoldersReachTheNextScan();
    void aNewerScanSilencesTheOlder();
    void cancellingKeepsTheLastResult();
    void cancellingTheFirstScanLeavesNoResult();
    void progressIsToldWhileAScanRuns();
    void rescanningKeepsTheSelectionOnlyWhenItIsStillThere();
    void filterAndSearch_data();
    void filterAndSearch();
    void aFolderThatCannotBeScannedIsSaidAndNothingIsLost();
    void onlyAReadableFolderReplacesTheProject();
    void theEndOfTheModelStopsItsScan();
    void aChosenEnvironmentMakesPythonRead();
    void everyWarningOfARealScanHasItsRemedy();
    void twoSettingsSurviveARestart();
    void withoutPersistNothingIsReadOrWritten();

private:
    AppModel::Surroundings surroundings(ScanFunction scan) {
        chooser_.questions.clear();
        chooser_.answer.reset();
        return {.folderChooser = chooser_, .fileRevealer = revealer_, .scan = std::move(scan)};
    }
    ScanFunction held() { return scans_->function(); }

    FakeFolderChooser chooser_;
    RecordingFileRevealer revealer_;
    std::unique_ptr<HeldScans> scans_;
    ProjectFolder project_;
    QTemporaryDir settings_;

private Q_SLOTS:
    void init() { scans_ = std::make_unique<HeldScans>(); }
};

void AppModelTest::initTestCase() {
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path());
}

void AppModelTest::openingAFolderForgetsTheProjectBefore() {
    AppModel model(false, surroundings(alwaysFinding(findings({package("pad")}))));
    const auto first = project_.folder("First");
    model.openFolder(first);
    QTRY_VERIFY(!model.scanning());
    chooser_.answer = project_.folder("checkouts");
    model.addCheckoutsFolder();
    model.choosePythonEnvironment();
    QTRY_VERIFY(!model.scanning());
    model.setFilter(DependencyFilter::copyleft());
    model.setSearch(QStringLiteral("no such package"));
    model.selectRow(0);
    model.setPreparedFor(QStringLiteral("A client"));
    model.setReportName(QStringLiteral("Renamed"));
    model.setExportMessage(QStringLiteral("Saved it."));

    model.openFolder(project_.folder("Second") / ".." / "Second");
    QCOMPARE(*model.folder(), project_.path() / "Second");
    QVERIFY(model.scanning());
    QVERIFY(model.result() == nullptr);
    QVERIFY(model.detection() == nullptr);
    QVERIFY(model.extraCheckouts().empty());
    QVERIFY(model.pythonEnvironments().empty());
    QVERIFY(model.filter() == DependencyFilter::all());
    QCOMPARE(model.search(), QString());
    QVERIFY(!model.selection());
    QVERIFY(!model.exportMessage());
    QCOMPARE(model.reportName(), QStringLiteral("Second"));
    QCOMPARE(model.preparedFor(), QString());
    QTRY_VERIFY(!model.scanning());
    QCOMPARE(shownNames(model), Names{"pad"});
}

void AppModelTest::panelsAskTheirQuestionsAndActOnlyWhenConfirmed() {
    struct Row {
        void (AppModel::*operation)();
        QString message, prompt;
        bool showsHidden;
    };
    const std::vector<Row> rows{
        {&AppModel::chooseProjectFolder, QStringLiteral("Choose a project folder. Quorvane only reads it."),
         QStringLiteral("Scan"), false},
        {&AppModel::addCheckoutsFolder,
         QStringLiteral(
             "Choose a folder of checked-out Swift packages, like …/SourcePackages/checkouts or .build/checkouts."),
         QStringLiteral("Add"), false},
        {&AppModel::choosePythonEnvironment,
         QStringLiteral(
             "Choose the virtual environment (the folder with pyvenv.cfg) or a site-packages folder."),
         QStringLiteral("Use"), true},
    };
    AppModel model(false, surroundings(alwaysFinding(findings({}))));
    for (const Row& row : rows) {
        (model.*row.operation)();
        const FolderQuestion& asked = chooser_.questions.back();
        QCOMPARE(asked.message, row.message);
        QCOMPARE(asked.prompt, row.prompt);
        QCOMPARE(asked.showsHidden, row.showsHidden);
        QVERIFY(!asked.createsFolders);
        QVERIFY(!model.folder());
        QVERIFY(!model.scanning());
        QVERIFY(model.extraCheckouts().empty() && model.pythonEnvironments().empty());
    }
}

void AppModelTest::chosenFoldersReachTheNextScan() {
    AppModel model(false, surroundings(held()));
    const std::vector<std::filesystem::path> folders{project_.folder("a"), project_.folder("b")};
    for (std::size_t i = 0; i < 6; ++i) {
        scans_->release(i, findings({}));
    }
    chooser_.answer = project_.path();
    model.chooseProjectFolder();
    chooser_.answer = folders[0];
    model.addCheckoutsFolder();
    model.addCheckoutsFolder();
    model.choosePythonEnvironment();
    chooser_.answer = folders[1];
    model.choosePythonEnvironment();
    QTRY_VERIFY(!model.scanning());
    QTRY_VERIFY(!scans_->begun().empty());
    QCOMPARE(model.extraCheckouts(), (std::vector{folders[0], folders[0]}));
    QCOMPARE(model.pythonEnvironments(), std::vector{folders[1]});
    bool reachedAScan = false;
    for (const ScanRequest& request : scans_->begun()) {
        QCOMPARE(request.folder, project_.path());
        reachedAScan = reachedAScan || (request.extraCheckouts == model.extraCheckouts() &&
                                        request.pythonEnvironments == model.pythonEnvironments());
    }
    QVERIFY(reachedAScan);
}

void AppModelTest::aNewerScanSilencesTheOlder() {
    AppModel model(false, surroundings(held()));
    QSignalSpy published(&model, &AppModel::projectChanged);
    model.openFolder(project_.path());
    QTRY_COMPARE(scans_->begun().size(), std::size_t{1});
    model.scan();
    QTRY_COMPARE(scans_->begun().size(), std::size_t{2});
    published.clear();
    scans_->release(0, findings({package("old")}));
    QTRY_VERIFY(scans_->wasStopped(0));
    QTest::qWait(50);
    QVERIFY(model.scanning());
    QCOMPARE(published.count(), 0);
    scans_->release(1, findings({package("new")}));
    QTRY_VERIFY(!model.scanning());
    QCOMPARE(shownNames(model), Names{"new"});
    QCOMPARE(published.count(), 1);
}

void AppModelTest::cancellingKeepsTheLastResult() {
    AppModel model(false, surroundings(held()));
    scans_->release(0, findings({package("kept")}));
    model.openFolder(project_.path());
    QTRY_VERIFY(!model.scanning());
    model.selectRow(0);
    model.scan();
    QTRY_COMPARE(scans_->begun().size(), std::size_t{2});
    model.cancelScan();
    QVERIFY(!model.scanning());
    scans_->release(1, findings({package("half")}));
    QTRY_VERIFY(scans_->wasStopped(1));
    QTest::qWait(50);
    QCOMPARE(shownNames(model), Names{"kept"});
    QCOMPARE(*model.selection(), std::string("npm:kept@1.0.0"));
    QVERIFY(!model.problem());
}

void AppModelTest::cancellingTheFirstScanLeavesNoResult() {
    AppModel model(false, surroundings(held()));
    model.openFolder(project_.path());
    QTRY_COMPARE(scans_->begun().size(), std::size_t{1});
    model.cancelScan();
    scans_->release(0, findings({package("half")}));
    QTRY_VERIFY(scans_->wasStopped(0));
    QTest::qWait(50);
    QVERIFY(model.result() == nullptr);
}

void AppModelTest::progressIsToldWhileAScanRuns() {
    AppModel model(false, surroundings(held()));
    model.openFolder(project_.path());
    QTRY_COMPARE(model.progress().total, std::size_t{7});
    QCOMPARE(model.progress().done, std::size_t{3});
    QCOMPARE(model.progress().name, QStringLiteral("left-pad"));
    scans_->release(0, findings({}));
    QTRY_VERIFY(!model.scanning());
}

void AppModelTest::rescanningKeepsTheSelectionOnlyWhenItIsStillThere() {
    AppModel model(false, surroundings(held()));
    scans_->release(0, findings({package("a"), package("b")}));
    scans_->release(1, findings({package("b"), package("c")}));
    scans_->release(2, findings({package("c")}));
    model.openFolder(project_.path());
    QTRY_VERIFY(!model.scanning());
    model.selectRow(1);
    model.scan();
    QTRY_VERIFY(!model.scanning());
    QCOMPARE(*model.selection(), std::string("npm:b@1.0.0"));
    QCOMPARE(model.selectedDependency()->name, std::string("b"));
    model.scan();
    QTRY_VERIFY(!model.scanning());
    QVERIFY(!model.selection());
    QVERIFY(model.selectedDependency() == nullptr);
}

void AppModelTest::filterAndSearch_data() {
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("search");
    QTest::addColumn<QStringList>("shown");
    const auto row = [](const char* name, int filter, const char* search, const char* shown) {
        QTest::newRow(name) << filter << QString::fromUtf8(search)
                            << QString::fromUtf8(shown).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    row("everything, in the order of the result", 0, "", "kit Mitten gpl weak lost odd pip");
    row("needs review leaves a missing license file alone", 1, "", "gpl weak lost odd");
    row("copyleft is by category", 2, "", "gpl weak");
    row("unknown takes flags and absence", 3, "", "lost odd");
    row("one ecosystem", 4, "", "pip");
    row("a name, letter case aside", 0, "MITTEN", "Mitten");
    row("a license or a name", 0, "mit", "kit Mitten odd pip");
    row("blanks around do not count", 0, "  \tMIT ", "kit Mitten odd pip");
    row("blanks inside do", 0, "m it", "");
    row("filter and search together", 3, "mit", "odd");
    row("letters beyond ASCII", 0, "ÄRA", "weak");
}

void AppModelTest::filterAndSearch() {
    const std::array filters{DependencyFilter::all(), DependencyFilter::needsReview(),
                             DependencyFilter::copyleft(), DependencyFilter::unknown(),
                             DependencyFilter::ecosystem(Ecosystem::python)};
    auto weak = flagged("weak", {Flag::weakCopyleft}, LicenseCategory::weakCopyleft, "Ära-1.0");
    const auto found =
        findings({flagged("kit", {Flag::noLicenseFile}), package("Mitten"),
                  flagged("gpl", {Flag::strongCopyleft}, LicenseCategory::strongCopyleft, "GPL-3.0"), weak,
                  flagged("lost", {Flag::missing}, LicenseCategory::unknown, {}),
                  flagged("odd", {Flag::missing}), package("pip", Ecosystem::python)});
    AppModel model(false, surroundings(alwaysFinding(found)));
    model.openFolder(project_.path());
    QTRY_VERIFY(!model.scanning());
    QFETCH(int, filter);
    QFETCH(QString, search);
    QFETCH(QStringList, shown);
    model.setFilter(filters[static_cast<std::size_t>(filter)]);
    model.setSearch(search);
    QStringList names;
    for (const std::string& name : shownNames(model)) {
        names.push_back(QString::fromStdString(name));
    }
    QCOMPARE(names, shown);
    if (search.isEmpty()) {
        QCOMPARE(model.project()->count(model.filter()), static_cast<int>(shown.size()));
    }
}

void AppModelTest::aFolderThatCannotBeScannedIsSaidAndNothingIsLost() {
    ProjectFolder vanishing;
    const auto folder = vanishing.folder("Gone");
    AppModel model(false, surroundings(held()));
    scans_->release(0, findings({package("kept")}));
    model.openFolder(folder);
    QTRY_VERIFY(!model.scanning());

    model.scan();
    QTRY_COMPARE(scans_->begun().size(), std::size_t{2});
    std::filesystem::remove_all(folder);
    scans_->release(1, findings({}));
    QTRY_VERIFY(!model.scanning());
    const QString during = model.problem().value_or(QString());
    QVERIFY2(during.contains(QStringLiteral("“Gone” can’t be read")), qPrintable(during));
    QCOMPARE(shownNames(model), Names{"kept"});

    model.scan();
    QVERIFY(!model.problem());
    QTRY_VERIFY(!model.scanning());
    QVERIFY(model.problem().has_value());
    QCOMPARE(scans_->begun().size(), std::size_t{2});
    QCOMPARE(shownNames(model), Names{"kept"});
}

void AppModelTest::onlyAReadableFolderReplacesTheProject() {
    AppModel model(false, surroundings(alwaysFinding(findings({package("kept")}))));
    model.openFolder(project_.folder("Present"));
    QTRY_VERIFY(!model.scanning());
    const std::vector<std::pair<std::filesystem::path, QString>> refused{
        {project_.write("notes.txt", "x"), QStringLiteral("“notes.txt” is not a folder.")},
        {project_.path() / "nowhere", QStringLiteral("“nowhere” can’t be read.")},
    };
    for (const auto& [path, sentence] : refused) {
        model.setProblem({});
        model.openIfFolder(path);
        QTRY_VERIFY(model.problem().has_value());
        QVERIFY2(model.problem()->startsWith(sentence), qPrintable(*model.problem()));
        QCOMPARE(*model.folder(), project_.path() / "Present");
        QCOMPARE(shownNames(model), Names{"kept"});
    }
    model.openIfFolder(project_.folder("Other"));
    QTRY_COMPARE(*model.folder(), project_.path() / "Other");
    QVERIFY(!model.problem());
}

void AppModelTest::theEndOfTheModelStopsItsScan() {
    std::atomic<bool> sawTheStop = false;
    std::atomic<bool> began = false;
    {
        AppModel model(false, surroundings([&](const ScanRequest&, const ScanKit::ScanControl& control) {
                           began = true;
                           QElapsedTimer timer;
                           timer.start();
                           while (!control.stop.stop_requested() && timer.elapsed() < 5000) {
                               control.progress({.done = 1, .total = 2, .name = "x"});
                               QThread::msleep(1);
                           }
                           sawTheStop = control.stop.stop_requested();
                           return ScanFindings{};
                       }));
        model.openFolder(project_.path());
        QTRY_VERIFY(began);
    }
    QVERIFY(sawTheStop);
    QCoreApplication::processEvents();
}

void AppModelTest::aChosenEnvironmentMakesPythonRead() {
    ProjectFolder real;
    real.write("environment/pyvenv.cfg", "home = /usr\n");
    real.write("environment/lib/python3.11/site-packages/coral-1.0.dist-info/METADATA",
               "Metadata-Version: 2.1\nName: coral\nVersion: 1.0\nLicense: MIT\n");
    AppModel model(false, surroundings(scanFolder));
    model.openFolder(real.folder("project"));
    QTRY_VERIFY(!model.scanning());
    QVERIFY(model.rows().empty());
    QVERIFY(model.ecosystems().empty());
    chooser_.answer = real.path() / "environment";
    model.choosePythonEnvironment();
    QTRY_VERIFY(!model.scanning());
    QCOMPARE(shownNames(model), Names{"coral"});
    QCOMPARE(model.ecosystems(), std::vector{Ecosystem::python});
}

void AppModelTest::everyWarningOfARealScanHasItsRemedy() {
    struct Row {
        const char* file;
        const char* content;
        WarningRemedy remedy;
    };
    const std::vector<Row> rows{
        {"Package.resolved",
         R"({"pins":[{"identity":"buoy","kind":"remoteSourceControl","location":"https://example.org/buoy",)"
         R"("state":{"version":"1.0.0","revision":"aa"}}],"version":2})",
         WarningRemedy::addCheckouts},
        {"requirements.txt", "coral==1.0\n", WarningRemedy::choosePythonEnvironment},
        {"package-lock.json", R"({"lockfileVersion":3,"packages":{"node_modules/a":{"version":"1.0.0"}}})",
         WarningRemedy::rescan},
    };
    for (const Row& row : rows) {
        ProjectFolder real;
        real.write("package.json", "{}");
        real.write(row.file, row.content);
        AppModel model(false, surroundings(scanFolder));
        model.openFolder(real.path());
        QTRY_VERIFY(!model.scanning());
        const auto& warnings = model.result()->warnings;
        QVERIFY2(
            std::ranges::any_of(warnings, [&](const auto& text) { return remedyOf(text) == row.remedy; }),
            row.file);
    }
}

void AppModelTest::twoSettingsSurviveARestart() {
    {
        AppModel model(true, surroundings(alwaysFinding(findings({}))));
        QVERIFY(!model.includeDev());
        QCOMPARE(model.preparedBy(), QString());
        model.setIncludeDev(true);
        model.setPreparedBy(QStringLiteral("Übersee & Söhne"));
        model.setPreparedFor(QStringLiteral("A client"));
        model.setReportName(QStringLiteral("A name"));
    }
    {
        AppModel model(true, surroundings(alwaysFinding(findings({}))));
        QVERIFY(model.includeDev());
        QCOMPARE(model.preparedBy(), QStringLiteral("Übersee & Söhne"));
        QCOMPARE(model.preparedFor(), QString());
        QCOMPARE(model.reportName(), QString());
        model.setIncludeDev(false);
        model.setPreparedBy({});
    }
    const AppModel model(true, surroundings(alwaysFinding(findings({}))));
    QVERIFY(!model.includeDev());
    QCOMPARE(model.preparedBy(), QString());
    QCOMPARE(QSettings().allKeys(),
             (QStringList{QStringLiteral("includeDev"), QStringLiteral("preparedBy")}));
}

void AppModelTest::withoutPersistNothingIsReadOrWritten() {
    QSettings().setValue(QStringLiteral("includeDev"), true);
    AppModel model(false, surroundings(alwaysFinding(findings({}))));
    QVERIFY(!model.includeDev());
    model.setIncludeDev(true);
    model.setIncludeDev(false);
    model.setPreparedBy(QStringLiteral("nobody"));
    QVERIFY(QSettings().value(QStringLiteral("includeDev")).toBool());
    QVERIFY(QSettings().value(QStringLiteral("preparedBy")).toString() != QStringLiteral("nobody"));
}

QTEST_GUILESS_MAIN(AppModelTest)
#include "AppModelTest.moc"
