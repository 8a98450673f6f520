#include "faults.h"

#include <iterator>
#include <mutex>
#include <utility>

#include "text.h"

namespace replay {
namespace {

constexpr DWORD kFilePollMs = 5;
constexpr DWORD kLongestBlockMs = 60'000;  // a test that forgot to release a call must still end

struct DeedName {
    std::wstring_view name;
    FaultRule::Deed deed;
};

constexpr DeedName kDeeds[] = {
    {L"fail", FaultRule::Deed::kFail},          {L"delay", FaultRule::Deed::kDelay},
    {L"block", FaultRule::Deed::kBlock},        {L"pad", FaultRule::Deed::kPad},
    {L"record-id", FaultRule::Deed::kRecordId}, {L"time", FaultRule::Deed::kTime},
    {L"type", FaultRule::Deed::kType},
};

HANDLE OpenNamedEvent(const std::wstring& name) {
    return ::CreateEventW(nullptr, TRUE, FALSE, name.c_str());
}

void WaitForNamedEvent(const std::wstring& name) {
    const HANDLE event = OpenNamedEvent(name);
    if (event == nullptr)
        return;
    ::WaitForSingleObject(event, kLongestBlockMs);
    ::CloseHandle(event);
}

void WaitForFile(const std::wstring& path) {
    for (DWORD waited = 0; waited < kLongestBlockMs; waited += kFilePollMs) {
        if (::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
            return;
        ::Sleep(kFilePollMs);
    }
}

void Block(const FaultRule& rule) {
    // Opened first: the event lives only as long as somebody holds it.
    const HANDLE entered = rule.enteredEvent.empty() ? nullptr : OpenNamedEvent(rule.enteredEvent);
    if (entered != nullptr)
        ::SetEvent(entered);
    if (!rule.untilEvent.empty())
        WaitForNamedEvent(rule.untilEvent);
    if (!rule.untilFile.empty())
        WaitForFile(rule.untilFile);
    if (entered != nullptr)
        ::CloseHandle(entered);
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

bool HasItsValue(const FaultRule& rule, const ScriptLine& line) {
    switch (rule.deed) {
        case FaultRule::Deed::kFail: return rule.code != 0;
        case FaultRule::Deed::kDelay: return line.Number(L"ms").has_value();
        case FaultRule::Deed::kBlock: return !rule.untilEvent.empty() || !rule.untilFile.empty();
        case FaultRule::Deed::kPad: return line.Number(L"bytes").has_value();
        case FaultRule::Deed::kRecordId: return line.Signed(L"add").has_value();
        case FaultRule::Deed::kTime: return line.Number(L"file-time").has_value();
        case FaultRule::Deed::kType: return line.Number(L"code").has_value();
    }
    return false;
}

}  // namespace

std::optional<FaultRule> ReadFaultRule(const ScriptLine& line) {
    FaultRule rule;
    const DeedName* named = nullptr;
    for (const DeedName& deed : kDeeds)
        if (deed.name == line.verb)
            named = &deed;
    const auto function = FindApiFunction(line.target);
    if (named == nullptr || !function)
        return std::nullopt;
    rule.deed = named->deed;
    rule.function = *function;
    if (const auto from = line.Number(L"from"))
        rule.firstCall = *from;
    if (const auto call = line.Number(L"call"))
        rule.firstCall = rule.lastCall = *call;
    rule.foldedChannel = FoldCase(line.Text(L"channel").value_or(L""));
    rule.code = static_cast<DWORD>(line.Number(L"code").value_or(0));
    rule.milliseconds = static_cast<DWORD>(line.Number(L"ms").value_or(0));
    rule.bytes = line.Number(L"bytes").value_or(0);
    rule.add = line.Signed(L"add").value_or(0);
    rule.fileTime = line.Number(L"file-time").value_or(0);
    rule.untilEvent = line.Text(L"until-event").value_or(L"");
    rule.untilFile = line.Text(L"until-file").value_or(L"");
    rule.enteredEvent = line.Text(L"entered-event").value_or(L"");
    if (!HasItsValue(rule, line))
        return std::nullopt;
    return rule;
}

void Faults::Replace(std::vector<FaultRule> rules) {
    const std::lock_guard guard(lock_);
    rules_ = std::move(rules);
    on_ = !rules_.empty();
}

CallEffects Faults::Enter(ApiFunction function,
                          const std::function<bool(const std::wstring&)>& isAbout) {
    CallEffects effects;
    std::vector<FaultRule> waits;
    {
        const std::lock_guard guard(lock_);
        for (FaultRule& rule : rules_) {
            if (rule.function != function)
                continue;
            if (!rule.foldedChannel.empty() && !isAbout(rule.foldedChannel))
                continue;
            ++rule.seen;
            if (rule.seen < rule.firstCall || rule.seen > rule.lastCall)
                continue;
            AddEffect(rule, effects);
            if (rule.deed == FaultRule::Deed::kDelay || rule.deed == FaultRule::Deed::kBlock)
                waits.push_back(rule);
        }
    }
    for (const FaultRule& rule : waits) {  // other threads' calls go on meanwhile
        if (rule.deed == FaultRule::Deed::kDelay)
            ::Sleep(rule.milliseconds);
        else
            Block(rule);
    }
    return effects;
}

}  // namespace replay
