#include "replay/script/fault_rule.h"

#include "replay/text/channel_name.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace replay::script {
namespace {

// A kind of rule and its required key.
struct Verb {
    std::wstring_view name;
    FaultRule::Kind kind;
    std::wstring_view key;
};

constexpr Verb kVerbs[] = {
    {L"fail", FaultRule::Kind::kFail, L"code"},
    {L"delay", FaultRule::Kind::kDelay, L"ms"},
    {L"block", FaultRule::Kind::kBlock, L"until-event"},
    {L"pad", FaultRule::Kind::kPad, L"bytes"},
    {L"record-id", FaultRule::Kind::kRecordId, L"add"},
    {L"time", FaultRule::Kind::kTime, L"file-time"},
    {L"type", FaultRule::Kind::kType, L"code"},
};

std::optional<std::uint64_t> ReadValue(const Verb& verb, const ScriptLine& line) {
    if (verb.kind == FaultRule::Kind::kBlock) {
        return line.Text(verb.key).value_or(L"").empty() ? std::nullopt : std::optional(0);
    }
    if (verb.kind == FaultRule::Kind::kRecordId) {
        return line.Signed(verb.key);  // the sum wraps modulo 2^64
    }
    return line.Number(verb.key);
}

}  // namespace

std::optional<FaultRule> ReadFaultRule(const ScriptLine& line) {
    const auto* const verb = std::ranges::find(kVerbs, line.verb, &Verb::name);
    const auto function = calls::FindApiFunction(line.target);
    const auto value = verb == std::end(kVerbs) ? std::nullopt : ReadValue(*verb, line);
    if (!value || !function) {
        return std::nullopt;
    }
    FaultRule rule{.kind = verb->kind,
                   .function = *function,
                   .firstCall = line.Number(L"from").value_or(1),
                   .foldedChannel = text::FoldCase(line.Text(L"channel").value_or(L"")),
                   .value = *value,
                   .untilEvent = line.Text(L"until-event").value_or(L""),
                   .enteredEvent = line.Text(L"entered-event").value_or(L"")};
    if (const auto call = line.Number(L"call")) {
        rule.firstCall = rule.lastCall = *call;
    }
    return rule;
}

}  // namespace replay::script
