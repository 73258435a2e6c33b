#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Readers/Python/PythonParser.h"
#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <sys/stat.h>

namespace ScanKit::PythonParser {
namespace {

using Paths = std::vector<std::filesystem::path>;
using Names = std::vector<std::string>;

/// One distribution's metadata folder.
class Distribution {
public:
    explicit Distribution(const std::string& headers)
        : Distribution("METADATA", "Name: pkg\nVersion: 1.0\n" + headers) {}
    Distribution(const char* metadataName, const std::string& metadata) { write(metadataName, metadata); }
    void write(const std::string& below, const std::string& content = "") const {
        site.write(name + "/" + below, content);
    }
    std::filesystem::path path() const { return site / name; }
    std::optional<Installed> read() const { return distribution(path()); }
    Names licenseFiles() const {
        const Installed found = read().value();
        Names names;
        for (const auto& file : found.licenseFiles) {
            names.push_back(file.lexically_relative(path()).string());
        }
        return names;
    }

    std::string name = "pkg-1.0.dist-info";
    TemporaryFolder site;
};

RawDependency package(const std::string& name, const std::string& version) {
    return {.ecosystem = Ecosystem::python, .name = name, .version = version};
}

TEST(PythonRequirements, ReadsNameAndExactVersionOfALine) {
    const std::pair<const char*, Requirement> cases[] = {
        {"requests==2.31.0", {"requests", "2.31.0"}},
        {"requests === 2.31.0", {"requests", "2.31.0"}},
        {"requests==2.31.0; python_version < '3'", {"requests", "2.31.0"}},
        {"requests[security] ==2.31.0 --hash=x", {"requests", "2.31.0"}},
        {"requests>=2.0,==2.31.*", {"requests", "2.31.*"}},
        {"requests~=2.0 ; x==1", {"requests"}},
        {"  zope.interface_x-y  ", {"zope.interface_x-y"}},
        {"foo # ==1.0", {"foo"}},
        {"foo#bar", {"foo"}},
        {"foo\u00A0#bar==1", {"foo"}},
    };
    for (const auto& [line, requirement] : cases) {
        EXPECT_EQ(requirementsFromText(line, false), std::vector{requirement}) << line;
    }
    for (const char* line : {"# comment", "-r other.txt", "--hash=sha256:0", "./local/pkg", "/local/pkg",
                             "pkg @ https://host/pkg.whl", ";x", "\xC3\xA9t\xC3\xA9", " \t"}) {
        EXPECT_EQ(requirementsFromText(line, false), std::vector<Requirement>{}) << line;
    }
    EXPECT_EQ(requirementsFromText("a\r\nb\rc\u2028d\n\n", true),
              (std::vector<Requirement>{{"a", {}, true}, {"b", {}, true}, {"c", {}, true}, {"d", {}, true}}));
}

TEST(PythonRequirements, ReadsBlocksOfAPoetryLock) {
    const auto found = requirementsFromPoetryLock(R"(name = "before"
[[package]]
name = "alpha"
version = '1.0'
category = "dev"
files = [ {file = "alpha.whl"} ]
[package.dependencies]
version = "9"
[[package]]
  version="2.0"
  name="beta"
namespace = "no"
[[package]]
version = "3.0"
[[package]]
name = "gamma"
category = "main"
[metadata]
version = "9"
)");
    EXPECT_EQ(found, (std::vector<Requirement>{{"alpha", "1.0", true}, {"beta", "2.0"}, {"gamma"}}));
}

TEST(PythonEnvironments, FindsSitePackagesOfEveryLayoutOnce) {
    const TemporaryFolder env{{"lib/python3.12/site-packages/x", ""},
                              {"lib/python3.9/site-packages/x", ""},
                              {"lib/site-packages/x", ""},
                              {"lib/python/site-packages/x", ""},
                              {"lib/python/python3/site-packages/x", ""},
                              {"lib/ruby/site-packages/x", ""},
                              {"lib/python2/site-packages", "a file"}};
    env.link("lib/python3", "python3.12");
    EXPECT_EQ(
        sitePackages(env.path()),
        (Paths{env / "lib/site-packages", env / "lib/python/site-packages", env / "lib/python3/site-packages",
               env / "lib/python3.9/site-packages", env / "lib/python/python3/site-packages"}));
    const TemporaryFolder windows{{"Lib/site-packages/x", ""}};
    EXPECT_EQ(sitePackages(windows.path()), Paths{windows / "Lib/site-packages"});
    EXPECT_EQ(sitePackages(env / "lib/site-packages/"), Paths{env / "lib/site-packages/"});
    EXPECT_EQ(sitePackages("/usr/lib/python3/dist-packages"), Paths{"/usr/lib/python3/dist-packages"});
    EXPECT_EQ(sitePackages(env / "gone"), Paths{});
}

TEST(PythonDistribution, ReadsHeadersUpToTheFirstEmptyLine) {
    const Distribution package(
        "METADATA",
        "\xEF\xBB\xBFmetadata-version: 2.1\r\nNAME:  My.Pkg \r\nVersion: 1:2\r\nno colon\r\n"
        "License: first\r\n        |second\r\n\tthird\r\n   \r\n"
        "License: fourth\r\nName: Other\r\nVersion: 2\r\n"
        "Classifier: License :: OSI Approved :: MIT License\r\nClassifier: Topic :: X\r\n"
        "Summary: na\xEFve\r\n\r\nLicense-Expression: MIT\r\n");
    EXPECT_EQ(package.read(),
              (Installed{.name = "My.Pkg",
                         .version = "1:2",
                         .license = "first\nsecond\nthird",
                         .classifiers = {"License :: OSI Approved :: MIT License", "Topic :: X"},
                         .folder = package.path()}));
}

TEST(PythonDistribution, IsNoneWithoutReadableNameAndVersion) {
    for (const char* metadata : {"Name: a\n", "Version: 1\n\nName: a\n", "Name:  \nVersion: 1\n", ""}) {
        EXPECT_EQ(Distribution("METADATA", metadata).read(), std::nullopt) << metadata;
    }
    const TemporaryFolder site{{"a.egg-info/PKG-INFO", "Name: a\nVersion: 1\n"},
                               {"b.dist-info/PKG-INFO", "Name: METADATA counts here\nVersion: 1\n"}};
    ASSERT_EQ(mkfifo((site.makeFolder("p.dist-info") / "METADATA").c_str(), 0600), 0);
    EXPECT_TRUE(distribution(site / "a.egg-info"));
    EXPECT_EQ(distribution(site / "a.egg-info/"), distribution(site / "a.egg-info"));
    EXPECT_EQ(distribution(site / "b.dist-info"), std::nullopt);
    EXPECT_EQ(distribution(site / "p.dist-info"), std::nullopt);
}

TEST(PythonDistribution, TakesTheFirstHeaderThatSaysSomething) {
    for (const std::string license : {"UNKNOWN", "none", "Unknown", " ", ""}) {
        const auto read =
            Distribution("License: " + license + "\nLicense-Expression:  \nLicense: MIT\n").read();
        EXPECT_EQ(read.value().license, std::nullopt) << license;
        EXPECT_EQ(read.value().licenseExpression, std::nullopt);
    }
    const std::pair<const char*, std::optional<std::string>> links[]{
        {"Home-page: https://home\nProject-URL: Source, https://source\n", "https://home"},
        {"Home-page: UNKNOWN\nProject-URL: Docs, https://d\nProject-URL: Source Code, https://s,x\n",
         "https://s,x"},
        {"Home-page:\nProject-URL: Homepage,\nProject-URL: REPOSITORY, https://repo\n", "https://repo"},
        {"Project-URL: Home, https://no\nProject-URL: homepage, https://h\nProject-URL: Source, https://s",
         "https://h"},
        {"Project-URL: homepage https://no-comma\nProject-URL: Open source, https://other\n", std::nullopt},
    };
    for (const auto& [headers, link] : links) {
        EXPECT_EQ(Distribution(headers).read().value().homepage, link) << headers;
    }
}

TEST(PythonDistribution, FindsLicenseFilesWhereMetadataOfAnyAgePutsThem) {
    const Distribution named(
        "License-File: LICENSE\nLicense-File: AUTHORS\nLicense-File: vendor/LICENSE\nLicense-File: "
        "sub/NOTES\n"
        "License-File: licenses/LICENSE\nLicense-File: gone\n");
    for (const char* file : {"LICENSE", "licenses/LICENSE", "AUTHORS", "licenses/vendor/LICENSE", "sub/NOTES",
                             "licenses/sub/NOTES", "COPYING"}) {
        named.write(file);
    }
    EXPECT_EQ(named.licenseFiles(),
              (Names{"licenses/LICENSE", "AUTHORS", "licenses/vendor/LICENSE", "sub/NOTES"}));
    const Distribution searched("License-File: gone\n");
    for (const char* file : {"COPYING", "LICENSE", "licenses/LICENSE.txt", "licenses/NOTICE"}) {
        searched.write(file);
    }
    EXPECT_EQ(searched.licenseFiles(), (Names{"LICENSE", "COPYING", "licenses/LICENSE.txt"}));
    const Distribution outside(
        "License-File: ../secret\nLicense-File: /etc/passwd\nLicense-File: out\nLicense-File: "
        "licenses/LICENSE\n");
    outside.site.write("private/LICENSE", "");
    outside.site.link(outside.name + "/out", outside.site.write("secret", ""));
    outside.site.link(outside.name + "/LICENSE", "../secret");
    outside.site.link(outside.name + "/licenses", "../private");
    EXPECT_EQ(outside.licenseFiles(), Names{});
}

TEST(PythonInstalled, KeepsTheFirstOfEachName) {
    const TemporaryFolder env{{"one/My_Pkg.dist-info/METADATA", "Name: My_Pkg\nVersion: 1\n"},
                              {"two/my-pkg.egg-info/PKG-INFO", "Name: my-pkg\nVersion: 2\n"},
                              {"two/Other.-_x.dist-info/METADATA", "Name: Other.-_x\nVersion: 3\n"},
                              {"two/file.egg-info", "Name: file\nVersion: 1\n"},
                              {"two/folder.dist-info-old/METADATA", "Name: old\nVersion: 1\n"}};
    const InstalledPackages expected{
        {"my-pkg", {.name = "My_Pkg", .version = "1", .folder = env / "one/My_Pkg.dist-info"}},
        {"other-x", {.name = "Other.-_x", .version = "3", .folder = env / "two/Other.-_x.dist-info"}}};
    for (const unsigned threads : {1U, 8U}) {
        EXPECT_EQ(installed({env / "gone", env / "one", env / "two"}, {.threadLimit = threads}), expected);
    }
    EXPECT_EQ(normalizedName("_a_"), "-a-");
}

TEST(PythonDependencies, JoinsWhatIsDeclaredWithWhatIsInstalled) {
    const InstalledPackages packages{
        {"pip", {.name = "pip", .version = "24"}},
        {"setuptools", {.name = "setuptools", .version = "69"}},
        {"wheel", {.name = "wheel", .version = "1"}},
        {"my-lib",
         {.name = "My_Lib",
          .version = "1.5",
          .license = "old",
          .licenseExpression = "MIT",
          .classifiers = {"License :: OSI Approved", "Topic :: X", "license :: no"},
          .homepage = "https://host/lib",
          .folder = "/env/My_Lib.dist-info",
          .licenseFiles = {"/env/My_Lib.dist-info/LICENSE"}}},
        {"extra", {.name = "extra", .version = "2", .license = "BSD"}}};
    RawDependency library = package("My_Lib", "1.5"), extra = package("extra", "2"),
                  dev = package("Dev", "2");
    library.source = "https://host/lib";
    library.isDev = dev.isDev = true;
    library.declared = "MIT";
    library.classifiers = {"License :: OSI Approved"};
    library.folder = "/env/My_Lib.dist-info";
    library.licenseFiles = {"/env/My_Lib.dist-info/LICENSE"};
    extra.declared = "BSD";
    extra.folder = "";
    RawDependency setuptools = package("setuptools", "69");
    setuptools.folder = "";
    EXPECT_EQ(dependencies({{"my.lib", "1.0", true}, {"SetupTools"}, {"absent"}, {"Pinned", "3"}}, packages),
              (std::vector{extra, library, setuptools, package("absent", "any"), package("Pinned", "3")}));
    // A later requirement counts unless it forgets the version.
    EXPECT_EQ(dependencies({{"a", "1"}, {"A"}, {"b", "1"}, {"B", "2"}, {"c"}, {"C"}}, {}),
              (std::vector{package("a", "1"), package("B", "2"), package("C", "any")}));
    // What ships stands before what development needs, whichever comes first.
    EXPECT_EQ(dependencies({{"a", "1"},
                            {"A", "2", true},
                            {"B", "2", true},
                            {"b", "1"},
                            {"C", "3", true},
                            {"c"},
                            {"dev", "1", true},
                            {"Dev", "2", true}},
                           {}),
              (std::vector{package("a", "1"), package("b", "1"), package("c", "3"), dev}));
}

}  // namespace
}  // namespace ScanKit::PythonParser
