#include "ScanKit/Support/TOML.h"

#include <gtest/gtest.h>

#include <string>

namespace ScanKit {
namespace {

std::string repeated(std::string_view part, std::size_t times) {
    std::string text;
    for (std::size_t i = 0; i < times; ++i) {
        text += part;
    }
    return text;
}

/// A value in short: texts in quotes, the rest as it nests.
std::string printed(const DataValue& value) {
    std::string text;
    if (value.kind() == DataValue::Kind::boolean) {
        return value.boolean() == true ? "yes" : "no";
    }
    if (const auto own = value.text()) {
        return "'" + std::string(*own) + "'";
    }
    for (const DataValue& element : value.elements()) {
        text += printed(element) + ",";
    }
    for (const auto& [name, member] : value.members()) {
        text += name + "=" + printed(member) + ",";
    }
    return (value.isList() ? "[" : "{") + text + (value.isList() ? "]" : "}");
}

std::string read(std::string_view text) {
    const std::optional<DataValue> top = readTOML(text);
    return top ? printed(*top) : "absent";
}

TEST(TOML, ReadsTablesInTheOrderOfTheText) {
    const std::pair<std::string_view, const char*> cases[] = {
        {"", "{}"},
        {"\xEF\xBB\xBFz = 'a'\r\na = \"\\u00e9\\n\"\r\n", "{z='a',a='\xC3\xA9\n',}"},
        {"n = 1_000\nh = 0x1F\nf = 2.50\ninf = -inf\nyes = true",
         "{n='1000',h='31',f='2.5',inf='-inf',yes=yes,}"},
        {"d = 2024-05-01\nt = 07:32:00\nz = 2024-05-01T07:32:00Z",
         "{d='2024-05-01',t='07:32:00',z='2024-05-01T07:32:00Z',}"},
        {"[[p]]\nn = 'b'\n[p.x]\nk.'l.m' = {}\n[[p]]\nn = 'a'\n[o]",
         "{p=[{n='b',x={k={l.m={},},},},{n='a',},],o={},}"},
        {"l = [ 'x', # note\n [1], ]\ns = '''\na''''", "{l=['x',['1',],],s='a'',}"},
        {"[[p]]\nn = 1\n[[p]]\nn", "absent"},
        {"a = 1\na = 2", "absent"},
        {"[a]\n[a]", "absent"},
        {"[;a]", "absent"},
        {"[[;a]]", "absent"},
        {"a = 'x", "absent"},
        {"a = '\xFF'", "absent"},
        {std::string_view("a = '\0'", 7), "absent"},
        {"<<<<<<< ours\na = 1\n=======\na = 2\n>>>>>>> theirs\n", "absent"},
        {"{\"a\": 1}", "absent"},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(read(text), value) << text;
    }
}

TEST(TOML, RefusesWhatGoesBeyondItsLimits) {
    const std::pair<std::string, std::string> within[] = {
        {"a = " + repeated("[", 32) + repeated("]", 32), "a = " + repeated("[", 33) + repeated("]", 33)},
        {"a" + repeated(".b", 15) + " = 1", "a" + repeated(".b", 16) + " = 1"},
        {"['='" + repeated(".'='", 15) + "]", "['='" + repeated(".'='", 16) + "]"},
        {"a = ['" + repeated(".", 40) + "', \"\"\"x\"\"\"\"]",
         "a = [\"\"\"x\"\"\"\", {b" + repeated(".b", 16) + "=1}]"},
        {"a = [" + repeated("1,", 100'000) + "]", "a = [" + repeated("1,", 1'000'000) + "]"},
        {"#" + repeated("[.,", 400'000), "#" + std::string(largestTOML, ' ')},
    };
    for (const auto& [good, bad] : within) {
        EXPECT_TRUE(readTOML(good)) << good.substr(0, 100);
        EXPECT_FALSE(readTOML(bad)) << bad.substr(0, 100);
    }
    EXPECT_FALSE(readTOML("a" + repeated(".b", 5'000'000) + " = 1")) << "each part would be a level";
}

}  // namespace
}  // namespace ScanKit
