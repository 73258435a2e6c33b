#include "QuorvaneApp/Views/Results/Facts.h"

#include "QuorvaneApp/Model/Texts.h"
#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Identification/TextReading.h"

#include <algorithm>

#include <QLocale>
#include <QStringList>

namespace Facts {
namespace {

/// A score just below the whole must not read as 100 %.
QString percentage(double score) {
    const int tenths = static_cast<int>(score * 1000);
    return QStringLiteral("%1 %").arg(QLocale().toString(tenths / 10.0, 'f', tenths % 10 == 0 ? 0 : 1));
}

QString joined(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts) {
        list.push_back(Texts::oneLine(Texts::fromUtf8(text)));
    }
    return list.join(QStringLiteral(", "));
}

/// How the project comes to the package; nothing where no file says it.
QString wayOf(const ScanKit::Dependency& dependency) {
    if (dependency.way.size() == 1) {
        return QStringLiteral("The project asks for it");
    }
    QStringList steps;
    for (const std::string& step : dependency.way) {
        steps.push_back(Texts::oneLine(Texts::fromUtf8(step)));
    }
    return steps.join(QStringLiteral(" → "));
}

/// Whether the license files hold a short notice alone, which says nothing by how much of the full text it has.
bool isMereNotice(const ScanKit::Dependency& dependency) {
    const ScanKit::TextReading reading = ScanKit::readLicenseText(dependency.licenseText.value_or(""));
    return !reading.matches.empty() &&
           std::ranges::all_of(reading.matches, &ScanKit::TextReading::Match::byNotice);
}

}  // namespace

std::vector<Fact> of(const ScanKit::Dependency& dependency) {
    std::vector<Fact> facts;
    const auto add = [&facts](const char* title, const QString& text) {
        if (!text.isEmpty()) {
            facts.push_back({QString::fromUtf8(title), text});
        }
    };
    add("License", Texts::oneLine(Texts::fromUtf8(dependency.licenseDisplay())));
    add("Full name", displayNames(Texts::fromUtf8(dependency.license.value_or(""))));
    add("Category", Texts::fromUtf8(ScanKit::label(dependency.category)));
    add("Found by", Texts::fromUtf8(ScanKit::label(dependency.basis)));
    if (dependency.matchScore && !isMereNotice(dependency)) {
        add("Match with the standard text", percentage(*dependency.matchScore));
    }
    add("Declared", Texts::fromUtf8(dependency.declared.value_or("")));
    add("License files", joined(dependency.licenseFileNames));
    add("Ecosystem", Texts::fromUtf8(ScanKit::label(dependency.ecosystem)));
    add("Why it is here", wayOf(dependency));
    add("Used for", dependency.isDev ? QStringLiteral("Development only") : QString());
    return facts;
}

QString namedIn(const ScanKit::ScanResult& result, const ScanKit::Dependency& dependency) {
    const ScanKit::ScanSource* lockfile = nullptr;
    for (const ScanKit::ScanSource& source : result.sources) {
        if (source.ecosystem != dependency.ecosystem || !source.entries) {
            continue;
        }
        if (lockfile != nullptr) {
            return {};
        }
        lockfile = &source;
    }
    const auto all =
        std::ranges::count(result.dependencies, dependency.ecosystem, &ScanKit::Dependency::ecosystem);
    const bool namesAll = lockfile != nullptr && lockfile->entries->listed == static_cast<std::size_t>(all);
    return namesAll ? Texts::oneLine(Texts::fromUtf8(lockfile->path)) : QString();
}

QString displayNames(const QString& license) {
    const auto expression = ScanKit::LicenseExpression::parse(Texts::toUtf8(license));
    if (!expression) {
        return {};
    }
    QStringList names;
    for (const std::string& id : expression->licenseIDs()) {
        const ScanKit::KnownLicense* const known = ScanKit::SPDX::lookup(id);
        const QString name = known == nullptr ? QString() : Texts::fromUtf8(known->name);
        if (!name.isEmpty() && !names.contains(name)) {
            names.push_back(name);
        }
    }
    const QString text = names.join(QStringLiteral(", "));
    return text == license ? QString() : text;
}

}  // namespace Facts
