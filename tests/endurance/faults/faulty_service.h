#pragma once

#include <map>
#include <optional>
#include <string>

#include <windows.h>

namespace tavrin::test {

enum class Repetition { Once, ForEver };

// A call of the service that is made to fail, by its number among the calls of its function.
struct Fault {
    std::wstring function;
    unsigned call;
    Repetition repetition;
    DWORD code;
};

// The line of the service's script that brings it about.
std::wstring ScriptLine(const Fault& fault);

// How often each function was called.
using CallCounts = std::map<std::wstring, unsigned>;

// Stands for the service where only its refusals matter: it counts the calls that the program
// is expected to make, and refuses what the fault says.
class FaultyService {
public:
    explicit FaultyService(std::optional<Fault> fault) : fault_(std::move(fault)) {}

    // The code that the next call of the function is refused with; 0: it is served.
    DWORD Call(const std::wstring& function);

    const CallCounts& calls() const { return calls_; }

private:
    std::optional<Fault> fault_;
    CallCounts calls_;
};

}  // namespace tavrin::test
