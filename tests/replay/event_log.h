#pragma once

#include <windows.h>
#include <winevt.h>

#include <string>
#include <utility>
#include <vector>

// The event-log API in the form that tests want it: handles close themselves, results are values.
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

// The error of a call that failed, 0 of one that did not.
inline DWORD ErrorOf(BOOL result) {
    return result ? ERROR_SUCCESS : ::GetLastError();
}

inline Handle Query(const wchar_t* channel, const wchar_t* query = L"*", DWORD flags = kForward) {
    return Handle(::EvtQuery(nullptr, channel, query, flags));
}

// The error of a query that must fail; 0 if it does not.
inline DWORD QueryError(const wchar_t* channel, const wchar_t* query, DWORD flags = kForward) {
    return Query(channel, query, flags) ? ERROR_SUCCESS : ::GetLastError();
}

// The next event, or none.
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

// An event's system values, with the buffer that they point into.
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

// The record ids of all results that follow.
inline std::vector<unsigned long long> RecordIds(const Handle& results) {
    std::vector<unsigned long long> ids;
    for (Handle event = NextEvent(results); event; event = NextEvent(results))
        ids.push_back(RecordId(event));
    return ids;
}

// An event's or a bookmark's XML.
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
