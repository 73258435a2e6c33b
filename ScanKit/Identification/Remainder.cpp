#include "ScanKit/Identification/Remainder.h"

#include "ScanKit/Identification/OwnTerms.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

namespace ScanKit {
namespace {

constexpr std::size_t leastWordsOfAPassage = 8;
constexpr std::size_t leastWordsOfASentence = 5;  ///< of one that sets terms and stands alone
constexpr double shareOfASentence = 0.7;
constexpr std::size_t leastWordsOfALicense = 6;  ///< in a row
constexpr std::size_t neighbours = 3;            ///< words around a passage that may belong to what it says
constexpr std::size_t leastWordsOfSubstance = 20;
constexpr std::size_t mostWordsOfATitle = 6;
constexpr std::size_t mostWordsBesideAnAddress = 6;
constexpr std::size_t beginningLength = 120;  ///< in characters
/// The share of a license's words that stands before, and behind, what is in the middle of it.
constexpr double shareAround = 0.1;

struct LineWords {
    std::size_t begin, end;
};

/// True for a paragraph of a few words: a heading, a project's name, a date.
bool isTitle(const LicenseText& text, std::size_t line, LineWords words) {
    const bool endsParagraph = line + 1 == text.lines.size() || text.lines[line + 1].beginsParagraph;
    return text.lines[line].beginsParagraph && endsParagraph && words.end - words.begin <= mostWordsOfATitle;
}

/// True for a line that says where somebody or something is found.
bool isAddress(std::string_view line) {
    if (line.find('@') == std::string_view::npos && line.find("://") == std::string_view::npos) {
        return false;
    }
    bool hasAddress = false;
    std::size_t others = 0;
    for (const std::string_view part : Text::split(line, " \t")) {
        const bool isOne =
            part.find('@') != std::string_view::npos || part.find("://") != std::string_view::npos;
        hasAddress |= isOne;
        others += isOne || part.empty() ? 0 : 1;
    }
    return hasAddress && others <= mostWordsBesideAnAddress;
}

/// Where words stand in the text. Remembers the line of the last one: the words of a line are asked for one after the other.
class WordPlaces {
public:
    explicit WordPlaces(const LicenseText& text) : text_(text) {}

    std::string_view of(std::size_t word) {
        if (word < begin_ || word >= end_) {
            const auto line = std::ranges::upper_bound(text_.lines, word, {}, &LicenseText::Line::wordsEnd);
            begin_ = line == text_.lines.begin() ? 0 : std::prev(line)->wordsEnd;
            end_ = line->wordsEnd;
            words_ = Text::words(line->bytes);
            // Lower-casing may part a word of a rare script in two; then the whole line stands for its words.
            if (words_.size() != end_ - begin_) {
                words_.assign(end_ - begin_, line->bytes);
            }
        }
        return words_[word - begin_];
    }

