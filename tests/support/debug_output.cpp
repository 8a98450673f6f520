#include "support/debug_output.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace tavrin::test {
namespace {

using eventlog::UniqueKernelHandle;

// The shared memory through which Windows hands over each text, one at a time.
struct SharedText {
    DWORD processId;
    char text[4096 - sizeof(DWORD)];
};

// Throws if the object already exists: another monitor created it.
UniqueKernelHandle RequireNew(HANDLE created) {
    const DWORD error = GetLastError();
    UniqueKernelHandle handle(created);
    if (!handle || error == ERROR_ALREADY_EXISTS) {
        throw std::runtime_error("another monitor listens to the debugger output");
    }
    return handle;
}

std::wstring FromAnsi(const char* text, std::size_t room) {
    const int bytes = static_cast<int>(std::find(text, text + room, '\0') - text);
    const int units = MultiByteToWideChar(CP_ACP, 0, text, bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, bytes, wide.data(), units);
    return wide;
}

}  // namespace

DebugOutput::DebugOutput()
    : buffer_(RequireNew(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                            sizeof(SharedText), L"DBWIN_BUFFER"))),
      bufferReady_(RequireNew(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_BUFFER_READY"))),
      dataReady_(RequireNew(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY"))),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      view_(MapViewOfFile(buffer_.get(), FILE_MAP_READ, 0, 0, sizeof(SharedText))) {
    if (!stop_ || view_ == nullptr) {
        throw std::runtime_error("cannot listen to the debugger output");
    }
    listener_ = std::thread(&DebugOutput::Listen, this);
}

DebugOutput::~DebugOutput() {
    SetEvent(stop_.get());
    listener_.join();
    UnmapViewOfFile(view_);
}

std::vector<std::wstring> DebugOutput::Lines(DWORD processId) const {
    const std::lock_guard lock(mutex_);
    std::vector<std::wstring> lines;
    for (const Entry& entry : entries_) {
        if (entry.processId == processId) {
            lines.push_back(entry.text);
        }
    }
    return lines;
}

bool DebugOutput::WaitFor(DWORD processId, std::wstring_view text,
                          std::chrono::milliseconds timeout, std::size_t from) const {
    std::unique_lock lock(mutex_);
    return arrived_.wait_for(lock, timeout, [&] { return Contains(processId, text, from); });
}

void DebugOutput::Listen() {
    const HANDLE signals[] = {dataReady_.get(), stop_.get()};
    SetEvent(bufferReady_.get());
    while (WaitForMultipleObjects(2, signals, FALSE, INFINITE) == WAIT_OBJECT_0) {
        Take();
        SetEvent(bufferReady_.get());
    }
}

void DebugOutput::Take() {
    SharedText shared;
    std::memcpy(&shared, view_, sizeof(shared));
    {
        const std::lock_guard lock(mutex_);
        entries_.push_back({shared.processId, FromAnsi(shared.text, sizeof(shared.text))});
    }
    arrived_.notify_all();
}

bool DebugOutput::Contains(DWORD processId, std::wstring_view text, std::size_t from) const {
    std::size_t index = 0;
    return std::ranges::any_of(entries_, [&](const Entry& entry) {
        return entry.processId == processId && index++ >= from &&
               entry.text.find(text) != std::wstring::npos;
    });
}

}  // namespace tavrin::test
