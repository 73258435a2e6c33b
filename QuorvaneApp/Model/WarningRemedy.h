#pragma once

#include "ScanKit/Model/ScanWarning.h"

/// What the program itself can do about a warning of a scan.
enum class WarningRemedy { none, addCheckouts, choosePythonEnvironment, rescan };

/// Scanning again is the remedy of every warning that asks for something done outside the program.
WarningRemedy remedyOf(ScanKit::ScanWarning::Kind warning);
