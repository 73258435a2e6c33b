#pragma once

#include <QUrl>

/// Which addresses a feed may have: a feed says which program is offered to the user, so nobody on the way
/// may have changed it.
namespace FeedAddress {

/// True for https, and for plain http on the loopback address, where a feed is tried out.
bool isAllowed(const QUrl& address);
/// Whether a server at `from` may lead on to `to`: to an allowed address, and never from https to http.
bool mayRedirect(const QUrl& from, const QUrl& to);

}  // namespace FeedAddress
