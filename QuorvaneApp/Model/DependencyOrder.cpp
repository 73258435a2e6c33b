#include "QuorvaneApp/Model/DependencyOrder.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>

namespace {

using ScanKit::Dependency;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Takes the digits that the text begins with, leading zeros left out.
std::string_view takeNumber(std::string_view& text) {
    const auto zeros = std::min(text.find_first_not_of('0'), text.size());
    text.remove_prefix(zeros);
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length])) {
        ++length;
    }
    const std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    return number;
}

/// Of any length: some packages number their versions by date and time, beyond what an integer holds.
int compareNumbers(std::string_view a, std::string_view b) {
    return a.size() != b.size() ? (a.size() < b.size() ? -1 : 1) : a.compare(b);
}

std::size_t severityOf(const Dependency& dependency) {
    return dependency.flags.empty() ? ScanKit::allFlags.size() : dependency.flags.front().position();
}

std::vector<std::string> foldedLicenses(const std::vector<Dependency>& dependencies) {
    std::vector<std::string> texts;
    texts.reserve(dependencies.size());
    for (const Dependency& dependency : dependencies) {
        texts.push_back(ScanKit::Text::lowercased(dependency.licenseDisplay()));
    }
    return texts;
}

/// Compares two rows of the project by one column.
std::function<int(int, int)> comparison(const ScannedProject& project, DependencyColumn column) {
    const auto at = [&project](int row) -> const Dependency& {
        return project.dependencies()[static_cast<std::size_t>(row)];
    };
    switch (column) {
        case DependencyColumn::package:
            return [&project](int a, int b) { return project.foldedName(a).compare(project.foldedName(b)); };
        case DependencyColumn::version:
            return [at](int a, int b) { return compareVersions(at(a).version, at(b).version); };
        case DependencyColumn::ecosystem:
            return [at](int a, int b) {
                return static_cast<int>(at(a).ecosystem) - static_cast<int>(at(b).ecosystem);
            };
        case DependencyColumn::license:
            return [texts = foldedLicenses(project.dependencies())](int a, int b) {
                return texts[static_cast<std::size_t>(a)].compare(texts[static_cast<std::size_t>(b)]);
            };
        case DependencyColumn::foundBy:
            return [at](int a, int b) {
                return ScanKit::shortLabel(at(a).basis).compare(ScanKit::shortLabel(at(b).basis));
            };
        case DependencyColumn::flag:
            return [at](int a, int b) {
                return static_cast<int>(severityOf(at(a))) - static_cast<int>(severityOf(at(b)));
            };
    }
    return [](int, int) { return 0; };
}

}  // namespace

int compareVersions(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (isDigit(a.front()) && isDigit(b.front())) {
            if (const int order = compareNumbers(takeNumber(a), takeNumber(b)); order != 0) {
                return order;
            }
            continue;
        }
        if (a.front() != b.front()) {
            return a.front() < b.front() ? -1 : 1;
        }
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

std::vector<int> sortedRows(const ScannedProject& project, DependencyColumn column, bool isDescending) {
    std::vector<int> rows(project.dependencies().size());
    std::iota(rows.begin(), rows.end(), 0);
    std::ranges::stable_sort(rows, [compare = comparison(project, column), isDescending](int a, int b) {
        return isDescending ? compare(b, a) < 0 : compare(a, b) < 0;
    });
    return rows;
}
