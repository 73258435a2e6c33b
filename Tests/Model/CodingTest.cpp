#include "ScanKit/Model/Coding.h"

#include "Tests/Builders/Printers.h"

namespace ScanKit {
namespace {

const Dependency full{
    .ecosystem = Ecosystem::npm,
    .name = "@scope/\"näme\"",
    .version = "1.0.0",
    .source = "https://example.com",
    .isDev = true,
    .declared = "GPL-2.0+",
    .license = "GPL-2.0-or-later",
    .category = LicenseCategory::strongCopyleft,
    .basis = LicenseBasis::metadataAndText,
    .matchScore = 0.996,
    .licenseFileNames = {"LICENSE", "COPYING"},
    .licenseText = "line\nline\n",
    .noticeText = "notice",
    .flags = {Flag::strongCopyleft, Flag::mismatch},
    .notes = {"One.", "Two."},
};

TEST(Coding, ReadsBackWhatItWrote) {
    const Dependency bare{.name = "bare"};
    const ScanSource source{Ecosystem::python, ".venv", "Installed packages"};
    const ScanResult result{.projectName = "p",
                            .rootPath = "/p",
                            .scannedAt = Date{std::chrono::seconds{1767621802}},
                            .sources = {source},
                            .dependencies = {full, bare},
                            .warnings = {"w"}};
    EXPECT_EQ(decodedDependency(encoded(full)), full);
    EXPECT_EQ(decodedDependency(encoded(bare)), bare);
    EXPECT_EQ(decodedScanSource(encoded(source)), source);
    EXPECT_EQ(decodedScanResult(encoded(result)), result);
}

TEST(Coding, NamesKeysAfterFieldsAndLeavesAbsentOnesOut) {
    EXPECT_EQ(
        encoded(ScanSource{Ecosystem::python, ".venv", "Installed packages"}),
        "{\n  \"ecosystem\" : \"python\",\n  \"path\" : \".venv\",\n  \"kind\" : \"Installed packages\"\n}");
    const std::string bare = encoded(Dependency{.name = "bare"});
    for (const char* key :
         {"source", "declared", "license\"", "matchScore", "licenseText", "noticeText", "null"}) {
        EXPECT_EQ(bare.find(key), std::string::npos) << key;
    }
}

TEST(Coding, RefusesWhatIsNotARecord) {
    const auto changed = [](const std::string& good, std::string_view what, std::string_view replacement) {
        std::string text = good;
        text.replace(text.find(what), what.size(), replacement);
        return text;
    };
    EXPECT_EQ(decodedDependency(changed(encoded(full), "\"isDev\"", "\"more\" : 1, \"isDev\"")), full);
    EXPECT_EQ(decodedDependency("[]"), std::nullopt);
    EXPECT_EQ(decodedDependency(""), std::nullopt);
    constexpr std::pair<const char*, const char*> faults[]{
        {"\"npm\"", "\"NPM\""},
        {"\"mismatch\"", "\"odd\""},
        {"\"isDev\"", "\"dev\""},
        {"0.996", "\"0.996\""},
        {"\"One.\"", "1"},
        {"\"notes\"", "\"n\""},
        {"\"GPL-2.0+\"", "null"},  // an absent text is left out, never null
        {"[\n    \"One.\",\n    \"Two.\"\n  ]", "\"One.\""},
    };
    for (const auto& [what, replacement] : faults) {
        EXPECT_EQ(decodedDependency(changed(encoded(full), what, replacement)), std::nullopt) << replacement;
    }
    const std::string result = encoded(ScanResult{.dependencies = {full}});
    EXPECT_TRUE(decodedScanResult(result));
    for (const auto& [what, replacement] :
         {std::pair{"1970-01-01T", "1970-01-01 "}, {"\"npm\"", "\"NPM\""}}) {
        EXPECT_EQ(decodedScanResult(changed(result, what, replacement)), std::nullopt) << replacement;
    }
}

}  // namespace
}  // namespace ScanKit
