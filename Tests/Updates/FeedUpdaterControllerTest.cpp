#include "QuorvaneApp/Updates/FeedUpdaterController.h"

#include "QuorvaneApp/Updates/UpdateMemory.h"
#include "QuorvaneApp/Updates/Updater.h"
#include "Tests/Updates/LoopbackServer.h"
#include "Tests/Updates/UpdateFixture.h"

#include <memory>

#include <QNetworkProxy>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using Response = LoopbackServer::Response;
using Wire = Response::Wire;

namespace {

/// Three versions for two systems: the newest for Linux is 1.11, 2.0 is for macOS alone.
const QByteArray publishedFeed = feedOf(
    itemOf("1.10") +
    itemOf("1.11",
           "<link>https://example.com/1.11</link><description><![CDATA[<p>Finds more.</p>]]></description>") +
    "<item><s:version>2.0</s:version><enclosure/></item>");

/// A feed of exactly this many bytes that offers 1.11.
QByteArray feedOfSize(qsizetype size) {
    return publishedFeed + QByteArray(size - publishedFeed.size(), ' ');
}

/// A controller with everything around it, and a clock that the test sets.
struct Fixture {
    explicit Fixture(const QString& runningVersion = u"1.9"_s) : version(runningVersion) {
        server.answer("/feed.xml", {.body = publishedFeed});
        launch();
    }
    /// The program starts, or starts anew.
    void launch() {
        controller = std::make_unique<FeedUpdaterController>(FeedUpdaterController::Setup{
            .feed = server.url("/feed.xml"),
            .target = {.version = version, .system = u"linux"_s, .systemVersion = u"6.1"_s},
            .presenter = presenter,
            .openPage = [this](const QUrl& page) { pages.push_back(page); },
            .now = [this] { return now; },
            .timeLimit = std::chrono::milliseconds(500)});
    }
    /// The program starts anew, some hours later; true once a check that this begins has ended.
    bool startAfter(int hours) {
        now = now.addSecs(hours * 3600);
        launch();
        controller->start();
        QTest::qWait(10);
        return QTest::qWaitFor([this] { return !controller->isChecking(); });
    }
    /// Everything that was shown so far: the versions offered, then the titles of alerts.
    QString shown() const {
        QStringList texts;
        for (const AvailableUpdate& update : presenter.offers) {
            texts.push_back(update.version);
        }
        for (const UpdateAlert& alert : presenter.alerts) {
            texts.push_back(alert.title);
        }
        return texts.join(u'|');
    }

    QString version;
    LoopbackServer server;
    RecordingPresenter presenter;
    QList<QUrl> pages;
    QDateTime now{QDate(2026, 3, 1), QTime(12, 0), Qt::UTC};
    std::unique_ptr<FeedUpdaterController> controller;
};

}  // namespace

