#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "eventlog/service/evt_handle.h"

namespace tavrin::test {

// These functions return lines of the replay service's script. An empty channel means any channel.

std::wstring FailCall(const std::wstring& function, unsigned code,
                      const std::wstring& channel = L"",
                      unsigned call = 0);  // 0: every call

std::wstring DelayCall(const std::wstring& function, std::chrono::milliseconds delay,
                       const std::wstring& channel = L"");

// Gives the event of the n-th call of EvtRender this creation time, a FILETIME.
std::wstring RenderTime(std::uint64_t fileTime, unsigned call);

// Makes calls of the service wait until the test opens the gate.
class Gate {
public:
    Gate();
    ~Gate();  // opens the gate
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    // Returns the script line that makes the n-th call wait at this gate.
    std::wstring Block(const std::wstring& function, unsigned call = 1,
                       const std::wstring& channel = L"") const;

    // Waits until a call waits at the gate.
    bool WaitForCall() const;

    // Lets through the waiting calls and all later ones.
    void Open() const;

private:
    std::wstring name_;
    eventlog::UniqueKernelHandle entered_;
    eventlog::UniqueKernelHandle open_;
};

}  // namespace tavrin::test
