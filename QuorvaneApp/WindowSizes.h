#pragma once

#include <QSize>

/// The sizes of the window without its frame, in the screen's own units, that a screen has room for.
struct WindowSizes {
    QSize least;  ///< the user cannot make it smaller
    QSize first;  ///< before the user chose one

    /// `available` is what the desktop's bars leave of the screen. Both sizes leave room in it for a title bar.
    static WindowSizes fitting(const QSize& available);
};
