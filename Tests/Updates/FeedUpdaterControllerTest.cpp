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
QByteArray publishedFeed() {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
           "  <channel>\n"
           "    <item><link>https://example.com/1.10</link><sparkle:version>1.10</sparkle:version>\n"
           "      <enclosure url=\"https://example.com/1.10.tar.gz\" sparkle:os=\"linux\"/></item>\n"
           "    <item><link>https://example.com/1.11</link><sparkle:version>1.11</sparkle:version>\n"
           "      <description><![CDATA[<p>Finds more.</p>]]></description>\n"
           "      <enclosure url=\"https://example.com/1.11.tar.gz\" sparkle:os=\"linux\"/></item>\n"
           "    <item><link>https://example.com/2.0</link><sparkle:version>2.0</sparkle:version>\n"
           "      <enclosure url=\"https://example.com/2.0.zip\"/></item>\n"
           "  </channel>\n"
           "</rss>";
}

/// A feed of exactly this many bytes that offers 1.11.
QByteArray feedOfSize(qsizetype size) {
    QByteArray feed = publishedFeed();
    return feed.append(QByteArray(size - feed.size(), ' '));
}

}  // namespace

/// The project's own check, against a real server, with a clock that the test sets.
class FeedUpdaterControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void offersTheNewestVersionForThisSystem();
    void aCheckOnWishAlwaysAnswers_data();
    void aCheckOnWishAlwaysAnswers();
    void theCommandLeadsFromProbeToOffer();
    void aSkippedVersionIsOfferedOnlyOnWish();
    void theDownloadPageIsOpenedInTheBrowser();
    void automaticChecksAreQuietUnlessThereIsNews();
    void automaticChecksRunOnceInADay();
    void automaticChecksCanBeTurnedOff();
    void withoutAFeedNothingIsEverChecked();
    void aWishJoinsACheckOnItsWay();

