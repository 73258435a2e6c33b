#include "ScanKit/Identification/LicenseWords.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <vector>

#include <string.h>  // memmem

namespace ScanKit {
namespace {

constexpr std::size_t mostWordsOfAShortLine = 6;
/// A longer line that begins with a copyright goes on with the license itself.
constexpr std::size_t mostWordsOfACopyrightLine = 25;
constexpr auto copyrightBeginnings =
    std::to_array<std::string_view>({"copyright", "(c)", "©", "all rights reserved"});

/// What a byte is to the tokenizer. A letter or digit stands for its lower-case form, which is above all others.
enum ByteKind : unsigned char { separator = 0, lineBreak = 1, beyondAscii = 2 };

constexpr std::array<unsigned char, 256> byteKinds = [] {
    std::array<unsigned char, 256> kinds{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        if (isLetter || (byte >= '0' && byte <= '9')) {
            kinds[byte] = static_cast<unsigned char>(byte | 0x20U);
        } else if (byte >= 0x80) {
            kinds[byte] = beyondAscii;
        } else if (Text::isLineBreak(byte)) {
            kinds[byte] = lineBreak;
        }
    }
    return kinds;
}();

constexpr unsigned char kindOf(char byte) {
    return byteKinds[static_cast<unsigned char>(byte)];
}

/// A byte of a word in lower case. Words of lines beyond ASCII are in lower case already.
constexpr char lowercasedByte(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}

/// Hashes a word byte by byte, eight bytes at a time.
class WordHash {
public:
    constexpr void add(unsigned char byte) {
        block_ = (block_ << 8) | byte;
        if (++length_ % 8 == 0) {
            state_ = mixed(state_ ^ block_);
            block_ = 0;
        }
    }
    constexpr std::uint64_t value() const { return mixed(state_ ^ block_ ^ (length_ << 56)); }

private:
    static constexpr std::uint64_t mixed(std::uint64_t value) {
        value = (value ^ (value >> 32)) * 0xD6E8FEB86659FD93U;
        value = (value ^ (value >> 29)) * 0xA0761D6478BD642FU;
        return value ^ (value >> 32);
    }

    std::uint64_t state_ = 0x2545F4914F6CDD1DU;
    std::uint64_t block_ = 0;
    std::uint64_t length_ = 0;
};

constexpr std::uint64_t hashOf(std::string_view lowercaseWord) {
    WordHash hash;
    for (const char byte : lowercaseWord) {
        hash.add(static_cast<unsigned char>(byte));
    }
    return hash.value();
}

constexpr std::uint64_t licenceHash = hashOf("licence");
constexpr std::uint64_t licenseHash = hashOf("license");
/// A short line with one of these words is kept.
constexpr auto grantingWords =
    std::to_array<std::uint64_t>({licenseHash, hashOf("permission"), hashOf("granted")});

constexpr bool grants(std::uint64_t wordHash) {
    return std::ranges::find(grantingWords, wordHash) != grantingWords.end();
}

/// What follows "copyright" in a license's own sentences, and not in the line that names the holder.
constexpr auto wordsOfSentencesAboutCopyright = std::to_array<std::uint64_t>(
    {hashOf("and"), hashOf("holder"), hashOf("holders"), hashOf("interest"), hashOf("law"), hashOf("laws"),
     hashOf("license"), hashOf("notice"), hashOf("notices"), hashOf("or"), hashOf("owner"), hashOf("owners"),
     hashOf("statement")});

constexpr std::uint64_t withOneSpelling(std::uint64_t hash) {
    return hash == licenceHash ? licenseHash : hash;
}

/// Writes the word in lower case and returns the end. Both spellings of "license" have the same length.
char* writeLowercased(const LicenseWord& word, char* output) {
    // British and American spelling count as one word wherever texts are compared.
    if (word.hash == licenseHash) {
        return std::ranges::copy(std::string_view("license"), output).out;
    }
    return std::ranges::transform(word.bytes, output, lowercasedByte).out;
}

/// True when the line, trimmed and in lower case, begins as a copyright line does. `line` is ASCII or already
/// in lower case.
bool isCopyrightLine(std::string_view line) {
    return std::ranges::any_of(copyrightBeginnings, [&](std::string_view beginning) {
        return line.size() >= beginning.size() &&
               std::ranges::equal(line.substr(0, beginning.size()), beginning, [](char a, char b) {
                   const unsigned char lowered = kindOf(a);
                   return lowered > beyondAscii ? static_cast<char>(lowered) == b : a == b;
               });
    });
}

class LineReader {
public:
    LineReader(std::string_view text, const std::function<void(const LicenseLine&)>& body)
        : text_(text), body_(body) {}

    void readAll() {
        std::size_t begin = 0;
        while (begin < text_.size()) {
            begin = readLine(begin);
        }
    }

private:
    /// Reads the line that begins here and returns where the next one begins.
    std::size_t readLine(std::size_t begin) {
        words_.clear();
        std::size_t i = begin;
        while (i < text_.size()) {
            const unsigned char kind = kindOf(text_[i]);
            if (kind > beyondAscii) {
                i = readAsciiWord(i);
            } else if (kind == separator) {
                ++i;
            } else if (kind == lineBreak) {
                break;
            } else {
                return readUnicodeLine(begin);
            }
        }
        const std::string_view line = text_.substr(begin, i - begin);
        finishLine(line, line);
        return i + 1;
    }

