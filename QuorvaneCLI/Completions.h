#pragma once

#include <string>

/// What the shells read to complete the command's options, their values and its folder.
std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();
