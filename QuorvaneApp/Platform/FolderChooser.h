#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include <QString>

/// One question for a folder.
struct FolderQuestion {
    QString message;              ///< says what is wanted and why
    QString prompt;               ///< the label of the button that confirms
    bool showsHidden = false;     ///< hidden folders can be chosen
    bool createsFolders = false;  ///< a new folder can be made on the way
    /// Where the user begins to look; the system's choice when absent.
    std::optional<std::filesystem::path> start = {};
};

/// Asks the user for one existing folder; files are not offered.
class FolderChooser {
public:
    using Answer = std::function<void(const std::filesystem::path&)>;

    virtual ~FolderChooser() = default;
    /// Returns at once. `chosen` is called on the user-interface thread when the user confirms, and never
    /// when they cancel.
    virtual void choose(const FolderQuestion& question, Answer chosen) = 0;
};
