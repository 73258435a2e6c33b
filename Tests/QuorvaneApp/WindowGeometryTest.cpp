#include "QuorvaneApp/Views/Results/ColumnWidths.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "QuorvaneApp/WindowSizes.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <numeric>
#include <tuple>
#include <utility>

#include <QApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>

using ScanKit::Flag;
using Kind = ScanKit::ScanWarning::Kind;

namespace {

/// Names that differ only behind a long common beginning, as those of one publisher do.
std::vector<ScanKit::Dependency> alike() {
    std::vector<ScanKit::Dependency> packages;
    for (int i = 10; i < 90; ++i) {
        packages.push_back(package("@harbor/plugin-transform-of-the-tides-" + std::to_string(i)));
        packages.back().isDev = i % 2 == 0;
    }
    return packages;
}

std::vector<ScanKit::ScanWarning> manyWarnings() {
    const std::string sentence =
        "Some packages are not installed where they could be seen, so that their license files were not read. "
        "Install them and scan again.";
    return {{Kind::swiftPackagesNotCheckedOut, "One. " + sentence},
            {Kind::pythonEnvironmentMissing, "Two. " + sentence},
            {Kind::npmModulesMissing, "Three. " + sentence},
            {Kind::npmPackagesNotListed, "Four. " + sentence}};
}

struct GeometryFixture : WindowFixture {
    explicit GeometryFixture(ScanFindings found, bool persist = false)
        : WindowFixture(alwaysFinding(std::move(found)), ScanKit::saveReports, persist) {}

    DependencyTable& table = *find<DependencyTable>("dependencyTable");

    void resizeTo(int width, int height) {
        window.resize(width, height);
        QTest::qWait(20);
    }
    int columnsWidth() const {
        int width = 0;
        for (int column = 0; column < table.model()->columnCount(); ++column) {
            width += table.columnWidth(column);
        }
        return width;
    }
    /// The heights of the table and of the details.
    std::pair<int, int> heights() { return {table.height(), find("detailPane")->height()}; }
    /// Where the widget lies in the window.
    QRect placeOf(const QWidget& widget) const { return {widget.mapTo(&window, QPoint()), widget.size()}; }
};

}  // namespace

