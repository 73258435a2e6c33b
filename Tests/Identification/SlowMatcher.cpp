#include "Tests/Identification/SlowMatcher.h"

#include "ScanKit/Licenses/StandardTexts.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace SlowMatcher {
namespace {

using ScanKit::LicenseMatcher::Candidate;
using Words = std::vector<std::string>;
namespace Text = ScanKit::Text;

const Words templateNames{"MIT",           "MIT-0",        "ISC",        "0BSD",
                          "BSD-2-Clause",  "BSD-3-Clause", "Apache-2.0", "Zlib",
                          "BlueOak-1.0.0", "Unlicense",    "CC0-1.0",    "MPL-2.0",
                          "LGPL-2.1",      "LGPL-3.0",     "GPL-2.0",    "GPL-3.0"};

/// Each run of three words with the position at which it stands first.
std::map<std::string, std::size_t> runs(const Words& words) {
    std::map<std::string, std::size_t> found;
    for (std::size_t i = 0; i + 3 <= words.size(); ++i) {
        found.emplace(words[i] + " " + words[i + 1] + " " + words[i + 2], i);
    }
    return found;
}

Candidate score(const std::string& name, const std::map<std::string, std::size_t>& text) {
    const Words words = licenseWords(ScanKit::standardText(name).value());
    const auto wanted = runs(words);
    std::set<std::size_t> positions;
    for (const auto& [run, position] : wanted) {
        if (const auto found = text.find(run); found != text.end()) {
            positions.insert(found->second);
        }
    }
    Candidate candidate{.id = name, .wordCount = words.size()};
    candidate.score = static_cast<double>(positions.size()) / static_cast<double>(wanted.size());
    if (!positions.empty()) {
        const std::vector<std::size_t> sorted(positions.begin(), positions.end());
        candidate.start = sorted[sorted.size() / 10];
        candidate.end = sorted[9 * sorted.size() / 10];
    }
    return candidate;
}

double sharedPart(const Candidate& a, const Candidate& b) {
    const auto start = static_cast<double>(std::max(a.start, b.start));
    const auto end = static_cast<double>(std::min(a.end, b.end));
    const auto shorter = static_cast<double>(std::min(a.end - a.start, b.end - b.start));
    return (end - start) / (shorter < 2 ? 1 : shorter);
}

std::vector<ScanKit::TextMatch> noticeOnly(std::string_view text) {
    const std::string joined = Text::joined(words(text), " ");
    const auto has = [&](const char* phrase) { return joined.find(phrase) != std::string::npos; };
    const std::string later = has("any later version") ? "-or-later" : "";
    const auto one = [](const std::string& id) { return std::vector<ScanKit::TextMatch>{{id, 0.7, true}}; };
    if (has("gnu affero general public license")) {
        return one("AGPL-3.0" + later);
    }
    if (has("gnu lesser general public license") || has("gnu library general public license")) {
        return one(has("version 3")     ? "LGPL-3.0" + later
                   : has("version 2 1") ? "LGPL-2.1" + later
                   : has("version 2")   ? "LGPL-2.0" + later
                                        : "LGPL");
    }
    if (has("gnu general public license")) {
        return one(has("version 3") ? "GPL-3.0" + later : has("version 2") ? "GPL-2.0" + later : "GPL");
    }
    const std::pair<const char*, const char*> rest[]{
        {"apache license version 2 0", "Apache-2.0"},
        {"mozilla public license v 2 0", "MPL-2.0"},
        {"mozilla public license version 2 0", "MPL-2.0"},
        {"boost software license version 1 0", "BSL-1.0"},
        {"eclipse public license v 2 0", "EPL-2.0"},
        {"eclipse public license version 2 0", "EPL-2.0"},
        {"permission is hereby granted free of charge to any person obtaining a copy", "MIT"},
        {"redistribution and use in source and binary forms with or without modification are permitted",
         "BSD"},
        {"this is free and unencumbered software released into the public domain", "Unlicense"},
    };
    for (const auto& [phrase, id] : rest) {
        if (has(phrase)) {
            return one(id);
        }
    }
    return {};
}

}  // namespace

Words words(std::string_view text) {
    const std::string lower = Text::lowercased(text);
    Words found;
    std::string word;
    for (std::size_t i = 0; i < lower.size();) {
        const std::size_t at = i;
        if (Text::isAlphanumeric(Text::nextScalar(lower, i))) {
            word += lower.substr(at, i - at);
        } else if (!word.empty()) {
            found.push_back(word == "licence" ? "license" : word);
            word.clear();
        }
    }
    if (!word.empty()) {
        found.push_back(word == "licence" ? "license" : word);
    }
    return found;
}

Words licenseWords(std::string_view text) {
    Words kept;
    for (const std::string_view line : Text::nonEmptyLines(text)) {
        const std::string lower = Text::lowercased(Text::trimmed(line));
        if (lower.starts_with("copyright") || lower.starts_with("(c)") || lower.starts_with("©") ||
            lower.starts_with("all rights reserved")) {
            continue;
        }
        const Words ofLine = words(lower);
        const bool grants = std::ranges::any_of(ofLine, [](const std::string& word) {
            return word == "license" || word == "permission" || word == "granted";
        });
        if (ofLine.size() > 6 || grants) {
            kept.insert(kept.end(), ofLine.begin(), ofLine.end());
        }
    }
    return kept;
}

std::vector<Candidate> candidates(std::string_view text) {
    const Words ofText = licenseWords(text);
    std::vector<Candidate> sorted;
    if (ofText.size() < 3) {
        return sorted;
    }
    const auto index = runs(ofText);
    for (const std::string& name : templateNames) {
        Candidate next = score(name, index);
        auto place = sorted.end();
        while (place != sorted.begin()) {
            const Candidate& before = *std::prev(place);
            const bool near = std::abs(next.score - before.score) <= 0.005;
            if (near ? next.wordCount <= before.wordCount : next.score < before.score) {
                break;
            }
            --place;
        }
        sorted.insert(place, std::move(next));
    }
    return sorted;
}

std::vector<ScanKit::TextMatch> matches(std::string_view text) {
    std::vector<Candidate> accepted;
    for (const Candidate& candidate : candidates(text)) {
        if (candidate.score < 0.75) {
            continue;
        }
        const auto rival = std::ranges::find_if(
            accepted, [&](const Candidate& one) { return sharedPart(one, candidate) > 0.5; });
        if (rival == accepted.end()) {
            accepted.push_back(candidate);
        } else if (candidate.score >= 0.82 &&
                   static_cast<double>(rival->wordCount) * 1.1 < static_cast<double>(candidate.wordCount) &&
                   rival->score - candidate.score < 0.08) {
            *rival = candidate;
        }
    }
    std::ranges::stable_sort(accepted, {}, &Candidate::start);
    std::vector<ScanKit::TextMatch> found;
    for (const Candidate& candidate : accepted) {
        found.push_back({candidate.id, candidate.score, false});
    }
    return found.empty() ? noticeOnly(text) : found;
}

}  // namespace SlowMatcher
