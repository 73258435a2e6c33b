#include "QuorvaneApp/Updates/VersionOrder.h"

#include <algorithm>
#include <vector>

namespace {

struct VersionPart {
    bool isNumber = true;
    QStringView text;  ///< a number's digits without leading zeros, so that zero is empty
};

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// The run of characters at the start of the text that are all digits, or all letters.
QStringView firstRun(QStringView text) {
    const bool isNumber = isDigit(text.front());
    const auto end = std::find_if(text.begin(), text.end(), [isNumber](QChar character) {
        return isNumber ? !isDigit(character) : !character.isLetter();
    });
    return text.first(end - text.begin());
}

std::vector<VersionPart> partsOf(QStringView version) {
    std::vector<VersionPart> parts;
    while (!version.isEmpty()) {
        const bool isNumber = isDigit(version.front());
        if (!isNumber && !version.front().isLetter()) {
            version = version.sliced(1);
            continue;
        }
        QStringView run = firstRun(version);
        version = version.sliced(run.size());
        while (isNumber && run.startsWith(u'0')) {
            run = run.sliced(1);
        }
        parts.push_back({.isNumber = isNumber, .text = run});
    }
    return parts;
}

std::weak_ordering compareParts(const VersionPart& a, const VersionPart& b) {
    if (a.isNumber != b.isNumber) {
        return a.isNumber ? std::weak_ordering::greater : std::weak_ordering::less;
    }
    if (a.isNumber && a.text.size() != b.text.size()) {
        return a.text.size() <=> b.text.size();
    }
    return a.text.compare(b.text, Qt::CaseInsensitive) <=> 0;
}

}  // namespace

std::weak_ordering compareVersions(const QString& a, const QString& b) {
    std::vector<VersionPart> left = partsOf(a);
    std::vector<VersionPart> right = partsOf(b);
    const std::size_t count = std::max(left.size(), right.size());
    left.resize(count);
    right.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (const auto order = compareParts(left[i], right[i]); order != 0) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}
