#pragma once

#include "ScanKit/Identification/LicenseMatcher.h"

#include <string>
#include <string_view>
#include <vector>

/// The matcher's rules in their plainest form: words as strings, runs as joined text in ordered containers. Slow
/// and obvious, so that the fast one can be held against it.
namespace SlowMatcher {

std::vector<std::string> words(std::string_view text);
std::vector<std::string> licenseWords(std::string_view text);
std::vector<ScanKit::LicenseMatcher::Candidate> candidates(std::string_view text);
std::vector<ScanKit::TextMatch> matches(std::string_view text);

}  // namespace SlowMatcher
