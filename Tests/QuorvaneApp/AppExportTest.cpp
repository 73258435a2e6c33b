#include "QuorvaneApp/Model/AppModel.h"
#include "Tests/QuorvaneApp/AppFixture.h"

#include <atomic>

#include <QtTest>

using ScanKit::ReportFormats;

/// Exporting, from the question for a folder to the files and the message.
class AppExportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutAResultNothingIsAsked() {
        ModelFixture fixture(alwaysFinding({}));
        fixture.model.exportReports(ReportFormats::json);
        fixture.model.setShowExport(true);
        QVERIFY(fixture.chooser.questions.empty());
        QVERIFY(!fixture.model.showExport());
        QVERIFY(fixture.model.reportRows().empty());
    }

    void theReportsGetWhatTheFieldsHold() {
        ScanKit::ReportOptions options;
        ReportFormats formats = ReportFormats::none;
        std::filesystem::path folder;
        ModelFixture fixture(alwaysFinding({}),
                             [&](const ScanKit::ScanResult&, const ScanKit::ReportOptions& given,
                                 ReportFormats chosen, const std::filesystem::path& where) {
                                 options = given;
                                 formats = formats | chosen;
                                 folder = where;
                                 return ScanKit::SavedReports{};
                             });
        AppModel& model = fixture.model;
        QVERIFY(fixture.open("Harbor"));
        model.setPreparedFor(u"Ærø"_s);
        model.setPreparedBy(u"Me"_s);
        model.setIncludeDev(true);
        fixture.chooser.answer = fixture.project.path();
        for (const auto& [reportName, printed] :
             {std::pair{u"Harbor"_s, "Harbor"}, {u"Sea/Notes: 2"_s, "Sea/Notes: 2"}, {u""_s, "Harbor"}}) {
            model.setReportName(reportName);
            model.exportReports(ReportFormats::csv | ReportFormats::json);
            QTRY_VERIFY(!model.exporting());
            QCOMPARE(options, (ScanKit::ReportOptions{.projectName = printed,
                                                      .preparedFor = "Ærø",
                                                      .preparedBy = "Me",
                                                      .includeDev = true,
                                                      .appName = "Quorvane"}));
        }
        QVERIFY(formats == (ReportFormats::csv | ReportFormats::json));
        QCOMPARE(folder, fixture.project.path());
    }

    void savesTwiceOverTheSameFilesAndShowsThem() {
        ModelFixture fixture(alwaysFinding(findings({package("pad")})));
        QVERIFY(fixture.open());
        fixture.chooser.answer = fixture.project.folder("Out");
        for (std::size_t round = 1; round <= 2; ++round) {
            fixture.model.exportReports(ReportFormats::csv | ReportFormats::json);
            QTRY_COMPARE(fixture.revealer.revealed.size(), round);
            QStringList names;
            for (const auto& file : fixture.revealer.revealed.back()) {
                QVERIFY(std::filesystem::file_size(file) > 0);
                names.push_back(QString::fromStdString(file.filename().string()));
            }
            QCOMPARE(names.size(), 2);
            QCOMPARE(fixture.model.exportMessage().value_or(QString()),
                     u"Saved %1, %2."_s.arg(names[0], names[1]));
        }
        const auto entries = std::filesystem::directory_iterator(fixture.project.path() / "Out");
        QCOMPARE(std::distance(begin(entries), end(entries)), 2);
    }

    void whatAReportCannotShowIsTold() {
        ModelFixture fixture(
            alwaysFinding(findings({package("pad")})), [](const auto&, const auto&, auto, const auto&) {
                return ScanKit::SavedReports{.files = {"/x/report.pdf"}, .warnings = {"It shows boxes."}};
            });
        QVERIFY(fixture.open());
        fixture.chooser.answer = fixture.project.folder("Out");
        fixture.model.exportReports(ReportFormats::pdf);
        QTRY_COMPARE(fixture.model.exportMessage().value_or(QString()),
                     u"Saved report.pdf. It shows boxes."_s);
    }

    void aFailureIsToldAndNothingIsShown() {
        ModelFixture fixture(alwaysFinding(findings({package("pad")})));
        AppModel& model = fixture.model;
        QVERIFY(fixture.open());
        fixture.project.write("file", "x");
        struct Row {
            const char* name;
            const char* where;
            QString reportName;
        };
        for (const Row& row : {Row{"a folder that is gone", "nowhere", u"Harbor"_s},
                               Row{"a file in the folder's place", "file", u"Harbor"_s},
                               Row{"a name too long for the disk", "", QString(500, u'n')}}) {
            model.setReportName(row.reportName);
            model.setExportMessage({});
            fixture.chooser.answer = fixture.project.path() / row.where;
            model.exportReports(ReportFormats::json);
            QTRY_VERIFY2(model.exportMessage().has_value(), row.name);
            QVERIFY2(model.exportMessage()->startsWith(
                         u"Couldn't save %1 Dependencies.json: "_s.arg(row.reportName)),
                     qPrintable(at(row.name, *model.exportMessage())));
            QVERIFY2(!model.exporting() && model.exportFailed() && model.result() != nullptr, row.name);
        }
        QVERIFY(fixture.revealer.revealed.empty());
    }

    void eachFileIsNamedWhileItIsWrittenAndAFailureNamesTheOneThatFailed() {
        std::vector<ReportFormats> written;
        ModelFixture fixture(alwaysFinding({}), [&](const auto&, const auto&, ReportFormats formats,
                                                    const std::filesystem::path& folder) {
            written.push_back(formats);
            return formats == ReportFormats::csv
                       ? ScanKit::SavedReports{.failure = "Disk full",
                                               .failedFile = folder / "Harbor Dependencies.csv"}
                       : ScanKit::SavedReports{.files = {folder / "file"}};
        });
        AppModel& model = fixture.model;
        QStringList told;
        connect(&model, &AppModel::savingProgressChanged, &model, [&] {
            const SavingProgress& progress = model.savingProgress();
            told.push_back(u"%1/%2 %3"_s.arg(progress.done).arg(progress.total).arg(progress.fileName));
        });
        QVERIFY(fixture.open("Harbor"));
        fixture.chooser.answer = fixture.project.path();
        model.setExportMessage(u"Saved what came before."_s);
        model.exportReports(ReportFormats::notice | ReportFormats::csv | ReportFormats::json);
        // What the last export said is not what this one does.
        QVERIFY(!model.exportMessage());
        QTRY_VERIFY(!model.exporting());
        QCOMPARE(told, (QStringList{u"0/3 NOTICE.txt"_s, u"1/3 Harbor Dependencies.csv"_s}));
        QCOMPARE(written, (std::vector{ReportFormats::notice, ReportFormats::csv}));
        QCOMPARE(model.exportMessage().value_or(QString()),
                 u"Couldn't save Harbor Dependencies.csv: Disk full"_s);
        model.exportReports(ReportFormats::json);
        QTRY_VERIFY(!model.exporting());
        model.revealSavedReports();
        QCOMPARE(fixture.revealer.revealed.back(), (std::vector{fixture.project.path() / "file"}));
        QVERIFY(fixture.open("Other"));
        QVERIFY(model.savedReports().empty());
    }

    void oneExportAtATimeAndNeverOnTheCallersThread() {
        std::atomic<bool> mayEnd = false;
        std::atomic<int> begun = 0;
        std::atomic<bool> ranHere = false;
        const QThread* const here = QThread::currentThread();
        ModelFixture fixture(alwaysFinding({}), [&](const auto&, const auto&, auto, const auto&) {
            ++begun;
            ranHere = ranHere || QThread::currentThread() == here;
            const QDeadlineTimer longestHold(5000);  // a test that fails must still come to its end
            while (!mayEnd && !longestHold.hasExpired()) {
                QThread::msleep(1);
            }
            return ScanKit::SavedReports{};
        });
        QVERIFY(fixture.open());
        fixture.model.exportReports(ReportFormats::json);
        fixture.model.exportReports(ReportFormats::json);
        QCOMPARE(fixture.chooser.openPanels.size(), std::size_t{2});
        for (const auto& choose : fixture.chooser.openPanels) {
            choose(fixture.project.path());
            QVERIFY(fixture.model.exporting());
        }
        fixture.model.exportReports(ReportFormats::json);
        QCOMPARE(fixture.chooser.questions.size(), std::size_t{2});
        QTRY_COMPARE(begun.load(), 1);
        mayEnd = true;
        QTRY_VERIFY(!fixture.model.exporting());
        QCOMPARE(begun.load(), 1);
        QVERIFY(!ranHere);
    }
};

QTEST_GUILESS_MAIN(AppExportTest)
#include "AppExportTest.moc"