/// The project's own check, against a real server.
class FeedUpdaterControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setOrganizationName(u"Quorvane Tests"_s);
        QCoreApplication::setApplicationName(u"Quorvane"_s);
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings_.path());
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    }

    void init() { QSettings().clear(); }

    void offersTheNewestVersionForThisSystemAndOpensItsPage() {
        Fixture fixture;
        const QUrl page(u"https://example.com/1.11"_s);
        fixture.controller->checkForUpdates();
        QTRY_COMPARE(fixture.shown(), u"1.11"_s);
        QCOMPARE(fixture.presenter.offers.front(), (AvailableUpdate{.version = u"1.11"_s,
                                                                    .shownVersion = u"1.11"_s,
                                                                    .releaseNotes = u"Finds more."_s,
                                                                    .page = page}));
        QCOMPARE(fixture.server.methods(), QByteArray("GET"));
        QVERIFY(fixture.pages.empty());
        fixture.presenter.choose(UpdateChoice::openPage);
        QCOMPARE(fixture.pages, QList<QUrl>{page});
        QVERIFY(!UpdateMemory::skippedVersion().has_value());
    }

    void aCheckOnWishAlwaysAnswers() {
        constexpr qsizetype limit = FeedClient::largestBody;
        const QString upToDate = u"You’re up to date"_s;
        const QString failed = u"Couldn’t check for updates"_s;
        struct Row {
            const char* name;
            QString version;
            Response response;
            QString shown;
        };
        for (const Row& row : {
                 Row{"newest program", u"1.11"_s, {.body = publishedFeed}, upToDate},
                 Row{"newer program", u"1.12"_s, {.body = publishedFeed}, upToDate},
                 Row{"malformed", u"1.9"_s, {.body = publishedFeed.left(200)}, failed},
                 Row{"empty", u"1.9"_s, {.body = {}}, failed},
                 Row{"largest", u"1.9"_s, {.body = feedOfSize(limit)}, u"1.11"_s},
                 Row{"too large", u"1.9"_s, {.body = feedOfSize(limit + 1)}, failed},
                 Row{"slow body", u"1.9"_s, {.body = publishedFeed, .wire = Wire::dribbling}, failed},
                 Row{"cut after the feed", u"1.9"_s, {.body = feedOfSize(3000), .wire = Wire::cut}, failed},
                 Row{"server error with a feed", u"1.9"_s, {.status = 500, .body = publishedFeed}, failed},
                 Row{"not published", u"1.9"_s, {.status = 404, .body = "gone"}, upToDate},
             }) {
            Fixture fixture(row.version);
            fixture.server.answer("/feed.xml", row.response);
            fixture.controller->checkForUpdates();
            QTRY_VERIFY2(!fixture.shown().isEmpty(), row.name);
            QCOMPARE(at(row.name, fixture.shown()), at(row.name, row.shown));
        }
    }

    void theCommandLeadsFromProbeToOffer() {
        Fixture fixture;
        Updater updater(*fixture.controller, fixture.presenter);
        updater.checkForUpdates();
        QTRY_COMPARE(fixture.shown(), u"1.11"_s);
        QCOMPARE(fixture.server.methods(), QByteArray("HEAD GET"));
    }

    void aSkippedVersionIsOfferedOnlyOnWish() {
        Fixture fixture;
        QVERIFY(fixture.startAfter(0));
        QCOMPARE(fixture.shown(), u"1.11"_s);
        fixture.presenter.choose(UpdateChoice::skipVersion);
        QVERIFY(fixture.startAfter(24));
        QCOMPARE(fixture.server.methods(), QByteArray("GET GET"));
        QCOMPARE(fixture.shown(), u"1.11"_s);
        fixture.controller->checkForUpdates();
        QTRY_COMPARE(fixture.shown(), u"1.11|1.11"_s);
        fixture.server.answer("/feed.xml", {.body = QByteArray(publishedFeed).replace("1.11<", "1.12<")});
        QVERIFY(fixture.startAfter(24));
        QCOMPARE(fixture.shown(), u"1.11|1.11|1.12"_s);
        QVERIFY(fixture.pages.empty());
    }

    void automaticChecksRunOnceInADayAndAreQuietWithoutNews() {
        Fixture fixture(u"1.11"_s);
        const auto checksAfter = [&fixture](int hours) {
            return fixture.startAfter(hours) ? fixture.server.requests.size() : 0;
        };
        QCOMPARE(checksAfter(0), std::size_t{1});
        QCOMPARE(checksAfter(0), std::size_t{1});
        QCOMPARE(checksAfter(23), std::size_t{1});
        fixture.server.answer("/feed.xml", {.status = 500, .body = {}});
        QCOMPARE(checksAfter(1), std::size_t{2});
        QCOMPARE(checksAfter(23), std::size_t{2});
        QCOMPARE(fixture.shown(), QString());
        fixture.controller->checkForUpdates();
        QTRY_COMPARE(fixture.shown(), u"Couldn’t check for updates"_s);
        // A check on wish counts, too; one that lies in the future comes from a clock that was set back.
        QCOMPARE(checksAfter(23), std::size_t{3});
        QCOMPARE(checksAfter(-1000), std::size_t{4});
        QCOMPARE(checksAfter(1), std::size_t{4});
    }

    void automaticChecksCanBeTurnedOff() {
        Fixture fixture;
        QVERIFY(fixture.controller->automaticallyChecksForUpdates());
        fixture.controller->setAutomaticallyChecksForUpdates(false);
        QVERIFY(fixture.startAfter(48));
        QVERIFY(fixture.server.requests.empty());
        QVERIFY(!Fixture().controller->automaticallyChecksForUpdates());
        fixture.controller->checkForUpdates();
        QTRY_COMPARE(fixture.shown(), u"1.11"_s);
        fixture.now = fixture.now.addDays(2);
        fixture.controller->setAutomaticallyChecksForUpdates(true);
        QTRY_COMPARE(fixture.shown(), u"1.11|1.11"_s);
    }

    void withoutAFeedNothingIsEverChecked() {
        RecordingPresenter presenter;
        FeedUpdaterController controller({.feed = {}, .presenter = presenter, .openPage = {}});
        controller.start();
        controller.checkForUpdates();
        QTest::qWait(50);
        QVERIFY(!UpdateMemory::lastCheck().has_value());
        QVERIFY(presenter.alerts.empty());
    }

    void aWishJoinsACheckOnItsWay() {
        Fixture fixture(u"1.11"_s);
        fixture.controller->start();
        QTRY_VERIFY(fixture.controller->isChecking());
        fixture.controller->checkForUpdates();
        fixture.controller->checkForUpdates();
        QTRY_VERIFY(!fixture.controller->isChecking());
        QCOMPARE(fixture.shown(), u"You’re up to date"_s);
        QCOMPARE(fixture.server.methods(), QByteArray("GET"));
    }

private:
    QTemporaryDir settings_;
};

QTEST_MAIN(FeedUpdaterControllerTest)
#include "FeedUpdaterControllerTest.moc"
