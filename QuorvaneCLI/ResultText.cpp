#include "QuorvaneCLI/ResultText.h"

#include "QuorvaneCLI/ResultTable.h"
#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <map>
#include <vector>

#include <fmt/format.h>

namespace {

using ScanKit::Dependency;
using Dependencies = std::vector<const Dependency*>;

/// How many packages the last lines name for each flag; the notes above name them all.
constexpr std::size_t namedForAFlag = 3;

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

std::string nameAndVersion(const Dependency& dependency) {
    const std::string name = Terminal::safe(dependency.name);
    return dependency.version.empty() ? name : name + " " + Terminal::safe(dependency.version);
}

/// "anchor 3.3.0", or "bell-buoy 2.0.1 (dev)".
std::string markedName(const Dependency& dependency) {
    return nameAndVersion(dependency) + (dependency.isDev ? " (dev)" : "");
}

/// "anchor 3.3.0 (GPL-3.0-only)", or "bell-buoy 2.0.1 (dev; GPL-3.0-only)".
std::string named(const Dependency& dependency) {
    return fmt::format("{} ({}{})", nameAndVersion(dependency), dependency.isDev ? "dev; " : "",
                       Terminal::safe(dependency.licenseDisplay()));
}

std::vector<std::string> namesOf(const Dependencies& dependencies, std::string (&name)(const Dependency&)) {
    std::vector<std::string> names;
    std::ranges::transform(dependencies, std::back_inserter(names),
                           [&](const Dependency* dependency) { return name(*dependency); });
    return names;
}

/// The first few names, and how many more there are.
std::string firstNames(const Dependencies& dependencies) {
    std::vector<std::string> names = namesOf(dependencies, markedName);
    // One more is named in the place that "and 1 more" would take.
    if (names.size() <= namedForAFlag + 1) {
        return ScanKit::Text::joined(names, ", ");
    }
    names.resize(namedForAFlag);
    return fmt::format("{} and {} more", ScanKit::Text::joined(names, ", "),
                       dependencies.size() - namedForAFlag);
}

/// A note and the packages that have it.
struct SharedNote {
    std::string note;
    Dependencies dependencies;
};

/// The notes in the order in which packages come to them. A package without one stands under its flags.
std::vector<SharedNote> sharedNotes(const Dependencies& dependencies) {
    std::vector<SharedNote> notes;
    std::map<std::string, std::size_t> places;
    for (const Dependency* dependency : dependencies) {
        const bool hasNotes = !dependency->notes.empty();
        for (const std::string& note :
             hasNotes ? dependency->notes : std::vector{dependency->flagLabels("; ") + "."}) {
            const auto [place, isNew] = places.try_emplace(note, notes.size());
            if (isNew) {
                notes.push_back({note, {}});
            }
            notes[place->second].dependencies.push_back(dependency);
        }
    }
    return notes;
}

class ResultPrinter {
public:
    ResultPrinter(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                  const TextStyle& style)
        : result_(result),
          options_(options),
          style_(style),
          dependencies_(reportedDependencies(result, options)) {
        std::ranges::copy_if(dependencies_, std::back_inserter(toReview_), &Dependency::needsReview);
    }

    std::string text() {
        printTitle();
        printSources();
        if (!dependencies_.empty()) {
            text_ += resultTable(dependencies_, style_) + "\n";
        }
        printNotes();
        printSummary();
        printAnswer();
        return std::move(text_);
    }

private:
    void heading(std::string_view text) { text_ += style_.bold(text) + "\n"; }
    void print(std::string_view text, std::string_view first, std::string_view next) {
        text_ += style_.paragraph(text, first, next);
    }

    void printTitle() {
        heading(Terminal::safe(options_.projectName));
        text_ += Terminal::safe(result_.rootPath) + "\n\n";
    }

    void printSources() {
        if (result_.sources.empty()) {
            print(
                "No dependency files were found here (Package.resolved; package.json with the lockfile of npm, pnpm, Yarn or Bun; requirements.txt; the lockfile of Poetry, uv, PDM or Pipenv; a virtual environment).",
                "", "");
            text_ += "\n";
            return;
        }
        heading("Found");
        for (const ScanKit::ScanSource& source : result_.sources) {
            const std::string entries = source.entries ? "; " + inWords(*source.entries) : "";
            print(fmt::format("{} ({}{})", Terminal::safe(source.path), Terminal::safe(source.kind), entries),
                  fmt::format("  {:<14}  ", label(source.ecosystem)), std::string(18, ' '));
        }
        text_ += "\n";
    }

