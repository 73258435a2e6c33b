#include "ScanKit/Support/YAML.h"

#include <gtest/gtest.h>

#include <string>

namespace ScanKit {
namespace {

/// A document on one line: texts in quotation marks, tables in braces, lists in brackets.
std::string shown(const DataValue& value) {
    std::string text;
    switch (value.kind()) {
        case DataValue::Kind::null:
            return "null";
        case DataValue::Kind::boolean:
            return *value.boolean() ? "true" : "false";
        case DataValue::Kind::text:
            return "'" + std::string(*value.text()) + "'";
        case DataValue::Kind::list:
            for (const DataValue& element : value.elements()) {
                text += (text.empty() ? "" : " ") + shown(element);
            }
            return "[" + text + "]";
        case DataValue::Kind::table:
            for (const auto& [key, member] : value.members()) {
                text += (text.empty() ? "" : " ") + key + "=" + shown(member);
            }
            return "{" + text + "}";
    }
    return text;
}

std::string read(std::string_view text) {
    const std::optional<DataValue> document = readYAML(text);
    return document ? shown(*document) : "absent";
}

struct Case {
    std::string_view text, shown;
};

TEST(YAML, KeepsScalarsAsTheyAreWritten) {
    for (const auto& [text, expected] : {
             Case{"a: 1.10\nb: 0x1F\nc: 2020-01-01\nd: yes\ne: 'it''s'\nf: \"\\u00e9\\n\"",
                  "{a='1.10' b='0x1F' c='2020-01-01' d='yes' e='it's' f='é\n'}"},
             Case{"[true, false, True, 'true', !!str true]", "[true false 'True' 'true' 'true']"},
             Case{"[null, ~, '', 'null', \"~\"]", "[null null '' 'null' '~']"},
             Case{"a:\nb: {}\nc: []\n? d\n: e", "{a=null b={} c=[] d='e'}"},
             Case{"/@s/a@1.0.0(b@2)(c@3):\n  resolution: {integrity: sha512-x==}\n  dev: true",
                  "{/@s/a@1.0.0(b@2)(c@3)={resolution={integrity='sha512-x=='} dev=true}}"},
             Case{"\"a@npm:^1, a@npm:~2\":\n  version: 1.0.0\n", "{a@npm:^1, a@npm:~2={version='1.0.0'}}"},
             Case{"a: >-\n  one\n  two\nb: |\n  x\n\n  y\n", "{a='one two' b='x\n\ny\n'}"},
             Case{"# only a remark\n", "null"},
             Case{"", "null"},
             Case{"--- # one\na: b\n...\n", "{a='b'}"},
             Case{"\xEF\xBB\xBF"
                  "a: b\r\nc:\r\n  - d\r\n",
                  "{a='b' c=['d']}"},
             Case{"a: &anchor b\nc:\td\n", "{a='b' c='d'}"},
             Case{"a: 1\nb: 2\na: 3", "{b='2' a='3'}"},
         }) {
        EXPECT_EQ(read(text), expected) << text;
    }
    const std::string longKey(1000, 'k');
    EXPECT_EQ(read("? " + longKey + longKey + "\n: v"), "{" + longKey + longKey + "='v'}");
}

TEST(YAML, RefusesWhatIsNoWholeDocumentOrNoLockfileHolds) {
    for (const std::string_view text :
         {"a: b\n---\nc: d\n", "a: [b", "a: {b: c", "a: 'b", "\ta: b", "a:\n\tb: c", "a: b: c", "a: \xFF",
          "a: &x b\nc: *x", "a: &x {b: c}\nd:\n  <<: {e: f}", "? [a]\n: b", "{a: b}: c", "a: *unknown",
          "a:\n<<<<<<< ours\n  b: 1\n=======\n  b: 2\n>>>>>>> theirs\n", "a: @b", "%YAML 1.2\n---\na: b",
          "a: b\n%TAG ! x", "a: %b"}) {
        EXPECT_EQ(read(text), "absent") << text;
    }
    EXPECT_EQ(read(std::string_view("a: \0b", 5)), "absent");
}

TEST(YAML, EndsAtItsLimits) {
    for (const std::size_t levels : {YAMLLimits::levels, YAMLLimits::levels + 1, std::size_t{2000}}) {
        const bool fits = levels == YAMLLimits::levels;
        EXPECT_EQ(readYAML(std::string(levels, '[') + std::string(levels, ']')).has_value(), fits) << levels;
        std::string nested;
        for (std::size_t i = 0; i < levels; ++i) {
            nested += std::string(i, ' ') + "a:\n";
        }
        EXPECT_EQ(readYAML(nested).has_value(), fits) << levels;
    }
    std::string bomb = "a: &a [x, x, x, x, x, x, x, x, x]\n";
    for (char name = 'b'; name <= 'z'; ++name) {
        const std::string before = std::string("*") + static_cast<char>(name - 1);
        bomb += std::string(1, name) + ": &" + name + " [" + before + ", " + before + ", " + before + "]\n";
    }
    EXPECT_EQ(read(bomb), "absent");
    EXPECT_EQ(read(std::string(300'000, '[')), "absent");
    std::string many = "[";
    while (many.size() < 2 * YAMLLimits::values) {
        many += "a,";
    }
    EXPECT_EQ(read(many + "]"), "absent");
    EXPECT_EQ(read("a: " + std::string(YAMLLimits::bytes, 'x')), "absent");
}

TEST(YAML, ReadsOneDocumentAfterTheOther) {
    const auto documents = readYAMLDocuments("---\na: b\n---\nc: d\n");
    ASSERT_TRUE(documents);
    ASSERT_EQ(documents->size(), 2U);
    EXPECT_EQ(shown(documents->front()) + shown(documents->back()), "{a='b'}{c='d'}");
    EXPECT_FALSE(readYAMLDocuments("---\na: b\n---\nc: [\n"));
}

}  // namespace
}  // namespace ScanKit
