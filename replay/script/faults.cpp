#include "replay/script/faults.h"

#include "replay/platform/kernel_handle.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace replay::script {
namespace {

// A test that forgot to release a call must still end.
constexpr std::chrono::minutes kLongestBlock(1);

platform::UniqueKernelHandle OpenNamedEvent(const std::wstring& name) {
    return platform::UniqueKernelHandle(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
}

void Block(const FaultRule& rule, calls::Operation& operation) {
    // Kept: the event lives only as long as somebody holds it.
    platform::UniqueKernelHandle entered;
    if (!rule.enteredEvent.empty()) {
        entered = OpenNamedEvent(rule.enteredEvent);
        SetEvent(entered.get());
    }
    const platform::UniqueKernelHandle until = OpenNamedEvent(rule.untilEvent);
    operation.WaitFor(until.get(), kLongestBlock);
}

// A message with an insert that has no value is handed back all the same.
bool FailsAfterWork(const FaultRule& rule) {
    return rule.function == calls::ApiFunction::kFormatMessage &&
           rule.code == ERROR_EVT_UNRESOLVED_VALUE_INSERT;
}

void AddEffect(const FaultRule& rule, CallEffects& effects) {
    switch (rule.deed) {
        case FaultRule::Deed::kFail:
            effects.failure = rule.code;
            effects.failsAfterWork = FailsAfterWork(rule);
            break;
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

CallEffects Faults::Enter(calls::ApiFunction function, calls::Operation& operation,
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
            operation.Wait(std::chrono::milliseconds(rule.milliseconds));
        } else {
            Block(rule, operation);
        }
    }
    return effects;
}

}  // namespace replay::script
