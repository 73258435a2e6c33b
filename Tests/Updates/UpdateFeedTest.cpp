#include "QuorvaneApp/Updates/ReleaseNotes.h"
#include "QuorvaneApp/Updates/UpdateFeed.h"
#include "QuorvaneApp/Updates/UpdateSearch.h"
#include "QuorvaneApp/Updates/VersionOrder.h"

#include <QtTest>

namespace {

const UpdateTarget target{.version = QStringLiteral("1.9"),
                          .system = QStringLiteral("linux"),
                          .systemVersion = QStringLiteral("6.1.0-18-amd64")};

QByteArray feedOf(const QByteArray& items) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" xmlns:s=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">"
           "<channel><title>Quorvane</title><link>https://example.com/</link>" +
           items + "</channel></rss>\n";
}

/// An item for the target's system.
QByteArray itemOf(const QByteArray& version, const QByteArray& more = {}) {
    return "<item><s:version>" + version + "</s:version>" + more + "<enclosure s:os=\"linux\"/></item>";
}

/// The version that is offered from a feed of these items; empty when there is none.
QString offered(const QByteArray& items) {
    const auto read = readUpdateFeed(feedOf(items));
    if (!read) {
        return QStringLiteral("failed");
    }
    const auto update = findUpdate(*read, target);
    return update ? update->shownVersion : QString();
}

QString notesOf(const QString& description, std::optional<QString> format = {}) {
    return plainReleaseNotes(FeedItem{.description = description, .descriptionFormat = std::move(format)});
}

}  // namespace

/// What is read from a feed and chosen of it.
class UpdateFeedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ordersVersions_data();
    void ordersVersions();
    void readsEveryPartOfAnItem();
    void takesVersionAndSystemFromTheDownloadToo();
    void failsOnWhatIsNoWholeFeed_data();
    void failsOnWhatIsNoWholeFeed();
    void readsAFeedThatNestsEndlessly();
    void offersTheNewestThatSuits_data();
    void offersTheNewestThatSuits();
    void leadsOnlyToHttpsPages_data();
    void leadsOnlyToHttpsPages();
    void showsNotesAsPlainText();
    void readsOnlyTheBeginningOfEndlessNotes();
};

void UpdateFeedTest::ordersVersions_data() {
    QTest::addColumn<QString>("older");
    QTest::addColumn<QString>("newer");
    const std::initializer_list<std::pair<const char*, const char*>> pairs{
        {"1.9", "1.10"},
        {"1.0", "1.0.1"},
        {"0.9.9", "1"},
        {"9", "10"},
        {"1.0b1", "1.0b2"},
        {"1.0b9", "1.0b10"},
        {"1.0a5", "1.0b1"},
        {"1.0rc1", "1.0"},
        {"1.0-beta", "1.0"},
        {"1.0 (99)", "1.0 (100)"},
        {"1.0b2", "1.0.1"},
        {"202611210900", "202611210901"},
        {"99999999999999999999", "100000000000000000000"},
    };
    for (const auto& [older, newer] : pairs) {
        QTest::newRow(newer) << QString::fromLatin1(older) << QString::fromLatin1(newer);
    }
}

void UpdateFeedTest::ordersVersions() {
    QFETCH(QString, older);
    QFETCH(QString, newer);
    QVERIFY(compareVersions(older, newer) < 0);
    QVERIFY(compareVersions(newer, older) > 0);
    QVERIFY(compareVersions(newer, newer) == 0);
    for (const char* same : {"1.0", "1", "1.0.0", "01.00", "1-0", " 1.0 "}) {
        QVERIFY2(compareVersions(QStringLiteral("1.0"), QLatin1StringView(same)) == 0, same);
    }
    QVERIFY(compareVersions(QStringLiteral("1.0RC1"), QStringLiteral("1.0rc1")) == 0);
}

