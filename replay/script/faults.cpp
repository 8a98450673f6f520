#include "replay/script/faults.h"

#include <iterator>
#include <mutex>
#include <utility>

namespace replay::script {
namespace {

constexpr DWORD kFilePollMs = 5;
constexpr DWORD kLongestBlockMs = 60'000;  // a test that forgot to release a call must still end

HANDLE OpenNamedEvent(const std::wstring& name) {
    return CreateEventW(nullptr, TRUE, FALSE, name.c_str());
}

void WaitForNamedEvent(const std::wstring& name) {
    const HANDLE event = OpenNamedEvent(name);
    if (event == nullptr) {
        return;
    }
    WaitForSingleObject(event, kLongestBlockMs);
    CloseHandle(event);
}

void WaitForFile(const std::wstring& path) {
    for (DWORD waited = 0; waited < kLongestBlockMs; waited += kFilePollMs) {
        if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) {
            return;
        }
        Sleep(kFilePollMs);
    }
}

void Block(const FaultRule& rule) {
    // Opened first: the event lives only as long as somebody holds it.
    const HANDLE entered = rule.enteredEvent.empty() ? nullptr : OpenNamedEvent(rule.enteredEvent);
    if (entered != nullptr) {
        SetEvent(entered);
    }
    if (!rule.untilEvent.empty()) {
        WaitForNamedEvent(rule.untilEvent);
    }
    if (!rule.untilFile.empty()) {
        WaitForFile(rule.untilFile);
    }
    if (entered != nullptr) {
        CloseHandle(entered);
    }
}

void AddEffect(const FaultRule& rule, CallEffects& effects) {
    switch (rule.deed) {
        case FaultRule::Deed::kFail: effects.failure = rule.code; break;
        case FaultRule::Deed::kPad: effects.padding = rule.bytes; break;
        case FaultRule::Deed::kRecordId: effects.recordIdOffset = rule.add; break;
        case FaultRule::Deed::kTime: effects.time = rule.fileTime; break;
        case FaultRule::Deed::kType: effects.variantType = rule.code; break;
        case FaultRule::Deed::kDelay:
        case FaultRule::Deed::kBlock: break;
    }
}

}  // namespace

void Faults::Replace(std::vector<FaultRule> rules) {
    const std::lock_guard guard(lock_);
    rules_ = std::move(rules);
    on_ = !rules_.empty();
}

CallEffects Faults::Enter(calls::ApiFunction function,
                          const std::function<bool(const std::wstring&)>& isAbout) {
    CallEffects effects;
    std::vector<FaultRule> waits;
    {
        const std::lock_guard guard(lock_);
        for (FaultRule& rule : rules_) {
            if (rule.function != function) {
                continue;
            }
            if (!rule.foldedChannel.empty() && !isAbout(rule.foldedChannel)) {
                continue;
            }
            ++rule.seen;
            if (rule.seen < rule.firstCall || rule.seen > rule.lastCall) {
                continue;
            }
            AddEffect(rule, effects);
            if (rule.deed == FaultRule::Deed::kDelay || rule.deed == FaultRule::Deed::kBlock) {
                waits.push_back(rule);
            }
        }
    }
    for (const FaultRule& rule : waits) {  // other threads' calls go on meanwhile
        if (rule.deed == FaultRule::Deed::kDelay) {
            Sleep(rule.milliseconds);
        } else {
            Block(rule);
        }
    }
    return effects;
}

}  // namespace replay::script