    /// Reads the word that begins here and returns its end.
    std::size_t readAsciiWord(std::size_t begin) {
        WordHash hash;
        std::size_t end = begin;
        for (; end < text_.size(); ++end) {
            const unsigned char kind = kindOf(text_[end]);
            if (kind <= beyondAscii) {
                break;
            }
            hash.add(kind);
        }
        words_.push_back({text_.substr(begin, end - begin), withOneSpelling(hash.value())});
        return end;
    }

    /// A line with more than ASCII: folded and split by Unicode's rules.
    std::size_t readUnicodeLine(std::size_t begin) {
        words_.clear();
        std::size_t end = begin;
        std::size_t next = begin;
        while (next < text_.size() && !Text::isLineBreak(Text::nextScalar(text_, next))) {
            end = next;
        }
        const std::string line = Text::lowercased(Text::trimmed(text_.substr(begin, end - begin)));
        for (const std::string_view word : Text::words(line)) {
            words_.push_back({word, withOneSpelling(hashOf(word))});
        }
        finishLine(line, text_.substr(begin, end - begin));
        return next;
    }

    /// `line` is ASCII or in lower case; `bytes` is the line as it stands in the text.
    void finishLine(std::string_view line, std::string_view bytes) {
        if (words_.empty()) {
            // A line of marks, such as a comment's frame, parts paragraphs as an empty one does.
            beginsParagraph_ = true;
            return;
        }
        // "MIT License" stays, a line with a project's name goes, and so do dates and addresses.
        const bool isLong = words_.size() > mostWordsOfAShortLine;
        const bool beginsAsCopyright = isCopyrightLine(Text::trimmed(line));
        body_({.words = words_,
               .bytes = bytes,
               .isPartOfLicense =
                   !beginsAsCopyright && (isLong || std::ranges::any_of(words_, grants, &LicenseWord::hash)),
               .isCopyright =
                   beginsAsCopyright && words_.size() <= mostWordsOfACopyrightLine && !goesOnAboutCopyright(),
               .beginsParagraph = beginsParagraph_});
        beginsParagraph_ = false;
    }

    bool goesOnAboutCopyright() const {
        return words_.size() > 1 && std::ranges::find(wordsOfSentencesAboutCopyright, words_[1].hash) !=
                                        wordsOfSentencesAboutCopyright.end();
    }

    std::string_view text_;
    const std::function<void(const LicenseLine&)>& body_;
    std::vector<LicenseWord> words_;
    bool beginsParagraph_ = true;
};

}  // namespace

std::string LicenseWord::lowercased() const {
    std::string word(bytes.size(), ' ');
    writeLowercased(*this, word.data());
    return word;
}

std::uint64_t licenseWordHash(std::string_view lowercaseWord) {
    return hashOf(lowercaseWord);
}

void forEachLicenseLine(std::string_view text, const std::function<void(const LicenseLine&)>& body) {
    LineReader(text, body).readAll();
}

LicenseText::LicenseText(std::string_view text) : bytes(text) {
    joinedWords.reserve(text.size() + 1);
    words.reserve(text.size() / 6);
    lines.reserve(text.size() / 40 + 1);
    licenseWords.reserve(text.size() / 6);
    forEachLicenseLine(text, [&](const LicenseLine& line) {
        std::size_t length = joinedWords.size();
        for (const LicenseWord& word : line.words) {
            length += word.bytes.size() + 1;
        }
        const std::size_t before = joinedWords.size();
        joinedWords.resize(length);
        char* output = joinedWords.data() + before;
        for (const LicenseWord& word : line.words) {
            output = writeLowercased(word, output);
            *output++ = ' ';
            words.push_back(word.hash);
        }
        if (line.isPartOfLicense) {
            licenseWords.insert(licenseWords.end(),
                                words.end() - static_cast<std::ptrdiff_t>(line.words.size()), words.end());
        }
        lines.push_back({words.size(), line.bytes, line.isCopyright, line.beginsParagraph});
    });
    if (!joinedWords.empty()) {
        joinedWords.pop_back();
    }
}

bool holdsWords(std::string_view joinedWords, std::string_view words) {
    for (std::size_t from = 0; from < joinedWords.size();) {
        // Several times faster over a long text than the standard library's search.
        const void* found =
            memmem(joinedWords.data() + from, joinedWords.size() - from, words.data(), words.size());
        if (found == nullptr) {
            break;
        }
        const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - joinedWords.data());
        const std::size_t end = at + words.size();
        const bool beginsAWord = at == 0 || joinedWords[at - 1] == ' ';
        const bool endsAWord = end == joinedWords.size() || joinedWords[end] == ' ';
        if (beginsAWord && endsAWord) {
            return true;
        }
        from = at + 1;
    }
    return false;
}

}  // namespace ScanKit
