#include "QuorvaneApp/Updates/Updater.h"

#include "QuorvaneApp/Updates/FeedAddress.h"
#include "Tests/Updates/LoopbackServer.h"
#include "Tests/Updates/UpdateFixture.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QtTest>

using Wire = LoopbackServer::Response::Wire;
using Headers = std::map<QByteArray, QByteArray>;

namespace {

const QString check = u"the framework's own check"_s;
const QString upToDate =
    u"You’re up to date: Quorvane 1.9 is the newest version. Quorvane checks for updates on its own and will let you know when there’s a new one."_s;
const QString failed =
    u"Couldn’t check for updates: Check your internet connection and try again. Quorvane also checks on its own about once a day."_s;

/// Carries the command out against the feed and says what it ended in.
QString endOf(const std::optional<QUrl>& feed,
              std::chrono::milliseconds timeLimit = Updater::probeTimeLimit) {
    FakeUpdaterController controller(feed);
    RecordingPresenter presenter;
    Updater updater(controller, presenter, timeLimit);
    updater.checkForUpdates();
    if (!QTest::qWaitFor([&updater] { return !updater.checking(); })) {
        return u"still checking"_s;
    }
    QStringList ends(controller.checks, check);
    for (const UpdateAlert& alert : presenter.alerts) {
        ends.push_back(alert.title + u": "_s + alert.text);
    }
    return ends.join(u'|');
}

}  // namespace

/// "Check for Updates…" against a real server.
class UpdaterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setApplicationName(u"Quorvane"_s);
        QCoreApplication::setApplicationVersion(u"1.9"_s);
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    }

    void endsAsTheServerAnswers() {
        QCOMPARE(endOf({}), failed);
        const QUrl closed = LoopbackServer().url("/feed.xml");
        QCOMPARE(endOf(closed), failed);
        LoopbackServer server;
        for (const auto& [statuses, end] :
             {std::pair{std::vector{200, 204, 299, 405, 501}, check},
              {{404, 410}, upToDate},
              {{300, 304, 400, 401, 403, 406, 407, 409, 429, 500, 502, 503}, failed}}) {
            for (const int status : statuses) {
                server.answer("/feed.xml", {.status = status, .body = "<rss/>\n"});
                QCOMPARE(QString::number(status) + endOf(server.url("/feed.xml")),
                         QString::number(status) + end);
            }
        }
        server.answer("/feed.xml", {.body = "<rss/>\n", .wire = Wire::garbage});
        QCOMPARE(endOf(server.url("/feed.xml")), failed);
        QVERIFY(server.methods().startsWith("HEAD") && !server.methods().contains("GET"));
    }

    void aSlowServerIsGivenUp() {
        LoopbackServer server;
        server.answer("/elsewhere", {.status = 302, .body = {}, .location = "/feed.xml"});
        server.answer("/feed.xml", {.body = {}, .wire = Wire::silent});
        for (const char* path : {"/feed.xml", "/elsewhere"}) {
            QElapsedTimer clock;
            clock.start();
            QCOMPARE(endOf(server.url(path), std::chrono::milliseconds(100)), failed);
            QVERIFY2(clock.elapsed() >= 100, path);
        }
    }

    void followsRedirectsButNeverInCirclesNorToPlainHTTP() {
        LoopbackServer server;
        server.answer("/feed.xml", {.body = {}});
        for (const auto& [from, to] :
             {std::pair{"/5", "/4"}, {"/4", "/3"}, {"/3", "/2"}, {"/2", "/1"}, {"/1", "/feed.xml"}}) {
            server.answer(from, {.status = 301, .body = {}, .location = to});
        }
        server.answer("/circle", {.status = 302, .body = {}, .location = "/circle"});
        server.answer("/away",
                      {.status = 302, .body = {}, .location = server.outsideURL("/feed.xml").toEncoded()});
        QCOMPARE(endOf(server.url("/5")), check);
        QCOMPARE(server.methods(), QByteArray("HEAD HEAD HEAD HEAD HEAD HEAD"));
        server.requests.clear();
        QCOMPARE(endOf(server.url("/circle")), failed);
        QTest::qWait(50);
        QCOMPARE(server.requests.size(), std::size_t{11});
        server.requests.clear();
        QCOMPARE(endOf(server.url("/away")), failed);
        QCOMPARE(endOf(server.outsideURL("/feed.xml")), failed);
        QCOMPARE(server.methods(), QByteArray("HEAD"));
    }

    void twoQuickWishesSendOneProbe() {
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

    void saysNothingAboutTheUser() {
        LoopbackServer server;
        server.answer("/feed.xml", {.body = {}});
        QCOMPARE(endOf(server.url("/feed.xml")), check);
        Headers headers = server.requests.front().headers;
        headers.erase("host");
        QCOMPARE(headers, (Headers{{"accept-encoding", "identity"},
                                   {"accept-language", "*"},
                                   {"cache-control", "no-cache"},
                                   {"connection", "Keep-Alive"},
                                   {"pragma", "no-cache"},
                                   {"user-agent", "Quorvane"}}));
    }

    void acceptsOnlyAddressesThatNobodyCanChange() {
        const auto isAllowed = [](const char* address) {
            return FeedAddress::isAllowed(QUrl(QLatin1StringView(address)));
        };
        for (const char* address :
             {"https://example.com/feed.xml", "HTTPS://example.com:8443/", "http://127.0.0.1/",
              "http://127.8.9.1:80/", "http://[::1]:8000/feed.xml", "http://localhost/feed.xml"}) {
            QVERIFY2(isAllowed(address), address);
        }
        for (const char* address :
             {"http://example.com/feed.xml", "http://128.0.0.1/", "http://localhost.example.com/",
              "http://127.0.0.1.example.com/", "http://[::2]/", "ftp://127.0.0.1/", "https:///feed.xml",
              "file:///feed.xml", "feed.xml", "https://exa mple.com/", ""}) {
            QVERIFY2(!isAllowed(address), address);
        }
        const QUrl secure(u"https://example.com/feed.xml"_s);
        const QUrl plain(u"http://example.com/feed.xml"_s);
        const QUrl loopback(u"http://127.0.0.1/feed.xml"_s);
        QVERIFY(FeedAddress::mayRedirect(secure, secure));
        QVERIFY(FeedAddress::mayRedirect(loopback, secure));
        QVERIFY(FeedAddress::mayRedirect(loopback, loopback));
        QVERIFY(!FeedAddress::mayRedirect(secure, plain));
        QVERIFY(!FeedAddress::mayRedirect(loopback, plain));
        QVERIFY(!FeedAddress::mayRedirect(secure, loopback));
    }
};

QTEST_MAIN(UpdaterTest)
#include "UpdaterTest.moc"
