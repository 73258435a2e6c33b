#include "Tests/Builders/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <gtest/gtest.h>

TemporaryFolder::TemporaryFolder(std::initializer_list<File> files) {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder could be made");
    }
    path_ = std::filesystem::canonical(pattern);
    for (const auto& [below, content] : files) {
        write(below, content);
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::write(std::string_view below, std::string_view content) const {
    const std::filesystem::path file = path_ / below;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
    return file;
}

std::filesystem::path TemporaryFolder::makeFolder(std::string_view below) const {
    std::filesystem::create_directories(path_ / below);
    return path_ / below;
}

std::filesystem::path TemporaryFolder::link(std::string_view below,
                                            const std::filesystem::path& target) const {
    const std::filesystem::path link = path_ / below;
    std::filesystem::create_directories(link.parent_path());
    std::filesystem::create_symlink(target, link);
    return link;
}

EnvironmentVariable::EnvironmentVariable(std::string name, const std::string& value)
    : name_(std::move(name)) {
    if (const char* before = std::getenv(name_.c_str())) {
        wasSet_ = true;
        before_ = before;
    }
    setenv(name_.c_str(), value.c_str(), 1);
}

EnvironmentVariable::~EnvironmentVariable() {
    if (wasSet_) {
        setenv(name_.c_str(), before_.c_str(), 1);
    } else {
        unsetenv(name_.c_str());
    }
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.good()) << file << " cannot be read";
    return {std::istreambuf_iterator<char>(stream), {}};
}
