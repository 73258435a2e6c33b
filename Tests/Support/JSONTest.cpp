#include "ScanKit/Support/JSON.h"

#include "ScanKit/Support/JSONWithComments.h"
#include "ScanKit/Support/JSONWriter.h"

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

bool isDocument(std::string_view text) {
    return JSONReader().read(text).has_value();
}

TEST(JSONReader, RefusesWhatIsNoWholeDocument) {
    for (const std::string_view text :
         {"", " ", "{", "{\"a\":1", "[1,]", "{} {}", "nul", "\"\xFF\"", "\"\\ud800\"", "\"\\udc00\"",
          "\"\\udc00\\ud800\"", "1e400", "[-1e999]", "{\"a\" 1}", "'a'", "01", "\"\n\""}) {
        EXPECT_FALSE(isDocument(text)) << text;
    }
    for (const std::string_view text :
         {"null", "\xEF\xBB\xBF{}", " [1, 2] ", "\"\\ud83d\\ude00\"", "1e308"}) {
        EXPECT_TRUE(isDocument(text)) << text;
    }
}

TEST(JSONReader, TakesAThousandLevelsAndNoMore) {
    for (const std::size_t levels : {1000U, 1001U, 200'000U}) {
        EXPECT_EQ(isDocument(std::string(levels, '[') + std::string(levels, ']')), levels == 1000) << levels;
    }
    EXPECT_FALSE(isDocument(std::string(400'000, '{')));
}

TEST(JSONReader, TakesIntegersThatOnlyADoubleCanHold) {
    JSONReader reader;
    const auto top = reader.read(
        R"({"a": 123456789012345678901234567890, "b\"": "98765432109876543210", "c": -9999999999999999999})");
    ASSERT_TRUE(top);
    EXPECT_EQ(top->member("a")->number(), 123456789012345678901234567890.0);
    EXPECT_EQ(top->stringMember("b\""), "98765432109876543210");
    EXPECT_EQ(top->member("c")->number(), -9999999999999999999.0);
    EXPECT_FALSE(isDocument("[123456789012345678901234567890, 1e400]"));
}

TEST(JSONReader, LastOfEqualKeysCountsAndNothingIsConverted) {
    JSONReader reader;
    const auto top = reader.read(R"({"a": 1, "yes": true, "text": "true", "list": [1, "x"], "a": "two"})");
    ASSERT_TRUE(top);
    EXPECT_EQ(top->stringMember("a"), "two");
    EXPECT_EQ(top->booleanMember("yes"), true);
    EXPECT_EQ(top->booleanMember("text"), std::nullopt);
    EXPECT_EQ(top->stringMember("yes"), std::nullopt);
    const std::vector<JSONValue> list = top->member("list")->elements();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].boolean(), std::nullopt);
    EXPECT_EQ(list[1].string(), "x");
    EXPECT_FALSE(list[1].member("x"));
    EXPECT_TRUE(top->elements().empty() && list[0].members().empty());
    std::vector<std::string_view> keys;
    for (const auto& [key, value] : top->members()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::string_view>{"yes", "text", "list", "a"}));
    EXPECT_EQ(top->members().back().second.string(), "two");
    // A reader is used again, after a fault too.
    EXPECT_FALSE(reader.read("{"));
    EXPECT_EQ(reader.read("\"" + std::string(200'000, 'y') + "\"")->string()->size(), 200'000U);
}

TEST(JSONWithComments, BlanksRemarksAndLastCommasOutsideStrings) {
    struct Case {
        std::string_view text, plain;
    };
    for (const auto& [text, plain] : {
             Case{"{\"a\": 1,}", "{\"a\": 1 }"},
             Case{"[1, /* x, */ ]", "[1           ]"},
             Case{"[\"//\", \"/*\\\",]\", ] // ,]", "[\"//\", \"/*\\\",]\"  ]      "},
             Case{"1//a\r\n,", "1   \r\n,"},
             Case{"[\"a\", // b\n\t]", "[\"a\"      \n\t]"},
             // What is no JSON stays none.
             Case{"[,]", "[,]"},
             Case{"[1,,]", "[1,,]"},
             Case{"{\"a\":,}", "{\"a\":,}"},
             Case{"[1 /* ]", "[1 /* ]"},
             Case{"[1 / 2]", "[1 / 2]"},
             Case{"[\"a, ]", "[\"a, ]"},
         }) {
        EXPECT_EQ(plainJSON(text), plain) << text;
    }
}

TEST(JSONWriter, EscapesWhatItMustAndKeepsEmptyGroupsShort) {
    JSONWriter json;
    json.beginArray();
    json.beginObject();
    json.endObject();
    json.string("a/\"b\"\\\b\t\n\f\r\x01\x1f é\x7f");
    json.endArray();
    EXPECT_EQ(json.take(), "[\n  {},\n  \"a/\\\"b\\\"\\\\\\b\\t\\n\\f\\r\\u0001\\u001f é\x7f\"\n]");
}

}  // namespace
}  // namespace ScanKit
