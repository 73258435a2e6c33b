#include "ScanKit/Scan/ProjectDetection.h"

#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

namespace ScanKit {
namespace {

using Names = std::vector<std::string>;

/// The paths below the project, so that a test shows what it expects.
Names below(const TemporaryFolder& project, const std::vector<std::filesystem::path>& paths) {
    Names names;
    for (const auto& path : paths) {
        names.push_back(path.lexically_relative(project.path()).string());
    }
    return names;
}

TEST(ProjectDetection, TakesOneNPMFileOfEachPackageFolder) {
    const TemporaryFolder project{{"package.json", ""},        {"package-lock.json", ""},
                                  {"npm-shrinkwrap.json", ""}, {"node_modules/a/package.json", ""},
                                  {"a/package.json", ""},      {"a/npm-shrinkwrap.json", ""},
                                  {"b/package.json", ""},      {"b/node_modules/x/package.json", ""},
                                  {"c/package.json", ""},      {"d/package-lock.json", ""},
                                  {"e/node_modules/x", ""},    {"f/._package.json", ""}};
    const Detection found = detect(project.path());
    EXPECT_EQ(below(project, found.npmLockfiles), (Names{"package-lock.json", "a/npm-shrinkwrap.json"}));
    EXPECT_EQ(below(project, found.npmModulesWithoutLock), Names{"b/node_modules"});
    EXPECT_EQ(below(project, found.npmManifestsOnly), Names{"c/package.json"});
}

TEST(ProjectDetection, LooksIntoBundlesForTheirSharedFileAlone) {
    const TemporaryFolder project{
        {"App.xcodeproj/project.xcworkspace/xcshareddata/swiftpm/Package.resolved", ""},
        {"App.xcodeproj/Package.resolved", ""},
        {"App.xcworkspace/xcshareddata/swiftpm/Package.resolved", ""},
        {"Bare.Name.xcodeproj/project.pbxproj", ""},
        {"File.xcodeproj", ""},
        {"Package.resolved", ""},
        {".build/checkouts/a/Package.resolved", ""},
        {"tools/SourcePackages/checkouts/b/README", ""},
        {"tools/.build/checkouts", "a file"}};
    const Detection found = detect(project.path());
    EXPECT_EQ(
        below(project, found.resolvedFiles),
        (Names{"Package.resolved", "App.xcodeproj/project.xcworkspace/xcshareddata/swiftpm/Package.resolved",
               "App.xcworkspace/xcshareddata/swiftpm/Package.resolved"}));
    EXPECT_EQ(found.xcodeProjectNames, (Names{"App", "Bare.Name"}));
    EXPECT_EQ(below(project, found.checkoutFolders),
              (Names{".build/checkouts", "tools/SourcePackages/checkouts"}));
}

TEST(ProjectDetection, KnowsPythonFilesInAnyCaseAndEnvironments) {
    const TemporaryFolder project{{"pyvenv.cfg", ""},           {"requirements.txt", ""},
                                  {"Requirements-Dev.TXT", ""}, {"my-requirements.txt", ""},
                                  {"requirements.in", ""},      {"POETRY.LOCK", ""},
                                  {".venv/pyvenv.cfg", ""},     {".venv/requirements.txt", ""},
                                  {"build/pyvenv.cfg", ""},     {"x/requirements.txt/inner", ""},
                                  {"y/pyvenv.cfg/inner", ""},   {"y/poetry.lock", ""}};
    project.link("requirements-lost.txt", "gone");
    const Detection found = detect(project.path());
    EXPECT_EQ(below(project, found.requirementFiles),
              (Names{"Requirements-Dev.TXT", "requirements-lost.txt", "requirements.txt"}));
    EXPECT_EQ(below(project, found.poetryLocks), (Names{"POETRY.LOCK", "y/poetry.lock"}));
    EXPECT_EQ(below(project, found.virtualEnvs), (Names{".", ".venv", "build"}));
}

TEST(ProjectDetection, GoesFourLevelsDownAndSkipsBuildProducts) {
    const TemporaryFolder project{{"1/2/3/4/Package.resolved", ""}, {"1/2/3/4/5/Package.resolved", ""}};
    for (const char* name : {"Build", "SourcePackages", "nodemodules", "build", "node_modules", ".git",
                             "vendor", "target", "My.app", "A.xcassets", "B.bundle"}) {
        project.write(std::string(name) + "/Package.resolved", "");
    }
    EXPECT_EQ(below(project, detect(project.path()).resolvedFiles),
              (Names{"1/2/3/4/Package.resolved", "Build/Package.resolved", "SourcePackages/Package.resolved",
                     "nodemodules/Package.resolved"}));
}

TEST(ProjectDetection, TestsALinkedFolderWithoutEnteringIt) {
    const TemporaryFolder outside{{"requirements.txt", ""}, {"env/pyvenv.cfg", ""}, {"App.xcodeproj/x", ""}};
    const TemporaryFolder project{{"poetry.lock", ""}};
    project.link("linked", outside.path());
    project.link("env", outside / "env");
    project.link("Linked.xcodeproj", outside / "App.xcodeproj");
    project.link("loop", ".");
    const Detection found = detect(project.path());
    EXPECT_EQ(below(project, found.requirementFiles), Names{});
    EXPECT_EQ(below(project, found.poetryLocks), Names{"poetry.lock"});
    EXPECT_EQ(below(project, found.virtualEnvs), Names{"env"});
    EXPECT_EQ(found.xcodeProjectNames, Names{"Linked"});
}

TEST(ProjectDetection, FindsNothingWhereNothingCanBeListed) {
    const TemporaryFolder project{{"file", ""}};
    EXPECT_EQ(detect(project / "gone"), Detection{});
    EXPECT_EQ(detect(project / "file"), Detection{});
}

TEST(ProjectDetection, CarriesNamesThatAreNotUtf8) {
    const TemporaryFolder project{{"\xFF/requirements-\xFE.txt", ""}};
    EXPECT_EQ(below(project, detect(project.path()).requirementFiles), Names{"\xFF/requirements-\xFE.txt"});
}

}  // namespace
}  // namespace ScanKit
