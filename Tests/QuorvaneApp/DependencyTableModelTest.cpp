#include "QuorvaneApp/Model/DependencyTableModel.h"

#include "Tests/QuorvaneApp/AppFixture.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using ScanKit::Dependency;
using ScanKit::Ecosystem;
using ScanKit::Flag;
using Column = DependencyColumn;

namespace {

/// The table over a model whose next scan finds what the test says.
struct TableFixture : ModelFixture {
    TableFixture()
        : ModelFixture([this](const ScanRequest&, const ScanKit::ScanControl&) { return found; }),
          table(model) {}

    bool show(std::vector<Dependency> dependencies) {
        found = findings(std::move(dependencies));
        return open();
    }
    QModelIndex cell(int row, Column column) const { return table.index(row, static_cast<int>(column)); }
    /// The names in the order shown, with blanks between them.
    QString names() const {
        QStringList names;
        for (int row = 0; row < table.rowCount(); ++row) {
            names.push_back(cell(row, Column::package).data().toString());
        }
        return names.join(u' ');
    }

    ScanFindings found;
    DependencyTableModel table;
    QAbstractItemModelTester tester{&table, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

Dependency row(const char* name, Ecosystem ecosystem, const char* version, const char* license,
               std::vector<Flag> flags = {}) {
    Dependency dependency = flagged(name, std::move(flags));
    dependency.ecosystem = ecosystem;
    dependency.version = version;
    dependency.license = license;
    return dependency;
}

}  // namespace

/// The rows as the table sees them.
class DependencyTableModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cellsSayWhatTheyMustInOneLineAndTheGravestFlagStandsForAll() {
        TableFixture fixture;
        Dependency odd = flagged("two\nlines\tand <b>a tab</b>", {Flag::missing, Flag::notOnDisk});
        odd.license.reset();
        odd.declared = "ask us\nfirst";
        odd.isDev = true;
        QVERIFY(fixture.show({odd, package("fine")}));
        QCOMPARE(
            fixture.table.rowText(0),
            u"two lines and <b>a tab</b>\t1.0.0\tnpm\tUnrecognized: ask us\tMetadata\tNo license found, Not on this Mac"_s);
        const QModelIndex name = fixture.cell(0, Column::package);
        QCOMPARE(name.data(Qt::AccessibleTextRole).toString(), u"two lines and <b>a tab</b>, dev-only"_s);
        const QString tip = name.data(Qt::ToolTipRole).toString();
        QVERIFY2(tip.contains(u"&lt;b&gt;a"_s) && !tip.contains(u"<b>"_s), qPrintable(tip));
        const QModelIndex flag = fixture.cell(0, Column::flag);
        QCOMPARE(flag.data(DependencyTableModel::furtherFlagsRole).toInt(), 1);
        QCOMPARE(flag.data(Qt::AccessibleTextRole).toString(), u"No license found, Not on this Mac"_s);
        QVERIFY(!fixture.cell(1, Column::flag).data(DependencyTableModel::flagRole).isValid());
    }

    void sorts() {
        TableFixture fixture;
        const QString resultOrder = u"gamma alpha Zeta Beta"_s;
        QVERIFY(fixture.show({row("gamma", Ecosystem::swiftpm, "1.9", "zlib", {Flag::noLicenseFile}),
                              row("alpha", Ecosystem::npm, "10.0", "MIT"),
                              row("Zeta", Ecosystem::npm, "1.10", "Apache-2.0", {Flag::missing}),
                              row("Beta", Ecosystem::python, "1.2", "bsd")}));
        struct Row {
            const char* name;
            Column column;
            QString names;
            Qt::SortOrder order = Qt::AscendingOrder;
        };
        for (const Row& row : {
                 Row{"name, letter case aside", Column::package, u"alpha Beta gamma Zeta"_s},
                 Row{"name, downwards", Column::package, u"Zeta gamma Beta alpha"_s, Qt::DescendingOrder},
                 Row{"version by its numbers", Column::version, u"Beta gamma Zeta alpha"_s},
                 Row{"equal rows as found", Column::ecosystem, u"gamma alpha Zeta Beta"_s},
                 Row{"downwards, too", Column::ecosystem, u"Beta alpha Zeta gamma"_s, Qt::DescendingOrder},
                 Row{"license as shown", Column::license, u"Zeta Beta alpha gamma"_s},
                 Row{"the gravest flag first", Column::flag, u"Zeta gamma alpha Beta"_s},
             }) {
            fixture.table.sort(static_cast<int>(row.column), row.order);
            QCOMPARE(at(row.name, fixture.names()), at(row.name, row.names));
            fixture.table.sort(-1);
            QCOMPARE(fixture.names(), resultOrder);
        }
    }

    void sortingOutlivesSearchingAndANewResult() {
        TableFixture fixture;
        QVERIFY(fixture.show({package("cab"), package("abc"), package("bca"), package("xyz")}));
        fixture.table.sort(static_cast<int>(Column::package));
        fixture.model.setSearch(u"a"_s);
        QCOMPARE(fixture.names(), u"abc bca cab"_s);
        QCOMPARE(fixture.table.resultRow(0), 1);
        QCOMPARE(fixture.table.tableRow(0).value_or(-1), 2);
        QVERIFY(!fixture.table.tableRow(3) && !fixture.table.tableRow(99));
        fixture.found = findings({package("za"), package("aa")});
        fixture.model.scan();
        QTRY_COMPARE(fixture.names(), u"aa za"_s);
    }

    void versionsCompareAsPeopleReadThem() {
        for (const auto& [smaller, greater] : {
                 std::pair{"1.9", "1.10"},
                 {"1.0", "1.0.1"},
                 {"", "0"},
                 {"1.99999999999999999999", "1.100000000000000000000"},
                 {"1.007", "1.8"},
                 {"1.0-alpha", "1.0-beta"},
             }) {
            QVERIFY2(compareVersions(smaller, greater) < 0, greater);
            QVERIFY2(compareVersions(greater, smaller) > 0, greater);
            QVERIFY2(compareVersions(smaller, smaller) == 0, smaller);
        }
    }
};

QTEST_GUILESS_MAIN(DependencyTableModelTest)
#include "DependencyTableModelTest.moc"
