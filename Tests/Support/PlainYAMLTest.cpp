#include "ScanKit/Support/PlainYAML.h"

#include "ScanKit/Support/YAML.h"

#include <gtest/gtest.h>

#include <string>

namespace ScanKit {
namespace {

/// All that package managers write, in a few lines.
constexpr std::string_view lockfile = R"(# made by a manager

lockfileVersion: '9.0'
importers:

  .:
    dependencies:
      q: {specifier: ^1.5.1, version: 1.5.1}
packages:
  '@s/a@1.0.0(q@1)':
    resolution: {integrity: sha512-a/==, tarball: https://h/x.tgz}
    engines: {node: '>=6', npm: ''}
    cpu: [x64, '!arm', [], {}]
    hasBin: true
    bundled:
      - b
      - 'c: d'
    peers:
    - "e f"
  q@1.5.1:
    deprecated: |-
      You are using Q.

       # And that is no remark.
    text: 'It''s "old" # now'
    none: ~
    empty:
  # a remark
"r@npm:^1, r@npm:~2":
  conditions: (os=linux | os=darwin) & cpu=x64
---
second: true
)";

TEST(PlainYAML, ReadsWhatPackageManagersWrite) {
    const auto documents = readPlainYAML(lockfile);
    ASSERT_TRUE(documents);
    EXPECT_EQ(*documents, readAnyYAML(lockfile));
    EXPECT_EQ(documents->size(), 2U);
    EXPECT_EQ(documents->front().member("packages")->member("q@1.5.1")->textMember("deprecated"),
              "You are using Q.\n\n # And that is no remark.");
}

TEST(PlainYAML, LeavesAllElseToTheWholeParser) {
    for (const std::string_view text : {"",
                                        "a",
                                        "a: &x b",
                                        "a: *x",
                                        "a: !t b",
                                        "a: >-\n  b",
                                        "a: |\n  b",
                                        "a: \"\\n\"",
                                        "a: 'b\n  c'",
                                        "a: b\n  c",
                                        "a: {b: c,\n d: e}",
                                        "? a\n: b",
                                        "a:\tb",
                                        "a: b # remark",
                                        "a: b: c",
                                        "a : b",
                                        "a: b\r\n",
                                        "<<: {a: b}",
                                        "- a: b",
                                        "a:\n  b: c\n d: e",
                                        "--- a",
                                        "a: b\n...\n",
                                        "a: @b",
                                        "a: [b: c]",
                                        "a: {b}",
                                        "a: {b:c}",
                                        "a: [b,c",
                                        "a: {b: c}}",
                                        "a: b\xC2\x85",
                                        "a: b\xE2\x80\xA8",
                                        "a: 'b' c",
                                        "a: 'b''''c'"}) {
        EXPECT_FALSE(readPlainYAML(text)) << text;
    }
    const std::string deep(60, '[');
    EXPECT_FALSE(readPlainYAML("a: " + deep + std::string(60, ']')));
    EXPECT_FALSE(readPlainYAML(std::string(2000, 'k') + ": v"));
}

/// Whatever is changed in a text: what this reader takes is what the whole parser reads.
TEST(PlainYAML, NeverReadsAnythingElseThanTheWholeParser) {
    constexpr std::string_view written[]{" ",  "\n", ":", ": ", "#", " #", "-",      "- ",   "'",
                                         "\"", "{",  "}", "[",  "]", ",",  "|-",     "|-\n", "~",
                                         "<<", "?",  "&", "*",  "%", "a",  "\n\n  x"};
    std::size_t taken = 0;
    const auto compare = [&](const std::string& text) {
        if (text.starts_with('%') || text.find("\n%") != std::string::npos) {
            return;
        }
        if (const auto plain = readPlainYAML(text)) {
            ++taken;
            EXPECT_EQ(plain, readAnyYAML(text)) << text;
        }
    };
    for (std::size_t at = 0; at < lockfile.size(); ++at) {
        const std::string before(lockfile.substr(0, at));
        compare(before + std::string(lockfile.substr(at + 1)));
        for (const std::string_view one : written) {
            compare(before + std::string(one) + std::string(lockfile.substr(at)));
        }
    }
    EXPECT_GT(taken, lockfile.size()) << "of each place some change leaves a plain text";
}

}  // namespace
}  // namespace ScanKit
