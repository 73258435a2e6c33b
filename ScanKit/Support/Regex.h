#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ScanKit {

/// A compiled regular expression over UTF-8 text, in ICU's syntax with its default \b, \s and \d. Compiling
/// costs a millisecond or so: make one for the life of the program. It may be used from several threads at
/// once. Meant for short strings; a whole license text would be slow.
class Regex {
public:
    /// The pattern must be valid: a faulty one ends the program, since patterns are written in the code.
    explicit Regex(std::string_view pattern);
    ~Regex();
    Regex(const Regex&) = delete;
    Regex& operator=(const Regex&) = delete;

    struct Match {
        std::size_t begin = 0;  ///< byte offsets into the text
        std::size_t end = 0;
        bool operator==(const Match&) const = default;
    };
    /// The first match, or none. Text that is not valid UTF-8 is read with U+FFFD in place of invalid parts.
    std::optional<Match> firstMatch(std::string_view text) const;
    /// The text with every match replaced by `replacement`, which is taken literally.
    std::string replacingMatches(std::string_view text, std::string_view replacement) const;

private:
    struct Compiled;
    std::unique_ptr<const Compiled> compiled_;
};

}  // namespace ScanKit
