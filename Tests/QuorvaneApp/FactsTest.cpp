#include "QuorvaneApp/Views/Results/Facts.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Dialogs/HelpPage.h"
#include "QuorvaneApp/Views/Welcome/DroppedFolder.h"
#include "Tests/QuorvaneApp/AppFixture.h"

#include <QMimeData>
#include <QUrl>
#include <QtTest>

using ScanKit::Flag;

/// What the views decide before they draw.
class FactsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyWholeWebAddressesAreLinks_data();
    void onlyWholeWebAddressesAreLinks();
    void fullNamesAreAddedWhereTheyHelp_data();
    void fullNamesAreAddedWhereTheyHelp();
    void aScoreIsNeverRoundedUp_data();
    void aScoreIsNeverRoundedUp();
    void onlyOneLocalThingCanBeDropped();
    void severityIsLegibleInLightAndDark_data();
    void severityIsLegibleInLightAndDark();
    void theHelpExplainsEveryLabel();
};

void FactsTest::onlyWholeWebAddressesAreLinks_data() {
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<bool>("isLink");
    QTest::newRow("https") << QByteArray("https://example.org/a?b=c&d") << true;
    QTest::newRow("http") << QByteArray("http://example.org") << true;
    QTest::newRow("letter case") << QByteArray("HTTPS://EXAMPLE.ORG/") << true;
    QTest::newRow("git") << QByteArray("git+ssh://git@example.org/a.git") << false;
    QTest::newRow("a script") << QByteArray("javascript:alert(1)") << false;
    QTest::newRow("a file") << QByteArray("file:///etc/passwd") << false;
    QTest::newRow("no host") << QByteArray("https:///path") << false;
    QTest::newRow("a path") << QByteArray("../local/package") << false;
    QTest::newRow("words behind it") << QByteArray("https://example.org/a b\nc") << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void FactsTest::onlyWholeWebAddressesAreLinks() {
    QFETCH(QByteArray, source);
    QFETCH(bool, isLink);
    QCOMPARE(Facts::webLink(source.toStdString()).has_value(), isLink);
}

void FactsTest::fullNamesAreAddedWhereTheyHelp_data() {
    QTest::addColumn<QString>("license");
    QTest::addColumn<QString>("names");
    QTest::newRow("single") << QStringLiteral("MIT") << QStringLiteral("MIT License");
    QTest::newRow("each once") << QStringLiteral("MIT OR (Zlib AND MIT)")
                               << QStringLiteral("MIT License, zlib License");
    QTest::newRow("not an expression") << QStringLiteral("ask us") << QString();
    QTest::newRow("none") << QString() << QString();
}

void FactsTest::fullNamesAreAddedWhereTheyHelp() {
    QFETCH(QString, license);
    QFETCH(QString, names);
    QCOMPARE(Facts::displayNames(license), names);
}

void FactsTest::aScoreIsNeverRoundedUp_data() {
    QTest::addColumn<double>("score");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 1.0 << QStringLiteral("100 %");
    QTest::newRow("just below") << 0.9999 << QStringLiteral("99.9 %");
    QTest::newRow("even") << 0.75 << QStringLiteral("75 %");
}

void FactsTest::aScoreIsNeverRoundedUp() {
    QFETCH(double, score);
    QFETCH(QString, text);
    ScanKit::Dependency dependency = package("a");
    dependency.matchScore = score;
    const auto facts = Facts::of(dependency);
    const auto found =
        std::ranges::find(facts, QStringLiteral("Match with the standard text"), &Facts::Fact::title);
    QVERIFY(found != facts.end());
    QCOMPARE(found->text, text);
}

void FactsTest::onlyOneLocalThingCanBeDropped() {
    const QUrl folder = QUrl::fromLocalFile(QStringLiteral("/home/a b"));
    const QUrl web(QStringLiteral("https://example.org/"));
    QMimeData dropped;
    dropped.setUrls({folder});
    QCOMPARE(droppedPath(dropped), std::optional<std::filesystem::path>("/home/a b"));
    for (const QList<QUrl>& urls : {QList<QUrl>{}, QList<QUrl>{folder, folder}, QList<QUrl>{web}}) {
        dropped.setUrls(urls);
        QVERIFY(!droppedPath(dropped));
    }
}

void FactsTest::severityIsLegibleInLightAndDark_data() {
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("button");
    QTest::newRow("light") << QColor(239, 239, 239) << QColor(239, 239, 239);
    QTest::newRow("white") << QColor(Qt::white) << QColor(Qt::white);
    QTest::newRow("dark") << QColor(43, 45, 48) << QColor(60, 63, 67);
    QTest::newRow("black") << QColor(Qt::black) << QColor(20, 20, 20);
}

void FactsTest::severityIsLegibleInLightAndDark() {
    QFETCH(QColor, window);
    QFETCH(QColor, button);
    const QPalette palette(button, window);
    QCOMPARE(Appearance::isDark(palette), window.lightness() < 128);
    for (const auto severity : {Flag::Severity::low, Flag::Severity::medium, Flag::Severity::high}) {
        const QColor color = Appearance::severityColor(severity, palette);
        QVERIFY(Appearance::contrast(color, palette.color(QPalette::Base)) >= 4.5);
        QVERIFY(Appearance::contrast(color, palette.color(QPalette::Window)) >= 4.5);
        QVERIFY(Appearance::contrast(palette.color(QPalette::Text),
                                     Appearance::severityBackground(severity, palette)) >= 4.5);
    }
    QVERIFY(Appearance::contrast(Appearance::secondaryText(palette), window) >= 4.5);
}

void FactsTest::theHelpExplainsEveryLabel() {
    const QString page = helpPage();
    const auto isExplained = [&page](std::string_view label) {
        return page.contains(
            QStringLiteral("<b>%1.</b> ").arg(QString::fromUtf8(label.data(), std::ssize(label))));
    };
    for (const Flag flag : ScanKit::allFlags) {
        QVERIFY(isExplained(ScanKit::label(flag)));
    }
    for (const ScanKit::LicenseCategory category : ScanKit::allLicenseCategories) {
        QVERIFY(isExplained(ScanKit::label(category)));
    }
    for (const ScanKit::LicenseBasis basis : ScanKit::allLicenseBases) {
        QVERIFY(isExplained(ScanKit::label(basis)));
    }
}

QTEST_MAIN(FactsTest)
#include "FactsTest.moc"
