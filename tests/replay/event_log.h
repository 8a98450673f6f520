#pragma once

#include <windows.h>
#include <winevt.h>

#include <string>
#include <utility>
#include <vector>

// Wraps the event-log API for tests: handles close themselves and results are values.
namespace replay_test {

class Handle {
public:
    Handle() = default;
    explicit Handle(EVT_HANDLE handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle() {
        if (handle_ != nullptr)
            ::EvtClose(handle_);
    }
    EVT_HANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    EVT_HANDLE handle_ = nullptr;
};

constexpr DWORD kForward = EvtQueryChannelPath | EvtQueryForwardDirection;
constexpr DWORD kReverse = EvtQueryChannelPath | EvtQueryReverseDirection;

// Returns the last error if `result` is FALSE, otherwise 0.
inline DWORD ErrorOf(BOOL result) {
    return result ? ERROR_SUCCESS : ::GetLastError();
}

inline Handle Query(const wchar_t* channel, const wchar_t* query = L"*", DWORD flags = kForward) {
    return Handle(::EvtQuery(nullptr, channel, query, flags));
}

// Returns the error of a query, or 0 if it succeeds.
inline DWORD QueryError(const wchar_t* channel, const wchar_t* query, DWORD flags = kForward) {
    return Query(channel, query, flags) ? ERROR_SUCCESS : ::GetLastError();
}

// Returns the next event, or an empty handle.
inline Handle NextEvent(const Handle& results) {
    EVT_HANDLE event = nullptr;
    DWORD returned = 0;
    if (!::EvtNext(results.get(), 1, &event, INFINITE, 0, &returned))
        return Handle();
    return Handle(event);
}

inline Handle SystemContext() {
    return Handle(::EvtCreateRenderContext(0, nullptr, EvtRenderContextSystem));
}

// An event's system values and the buffer that they point into.
class SystemValues {
public:
    explicit SystemValues(EVT_HANDLE event) {
        const Handle context = SystemContext();
        DWORD used = 0;
        DWORD count = 0;
        ::EvtRender(context.get(), event, EvtRenderEventValues, 0, nullptr, &used, &count);
        buffer_.resize((used + sizeof(EVT_VARIANT) - 1) / sizeof(EVT_VARIANT));
        if (!::EvtRender(context.get(), event, EvtRenderEventValues, used, buffer_.data(), &used,
                         &count))
            count = 0;
        count_ = count;
    }
    DWORD Count() const { return count_; }
    const EVT_VARIANT& operator[](EVT_SYSTEM_PROPERTY_ID id) const { return buffer_[id]; }
    DWORD Type(EVT_SYSTEM_PROPERTY_ID id) const { return buffer_[id].Type; }

private:
    std::vector<EVT_VARIANT> buffer_;
    DWORD count_ = 0;
};

inline unsigned long long RecordId(const Handle& event) {
    return SystemValues(event.get())[EvtSystemEventRecordId].UInt64Val;
}

// Reads all remaining results and returns their record ids.
inline std::vector<unsigned long long> RecordIds(const Handle& results) {
    std::vector<unsigned long long> ids;
    for (Handle event = NextEvent(results); event; event = NextEvent(results))
        ids.push_back(RecordId(event));
    return ids;
}

// Returns the XML of an event or a bookmark.
inline std::wstring Render(EVT_HANDLE fragment, DWORD flags = EvtRenderEventXml) {
    DWORD used = 0;
    DWORD count = 0;
    ::EvtRender(nullptr, fragment, flags, 0, nullptr, &used, &count);
    std::wstring text(used / sizeof(wchar_t), L'\0');
    if (text.empty() || !::EvtRender(nullptr, fragment, flags, used, text.data(), &used, &count))
        return {};
    text.pop_back();
    return text;
}

}  // namespace replay_test
