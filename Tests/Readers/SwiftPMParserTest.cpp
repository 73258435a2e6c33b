#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

namespace ScanKit::SwiftPMParser {
namespace {

TEST(SwiftPins, ReadsEveryFormatVersionAlikeAndDropsLocalOnes) {
    const Pin example{.identity = "example",
                      .name = "Example",
                      .location = "https://host/o/Example.git",
                      .version = "1.2.3",
                      .revision = "0123456789"};
    EXPECT_EQ(pins(R"({"object": {"pins": [
        {"package": "Example", "repositoryURL": "https://host/o/Example.git",
         "state": {"branch": null, "revision": "0123456789", "version": "1.2.3"}}]}, "version": 1})"),
              std::vector{example});
    EXPECT_EQ(pins(R"({"pins": [
        {"identity": "example", "kind": "remoteSourceControl", "location": "https://host/o/Example.git",
         "repositoryURL": "https://host/o/Old.git", "state": {"revision": "0123456789", "version": "1.2.3"}},
        {"location": 7, "repositoryURL": "git@host:Repo.git", "identity": false, "state": []},
        {"identity": "AsWritten", "package": "", "kind": "registry"},
        {"kind": "remoteSourceControl", "location": "/"},
        {"identity": "local", "kind": "fileSystem"},
        {"identity": "local", "kind": "localSourceControl"}], "version": 2})"),
              (std::vector<Pin>{example,
                                {.identity = "repo", .name = "Repo", .location = "git@host:Repo.git"},
                                {.identity = "AsWritten", .name = ""}}));
    // A list that does not count leaves the other one to be read.
    EXPECT_EQ(pins(R"({"object": {"pins": [1]}, "pins": [{"identity": "a"}]})"),
              (std::vector<Pin>{{.identity = "a", .name = "a"}}));
    EXPECT_EQ(pins("{\"pins\": " + std::string(100'000, '[') + std::string(100'000, ']') + "}"),
              std::nullopt);
    EXPECT_EQ(pins(R"({"pins": []})"), std::vector<Pin>{});
    for (const char* text : {"", "[]", "{", R"({"pins": {}})", R"({"pins": [{"identity": "a"}, 1]})",
                             R"({"object": {"pins": [null]}})", "{\"pins\": [{\"identity\": \"\xFF\"}]}"}) {
        EXPECT_EQ(pins(text), std::nullopt) << text;
    }
}

TEST(SwiftPins, NamesAPackageAfterItsLocation) {
    constexpr std::pair<const char*, const char*> cases[]{{"https://host/owner/Repo.git", "Repo"},
                                                          {"git@host:Repo.git", "Repo"},
                                                          {"git@host:owner/Repo", "Repo"},
                                                          {"https://host/owner/Repo//", "Repo"},
                                                          {"Repo.GIT", "Repo.GIT"},
                                                          {"https://host/.git", ""},
                                                          {"ssh://git@host:22/Repo.git", "Repo"},
                                                          {"///", ""},
                                                          {"", ""}};
    for (const auto& [location, name] : cases) {
        EXPECT_EQ(packageName(location), name) << location;
    }
}

TEST(SwiftPins, ShowsTheVersionElseBranchAndShortRevision) {
    const std::pair<Pin, const char*> cases[]{
        {{.version = "1.2.3", .branch = "main", .revision = "0123"}, "1.2.3"},
        {{.branch = "main", .revision = "0123456789abcdef"}, "main @ 0123456"},
        {{.revision = "0123456789abcdef"}, "0123456"},
        {{.revision = "0123"}, "0123"},
        {{.branch = "main"}, "main"},
        {{}, "unversioned"},
    };
    for (const auto& [pin, shown] : cases) {
        EXPECT_EQ(pin.displayVersion(), shown);
    }
}

TEST(SwiftDependencies, FindsFoldersByIdentityThenLocationThenName) {
    const TemporaryFolder folder{{"one/Swift-Log/LICENSE.txt", ""},
                                 {"one/Swift-Log/NOTICE", ""},
                                 {"two/swift-log/LICENSE", ""},
                                 {"two/byname/x", ""},
                                 {"two/afile", ""},
                                 {"two/UPPER/LICENSE", ""}};
    folder.link("two/afile-link", "afile");
    const auto log = folder / "one/Swift-Log";
    const std::pair<Pin, std::optional<std::filesystem::path>> cases[]{
        {{.identity = "swift-log", .name = "x", .location = "https://host/o/upper", .version = "1"}, log},
        {{.identity = "other", .name = "swift-log", .location = "https://host/o/UPPER.git"},
         folder / "two/UPPER"},
        {{.identity = "third", .name = "ByName", .location = "https://host/o/gone"}, folder / "two/byname"},
        {{.identity = "UPPER", .name = "UPPER"}, folder / "two/UPPER"},  // by its name in lower case
        {{.identity = "afile", .name = "afile"}, std::nullopt},
        {{.identity = "afile-link", .name = "afile-link"}, std::nullopt},
    };
    for (const auto& [pin, found] : cases) {
        const auto read = dependencies({pin}, {folder / "gone", folder / "one", folder / "two"});
        EXPECT_EQ(read.at(0).folder, found) << testing::PrintToString(pin);
    }
    EXPECT_EQ(
        dependencies(
            {{.identity = "swift-log", .name = "Log", .location = "https://host/o/log.git", .version = "1"},
             {.identity = "gone", .name = "gone", .location = " "}},
            {folder / "one"}),
        (std::vector<RawDependency>{{.name = "Log",
                                     .version = "1",
                                     .source = "https://host/o/log.git",
                                     .folder = log,
                                     .licenseFiles = {log / "LICENSE.txt"},
                                     .noticeFiles = {log / "NOTICE"}},
                                    {.name = "gone", .version = "unversioned"}}));
}

TEST(SwiftDependencies, ReportsAnIdentityOnceFromItsFirstPin) {
    std::vector<Pin> written;
    for (const char* identity : {"b", "a", "b", "B"}) {
        written.push_back(
            {.identity = identity, .name = identity, .version = std::to_string(written.size())});
    }
    std::vector<std::string> told;
    const ReadControl control{.threadLimit = 1,
                              .packageRead = [&](std::string_view name) { told.emplace_back(name); }};
    EXPECT_EQ(
        dependencies(written, {}, control),
        (std::vector<RawDependency>{
            {.name = "b", .version = "0"}, {.name = "a", .version = "1"}, {.name = "B", .version = "3"}}));
    EXPECT_EQ(told, (std::vector<std::string>{"b", "a", "B"}));
}

}  // namespace
}  // namespace ScanKit::SwiftPMParser
