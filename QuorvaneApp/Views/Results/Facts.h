#pragma once

#include "ScanKit/Model/ScanResult.h"

#include <vector>

#include <QString>

/// What the detail pane tells of a dependency, in words; decided here, apart from how it is drawn.
namespace Facts {

struct Fact {
    QString title;
    QString text;
    bool operator==(const Fact&) const = default;
};

/// The facts that there are, in the order shown; flags, notes and the source are told apart from them.
std::vector<Fact> of(const ScanKit::Dependency& dependency);
/// The lockfile that names the package. Empty unless the result proves it: where one lockfile alone was read of the
/// package's ecosystem, and every package of that ecosystem is one of its entries.
QString namedIn(const ScanKit::ScanResult& result, const ScanKit::Dependency& dependency);
/// The display names of the licenses in the text of a license column, such as "MIT License"; empty when they
/// add nothing to the text itself.
QString displayNames(const QString& license);

}  // namespace Facts
