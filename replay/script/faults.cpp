#include "replay/script/faults.h"

#include "replay/platform/kernel_handle.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace replay::script {
namespace {

// Lets a test end even if it never releases a blocked call.
constexpr std::chrono::minutes kLongestBlock(1);

platform::UniqueKernelHandle OpenNamedEvent(const std::wstring& name) {
    return platform::UniqueKernelHandle(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
}

void Block(const FaultRule& rule, calls::Operation& operation) {
    // Kept open: a named event exists only while a handle to it is open.
    platform::UniqueKernelHandle entered;
    if (!rule.enteredEvent.empty()) {
        entered = OpenNamedEvent(rule.enteredEvent);
        SetEvent(entered.get());
    }
    const platform::UniqueKernelHandle until = OpenNamedEvent(rule.untilEvent);
    operation.WaitFor(until.get(), kLongestBlock);
}

// 15029, an insert without a value: the message is returned nevertheless.
bool FailsAfterWork(const FaultRule& rule) {
    return rule.function == calls::ApiFunction::kFormatMessage &&
           rule.value == ERROR_EVT_UNRESOLVED_VALUE_INSERT;
}

void Apply(const FaultRule& rule, calls::Operation& operation, CallEffects& effects) {
    switch (rule.kind) {
        case FaultRule::Kind::kFail:
            effects.failure = static_cast<DWORD>(rule.value);
            effects.failsAfterWork = FailsAfterWork(rule);
            break;
        case FaultRule::Kind::kDelay: operation.Wait(std::chrono::milliseconds(rule.value)); break;
        case FaultRule::Kind::kBlock: Block(rule, operation); break;
        case FaultRule::Kind::kPad: effects.padding = rule.value; break;
        case FaultRule::Kind::kRecordId: effects.recordIdOffset = rule.value; break;
        case FaultRule::Kind::kTime: effects.time = rule.value; break;
        case FaultRule::Kind::kType: effects.variantType = static_cast<DWORD>(rule.value); break;
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
    for (const FaultRule& rule :
         Count(function, isAbout)) {  // without the lock, because Apply may wait
        Apply(rule, operation, effects);
    }
    return effects;
}

std::vector<FaultRule> Faults::Count(calls::ApiFunction function,
                                     const std::function<bool(const std::wstring&)>& isAbout) {
    std::vector<FaultRule> due;
    const std::lock_guard guard(lock_);
    for (FaultRule& rule : rules_) {
        const bool concerned = rule.function == function &&
                               (rule.foldedChannel.empty() || isAbout(rule.foldedChannel));
        if (!concerned) {
            continue;
        }
        ++rule.seen;
        if (rule.seen >= rule.firstCall && rule.seen <= rule.lastCall) {
            due.push_back(rule);
        }
    }
    return due;
}

}  // namespace replay::script
