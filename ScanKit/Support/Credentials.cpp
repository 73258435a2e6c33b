#include "ScanKit/Support/Credentials.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>

namespace ScanKit {
namespace {

constexpr std::string_view schemeEnd = "://";
/// What ends the part of an address that names user and host; white space ends the address itself.
constexpr std::string_view hostEnds = "/?#\\ \t\r\n";

/// True of "https", and of "git+https" too.
bool endsWithWebScheme(std::string_view text) {
    constexpr std::size_t longest = std::string_view("https").size();
    const std::string end = Text::lowercased(text.substr(text.size() - std::min(text.size(), longest)));
    return end.ends_with("http") || end == "https";
}

}  // namespace

std::string withoutCredentials(std::string_view text) {
    std::string result;
    std::size_t begin = 0;
    for (std::size_t at = text.find(schemeEnd); at != std::string_view::npos;
         at = text.find(schemeEnd, begin)) {
        const std::size_t host = at + schemeEnd.size();
        result += text.substr(begin, host - begin);
        begin = host;
        const std::string_view userAndHost = text.substr(host, text.find_first_of(hostEnds, host) - host);
        if (const std::size_t sign = userAndHost.rfind('@');
            sign != std::string_view::npos && endsWithWebScheme(text.substr(0, at))) {
            begin = host + sign + 1;
        }
    }
    result += text.substr(begin);
    return result;
}

}  // namespace ScanKit
