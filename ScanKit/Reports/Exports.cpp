#include "ScanKit/Reports/Exports.h"

#include "ScanKit/Support/Text.h"

namespace ScanKit::Exports {

FileNames fileNames(std::string_view projectName) {
    std::string stem = Text::validUtf8(std::string(projectName));
    // One separates folders here, the other did on older systems and still reads as one in file managers.
    for (char& c : stem) {
        c = c == '/' || c == ':' ? '-' : c;
    }
    return {.pdf = stem + " License Report.pdf",
            .notice = "NOTICE.txt",
            .csv = stem + " Dependencies.csv",
            .json = stem + " Dependencies.json"};
}

}  // namespace ScanKit::Exports
