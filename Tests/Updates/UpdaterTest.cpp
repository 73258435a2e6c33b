#include "QuorvaneApp/Updates/Updater.h"

#include "QuorvaneApp/Updates/FeedAddress.h"
#include "Tests/Updates/LoopbackServer.h"
#include "Tests/Updates/UpdateFixture.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QtTest>

using Response = LoopbackServer::Response;
using Wire = Response::Wire;

/// What the command ends in.
enum class End { check, upToDate, failed };
Q_DECLARE_METATYPE(End)

/// "Check for Updates…" against a real server.
class UpdaterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void endsAsTheServerAnswers_data();
    void endsAsTheServerAnswers();
    void aConnectionRefusedIsAFailure();
    void aSlowServerIsGivenUp_data();
    void aSlowServerIsGivenUp();
    void followsRedirectsButNeverInCircles();
    void plainHttpIsNeverAskedBeyondTheLoopbackAddress();
    void withoutAFeedItFailsAtOnce();
    void twoQuickWishesSendOneProbe();
    void saysNothingAboutTheUser();
    void acceptsOnlyAddressesThatNobodyCanChange_data();
    void acceptsOnlyAddressesThatNobodyCanChange();
    void redirectsNeverLeaveHttps();

private:
    /// Carries the command out against the feed and says what it ended in.
    static End endOf(const QUrl& feed, std::chrono::milliseconds timeLimit = Updater::probeTimeLimit) {
        FakeUpdaterController controller(feed);
        RecordingPresenter presenter;
        Updater updater(controller, presenter, timeLimit);
        updater.checkForUpdates();
        [&] { QTRY_VERIFY(!updater.checking()); }();
        if (controller.checks == 1 && presenter.alerts.empty()) {
            return End::check;
        }
        [&] {
            QCOMPARE(controller.checks, 0);
            QCOMPARE(presenter.alerts.size(), std::size_t{1});
        }();
        return presenter.alerts.front() == upToDate() ? End::upToDate : End::failed;
    }
    static UpdateAlert upToDate() {
        return {
            .title = QStringLiteral("You’re up to date"),
            .text = QStringLiteral("Quorvane 1.9 is the newest version. Quorvane checks for updates on its "
                                   "own and will let you know when there’s a new one.")};
    }
    static UpdateAlert failed() {
        return {
            .title = QStringLiteral("Couldn’t check for updates"),
            .text = QStringLiteral("Check your internet connection and try again. Quorvane also checks on "
                                   "its own about once a day.")};
    }
};

