#pragma once

#include <filesystem>
#include <memory>
#include <vector>

/// Shows files in the system's file manager.
class FileRevealer {
public:
    virtual ~FileRevealer() = default;
    /// Opens the files' folder with the files selected, or just opens it where selecting is not possible.
    /// Returns at once, and does nothing without files. All lie in one folder.
    virtual void reveal(const std::vector<std::filesystem::path>& files) = 0;
};

/// The file manager of the system that the program was built for.
std::unique_ptr<FileRevealer> makeFileRevealer();
