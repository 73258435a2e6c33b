#include "QuorvaneApp/Views/Dialogs/DialogUpdatePresenter.h"
#include "QuorvaneApp/Views/Dialogs/SettingsDialog.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

const AvailableUpdate update{.version = QStringLiteral("1.11"),
                             .shownVersion = QStringLiteral("1.11\n<b>bold</b>"),
                             .releaseNotes = QStringLiteral("Finds <i>more</i>."),
                             .page = QUrl(QStringLiteral("https://example.com/1.11"))};

/// What the label of this name says, as long as it takes nothing for markup.
QString textOf(const QWidget& window, const char* name) {
    const auto* const label = window.findChild<QLabel*>(QLatin1StringView(name));
    return label->textFormat() == Qt::PlainText ? label->text() : QString();
}

}  // namespace
Q_DECLARE_METATYPE(UpdateChoice)

/// What is shown of updates, and how it is answered.
class UpdateDialogsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void anAlertStandsInFrontWithOneButton();
    void theCommandReachesTheUpdater();
    void anUpdateIsOfferedAsPlainText();
    void everyWayOutIsOneChoice_data();
    void everyWayOutIsOneChoice();
    void withoutADownloadPageNoneIsOpened();
    void aNewerOfferTakesThePlaceOfTheOlder();
    void theSettingIsOfferedOnlyWithAFeed();
};

void UpdateDialogsTest::initTestCase() {
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.9"));
}

void UpdateDialogsTest::anAlertStandsInFrontWithOneButton() {
    WindowFixture fixture(alwaysFinding({}));
    DialogUpdatePresenter presenter;
    presenter.setWindow(&fixture.window);
    const UpdateAlert alert = UpdateAlert::failed(QStringLiteral("Quorvane"));
    presenter.show(alert);
    QWidget* const box = WindowFixture::visibleWindow("updateAlert");
    QVERIFY(box != nullptr);
    QVERIFY(QTest::qWaitForWindowActive(box));
    QCOMPARE(QApplication::activeModalWidget(), box);
    const QList<QPushButton*> buttons = box->findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 1);
    QCOMPARE(buttons.front()->text(), QStringLiteral("OK"));
    QCOMPARE(textOf(*box, "headingTitle"), alert.title);
    QCOMPARE(textOf(*box, "alertText"), alert.text);
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(!box->isVisible());
}

void UpdateDialogsTest::theCommandReachesTheUpdater() {
    ProjectFolder project;
    FakeFolderChooser chooser;
    RecordingFileRevealer revealer;
    AppModel model(false, {.folderChooser = chooser, .fileRevealer = revealer});
    int checks = 0;
    const AppCommands commands(model, [&checks] { ++checks; });
    QAction* const command = commands.action(Command::checkForUpdates);
    QVERIFY(command->isEnabled());
    QCOMPARE(command->text(), QStringLiteral("Check for Updates…"));
    command->trigger();
    QCOMPARE(checks, 1);
}

void UpdateDialogsTest::anUpdateIsOfferedAsPlainText() {
    const UpdateWindow window(update);
    QCOMPARE(textOf(window, "headingTitle"), QStringLiteral("Quorvane 1.11 <b>bold</b> is available"));
    QCOMPARE(textOf(window, "downloadPage"), QStringLiteral("https://example.com/1.11"));
    auto* const notes = window.findChild<QPlainTextEdit*>(QStringLiteral("releaseNotes"));
    QCOMPARE(notes->toPlainText(), QStringLiteral("Finds <i>more</i>."));
    QVERIFY(notes->isReadOnly());
}

void UpdateDialogsTest::everyWayOutIsOneChoice_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<UpdateChoice>("choice");
    constexpr auto none = Qt::Key_unknown;
    QTest::newRow("skip") << QStringLiteral("skipVersion") << none << UpdateChoice::skipVersion;
    QTest::newRow("later") << QStringLiteral("remindLater") << none << UpdateChoice::remindLater;
    QTest::newRow("page") << QStringLiteral("openPage") << none << UpdateChoice::openPage;
    QTest::newRow("Return") << QString() << Qt::Key_Return << UpdateChoice::openPage;
    QTest::newRow("Escape") << QString() << Qt::Key_Escape << UpdateChoice::remindLater;
    QTest::newRow("closing") << QString() << none << UpdateChoice::remindLater;
}

void UpdateDialogsTest::everyWayOutIsOneChoice() {
    QFETCH(QString, button);
    QFETCH(Qt::Key, key);
    QFETCH(UpdateChoice, choice);
    DialogUpdatePresenter presenter;
    std::vector<UpdateChoice> choices;
    presenter.offer(update, [&choices](UpdateChoice chosen) { choices.push_back(chosen); });
    QWidget* const window = WindowFixture::visibleWindow("updateWindow");
    QVERIFY(window != nullptr);
    if (!button.isEmpty()) {
        window->findChild<QPushButton*>(button)->click();
    } else if (key != Qt::Key_unknown) {
        QTest::keyClick(window, key);
    } else {
        window->close();
    }
    QVERIFY(!window->isVisible());
    QVERIFY(choices == std::vector{choice});
}

void UpdateDialogsTest::withoutADownloadPageNoneIsOpened() {
    AvailableUpdate withoutPage = update;
    withoutPage.page.reset();
    const UpdateWindow window(withoutPage);
    QVERIFY(!window.findChild<QPushButton*>(QStringLiteral("openPage"))->isEnabled());
    QVERIFY(window.findChild<QPushButton*>(QStringLiteral("remindLater"))->isDefault());
}

void UpdateDialogsTest::aNewerOfferTakesThePlaceOfTheOlder() {
    DialogUpdatePresenter presenter;
    std::vector<int> answered;
    presenter.offer(update, [&answered](UpdateChoice) { answered.push_back(1); });
    presenter.offer(update, [&answered](UpdateChoice) { answered.push_back(2); });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QPointer<QWidget> window = WindowFixture::visibleWindow("updateWindow");
    QVERIFY(!window.isNull());
    window->close();
    QVERIFY(answered == (std::vector{1, 2}));
}

void UpdateDialogsTest::theSettingIsOfferedOnlyWithAFeed() {
    WindowFixture fixture(alwaysFinding({}));
    FakeUpdaterController withoutFeed;
    const auto hasToggle = [&](UpdaterController& updater) {
        return SettingsDialog(fixture.model, updater)
                   .findChild<QCheckBox*>(QStringLiteral("checksAutomatically")) != nullptr;
    };
    QVERIFY(hasToggle(fixture.updater));
    QVERIFY(!hasToggle(withoutFeed));
}

QTEST_MAIN(UpdateDialogsTest)
#include "UpdateDialogsTest.moc"
