#pragma once

class QMenu;
class QMenuBar;

/// Underlined letters by which menus are worked with the keys.
namespace Mnemonics {

/// Gives each entry of the bar's menus and of the menus in these, which has none, a letter that no other entry of
/// the menu has: the first of a word where that is free. For systems whose menus show such letters; entries
/// without a free letter stay as they are.
void give(const QMenuBar& bar);
void give(const QMenu& menu);

}  // namespace Mnemonics
