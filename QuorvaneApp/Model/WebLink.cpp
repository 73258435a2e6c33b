#include "QuorvaneApp/Model/WebLink.h"

#include "QuorvaneApp/Model/Texts.h"

#include <QUrl>

std::optional<QString> webLink(const std::optional<std::string>& source) {
    const QUrl url(Texts::fromUtf8(source.value_or("")), QUrl::StrictMode);
    const bool isWeb =
        url.scheme() == QLatin1StringView("https") || url.scheme() == QLatin1StringView("http");
    if (!url.isValid() || !isWeb || url.host().isEmpty()) {
        return std::nullopt;
    }
    return url.toString(QUrl::FullyEncoded);
}
