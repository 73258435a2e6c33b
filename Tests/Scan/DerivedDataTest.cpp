#include "ScanKit/Scan/DerivedData.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <chrono>

#include <gtest/gtest.h>

namespace ScanKit::Scanner {
namespace {

using Paths = std::vector<std::filesystem::path>;

/// A home folder with the development tools' build products in it.
class DerivedData {
public:
    std::filesystem::path addCheckouts(const std::string& name, std::chrono::hours age) const {
        const auto folder = home_.makeFolder(below_ + name + "/SourcePackages/checkouts");
        std::filesystem::last_write_time(folder, now_ - age);
        return folder;
    }
    void addWithoutCheckouts(const std::string& name) const {
        home_.write(below_ + name + "/info.plist", "");
    }

private:
    TemporaryFolder home_;
    EnvironmentVariable variable_{"HOME", home_.path().string()};
    std::string below_ = "Library/Developer/Xcode/DerivedData/";
    std::filesystem::file_time_type now_ = std::filesystem::file_time_type::clock::now();
};

TEST(DerivedDataCheckouts, FindsAProjectsFoldersNewestFirst) {
    const DerivedData data;
    const auto old = data.addCheckouts("MyApp-aaa", std::chrono::hours(3));
    const auto newest = data.addCheckouts("MyApp-bbb", std::chrono::hours(1));
    const auto other = data.addCheckouts("Other-1", std::chrono::hours(2));
    const auto alsoOld = data.addCheckouts("MyApp-ccc", std::chrono::hours(3));
    data.addCheckouts("MyAppTests-1", std::chrono::hours(0));
    data.addCheckouts("myapp-1", std::chrono::hours(0));
    data.addCheckouts("MyApp", std::chrono::hours(0));
    data.addWithoutCheckouts("MyApp-ddd");
    EXPECT_EQ(derivedDataCheckouts({"MyApp"}), (Paths{newest, old, alsoOld}));
    EXPECT_EQ(derivedDataCheckouts({"Other", "MyApp"}), (Paths{newest, other, old, alsoOld}));
    EXPECT_EQ(derivedDataCheckouts({}), Paths{});
    EXPECT_EQ(derivedDataCheckouts({"My*"}), Paths{});
}

}  // namespace
}  // namespace ScanKit::Scanner
