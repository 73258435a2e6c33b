#include "QuorvaneApp/Updates/FeedClient.h"

#include "QuorvaneApp/Updates/FeedAddress.h"

#include <utility>

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace {

constexpr int mostRedirects = 10;
constexpr int firstErrorStatus = 400;

QNetworkRequest requestFor(const QUrl& address) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    // Not the policy that asks before each redirect: with it, Qt repeats requests from the second redirect on, and
    // gives up on a feed that lies five redirects away.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    for (const QNetworkRequest::Attribute control :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute}) {
        request.setAttribute(control, QNetworkRequest::Manual);
    }
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Quorvane"));
    // Left to itself, Qt tells the server the user's language.
    request.setRawHeader("Accept-Language", "*");
    // What is not compressed cannot grow beyond the limit after it was received.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

/// The status of an answer that came whole. Qt also calls a status of 400 and more an error.
std::optional<int> statusOf(const QNetworkReply& reply) {
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    const bool isHTTP = status.isValid();
    if (!isHTTP || (reply.error() != QNetworkReply::NoError && status.toInt() < firstErrorStatus)) {
        return std::nullopt;
    }
    return status.toInt();
}

}  // namespace

FeedClient::FeedClient(QObject* parent) : QObject(parent) {}

void FeedClient::send(Method method, const QUrl& address, std::chrono::milliseconds timeLimit,
                      std::function<void(const Answer&)> answered) {
    if (!FeedAddress::isAllowed(address)) {
        QTimer::singleShot(0, this, [answered = std::move(answered)] { answered({}); });
        return;
    }
    const QNetworkRequest request = requestFor(address);
    QNetworkReply* const reply = method == Method::head ? network_.head(request) : network_.get(request);
    reply->setReadBufferSize(largestBody + 1);
    checkRedirects(reply);
    QTimer::singleShot(timeLimit, reply, &QNetworkReply::abort);
    connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > largestBody) {
            reply->abort();
        }
    });
    connect(reply, &QNetworkReply::finished, this, [reply, answered = std::move(answered)] {
        reply->deleteLater();
        const std::optional<int> status = statusOf(*reply);
        answered({.status = status, .body = status ? reply->readAll() : QByteArray()});
    });
}

void FeedClient::checkRedirects(QNetworkReply* reply) {
    connect(reply, &QNetworkReply::redirected, reply, [reply, from = reply->url()](const QUrl& to) mutable {
        if (!FeedAddress::mayRedirect(std::exchange(from, to), to)) {
            reply->abort();
        }
    });
}
