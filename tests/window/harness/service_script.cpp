#include "window/harness/service_script.h"

#include <atomic>

#include <windows.h>

#include "support/wait_until.h"

namespace tavrin::test {
namespace {

std::wstring Quoted(const std::wstring& text) {
    std::wstring quoted = L"\"";
    for (const wchar_t unit : text) {
        if (unit == L'"' || unit == L'\\') {
            quoted += L'\\';
        }
        quoted += unit;
    }
    return quoted + L"\"";
}

std::wstring Key(const wchar_t* name, const std::wstring& value) {
    return std::wstring(L" ").append(name).append(L"=").append(value);
}

std::wstring ChannelKey(const std::wstring& channel) {
    return channel.empty() ? L"" : Key(L"channel", Quoted(channel));
}

std::wstring CallKey(unsigned call) {
    return call == 0 ? L"" : Key(L"call", std::to_wstring(call));
}

std::wstring NewGateName() {
    static std::atomic<unsigned> counter{0};
    return L"TavrinGate" + std::to_wstring(GetCurrentProcessId()) + L"x" +
           std::to_wstring(counter++);
}

eventlog::UniqueKernelHandle NamedEvent(const std::wstring& name) {
    return eventlog::UniqueKernelHandle(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
}

}  // namespace

std::wstring FailCall(const std::wstring& function, unsigned code, const std::wstring& channel,
                      unsigned call) {
    return L"fail " + function + Key(L"code", std::to_wstring(code)) + CallKey(call) +
           ChannelKey(channel) + L"\n";
}

std::wstring DelayCall(const std::wstring& function, std::chrono::milliseconds delay,
                       const std::wstring& channel) {
    return L"delay " + function + Key(L"ms", std::to_wstring(delay.count())) + ChannelKey(channel) +
           L"\n";
}

std::wstring RenderTime(std::uint64_t fileTime, unsigned call) {
    return L"time EvtRender" + Key(L"file-time", std::to_wstring(fileTime)) + CallKey(call) + L"\n";
}

Gate::Gate()
    : name_(NewGateName()),
      entered_(NamedEvent(name_ + L"Entered")),
      open_(NamedEvent(name_ + L"Open")) {}

Gate::~Gate() {
    Open();
}

std::wstring Gate::Block(const std::wstring& function, unsigned call,
                         const std::wstring& channel) const {
    return L"block " + function + CallKey(call) + ChannelKey(channel) +
           Key(L"until-event", name_ + L"Open") + Key(L"entered-event", name_ + L"Entered") + L"\n";
}

bool Gate::WaitForCall() const {
    return WaitForSingleObject(entered_.get(), static_cast<DWORD>(kPatience.count())) ==
           WAIT_OBJECT_0;
}

void Gate::Open() const {
    SetEvent(open_.get());
}

}  // namespace tavrin::test
