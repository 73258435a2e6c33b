#pragma once

#include "QuorvaneCLI/FailOn.h"
#include "QuorvaneCLI/TextStyle.h"
#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Reports/ReportWriter.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

/// What the command line asks for.
struct CommandOptions {
    std::filesystem::path folder;
    std::optional<std::filesystem::path> output;  ///< where reports go; no reports when absent
    ScanKit::ReportFormats formats = ScanKit::ReportFormats::none;
    bool printJSON = false;
    std::optional<std::string>
        why;  ///< the package whose ways into the project are printed in place of the table
    bool includeDev = false;
    std::string projectName;  ///< the folder's name when empty
    std::string preparedFor;
    std::string preparedBy;
    std::optional<ScanKit::Paper> paper;      ///< of the PDF; the locale's when absent
    std::set<ScanKit::Ecosystem> ecosystems;  ///< those that the folder holds when empty
    std::vector<std::filesystem::path> checkouts;
    std::vector<std::filesystem::path> pythonEnvironments;
    bool useDerivedData = true;
    FailOn failOn;
    bool quiet = false;
    ColourUse colour = ColourUse::automatic;
};

/// A command line that ends here: help, the version, or what is wrong with it.
struct CommandEnd {
    int status = 0;
    std::string output;  ///< for standard output
    std::string error;   ///< for standard error
};

/// Reads the arguments; the paths come back absolute.
std::variant<CommandOptions, CommandEnd> readCommandLine(int count, const char* const* arguments);
