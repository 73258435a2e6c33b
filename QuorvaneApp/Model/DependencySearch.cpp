#include "QuorvaneApp/Model/DependencySearch.h"

#include "ScanKit/Support/Text.h"

SearchedTexts SearchedTexts::of(const ScanKit::Dependency& dependency) {
    return {.name = ScanKit::Text::lowercased(dependency.name),
            .license = ScanKit::Text::lowercased(dependency.license.value_or(""))};
}

DependencySearch::DependencySearch(std::string_view text)
    : query_(ScanKit::Text::lowercased(ScanKit::Text::trimmedOfBlanks(text))) {}

bool DependencySearch::finds(const SearchedTexts& texts) const {
    return texts.name.find(query_) != std::string::npos || texts.license.find(query_) != std::string::npos;
}
