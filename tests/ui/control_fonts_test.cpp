// WM_GETFONT returns a handle that only its own process can use, so the window tests cannot read
// it.

#include <cstring>
#include <initializer_list>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "ui/controls/fonts.h"
#include "ui/controls/window_state.h"
#include "ui/create_controls.h"
#include "window_with_controls.h"

namespace tavrin::ui {
namespace {

LOGFONTW Describe(HFONT font) {
    LOGFONTW description{};
    EXPECT_EQ(GetObjectW(font, sizeof(description), &description),
              static_cast<int>(sizeof(description)));
    return description;
}

TEST(Fonts, TheNormalFontIsSegoeUiTwelvePixelsHigh) {
    const LOGFONTW normal = Describe(CreateFonts().normal);
    EXPECT_EQ(normal.lfHeight, -12);
    EXPECT_EQ(normal.lfWeight, 400);
    EXPECT_EQ(normal.lfCharSet, DEFAULT_CHARSET);
    EXPECT_EQ(normal.lfQuality, CLEARTYPE_QUALITY);
    EXPECT_STREQ(normal.lfFaceName, L"Segoe UI");
}

TEST(Fonts, TheBoldFontIsTheNormalOneWithAnotherWeight) {
    const Fonts fonts = CreateFonts();
    LOGFONTW expected = Describe(fonts.normal);
    expected.lfWeight = 700;
    const LOGFONTW bold = Describe(fonts.bold.get());
    EXPECT_EQ(std::memcmp(&bold, &expected, sizeof(bold)), 0);
}

TEST(Fonts, TheListHeadersFontIsTheIconTitlesInBold) {
    LOGFONTW expected{};
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETICONTITLELOGFONT, sizeof(expected), &expected, 0));
    const LOGFONTW header = Describe(CreateFonts().listHeader);
    EXPECT_EQ(header.lfWeight, 700);
    EXPECT_EQ(header.lfHeight, expected.lfHeight);
    EXPECT_STREQ(header.lfFaceName, expected.lfFaceName);
}

class ControlFonts : public WindowWithControls {
protected:
    static HFONT FontOf(HWND control) {
        return reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
    }

    void ExpectFont(HFONT font, std::initializer_list<HWND Controls::*> controls) {
        int position = 0;
        for (const auto control : controls) {
            EXPECT_EQ(FontOf(state_.controls.*control), font) << "control " << position;
            ++position;
        }
    }
};

TEST_F(ControlFonts, TextIsInTheNormalFont) {
    ExpectFont(state_.fonts.normal,
               {&Controls::filterEdit, &Controls::detailsEdit, &Controls::loadedCaption,
                &Controls::totalCaption, &Controls::loadedValue, &Controls::totalValue,
                &Controls::sourcesSearch, &Controls::sourcesList, &Controls::showAllSources});
}

TEST_F(ControlFonts, NamesAreInTheBoldFont) {
    ExpectFont(state_.fonts.bold.get(),
               {&Controls::nodeName, &Controls::tab, &Controls::sourcesCaption});
}

TEST_F(ControlFonts, TheTimeRangeIsInTheStockFont) {
    ExpectFont(
        static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)),
        {&Controls::fromLabel, &Controls::toLabel, &Controls::fromPicker, &Controls::toPicker});
}

TEST_F(ControlFonts, TheColumnHeaderIsInItsOwnFont) {
    EXPECT_EQ(FontOf(ListView_GetHeader(state_.controls.list)), state_.fonts.listHeader);
}

}  // namespace
}  // namespace tavrin::ui
