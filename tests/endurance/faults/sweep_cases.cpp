#include "endurance/faults/sweep_cases.h"

#include <algorithm>
#include <ostream>

#include <winevt.h>

#include "base/utf8.h"
#include "endurance/faults/expected_window.h"

namespace tavrin::test {
namespace {

constexpr DWORD kCodes[] = {ERROR_ACCESS_DENIED,
                            ERROR_INVALID_HANDLE,
                            ERROR_INSUFFICIENT_BUFFER,
                            ERROR_NO_MORE_ITEMS,
                            ERROR_NOT_FOUND,
                            RPC_S_SERVER_UNAVAILABLE,
                            RPC_S_INVALID_BOUND,
                            ERROR_EVT_CHANNEL_NOT_FOUND,
                            ERROR_EVT_QUERY_RESULT_STALE,
                            ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL,
                            ERROR_EVT_MESSAGE_NOT_FOUND};

// The functions that the program calls for a size first, or again with a larger buffer.
constexpr const wchar_t* kSizing[] = {L"EvtNextChannelPath", L"EvtGetChannelConfigProperty",
                                      L"EvtRender", L"EvtFormatMessage"};

constexpr unsigned kManyCalls = 100;

bool AsksForSizes(const std::wstring& function) {
    return std::ranges::count(kSizing, function) > 0;
}

// A call without a buffer stops the enumeration of the channels only by ERROR_NO_MORE_ITEMS or
// ERROR_INSUFFICIENT_BUFFER. If every such call fails with another code, the enumeration never
// ends.
bool IsEndless(const Fault& fault) {
    return fault.function == L"EvtNextChannelPath" && fault.repetition == Repetition::ForEver &&
           fault.call % 2 == 1 && fault.code != ERROR_NO_MORE_ITEMS &&
           fault.code != ERROR_INSUFFICIENT_BUFFER;
}

bool IsSwept(const Fault& fault) {
    return (fault.code != ERROR_INSUFFICIENT_BUFFER || AsksForSizes(fault.function)) &&
           !IsEndless(fault);
}

CallCounts CallsAfter(ExpectedWindow& window, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        window.Take(step);
    }
    return window.calls();
}

bool Matters(const Story& story, const std::wstring& function) {
    return story.functions.empty() || std::ranges::count(story.functions, function) > 0;
}

// Returns whether to make a call fail. `place` counts from 1 among the `count` calls of the story.
bool IsTaken(const Story& story, unsigned place, unsigned count) {
    if (count < kManyCalls || place == 1 || place == count) {
        return true;
    }
    const bool isAtBeginning = place == 2 || (place >= 127 && place <= 130);
    return isAtBeginning && !story.Has(Action::SelectLargeChannel);
}

void AddCases(const Story& story, const std::wstring& function, unsigned call,
              std::vector<SweepCase>& cases) {
    for (const Repetition repetition : {Repetition::Once, Repetition::ForEver}) {
        for (const DWORD code : kCodes) {
            const Fault fault = {function, call, repetition, code};
            if (IsSwept(fault)) {
                cases.push_back({&story, fault});
            }
        }
    }
}

}  // namespace

void PrintTo(const SweepCase& sweepCase, std::ostream* stream) {
    *stream << base::ToUtf8(ScriptLine(sweepCase.fault));
}

std::vector<SweepCase> EveryCase() {
    std::vector<SweepCase> cases;
    for (const Story& story : Stories()) {
        ExpectedWindow window({});
        CallCounts before = CallsAfter(window, story.before);
        for (const auto& [function, last] : CallsAfter(window, story.steps)) {
            const unsigned first = before[function];
            for (unsigned call = first + 1; Matters(story, function) && call <= last; ++call) {
                if (IsTaken(story, call - first, last - first)) {
                    AddCases(story, function, call, cases);
                }
            }
        }
    }
    return cases;
}

std::string NameOf(const SweepCase& sweepCase) {
    const Fault& fault = sweepCase.fault;
    return sweepCase.story->name + "_" + base::ToUtf8(fault.function) + "_" +
           std::to_string(fault.call) +
           (fault.repetition == Repetition::Once ? "_Once_" : "_ForEver_") +
           std::to_string(fault.code);
}

}  // namespace tavrin::test