    /// From the first word of the passage to its last.
    std::string_view bytesOf(const Remainder::Passage& passage) {
        const std::string_view first = of(passage.begin);
        const std::string_view last = of(passage.end - 1);
        return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
    }

private:
    const LicenseText& text_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::vector<std::string_view> words_;
};

/// Every run of words that is left over, however short.
std::vector<Remainder::Passage> runsBeyond(const LicenseText& text, const WordMarks& covered) {
    std::vector<Remainder::Passage> runs;
    Remainder::Passage open;
    const auto close = [&] {
        if (open.wordCount > 0) {
            runs.push_back(open);
        }
        open = {};
    };
    std::size_t begin = 0;
    for (std::size_t line = 0; line < text.lines.size(); ++line) {
        const LineWords words{begin, text.lines[line].wordsEnd};
        begin = words.end;
        const bool isAllCovered =
            std::memchr(covered.data() + words.begin, 0, words.end - words.begin) == nullptr;
        if (isAllCovered) {
            close();
            continue;
        }
        const bool isAside =
            text.lines[line].isCopyright || isTitle(text, line, words) || isAddress(text.lines[line].bytes);
        const std::span<const std::uint64_t> ofLine =
            std::span(text.words).subspan(words.begin, words.end - words.begin);
        // Terms hide behind the name of a holder, too.
        if (isAside && !restricts(ofLine) &&
            !(text.lines[line].isCopyright && setsTerms(text.words, words.begin, words.end))) {
            close();
            continue;
        }
        for (std::size_t word = words.begin; word < words.end; ++word) {
            if (covered[word]) {
                close();
                continue;
            }
            if (open.wordCount == 0) {
                open.begin = word;
            }
            open.end = word + 1;
            ++open.wordCount;
        }
    }
    close();
    return runs;
}

/// How far the beginning and the end of a sentence are looked for, in bytes.
constexpr std::size_t longestSentence = 1'000;

std::string_view from(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// The part of the text from the beginning of the sentence that the passage begins in to the end of that it ends in.
std::string_view sentencesAround(std::string_view passage, std::string_view text) {
    constexpr std::string_view ends = ".;:";
    constexpr std::string_view marks = " \t\r\n>*-#=_|/";  // of a list or a quotation
    const auto begin = static_cast<std::size_t>(passage.data() - text.data());
    const std::size_t reach = std::min(begin, longestSentence);
    const std::string_view before = text.substr(begin - reach, reach);
    const std::string_view behind = text.substr(begin + passage.size(), longestSentence);
    std::size_t sentence = 0;
    for (const std::string_view end : {".", ";", ":", "\n\n", "\n\r\n"}) {
        const std::size_t at = before.rfind(end);
        sentence = std::max(sentence, at == std::string_view::npos ? 0 : at + end.size());
    }
    const char* first = before.data() + sentence;
    const std::string_view upToPassage = from(first, passage.data());
    first += std::min(upToPassage.find_first_not_of(marks), upToPassage.size());
    const char* last = behind.data() + std::min(behind.find_first_of(ends), behind.size());
    return Text::trimmed(from(first, last));
}

/// Whether the passage is nearly all of its sentence: "The Software shall be used for Good, not Evil." In a longer one a few
/// words more are how a copy differs.
bool isSentence(const Remainder::Passage& passage, std::string_view sentence) {
    return static_cast<double>(passage.wordCount) >=
           shareOfASentence * static_cast<double>(Text::words(sentence).size());
}

/// On one line, cut behind a word.
std::string oneLineOf(std::string_view bytes) {
    std::string line;
    for (const char byte : bytes.substr(0, longestSentence)) {
        const bool isBlank = byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
        if (!isBlank) {
            line += byte;
        } else if (!line.ends_with(' ')) {
            line += ' ';
        }
    }
    const std::string_view cut = Text::prefix(line, beginningLength);
    if (cut.size() < line.size()) {
        line.resize(std::min(cut.size(), cut.find_last_of(' ')));
    }
    return Text::oneLine(std::move(line));
}

/// Without the marks of a few words in a row: three or four that any license has, "under the License", are a coincidence in
/// between words that none has.
WordMarks withoutCoincidences(WordMarks covered) {
    for (std::size_t begin = 0; begin < covered.size();) {
        const std::size_t end = static_cast<std::size_t>(
            std::find_if(covered.begin() + static_cast<std::ptrdiff_t>(begin), covered.end(),
                         [&](char mark) { return mark != covered[begin]; }) -
            covered.begin());
        const bool isInside = begin > 0 && end < covered.size();
        if (covered[begin] != 0 && isInside && end - begin < leastWordsOfALicense) {
            std::fill_n(covered.begin() + static_cast<std::ptrdiff_t>(begin), end - begin, 0);
        }
        begin = end;
    }
    return covered;
}

/// Collects what the runs say, in their order.
class RemainderReader {
public:
    RemainderReader(const LicenseText& text, const WordMarks& covered)
        : text_(text), covered_(withoutCoincidences(covered)), places_(text) {}

    Remainder read() {
        for (const Remainder::Passage& run : runsBeyond(text_, covered_)) {
            const std::span<const std::uint64_t> words =
                std::span(text_.words).subspan(run.begin, run.end - run.begin);
            if (run.wordCount >= leastWordsOfASentence || restricts(words)) {
                add(run);
            }
        }
        return std::move(remainder_);
    }

private:
    void add(Remainder::Passage passage) {
        const std::span<const std::uint64_t> words(text_.words);
        const bool isLong = passage.wordCount >= leastWordsOfAPassage;
        const std::span<const std::uint64_t> own = words.subspan(passage.begin, passage.end - passage.begin);
        const bool isRestriction = restricts(own);
        passage.setsTerms =
            isRestriction || setsTerms(words, passage.begin, passage.end) || continuesMust(passage);
        const bool standsAlone = passage.setsTerms && isSentence(passage, sentencesAround(passage));
        if (!isLong && !isRestriction && !standsAlone) {
            return;
        }
        remainder_.setsTerms |= passage.setsTerms;
        remainder_.changesTheLicense |= passage.setsTerms && isInTheMiddle(passage);
        remainder_.wordCount += passage.wordCount;
        remainder_.passages.push_back(passage);
    }

    std::string_view sentencesAround(const Remainder::Passage& passage) {
        return ScanKit::sentencesAround(places_.bytesOf(passage), text_.bytes);
    }

    /// Whether "must" stands a few words before or behind the passage, in the same sentence: of "source code must be clearly
    /// marked" a license may hold "source code must", too.
    bool continuesMust(const Remainder::Passage& passage) {
        static const std::uint64_t must = licenseWordHash("must");
        const std::span<const std::uint64_t> words(text_.words);
        const std::size_t first = passage.begin - std::min(passage.begin, neighbours);
        const std::size_t last = std::min(words.size(), passage.end + neighbours);
        for (std::size_t word = first; word < last; ++word) {
            const bool isInside = word >= passage.begin && word < passage.end;
            if (isInside || words[word] != must) {
                continue;
            }
            const std::string_view sentences = sentencesAround(passage);
            const std::string_view place = places_.of(word);
            if (place.data() >= sentences.data() && place.data() < sentences.data() + sentences.size()) {
                return true;
            }
        }
        return false;
    }

    /// Whether a tenth of the words that are covered stand before the passage, and a tenth behind it.
    bool isInTheMiddle(const Remainder::Passage& passage) {
        if (coveredBefore_.empty()) {
            coveredBefore_.resize(covered_.size() + 1);
            for (std::size_t word = 0; word < covered_.size(); ++word) {
                coveredBefore_[word + 1] = coveredBefore_[word] + (covered_[word] != 0 ? 1 : 0);
            }
        }
        const auto all = static_cast<double>(coveredBefore_.back());
        const auto before = static_cast<double>(coveredBefore_[passage.begin]);
        const auto behind = all - static_cast<double>(coveredBefore_[passage.end]);
        return all > 0 && std::min(before, behind) >= shareAround * all;
    }

    const LicenseText& text_;
    WordMarks covered_;
    WordPlaces places_;
    std::vector<std::size_t> coveredBefore_;  ///< each word; made when it is first asked for
    Remainder remainder_;
};

}  // namespace

bool Remainder::isOfSubstance() const {
    return setsTerms || wordCount >= leastWordsOfSubstance;
}

Remainder remainderOf(const LicenseText& text, const WordMarks& covered) {
    return RemainderReader(text, covered).read();
}

std::string beginningOf(const Remainder& remainder, const LicenseText& text) {
    const auto terms = std::ranges::find_if(remainder.passages, &Remainder::Passage::setsTerms);
    const auto told = terms == remainder.passages.end() ? remainder.passages.begin() : terms;
    if (told == remainder.passages.end()) {
        return "";
    }
    // From where its sentence begins: "The Software" belongs to "shall be used for Good".
    return oneLineOf(sentencesAround(WordPlaces(text).bytesOf(*told), text.bytes));
}

std::vector<std::string_view> partsOf(const Remainder& remainder, const LicenseText& text) {
    WordPlaces places(text);
    std::vector<std::string_view> parts;
    for (const Remainder::Passage& passage : remainder.passages) {
        parts.push_back(places.bytesOf(passage));
    }
    return parts;
}

}  // namespace ScanKit
