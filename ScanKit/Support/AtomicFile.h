#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// Files that appear whole or not at all, and leave nothing beside them.
namespace ScanKit {

/// How the bytes are kept until they are all there.
enum class UnfinishedFile {
    unnamed,  ///< has no name where the file system knows such files, so that whatever ends the process leaves nothing
    named,  ///< `.quorvane-PID-N` in the same folder, as where it does not
};

/// Writes a file: the bytes are written aside in the same folder, flushed and moved into place, replacing a file or a
/// link of the same name. The system's reason when that fails; then an existing file is as it was. May run on any thread.
///
/// What a process that was ended by force left behind in the folder is removed on the way: a file of this name pattern whose
/// process is gone and that nobody holds.
std::optional<std::string> saveFile(const std::filesystem::path& file, const std::string& bytes,
                                    UnfinishedFile kind = UnfinishedFile::unnamed);

/// From now on SIGINT, SIGTERM and SIGHUP remove what is unfinished, then end the process as they always do. Signals that
/// are ignored or handled already are left alone. For a program's main function.
void removeUnfinishedFilesOnSignals();

}  // namespace ScanKit
