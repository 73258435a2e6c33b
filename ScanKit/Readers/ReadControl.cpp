#include "ScanKit/Readers/ReadControl.h"

namespace ScanKit {

void forEachPackage(std::size_t count, const ReadControl& control,
                    const std::function<std::string(std::size_t)>& read) {
    const auto readOne = [&](std::size_t i) {
        const std::string name = read(i);
        if (control.packageRead) {
            control.packageRead(name);
        }
    };
    forEachIndex(count, readOne, control.stop, control.threadLimit);
}

}  // namespace ScanKit
