#pragma once

#include <string>

/// The manual page quorvane(1), in the language of man. It carries the date of the commit, so that it is the same
/// whenever it is made.
std::string manualPage();
