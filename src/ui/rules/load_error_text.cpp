#include "ui/rules/load_error_text.h"

#include <algorithm>
#include <iterator>

#include <windows.h>
#include <winevt.h>

#include "base/unique_handle.h"
#include "ui/rules/number_format.h"

namespace tavrin::ui {
namespace {

using UniqueLocal = base::UniqueHandle<HLOCAL, ::LocalFree>;

struct KnownError {
    std::uint32_t code;
    const wchar_t* text;
};

constexpr KnownError kKnownErrors[] = {
    {ERROR_ACCESS_DENIED, L"Access denied. Run as administrator to view this log."},
    {ERROR_EVT_CHANNEL_NOT_FOUND,
     L"The log was not found. It may have been removed or its provider uninstalled."},
    {ERROR_EVT_QUERY_RESULT_STALE,
     L"The log changed while it was being read (it may have been cleared). Reselect it to "
     L"reload."},
    {ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL,
     L"This is an enabled Analytic/Debug log. It must be disabled before its events can be "
     L"viewed."},
};

// The system's message for a code, or empty.
std::wstring SystemMessage(std::uint32_t code) {
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    const UniqueLocal owner(text);
    std::wstring message = text == nullptr ? std::wstring() : std::wstring(text, length);
    message.resize(message.find_last_not_of(L"\r\n ") + 1);
    return message;
}

}  // namespace

std::wstring LoadErrorText(std::uint32_t code) {
    const auto known = std::ranges::find(kKnownErrors, code, &KnownError::code);
    if (known != std::end(kKnownErrors)) {
        return known->text;
    }
    const std::wstring message = SystemMessage(code);
    return (message.empty() ? L"Unknown error." : message) + L" (error " + std::to_wstring(code) +
           L")";
}

std::wstring LoadFailureMessage(std::wstring_view channelPath, std::uint32_t code,
                                std::uint64_t loadedCount) {
    std::wstring message;
    if (loadedCount == 0) {
        message.append(L"Failed to load ").append(channelPath).append(L": ");
    } else {
        message.append(L"Loading stopped after ")
            .append(FormatCount(loadedCount))
            .append(L" events: ");
    }
    return message.append(LoadErrorText(code));
}

std::wstring LoadFailureDetails(std::wstring_view message, std::wstring_view channelPath,
                                std::uint32_t code) {
    return std::wstring(message)
        .append(L"\r\n\r\nLog: ")
        .append(channelPath)
        .append(L"\r\nError code: ")
        .append(std::to_wstring(code));
}

}  // namespace tavrin::ui
