#include "ui/controls/fonts.h"

namespace tavrin::ui {
namespace {

constexpr int kNormalHeight = -12;

HFONT CreateNormalFont() {
    return CreateFontW(kNormalHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0,
                       CLEARTYPE_QUALITY, 0, L"Segoe UI");
}

UniqueFont CreateBoldFontOf(HFONT font) {
    LOGFONTW description{};
    GetObjectW(font, sizeof(description), &description);
    description.lfWeight = FW_BOLD;
    return UniqueFont(CreateFontIndirectW(&description));
}

HFONT CreateListHeaderFont() {
    LOGFONTW description{};
    SystemParametersInfoW(SPI_GETICONTITLELOGFONT, sizeof(description), &description, 0);
    description.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&description);
}

}  // namespace

HFONT Fonts::For(FontRole role) const {
    switch (role) {
        case FontRole::None: return nullptr;
        case FontRole::Normal: return normal;
        case FontRole::Bold: return bold.get();
        case FontRole::Stock: return stock;
    }
    return nullptr;
}

Fonts CreateFonts() {
    Fonts fonts;
    fonts.normal = CreateNormalFont();
    fonts.bold = CreateBoldFontOf(fonts.normal);
    fonts.stock = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    fonts.listHeader = CreateListHeaderFont();
    return fonts;
}

}  // namespace tavrin::ui
