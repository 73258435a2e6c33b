#pragma once

class QWidget;

/// Finds the windows that widgets live in.
namespace WindowReader {

/// The top-level window that hosts the widget; null for null.
QWidget* windowOf(const QWidget* widget);
/// The window that the user works in: the active one, else a visible one. Menus, tool tips and other passing
/// windows do not count. Null when no window is visible.
QWidget* frontWindow();

}  // namespace WindowReader
