#include "ScanKit/Reports/PDF/PDFFontMap.h"

#include <fmt/format.h>
#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <sys/mman.h>
#include <unistd.h>

// The bytes of two files, which a compiler would take seconds for as a table.
__asm__(
    ".section .rodata\n"
    ".balign 16\n"
    "quorvane_font_regular: .incbin \"" QUORVANE_FONTS
    "/DejaVuSans.ttf\"\n"
    "quorvane_font_regular_end:\n"
    ".balign 16\n"
    "quorvane_font_bold: .incbin \"" QUORVANE_FONTS
    "/DejaVuSans-Bold.ttf\"\n"
    "quorvane_font_bold_end:\n"
    ".previous\n");
extern "C" {
extern const char quorvane_font_regular[], quorvane_font_regular_end[];
extern const char quorvane_font_bold[], quorvane_font_bold_end[];
}

namespace ScanKit {
namespace {

/// Fonts are added by their files' names: these files are in memory, and gone with the program. A system that gives
/// no such file keeps its own fonts alone.
void addFont(FcConfig* fonts, const char* bytes, const char* end) {
    const int file = memfd_create("quorvane-font", MFD_CLOEXEC);
    const auto size = static_cast<std::size_t>(end - bytes);
    if (file < 0 || write(file, bytes, size) != static_cast<ssize_t>(size)) {
        return;
    }
    const std::string name = fmt::format("/proc/self/fd/{}", file);
    FcConfigAppFontAddFile(fonts, reinterpret_cast<const FcChar8*>(name.c_str()));
}

/// What stands in for the system's configuration where there is none, as in an image with nothing but the program.
constexpr const char* usualConfiguration = R"(<fontconfig>
<dir>/usr/share/fonts</dir>
<dir>/usr/local/share/fonts</dir>
<dir prefix="xdg">fonts</dir>
<cachedir prefix="xdg">fontconfig</cachedir>
</fontconfig>)";

/// The configuration of the system's fonts. Without one the library would complain on standard error, here and again where
/// Pango asks for it, unless another is the current one.
FcConfig* systemsFonts() {
    FcConfig* own = FcConfigCreate();
    FcChar8* file = FcConfigGetFilename(own, nullptr);
    if (file != nullptr) {
        FcStrFree(file);
        FcConfigDestroy(own);
        return FcInitLoadConfigAndFonts();
    }
    FcConfigParseAndLoadFromMemory(own, reinterpret_cast<const FcChar8*>(usualConfiguration), FcFalse);
    FcConfigBuildFonts(own);
    FcConfigSetCurrent(own);
    return own;
}

/// Loaded once and never changed after that, so that threads can share it: a configuration of our own, because the
/// process may use the common one for its windows.
FcConfig* fontsOfTheSystemAndOurs() {
    static FcConfig* const fonts = [] {
        FcConfig* loaded = systemsFonts();
        if (loaded != nullptr) {
            addFont(loaded, quorvane_font_regular, quorvane_font_regular_end);
            addFont(loaded, quorvane_font_bold, quorvane_font_bold_end);
        }
        return loaded;
    }();
    return fonts;
}

}  // namespace

_PangoFontMap* newFontMap() {
    // Of this kind whatever the environment says, for the other kinds cannot be given a font.
    FcConfig* fonts = fontsOfTheSystemAndOurs();
    PangoFontMap* map = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map), fonts);
    return map;
}

}  // namespace ScanKit
