#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "eventlog/service/evt_handle.h"

namespace tavrin::test {

// Lines of the replay service's script. An empty channel means: calls about any channel.

std::wstring FailCall(const std::wstring& function, unsigned code,
                      const std::wstring& channel = L"",
                      unsigned call = 0);  // 0: every call

std::wstring DelayCall(const std::wstring& function, std::chrono::milliseconds delay,
                       const std::wstring& channel = L"");

// The n-th event that is rendered has this creation time, a FILETIME.
std::wstring RenderTime(std::uint64_t fileTime, unsigned call);

// Calls of the service wait at a gate until the test opens it.
class Gate {
public:
    Gate();
    ~Gate();  // opens it
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    // The script line that makes the n-th call wait here.
    std::wstring Block(const std::wstring& function, unsigned call = 1,
                       const std::wstring& channel = L"") const;

    // Waits until a call stands at the gate.
    bool WaitForCall() const;

    // Lets through what waits and what comes later.
    void Open() const;

private:
    std::wstring name_;
    eventlog::UniqueKernelHandle entered_;
    eventlog::UniqueKernelHandle open_;
};

}  // namespace tavrin::test
