#include "QuorvaneApp/Views/Dialogs/DialogUpdatePresenter.h"
#include "QuorvaneApp/Views/Dialogs/SettingsDialog.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>

namespace {

const AvailableUpdate update{.version = u"1.11"_s,
                             .shownVersion = u"1.11\n<b>bold</b>"_s,
                             .releaseNotes = u"Finds <i>more</i>."_s,
                             .page = QUrl(u"https://example.com/1.11"_s)};

ScanFunction twoPackages() {
    ScanKit::Dependency dev = package("probe");
    dev.isDev = true;
    return alwaysFinding(
        findings({package("pad"), dev}, {{.sentence = "Choose the environment and scan again."}}));
}

template <typename Widget>
Widget& child(const QWidget& parent, const char* name) {
    return *parent.findChild<Widget*>(QLatin1StringView(name));
}

/// What the label of this name says, as long as it takes nothing for markup.
QString textOf(const QWidget& window, const char* name) {
    const auto& label = child<QLabel>(window, name);
    return label.textFormat() == Qt::PlainText ? label.text() : QString();
}

}  // namespace

/// What opens in front of the window: the export sheet, settings, help, alerts and updates; and what screen readers
/// are told of every control.
class DialogsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setApplicationName(u"Quorvane"_s);
        QCoreApplication::setApplicationVersion(u"1.9"_s);
    }

    void theSheetShowsAndChangesWhatTheReportsPrint() {
        WindowFixture fixture(twoPackages());
        QVERIFY(fixture.open("Harbor"));
        fixture.press(Qt::Key_E);
        const QWidget* const sheet = WindowFixture::visibleWindow("exportSheet");
        QVERIFY(sheet != nullptr && fixture.model.showExport());
        const QString count =
            u"%1 packages. Not legal advice: have anything flagged reviewed before you ship."_s;
        QVERIFY(textOf(*sheet).startsWith(u"Export Report|"_s + count.arg(1)));
        child<QCheckBox>(*sheet, "includeDev").click();
        QVERIFY(fixture.model.includeDev());
        QVERIFY(textOf(*sheet).startsWith(u"Export Report|"_s + count.arg(2)));
        QStringList fields;
        for (const char* name : {"reportName", "preparedFor", "preparedBy"}) {
            auto& field = child<QLineEdit>(*sheet, name);
            fields.push_back(field.text() + u'|' + field.placeholderText());
            field.clear();
            QTest::keyClicks(&field, QLatin1StringView(name).toString());
        }
        QCOMPARE(fields,
                 (QStringList{u"Harbor|"_s, u"|Client (optional)"_s, u"|You or your studio (optional)"_s}));
        QCOMPARE(fixture.model.reportOptions(), (ScanKit::ReportOptions{.projectName = "reportName",
                                                                        .preparedFor = "preparedFor",
                                                                        .preparedBy = "preparedBy",
                                                                        .includeDev = true}));
        fixture.model.setPreparedBy(u"elsewhere"_s);
        QCOMPARE(child<QLineEdit>(*sheet, "preparedBy").text(), u"elsewhere"_s);
    }

    void onlyCheckedFormatsAreExportedAndAtLeastOne() {
        WindowFixture fixture(twoPackages());
        QVERIFY(fixture.open());
        fixture.chooser.answer = fixture.project.folder("out");
        const auto openSheet = [&fixture] {
            fixture.press(Qt::Key_E);
            return WindowFixture::visibleWindow("exportSheet");
        };
        for (const char* way : {"first", "after a cancelled one"}) {
            QWidget* const sheet = openSheet();
            QVERIFY2(sheet != nullptr, way);
            QTest::keyClick(sheet, Qt::Key_Escape);
            QVERIFY2(!fixture.model.showExport() && fixture.chooser.questions.empty(), way);
        }
        QWidget* const sheet = openSheet();
        QVERIFY(sheet != nullptr);
        auto& button = child<QPushButton>(*sheet, "exportButton");
        QVERIFY(button.isDefault());
        for (const char* name : {"pdf", "notice", "csv", "json"}) {
            QVERIFY2(button.isEnabled() && child<QCheckBox>(*sheet, name).isChecked(), name);
            child<QCheckBox>(*sheet, name).click();
        }
        QVERIFY2(!button.isEnabled(), "the page is one more, for who asks for it");
        child<QCheckBox>(*sheet, "notice").click();
        child<QCheckBox>(*sheet, "json").click();
        button.click();
        QTRY_COMPARE(fixture.revealer.revealed.size(), std::size_t{1});
        QStringList endings;
        for (const auto& file : fixture.revealer.revealed.front()) {
            endings.push_back(QString::fromStdString(file.extension().string()));
        }
        QCOMPARE(endings.join(u' '), u".txt .json"_s);
        QVERIFY(!fixture.model.showExport());
    }

    void fromOpeningToASavedReportWithTheKeysAlone() {
        WindowFixture fixture(scanFolder);
        QVERIFY(fixture.isActive);
        fixture.chooser.answer = fixture.project.write("Tide/requirements.txt", "coral==1.0\n").parent_path();
        fixture.press(Qt::Key_O);
        QTRY_COMPARE(fixture.shown(), u"coral"_s);
        const auto out = fixture.project.folder("out");
        fixture.chooser.answer = out;
        fixture.press(Qt::Key_E);
        QWidget* const sheet = WindowFixture::visibleWindow("exportSheet");
        QVERIFY(sheet != nullptr && QTest::qWaitForWindowActive(sheet));
        QTest::keyClick(sheet, Qt::Key_Return);
        QTRY_VERIFY(fixture.model.exportMessage().has_value());
        const QStringList saved = QDir(QString::fromStdString(out.string())).entryList(QDir::Files);
        QCOMPARE(saved.size(), 4);
        for (const QString& file : saved) {
            QVERIFY2(fixture.model.exportMessage()->contains(file), qPrintable(file));
        }
        QCOMPARE(fixture.revealer.revealed.size(), std::size_t{1});
    }

    void settingsChangeTheModelAtOnce() {
        WindowFixture fixture(twoPackages());
        QVERIFY(fixture.isActive);
        fixture.press(Qt::Key_Comma);
        QWidget* const settings = WindowFixture::visibleWindow("settings");
        QVERIFY(settings != nullptr);
        auto& field = child<QLineEdit>(*settings, "preparedBy");
        QCOMPARE(field.placeholderText(), u"You or your studio"_s);
        QTest::keyClicks(&field, u"Studio"_s);
        QCOMPARE(fixture.model.preparedBy(), u"Studio"_s);
        child<QCheckBox>(*settings, "includeDev").click();
        QVERIFY(fixture.model.includeDev());
        child<QCheckBox>(*settings, "checksAutomatically").click();
        QVERIFY(!fixture.updater.isAutomatic);
        QTest::keyClick(settings, Qt::Key_Escape);
        QVERIFY(!settings->isVisible());
        FakeUpdaterController withoutFeed;
        const SettingsDialog withoutUpdates(fixture.model, withoutFeed);
        QVERIFY(withoutUpdates.findChild<QCheckBox*>(u"checksAutomatically"_s) == nullptr);
    }

    void closeWindowClosesTheHelpBeforeTheWindow() {
        WindowFixture fixture(twoPackages());
        QVERIFY(fixture.isActive);
        fixture.press(Qt::Key_F1, Qt::NoModifier);
        QWidget* const help = WindowFixture::visibleWindow("helpWindow");
        QVERIFY(help != nullptr);
        // The page is put together from tables: the first and the last meaning of each are there.
        const QString page = child<QTextBrowser>(*help, "helpPage").toPlainText();
        for (const std::string_view label :
             {ScanKit::label(ScanKit::allLicenseCategories.front()),
              ScanKit::label(ScanKit::allLicenseCategories.back()), ScanKit::label(ScanKit::allFlags.front()),
              ScanKit::label(ScanKit::allFlags.back()), ScanKit::label(ScanKit::allLicenseBases.front()),
              ScanKit::label(ScanKit::allLicenseBases.back())}) {
            QVERIFY2(page.contains(u"\n%1. "_s.arg(QString::fromUtf8(label))), label.data());
        }
        QApplication::setActiveWindow(help);
        QTest::keyClick(help, Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!help->isVisible());
        QVERIFY(fixture.window.isVisible());
    }

    void everyControlIsNamedForScreenReaders() {
        WindowFixture fixture(twoPackages());
        QVERIFY(fixture.open());
        fixture.model.selectRow(0);
        fixture.model.setProblem(u"A problem."_s);
        fixture.model.setExportMessage(u"Saved."_s);
        fixture.commands.action(Command::settings)->trigger();
        fixture.press(Qt::Key_F1, Qt::NoModifier);
        fixture.model.setShowExport(true);
        const UpdateWindow updates(update);
        int controls = 0;
        for (QWidget* const widget : QApplication::allWidgets()) {
            if ((widget->isVisible() || widget->window() == &updates) &&
                widget->focusPolicy() != Qt::NoFocus) {
                ++controls;
                QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(widget);
                const QString where = u"%1 “%2” in “%3” has no name"_s.arg(
                    QLatin1StringView(widget->metaObject()->className()), widget->objectName(),
                    widget->parentWidget()->objectName());
                QVERIFY2(told != nullptr && !told->text(QAccessible::Name).isEmpty(), qPrintable(where));
            }
        }
        QVERIFY2(controls > 25, "the test saw too few controls");
    }

    void anAlertStandsInFrontWithOneButton() {
        WindowFixture fixture(alwaysFinding({}));
        DialogUpdatePresenter presenter;
        presenter.setWindow(&fixture.window);
        const UpdateAlert alert = UpdateAlert::failed(u"Quorvane"_s);
        presenter.show(alert);
        QWidget* const box = WindowFixture::visibleWindow("updateAlert");
        QVERIFY(box != nullptr && QTest::qWaitForWindowActive(box));
        QCOMPARE(QApplication::activeModalWidget(), box);
        QCOMPARE(box->findChildren<QPushButton*>().size(), 1);
        QCOMPARE(child<QPushButton>(*box, "ok").text(), u"OK"_s);
        QCOMPARE(textOf(*box, "headingTitle"), alert.title);
        QCOMPARE(textOf(*box, "alertText"), alert.text);
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!box->isVisible());
    }

    void anUpdateIsOfferedAsPlainText() {
        const UpdateWindow window(update);
        QCOMPARE(textOf(window, "headingTitle"), u"Quorvane 1.11 <b>bold</b> is available"_s);
        QCOMPARE(textOf(window, "downloadPage"), u"https://example.com/1.11"_s);
        const auto& notes = child<QPlainTextEdit>(window, "releaseNotes");
        QCOMPARE(notes.toPlainText(), u"Finds <i>more</i>."_s);
        QVERIFY(notes.isReadOnly());
        AvailableUpdate withoutPage = update;
        withoutPage.page.reset();
        const UpdateWindow plain(withoutPage);
        QVERIFY(!child<QPushButton>(plain, "openPage").isEnabled());
        QVERIFY(child<QPushButton>(plain, "remindLater").isDefault());
    }

    void everyWayOutOfAnOfferIsOneChoice() {
        struct Row {
            const char* name;
            std::function<void(QWidget&)> leave;
            UpdateChoice choice;
        };
        const auto click = [](const char* button) {
            return [button](QWidget& window) { child<QPushButton>(window, button).click(); };
        };
        const auto press = [](Qt::Key key) {
            return [key](QWidget& window) { QTest::keyClick(&window, key); };
        };
        DialogUpdatePresenter presenter;
        std::vector<UpdateChoice> choices;
        for (const Row& row :
             {Row{"skip", click("skipVersion"), UpdateChoice::skipVersion},
              Row{"later", click("remindLater"), UpdateChoice::remindLater},
              Row{"page", click("openPage"), UpdateChoice::openPage},
              Row{"Return", press(Qt::Key_Return), UpdateChoice::openPage},
              Row{"Escape", press(Qt::Key_Escape), UpdateChoice::remindLater},
              Row{"closing", [](QWidget& window) { window.close(); }, UpdateChoice::remindLater},
              Row{"a newer offer", [&](QWidget&) { presenter.offer(update, [](auto) {}); },
                  UpdateChoice::remindLater}}) {
            choices.clear();
            presenter.offer(update, [&choices](UpdateChoice chosen) { choices.push_back(chosen); });
            const QPointer<QWidget> window = WindowFixture::visibleWindow("updateWindow");
            QVERIFY2(!window.isNull(), row.name);
            row.leave(*window);
            QVERIFY2(window.isNull() || !window->isVisible(), row.name);
            QVERIFY2(choices == std::vector{row.choice}, row.name);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QVERIFY(WindowFixture::visibleWindow("updateWindow") != nullptr);
    }
};

QTEST_MAIN(DialogsTest)
#include "DialogsTest.moc"
