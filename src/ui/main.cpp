#include <cstdlib>

#include <windows.h>
#include <commctrl.h>

#include "resource.h"
#include "ui/main_window.h"

namespace {

constexpr int kMaxResourceString = 100;

struct ResourceString {
    wchar_t text[kMaxResourceString] = {};

    ResourceString(HINSTANCE instance, UINT id) {
        LoadStringW(instance, id, text, kMaxResourceString);
    }
};

// The library registers all other control classes by itself.
bool InitControlClasses() {
    INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_DATE_CLASSES | ICC_COOL_CLASSES};
    return InitCommonControlsEx(&classes) != FALSE;
}

// Loaded at its size: a shrunk icon loses its lines.
HICON LoadSmallIcon(HINSTANCE instance) {
    return static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(IDI_APPLICATION_ICON),
                                         IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                         GetSystemMetrics(SM_CYSMICON), LR_SHARED));
}

void RegisterMainWindowClass(HINSTANCE instance, const wchar_t* name) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof(description);
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = tavrin::ui::MainWindowProc;
    description.hInstance = instance;
    description.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_APPLICATION_ICON));
    description.hIconSm = LoadSmallIcon(instance);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_WINDOW + 1});
    description.lpszMenuName = MAKEINTRESOURCEW(IDR_MAIN_MENU);
    description.lpszClassName = name;
    RegisterClassExW(&description);
}

bool OpenMainWindow(HINSTANCE instance, int showCommand) {
    const ResourceString title(instance, IDS_TITLE);
    const ResourceString className(instance, IDS_WINDOW_CLASS);
    RegisterMainWindowClass(instance, className.text);
    const HWND window =
        CreateWindowExW(0, className.text, title.text, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, 0,
                        CW_USEDEFAULT, 0, nullptr, nullptr, instance, nullptr);
    if (window == nullptr) {
        return false;
    }
    ShowWindow(window, showCommand);
    UpdateWindow(window);
    return true;
}

// Returns the exit code.
int RunMessageLoop(HINSTANCE instance) {
    const HACCEL accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) != 0) {
        // Translated for the focused control's window, so that the keys work in every control.
        if (!TranslateAcceleratorW(message.hwnd, accelerators, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int showCommand) {
    if (!InitControlClasses()) {
        return 0;
    }
    const int exitCode = OpenMainWindow(instance, showCommand) ? RunMessageLoop(instance) : 0;
    // Every thread has ended and every handle is closed. The records go with the process: freeing a
    // million of them would only delay its end. Where no window came about, the walk over the
    // channels may still run; it ends with the process, too.
    std::_Exit(exitCode);
}