private:
    /// A controller with everything around it.
    struct Fixture {
        explicit Fixture(const QString& runningVersion = QStringLiteral("1.9")) : version(runningVersion) {
            server.answer("/feed.xml", {.body = publishedFeed()});
            launch();
        }
        /// The program starts, or starts anew.
        void launch() {
            controller = std::make_unique<FeedUpdaterController>(
                FeedUpdaterController::Setup{.feed = server.url("/feed.xml"),
                                             .target = {.version = version,
                                                        .system = QStringLiteral("linux"),
                                                        .systemVersion = QStringLiteral("6.1")},
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

        QString version;
        LoopbackServer server;
        RecordingPresenter presenter;
        QList<QUrl> pages;
        QDateTime now{QDate(2026, 3, 1), QTime(12, 0), Qt::UTC};
        std::unique_ptr<FeedUpdaterController> controller;
    };

    QTemporaryDir settings_;
};

void FeedUpdaterControllerTest::initTestCase() {
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvane Tests"));
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings_.path());
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

void FeedUpdaterControllerTest::init() {
    QSettings().clear();
}

void FeedUpdaterControllerTest::offersTheNewestVersionForThisSystem() {
    Fixture fixture;
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.offers.size(), std::size_t{1});
    QVERIFY(fixture.presenter.offers.front() ==
            (AvailableUpdate{.version = QStringLiteral("1.11"),
                             .shownVersion = QStringLiteral("1.11"),
                             .releaseNotes = QStringLiteral("Finds more."),
                             .page = QUrl(QStringLiteral("https://example.com/1.11"))}));
    QVERIFY(fixture.presenter.alerts.empty());
    QCOMPARE(fixture.server.methods(), QByteArray("GET"));
}

void FeedUpdaterControllerTest::aCheckOnWishAlwaysAnswers_data() {
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<Wire>("wire");
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QString>("outcome");
    const QString offer = QStringLiteral("offer");
    const QString upToDate = QStringLiteral("You’re up to date");
    const QString failed = QStringLiteral("Couldn’t check for updates");
    const auto row = [](const char* name, const char* version, const Response& response,
                        const QString& outcome) {
        QTest::newRow(name) << QString::fromLatin1(version) << response.status << response.body
                            << response.wire << response.location << outcome;
    };
    const QByteArray feed = publishedFeed();
    constexpr qsizetype limit = FeedClient::largestBody;
    row("older program", "1.9", {.body = feed}, offer);
    row("newest program", "1.11", {.body = feed}, upToDate);
    row("newer program", "1.12", {.body = feed}, upToDate);
    row("malformed", "1.9", {.body = feed.left(200)}, failed);
    row("empty", "1.9", {.body = {}}, failed);
    row("largest", "1.9", {.body = feedOfSize(limit)}, offer);
    row("too large", "1.9", {.body = feedOfSize(limit + 1)}, failed);
    row("far too large", "1.9", {.body = feedOfSize(20 * limit)}, failed);
    row("slow body", "1.9", {.body = feed, .wire = Wire::dribbling}, failed);
    row("silent", "1.9", {.body = feed, .wire = Wire::silent}, failed);
    row("cut in what follows the feed", "1.9", {.body = feedOfSize(2 * feed.size()), .wire = Wire::cut},
        failed);
    row("not HTTP", "1.9", {.body = feed, .wire = Wire::garbage}, failed);
    row("server error with a feed", "1.9", {.status = 500, .body = feed}, failed);
    row("not published", "1.9", {.status = 404, .body = "gone"}, upToDate);
    row("redirect to plain http", "1.9",
        {.status = 302, .body = {}, .location = "http://example.com/feed.xml"}, failed);
    row("redirect loop", "1.9", {.status = 302, .body = {}, .location = "/feed.xml"}, failed);
}

void FeedUpdaterControllerTest::aCheckOnWishAlwaysAnswers() {
    QFETCH(QString, version);
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(Wire, wire);
    QFETCH(QByteArray, location);
    QFETCH(QString, outcome);
    Fixture fixture(version);
    fixture.server.answer("/feed.xml", {.status = status, .body = body, .location = location, .wire = wire});
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.alerts.size() + fixture.presenter.offers.size(), std::size_t{1});
    QCOMPARE(
        fixture.presenter.alerts.empty() ? QStringLiteral("offer") : fixture.presenter.alerts.front().title,
        outcome);
}

void FeedUpdaterControllerTest::theCommandLeadsFromProbeToOffer() {
    Fixture fixture;
    fixture.server.answerWith("/feed.xml", [](const LoopbackServer::Request& request) {
        return request.method == "HEAD" ? Response{.status = 405, .body = {}}
                                        : Response{.body = publishedFeed()};
    });
    Updater updater(*fixture.controller, fixture.presenter);
    updater.checkForUpdates();
    QTRY_COMPARE(fixture.presenter.offers.size(), std::size_t{1});
    QCOMPARE(fixture.server.methods(), QByteArray("HEAD GET"));
    QVERIFY(fixture.presenter.alerts.empty());
}

void FeedUpdaterControllerTest::aSkippedVersionIsOfferedOnlyOnWish() {
    Fixture fixture;
    QVERIFY(fixture.startAfter(0));
    QCOMPARE(fixture.presenter.offers.size(), std::size_t{1});
    fixture.presenter.choose(UpdateChoice::skipVersion);
    QVERIFY(fixture.startAfter(24));
    QCOMPARE(fixture.server.methods(), QByteArray("GET GET"));
    QCOMPARE(fixture.presenter.offers.size(), std::size_t{1});
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.offers.size(), std::size_t{2});
    fixture.server.answer("/feed.xml", {.body = publishedFeed().replace("1.11<", "1.12<")});
    QVERIFY(fixture.startAfter(24));
    QCOMPARE(fixture.presenter.offers.back().version, QStringLiteral("1.12"));
    QVERIFY(fixture.pages.empty());
}

