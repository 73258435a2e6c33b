#include "QuorvaneApp/Platform/FileRevealer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFile>
#include <QStringList>
#include <QUrl>

namespace {

QUrl urlOf(const std::filesystem::path& path) {
    return QUrl::fromLocalFile(QFile::decodeName(QByteArray::fromStdString(path.native())));
}

void openFolder(const QUrl& folder) {
    QDesktopServices::openUrl(folder);
}

/// Through the file managers' common service; where none offers it the folder is just opened.
class ServiceFileRevealer : public FileRevealer {
public:
    void reveal(const std::vector<std::filesystem::path>& files) override {
        if (files.empty()) {
            return;
        }
        const QUrl folder = urlOf(files.front().parent_path());
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) {
            openFolder(folder);
            return;
        }
        auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(callFor(files)));
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
            if (watcher->isError()) {
                openFolder(folder);
            }
            watcher->deleteLater();
        });
    }

private:
    static QDBusMessage callFor(const std::vector<std::filesystem::path>& files) {
        QStringList addresses;
        for (const std::filesystem::path& file : files) {
            addresses.push_back(urlOf(file).toString(QUrl::FullyEncoded));
        }
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
            QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
        call.setArguments({addresses, QString()});
        return call;
    }
};

}  // namespace

std::unique_ptr<FileRevealer> makeFileRevealer() {
    return std::make_unique<ServiceFileRevealer>();
}
