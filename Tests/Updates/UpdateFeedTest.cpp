#include "QuorvaneApp/Updates/ReleaseNotes.h"
#include "QuorvaneApp/Updates/UpdateFeed.h"
#include "QuorvaneApp/Updates/UpdateSearch.h"
#include "QuorvaneApp/Updates/VersionOrder.h"
#include "Tests/Updates/UpdateFixture.h"

#include <QtTest>

namespace {

const UpdateTarget target{.version = u"1.9"_s, .system = u"linux"_s, .systemVersion = u"6.1.0-18-amd64"_s};

/// The version that is offered from a feed of these items; empty when there is none.
QString offered(const QByteArray& items) {
    const auto read = readUpdateFeed(feedOf(items));
    if (!read) {
        return u"failed"_s;
    }
    const auto update = findUpdate(*read, target);
    return update ? update->shownVersion : QString();
}

/// Every field that the item has, in their order in the record.
QString fieldsOf(const FeedItem& item) {
    QStringList fields{item.version};
    for (const auto& field :
         {item.shortVersion, item.system, item.minimumSystemVersion, item.maximumSystemVersion, item.channel,
          item.link, item.description, item.descriptionFormat}) {
        fields.push_back(field.value_or(u"-"_s));
    }
    return fields.join(u'|');
}

QString notesOf(const QString& description, std::optional<QString> format = {}) {
    return plainReleaseNotes(FeedItem{.description = description, .descriptionFormat = std::move(format)});
}

}  // namespace

