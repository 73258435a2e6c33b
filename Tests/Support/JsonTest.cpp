#include "ScanKit/Support/Json.h"

#include "ScanKit/Support/JsonWriter.h"

#include <string>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

bool isDocument(std::string_view text) {
    JsonReader reader;
    return reader.read(text).has_value();
}

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(JsonReader, RefusesWhatIsNoWholeDocument) {
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

TEST(JsonReader, TakesAThousandLevelsAndNoMore) {
    EXPECT_TRUE(isDocument(nested(1000)));
    EXPECT_FALSE(isDocument(nested(1001)));
    EXPECT_FALSE(isDocument(nested(200'000)));
    EXPECT_FALSE(isDocument(std::string(400'000, '{')));
}

TEST(JsonReader, TakesIntegersThatOnlyADoubleCanHold) {
    JsonReader reader;
    const auto top = reader.read(
        R"({"a": 123456789012345678901234567890, "b\"": "98765432109876543210", "c": -9999999999999999999})");
    ASSERT_TRUE(top);
    EXPECT_EQ(top->member("a")->number(), 123456789012345678901234567890.0);
    EXPECT_EQ(top->stringMember("b\""), "98765432109876543210");
    EXPECT_EQ(top->member("c")->number(), -9999999999999999999.0);
    EXPECT_FALSE(isDocument("[123456789012345678901234567890, 1e400]"));
}

TEST(JsonReader, LastOfEqualKeysCounts) {
    JsonReader reader;
    const auto top = reader.read(R"({"a": 1, "b": true, "a": "two"})");
    ASSERT_TRUE(top);
    EXPECT_EQ(top->stringMember("a"), "two");
    std::vector<std::string_view> keys;
    for (const auto& [key, value] : top->members()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::string_view>{"b", "a"}));
    EXPECT_EQ(top->members().back().second.string(), "two");
}

TEST(JsonReader, ConvertsNothing) {
    JsonReader reader;
    const auto top = reader.read(R"({"one": 1, "text": "true", "yes": true, "list": [1, "x"]})");
    ASSERT_TRUE(top);
    EXPECT_FALSE(top->booleanMember("one"));
    EXPECT_FALSE(top->booleanMember("text"));
    EXPECT_EQ(top->booleanMember("yes"), true);
    EXPECT_FALSE(top->stringMember("yes"));
    EXPECT_FALSE(top->member("list")->member("x"));
    EXPECT_EQ(top->member("list")->elements().size(), 2U);
    EXPECT_TRUE(top->elements().empty());
    EXPECT_TRUE(top->member("yes")->members().empty());
}

TEST(JsonReader, ReadsAgainAfterAFault) {
    JsonReader reader;
    EXPECT_FALSE(reader.read("{"));
    EXPECT_EQ(reader.read("\"x\"")->string(), "x");
    EXPECT_EQ(reader.read("\"" + std::string(200'000, 'y') + "\"")->string()->size(), 200'000U);
}

TEST(JsonWriter, WritesGroupsEscapesAndNumbers) {
    JsonWriter json;
    json.beginObject();
    json.key("empty");
    json.beginArray();
    json.endArray();
    json.key("list");
    json.beginArray();
    json.string("a/\"b\"\\\b\t\n\f\r\x01\x1f é\x7f");
    json.number(1.0);
    json.number(0.996);
    json.integer(-3);
    json.boolean(true);
    json.beginObject();
    json.endObject();
    json.endArray();
    json.endObject();
    EXPECT_EQ(json.take(),
              "{\n  \"empty\" : [],\n  \"list\" : [\n    "
              "\"a/\\\"b\\\"\\\\\\b\\t\\n\\f\\r\\u0001\\u001f é\x7f\",\n    1,\n    0.996,\n    -3,\n    "
              "true,\n    {}\n  ]\n}");
}

}  // namespace
}  // namespace ScanKit