void UpdateFeedTest::readsEveryPartOfAnItem() {
    const auto items = readUpdateFeed(feedOf(R"(
        <item>
          <title>Version 1.10</title>
          <s:version> 110 </s:version>
          <s:shortVersionString>1.10</s:shortVersionString>
          <s:minimumSystemVersion>5.4</s:minimumSystemVersion>
          <s:maximumSystemVersion>7</s:maximumSystemVersion>
          <s:channel>beta</s:channel>
          <other:link xmlns:other="urn:other">https://example.com/other</other:link>
          <link>https://example.com/get?a=1&amp;b=2</link>
          <description s:format="markdown"><![CDATA[* <b>new</b> & more]]></description>
          <s:deltas><enclosure s:version="1" s:os="macos"/></s:deltas>
          <enclosure url="https://example.com/q.tar.gz" s:os="linux" length="1"/>
        </item>)"));
    QVERIFY(items.has_value());
    const FeedItem expected{.version = QStringLiteral("110"),
                            .shortVersion = QStringLiteral("1.10"),
                            .system = QStringLiteral("linux"),
                            .minimumSystemVersion = QStringLiteral("5.4"),
                            .maximumSystemVersion = QStringLiteral("7"),
                            .channel = QStringLiteral("beta"),
                            .link = QStringLiteral("https://example.com/get?a=1&b=2"),
                            .description = QStringLiteral("* <b>new</b> & more"),
                            .descriptionFormat = QStringLiteral("markdown")};
    QVERIFY(*items == std::vector{expected});
}

void UpdateFeedTest::takesVersionAndSystemFromTheDownloadToo() {
    const auto items = readUpdateFeed(
        feedOf("<item><enclosure s:version=\"2\" s:shortVersionString=\"2.0\" s:os=\"linux\"/></item>"
               "<item><title>no version</title></item>"));
    QVERIFY(items.has_value());
    QVERIFY(*items == std::vector{(FeedItem{.version = QStringLiteral("2"),
                                            .shortVersion = QStringLiteral("2.0"),
                                            .system = QStringLiteral("linux")})});
}

void UpdateFeedTest::failsOnWhatIsNoWholeFeed_data() {
    QTest::addColumn<QByteArray>("feed");
    const QByteArray whole = feedOf(itemOf("2"));
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \n");
    QTest::newRow("plain text") << QByteArray("Service unavailable");
    QTest::newRow("HTML page") << QByteArray("<html><body><rss/></body></html>");
    QTest::newRow("another feed format") << QByteArray("<feed xmlns=\"http://www.w3.org/2005/Atom\"/>");
    QTest::newRow("cut") << whole.left(whole.size() / 2);
    QTest::newRow("cut at its end") << whole.left(whole.size() - 4);
    QTest::newRow("more after the end") << whole + "<rss/>";
    QTest::newRow("bad UTF-8") << feedOf("<item>\xff\xfe</item>");
    QTest::newRow("undeclared prefix") << feedOf("<item><x:version>2</x:version></item>");
    QTest::newRow("undeclared entity") << feedOf(itemOf("&two;"));
    const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    const auto withType = [&](const QByteArray& type) {
        return QByteArray(whole).replace(declaration, declaration + type);
    };
    QTest::newRow("document type") << withType("<!DOCTYPE rss>");
    QTest::newRow("document type elsewhere")
        << withType("<!DOCTYPE rss SYSTEM \"https://example.com/rss.dtd\">");
    QTest::newRow("entity") << withType("<!DOCTYPE rss [<!ENTITY a \"b\">]>");
}

void UpdateFeedTest::failsOnWhatIsNoWholeFeed() {
    QFETCH(QByteArray, feed);
    QVERIFY(!readUpdateFeed(feed).has_value());
    QVERIFY(readUpdateFeed(feedOf(itemOf("2"))).has_value());
}

/// A reader that calls itself for each level ends the program here.
void UpdateFeedTest::readsAFeedThatNestsEndlessly() {
    constexpr int levels = 100000;
    for (const char* place : {"description", "unknown"}) {
        const QByteArray name(place);
        const QByteArray deep = "<" + name + ">" + QByteArray("<a>").repeated(levels) +
                                QByteArray("</a>").repeated(levels) + "</" + name + ">";
        QCOMPARE(offered(itemOf("2", deep)), QStringLiteral("2"));
    }
}

void UpdateFeedTest::offersTheNewestThatSuits_data() {
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QString>("version");
    const auto row = [](const char* name, const QByteArray& items, const char* version) {
        QTest::newRow(name) << items << QString::fromLatin1(version);
    };
    const QByteArray forMac = "<item><s:version>9</s:version><enclosure s:os=\"macos\"/></item>";
    row("three versions", itemOf("1.10") + itemOf("1.11") + itemOf("1.9.5"), "1.11");
    row("two systems", itemOf("1.10") + forMac, "1.10");
    row("no mark", "<item><s:version>9</s:version></item>", "");
    row("a mark where the framework does not look", "<item><s:version>9</s:version><s:os>linux</s:os></item>",
        "");
    row("the running version", itemOf("1.9") + itemOf("1.9.0") + itemOf("1.8"), "");
    row("no items", "", "");
    row("another name to show", itemOf("2", "<s:shortVersionString>Two</s:shortVersionString>"), "Two");
    row("a beta", itemOf("2", "<s:channel>beta</s:channel>") + itemOf("1.9.1"), "1.9.1");
    row("too old a system",
        itemOf("2", "<s:minimumSystemVersion>6.2</s:minimumSystemVersion>") + itemOf("1.9.1"), "1.9.1");
    row("just new enough", itemOf("2", "<s:minimumSystemVersion>6.1</s:minimumSystemVersion>"), "2");
    row("too new a system", itemOf("2", "<s:maximumSystemVersion>5.9</s:maximumSystemVersion>"), "");
    row("a version of no numbers", itemOf("next"), "");
}

void UpdateFeedTest::offersTheNewestThatSuits() {
    QFETCH(QByteArray, items);
    QFETCH(QString, version);
    QCOMPARE(offered(items), version);
}

void UpdateFeedTest::leadsOnlyToHttpsPages_data() {
    QTest::addColumn<bool>("isPage");
    QTest::newRow("https://example.com/get") << true;
    for (const char* link : {"http://example.com/get", "file:///etc/passwd", "javascript:alert(1)", "/get",
                             "https:///get", "https://exa mple.com/", "-"}) {
        QTest::newRow(link) << false;
    }
}

void UpdateFeedTest::leadsOnlyToHttpsPages() {
    QFETCH(bool, isPage);
    const QString link = QLatin1StringView(QTest::currentDataTag());
    const auto update = findUpdate(
        {{.version = QStringLiteral("2"), .system = QStringLiteral("linux"), .link = link}}, target);
    QVERIFY(update.has_value());
    QVERIFY(update->page == (isPage ? std::optional(QUrl(link)) : std::nullopt));
}

void UpdateFeedTest::showsNotesAsPlainText() {
    QCOMPARE(
        notesOf(QStringLiteral("<h2>New</h2><p>Two<br>lines</p><ul><li>One &amp; two</li><li>Three</li></ul>"
                               "<img src=\"https://example.com/a.png\"><script>no()</script><p>End")),
        QStringLiteral("New\n\nTwo\nlines\n\n• One & two\n• Three\n\nEnd"));
    const QString written = QStringLiteral("a < b\n* <b>c</b>");
    QCOMPARE(notesOf(written, QStringLiteral("plain-text")), written);
    QCOMPARE(notesOf(written, QStringLiteral("markdown")), written);
    QCOMPARE(plainReleaseNotes({}), QString());
}

/// Nested this deep, the whole would use up the stack.
void UpdateFeedTest::readsOnlyTheBeginningOfEndlessNotes() {
    const QString deep = QStringLiteral("<table><tr><td>").repeated(60000);
    const QString notes = notesOf(QStringLiteral("New") + deep);
    QVERIFY(notes.startsWith(QStringLiteral("New")) && notes.endsWith(QStringLiteral("\n…")));
    QCOMPARE(notesOf(QString(40000, u'a'), QStringLiteral("plain-text")).size(), 32 * 1024 + 2);
}

QTEST_MAIN(UpdateFeedTest)
#include "UpdateFeedTest.moc"
