// Messages that the controls receive once, when they are created.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "support/import_patch.h"

#include "window_with_controls.h"

namespace tavrin::ui {
namespace {

using testing::ElementsAre;

// A message that carried a text to a control.
struct SentText {
    HWND control;
    UINT message;
    WPARAM wParam;
    std::wstring text;

    bool operator==(const SentText&) const = default;
};

// Records the cue texts sent to the edits and the formats sent to the pickers.
class SetUpTexts {
public:
    SetUpTexts() {
        sent.clear();
        original_ = patch_.Original();
    }

    inline static std::vector<SentText> sent;

private:
    using Send = decltype(SendMessageW);

    static LRESULT WINAPI TakeDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == EM_SETCUEBANNER || message == DTM_SETFORMATW) {
            sent.push_back({window, message, wParam, reinterpret_cast<const wchar_t*>(lParam)});
        }
        return original_(window, message, wParam, lParam);
    }

    inline static Send* original_;
    test::ImportPatch<Send> patch_{"SendMessageW", TakeDown};
};

// SetUpTexts is the first base, so it records while WindowWithControls creates the controls.
class ControlSetUp : private SetUpTexts, public WindowWithControls {
protected:
    static std::vector<SentText> Sent(UINT message) {
        std::vector<SentText> found = sent;
        std::erase_if(found, [=](const SentText& one) { return one.message != message; });
        return found;
    }
};

TEST_F(ControlSetUp, GivesBothEditsACueThatIsHiddenWhileTheyHaveTheFocus) {
    const Controls& controls = state_.controls;
    EXPECT_THAT(Sent(EM_SETCUEBANNER),
                ElementsAre(SentText{controls.filterEdit, EM_SETCUEBANNER, FALSE, L"Filter..."},
                            SentText{controls.sourcesSearch, EM_SETCUEBANNER, FALSE,
                                     L"Search sources..."}));
}

TEST_F(ControlSetUp, GivesBothPickersTheirFormat) {
    const Controls& controls = state_.controls;
    EXPECT_THAT(
        Sent(DTM_SETFORMATW),
        ElementsAre(SentText{controls.fromPicker, DTM_SETFORMATW, 0, L"dd/MM/yyyy HH:mm:ss"},
                    SentText{controls.toPicker, DTM_SETFORMATW, 0, L"dd/MM/yyyy HH:mm:ss"}));
}

TEST_F(ControlSetUp, DrawsTheHeaderPanesLabelsTransparent) {
    const HDC context = CreateCompatibleDC(nullptr);
    SetBkMode(context, OPAQUE);
    SetTextColor(context, RGB(255, 0, 0));

    const LRESULT brush = SendMessageW(state_.controls.headerPane, WM_CTLCOLORSTATIC,
                                       reinterpret_cast<WPARAM>(context),
                                       reinterpret_cast<LPARAM>(state_.controls.nodeName));

    EXPECT_EQ(brush, reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH)));
    EXPECT_EQ(GetBkMode(context), TRANSPARENT);
    EXPECT_EQ(GetTextColor(context), RGB(0, 0, 0));
    DeleteDC(context);
}

}  // namespace
}  // namespace tavrin::ui
