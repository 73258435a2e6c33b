#include "ScanKit/Support/Regex.h"

#include <atomic>
#include <cstdlib>
#include <unordered_map>

#include <unicode/regex.h>
#include <unicode/utext.h>

namespace ScanKit {

struct Regex::Compiled {
    std::unique_ptr<icu::RegexPattern> pattern;
    unsigned long key = 0;  ///< never used twice, unlike an address
};

namespace {

/// A pattern is shared; a matcher belongs to one thread and is kept, since making one costs more than a match.
icu::RegexMatcher& matcherOfThread(const icu::RegexPattern& pattern, unsigned long key) {
    thread_local std::unordered_map<unsigned long, std::unique_ptr<icu::RegexMatcher>> matchers;
    std::unique_ptr<icu::RegexMatcher>& matcher = matchers[key];
    if (!matcher) {
        UErrorCode status = U_ZERO_ERROR;
        matcher.reset(pattern.matcher(status));
        if (U_FAILURE(status)) {
            std::abort();
        }
    }
    return *matcher;
}

/// Calls `body` with each match until it returns false.
template <typename Body>
void walkMatches(icu::RegexMatcher& matcher, std::string_view text, Body body) {
    UErrorCode status = U_ZERO_ERROR;
    // Matched in place: turning a text into UTF-16 and its offsets back costs more than most matches.
    UText* opened = utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &status);
    if (U_SUCCESS(status)) {
        matcher.reset(opened);
        while (matcher.find(status) && U_SUCCESS(status)) {
            const Regex::Match match{static_cast<std::size_t>(matcher.start64(status)),
                                     static_cast<std::size_t>(matcher.end64(status))};
            if (!body(match)) {
                break;
            }
        }
    }
    utext_close(opened);
}

}  // namespace

Regex::Regex(std::string_view pattern) {
    static std::atomic<unsigned long> nextKey = 0;
    auto compiled = std::make_unique<Compiled>();
    UErrorCode status = U_ZERO_ERROR;
    UParseError where{};
    const auto source =
        icu::UnicodeString::fromUTF8(icu::StringPiece(pattern.data(), static_cast<int32_t>(pattern.size())));
    compiled->pattern.reset(icu::RegexPattern::compile(source, 0, where, status));
    // Patterns stand in the code, so that a faulty one is a mistake of ours and shows at the first use.
    if (U_FAILURE(status)) {
        std::abort();
    }
    compiled->key = nextKey++;
    compiled_ = std::move(compiled);
}

Regex::~Regex() = default;

std::optional<Regex::Match> Regex::firstMatch(std::string_view text) const {
    std::optional<Match> first;
    walkMatches(matcherOfThread(*compiled_->pattern, compiled_->key), text, [&](const Match& match) {
        first = match;
        return false;
    });
    return first;
}

std::string Regex::replacingMatches(std::string_view text, std::string_view replacement) const {
    std::string result;
    std::size_t begin = 0;
    walkMatches(matcherOfThread(*compiled_->pattern, compiled_->key), text, [&](const Match& match) {
        result += text.substr(begin, match.begin - begin);
        result += replacement;
        begin = match.end;
        return true;
    });
    result += text.substr(begin);
    return result;
}

}  // namespace ScanKit
