#include "QuorvaneApp/Model/DependencyTableModel.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "Tests/QuorvaneApp/AppFixture.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using ScanKit::Dependency;
using ScanKit::Ecosystem;
using ScanKit::Flag;

/// The rows as the table sees them.
class DependencyTableModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cellsSayWhatTheyMustInOneLine();
    void theMostSeriousFlagStandsForAll();
    void sorts_data();
    void sorts();
    void sortingOutlivesSearchingAndANewResult();
    void versionsCompareAsPeopleReadThem_data();
    void versionsCompareAsPeopleReadThem();

private:
    void show(std::vector<Dependency> dependencies) {
        found_ = findings(std::move(dependencies));
        model_->openFolder(project_.path());
        QTRY_VERIFY(!model_->scanning());
    }
    QStringList column(DependencyColumn column) const {
        QStringList cells;
        for (int row = 0; row < table_->rowCount(); ++row) {
            cells.push_back(table_->index(row, static_cast<int>(column)).data().toString());
        }
        return cells;
    }

    ProjectFolder project_;
    FakeFolderChooser chooser_;
    RecordingFileRevealer revealer_;
    ScanFindings found_;
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<DependencyTableModel> table_;
    std::unique_ptr<QAbstractItemModelTester> tester_;
};

void DependencyTableModelTest::init() {
    tester_.reset();
    table_.reset();
    model_ = std::make_unique<AppModel>(
        false, AppModel::Surroundings{
                   .folderChooser = chooser_,
                   .fileRevealer = revealer_,
                   .scan = [this](const ScanRequest&, const ScanKit::ScanControl&) { return found_; }});
    table_ = std::make_unique<DependencyTableModel>(*model_);
    tester_ = std::make_unique<QAbstractItemModelTester>(
        table_.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
}

void DependencyTableModelTest::cellsSayWhatTheyMustInOneLine() {
    Dependency odd = package("two\nlines\tand a tab", Ecosystem::swiftpm);
    odd.license.reset();
    odd.declared = "ask us\nfirst";
    odd.isDev = true;
    show({odd});
    const QString text = table_->rowText(0);
    QCOMPARE(text,
             QStringLiteral("two lines and a tab\t1.0.0\tSwift packages\tUnrecognized: ask us\tMetadata\t"));
    QCOMPARE(table_->index(0, 0).data(Qt::AccessibleTextRole).toString(),
             QStringLiteral("two lines and a tab, dev-only"));
}

void DependencyTableModelTest::theMostSeriousFlagStandsForAll() {
    show({flagged("<b>x</b>", {Flag::missing, Flag::notOnDisk}), package("fine")});
    const QModelIndex cell = table_->index(0, static_cast<int>(DependencyColumn::flag));
    QCOMPARE(cell.data().toString(), QStringLiteral("No license found"));
    QCOMPARE(cell.data(DependencyTableModel::furtherFlagsRole).toInt(), 1);
    QCOMPARE(cell.data(Qt::AccessibleTextRole).toString(),
             QStringLiteral("No license found, Not on this Mac"));
    QVERIFY(!table_->index(1, static_cast<int>(DependencyColumn::flag))
                 .data(DependencyTableModel::flagRole)
                 .isValid());
    QCOMPARE(table_->index(0, 0).data(Qt::ToolTipRole).toString(),
             QStringLiteral("<p>&lt;b&gt;x&lt;/b&gt;</p>"));
}

void DependencyTableModelTest::sorts_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isDescending");
    QTest::addColumn<QString>("order");
    const auto row = [](const char* name, DependencyColumn column, bool isDescending, const char* order) {
        QTest::newRow(name) << static_cast<int>(column) << isDescending << QString::fromUtf8(order);
    };
    row("name, letter case aside", DependencyColumn::package, false, "alpha Beta gamma Zeta");
    row("name, downwards", DependencyColumn::package, true, "Zeta gamma Beta alpha");
    row("version by its numbers", DependencyColumn::version, false, "Beta gamma Zeta alpha");
    row("equal rows keep the result's order", DependencyColumn::ecosystem, false, "gamma alpha Zeta Beta");
    row("and do so downwards", DependencyColumn::ecosystem, true, "Beta alpha Zeta gamma");
    row("license as shown", DependencyColumn::license, false, "Zeta Beta alpha gamma");
    row("the most serious flag first, none last", DependencyColumn::flag, false, "Zeta gamma alpha Beta");
}

