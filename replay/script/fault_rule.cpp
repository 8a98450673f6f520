#include "replay/script/fault_rule.h"

#include "replay/text/channel_name.h"

#include <string_view>

namespace replay::script {
namespace {

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

bool HasItsValue(const FaultRule& rule, const ScriptLine& line) {
    switch (rule.deed) {
        case FaultRule::Deed::kFail: return line.Number(L"code").has_value();
        case FaultRule::Deed::kDelay: return line.Number(L"ms").has_value();
        case FaultRule::Deed::kBlock: return !rule.untilEvent.empty();
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
    for (const DeedName& deed : kDeeds) {
        if (deed.name == line.verb) {
            named = &deed;
        }
    }
    const auto function = calls::FindApiFunction(line.target);
    if (named == nullptr || !function) {
        return std::nullopt;
    }
    rule.deed = named->deed;
    rule.function = *function;
    if (const auto from = line.Number(L"from")) {
        rule.firstCall = *from;
    }
    if (const auto call = line.Number(L"call")) {
        rule.firstCall = rule.lastCall = *call;
    }
    rule.foldedChannel = text::FoldCase(line.Text(L"channel").value_or(L""));
    rule.code = static_cast<DWORD>(line.Number(L"code").value_or(0));
    rule.milliseconds = static_cast<DWORD>(line.Number(L"ms").value_or(0));
    rule.bytes = line.Number(L"bytes").value_or(0);
    rule.add = line.Signed(L"add").value_or(0);
    rule.fileTime = line.Number(L"file-time").value_or(0);
    rule.untilEvent = line.Text(L"until-event").value_or(L"");
    rule.enteredEvent = line.Text(L"entered-event").value_or(L"");
    if (!HasItsValue(rule, line)) {
        return std::nullopt;
    }
    return rule;
}

}  // namespace replay::script
