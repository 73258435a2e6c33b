// For macOS alone: the Linux build does not compile this file.
#include "QuorvaneApp/Platform/FileRevealer.h"

#import <AppKit/AppKit.h>

namespace {

class WorkspaceFileRevealer : public FileRevealer {
public:
    void reveal(const std::vector<std::filesystem::path>& files) override {
        if (files.empty()) {
            return;
        }
        NSMutableArray<NSURL*>* const addresses = [NSMutableArray array];
        for (const std::filesystem::path& file : files) {
            [addresses addObject:[NSURL fileURLWithFileSystemRepresentation:file.c_str()
                                                                isDirectory:NO
                                                              relativeToURL:nil]];
        }
        [[NSWorkspace sharedWorkspace] activateFileViewerSelectingURLs:addresses];
    }
};

}  // namespace

std::unique_ptr<FileRevealer> makeFileRevealer() {
    return std::make_unique<WorkspaceFileRevealer>();
}
