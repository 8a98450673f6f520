#pragma once

#include <map>
#include <optional>
#include <string>

#include <windows.h>

namespace tavrin::test {

enum class Repetition { Once, ForEver };

// A service call that fails.
struct Fault {
    std::wstring function;
    unsigned call;  // counted from 1 among the calls of the function
    Repetition repetition;
    DWORD code;
};

// Returns the line of the service's script that produces the fault.
std::wstring ScriptLine(const Fault& fault);

// The number of calls of each function.
using CallCounts = std::map<std::wstring, unsigned>;

// A model of the service that only counts the calls that the program is expected to make and fails
// those that the fault names.
class FaultyService {
public:
    explicit FaultyService(std::optional<Fault> fault) : fault_(std::move(fault)) {}

    // Returns the error of the function's next call, ERROR_SUCCESS if the call does not fail.
    DWORD Call(const std::wstring& function);

    const CallCounts& calls() const { return calls_; }

private:
    std::optional<Fault> fault_;
    CallCounts calls_;
};

}  // namespace tavrin::test
