#include "ScanKit/Readers/NPM/YarnCache.h"

#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Builders/ZipFile.h"

#include <gmock/gmock.h>

namespace ScanKit::NPMParser {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::string manifest(const std::string& version) {
    return R"({"version": ")" + version + "\"}";
}

TEST(YarnCache, FindsTheArchiveOfEachEntry) {
    const TemporaryFolder cache{
        {"notes.txt", ""}, {"short.zip", ""}, {"a-npm-9-0123456789-abcdef.zip", "no archive"}};
    // Only the names of these two are looked at.
    cache.write("a-npm-1.0.0-0123456789-abcdef.zip", "");
    cache.write("a-npm-1.0.0-beta.1-0123456789-abcdef.zip", "");
    cache.write("@s-b-npm-2.0.0-0123456789-abcdef.zip", "");
    writeZip(cache / "d-https-0123456789-abcdef.zip", {{"node_modules/d/package.json", manifest("4")}});
    writeZip(cache / "@s-e-patch-0123456789-abcdef.zip", {{"node_modules/@s/e/package.json", manifest("5")}});
    const TemporaryFolder outside;
    writeZip(outside / "f.zip", {{"node_modules/f/package.json", manifest("6")}});
    cache.link("f-npm-6-0123456789-abcdef.zip", outside / "f.zip");
    Lockfile lockfile{.entries = {{.name = "a", .version = "1.0.0"},
                                  {.name = "a", .version = "1.0.0-beta.1"},
                                  {.name = "@s/b", .version = "2.0.0"},
                                  {.name = "d", .version = "4"},
                                  {.name = "@s/e", .version = "5"},
                                  {.name = "d", .version = "3"},
                                  {.name = "f", .version = "6"},
                                  {.name = "a", .version = "1.0.0", .isOwn = true},
                                  {.name = "../../x", .version = "1"}}};
    std::vector<std::string> names;
    for (const auto& archive : cachedArchives(lockfile, cache.path())) {
        names.push_back(archive ? archive->filename().string() : "-");
    }
    EXPECT_THAT(names,
                ElementsAre("a-npm-1.0.0-0123456789-abcdef.zip", "a-npm-1.0.0-beta.1-0123456789-abcdef.zip",
                            "@s-b-npm-2.0.0-0123456789-abcdef.zip", "d-https-0123456789-abcdef.zip",
                            "@s-e-patch-0123456789-abcdef.zip", "-", "-", "-", "-"));
}

TEST(YarnCache, ReadsThePackageAndItsLicenseFiles) {
    const TemporaryFolder cache;
    const std::string declared = R"({"license": "SEE LICENSE IN ./docs/terms.txt"})";
    writeZip(cache / "a.zip", {{"node_modules/", "", 040755},
                               {"node_modules/@s/a/COPYING", "copying"},
                               {"node_modules/@s/a/LICENSE", "license"},
                               {"node_modules/@s/a/NOTICE", "notice"},
                               {"node_modules/@s/a/docs/LICENSE", "below"},
                               {"node_modules/@s/a/docs/terms.txt", "terms"},
                               {"node_modules/@s/a/license.js", "code"},
                               {"node_modules/@s/a/LICENSE.link", "../../secret", 0120777},
                               {"node_modules/@s/a/node_modules/b/package.json", "{}"},
                               {"node_modules/@s/a/package.json", declared}});
    const auto package = readPackedPackage(cache / "a.zip");
    ASSERT_TRUE(package);
    EXPECT_EQ(package->archive, "a.zip");
    EXPECT_EQ(package->manifest, declared);
    EXPECT_THAT(package->licenseTexts, ElementsAre(Pair("terms.txt", "terms"), Pair("LICENSE", "license"),
                                                   Pair("COPYING", "copying")));
    EXPECT_THAT(package->noticeTexts, ElementsAre(Pair("NOTICE", "notice")));
}

TEST(YarnCache, KeepsWithinThePackageAndTheLimits) {
    const TemporaryFolder cache;
    const std::string large(mostPackedTextBytes + 5, 'x');
    writeZip(cache / "a.zip",
             {{"node_modules/a/package.json", R"({"license": "SEE LICENSE IN ../b/private"})"},
              {"node_modules/b/private", "not this one"},
              {"node_modules/a/LICENSE", large}});
    const auto package = readPackedPackage(cache / "a.zip");
    ASSERT_TRUE(package);
    EXPECT_THAT(package->licenseTexts, ElementsAre(Pair("LICENSE", large.substr(0, mostPackedTextBytes))));

    writeZip(cache / "named.zip",
             {{"node_modules/a/package.json", R"({"license": "SEE LICENSE IN COPYING"})"},
              {"node_modules/a/COPYING", "named"},
              {"node_modules/a/LICENSE", "other"}});
    EXPECT_THAT(readPackedPackage(cache / "named.zip").value().licenseTexts,
                ElementsAre(Pair("COPYING", "named"), Pair("LICENSE", "other")));

    std::vector<ZipMember> many{{"node_modules/a/package.json", "{}"}};
    for (int i = 0; i < 30; ++i) {
        many.push_back({"node_modules/a/LICENSE." + std::to_string(i), large});
    }
    writeZip(cache / "many.zip", many);
    EXPECT_EQ(readPackedPackage(cache / "many.zip").value().licenseTexts.size(),
              mostPackedBytes / mostPackedTextBytes);

    writeZip(cache / "none.zip", {{"package.json", "{}"}, {"node_modules/a/lib/package.json", "{}"}});
    EXPECT_FALSE(readPackedPackage(cache / "none.zip"));
    EXPECT_FALSE(readPackedPackage(cache.write("text.zip", "no archive")));
    EXPECT_FALSE(readPackedPackage(cache / "missing.zip"));
    EXPECT_THAT(cachedArchives({}, cache / "missing"), IsEmpty());
}

}  // namespace
}  // namespace ScanKit::NPMParser
