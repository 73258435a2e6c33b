#pragma once

#include "ScanKit/Model/Dependency.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ScanKit {

/// The notes that more than one package has. A report says each of them once, under a number that the packages refer
/// to, so that what stands at a package is particular to it. Points into the packages' notes.
class PDFSharedNotes {
public:
    explicit PDFSharedNotes(const std::vector<const Dependency*>& dependencies);

    struct Note {
        std::string_view text;
        std::size_t packages = 0;  ///< that have it
    };
    /// In the order of their numbers, which count from 1: first those of packages that need review.
    const std::vector<Note>& notes() const { return notes_; }
    /// The numbers of the package's notes: "1, 3". Empty when it shares none.
    std::string numbersOf(const Dependency& dependency) const;
    /// The notes that the package has for itself.
    std::vector<std::string_view> particularOf(const Dependency& dependency) const;

private:
    std::vector<Note> notes_;
    std::unordered_map<std::string_view, std::size_t> numbers_;
};

}  // namespace ScanKit
