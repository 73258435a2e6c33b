#pragma once

/// How the command ends, for scripts.
enum ExitStatus {
    done = 0,
    failOnMet = 1,  ///< a reported dependency meets --fail-on
    wrongUsage =
        2,  ///< also when a folder, or a file that --fail-on depends on, cannot be read, or a report not be saved
};
