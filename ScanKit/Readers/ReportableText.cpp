#include "ScanKit/Readers/ReportableText.h"

#include "ScanKit/Support/Credentials.h"
#include "ScanKit/Support/Text.h"

#include <utility>

namespace ScanKit {
namespace {

void makeField(std::string& text) {
    // Few texts hold what an address with a user needs, and this is asked of every package.
    if (text.find('@') != std::string::npos) {
        text = withoutCredentials(text);
    }
    text = Text::oneLine(std::move(text));
}

/// A declared license may have several lines. A blank one counts as absent, which one that shows what it is made of would not.
void makeText(std::string& text) {
    if (text.find('@') != std::string::npos) {
        text = withoutCredentials(text);
    }
    if (!Text::isBlank(text)) {
        text = Text::plainLines(std::move(text));
    }
}

}  // namespace

void makeReportable(RawDependency& package) {
    makeField(package.name);
    makeField(package.version);
    for (std::string& step : package.way) {
        // Each has an "@", and hardly any is an address.
        if (step.find("://") != std::string::npos) {
            step = withoutCredentials(step);
        }
        step = Text::oneLine(std::move(step));
    }
    if (package.source) {
        makeField(*package.source);
    }
    if (package.declared) {
        makeText(*package.declared);
    }
}

}  // namespace ScanKit