void UpdaterTest::initTestCase() {
    QCoreApplication::setApplicationName(QStringLiteral("Quorvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.9"));
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

void UpdaterTest::endsAsTheServerAnswers_data() {
    QTest::addColumn<int>("status");
    QTest::addColumn<Wire>("wire");
    QTest::addColumn<End>("end");
    const auto status = [](int code, End end) { QTest::addRow("%d", code) << code << Wire::whole << end; };
    for (const int code : {200, 204, 299, 405, 501}) {
        status(code, End::check);
    }
    for (const int code : {404, 410}) {
        status(code, End::upToDate);
    }
    for (const int code : {300, 304, 400, 401, 403, 406, 407, 409, 429, 500, 502, 503}) {
        status(code, End::failed);
    }
    QTest::addRow("not HTTP") << 200 << Wire::garbage << End::failed;
}

void UpdaterTest::endsAsTheServerAnswers() {
    QFETCH(int, status);
    QFETCH(Wire, wire);
    QFETCH(End, end);
    LoopbackServer server;
    server.answer("/feed.xml", {.status = status, .body = "<rss/>\n", .wire = wire});
    QCOMPARE(endOf(server.url("/feed.xml")), end);
    QVERIFY(server.methods().startsWith("HEAD"));
    QVERIFY(!server.methods().contains("GET"));
}

void UpdaterTest::aConnectionRefusedIsAFailure() {
    QUrl closed;
    {
        const LoopbackServer server;
        closed = server.url("/feed.xml");
    }
    QCOMPARE(endOf(closed), End::failed);
}

void UpdaterTest::aSlowServerIsGivenUp_data() {
    QTest::addColumn<bool>("isRedirected");
    QTest::newRow("silent") << false;
    QTest::newRow("silent after a redirect") << true;
}

void UpdaterTest::aSlowServerIsGivenUp() {
    QFETCH(bool, isRedirected);
    LoopbackServer server;
    server.answer("/elsewhere", {.status = 302, .body = {}, .location = "/feed.xml"});
    server.answer("/feed.xml", {.body = {}, .wire = Wire::silent});
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(endOf(server.url(isRedirected ? "/elsewhere" : "/feed.xml"), std::chrono::milliseconds(100)),
             End::failed);
    QVERIFY(clock.elapsed() >= 100);
    QVERIFY(Updater::probeTimeLimit == std::chrono::seconds(15));
}

void UpdaterTest::followsRedirectsButNeverInCircles() {
    LoopbackServer server;
    server.answer("/moved", {.status = 301, .body = {}, .location = "/feed.xml"});
    server.answer("/feed.xml", {.body = {}});
    QCOMPARE(endOf(server.url("/moved")), End::check);
    QCOMPARE(server.methods(), QByteArray("HEAD HEAD"));
    server.answer("/circle", {.status = 302, .body = {}, .location = "/circle"});
    QCOMPARE(endOf(server.url("/circle")), End::failed);
}

void UpdaterTest::plainHttpIsNeverAskedBeyondTheLoopbackAddress() {
    LoopbackServer server;
    server.answer("/feed.xml", {.body = {}});
    server.answer("/away",
                  {.status = 302, .body = {}, .location = server.outsideURL("/feed.xml").toEncoded()});
    QCOMPARE(endOf(server.url("/away")), End::failed);
    QCOMPARE(server.methods(), QByteArray("HEAD"));
    QCOMPARE(endOf(server.outsideURL("/feed.xml")), End::failed);
    QCOMPARE(server.methods(), QByteArray("HEAD"));
}

void UpdaterTest::withoutAFeedItFailsAtOnce() {
    FakeUpdaterController controller;
    RecordingPresenter presenter;
    Updater updater(controller, presenter);
    updater.checkForUpdates();
    QVERIFY(!updater.checking());
    QVERIFY(presenter.alerts == std::vector{failed()});
    QCOMPARE(controller.checks, 0);
}

void UpdaterTest::twoQuickWishesSendOneProbe() {
    LoopbackServer server;
    server.answer("/feed.xml", {.status = 405, .body = {}});
    FakeUpdaterController controller(server.url("/feed.xml"));
    RecordingPresenter presenter;
    Updater updater(controller, presenter);
    const QSignalSpy changed(&updater, &Updater::checkingChanged);
    updater.checkForUpdates();
    QVERIFY(updater.checking());
    updater.checkForUpdates();
    QTRY_COMPARE(controller.checks, 1);
    QVERIFY(!updater.checking());
    QCOMPARE(server.methods(), QByteArray("HEAD"));
    QCOMPARE(changed.size(), 2);
    updater.checkForUpdates();
    QTRY_COMPARE(controller.checks, 2);
}

void UpdaterTest::saysNothingAboutTheUser() {
    LoopbackServer server;
    server.answer("/feed.xml", {.body = {}});
    QCOMPARE(endOf(server.url("/feed.xml")), End::check);
    std::map<QByteArray, QByteArray> headers = server.requests.front().headers;
    headers.erase("host");
    const std::map<QByteArray, QByteArray> expected{
        {"accept-encoding", "identity"}, {"accept-language", "*"}, {"cache-control", "no-cache"},
        {"connection", "Keep-Alive"},    {"pragma", "no-cache"},   {"user-agent", "Quorvane"},
    };
    QVERIFY2(headers == expected, qPrintable(QDebug::toString(headers)));
}

void UpdaterTest::acceptsOnlyAddressesThatNobodyCanChange_data() {
    QTest::addColumn<bool>("isAllowed");
    for (const char* address :
         {"https://example.com/feed.xml", "HTTPS://example.com:8443/", "http://127.0.0.1/",
          "http://127.8.9.1:80/", "http://[::1]:8000/feed.xml", "http://localhost/feed.xml"}) {
        QTest::newRow(address) << true;
    }
    for (const char* address :
         {"http://example.com/feed.xml", "http://128.0.0.1/", "http://localhost.example.com/",
          "http://127.0.0.1.example.com/", "http://[::2]/", "ftp://127.0.0.1/", "https:///feed.xml",
          "file:///feed.xml", "feed.xml", "https://exa mple.com/", ""}) {
        QTest::newRow(address) << false;
    }
}

void UpdaterTest::acceptsOnlyAddressesThatNobodyCanChange() {
    QFETCH(bool, isAllowed);
    QCOMPARE(FeedAddress::isAllowed(QUrl(QLatin1StringView(QTest::currentDataTag()))), isAllowed);
}

void UpdaterTest::redirectsNeverLeaveHttps() {
    const QUrl secure(QStringLiteral("https://example.com/feed.xml"));
    const QUrl plain(QStringLiteral("http://example.com/feed.xml"));
    const QUrl loopback(QStringLiteral("http://127.0.0.1/feed.xml"));
    QVERIFY(FeedAddress::mayRedirect(secure, secure));
    QVERIFY(FeedAddress::mayRedirect(loopback, secure));
    QVERIFY(FeedAddress::mayRedirect(loopback, loopback));
    QVERIFY(!FeedAddress::mayRedirect(secure, plain));
    QVERIFY(!FeedAddress::mayRedirect(loopback, plain));
    QVERIFY(!FeedAddress::mayRedirect(secure, loopback));
}

QTEST_MAIN(UpdaterTest)
#include "UpdaterTest.moc"
