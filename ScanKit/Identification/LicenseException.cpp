#include "ScanKit/Identification/LicenseException.h"

#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/PhraseSet.h"

#include <algorithm>

#include <array>
#include <vector>

namespace ScanKit {
namespace {

constexpr std::size_t negationReach = 8;  ///< words before the phrase

constexpr auto rows = std::to_array<LicenseException>({
    {"Swift-exception", "Apache-",
     "if you use this software to compile your source code and portions of this software are embedded", 80},
    {"LLVM-exception", "Apache-",
     "if as a result of your compiling your source code portions of this software are embedded", 220},
    {"Classpath-exception-2.0", "GPL",
     "permission to link this library with independent modules to produce an executable", 180},
    {"Classpath-exception-2.0", "LGPL",
     "permission to link this library with independent modules to produce an executable", 180},
    {"GCC-exception-3.1", "GPL-3.0", "gcc runtime library exception", 650},
    {"GCC-exception-2.0", "GPL", "permission to link the compiled version of this file into combinations",
     120},
    {"Bison-exception-2.2", "GPL",
     "you may create a larger work that contains part or all of the bison parser skeleton", 160},
    {"Autoconf-exception-2.0", "GPL", "permission to copy distribute and modify the configure scripts", 180},
    {"Autoconf-exception-3.0", "GPL-3.0", "autoconf configure script exception", 450},
    {"Font-exception-2.0", "GPL", "if you create a document which uses this font and embed this font", 120},
    {"Linux-syscall-note", "GPL-2.0",
     "does not cover user programs that use kernel services by normal system calls", 120},
    {"Universal-FOSS-exception-1.0", "GPL-2.0", "the universal foss exception version 1 0", 450},
});

}  // namespace

std::optional<StatedException> exceptionIn(std::span<const std::uint64_t> words) {
    static const PhraseSet phrases = phrasesOf(rows, &LicenseException::words);
    static const std::uint64_t negation = licenseWordHash("not");
    for (const PhraseSet::Occurrence& one : phrases.occurrences(words)) {
        const std::size_t begin = one.begin - std::min(one.begin, negationReach);
        const std::span<const std::uint64_t> before = words.subspan(begin, one.begin - begin);
        if (std::ranges::find(before, negation) == before.end()) {
            return StatedException{&rows[one.phrase], one.begin};
        }
    }
    return std::nullopt;
}

}  // namespace ScanKit
