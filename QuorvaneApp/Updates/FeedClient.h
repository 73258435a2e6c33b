#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>

class QNetworkReply;

/// Asks the server of an update feed. A request says nothing about the user: no cookies, no language, no
/// version, and always past every cache. Nothing is called back after this object's end.
class FeedClient : public QObject {
    Q_OBJECT

public:
    enum class Method { head, get };
    struct Answer {
        /// The HTTP status after redirects. Absent when there was no whole answer: an address or a redirect that
        /// is not allowed, a broken connection, a time-out, or a body beyond the limit.
        std::optional<int> status;
        QByteArray body;
    };
    /// The largest feed that is read, in bytes.
    static constexpr qsizetype largestBody = 1024 * 1024;

    explicit FeedClient(QObject* parent = nullptr);

    /// Always answers later, never during the call. `timeLimit` is for the whole exchange, so that a server that
    /// sends a byte now and then does not hold it open.
    void send(Method method, const QUrl& address, std::chrono::milliseconds timeLimit,
              std::function<void(const Answer&)> answered);

private:
    static void checkRedirects(QNetworkReply* reply);

    QNetworkAccessManager network_;
};
