#pragma once

#include "ScanKit/Model/Dependency.h"

#include <string>
#include <string_view>

/// What the search looks through of one dependency. Made once for each, in the background: the search asks anew
/// with every key.
struct SearchedTexts {
    std::string name;     ///< in lower case
    std::string license;  ///< in lower case; empty without one

    static SearchedTexts of(const ScanKit::Dependency& dependency);
};

/// Which dependencies the search text finds: those with the text in their name or license, letter case aside.
/// Spaces and tabs around the text do not count; a text of these alone finds everything.
class DependencySearch {
public:
    explicit DependencySearch(std::string_view text);

    bool finds(const SearchedTexts& texts) const;

private:
    std::string query_;
};
