#include "QuorvaneApp/Views/Results/SortCommands.h"

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"

#include <array>

#include <QAction>
#include <QHeaderView>

namespace {

struct SortRow {
    Command command;
    DependencyColumn column;
};
constexpr auto sortRows = std::to_array<SortRow>({
    {Command::sortByPackage, DependencyColumn::package},
    {Command::sortByVersion, DependencyColumn::version},
    {Command::sortByEcosystem, DependencyColumn::ecosystem},
    {Command::sortByLicense, DependencyColumn::license},
    {Command::sortByFoundBy, DependencyColumn::foundBy},
    {Command::sortByFlag, DependencyColumn::flag},
});

/// Marks the action while the table is sorted by the section; -1 means the result's own order.
void markWhenSortedBy(int section, QAction& action, const QHeaderView& header) {
    const auto mark = [&action, &header, section] {
        action.setChecked(header.sortIndicatorSection() == section);
    };
    action.setCheckable(true);
    QObject::connect(&header, &QHeaderView::sortIndicatorChanged, &action, mark);
    // Choosing the marked one would take its mark away.
    QObject::connect(&action, &QAction::triggered, &action, mark);
    mark();
}

}  // namespace

void connectSorting(const AppCommands& commands, DependencyTable& table) {
    for (const SortRow& row : sortRows) {
        QAction* const action = commands.action(row.command);
        QObject::connect(action, &QAction::triggered, &table,
                         [&table, column = row.column] { table.sortBy(column); });
        markWhenSortedBy(static_cast<int>(row.column), *action, *table.horizontalHeader());
    }
    QAction* const original = commands.action(Command::sortByResultOrder);
    QObject::connect(original, &QAction::triggered, &table, &DependencyTable::sortByResultOrder);
    markWhenSortedBy(-1, *original, *table.horizontalHeader());
}
