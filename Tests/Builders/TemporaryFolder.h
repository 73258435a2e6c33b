#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

/// A folder of its own for one test, removed with all it holds when the test ends.
class TemporaryFolder {
public:
    using File = std::pair<std::string_view, std::string_view>;  ///< path below the folder, content

    TemporaryFolder() : TemporaryFolder(std::initializer_list<File>{}) {}
    TemporaryFolder(std::initializer_list<File> files);
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Its own links resolved, so that it compares equal to what the code under test resolves.
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(std::string_view below) const { return path_ / below; }

    /// Writes a file, making the folders on the way.
    std::filesystem::path write(std::string_view below, std::string_view content) const;
    std::filesystem::path makeFolder(std::string_view below) const;
    /// Makes a symbolic link to `target`, taken as written.
    std::filesystem::path link(std::string_view below, const std::filesystem::path& target) const;

private:
    std::filesystem::path path_;
};

/// Sets an environment variable for the length of a test, and puts the old value back.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::string& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string name_;
    bool wasSet_ = false;
    std::string before_;
};

/// The content of a file; a test failure when it cannot be read.
std::string contentOf(const std::filesystem::path& file);
