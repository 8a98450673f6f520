#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

struct SentMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// A plain window in place of a control. Records the messages from WM_USER up and WM_SETREDRAW
// instead of handling them.
class RecordingControl {
public:
    RecordingControl()
        : handle_(CreateWindowExW(0, L"Static", L"", WS_OVERLAPPEDWINDOW, 0, 0, 800, 600, nullptr,
                                  nullptr, nullptr, nullptr)) {
        SetWindowSubclass(handle_, Record, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~RecordingControl() { DestroyWindow(handle_); }
    RecordingControl(const RecordingControl&) = delete;
    RecordingControl& operator=(const RecordingControl&) = delete;

    HWND handle() const { return handle_; }

    std::vector<SentMessage> Sent(UINT message) const {
        std::vector<SentMessage> found;
        std::ranges::copy_if(sent_, std::back_inserter(found),
                             [=](const SentMessage& one) { return one.message == message; });
        return found;
    }

    // The result of every recorded message.
    LRESULT answer = 0;
    // Called for every recorded message.
    std::function<void(const SentMessage&)> onMessage = [](const SentMessage&) {};
    std::vector<TVINSERTSTRUCTW> insertions;
    std::vector<TBADDBITMAP> bitmaps;

private:
    static LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR, DWORD_PTR self) {
        auto& control = *reinterpret_cast<RecordingControl*>(self);
        if (message < WM_USER && message != WM_SETREDRAW && message < TV_FIRST) {
            return DefSubclassProc(window, message, wParam, lParam);
        }
        control.sent_.push_back({message, wParam, lParam});
        control.onMessage(control.sent_.back());
        if (message == TVM_INSERTITEMW) {
            control.insertions.push_back(*reinterpret_cast<TVINSERTSTRUCTW*>(lParam));
        }
        if (message == TB_ADDBITMAP) {
            control.bitmaps.push_back(*reinterpret_cast<TBADDBITMAP*>(lParam));
        }
        return control.answer;
    }

    HWND handle_;
    std::vector<SentMessage> sent_;
};

}  // namespace tavrin::ui
