#include "QuorvaneApp/Views/Dialogs/ExportSheet.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using ScanKit::ReportFormats;

/// The export sheet, the settings, the help, and what screen readers are told of every control.
class DialogsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSheetOffersEverythingAndCountsWhatReportsHold();
    void theSheetsFieldsAndTheModelAreOne();
    void cancellingTheSheetWritesNothing();
    void onlyCheckedFormatsAreExported();
    void fromOpeningToASavedReportWithTheKeysAlone();
    void settingsChangeTheModelAtOnce();
    void closeWindowClosesTheHelpBeforeTheWindow();
    void everyControlIsNamedForScreenReaders();

private:
    static ScanFunction twoPackages() {
        ScanKit::Dependency dev = package("probe");
        dev.isDev = true;
        return alwaysFinding(findings({package("pad"), dev}, {"Choose the environment and scan again."}));
    }
};

void DialogsTest::theSheetOffersEverythingAndCountsWhatReportsHold() {
    WindowFixture fixture(twoPackages());
    QVERIFY(fixture.open());
    fixture.press(Qt::Key_E);
    QWidget* const sheet = WindowFixture::visibleWindow("exportSheet");
    QVERIFY(sheet != nullptr);
    QVERIFY(fixture.model.showExport());
    const auto says = [sheet](const QString& words) {
        for (const QLabel* const label : sheet->findChildren<QLabel*>()) {
            if (label->text() == words) {
                return true;
            }
        }
        return false;
    };
    QVERIFY(says(QStringLiteral("Export Report")));
    QVERIFY(says(
        QStringLiteral("1 packages. Not legal advice: have anything flagged reviewed before you ship.")));
    sheet->findChild<QCheckBox*>(QStringLiteral("includeDev"))->click();
    QVERIFY(fixture.model.includeDev());
    QVERIFY(says(
        QStringLiteral("2 packages. Not legal advice: have anything flagged reviewed before you ship.")));
    for (const char* name : {"pdf", "notice", "csv", "json"}) {
        QVERIFY(sheet->findChild<QCheckBox*>(QLatin1StringView(name))->isChecked());
    }
    auto* const button = sheet->findChild<QPushButton*>(QStringLiteral("exportButton"));
    QVERIFY(button->isDefault());
    for (const char* name : {"pdf", "notice", "csv", "json"}) {
        QVERIFY(button->isEnabled());
        sheet->findChild<QCheckBox*>(QLatin1StringView(name))->click();
    }
    QVERIFY(!button->isEnabled());
}

void DialogsTest::theSheetsFieldsAndTheModelAreOne() {
    struct Row {
        const char* name;
        const QString& (AppModel::*get)() const;
        QString placeholder;
    };
    WindowFixture fixture(twoPackages());
    QVERIFY(fixture.open());
    ExportSheet sheet(fixture.model);
    const std::vector<Row> rows{
        {"reportName", &AppModel::reportName, QString()},
        {"preparedFor", &AppModel::preparedFor, QStringLiteral("Client (optional)")},
        {"preparedBy", &AppModel::preparedBy, QStringLiteral("You or your studio (optional)")},
    };
    for (const Row& row : rows) {
        auto* const field = sheet.findChild<QLineEdit*>(QLatin1StringView(row.name));
        QCOMPARE(field->text(), (fixture.model.*row.get)());
        QCOMPARE(field->placeholderText(), row.placeholder);
        field->clear();
        QTest::keyClicks(field, QStringLiteral("typed"));
        QCOMPARE((fixture.model.*row.get)(), QStringLiteral("typed"));
    }
    fixture.model.setPreparedBy(QStringLiteral("elsewhere"));
    QCOMPARE(sheet.findChild<QLineEdit*>(QStringLiteral("preparedBy"))->text(), QStringLiteral("elsewhere"));
}

void DialogsTest::cancellingTheSheetWritesNothing() {
    WindowFixture fixture(twoPackages());
    QVERIFY(fixture.open());
    for (int round = 0; round < 2; ++round) {
        fixture.press(Qt::Key_E);
        QWidget* const sheet = WindowFixture::visibleWindow("exportSheet");
        QVERIFY(sheet != nullptr);
        QTest::keyClick(sheet, Qt::Key_Escape);
        QVERIFY(!fixture.model.showExport());
        QVERIFY(fixture.chooser.questions.empty());
    }
}

