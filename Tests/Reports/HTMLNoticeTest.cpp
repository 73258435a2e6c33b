#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/HTML/HTMLStyle.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

std::string page(std::vector<Dependency> dependencies) {
    return Exports::html(resultOf(std::move(dependencies)), {.projectName = "demo"});
}

/// What stands between the first `begin` behind each other and the `end` behind it.
std::vector<std::string> allBetween(const std::string& text, const std::string& begin,
                                    const std::string& end) {
    std::vector<std::string> found;
    for (std::size_t place = text.find(begin); place != std::string::npos; place = text.find(begin, place)) {
        place += begin.size();
        found.push_back(text.substr(place, text.find(end, place) - place));
    }
    return found;
}

std::string unescaped(std::string text) {
    for (const auto& [escape, character] :
         {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}}) {
        text = Text::replacingAll(text, escape, character);
    }
    return text;
}

/// The texts as a browser gives them: without the line feed behind the tag.
std::vector<std::string> textsOf(const std::string& html) {
    std::vector<std::string> texts;
    for (const std::string& text : allBetween(html, "<pre dir=\"auto\">\n", "</pre>")) {
        texts.push_back(unescaped(text));
    }
    return texts;
}

TEST(HTMLNotice, GivesEachTextOnceWithAllItsPackages) {
    const std::string shared = "\n\n  Shared & <b>bold</b>\n\n", other = "Shared\n";
    const std::string html =
        page({{.name = "a", .version = "1", .license = "MIT", .licenseText = shared},
              {.name = "b", .license = "ISC", .licenseText = other, .noticeText = shared},
              {.name = "c", .version = "3", .license = "MIT", .licenseText = shared, .noticeText = shared},
              {.name = "d", .license = "MIT AND ISC"},
              {.name = "e", .license = "ISC"},
              {.name = "f", .licenseText = shared}});
    const auto texts = textsOf(html);
    ASSERT_EQ(texts.size(), 5U) << "a license is no notice, whatever it says";
    EXPECT_THAT(std::vector(texts.begin(), texts.begin() + 3), ElementsAre(shared, other, shared));
    EXPECT_THAT(
        allBetween(html, "<h3>", "</h3>"),
        ElementsAre("MIT: a 1 and 2 more", "ISC: b", "Notice: b and 1 more", "MIT: d", "ISC: d and 1 more"));
    EXPECT_THAT(
        allBetween(html, "<li><a href=\"", "</li>"),
        ElementsAre(
            "#t1\">a 1</a> <span class=\"quiet\">MIT</span>",
            HasSubstr("#t3\" aria-label=\"notice of b\">notice</a>"),
            HasSubstr("#t3\" aria-label=\"notice of c\">notice</a>"),
            "#t4\">d</a> <span class=\"quiet\">MIT AND ISC · <a href=\"#t5\" aria-label=\"further text of d\">further text</a></span>",
            HasSubstr("#t5\">e<"), HasSubstr("license unknown")));
    EXPECT_THAT(allBetween(html, "<section id=\"", "\">"), ElementsAre("t1", "t2", "t3", "t4", "t5"));
    EXPECT_THAT(page({{.name = "g", .license = "MIT AND BSL-1.0"}}),
                HasSubstr("<h3>BSL-1.0, not included: g</h3>"));
}

TEST(HTMLNotice, LinksOnlyToTheWeb) {
    const std::pair<const char*, const char*> cases[]{
        {"https://example.com/a?b=\"c\"&d='e'",
         "<a href=\"https://example.com/a?b=&quot;c&quot;&amp;d=&#39;e&#39;\">"},
        {"http://example.com/", "<a href=\"http://example.com/\">http://example.com/</a>"},
        {"javascript:alert(1)", "Source: javascript:alert(1)</p>"},
        {"data:text/html,<script>", "Source: data:text/html,&lt;script&gt;</p>"},
        {"git+https://example.com/", "Source: git+https://example.com/</p>"},
    };
    for (const auto& [source, written] : cases) {
        EXPECT_THAT(page({{.name = "p", .source = source}}), HasSubstr(written));
    }
}

TEST(HTMLNotice, ShowsInPlaceOfWhatAPageMayNotHold) {
    const std::string text = "a\x01\x1B[2J\x7F \u0080\u0085\u009F é\u00A0漢\tb\f\r\n";
    EXPECT_THAT(textsOf(page({{.name = "p", .licenseText = text}})),
                ElementsAre("a\uFFFD\uFFFD[2J\uFFFD \uFFFD\n\uFFFD é\u00A0漢\tb\f\r\n"));
    EXPECT_THAT(page({{.name = "p", .licenseText = "cut \xC2"}}), HasSubstr("cut \xC2</pre>"));
    EXPECT_THAT(page({{.name = "שם", .version = "1"}}),
                HasSubstr("<h3>No license text: <bdi>שם</bdi> 1</h3>"));
}

/// SHA-256 in base 64, as a policy names it.
std::string digestOf(const std::string& text) {
    const TemporaryFolder folder{{"text", text}};
    const std::string file = " '" + (folder / "text").string() + "' 2>/dev/null";
    const std::string command = "sha256sum" + file + " || shasum -a 256" + file;
    std::array<char, 65> hex{};
    FILE* const output = popen(command.c_str(), "r");
    const bool isRead = output != nullptr && std::fgets(hex.data(), hex.size(), output) != nullptr;
    EXPECT_TRUE(isRead && pclose(output) == 0);
    std::string bits;
    for (const char* digit = hex.data(); *digit != '\0'; ++digit) {
        for (unsigned bit = 8; bit > 0; bit /= 2) {
            bits += (std::strtoul(std::string(1, *digit).c_str(), nullptr, 16) & bit) != 0 ? '1' : '0';
        }
    }
    static constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string base64;
    for (bits += "00"; base64.size() < 43; bits.erase(0, 6)) {
        base64 += letters[std::strtoul(bits.substr(0, 6).c_str(), nullptr, 2)];
    }
    return base64 + "=";
}

TEST(HTMLNotice, AppliesItsOwnStyleAndNothingElse) {
    EXPECT_EQ(Exports::htmlStyleDigest, digestOf(Exports::htmlStyle))
        << "a browser would leave the page bare";
    const std::string html = Exports::html(sampleResult(), sampleOptions());
    EXPECT_EQ(allBetween(html, "<style>", "</style>"), std::vector<std::string>{Exports::htmlStyle});
    EXPECT_THAT(
        html, HasSubstr("content=\"default-src 'none'; style-src 'sha256-" +
                        std::string(Exports::htmlStyleDigest) + "'; base-uri 'none'; form-action 'none'\""));
    for (const char* loaded : {"<script", "<link", "<img", " src=", " style=", "url(", "@import"}) {
        EXPECT_THAT(html, Not(HasSubstr(loaded)));
    }
}

}  // namespace
}  // namespace ScanKit
