#include "QuorvaneApp/Model/DependencyOrder.h"
#include "QuorvaneApp/Views/Controls/PaddedStyle.h"
#include "Tests/QuorvaneApp/WindowFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <QTextDocumentFragment>
#include <QToolTip>

using ScanKit::Flag;
using Column = DependencyColumn;

namespace {

/// Remembers what the header writes, and how much room the style gives it there.
class RecordingStyle : public PaddedStyle {
public:
    struct Words {
        int section;
        QString text;
        int width;
        int room;
    };

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_HeaderLabel) {
            const auto& header = *qstyleoption_cast<const QStyleOptionHeader*>(option);
            written.push_back({header.section, header.text, header.fontMetrics.horizontalAdvance(header.text),
                               header.rect.width()});
        }
        PaddedStyle::drawControl(element, option, painter, widget);
    }

    mutable std::vector<Words> written;
};

struct CutTextFixture : ResultsFixture {
    explicit CutTextFixture(std::vector<ScanKit::Dependency> packages)
        : ResultsFixture(alwaysFinding(findings(std::move(packages)))) {}

    QRect cell(int row, Column column) const {
        return table.visualRect(table.model()->index(row, static_cast<int>(column)));
    }
    void setWidth(Column column, int width) { table.setColumnWidth(static_cast<int>(column), width); }
    /// What the tool tip says when the mouse rests on the place; empty when none is shown.
    static QString toolTipAt(QWidget& widget, const QPoint& place) {
        QToolTip::hideText();
        if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); })) {
            return u"the one before does not go"_s;
        }
        QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
        QApplication::sendEvent(&widget, &event);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    }
};

}  // namespace

