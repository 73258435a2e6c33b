#pragma once

struct _PangoFontMap;

namespace ScanKit {

/// The fonts of the system, with the built-in family (Latin, Greek, Cyrillic and more, regular and bold) as the last
/// resort where a system may have none at all. Each call makes a map of its own, to be released by whoever calls.
_PangoFontMap* newFontMap();

}  // namespace ScanKit
