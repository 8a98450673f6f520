#include "replay/platform/notice.h"

#include "replay/text/utf8.h"

#include <string>

#include <windows.h>

namespace replay::platform {

void Notice(std::wstring_view message) {
    const std::wstring line = std::wstring(L"replay: ").append(message).append(L"\n");
    OutputDebugStringW(line.c_str());
    const std::string bytes = text::ToUtf8(line);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()),
              &written, nullptr);
}

}  // namespace replay::platform