/// Where there is less room than words: what is left of them, and where the rest is said.
class CutTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void headingsEndInAnEllipsisWhereTheyAreCut() {
        RecordingStyle style;
        CutTextFixture fixture({package("pad")});
        QVERIFY(fixture.open());
        fixture.window.resize(1900, 700);
        QHeaderView& header = *fixture.table.horizontalHeader();
        header.setStyle(&style);
        QMultiHash<int, bool> isWhole;
        for (const int sorted : {-1, 0, 2}) {
            header.setSortIndicator(sorted, Qt::AscendingOrder);
            for (int width = header.minimumSectionSize(); width < 160; width += 3) {
                for (int section = 0; section < header.count(); ++section) {
                    header.resizeSection(section, width);
                }
                style.written.clear();
                header.grab();
                for (const RecordingStyle::Words& words : style.written) {
                    const QString whole =
                        header.model()->headerData(words.section, Qt::Horizontal).toString();
                    const QString where = u"%1 at %2: %3"_s.arg(whole).arg(width).arg(words.text);
                    QVERIFY2(words.width <= words.room, qPrintable(where));
                    // Beside the arrow of the sorting there may be no room even for that.
                    const bool hasNoRoom = words.text.isEmpty() && words.room < 20;
                    QVERIFY2(words.text == whole || words.text.endsWith(u'…') || hasNoRoom,
                             qPrintable(where));
                    isWhole.insert(words.section, words.text == whole);
                }
            }
        }
        for (int section = 0; section < header.count(); ++section) {
            QVERIFY2(isWhole.contains(section, true) && isWhole.contains(section, false),
                     qPrintable(QString::number(section)));
        }
    }

    void whatThereIsNoRoomForGivesWayToTheRest() {
        const LargeFont font(16);
        CutTextFixture fixture({flagged("@harbor/plugin-transform-of-the-tides-" + std::string(30, 'w'),
                                        {Flag::mismatch, Flag::notOnDisk}),
                                package("pad")});
        QVERIFY(fixture.open());
        QHeaderView& header = *fixture.table.horizontalHeader();
        const auto cutHeadings = [&header] {
            int cut = 0;
            for (int section = 0; section < header.count(); ++section) {
                const QString whole = header.model()->headerData(section, Qt::Horizontal).toString();
                const bool isCut =
                    header.sectionSize(section) < header.fontMetrics().horizontalAdvance(whole) + 16;
                cut += !header.isSectionHidden(section) && isCut ? 1 : 0;
            }
            return cut;
        };
        const auto isHidden = [&header](Column column) {
            return header.isSectionHidden(static_cast<int>(column));
        };
        for (int width = 1600; width >= 800; width -= 100) {
            fixture.window.resize(width, 700);
            QTest::qWait(20);
            const QByteArray where = QByteArray::number(width);
            QVERIFY2(!fixture.table.horizontalScrollBar()->isVisible(), where);
            QVERIFY2(isHidden(Column::foundBy) || !isHidden(Column::ecosystem), where);
            QVERIFY2(width < 1600 || header.hiddenSectionCount() == 0, where);
            QVERIFY2(width < 1200 || cutHeadings() == 0, where);
            QVERIFY2(fixture.search.width() >
                         fixture.search.fontMetrics().horizontalAdvance(fixture.search.placeholderText()) + 8,
                     where);
        }
        QVERIFY(isHidden(Column::foundBy));
        // What is copied has all columns, and the keys pass the hidden ones by.
        fixture.table.selectOnly(1);
        QCOMPARE(fixture.table.selectedText(), u"pad\t1.0.0\tnpm\tMIT\tMetadata\t"_s);
        for (int step = header.hiddenSectionCount() + 1; step < header.count(); ++step) {
            QTest::keyClick(&header, Qt::Key_Right);
        }
        QTest::keyClick(&header, Qt::Key_Space);
        QCOMPARE(header.sortIndicatorSection(), static_cast<int>(Column::flag));
    }

    void aColumnThatWasMadeWiderTakesNoOtherAway() {
        CutTextFixture fixture({package("pad")});
        QVERIFY(fixture.open());
        QHeaderView& header = *fixture.table.horizontalHeader();
        header.resizeSection(static_cast<int>(Column::package), 2000);
        fixture.window.resize(1500, 700);
        QTRY_VERIFY(fixture.table.horizontalScrollBar()->isVisible());
        QCOMPARE(header.hiddenSectionCount(), 0);
        QCOMPARE(header.sectionSize(static_cast<int>(Column::package)), 2000);
    }

    void aLongNameIsWholeOrEndsInAnEllipsisAboveTheDetails() {
        const LargeFont font(16);
        const QString several =
            u"@harbor/plugin-transform-of-the-tides-in-the-harbor-with-many-boats-and-long-nights"_s;
        const QString unbroken = QString(60, u'w');
        CutTextFixture fixture({package(several.toStdString()), package(unbroken.toStdString())});
        QVERIFY(fixture.open());
        QLabel* label = nullptr;
        for (QLabel* const one : fixture.find("detailPane")->findChildren<QLabel*>()) {
            label = one->accessibleName() == u"Selected package"_s ? one : label;
        }
        QVERIFY(label != nullptr);
        const auto shown = [&](int row) {
            fixture.table.selectOnly(row);
            QTest::qWait(20);
            const QString& name = row == 0 ? several : unbroken;
            const QRect room(0, 0, label->width(), label->height());
            const QRect words = label->fontMetrics().boundingRect(
                room, label->wordWrap() ? Qt::TextWordWrap : 0, label->text());
            if (words.width() > room.width() || words.height() > room.height()) {
                return u"torn"_s;
            }
            const bool isCut = label->text().contains(u'…') && !label->toolTip().isEmpty();
            return label->text() == name ? u"whole"_s : (isCut ? u"cut"_s : u"wrong"_s);
        };
        QStringList names;
        for (const QSize size : {QSize(2400, 900), QSize(800, 500), QSize(900, 1000), QSize(820, 560)}) {
            fixture.window.resize(size);
            names << shown(0) << shown(1);
        }
        QCOMPARE(names.join(u' '), u"whole cut cut cut whole cut cut cut"_s);
    }

    void furtherFlagsAreCountedBesideACutOneAndCopied() {
        CutTextFixture fixture({flagged("a", {Flag::mismatch}),
                                flagged("b", {Flag::mismatch, Flag::weakCopyleft}),
                                flagged("c", {Flag::mismatch, Flag::weakCopyleft, Flag::notOnDisk})});
        QVERIFY(fixture.open());
        const auto look = [&](int row) {
            return fixture.table.viewport()->grab(fixture.cell(row, Column::flag)).toImage();
        };
        for (int width = 400; width > 90; width -= 30) {
            fixture.setWidth(Column::flag, width);
            // The same flag first: what tells them apart is the number behind it, to its last digit.
            const QByteArray where = QByteArray::number(width);
            QVERIFY2(look(0) != look(1), where);
            QVERIFY2(look(1) != look(2), where);
        }
        fixture.table.selectOnly(2);
        fixture.table.copy();
        QVERIFY2(QApplication::clipboard()->text().endsWith(
                     u"\tMetadata and file disagree, Weak copyleft, Not on this Mac"_s),
                 qPrintable(QApplication::clipboard()->text()));
    }

    void toolTipsSayWhatIsCutAndNothingElse() {
        const QString name = u"@harbor/plugin-transform-of-the-tides"_s;
        CutTextFixture fixture(
            {flagged(name.toStdString(), {Flag::missing, Flag::notOnDisk}), flagged("b", {Flag::missing})});
        QVERIFY(fixture.open());
        fixture.window.resize(1900, 700);
        QWidget& cells = *fixture.table.viewport();
        const auto tip = [&](int row, Column column) {
            return CutTextFixture::toolTipAt(cells, fixture.cell(row, column).center());
        };
        for (const int width : {600, 90, 600}) {
            fixture.setWidth(Column::package, width);
            QCOMPARE(tip(0, Column::package), width == 90 ? name : QString());
            QCOMPARE(tip(1, Column::package), QString());
        }
        fixture.setWidth(Column::flag, 400);
        QCOMPARE(tip(0, Column::flag), u"No license found, Not on this Mac"_s);
        QCOMPARE(tip(1, Column::flag), QString());
        // The folder's path in the header, too, is a tool tip only where it is cut.
        QTemporaryDir place;
        const QString folder = place.filePath(QString(60, u'h') + u'/' + QString(60, u'g'));
        QVERIFY(QDir().mkpath(folder));
        fixture.model.openFolder(folder.toStdString());
        QVERIFY(fixture.waitForScan());
        for (const int width : {2600, 820}) {
            fixture.window.resize(width, 700);
            QTest::qWait(20);
            for (QLabel* const label : fixture.find("header")->findChildren<QLabel*>()) {
                const QString whole = label->accessibleName();
                const bool isCut = label->fontMetrics().horizontalAdvance(whole) > label->width();
                QVERIFY(isCut == (width == 820));
                QCOMPARE(CutTextFixture::toolTipAt(*label, label->rect().center()),
                         isCut ? whole : QString());
            }
        }
        // No button's tool tip is what stands on it.
        fixture.table.selectOnly(0);
        QTest::qWait(20);
        for (const QAbstractButton* const button : fixture.window.findChildren<QAbstractButton*>()) {
            QVERIFY2(button->text().isEmpty() || !button->toolTip().contains(button->text()),
                     qPrintable(button->text()));
        }
    }
};

QTEST_MAIN(CutTextTest)
#include "CutTextTest.moc"
