#pragma once

#include <compare>

#include <QString>

/// Which of two versions is newer, in the update framework's order. Runs of digits count as numbers of any
/// length, so that 1.10 comes after 1.9; what is missing counts as zero, so that 1.0 is 1.0.0; a word comes
/// before a number, so that 1.0b2 comes before 1.0; words are compared without regard to case. Everything
/// else only separates.
std::weak_ordering compareVersions(const QString& a, const QString& b);
