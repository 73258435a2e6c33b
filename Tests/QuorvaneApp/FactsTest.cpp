#include "QuorvaneApp/Views/Results/Facts.h"

#include "QuorvaneApp/Model/WebLink.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Welcome/DroppedFolder.h"
#include "ScanKit/Identification/SPDX.h"
#include "Tests/QuorvaneApp/AppFixture.h"

#include <QMimeData>
#include <QUrl>
#include <QtTest>

using ScanKit::Ecosystem;
using ScanKit::Flag;

/// What the views decide before they draw.
class FactsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyWholeWebAddressesAreLinks() {
        for (const char* link :
             {"https://example.org/a?b=c&d", "http://example.org", "HTTPS://EXAMPLE.ORG/"}) {
            QVERIFY2(webLink(link).has_value(), link);
        }
        for (const char* text :
             {"git+ssh://git@example.org/a.git", "javascript:alert(1)", "file:///etc/passwd", "https:///path",
              "../local/package", "https://example.org/a b\nc", ""}) {
            QVERIFY2(!webLink(text).has_value(), text);
        }
        QVERIFY(!webLink({}).has_value());
    }

    void aNoticeIsNotMeasuredByTheWholeText() {
        ScanKit::Dependency dependency = package("a");
        dependency.matchScore = 0.7;
        const auto saysMatch = [&dependency] {
            return std::ranges::any_of(Facts::of(dependency), [](const Facts::Fact& fact) {
                return fact.title.startsWith(u"Match"_s);
            });
        };
        dependency.basis = ScanKit::LicenseBasis::metadataAndText;
        dependency.licenseText = ScanKit::SPDX::builtInText("MIT").value();
        QVERIFY(saysMatch());
        dependency.licenseText = "Licensed under the Apache License, Version 2.0.";
        QVERIFY(!saysMatch());
    }

    void factsAreToldInOrderAndAScoreIsNeverRoundedUp() {
        QCOMPARE(Facts::displayNames(u"MIT OR (Zlib AND MIT)"_s), u"MIT License, zlib License"_s);
        QCOMPARE(Facts::displayNames(u"ask us"_s), QString());
        ScanKit::Dependency dependency = package("a");
        dependency.declared = "MIT";
        dependency.licenseFileNames = {"LICENSE", "COPY\nING"};
        dependency.isDev = true;
        for (const auto& [score, shown] :
             {std::pair{1.0, u"100 %"_s}, {0.9999, u"99.9 %"_s}, {0.75, u"75 %"_s}}) {
            dependency.matchScore = score;
            QStringList facts;
            for (const Facts::Fact& fact : Facts::of(dependency)) {
                facts.push_back(fact.title + u'=' + fact.text);
            }
            QCOMPARE(
                facts.join(u'|'),
                u"License=MIT|Full name=MIT License|Category=Permissive|Found by=Package metadata|Match with the standard text=%1|Declared=MIT|License files=LICENSE, COPY ING|Ecosystem=npm|Used for=Development only"_s
                    .arg(shown));
        }
    }

    void theLockfileIsNamedWhereNothingElseCanNameThePackage() {
        const ScanKit::Dependency asked = package("a");
        const auto source = [](Ecosystem ecosystem, const char* path, std::optional<std::size_t> listed) {
            ScanKit::ScanSource made{.ecosystem = ecosystem, .path = path};
            if (listed) {
                made.entries = ScanKit::EntryStates{.listed = *listed, .own = 1};
            }
            return made;
        };
        struct Row {
            const char* name;
            std::vector<ScanKit::ScanSource> sources;
            QString file;
        };
        const auto npm = Ecosystem::npm;
        for (const Row& row : {
                 Row{"one lockfile",
                     {source(npm, "web/lock", 2), source(npm, "web/modules", {})},
                     u"web/lock"_s},
                 Row{"another ecosystem's", {source(Ecosystem::python, "poetry.lock", 2)}, {}},
                 Row{"beside another ecosystem's",
                     {source(Ecosystem::python, "poetry.lock", 1), source(npm, "lock", 2)},
                     u"lock"_s},
                 Row{"two lockfiles", {source(npm, "web/lock", 0), source(npm, "api/lock", 2)}, {}},
                 Row{"packages besides its entries", {source(npm, "web/lock", 1)}, {}},
                 Row{"no lockfile", {source(npm, "modules", {})}, {}},
             }) {
            ScanKit::ScanResult result;
            result.sources = row.sources;
            result.dependencies = {asked, package("b"), package("c", Ecosystem::python)};
            QCOMPARE(at(row.name, Facts::namedIn(result, asked)), at(row.name, row.file));
        }
    }

    void onlyOneLocalThingCanBeDropped() {
        const QUrl folder = QUrl::fromLocalFile(u"/home/a b"_s);
        const QUrl web(u"https://example.org/"_s);
        QMimeData dropped;
        dropped.setUrls({folder});
        QCOMPARE(droppedPath(dropped).value_or(""), std::filesystem::path("/home/a b"));
        for (const QList<QUrl>& urls : {QList<QUrl>{}, QList<QUrl>{folder, folder}, QList<QUrl>{web}}) {
            dropped.setUrls(urls);
            QVERIFY(!droppedPath(dropped));
        }
    }

    void severityIsLegibleInLightAndDark() {
        struct Row {
            const char* name;
            QColor window, button;
            bool isDark;
        };
        for (const Row& row :
             {Row{"light", {239, 239, 239}, {239, 239, 239}, false},
              Row{"white", Qt::white, Qt::white, false}, Row{"dark", {43, 45, 48}, {60, 63, 67}, true},
              Row{"black", Qt::black, {20, 20, 20}, true}}) {
            const QPalette palette(row.button, row.window);
            QVERIFY2(Appearance::isDark(palette) == row.isDark, row.name);
            for (const auto severity : {Flag::Severity::low, Flag::Severity::medium, Flag::Severity::high}) {
                const QColor color = Appearance::severityColor(severity, palette);
                QVERIFY2(Appearance::contrast(color, palette.color(QPalette::Base)) >= 4.5, row.name);
                QVERIFY2(Appearance::contrast(color, palette.color(QPalette::Window)) >= 4.5, row.name);
                QVERIFY2(Appearance::contrast(palette.color(QPalette::Text),
                                              Appearance::severityBackground(severity, palette)) >= 4.5,
                         row.name);
            }
            QVERIFY2(Appearance::contrast(Appearance::secondaryText(palette), row.window) >= 4.5, row.name);
        }
        QCOMPARE(Appearance::contrast(Qt::white, Qt::black), 21.0);
    }
};

QTEST_MAIN(FactsTest)
#include "FactsTest.moc"
