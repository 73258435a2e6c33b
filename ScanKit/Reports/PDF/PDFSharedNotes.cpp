#include "ScanKit/Reports/PDF/PDFSharedNotes.h"

#include <set>

namespace ScanKit {

PDFSharedNotes::PDFSharedNotes(const std::vector<const Dependency*>& dependencies) {
    std::unordered_map<std::string_view, std::size_t> counts;
    for (const Dependency* dependency : dependencies) {
        const std::set<std::string_view> notes(dependency->notes.begin(), dependency->notes.end());
        for (const std::string_view note : notes) {
            ++counts[note];
        }
    }
    for (const bool needsReview : {true, false}) {
        for (const Dependency* dependency : dependencies) {
            if (dependency->needsReview() != needsReview) {
                continue;
            }
            for (const std::string& note : dependency->notes) {
                if (counts[note] > 1 && numbers_.try_emplace(note, notes_.size() + 1).second) {
                    notes_.push_back({.text = note, .packages = counts[note]});
                }
            }
        }
    }
}

std::string PDFSharedNotes::numbersOf(const Dependency& dependency) const {
    std::set<std::size_t> numbers;
    for (const std::string& note : dependency.notes) {
        if (const auto found = numbers_.find(note); found != numbers_.end()) {
            numbers.insert(found->second);
        }
    }
    std::string list;
    for (const std::size_t number : numbers) {
        list += (list.empty() ? "" : ", ") + std::to_string(number);
    }
    return list;
}

std::vector<std::string_view> PDFSharedNotes::particularOf(const Dependency& dependency) const {
    std::vector<std::string_view> particular;
    for (const std::string& note : dependency.notes) {
        if (!numbers_.contains(note)) {
            particular.emplace_back(note);
        }
    }
    return particular;
}

}  // namespace ScanKit