    void printNotes() {
        if (toReview_.empty()) {
            return;
        }
        heading("Needs review");
        for (const SharedNote& shared : sharedNotes(toReview_)) {
            print(Terminal::safe(shared.note), "  ", "  ");
            text_ += style_.list(namesOf(shared.dependencies, named), "      ");
            text_ += "\n";
        }
    }

    void printSummary() {
        heading("Summary");
        printAccount();
        if (!options_.includeDev) {
            const auto isDev = [](const Dependency& one) { return one.isDev; };
            const auto left = static_cast<std::size_t>(std::ranges::count_if(result_.dependencies, isDev));
            if (left > 0) {
                print(counted(left, "dev-only package is", "dev-only packages are") +
                          " left out (--include-dev reports them too)",
                      "  ", "  ");
            }
        }
        if (!result_.warnings.empty()) {
            print(counted(result_.warnings.size(), "warning is", "warnings are") +
                      " printed before this report",
                  "  ", "  ");
        }
        print("This is information, not legal advice.", "  ", "  ");
    }

    /// Every reported dependency counts in exactly one of these.
    void printAccount() {
        std::size_t withText = 0, withoutText = 0, notOnDisk = 0, noLicense = 0;
        for (const Dependency* dependency : dependencies_) {
            if (dependency->has(ScanKit::Flag::notOnDisk)) {
                ++notOnDisk;
            } else if (!dependency->license) {
                ++noLicense;
            } else if (dependency->licenseText) {
                ++withText;
            } else {
                ++withoutText;
            }
        }
        if (!dependencies_.empty()) {
            print(fmt::format("{} with license text, {} without, {} not on disk, {} with no license",
                              withText, withoutText, notOnDisk, noLicense),
                  "  ", "  ");
        }
    }

    /// What needs a decision stands last, where the eye is when a long report has run through.
    void printAnswer() {
        text_ += "\n";
        if (dependencies_.empty()) {
            heading("No dependencies to report.");
            return;
        }
        const std::size_t count = toReview_.size();
        heading(counted(dependencies_.size(), "dependency", "dependencies") + ": " +
                (count == 0 ? "nothing needs review" : counted(count, "needs review", "need review")));
        for (const ScanKit::Flag flag : ScanKit::allFlags) {
            if (severity(flag) == ScanKit::Flag::Severity::low) {
                continue;  // it calls for no review
            }
            Dependencies flagged;
            std::ranges::copy_if(toReview_, std::back_inserter(flagged),
                                 [&](const Dependency* one) { return one->has(flag); });
            if (!flagged.empty()) {
                printFlag(flag, flagged);
            }
        }
    }

    void printFlag(ScanKit::Flag flag, const Dependencies& flagged) {
        const std::string count = fmt::format("  {:>4}  ", flagged.size());
        std::string lines = style_.paragraph(fmt::format("{}: {}", label(flag), firstNames(flagged)), count,
                                             std::string(count.size(), ' '));
        // Coloured when the lines are made, for an escape takes no room; on a narrow terminal it may be in two lines.
        if (lines.compare(count.size(), label(flag).size(), label(flag)) == 0) {
            lines.replace(count.size(), label(flag).size(), style_.flag(flag));
        }
        text_ += lines;
    }

    const ScanKit::ScanResult& result_;
    const ScanKit::ReportOptions& options_;
    const TextStyle& style_;
    Dependencies dependencies_, toReview_;
    std::string text_;
};

/// "the project → express@4.18.2 → cookie@0.5.0", or that nobody can tell.
std::string wayText(const Dependency& dependency) {
    if (dependency.way.empty()) {
        return "No file that was read says who needs it.";
    }
    std::string text = "the project";
    for (const std::string& step : dependency.way) {
        text += " → " + Terminal::safe(step);
    }
    return text;
}

}  // namespace

std::string whyText(const ScanKit::ScanResult& result, std::string_view name, const TextStyle& style) {
    std::string text;
    for (const Dependency& dependency : result.dependencies) {
        if (dependency.name == name) {
            text += fmt::format("  {} {} ({}{})\n", Terminal::safe(dependency.name),
                                Terminal::safe(dependency.version), label(dependency.ecosystem),
                                dependency.isDev ? ", dev-only" : "");
            text += style.paragraph(wayText(dependency), "    ", "      ");
        }
    }
    return text.empty() ? fmt::format("No dependency is named {}.\n", Terminal::safe(name)) : text;
}

std::string resultText(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                       const TextStyle& style) {
    return ResultPrinter(result, options, style).text();
}
