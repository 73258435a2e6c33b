#include "ScanKit/Reports/PDF/PDFText.h"

#include "ScanKit/Support/Text.h"

#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(PDFText, TellsWhereAPackageComesFrom) {
    for (const auto& [source, name, shown] :
         {std::tuple{"https://example.com/acme/kit.git", "kit", "example.com/acme"},
          {"https://registry.example.com/@Acme/Kit/-/kit-1.0.tgz", "@acme/kit", "registry.example.com"},
          {"https://example.com/kit-1.0.tgz", "kit", "example.com"},
          {"https://example.com/a/kit.tgz", "kit", "example.com/a"},
          {"https://registry.example.com/kit/-/kit-1.0.tgz", "kit", "registry.example.com"},
          {"https://example.com/kit/kit", "kit", "example.com/kit"},
          {"https://example.com/kit-js/kit.git#main", "kit", "example.com/kit-js"},
          {"https://example.com/kit/kit-js.git", "kit", "example.com/kit/kit-js.git"},
          {"https://example.com/kit-js/other", "kit", "example.com/kit-js/other"},
          {"https://example.com/kitchen/sink", "kit", "example.com/kitchen/sink"},
          {"ssh://git@example.com/other", "kit", "git@example.com/other"},
          {"../kit", "kit", ".."},
          {"kit", "kit", "kit"},
          {"/kit", "kit", "/kit"},
          {"local", "", "local"}}) {
        EXPECT_EQ(shownSource(source, name), shown) << source;
    }
}

TEST(PDFText, KeepsThePunctuationOfANameOnItsSide) {
    for (const auto& [text, kept] :
         {std::pair{"a “שלום!” b “plain” c “עם", "a “\u200E\u200Fשלום!\u200F” b “plain” c “עם"},
          {"“(مرحبا)”", "“\u200E\u200F(مرحبا)\u200F”"},
          {"שלום", "שלום"},
          {"”“", "”“"}}) {
        EXPECT_EQ(keepingQuotedDirection(text), kept);
    }
    EXPECT_EQ(keepingDirection("1. שלום!"), "\u200E\u200F1. שלום!\u200F");
    EXPECT_EQ(keepingDirection("Kit שלום!"), "Kit שלום!");
}

TEST(PDFText, KeepsTheFoldersOfAPathInTheirOrder) {
    for (const auto& [path, kept] : {std::pair{"שלום!/עם/7/a.json",
                                               "\u200E\u200Fשלום!\u200F\u200E/"
                                               "\u200E\u200Fעם\u200F\u200E/7/a.json"},
                                     {"~/a (b)/ä", "~/a (b)/ä"},
                                     {"/שלום/", "/\u200E\u200Fשלום\u200F\u200E/"},
                                     {"", ""}}) {
        EXPECT_EQ(keepingPathDirection(path), kept);
        EXPECT_FALSE(Text::isRightToLeft(kept)) << path;
    }
}

TEST(PDFText, ShowsWhatCannotBeDrawnAsBlanks) {
    const std::pair<std::string, std::string> cases[] = {
        {"a\tb\r\nc", "a b  c"},        {std::string("a\0b", 3), "a b"},
        {"\xFFx", "\uFFFDx"},           {"\x01\x7F\u0080\u009F\u00A0\u2028\u2029", "    \u00A0  "},
        {"שלום 名前 😀", "שלום 名前 😀"}, {"evil\u202Agpj\u202E.exe\u2066\u2069", "evilgpj.exe"}};
    for (const auto& [text, shown] : cases) {
        EXPECT_EQ(displayText(text), shown);
    }
}

TEST(PDFText, LeadsOnlyToAddressesOfTheWeb) {
    for (const auto& [source, link] :
         {std::pair{"https://e.com/a?b=c#~", "https://e.com/a?b=c#~"},
          {"HTTP://example.com/ä b", "HTTP://example.com/%C3%A4%20b"},
          {"https://e.com/'\\(x)<\"y\">\n\x7F", "https://e.com/%27%5C%28x%29%3C%22y%22%3E%0A%7F"}}) {
        EXPECT_EQ(linkAddress(source), link);
    }
    for (const char* source : {"javascript:alert(1)", "file:///etc/passwd", "git+https://example.com/a.git",
                               "https:example.com", "http", ""}) {
        EXPECT_EQ(linkAddress(source), std::nullopt) << source;
    }
}

}  // namespace
}  // namespace ScanKit
