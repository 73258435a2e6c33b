#include "QuorvaneApp/Model/AppModel.h"

#include "Tests/QuorvaneApp/AppFixture.h"

#include <atomic>

#include <QFile>
#include <QtTest>

using ScanKit::ReportFormats;

/// Exporting, from the question for a folder to the files and the message.
class AppExportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutAResultNothingIsAsked();
    void asksWhereAndCancellingDoesNothing();
    void theReportsGetWhatTheFieldsHold_data();
    void theReportsGetWhatTheFieldsHold();
    void savesTwiceOverTheSameFilesAndShowsThem();
    void aFailureIsToldAndNothingIsShown_data();
    void aFailureIsToldAndNothingIsShown();
    void oneExportAtATimeAndNeverOnTheCallersThread();
    void devPackagesCountOnlyWhenIncluded();

private:
    void open(AppModel& model) {
        model.openFolder(project_->folder("Harbor"));
        QTRY_VERIFY(!model.scanning());
    }
    AppModel::Surroundings surroundings(AppModel::SaveFunction save = ScanKit::saveReports) {
        ScanKit::Dependency dev = package("probe");
        dev.isDev = true;
        return {.folderChooser = *chooser_,
                .fileRevealer = *revealer_,
                .scan = alwaysFinding(findings({package("pad"), dev})),
                .save = std::move(save)};
    }

    std::unique_ptr<ProjectFolder> project_;
    std::unique_ptr<FakeFolderChooser> chooser_;
    std::unique_ptr<RecordingFileRevealer> revealer_;
};

void AppExportTest::init() {
    project_ = std::make_unique<ProjectFolder>();
    chooser_ = std::make_unique<FakeFolderChooser>();
    revealer_ = std::make_unique<RecordingFileRevealer>();
}

void AppExportTest::withoutAResultNothingIsAsked() {
    AppModel model(false, surroundings());
    model.exportReports(ReportFormats::json);
    model.setShowExport(true);
    QVERIFY(chooser_->questions.empty());
    QVERIFY(!model.showExport());
}

void AppExportTest::asksWhereAndCancellingDoesNothing() {
    AppModel model(false, surroundings());
    open(model);
    model.exportReports(ReportFormats::json);
    const FolderQuestion& asked = chooser_->questions.back();
    QCOMPARE(asked.message, QStringLiteral("Choose where to save the report files."));
    QCOMPARE(asked.prompt, QStringLiteral("Export Here"));
    QVERIFY(asked.createsFolders);
    QVERIFY(!model.exporting());
    QVERIFY(!model.exportMessage());
}

void AppExportTest::theReportsGetWhatTheFieldsHold_data() {
    QTest::addColumn<QString>("reportName");
    QTest::addColumn<QString>("projectName");
    QTest::newRow("as opened") << QStringLiteral("Harbor") << QStringLiteral("Harbor");
    QTest::newRow("renamed") << QStringLiteral("Sea/Notes: 2") << QStringLiteral("Sea/Notes: 2");
    QTest::newRow("emptied") << QString() << QStringLiteral("Harbor");
}

void AppExportTest::theReportsGetWhatTheFieldsHold() {
    QFETCH(QString, reportName);
    QFETCH(QString, projectName);
    ScanKit::ReportOptions options;
    ReportFormats formats = ReportFormats::none;
    std::filesystem::path folder;
    AppModel model(false, surroundings([&](const ScanKit::ScanResult&, const ScanKit::ReportOptions& given,
                                           ReportFormats chosen, const std::filesystem::path& where) {
                       options = given;
                       formats = chosen;
                       folder = where;
                       return ScanKit::SavedReports{};
                   }));
    open(model);
    model.setReportName(reportName);
    model.setPreparedFor(QStringLiteral("Ærø"));
    model.setPreparedBy(QStringLiteral("Me"));
    model.setIncludeDev(true);
    chooser_->answer = project_->path();
    model.exportReports(ReportFormats::csv | ReportFormats::json);
    QTRY_VERIFY(!model.exporting());
    QCOMPARE(options, (ScanKit::ReportOptions{.projectName = projectName.toStdString(),
                                              .preparedFor = "Ærø",
                                              .preparedBy = "Me",
                                              .includeDev = true,
                                              .appName = "Quorvane"}));
    QVERIFY(formats == (ReportFormats::csv | ReportFormats::json));
    QCOMPARE(folder, project_->path());
}

