#pragma once

#include <optional>
#include <string>

#include <QString>

/// The source of a package as a link that may be opened: a whole http or https address. None for any other text.
std::optional<QString> webLink(const std::optional<std::string>& source);