void DependencyTableModelTest::sorts() {
    Dependency gamma = flagged("gamma", {Flag::noLicenseFile});
    gamma.ecosystem = Ecosystem::swiftpm;
    gamma.version = "1.9";
    gamma.license = "zlib";
    Dependency alpha = package("alpha");
    alpha.version = "10.0";
    Dependency zeta = flagged("Zeta", {Flag::missing});
    zeta.version = "1.10";
    zeta.license = "Apache-2.0";
    Dependency beta = package("Beta", Ecosystem::python);
    beta.version = "1.2";
    beta.license = "bsd";
    show({gamma, alpha, zeta, beta});
    QFETCH(int, column);
    QFETCH(bool, isDescending);
    QFETCH(QString, order);
    table_->sort(column, isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    QCOMPARE(this->column(DependencyColumn::package).join(QLatin1Char(' ')), order);
    table_->sort(-1);
    QCOMPARE(this->column(DependencyColumn::package).join(QLatin1Char(' ')),
             QStringLiteral("gamma alpha Zeta Beta"));
}

void DependencyTableModelTest::sortingOutlivesSearchingAndANewResult() {
    show({package("cab"), package("abc"), package("bca"), package("xyz")});
    table_->sort(static_cast<int>(DependencyColumn::package));
    model_->setSearch(QStringLiteral("a"));
    QCOMPARE(column(DependencyColumn::package),
             (QStringList{QStringLiteral("abc"), QStringLiteral("bca"), QStringLiteral("cab")}));
    QCOMPARE(table_->resultRow(0), 1);
    QCOMPARE(*table_->tableRow(0), 2);
    QVERIFY(!table_->tableRow(3));
    QVERIFY(!table_->tableRow(99));
    found_ = findings({package("za"), package("aa")});
    model_->scan();
    QTRY_COMPARE(column(DependencyColumn::package),
                 (QStringList{QStringLiteral("aa"), QStringLiteral("za")}));
}

void DependencyTableModelTest::versionsCompareAsPeopleReadThem_data() {
    QTest::addColumn<QByteArray>("smaller");
    QTest::addColumn<QByteArray>("greater");
    QTest::newRow("numbers, not letters") << QByteArray("1.9") << QByteArray("1.10");
    QTest::newRow("a part more") << QByteArray("1.0") << QByteArray("1.0.1");
    QTest::newRow("nothing first") << QByteArray() << QByteArray("0");
    QTest::newRow("beyond any integer")
        << QByteArray("1.99999999999999999999") << QByteArray("1.100000000000000000000");
    QTest::newRow("leading zeros aside") << QByteArray("1.007") << QByteArray("1.8");
    QTest::newRow("words") << QByteArray("1.0-alpha") << QByteArray("1.0-beta");
}

void DependencyTableModelTest::versionsCompareAsPeopleReadThem() {
    QFETCH(QByteArray, smaller);
    QFETCH(QByteArray, greater);
    QVERIFY(compareVersions(smaller.toStdString(), greater.toStdString()) < 0);
    QVERIFY(compareVersions(greater.toStdString(), smaller.toStdString()) > 0);
    QCOMPARE(compareVersions(smaller.toStdString(), smaller.toStdString()), 0);
}

QTEST_GUILESS_MAIN(DependencyTableModelTest)
#include "DependencyTableModelTest.moc"
