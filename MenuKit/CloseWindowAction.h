#pragma once

/// The operation behind "Close Window".
struct CloseWindowAction {
    /// Asks the front window to close, as its close button would; a guard may refuse. Does nothing without
    /// one.
    void run() const;
};
