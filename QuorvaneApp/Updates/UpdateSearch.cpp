#include "QuorvaneApp/Updates/UpdateSearch.h"

#include "QuorvaneApp/Updates/ReleaseNotes.h"
#include "QuorvaneApp/Updates/VersionOrder.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace {

bool suits(const FeedItem& item, const UpdateTarget& target) {
    const auto isAtLeast = [](const QString& version, const QString& least) {
        return compareVersions(version, least) >= 0;
    };
    return !item.channel && item.system && item.system->compare(target.system, Qt::CaseInsensitive) == 0 &&
           (!item.minimumSystemVersion || isAtLeast(target.systemVersion, *item.minimumSystemVersion)) &&
           (!item.maximumSystemVersion || isAtLeast(*item.maximumSystemVersion, target.systemVersion));
}

std::optional<QUrl> pageOf(const FeedItem& item) {
    const QUrl page(item.link.value_or(QString()), QUrl::StrictMode);
    if (page.isValid() && page.scheme() == QLatin1StringView("https") && !page.host().isEmpty()) {
        return page;
    }
    return std::nullopt;
}

}  // namespace

UpdateTarget UpdateTarget::current() {
    return {.version = QCoreApplication::applicationVersion(),
            // The kernel's name is also the mark that feeds use.
            .system = QSysInfo::kernelType(),
            .systemVersion = QSysInfo::kernelVersion()};
}

std::optional<AvailableUpdate> findUpdate(const std::vector<FeedItem>& items, const UpdateTarget& target) {
    const FeedItem* newest = nullptr;
    for (const FeedItem& item : items) {
        const QString& best = newest == nullptr ? target.version : newest->version;
        if (suits(item, target) && compareVersions(item.version, best) > 0) {
            newest = &item;
        }
    }
    if (newest == nullptr) {
        return std::nullopt;
    }
    return AvailableUpdate{.version = newest->version,
                           .shownVersion = newest->shortVersion.value_or(newest->version),
                           .releaseNotes = plainReleaseNotes(*newest),
                           .page = pageOf(*newest)};
}
