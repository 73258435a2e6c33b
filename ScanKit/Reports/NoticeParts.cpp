#include "ScanKit/Reports/NoticeParts.h"

#include "ScanKit/Identification/ReproducedTexts.h"

#include <fmt/format.h>

namespace ScanKit::Exports {
namespace {

NoticePart partOf(const ReproducedText& one) {
    NoticePart part{.text = one.text, .identifier = one.identifier};
    if (!one.text) {
        part.remarks.push_back(
            fmt::format("The text of {} is not included. See the package's source for it.", one.identifier));
        return part;
    }
    part.remarks.push_back(fmt::format(
        "No license file was included with this package. The standard {} text follows.", one.identifier));
    if (one.placeholder) {
        part.remarks.push_back(fmt::format(
            "Its line “{}” is a placeholder: the year and the names are not known here.", *one.placeholder));
    }
    return part;
}

std::vector<NoticePart> standardParts(const ReproducedTexts& reproduced) {
    std::vector<NoticePart> parts;
    for (const ReproducedText& one : reproduced.texts) {
        parts.push_back(partOf(one));
    }
    if (reproduced.takenOption) {
        auto& remarks = parts.front().remarks;
        remarks.insert(remarks.begin(), fmt::format("Offered under a choice of licenses. {} is taken here.",
                                                    *reproduced.takenOption));
    }
    return parts;
}

std::vector<NoticePart> licenseParts(const Dependency& dependency) {
    // The author's own text, copyright line included, is always better than the standard one.
    if (dependency.licenseText) {
        return {{.text = *dependency.licenseText}};
    }
    const ReproducedTexts reproduced = reproducedTexts(dependency.license);
    if (reproduced.hasAny()) {
        return standardParts(reproduced);
    }
    return {{.remarks = {"No license text was found for this package. See its source for license terms."}}};
}

}  // namespace

std::vector<NoticePart> noticeParts(const Dependency& dependency) {
    std::vector<NoticePart> parts = licenseParts(dependency);
    if (dependency.noticeText) {
        parts.push_back({.text = *dependency.noticeText, .isNotice = true});
    }
    return parts;
}

}  // namespace ScanKit::Exports
