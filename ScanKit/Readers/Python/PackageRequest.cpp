#include "ScanKit/Readers/Python/PackageRequest.h"

#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/Text.h"

#include <map>
#include <utility>

namespace ScanKit::PythonParser {

std::optional<PackageRequest> packageRequest(std::string_view text) {
    constexpr std::string_view nameCharacters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
    text = Text::trimmed(text);
    const std::string_view name = text.substr(0, text.find_first_not_of(nameCharacters));
    if (name.empty() || std::string_view("._-").find(name[0]) != std::string_view::npos) {
        return std::nullopt;
    }
    PackageRequest request{.name = normalizedName(name)};
    std::string_view rest = Text::trimmed(text.substr(name.size()));
    if (const std::size_t end = rest.find(']'); rest.starts_with('[') && end != std::string_view::npos) {
        for (const std::string_view extra : Text::split(rest.substr(1, end - 1), ",")) {
            if (!Text::isBlank(extra)) {
                request.extras.push_back(normalizedName(Text::trimmed(extra)));
            }
        }
        rest.remove_prefix(end + 1);
    }
    const std::size_t semicolon = rest.find(';');
    request.isConditional = semicolon != std::string_view::npos && !Text::isBlank(rest.substr(semicolon + 1));
    std::string_view version = Text::trimmedOf(Text::trimmed(rest.substr(0, semicolon)), "() ");
    if (version.starts_with("==") && version.find_first_of(",*") == std::string_view::npos) {
        version = Text::trimmed(Text::trimmedOf(version, "="));
        request.version = version.empty() ? std::nullopt : std::optional<std::string>(version);
    }
    return request;
}

std::vector<PackageRequest> withAlternativesNeeded(std::vector<PackageRequest> requests) {
    std::map<std::string, std::size_t> count;
    for (const PackageRequest& request : requests) {
        ++count[request.name];
    }
    for (PackageRequest& request : requests) {
        request.isConditional = request.isConditional && count[request.name] == 1;
    }
    return requests;
}

}  // namespace ScanKit::PythonParser
