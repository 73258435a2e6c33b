#include "QuorvaneApp/Views/Welcome/DroppedFolder.h"

#include "QuorvaneApp/Model/Texts.h"

#include <QMimeData>
#include <QUrl>

std::optional<std::filesystem::path> droppedPath(const QMimeData& dropped) {
    const QList<QUrl> urls = dropped.urls();
    if (urls.size() != 1 || !urls.front().isLocalFile()) {
        return std::nullopt;
    }
    return Texts::toPath(urls.front().toLocalFile());
}
