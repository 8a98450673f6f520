#pragma once

#include <windows.h>

#include "base/unique_handle.h"

namespace tavrin::ui {

inline void DeleteFontHandle(HFONT font) noexcept {
    ::DeleteObject(font);
}
using UniqueFont = base::UniqueHandle<HFONT, DeleteFontHandle>;

// Which font a control gets; None leaves the control's own.
enum class FontRole { None, Normal, Bold, Stock };

// The window's fonts. Only the bold one is the window's to delete: the others serve
// for the life of the process.
struct Fonts {
    HFONT normal = nullptr;
    UniqueFont bold;
    HFONT stock = nullptr;
    HFONT listHeader = nullptr;

    HFONT For(FontRole role) const;
};

// Window thread. A font that cannot be made leaves the controls their own.
Fonts CreateFonts();

}  // namespace tavrin::ui