void FeedUpdaterControllerTest::theDownloadPageIsOpenedInTheBrowser() {
    Fixture fixture;
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.offers.size(), std::size_t{1});
    fixture.presenter.choose(UpdateChoice::openPage);
    QCOMPARE(fixture.pages, QList<QUrl>{QUrl(QStringLiteral("https://example.com/1.11"))});
    QVERIFY(!UpdateMemory::skippedVersion().has_value());
}

void FeedUpdaterControllerTest::automaticChecksAreQuietUnlessThereIsNews() {
    Fixture fixture(QStringLiteral("1.11"));
    QVERIFY(fixture.startAfter(0));
    fixture.server.answer("/feed.xml", {.status = 500, .body = {}});
    QVERIFY(fixture.startAfter(24));
    QCOMPARE(fixture.server.methods(), QByteArray("GET GET"));
    QVERIFY(fixture.presenter.alerts.empty());
    QVERIFY(fixture.presenter.offers.empty());
}

void FeedUpdaterControllerTest::automaticChecksRunOnceInADay() {
    struct Row {
        int hours;
        const char* methods;
    };
    Fixture fixture(QStringLiteral("1.11"));
    for (const Row& row :
         {Row{0, "GET"}, Row{0, "GET"}, Row{23, "GET"}, Row{1, "GET GET"}, Row{23, "GET GET"}}) {
        QVERIFY(fixture.startAfter(row.hours));
        QCOMPARE(fixture.server.methods(), QByteArray(row.methods));
    }
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.alerts.size(), std::size_t{1});
    QVERIFY(fixture.startAfter(23));
    QCOMPARE(fixture.server.methods(), QByteArray("GET GET GET"));
    QVERIFY(fixture.startAfter(-1000));
    QCOMPARE(fixture.server.methods(), QByteArray("GET GET GET GET"));
    QVERIFY(fixture.startAfter(1));
    QCOMPARE(fixture.server.methods(), QByteArray("GET GET GET GET"));
}

void FeedUpdaterControllerTest::automaticChecksCanBeTurnedOff() {
    Fixture fixture;
    QVERIFY(fixture.controller->automaticallyChecksForUpdates());
    fixture.controller->setAutomaticallyChecksForUpdates(false);
    QVERIFY(fixture.startAfter(48));
    QVERIFY(fixture.server.requests.empty());
    QVERIFY(!Fixture().controller->automaticallyChecksForUpdates());
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.offers.size(), std::size_t{1});
    fixture.now = fixture.now.addDays(2);
    fixture.controller->setAutomaticallyChecksForUpdates(true);
    QTRY_COMPARE(fixture.presenter.offers.size(), std::size_t{2});
}

void FeedUpdaterControllerTest::withoutAFeedNothingIsEverChecked() {
    RecordingPresenter presenter;
    FeedUpdaterController controller({.feed = {}, .presenter = presenter, .openPage = {}});
    controller.start();
    controller.checkForUpdates();
    QTest::qWait(50);
    QVERIFY(!UpdateMemory::lastCheck().has_value());
    QVERIFY(presenter.alerts.empty());
}

void FeedUpdaterControllerTest::aWishJoinsACheckOnItsWay() {
    Fixture fixture(QStringLiteral("1.11"));
    fixture.controller->start();
    QTRY_VERIFY(fixture.controller->isChecking());
    fixture.controller->checkForUpdates();
    fixture.controller->checkForUpdates();
    QTRY_COMPARE(fixture.presenter.alerts.size(), std::size_t{1});
    QVERIFY(!fixture.controller->isChecking());
    QCOMPARE(fixture.server.methods(), QByteArray("GET"));
    QCOMPARE(fixture.presenter.alerts.size(), std::size_t{1});
}

QTEST_MAIN(FeedUpdaterControllerTest)
#include "FeedUpdaterControllerTest.moc"
