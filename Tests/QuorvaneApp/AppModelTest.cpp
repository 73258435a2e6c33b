#include "QuorvaneApp/Model/AppModel.h"

#include "Tests/QuorvaneApp/AppFixture.h"

#include <algorithm>
#include <atomic>
#include <mutex>

#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

using ScanKit::Ecosystem;
using ScanKit::Flag;
using ScanKit::LicenseCategory;

/// The model without a window: opening, scanning, choosing, filtering, selecting, and what survives a restart.
class AppModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void openingAFolderForgetsTheProjectBefore() {
        ModelFixture fixture(alwaysFinding(findings({package("pad")})));
        AppModel& model = fixture.model;
        QVERIFY(fixture.open("First"));
        fixture.chooser.answer = fixture.project.folder("checkouts");
        model.addCheckoutsFolder();
        model.choosePythonEnvironment();
        QVERIFY(fixture.waitForScan());
        model.setFilter(DependencyFilter::copyleft());
        model.setSearch(u"no such package"_s);
        model.selectRow(0);
        model.setPreparedFor(u"A client"_s);
        model.setReportName(u"Renamed"_s);
        model.setExportMessage(u"Saved it."_s);

        model.openFolder(fixture.project.folder("Second") / ".." / "Second");
        QCOMPARE(*model.folder(), fixture.project.path() / "Second");
        QVERIFY(model.scanning() && model.result() == nullptr && model.detection() == nullptr);
        QVERIFY(model.extraCheckouts().empty() && model.pythonEnvironments().empty());
        QVERIFY(!model.selection() && !model.exportMessage());
        QCOMPARE(model.reportName(), u"Second"_s);
        QCOMPARE(model.preparedFor(), QString());
        QVERIFY(fixture.waitForScan());
        QCOMPARE(fixture.shown(), u"pad"_s);
    }

    void anotherScanOfAFolderTakesOverWhatThatFolderLeft() {
        std::mutex lock;
        std::vector<ScanKit::FileCache*> caches;
        ModelFixture fixture([&](const ScanRequest& request, const ScanKit::ScanControl& control) {
            const std::lock_guard guard(lock);
            caches.push_back(control.cache);
            return scanFolder(request, control);
        });
        const auto reused = [&] { return caches.back()->statistics().reused; };
        fixture.project.write("First/package.json", "{}");
        fixture.project.write("First/package-lock.json",
                              R"({"packages": {"node_modules/a": {"version": "1"}}})");
        QVERIFY(fixture.open("First"));
        QCOMPARE(reused(), std::size_t{0});
        fixture.model.scan();
        QVERIFY(fixture.waitForScan());
        QVERIFY(caches[0] != nullptr && caches[0] == caches[1]);
        QVERIFY(reused() > 0);
        // The folder before is of no use to the next one.
        QVERIFY(fixture.open("Second"));
        QCOMPARE(reused(), std::size_t{0});
    }

    void panelsAskTheirQuestionsAndActOnlyWhenConfirmed() {
        ModelFixture fixture(alwaysFinding(findings({package("kept")})));
        AppModel& model = fixture.model;
        QVERIFY(fixture.open());
        model.chooseProjectFolder();
        model.addCheckoutsFolder();
        model.choosePythonEnvironment();
        model.exportReports(ScanKit::ReportFormats::json);
        QStringList asked;
        for (const FolderQuestion& question : fixture.chooser.questions) {
            asked.push_back(question.message + u'|' + question.prompt +
                            (question.showsHidden ? u"|shows hidden"_s : QString()) +
                            (question.createsFolders ? u"|makes folders"_s : QString()));
        }
        QCOMPARE(asked.value(0), u"Choose a project folder. Quorvane only reads it.|Scan"_s);
        QCOMPARE(
            asked.value(1),
            u"Choose a folder of checked-out Swift packages, like …/SourcePackages/checkouts or .build/checkouts.|Add"_s);
        QCOMPARE(
            asked.value(2),
            u"Choose the virtual environment (the folder with pyvenv.cfg) or a site-packages folder.|Use|shows hidden"_s);
        QCOMPARE(asked.value(3), u"Choose where to save the report files.|Export Here|makes folders"_s);
        QCOMPARE(*model.folder(), fixture.project.path() / "Harbor");
        QVERIFY(!model.scanning() && !model.exporting() && !model.exportMessage());
        QVERIFY(model.extraCheckouts().empty() && model.pythonEnvironments().empty());
    }

    void chosenFoldersReachTheNextScan() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        AppModel& model = fixture.model;
        const auto first = fixture.project.folder("first");
        const auto second = fixture.project.folder("second");
        const std::vector<std::pair<void (AppModel::*)(), std::filesystem::path>> choices{
            {&AppModel::chooseProjectFolder, fixture.project.path()},
            {&AppModel::addCheckoutsFolder, first},
            {&AppModel::addCheckoutsFolder, first},
            {&AppModel::choosePythonEnvironment, first},
            {&AppModel::choosePythonEnvironment, second}};
        for (std::size_t i = 0; i < choices.size(); ++i) {
            scans.release(i, {});
            fixture.chooser.answer = choices[i].second;
            (model.*choices[i].first)();
            QVERIFY(fixture.waitForScan());
        }
        const ScanRequest last = scans.begun().back();
        QCOMPARE(last.folder, fixture.project.path());
        QCOMPARE(last.extraCheckouts, (std::vector{first, first}));
        QCOMPARE(last.pythonEnvironments, std::vector{second});
    }

    void aNewerScanSilencesTheOlder() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        fixture.model.openFolder(fixture.project.path());
        QTRY_COMPARE(scans.begun().size(), std::size_t{1});
        fixture.model.scan();
        QTRY_COMPARE(scans.begun().size(), std::size_t{2});
        const QSignalSpy published(&fixture.model, &AppModel::projectChanged);
        scans.release(0, findings({package("old")}));
        QTRY_VERIFY(scans.wasStopped(0));
        QTest::qWait(50);
        QVERIFY(fixture.model.scanning());
        QCOMPARE(published.count(), 0);
        scans.release(1, findings({package("new")}));
        QVERIFY(fixture.waitForScan());
        QCOMPARE(fixture.shown(), u"new"_s);
        QCOMPARE(published.count(), 1);
    }

    void whatACancelledScanFindsIsNeverShown() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        AppModel& model = fixture.model;
        const auto cancel = [&](std::size_t index) {
            QTRY_COMPARE(model.progress().name, u"left-pad"_s);
            model.cancelScan();
            QVERIFY(!model.scanning());
            scans.release(index, findings({package("half")}));
            QTRY_VERIFY(scans.wasStopped(index));
            QTest::qWait(50);
        };
        model.openFolder(fixture.project.path());
        cancel(0);
        QVERIFY(model.result() == nullptr);
        scans.release(1, findings({package("kept")}));
        model.scan();
        QVERIFY(fixture.waitForScan());
        model.selectRow(0);
        model.scan();
        cancel(2);
        QCOMPARE(fixture.shown(), u"kept"_s);
        QCOMPARE(model.selection().value_or(""), "npm:kept@1.0.0");
        QVERIFY(!model.problem());
    }

    void rescanningKeepsTheSelectionOnlyWhenItIsStillThere() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        AppModel& model = fixture.model;
        scans.release(0, findings({package("a"), package("b")}));
        scans.release(1, findings({package("b"), package("c")}));
        scans.release(2, findings({package("c")}));
        QVERIFY(fixture.open());
        model.selectRow(1);
        model.scan();
        QVERIFY(fixture.waitForScan());
        QCOMPARE(model.selection().value_or(""), "npm:b@1.0.0");
        QCOMPARE(model.selectedDependency()->name, "b");
        model.scan();
        QVERIFY(fixture.waitForScan());
        QVERIFY(!model.selection() && model.selectedDependency() == nullptr);
    }

    void filterAndSearch() {
        ModelFixture fixture(alwaysFinding(
            findings({flagged("kit", {Flag::noLicenseFile}), package("Mitten"),
                      flagged("gpl", {Flag::strongCopyleft}, LicenseCategory::strongCopyleft, "GPL-3.0"),
                      flagged("weak", {Flag::weakCopyleft}, LicenseCategory::weakCopyleft, "Ära-1.0"),
                      flagged("lost", {Flag::missing}, LicenseCategory::unknown, {}),
                      flagged("odd", {Flag::missing}), package("pip", Ecosystem::python)})));
        QVERIFY(fixture.open());
        const auto all = DependencyFilter::all();
        struct Row {
            const char* name;
            DependencyFilter filter;
            QString search;
            QString shown;
        };
        for (const Row& row : {
                 Row{"everything, in the result's order", all, u""_s, u"kit Mitten gpl weak lost odd pip"_s},
                 Row{"not a missing license file alone", DependencyFilter::needsReview(), u""_s,
                     u"gpl weak lost odd"_s},
                 Row{"copyleft by category", DependencyFilter::copyleft(), u""_s, u"gpl weak"_s},
                 Row{"unknown by flag and by absence", DependencyFilter::unknown(), u""_s, u"lost odd"_s},
                 Row{"one ecosystem", DependencyFilter::ecosystem(Ecosystem::python), u""_s, u"pip"_s},
                 Row{"a name, letter case aside", all, u"MITTEN"_s, u"Mitten"_s},
                 Row{"a license or a name", all, u"mit"_s, u"kit Mitten odd pip"_s},
                 Row{"blanks around do not count", all, u"  \tMIT "_s, u"kit Mitten odd pip"_s},
                 Row{"blanks inside do", all, u"m it"_s, u""_s},
                 Row{"both together", DependencyFilter::unknown(), u"mit"_s, u"odd"_s},
                 Row{"letters beyond ASCII", all, u"ÄRA"_s, u"weak"_s},
             }) {
            fixture.model.setFilter(row.filter);
            fixture.model.setSearch(row.search);
            QCOMPARE(at(row.name, fixture.shown()), at(row.name, row.shown));
        }
    }

    void aFolderThatCannotBeScannedIsSaidAndNothingIsLost() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        AppModel& model = fixture.model;
        scans.release(0, findings({package("kept")}));
        QVERIFY(fixture.open("Gone"));
        model.scan();
        QTRY_COMPARE(scans.begun().size(), std::size_t{2});
        std::filesystem::remove_all(fixture.project.path() / "Gone");
        scans.release(1, findings({}));
        QVERIFY(fixture.waitForScan());
        const QString sentence = u"“Gone” can’t be read. It may have been moved, renamed or deleted."_s;
        QCOMPARE(model.problem().value_or(QString()), sentence);
        QCOMPARE(fixture.shown(), u"kept"_s);
        model.scan();
        QVERIFY(!model.problem());
        QVERIFY(fixture.waitForScan());
        QCOMPARE(model.problem().value_or(QString()), sentence);
        QCOMPARE(scans.begun().size(), std::size_t{2});
        QCOMPARE(fixture.shown(), u"kept"_s);
    }

    void onlyAReadableFolderReplacesTheProject() {
        ModelFixture fixture(alwaysFinding(findings({package("kept")})));
        AppModel& model = fixture.model;
        QVERIFY(fixture.open("Present"));
        const std::vector<std::pair<std::filesystem::path, QString>> refused{
            {fixture.project.write("notes.txt", "x"), u"“notes.txt” is not a folder."_s},
            {fixture.project.path() / "nowhere", u"“nowhere” can’t be read."_s},
        };
        for (const auto& [path, sentence] : refused) {
            model.setProblem({});
            model.openIfFolder(path);
            QTRY_VERIFY(model.problem().has_value());
            QCOMPARE(model.problem()->left(sentence.size()), sentence);
            QCOMPARE(*model.folder(), fixture.project.path() / "Present");
            QCOMPARE(fixture.shown(), u"kept"_s);
        }
        model.openIfFolder(fixture.project.folder("Other"));
        QTRY_COMPARE(*model.folder(), fixture.project.path() / "Other");
        QVERIFY(!model.problem());
    }

    void theEndOfTheModelStopsItsScan() {
        std::atomic<bool> sawTheStop = false;
        std::atomic<bool> began = false;
        {
            ModelFixture fixture([&](const ScanRequest&, const ScanKit::ScanControl& control) {
                began = true;
                const QDeadlineTimer end(5000);
                while (!control.stop.stop_requested() && !end.hasExpired()) {
                    control.progress({.done = 1, .total = 2, .name = "x"});
                    QThread::msleep(1);
                }
                sawTheStop = control.stop.stop_requested();
                return ScanFindings{};
            });
            fixture.model.openFolder(fixture.project.path());
            QTRY_VERIFY(began);
        }
        QVERIFY(sawTheStop);
        QCoreApplication::processEvents();
    }

    void aChosenEnvironmentMakesPythonRead() {
        ModelFixture fixture(scanFolder);
        fixture.project.write("environment/pyvenv.cfg", "home = /usr\n");
        fixture.project.write("environment/lib/python3.11/site-packages/coral-1.0.dist-info/METADATA",
                              "Metadata-Version: 2.1\nName: coral\nVersion: 1.0\nLicense: MIT\n");
        QVERIFY(fixture.open());
        QVERIFY(fixture.model.rows().empty() && fixture.model.ecosystems().empty());
        fixture.chooser.answer = fixture.project.path() / "environment";
        fixture.model.choosePythonEnvironment();
        QVERIFY(fixture.waitForScan());
        QCOMPARE(fixture.shown(), u"coral"_s);
        QVERIFY(fixture.model.ecosystems() == std::vector{Ecosystem::python});
    }

    void twoSettingsSurviveARestartAndOnlyWithPersist() {
        const auto launch = [](bool persist) {
            return std::make_unique<ModelFixture>(alwaysFinding({}), ScanKit::saveReports, persist);
        };
        const auto remembered = [&launch](bool persist) {
            const auto fixture = launch(persist);
            const AppModel& model = fixture->model;
            return u"%1|%2|%3|%4"_s.arg(model.includeDev() ? u"with dev"_s : u"without dev"_s,
                                        model.preparedBy(), model.preparedFor(), model.reportName());
        };
        const auto change = [&launch](bool persist, bool includeDev, const QString& preparedBy) {
            const auto fixture = launch(persist);
            fixture->model.setIncludeDev(!includeDev);
            fixture->model.setIncludeDev(includeDev);
            fixture->model.setPreparedBy(preparedBy);
            fixture->model.setPreparedFor(u"A client"_s);
            fixture->model.setReportName(u"A name"_s);
        };
        QCOMPARE(remembered(true), u"without dev|||"_s);
        change(true, true, u"Übersee & Söhne"_s);
        QCOMPARE(remembered(true), u"with dev|Übersee & Söhne||"_s);
        QCOMPARE(remembered(false), u"without dev|||"_s);
        change(false, false, u"nobody"_s);
        QCOMPARE(remembered(true), u"with dev|Übersee & Söhne||"_s);
        change(true, false, {});
        QCOMPARE(remembered(true), u"without dev|||"_s);
        QCOMPARE(QSettings().allKeys(), (QStringList{u"includeDev"_s, u"preparedBy"_s}));
    }

    void aScanEndsWhenAllThatItBroughtIsThere() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        bool hadResult = false;
        connect(&fixture.model, &AppModel::scanningChanged, &fixture.model, [&] {
            hadResult = !fixture.model.scanning() && fixture.model.result() != nullptr &&
                        fixture.model.rows().size() == 1;
        });
        scans.release(0, findings({package("pad")}));
        QVERIFY(fixture.open());
        QVERIFY(hadResult);
    }

    void theFilterOfAnEcosystemThatIsGoneIsLeft() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        scans.release(0, findings({package("pad"), package("anchor", Ecosystem::swiftpm)}));
        scans.release(1, findings({package("pad"), package("wave", Ecosystem::swiftpm)}));
        scans.release(2, findings({package("pad")}));
        QVERIFY(fixture.open());
        fixture.model.setFilter(DependencyFilter::ecosystem(Ecosystem::swiftpm));
        fixture.model.scan();
        QVERIFY(fixture.waitForScan());
        QCOMPARE(fixture.shown(), u"wave"_s);
        fixture.model.scan();
        QVERIFY(fixture.waitForScan());
        QVERIFY(fixture.model.filter() == DependencyFilter::all());
        QCOMPARE(fixture.shown(), u"pad"_s);
    }

    void addedFoldersCanBeTakenBack() {
        HeldScans scans;
        ModelFixture fixture(scans.function());
        for (std::size_t i = 0; i < 6; ++i) {
            scans.release(i, {});
        }
        QVERIFY(fixture.open());
        const auto add = [&](const char* name, auto operation) {
            fixture.chooser.answer = fixture.project.folder(name);
            (fixture.model.*operation)();
            return fixture.waitForScan();
        };
        QVERIFY(add("one", &AppModel::addCheckoutsFolder) && add("two", &AppModel::addCheckoutsFolder) &&
                add("env", &AppModel::choosePythonEnvironment));
        fixture.model.removeCheckouts(0);
        QVERIFY(fixture.waitForScan());
        QCOMPARE(scans.begun().back().extraCheckouts, (std::vector{fixture.project.path() / "two"}));
        fixture.model.removePythonEnvironments();
        QVERIFY(fixture.waitForScan());
        QVERIFY(scans.begun().back().pythonEnvironments.empty());
        // The panels begin in the project, where what they ask for mostly lies.
        QCOMPARE(fixture.chooser.questions.back().start.value_or(""), fixture.project.path() / "Harbor");
    }

    void warningsPutAwayStayAwayUntilAskedForOrAnotherProject() {
        ModelFixture fixture(alwaysFinding(findings({}, {{.sentence = "one"}, {.sentence = "two"}})));
        const auto shown = [&fixture] {
            std::string sentences;
            for (const ScanKit::ScanWarning* const warning : fixture.model.warnings()) {
                sentences += warning->sentence + ' ';
            }
            return sentences;
        };
        QVERIFY(fixture.open());
        fixture.model.putAwayWarning("one");
        QCOMPARE(shown(), "two ");
        fixture.model.scan();
        QVERIFY(fixture.waitForScan());
        QCOMPARE(shown(), "two ");
        fixture.model.showPutAwayWarnings();
        QCOMPARE(shown(), "one two ");
        fixture.model.putAwayWarning("two");
        QVERIFY(fixture.open("Other"));
        QCOMPARE(shown(), "one two ");
    }

    void recentProjectsOutliveTheProgramAndSayWhichAreMissing() {
        QSettings().clear();
        ProjectFolder folders;
        const auto names = [](const AppModel& model) {
            QStringList list;
            for (const RecentProject& project : model.recentProjects()) {
                list.push_back(QString::fromStdString(project.folder.filename().string()) +
                               (project.isMissing ? u"!"_s : QString()));
            }
            return list.join(u' ');
        };
        {
            ModelFixture fixture(alwaysFinding({}), ScanKit::saveReports, true);
            for (const char* name : {"a", "b", "a\xff", "c", "b"}) {
                fixture.model.openFolder(folders.folder(name));
                QVERIFY(fixture.waitForScan());
            }
            fixture.model.openFolder(folders.path() / "never there");
            QVERIFY(fixture.waitForScan());
            QCOMPARE(names(fixture.model), u"b c a\uFFFD a"_s);
        }
        std::filesystem::remove(folders.path() / "c");
        ModelFixture fixture(alwaysFinding({}), ScanKit::saveReports, true);
        fixture.model.lookUpRecentProjects();
        QTRY_COMPARE(names(fixture.model), u"b c! a\uFFFD a"_s);
        // Nothing is open yet: the panel begins beside the project before.
        fixture.model.chooseProjectFolder();
        QCOMPARE(fixture.chooser.questions.back().start.value_or(""), folders.path());
        for (int i = 0; i < 12; ++i) {
            fixture.model.openFolder(folders.folder("more" + std::to_string(i)));
            QVERIFY(fixture.waitForScan());
        }
        QCOMPARE(fixture.model.recentProjects().size(), std::size_t{10});
        fixture.model.clearRecentProjects();
        QVERIFY(ModelFixture(alwaysFinding({}), ScanKit::saveReports, true).model.recentProjects().empty());
    }

private:
    TemporarySettings settings_;
};

QTEST_GUILESS_MAIN(AppModelTest)
#include "AppModelTest.moc"
