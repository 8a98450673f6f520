#include "replay/platform/notice.h"

#include "replay/platform/file.h"
#include "replay/text/utf8.h"

#include <string>

#include <windows.h>

namespace replay::platform {

void Notice(std::wstring_view message) {
    const std::wstring line = std::wstring(L"replay: ").append(message).append(L"\n");
    OutputDebugStringW(line.c_str());
    WriteBytes(GetStdHandle(STD_ERROR_HANDLE), text::ToUtf8(line));
}

}  // namespace replay::platform
