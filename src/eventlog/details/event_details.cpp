#include "eventlog/details/event_details.h"

#include "base/thread_slot.h"
#include "base/xml_escape.h"
#include "diag/debug_trace.h"
#include "eventlog/details/event_data_text.h"
#include "eventlog/service/failure_code.h"
#include "eventlog/service/system_values.h"

namespace tavrin::eventlog {
namespace {

constexpr const wchar_t* kEventGone =
    L"This event is no longer in the log (it may have been overwritten or the log was "
    L"cleared).\r\nPress F5 to refresh.";

constexpr DWORD kStrictBookmark = EvtSeekRelativeToBookmark | EvtSeekStrict;

std::wstring BookmarkXml(const std::wstring& path, std::uint64_t recordId) {
    return std::wstring(L"<BookmarkList><Bookmark Channel='")
        .append(base::XmlEscape(path))
        .append(L"' RecordId='")
        .append(std::to_wstring(recordId))
        .append(L"' IsCurrent='true'/></BookmarkList>");
}

// Takes the event that the bookmark names. Returns 0, 1168 or the service's code.
std::uint32_t TakeBookmarkedEvent(EVT_HANDLE query, EVT_HANDLE bookmark, UniqueEvt& event) {
    if (!EvtSeek(query, 0, bookmark, 0, kStrictBookmark)) {
        return FailureCode(GetLastError());
    }
    EVT_HANDLE found = nullptr;
    DWORD count = 0;
    if (!EvtNext(query, 1, &found, INFINITE, 0, &count) || count == 0) {
        return ERROR_NOT_FOUND;
    }
    event = UniqueEvt(found);
    return ERROR_SUCCESS;
}

// A thread's own render context, or the code with which making it failed.
struct ContextState {
    UniqueEvt context = CreateSystemValuesContext();
    std::uint32_t error = context ? ERROR_SUCCESS : FailureCode(GetLastError());
};

std::uint32_t ReadRecordId(EVT_HANDLE event, std::uint64_t& recordId) {
    static base::ThreadSlot<ContextState> slot;
    const ContextState& state = slot.Get();
    if (!state.context) {
        return state.error;
    }
    SystemValuesBuffer buffer(kSystemValuesBytes);
    const RenderOutcome outcome = RenderSystemValues(state.context.get(), event, buffer);
    if (!outcome.rendered) {
        return FailureCode(outcome.lastCode);
    }
    recordId = ReadSystemValues(buffer).recordId;
    return ERROR_SUCCESS;
}

// Returns 0, 1168 for another event, which the strict seek finds only if the log was cleared and
// refilled, or the service's code.
std::uint32_t CheckRecordId(EVT_HANDLE event, std::uint64_t wanted) {
    std::uint64_t found = 0;
    const std::uint32_t error = ReadRecordId(event, found);
    if (error != ERROR_SUCCESS || found == wanted) {
        return error;
    }
    diag::DebugTrace(std::wstring(L"OpenEventByRecordId: wanted ")
                         .append(std::to_wstring(wanted))
                         .append(L" got ")
                         .append(std::to_wstring(found)));
    return ERROR_NOT_FOUND;
}

// Formats into a buffer of the reported size. Without the publisher's text, tries the rendering
// information that forwarded events bring along.
std::uint32_t FormatInto(std::wstring& message, EVT_HANDLE publisher, EVT_HANDLE event) {
    DWORD used = 0;
    const auto format = [&](EVT_HANDLE metadata) {
        return EvtFormatMessage(metadata, event, 0, 0, nullptr, EvtFormatMessageEvent,
                                static_cast<DWORD>(message.size()), message.data(), &used) != FALSE;
    };
    return format(publisher) || format(nullptr) ? ERROR_SUCCESS : FailureCode(GetLastError());
}

void TrimTrailingZeros(std::wstring& text) {
    const std::size_t last = text.find_last_not_of(L'\0');
    text.resize(last == std::wstring::npos ? 0 : last + 1);
}

// The event to describe.
struct DescribedEvent {
    EVT_HANDLE handle;
    std::uint32_t id;
    const std::wstring& providerName;
};

// The text if the provider gives no message.
std::wstring FallbackText(const DescribedEvent& event) {
    return std::wstring(L"The description for Event ID ")
        .append(std::to_wstring(event.id))
        .append(L" from source ")
        .append(event.providerName)
        .append(
            L" cannot be found. Either the component that raises this event is not installed on "
            L"your local computer or the installation is corrupted.You can install or repair the "
            L"component on the local computer.\n\n"
            L"If the event originated on another computer, the display information had to be saved "
            L"with the event.\n\n"
            L"The following information was included with the event:\n\n")
        .append(FormatEventData(event.handle))
        .append(
            L"\n\nThe message resource is present but the message was not found in the message "
            L"table\n");
}

// Sets the text to the provider's message, or to the fallback if its resources lack one. Returns 0
// or the service's code.
std::uint32_t FormatWithProvider(EVT_HANDLE publisher, const DescribedEvent& event,
                                 std::wstring& text) {
    DWORD size = 0;
    if (EvtFormatMessage(publisher, event.handle, 0, 0, nullptr, EvtFormatMessageEvent, 0, nullptr,
                         &size)) {
        return ERROR_SUCCESS;
    }
    const std::uint32_t error = FailureCode(GetLastError());
    if (error == ERROR_EVT_MESSAGE_NOT_FOUND) {
        text = FallbackText(event);
    }
    if (error != ERROR_INSUFFICIENT_BUFFER) {
        return error;
    }
    std::wstring message(size, L'\0');
    const std::uint32_t formatted = FormatInto(message, publisher, event.handle);
    if (formatted == ERROR_SUCCESS) {
        TrimTrailingZeros(message);
        text = std::move(message);
    }
    return formatted;
}

std::uint32_t Describe(const DescribedEvent& event, std::wstring& text) {
    const UniqueEvt publisher(
        EvtOpenPublisherMetadata(nullptr, event.providerName.c_str(), nullptr, 0, 0));
    if (publisher) {
        return FormatWithProvider(publisher.get(), event, text);
    }
    const std::uint32_t error = FailureCode(GetLastError());
    if (error == ERROR_FILE_NOT_FOUND) {
        text = FallbackText(event);
    }
    return error;
}

}  // namespace

std::uint32_t OpenEventByRecordId(const std::wstring& path, std::uint64_t recordId,
                                  UniqueEvt& event) {
    const UniqueEvt bookmark(EvtCreateBookmark(BookmarkXml(path, recordId).c_str()));
    if (!bookmark) {
        return FailureCode(GetLastError());
    }
    const UniqueEvt query(EvtQuery(nullptr, path.c_str(), L"*", EvtQueryChannelPath));
    if (!query) {
        return FailureCode(GetLastError());
    }
    UniqueEvt found;
    std::uint32_t error = TakeBookmarkedEvent(query.get(), bookmark.get(), found);
    if (error == ERROR_SUCCESS) {
        error = CheckRecordId(found.get(), recordId);
    }
    if (error == ERROR_SUCCESS) {
        event = std::move(found);
    }
    return error;
}

std::uint32_t FormatEventDescription(const std::wstring& path, std::uint64_t recordId,
                                     std::uint32_t eventId, const std::wstring& providerName,
                                     std::wstring& text) {
    UniqueEvt event;
    const std::uint32_t opened = OpenEventByRecordId(path, recordId, event);
    if (opened != ERROR_SUCCESS) {
        if (opened == ERROR_NOT_FOUND) {
            text = kEventGone;
        }
        return opened;
    }
    return Describe({event.get(), eventId, providerName}, text);
}

}  // namespace tavrin::eventlog