void DialogsTest::onlyCheckedFormatsAreExported() {
    ReportFormats formats = ReportFormats::none;
    WindowFixture fixture(twoPackages(), [&](const auto&, const auto&, ReportFormats chosen, const auto&) {
        formats = chosen;
        return ScanKit::SavedReports{};
    });
    QVERIFY(fixture.open());
    fixture.chooser.answer = fixture.project.path();
    fixture.press(Qt::Key_E);
    QWidget* const sheet = WindowFixture::visibleWindow("exportSheet");
    QVERIFY(sheet != nullptr);
    sheet->findChild<QCheckBox*>(QStringLiteral("pdf"))->click();
    sheet->findChild<QCheckBox*>(QStringLiteral("csv"))->click();
    sheet->findChild<QPushButton*>(QStringLiteral("exportButton"))->click();
    QTRY_VERIFY(fixture.model.exportMessage().has_value());
    QVERIFY(formats == (ReportFormats::notice | ReportFormats::json));
    QVERIFY(!fixture.model.showExport());
}

void DialogsTest::fromOpeningToASavedReportWithTheKeysAlone() {
    WindowFixture fixture(scanFolder);
    QVERIFY(fixture.isActive);
    const auto project = fixture.project.write("Tide/requirements.txt", "coral==1.0\n").parent_path();
    const auto out = fixture.project.folder("out");
    fixture.chooser.answer = project;
    fixture.press(Qt::Key_O);
    QTRY_VERIFY(fixture.model.result() != nullptr);
    QCOMPARE(fixture.model.rows().size(), std::size_t{1});
    fixture.chooser.answer = out;
    fixture.press(Qt::Key_E);
    QWidget* const sheet = WindowFixture::visibleWindow("exportSheet");
    QVERIFY(sheet != nullptr);
    QVERIFY(QTest::qWaitForWindowActive(sheet));
    QTest::keyClick(sheet, Qt::Key_Return);
    QTRY_VERIFY(fixture.model.exportMessage().has_value());
    QVERIFY2(fixture.model.exportMessage()->startsWith(QStringLiteral("Saved ")),
             qPrintable(*fixture.model.exportMessage()));
    const QStringList saved = QDir(QString::fromStdString(out.string())).entryList(QDir::Files);
    QCOMPARE(saved.size(), 4);
    for (const QString& file : saved) {
        QVERIFY2(fixture.model.exportMessage()->contains(file), qPrintable(file));
    }
    QCOMPARE(fixture.revealer.revealed.size(), std::size_t{1});
}

void DialogsTest::settingsChangeTheModelAtOnce() {
    WindowFixture fixture(twoPackages());
    QVERIFY(fixture.isActive);
    fixture.press(Qt::Key_Comma);
    QWidget* const settings = WindowFixture::visibleWindow("settings");
    QVERIFY(settings != nullptr);
    auto* const field = settings->findChild<QLineEdit*>(QStringLiteral("preparedBy"));
    QCOMPARE(field->placeholderText(), QStringLiteral("You or your studio"));
    QTest::keyClicks(field, QStringLiteral("Studio"));
    QCOMPARE(fixture.model.preparedBy(), QStringLiteral("Studio"));
    settings->findChild<QCheckBox*>(QStringLiteral("includeDev"))->click();
    QVERIFY(fixture.model.includeDev());
    settings->findChild<QCheckBox*>(QStringLiteral("checksAutomatically"))->click();
    QVERIFY(!fixture.updater.isAutomatic);
    QTest::keyClick(settings, Qt::Key_Escape);
    QVERIFY(!settings->isVisible());
}

void DialogsTest::closeWindowClosesTheHelpBeforeTheWindow() {
    WindowFixture fixture(twoPackages());
    QVERIFY(fixture.isActive);
    fixture.press(Qt::Key_F1, Qt::NoModifier);
    QWidget* const help = WindowFixture::visibleWindow("helpWindow");
    QVERIFY(help != nullptr);
    QApplication::setActiveWindow(help);
    QTest::keyClick(help, Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!help->isVisible());
    QVERIFY(fixture.window.isVisible());
}

void DialogsTest::everyControlIsNamedForScreenReaders() {
    WindowFixture fixture(twoPackages());
    QVERIFY(fixture.open());
    fixture.model.selectRow(0);
    fixture.model.setProblem(QStringLiteral("A problem."));
    fixture.model.setExportMessage(QStringLiteral("Saved."));
    fixture.commands.action(Command::settings)->trigger();
    fixture.press(Qt::Key_F1, Qt::NoModifier);
    fixture.model.setShowExport(true);
    int controls = 0;
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        ++controls;
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(told != nullptr);
        const QString name = told->text(QAccessible::Name);
        QVERIFY2(!name.isEmpty(),
                 qPrintable(QStringLiteral("%1 “%2” in “%3” has no name")
                                .arg(QLatin1StringView(widget->metaObject()->className()),
                                     widget->objectName(), widget->parentWidget()->objectName())));
    }
    QVERIFY2(controls > 25, "the test saw too few controls");
}

QTEST_MAIN(DialogsTest)
#include "DialogsTest.moc"
