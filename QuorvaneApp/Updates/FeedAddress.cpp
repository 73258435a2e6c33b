#include "QuorvaneApp/Updates/FeedAddress.h"

#include <QHostAddress>

namespace {

bool isSecure(const QUrl& address) {
    return address.scheme() == QLatin1StringView("https");
}

bool isLoopback(const QString& host) {
    return host == QLatin1StringView("localhost") || QHostAddress(host).isLoopback();
}

}  // namespace

bool FeedAddress::isAllowed(const QUrl& address) {
    if (!address.isValid() || address.host().isEmpty()) {
        return false;
    }
    return isSecure(address) || (address.scheme() == QLatin1StringView("http") && isLoopback(address.host()));
}

bool FeedAddress::mayRedirect(const QUrl& from, const QUrl& to) {
    return isAllowed(to) && (isSecure(to) || !isSecure(from));
}
