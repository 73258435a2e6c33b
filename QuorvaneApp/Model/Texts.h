#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <QString>

/// Between the library's UTF-8 and paths and the window's text.
namespace Texts {

/// Invalid parts become U+FFFD.
QString fromUtf8(std::string_view text);
std::string toUtf8(const QString& text);

/// The path that a file panel or a drop named.
std::filesystem::path toPath(const QString& path);
/// The path's own bytes, for calls that open it.
QString fromPath(const std::filesystem::path& path);
/// The path as people see it, the home folder written as "~".
QString shown(const std::filesystem::path& path);
/// The last path component as people see it.
QString shownName(const std::filesystem::path& path);

/// The text with each line break, tab and other control character as one blank, for places of one line. Cut
/// after 500 characters, so that no package can make the window slow with an endless name.
QString oneLine(QString text);
/// The text with a line break after every 2,000 characters of a line: laying out a line of some hundred
/// thousand without a blank takes half a minute.
QString withoutEndlessLines(const QString& text);
/// For a tool tip, which would otherwise take a text with angle brackets for markup.
QString toolTip(const QString& text);
/// Whole numbers as people of the user's country write them.
QString number(std::size_t count);
/// The number and the word that goes with it: "1 package", "2 packages".
QString counted(std::size_t count, const QString& one, const QString& several);

}  // namespace Texts