/// Where things are in the real window, at sizes that people have.
class WindowGeometryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void widthIsSharedByNeedAndWeight() {
        using Needs = std::vector<ColumnWidths::Need>;
        struct Row {
            const char* name;
            Needs needs;
            int available;
            std::vector<int> widths;
        };
        const std::vector<Row> rows{
            {"what is left goes by weight",
             {{.content = 100, .least = 10, .weight = 3}, {.content = 50, .least = 10}},
             190,
             {130, 60}},
            {"short columns are not cut for long ones",
             {{.content = 900, .least = 10}, {.content = 50, .least = 10}},
             200,
             {150, 50}},
            {"two long ones share by weight",
             {{.content = 900, .least = 10, .weight = 3}, {.content = 900, .least = 10}},
             400,
             {300, 100}},
            {"below the least nothing is cut",
             {{.content = 90, .least = 80}, {.content = 90, .least = 80}},
             100,
             {80, 80}},
            {"what was chosen stays",
             {{.content = 90, .least = 10, .chosen = 300}, {.content = 90, .least = 10}},
             500,
             {300, 200}},
            {"chosen beyond what there is",
             {{.content = 90, .least = 10, .chosen = 600}, {.content = 90, .least = 10}},
             500,
             {600, 10}},
            {"all chosen", {{.content = 1, .least = 1, .chosen = 20}}, 500, {20}},
            {"no columns", {}, 500, {}},
        };
        for (const Row& row : rows) {
            QVERIFY2(ColumnWidths::shared(row.needs, row.available) == row.widths, row.name);
        }
    }

    void warningsAreWholeAfterEveryJumpOfTheWidth() {
        GeometryFixture fixture(findings(alike(), manyWarnings()));
        QVERIFY(fixture.open());
        QWidget& warnings = *fixture.find("warnings");
        const auto whole = [&] {
            for (const QLabel* const label : warnings.findChildren<QLabel*>()) {
                if (label->height() < label->heightForWidth(label->width())) {
                    return false;
                }
            }
            for (const QAbstractButton* const button : warnings.findChildren<QAbstractButton*>()) {
                const QRect visible = button->visibleRegion().boundingRect();
                if (button->isVisible() && visible.size() != button->size()) {
                    return false;
                }
            }
            return true;
        };
        int narrow = 0;
        for (const int width : {1590, 800, 1920, 820, 1590, 800, 2400}) {
            fixture.resizeTo(width, 900);
            QTRY_VERIFY2(whole(), qPrintable(QString::number(width)));
            // As tall as is needed and no taller: no strip is left empty where lines became longer.
            narrow = width == 800 ? warnings.height() : narrow;
            QVERIFY2(width < 1590 || narrow == 0 || warnings.height() < narrow,
                     qPrintable(u"%1 at %2"_s.arg(warnings.height()).arg(width)));
        }
        // Unfolded, each can be reached, and the button that folds them is in sight.
        fixture.resizeTo(1366, 768);
        auto* const toggle = fixture.find<QPushButton>("warningsToggle");
        toggle->click();
        QTRY_VERIFY(textOf(warnings).contains(u"Four."_s));
        QTest::qWait(20);
        QCOMPARE(toggle->visibleRegion().boundingRect().size(), toggle->size());
        QTRY_VERIFY(whole());
    }

    void warningsCanBePutAwayAndBroughtBack() {
        GeometryFixture fixture(findings(alike(), manyWarnings()));
        QVERIFY(fixture.open());
        QWidget& warnings = *fixture.find("warnings");
        for (int left = 4; left > 0; --left) {
            QVERIFY(warnings.isVisible());
            warnings.findChild<QAbstractButton*>(u"dismissButton"_s)->click();
            QTRY_COMPARE(fixture.model.warnings().size(), static_cast<std::size_t>(left - 1));
        }
        QVERIFY(!warnings.isVisible());
        auto* const back = fixture.find<QPushButton>("showWarningsButton");
        QVERIFY(back->isVisible());
        back->click();
        QVERIFY(warnings.isVisible() && !back->isVisible());
    }

    void namesThatDifferAtTheirEndAreToldApart() {
        GeometryFixture fixture(findings(alike()));
        QVERIFY(fixture.open());
        for (const int width : {1590, 1366, 1024}) {
            fixture.resizeTo(width, 768);
            QCOMPARE(fixture.columnsWidth(), fixture.table.viewport()->width());
            // Nothing else is wide, so the whole name has its room, whatever marks a dev-only package.
            const QString name = fixture.table.model()->index(0, 0).data().toString();
            QVERIFY2(fixture.table.columnWidth(0) >= fixture.table.fontMetrics().horizontalAdvance(name),
                     qPrintable(QString::number(width)));
        }
        // Where there is no room at all, the middle goes.
        fixture.resizeTo(800, 600);
        const QImage first = rowImage(fixture.table, 0);
        QVERIFY2(first != rowImage(fixture.table, 2), "two names look the same");
    }

    void chosenWidthsAreKept() {
        QSettings().clear();
        const auto expected = [](GeometryFixture& fixture) { return fixture.table.columnWidth(1) == 333; };
        {
            GeometryFixture fixture(findings(alike()), true);
            QVERIFY(fixture.open());
            fixture.resizeTo(1590, 768);
            fixture.table.horizontalHeader()->resizeSection(1, 333);
            QVERIFY(expected(fixture));
            fixture.resizeTo(1200, 768);
            QVERIFY(expected(fixture));
            fixture.model.scan();
            QVERIFY(fixture.waitForScan() && expected(fixture));
        }
        GeometryFixture fixture(findings(alike()), true);
        QVERIFY(fixture.open());
        fixture.resizeTo(1590, 768);
        QVERIFY(expected(fixture));
        // A double click on the divider fits the content, and the command forgets what was chosen.
        QHeaderView& header = *fixture.table.horizontalHeader();
        const QPoint divider(header.sectionViewportPosition(1) + header.sectionSize(1) - 1,
                             header.height() / 2);
        QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, divider);
        QVERIFY(fixture.table.columnWidth(1) < 200);
        fixture.table.setColumnWidth(1, 600);
        fixture.commands.action(Command::fitColumns)->trigger();
        QCOMPARE(fixture.columnsWidth(), fixture.table.viewport()->width());
    }

    void theFirstSizeFitsTheScreen() {
        // In the screen's own units: a scale of 1.5 makes 1067 of 1600.
        for (const auto& [width, height, scale] : {std::tuple{1366, 768, 1.0},
                                                   {1600, 1000, 1.5},
                                                   {1600, 1000, 2.0},
                                                   {1920, 1080, 2.0},
                                                   {2560, 1440, 1.0}}) {
            const QSize screen(qRound(width / scale), qRound(height / scale));
            const WindowSizes sizes = WindowSizes::fitting(screen);
            const QString where = u"%1x%2 at %3"_s.arg(width).arg(height).arg(scale);
            const QSize titleBarAndFrame(10, 40);
            QVERIFY2(sizes.first.boundedTo(screen - titleBarAndFrame) == sizes.first, qPrintable(where));
            QVERIFY2(sizes.least.boundedTo(sizes.first) == sizes.least, qPrintable(where));
            // No smaller than the screen makes it, and never smaller than parts of the window would be cut.
            QVERIFY2(sizes.first.width() >= std::min(1280, screen.width() * 9 / 10), qPrintable(where));
            QVERIFY2(screen.width() < 900 || screen.height() < 560 || sizes.least == QSize(800, 500),
                     qPrintable(where));
        }
        GeometryFixture fixture(findings({}));
        const QSize room = fixture.window.screen()->availableSize();
        QVERIFY(fixture.window.width() <= room.width() && fixture.window.height() < room.height());
    }

    void theSizeAndTheSplitterAreRemembered() {
        QSettings().clear();
        {
            GeometryFixture fixture(findings(alike()), true);
            QVERIFY(fixture.open());
            fixture.resizeTo(810, 640);
            auto* const splitter = qobject_cast<QSplitter*>(fixture.find("detailPane")->parentWidget());
            splitter->setSizes({300, 170});
            Q_EMIT splitter->splitterMoved(300, 1);
            QVERIFY(fixture.window.close());
        }
        GeometryFixture fixture(findings(alike()), true);
        QVERIFY(fixture.open());
        QCOMPARE(fixture.window.size(), QSize(810, 640));
        QTRY_VERIFY(std::abs(fixture.find("detailPane")->height() - 170) < 40);
    }

    void everythingHasItsPlaceInTheSmallestWindow() {
        for (const double points : {9.0, 16.0}) {
            const LargeFont font(points);
            GeometryFixture fixture(findings(alike(), manyWarnings()));
            QVERIFY(fixture.open());
            fixture.find<QPushButton>("warningsToggle")->click();
            fixture.resizeTo(1280, 760);
            fixture.resizeTo(800, 500);
            QCOMPARE(fixture.window.size(), QSize(800, 500));
            const QByteArray where = QByteArray::number(points);
            for (const char* const name :
                 {"header", "warnings", "sidebar", "dependencyTable", "detailPane"}) {
                const QWidget& part = *fixture.find(name);
                QVERIFY2(part.isVisible() && fixture.window.rect().contains(fixture.placeOf(part)),
                         where + ' ' + name);
            }
            fixture.model.putAwayWarning(manyWarnings()[0].sentence);
            for (const ScanKit::ScanWarning& warning : manyWarnings()) {
                fixture.model.putAwayWarning(warning.sentence);
            }
            QTRY_VERIFY(!fixture.find("warnings")->isVisible());
            QTest::qWait(20);
            QVERIFY2(fixture.table.height() > fixture.find("detailPane")->height(), where);
        }
    }

    void detailsBelowLeaveTheRowsTheGreaterPart() {
        // As much as details may hold: a name of several lines, flags, notes, a license text.
        ScanKit::Dependency full = flagged("@harbor/" + std::string(90, 'w'), {Flag::missing, Flag::unknown});
        full.notes = {manyWarnings()[0].sentence, manyWarnings()[1].sentence};
        full.licenseText = full.noticeText = "Permission is granted";
        for (const double points : {9.0, 13.0, 16.0, 20.0}) {
            const LargeFont font(points);
            GeometryFixture fixture(findings({full, package("pad")}));
            QVERIFY(fixture.open());
            fixture.resizeTo(800, 560);
            fixture.table.selectOnly(0);
            QTest::qWait(20);
            const auto [table, details] = fixture.heights();
            QVERIFY2(details < table, qPrintable(u"%1 points: %2, %3"_s.arg(points).arg(details).arg(table)));
        }
    }

    void whatAWindowGainsGoesMostlyToTheRows() {
        GeometryFixture fixture(findings(alike()));
        QVERIFY(fixture.open());
        fixture.resizeTo(900, 500);
        const auto [table, details] = fixture.heights();
        fixture.resizeTo(900, 1000);
        const auto [tallTable, tallDetails] = fixture.heights();
        const int gain = tallTable - table + tallDetails - details;
        QVERIFY(gain > 400);
        QVERIFY2(std::abs((tallTable - table) * 5 - gain * 3) <= 10, qPrintable(QString::number(tallTable)));
        // Beside the table the details keep their width.
        fixture.resizeTo(1600, 800);
        const int width = fixture.find("detailPane")->width();
        fixture.resizeTo(2000, 800);
        QCOMPARE(fixture.find("detailPane")->width(), width);
    }

    void aRescanLeavesTheRowsWhereTheyAre() {
        HeldScans scans;
        WindowFixture fixture(scans.function());
        scans.release(0, findings(alike(), manyWarnings()));
        QVERIFY(fixture.open());
        fixture.window.resize(1200, 700);
        auto& table = *fixture.find<DependencyTable>("dependencyTable");
        table.verticalScrollBar()->setValue(437);
        QTest::qWait(20);
        const auto place = [&] {
            return QRect(table.viewport()->mapTo(&fixture.window, QPoint()), table.viewport()->size());
        };
        const QRect before = place();
        const auto moved = [&] { return place() != before || table.verticalScrollBar()->value() != 437; };
        fixture.model.scan();
        QTest::qWait(20);
        QVERIFY(fixture.find("progress")->isVisible());
        QVERIFY2(!moved(), "while the scan runs");
        // One package more, above those in sight: the same ones stay there.
        std::vector<ScanKit::Dependency> more = alike();
        more.insert(more.begin(), package("@first"));
        scans.release(1, findings(more, manyWarnings()));
        QVERIFY(fixture.waitForScan());
        QTest::qWait(20);
        QCOMPARE(place(), before);
        QCOMPARE(table.verticalScrollBar()->value(), 437 + table.rowHeight(0));
    }

private:
    /// What the first cell of the row looks like.
    static QImage rowImage(DependencyTable& table, int row) {
        const QRect cell = table.visualRect(table.model()->index(row, 0));
        return table.viewport()->grab(cell).toImage();
    }

    TemporarySettings settings_;
};

QTEST_MAIN(WindowGeometryTest)
#include "WindowGeometryTest.moc"