/// What is read from a feed and chosen of it.
class UpdateFeedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ordersVersions() {
        for (const auto& [older, newer] : {
                 std::pair{u"1.9"_s, u"1.10"_s},
                 {u"1.0"_s, u"1.0.1"_s},
                 {u"0.9.9"_s, u"1"_s},
                 {u"1.0b9"_s, u"1.0b10"_s},
                 {u"1.0a5"_s, u"1.0b1"_s},
                 {u"1.0rc1"_s, u"1.0"_s},
                 {u"1.0-beta"_s, u"1.0"_s},
                 {u"1.0 (99)"_s, u"1.0 (100)"_s},
                 {u"1.0b2"_s, u"1.0.1"_s},
                 {u"99999999999999999999"_s, u"100000000000000000000"_s},
             }) {
            QVERIFY2(compareVersions(older, newer) < 0, qPrintable(newer));
            QVERIFY2(compareVersions(newer, older) > 0, qPrintable(newer));
        }
        for (const QString& same : {u"1"_s, u"1.0.0"_s, u"01.00"_s, u"1-0"_s, u" 1.0 "_s}) {
            QVERIFY2(compareVersions(u"1.0"_s, same) == 0, qPrintable(same));
        }
        QVERIFY(compareVersions(u"1.0RC1"_s, u"1.0rc1"_s) == 0);
    }

    void readsEveryPartOfAnItem() {
        const auto items = readUpdateFeed(
            feedOf("<item>"
                   "<title>Version 1.10</title>"
                   "<s:version> 110 </s:version>"
                   "<s:shortVersionString>1.10</s:shortVersionString>"
                   "<s:minimumSystemVersion>5.4</s:minimumSystemVersion>"
                   "<s:maximumSystemVersion>7</s:maximumSystemVersion>"
                   "<s:channel>beta</s:channel>"
                   "<other:link xmlns:other='urn:other'>https://example.com/other</other:link>"
                   "<link>https://example.com/get?a=1&amp;b=2</link>"
                   "<description s:format='markdown'><![CDATA[* <b>new</b> & more]]></description>"
                   "<s:deltas><enclosure s:version='1' s:os='macos'/></s:deltas>"
                   "<enclosure url='https://example.com/q.tar.gz' s:os='linux' length='1'/>"
                   "</item>"
                   "<item><enclosure s:version='2' s:shortVersionString='2.0' s:os='linux'/></item>"
                   "<item><title>no version</title></item>"));
        QVERIFY(items.has_value());
        QCOMPARE(items->size(), std::size_t{2});
        QCOMPARE(fieldsOf(items->front()),
                 u"110|1.10|linux|5.4|7|beta|https://example.com/get?a=1&b=2|* <b>new</b> & more|markdown"_s);
        QCOMPARE(fieldsOf(items->back()), u"2|2.0|linux|-|-|-|-|-|-"_s);
    }

    void failsOnWhatIsNoWholeFeed() {
        const QByteArray whole = feedOf(itemOf("2"));
        QVERIFY(readUpdateFeed(whole).has_value());
        const auto withType = [&whole](const QByteArray& type) {
            return QByteArray(whole).replace("?>\n", "?>\n" + type);
        };
        for (const QByteArray& feed : {
                 QByteArray(),
                 QByteArray(" \n"),
                 QByteArray("Service unavailable"),
                 QByteArray("<html><body><rss/></body></html>"),
                 QByteArray("<feed xmlns=\"http://www.w3.org/2005/Atom\"/>"),
                 whole.left(whole.size() / 2),
                 whole.left(whole.size() - 4),
                 whole + "<rss/>",
                 feedOf("<item>\xff\xfe</item>"),
                 feedOf("<item><undeclared:version>2</undeclared:version></item>"),
                 feedOf(itemOf("&undeclared;")),
                 withType("<!DOCTYPE rss>"),
                 withType("<!DOCTYPE rss SYSTEM \"https://example.com/rss.dtd\">"),
                 withType("<!DOCTYPE rss [<!ENTITY a \"b\">]>"),
             }) {
            QVERIFY2(!readUpdateFeed(feed).has_value(), feed.constData());
        }
    }

    /// A reader that calls itself for each level ends the program here.
    void readsAFeedThatNestsEndlessly() {
        constexpr int levels = 100000;
        for (const QByteArray name : {"description", "unknown"}) {
            const QByteArray deep = QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
            QCOMPARE(offered(itemOf("2", "<" + name + ">" + deep + "</" + name + ">")), u"2"_s);
        }
    }

    void offersTheNewestThatSuits() {
        const QByteArray forMac = "<item><s:version>9</s:version><enclosure s:os=\"macos\"/></item>";
        const QByteArray unmarked = "<item><s:version>9</s:version></item>";
        const QByteArray markedElsewhere = "<item><s:version>9</s:version><s:os>linux</s:os></item>";
        const auto from = [](const QByteArray& system) {
            return "<s:minimumSystemVersion>" + system + "</s:minimumSystemVersion>";
        };
        const QByteArray upTo5 = "<s:maximumSystemVersion>5.9</s:maximumSystemVersion>";
        const QByteArray beta = "<s:channel>beta</s:channel>";
        const QByteArray two = "<s:shortVersionString>Two</s:shortVersionString>";
        struct Row {
            const char* name;
            QByteArray items;
            QString version;
        };
        for (const Row& row : {
                 Row{"three versions", itemOf("1.10") + itemOf("1.11") + itemOf("1.9.5"), u"1.11"_s},
                 Row{"two systems", itemOf("1.10") + forMac, u"1.10"_s},
                 Row{"no mark", unmarked, {}},
                 Row{"a mark where the framework does not look", markedElsewhere, {}},
                 Row{"the running version", itemOf("1.9") + itemOf("1.9.0") + itemOf("1.8"), {}},
                 Row{"no items", "", {}},
                 Row{"another name", itemOf("2", two), u"Two"_s},
                 Row{"a beta", itemOf("2", beta) + itemOf("1.9.1"), u"1.9.1"_s},
                 Row{"too old a system", itemOf("2", from("6.2")) + itemOf("1.9.1"), u"1.9.1"_s},
                 Row{"just new enough", itemOf("2", from("6.1")), u"2"_s},
                 Row{"too new a system", itemOf("2", upTo5), {}},
                 Row{"a version of no numbers", itemOf("next"), {}},
             }) {
            QCOMPARE(at(row.name, offered(row.items)), at(row.name, row.version));
        }
    }

    void leadsOnlyToHTTPSPages() {
        const auto pageOf = [](const QString& link) {
            const auto update = findUpdate({{.version = u"2"_s, .system = u"linux"_s, .link = link}}, target);
            return update ? update->page.value_or(QUrl()).toString() : u"no update"_s;
        };
        QCOMPARE(pageOf(u"https://example.com/get"_s), u"https://example.com/get"_s);
        for (const QString& link :
             {u"http://example.com/get"_s, u"file:///etc/passwd"_s, u"javascript:alert(1)"_s, u"/get"_s,
              u"https:///get"_s, u"https://exa mple.com/"_s, u"-"_s}) {
            QVERIFY2(pageOf(link).isEmpty(), qPrintable(link));
        }
    }

    void showsNotesAsPlainText() {
        QCOMPARE(
            notesOf(
                u"<h2>New</h2><p>Two<br>lines</p><ul><li>One &amp; two</li><li>Three</li></ul><img src=\"https://example.com/a.png\"><script>no()</script><p>End"_s),
            u"New\n\nTwo\nlines\n\n• One & two\n• Three\n\nEnd"_s);
        const QString written = u"a < b\n* <b>c</b>"_s;
        QCOMPARE(notesOf(written, u"plain-text"_s), written);
        QCOMPARE(notesOf(written, u"markdown"_s), written);
        QCOMPARE(plainReleaseNotes({}), QString());
    }

    /// Nested this deep, the whole would use up the stack.
    void readsOnlyTheBeginningOfEndlessNotes() {
        const QString notes = notesOf(u"New"_s + u"<table><tr><td>"_s.repeated(60000));
        QVERIFY(notes.startsWith(u"New"_s) && notes.endsWith(u"\n…"_s));
        QCOMPARE(notesOf(QString(40000, u'a'), u"plain-text"_s).size(), 32 * 1024 + 2);
    }
};

QTEST_MAIN(UpdateFeedTest)
#include "UpdateFeedTest.moc"