void AppExportTest::savesTwiceOverTheSameFilesAndShowsThem() {
    AppModel model(false, surroundings());
    open(model);
    chooser_->answer = project_->folder("Out");
    for (std::size_t round = 1; round <= 2; ++round) {
        model.exportReports(ReportFormats::csv | ReportFormats::json);
        QTRY_COMPARE(revealer_->revealed.size(), round);
        QVERIFY(model.exportMessage().has_value());
        const auto& files = revealer_->revealed.back();
        QCOMPARE(files.size(), std::size_t{2});
        QCOMPARE(*model.exportMessage(), QStringLiteral("Saved %1, %2.")
                                             .arg(QString::fromStdString(files[0].filename().string()),
                                                  QString::fromStdString(files[1].filename().string())));
        for (const auto& file : files) {
            QVERIFY(std::filesystem::file_size(file) > 0);
        }
    }
    const auto entries = std::filesystem::directory_iterator(project_->path() / "Out");
    QCOMPARE(std::distance(begin(entries), end(entries)), 2);
}

void AppExportTest::aFailureIsToldAndNothingIsShown_data() {
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("reportName");
    QTest::newRow("a folder that is gone") << QStringLiteral("nowhere") << QStringLiteral("Harbor");
    QTest::newRow("a file in the folder's place") << QStringLiteral("file") << QStringLiteral("Harbor");
    QTest::newRow("a name too long for the disk") << QString() << QString(500, QLatin1Char('n'));
}

void AppExportTest::aFailureIsToldAndNothingIsShown() {
    QFETCH(QString, where);
    QFETCH(QString, reportName);
    AppModel model(false, surroundings());
    open(model);
    project_->write("file", "x");
    model.setReportName(reportName);
    chooser_->answer = project_->path() / where.toStdString();
    model.exportReports(ReportFormats::json);
    QTRY_VERIFY(model.exportMessage().has_value());
    const QString message = *model.exportMessage();
    QVERIFY2(message.startsWith(QStringLiteral("Couldn't save: ")) && message.size() > 16,
             qPrintable(message));
    QVERIFY(revealer_->revealed.empty());
    QVERIFY(!model.exporting());
    QVERIFY(model.result() != nullptr);
}

void AppExportTest::oneExportAtATimeAndNeverOnTheCallersThread() {
    std::atomic<bool> mayEnd = false;
    std::atomic<int> begun = 0;
    std::atomic<bool> ranHere = false;
    const QThread* const here = QThread::currentThread();
    AppModel model(false, surroundings([&](const auto&, const auto&, auto, const auto&) {
                       ++begun;
                       ranHere = ranHere || QThread::currentThread() == here;
                       while (!mayEnd) {
                           QThread::msleep(1);
                       }
                       return ScanKit::SavedReports{};
                   }));
    open(model);
    chooser_->answer = project_->path();
    model.exportReports(ReportFormats::json);
    QVERIFY(model.exporting());
    model.exportReports(ReportFormats::json);
    QTRY_COMPARE(begun.load(), 1);
    mayEnd = true;
    QTRY_VERIFY(!model.exporting());
    QCOMPARE(begun.load(), 1);
    QVERIFY(!ranHere);
}

void AppExportTest::devPackagesCountOnlyWhenIncluded() {
    AppModel model(false, surroundings());
    QVERIFY(model.reportRows().empty());
    open(model);
    QCOMPARE(model.reportRows().size(), std::size_t{1});
    model.setIncludeDev(true);
    QCOMPARE(model.reportRows().size(), std::size_t{2});
}

QTEST_GUILESS_MAIN(AppExportTest)
#include "AppExportTest.moc"
