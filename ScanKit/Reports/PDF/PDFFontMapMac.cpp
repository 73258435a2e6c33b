// The Linux build does not compile this file: a Mac always has fonts, and finds them without fontconfig.
#include "ScanKit/Reports/PDF/PDFFontMap.h"

#include <pango/pangocairo.h>

namespace ScanKit {

_PangoFontMap* newFontMap() {
    return pango_cairo_font_map_new();
}

}  // namespace ScanKit
