#include "ScanKit/Readers/ReportableText.h"

#include "ScanKit/Support/Credentials.h"
#include "ScanKit/Support/Text.h"

namespace ScanKit {
namespace {

std::string fieldOf(const std::string& text) {
    return Text::oneLine(withoutCredentials(text));
}

std::string withLineFeeds(std::string_view text) {
    return Text::replacingAll(Text::replacingAll(text, "\r\n", "\n"), "\r", "\n");
}

}  // namespace

void makeReportable(RawDependency& package) {
    package.name = fieldOf(package.name);
    package.version = fieldOf(package.version);
    if (package.source) {
        package.source = fieldOf(*package.source);
    }
    if (package.declared) {
        package.declared = withLineFeeds(withoutCredentials(*package.declared));
    }
}

}  // namespace ScanKit
