/// Typing in the search field of the real window over 30,000 packages: each round is one key, from the change
/// of the text to the table painted anew. One frame of a 60 Hz screen is 16 ms.

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/MainWindow.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "QuorvaneApp/Platform/FolderChooser.h"
#include "QuorvaneApp/Updates/UpdaterController.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

namespace {

constexpr int packageCount = 30000;

class NoPanels : public FolderChooser {
public:
    void choose(const FolderQuestion&, Answer) override {}
};

class NoFileManager : public FileRevealer {
public:
    void reveal(const std::vector<std::filesystem::path>&) override {}
};

class NoUpdates : public UpdaterController {
public:
    std::optional<QUrl> feedURL() const override { return std::nullopt; }
    void checkForUpdates() override {}
    bool automaticallyChecksForUpdates() const override { return false; }
    void setAutomaticallyChecksForUpdates(bool) override {}
};

/// Names that share their beginnings, so that the first keys keep nearly all rows and the next ones scatter
/// them.
ScanFindings manyPackages() {
    constexpr std::array licenses{"MIT", "Apache-2.0", "BSD-3-Clause", "GPL-3.0-only", "MPL-2.0"};
    constexpr std::array stems{"package", "parser", "@scope/particle", "helper", "toolkit"};
    ScanFindings found;
    for (std::size_t i = 0; i < packageCount; ++i) {
        ScanKit::Dependency dependency{.ecosystem = ScanKit::Ecosystem::npm,
                                       .name = stems[i * 7 % stems.size()] + std::to_string(i),
                                       .version = "1." + std::to_string(i % 40),
                                       .license = licenses[i % licenses.size()],
                                       .category = ScanKit::LicenseCategory::permissive};
        if (i % 9 == 0) {
            dependency.flags = {ScanKit::Flag::noLicenseFile};
        }
        found.result.dependencies.push_back(std::move(dependency));
    }
    return found;
}

enum class Rows { inOrder, sorted, allSelected };

void typing(benchmark::State& state, Rows rows) {
    NoPanels panels;
    NoFileManager fileManager;
    AppModel model(false, {.folderChooser = panels,
                           .fileRevealer = fileManager,
                           .scan = [](const auto&, const auto&) { return manyPackages(); }});
    AppCommands commands(model);
    NoUpdates updates;
    MainWindow window(model, commands, updates, [](const QString&) {});
    window.resize(1600, 1000);
    window.show();
    model.openFolder(std::filesystem::temp_directory_path());
    while (model.scanning()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    auto& table = *window.findChild<QTableView*>(QStringLiteral("dependencyTable"));
    auto& search = *window.findChild<QLineEdit*>(QStringLiteral("search"));
    if (rows == Rows::sorted) {
        table.sortByColumn(3, Qt::DescendingOrder);
    } else if (rows == Rows::allSelected) {
        table.selectAll();
    }
    QCoreApplication::processEvents();

    const QStringList typed{QStringLiteral("p"),    QStringLiteral("pa"), QStringLiteral("par"),
                            QStringLiteral("pa"),   QStringLiteral("p"),  QString(),
                            QStringLiteral("m"),    QStringLiteral("mi"), QStringLiteral("mit"),
                            QStringLiteral("mit "), QStringLiteral("9"),  QString()};
    qsizetype key = 0;
    double slowest = 0;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        search.setText(typed[key]);
        QCoreApplication::processEvents();  // paints what the key changed
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
        slowest = std::max(slowest, taken.count());
        key = (key + 1) % typed.size();
    }
    state.counters["slowest_ms"] = slowest;
}

BENCHMARK_CAPTURE(typing, in_order, Rows::inOrder)->Unit(benchmark::kMillisecond)->Iterations(240);
BENCHMARK_CAPTURE(typing, sorted, Rows::sorted)->Unit(benchmark::kMillisecond)->Iterations(240);
BENCHMARK_CAPTURE(typing, all_selected, Rows::allSelected)->Unit(benchmark::kMillisecond)->Iterations(240);

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
