#pragma once

/// How the command ends, for scripts.
enum ExitStatus {
    done = 0,
    failOnMet = 1,   ///< a reported dependency meets --fail-on
    wrongUsage = 2,  ///< also when something that was asked for cannot be read, printed or saved
};
