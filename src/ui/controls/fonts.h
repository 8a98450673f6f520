#pragma once

#include <windows.h>

#include "base/unique_handle.h"

namespace tavrin::ui {

inline void DeleteFontHandle(HFONT font) noexcept {
    ::DeleteObject(font);
}
using UniqueFont = base::UniqueHandle<HFONT, DeleteFontHandle>;

// The font of a control; None leaves the control's own.
enum class FontRole { None, Normal, Bold, Stock };

// The window's fonts. Only the bold one is deleted with the window; the others live as long as the
// process.
struct Fonts {
    HFONT normal = nullptr;
    UniqueFont bold;
    HFONT stock = nullptr;
    HFONT listHeader = nullptr;

    HFONT For(FontRole role) const;
};

// Window thread. Controls keep their own font if one cannot be made.
Fonts CreateFonts();

}  // namespace tavrin::ui
